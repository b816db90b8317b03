#include <examples/specimen/NamePlaces.h>

#include <algorithm>

namespace vlm::specimen {
namespace {

constexpr double kBehindLine = 3.0;  // from the line to the name

void Center(Bracket& bracket, double margin) {
  bracket.lane = 0;
  bracket.nameLeft = std::max(margin, bracket.Middle() - 0.5 * bracket.nameWidth);
}

// Whether a name of the first lane, where it stands now, leaves the others alone: those that stand
// there, and the lines to names that do not.
bool IsFree(const Bracket& bracket, const std::vector<Bracket*>& placed,
            const std::vector<Bracket*>& wide, double gap) {
  const double left = bracket.nameLeft;
  const double right = left + bracket.nameWidth;
  const auto clashes = [&](const Bracket* other) {
    return other->lane == 0 && other->nameLeft < right + gap &&
           left < other->nameLeft + other->nameWidth + gap;
  };
  const auto crosses = [&](const Bracket* other) {
    return other != &bracket && left - gap < other->Middle() && other->Middle() < right + gap;
  };
  return std::none_of(placed.begin(), placed.end(), clashes) &&
         std::none_of(wide.begin(), wide.end(), crosses);
}

// The lane for a name at the right of its line, with others placed to the right of that.
std::size_t FindLane(const Bracket& bracket, const std::vector<Bracket*>& placed, double gap) {
  const double end = bracket.nameLeft + bracket.nameWidth + gap;
  std::size_t lane = 1;
  for (bool isFree = false; !isFree; lane += isFree ? 0 : 1) {
    isFree = std::none_of(placed.begin(), placed.end(), [&](const Bracket* other) {
      const double begin = other->lane == lane ? other->nameLeft : other->Middle();
      return other->lane >= lane && begin < end;
    });
  }
  return lane;
}

}  // namespace

void PlaceNames(std::vector<Bracket>& brackets, double margin, double gap) {
  std::vector<Bracket*> placed;
  std::vector<Bracket*> wide;
  for (Bracket& bracket : brackets) {
    Center(bracket, margin);
    const bool fits = bracket.nameWidth + gap <= bracket.right - bracket.left;
    (fits ? placed : wide).push_back(&bracket);
  }
  // From right to left each line stands left of all names that have lines.
  for (auto at = wide.rbegin(); at != wide.rend(); ++at) {
    Bracket& bracket = **at;
    if (!IsFree(bracket, placed, wide, gap)) {
      bracket.nameLeft = bracket.Middle() + kBehindLine;
      bracket.lane = FindLane(bracket, placed, gap);
    }
    placed.push_back(&bracket);
  }
}

}  // namespace vlm::specimen
