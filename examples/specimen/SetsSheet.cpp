#include <examples/specimen/SetsSheet.h>

#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <examples/specimen/FaceFacts.h>
#include <examples/specimen/FacePainter.h>
#include <examples/specimen/FaceSheet.h>
#include <examples/specimen/Page.h>

#include <cairo.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vlm::specimen {
namespace {

constexpr double kPageWidth = 1080.0;
constexpr double kMargin = 40.0;
constexpr double kGutter = 36.0;
constexpr double kColumnWidth = (kPageWidth - 2.0 * kMargin - kGutter) / 2.0;
constexpr double kHeadHeight = 50.0;
constexpr double kCellHeight = 118.0;
constexpr unsigned int kSets = 28;
constexpr unsigned int kRows = kSets / 2;
constexpr double kTextSize = 21.0;
constexpr double kLeading = 26.0;

// All codes that show ink, in lines.
std::vector<GString> LinesOf(const FaceFacts& face) {
  if (face.isMarkers) return {CodesFrom(33, 54), CodesFrom(55, 76), CodesFrom(77, 96)};
  return {CodesFrom('A', 'Z') + "@[\\]^_", CodesFrom('a', 'z') + "`{|}~", CodesFrom('!', '?')};
}

void DrawSet(Page& page, FacePainter& painter, const CSYMSetInfo& set, double left, double top) {
  const unsigned int face = FindFace(set.GetFaceName().String());
  const FaceFacts facts = FactsOf(face);
  page.Rule(Vec2d(left, top), Vec2d(left + kColumnWidth, top), kHairline);
  page.Write(kHeading, left, top + 15.0, facts.name);
  const std::string kind = std::string(FamilyWord(facts.familyBits)) +
                           (facts.isFixed ? ", fixed pitch" : ", variable pitch") +
                           (facts.charset == 2 ? ", symbols" : "");
  page.Write({4, 7.0, kFaint}, left + kColumnWidth, top + 15.0,
             std::to_string(set.GetIndex()) + "   " + set.GetFileName().String() + "   " + kind,
             Anchor::Right);
  examples::SetSourceColor(page.Context(), kInk);
  double baseline = top + 42.0;
  // All lines of a set are of one size, so that none leaves the column.
  const std::vector<GString> lines = LinesOf(facts);
  double widest = 0.0;
  for (const GString& line : lines)
    widest = std::max(widest, FacePainter::Advance(face, line, 1.0));
  const double size = std::min(kTextSize, kColumnWidth / widest);
  for (const GString& line : lines) {
    painter.Draw(page.Context(), face, line, Vec2d(left + size * CenteredShift(facts), baseline),
                 size);
    baseline += kLeading;
  }
}

}  // namespace

double SetsSheet::Width() const { return kPageWidth; }

double SetsSheet::Height() const { return 2.0 * kMargin + kHeadHeight + kRows * kCellHeight; }

void SetsSheet::Draw(cairo_t* context) const {
  Page page(context);
  FacePainter painter;
  page.Write(kTitle, kMargin, kMargin + 18.0, "Symbol sets");
  page.Write(
      kBody, kMargin, kMargin + 35.0,
      "The library's own faces, drawn with plain lines: the letters, digits and signs of the "
      "codes 33 to 126, and all markers.");
  for (const CSYMSetInfo& set : g_SYMSetList) {
    const double left = kMargin + set.GetIndex() / kRows * (kColumnWidth + kGutter);
    const double top = kMargin + kHeadHeight + set.GetIndex() % kRows * kCellHeight;
    DrawSet(page, painter, set, left, top);
  }
}

}  // namespace vlm::specimen
