#include <examples/logview/LogPicture.h>

#include <velum/core/StringFormat.h>
#include <examples/common/Axis.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/PageText.h>
#include <examples/common/Picture.h>
#include <examples/logview/Palette.h>

#include <cairo.h>

#include <algorithm>

namespace vlm::logview {
namespace {

using examples::Align;
using examples::DrawText;
using examples::kInk;
using examples::kPale;
using examples::Verbatim;

// The page, from the left: names, the axis, counts; below, times, names, texts.
constexpr double kWidth = 620.0;
constexpr double kMargin = 20.0;
constexpr double kNames = 74.0;
constexpr double kCounts = 30.0;
constexpr double kHeading = 24.0;
constexpr double kLaneHeight = 19.0;
constexpr double kAxisRoom = 42.0;
constexpr double kTickLength = 3.0;
constexpr double kRowHeight = 12.0;
constexpr double kTimes = 36.0;
constexpr double kRowNames = 62.0;
constexpr std::size_t kLongestText = 100;

const Color4b kGround(246, 247, 249, 255);
const Color4b kGrid(222, 225, 230, 255);

void DrawLine(cairo_t* context, const Vec2d& from, const Vec2d& to, double width, Color4b color) {
  examples::SetSourceColor(context, color);
  cairo_set_line_width(context, width);
  cairo_move_to(context, from.x, from.y);
  cairo_line_to(context, to.x, to.y);
  cairo_stroke(context);
}

class SheetPicture {
 public:
  explicit SheetPicture(const Sheet& sheet)
      : sheet_(sheet),
        axis_(examples::MakePaddedAxis(0.0, sheet.Last() - sheet.First(), 8, 0.02)),
        lanesBottom_(kMargin + kHeading +
                     kLaneHeight * static_cast<double>(std::max<std::size_t>(LaneCount(), 1))),
        rowsTop_(lanesBottom_ + kAxisRoom + kHeading) {}

  [[nodiscard]] double Height() const {
    return rowsTop_ + kRowHeight * static_cast<double>(sheet_.LastLines().size()) + kMargin;
  }

  void Draw(cairo_t* context) const {
    DrawLanes(context);
    DrawRows(context);
  }

 private:
  static constexpr double kLeft = kMargin + kNames;
  static constexpr double kRight = kWidth - kMargin - kCounts;

  [[nodiscard]] std::size_t LaneCount() const { return sheet_.Lanes().size(); }
  [[nodiscard]] double OnPage(double time) const {
    return kLeft + (kRight - kLeft) * axis_.Share(time);
  }

  void DrawAxis(cairo_t* context) const {
    const double top = kMargin + kHeading;
    cairo_rectangle(context, kLeft, top, kRight - kLeft, lanesBottom_ - top);
    examples::SetSourceColor(context, kGround);
    cairo_fill(context);
    for (std::size_t i = 0; i < axis_.ticks.size(); ++i) {
      const double x = OnPage(axis_.ticks[i]);
      DrawLine(context, Vec2d(x, top), Vec2d(x, lanesBottom_), 0.5, kGrid);
      DrawLine(context, Vec2d(x, lanesBottom_), Vec2d(x, lanesBottom_ + kTickLength), 0.75, kPale);
      DrawText(context, Vec2d(x, lanesBottom_ + kTickLength + 9.0),
               {axis_.labels[i], 8.0, Align::Center, kInk});
    }
    DrawLine(context, Vec2d(kLeft, lanesBottom_), Vec2d(kRight, lanesBottom_), 0.75, kPale);
    DrawText(context, Vec2d((kLeft + kRight) / 2.0, lanesBottom_ + 27.0),
             {"Time since the first line (s)" + axis_.offset, 9.0, Align::Center, kInk});
  }

  void DrawLanes(cairo_t* context) const {
    DrawText(context, Vec2d(kMargin, kMargin + 9.0),
             {ToString("{\\b a}  Arrival of %u ", static_cast<unsigned>(sheet_.Count())) +
                  (sheet_.Count() == 1 ? "line" : "lines"),
              11.0});
    DrawText(context, Vec2d(kWidth - kMargin, kMargin + kHeading - 5.0),
             {"Lines", 8.0, Align::Right, kPale});
    DrawAxis(context);
    for (std::size_t i = 0; i < LaneCount(); ++i) {
      const Sheet::Lane& lane = sheet_.Lanes()[i];
      const double middle = kMargin + kHeading + kLaneHeight * (static_cast<double>(i) + 0.5);
      const Color4b color = LaneColor(i);
      const std::string name = Verbatim(NameOf(lane.prefix), kLongestText);
      DrawText(context, Vec2d(kLeft - 6.0, middle + 3.0),
               {name, 9.0, Align::Right, color, kNames - 6.0});
      for (const double time : lane.times) {
        const double x = OnPage(time - sheet_.First());
        DrawLine(context, Vec2d(x, middle - 6.0), Vec2d(x, middle + 6.0), 1.2, color);
      }
      DrawText(context, Vec2d(kWidth - kMargin, middle + 3.0),
               {std::to_string(lane.count), 9.0, Align::Right, color, kCounts - 4.0});
    }
  }

  void DrawRows(cairo_t* context) const {
    const std::size_t shown = sheet_.LastLines().size();
    const std::string title = shown == sheet_.Count()
                                  ? "The lines"
                                  : ToString("The last %u lines", static_cast<unsigned>(shown));
    DrawText(context, Vec2d(kMargin, rowsTop_ - 15.0), {"{\\b b}  " + title, 11.0});
    DrawText(context, Vec2d(kMargin + kTimes, rowsTop_ - 1.0), {"s", 8.0, Align::Right, kPale});
    double y = rowsTop_ + kRowHeight;
    for (const Sheet::Kept& kept : sheet_.LastLines()) {
      const Color4b color = LaneColor(kept.lane);
      DrawText(
          context, Vec2d(kMargin + kTimes, y),
          {ToString("%.2f", kept.line.time - sheet_.First()), 8.0, Align::Right, kPale, kTimes});
      const double names = kMargin + kTimes + 10.0;
      DrawText(context, Vec2d(names, y),
               {"{\\b " + Verbatim(NameOf(kept.line.prefix), kLongestText) + "}", 8.5, Align::Left,
                color, kRowNames - 6.0});
      DrawText(context, Vec2d(names + kRowNames, y),
               {Verbatim(kept.line.text, kLongestText), 8.5, Align::Left, color,
                kWidth - kMargin - names - kRowNames});
      y += kRowHeight;
    }
  }

  const Sheet& sheet_;
  examples::Axis axis_;
  double lanesBottom_;
  double rowsTop_;
};

}  // namespace

void DrawSheet(const Sheet& sheet, const std::string& path) {
  const SheetPicture picture(sheet);
  examples::WritePicture(path, kWidth, picture.Height(),
                         [&](cairo_t* context) { picture.Draw(context); });
}

}  // namespace vlm::logview
