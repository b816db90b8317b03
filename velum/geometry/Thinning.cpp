#include <velum/geometry/Thinning.h>

#include <velum/core/Exception.h>
#include <velum/geometry/Constants.h>

#include <cmath>
#include <cstddef>
#include <exception>

namespace vlm {

namespace {

constexpr unsigned kShortestThinned = 5;

// Calls `append`, and where it fails takes back what it appended.
template <class Append>
void AppendAllOrNothing(std::vector<Vec2d>& out, const Append& append) {
  const std::size_t size = out.size();
  try {
    append();
  } catch (const std::exception&) {
    out.resize(size);
    ThrowErrorImpl("Geometry", __LINE__, ERR_OUT_OF_MEMORY);
  }
}

// Tells whether a path turns by more than an angle between two of its segments.
//
// The answer is that of the directions by atan2, rounding included. Most turns are far enough from
// the angle that products tell them: with s = |u x v| cos(angle) - (u . v) sin(angle), which is
// |u| |v| sin(turn - angle), a turn above the angle gives s above 0.
class Turns {
 public:
  explicit Turns(double angle) noexcept : angle_(angle), isOrdinary_(angle >= 0 && angle < PI) {
    if (isOrdinary_) {
      cosine_ = std::cos(angle);
      sine_ = std::sin(angle);
    }
  }

  // The direction of the first segment.
  void Begin(const Vec2d& d) noexcept {
    before_ = d;
    // Without a length it still has the direction that atan2 gives it.
    if (IsZero(d)) before_ = Vec2d(std::signbit(d.x) ? -1 : 1, d.y);
  }

  // Goes on to the next segment and tells whether the path turned by more than the angle.
  bool Next(const Vec2d& d) noexcept {
    if (IsZero(d)) return TurnsByAngles(before_);  // it keeps the direction
    const bool turns = TurnsTo(d);
    before_ = d;
    return turns;
  }

 private:
  static bool IsZero(const Vec2d& d) noexcept { return d.x == 0 && d.y == 0; }

  [[nodiscard]] bool TurnsTo(const Vec2d& d) const noexcept {
    // Both directions come with an error below 5e-16 each, their difference and 2 pi minus it with
    // less than 1e-15 more. The products are good to 2e-15 of `scale`, which is not below
    // |u| |v|. In all that is far below 1e-13, so beyond it both forms agree. Where products
    // would under- or overflow the scale tells.
    const double scale =
        (std::abs(before_.x) + std::abs(before_.y)) * (std::abs(d.x) + std::abs(d.y));
    if (isOrdinary_ && scale > 1e-270 && scale < 1e300) {
      const double cross = std::abs(before_.x * d.y - before_.y * d.x);
      const double s = cross * cosine_ - before_.Dot(d) * sine_;
      if (std::abs(s) > 1e-13 * scale) return s > 0;
      if (before_ == d) return false;
    }
    return TurnsByAngles(d);
  }

  [[gnu::noinline]] [[nodiscard]] bool TurnsByAngles(const Vec2d& d) const noexcept {
    double difference = std::abs(std::atan2(d.y, d.x) - std::atan2(before_.y, before_.x));
    if (difference > PI) difference = 2 * PI - difference;
    return difference > angle_;
  }

  double angle_;
  bool isOrdinary_;
  double cosine_ = 1;
  double sine_ = 0;
  Vec2d before_;
};

}  // namespace

void GThinByAngularDeviation(const Vec2d* points, unsigned count, double radians,
                             std::vector<Vec2d>& out) {
  if (!points) return;
  AppendAllOrNothing(out, [&] {
    if (count < kShortestThinned) {
      out.insert(out.end(), points, points + count);
      return;
    }
    out.push_back(points[0]);
    Turns turns(radians);
    turns.Begin(points[1] - points[0]);
    for (unsigned i = 1; i + 1 < count; ++i) {
      if (turns.Next(points[i + 1] - points[i])) out.push_back(points[i]);
    }
    out.push_back(points[count - 1]);
  });
}

void GThinToMinimalDetail(const Vec2d* points, unsigned count, std::vector<Vec2d>& out) {
  if (!points) return;
  AppendAllOrNothing(out, [&] {
    if (count < kShortestThinned) {
      out.insert(out.end(), points, points + count);
      return;
    }
    out.push_back(points[0]);
    Vec2d before = points[1] - points[0];
    for (unsigned i = 1; i + 1 < count; ++i) {
      const Vec2d d = points[i + 1] - points[i];
      const bool turnsBack = (before.x * d.x < 0) | (before.y * d.y < 0);
      const bool isFlat = (d.x == 0) | (d.y == 0);
      if (turnsBack & !isFlat) out.push_back(points[i]);
      before = d;
    }
    out.push_back(points[count - 1]);
  });
}

}  // namespace vlm
