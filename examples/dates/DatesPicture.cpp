#include <examples/dates/DatesPicture.h>

#include <velum/core/StringFormat.h>
#include <velum/dates/DateTime.h>
#include <examples/common/Axis.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/PageText.h>
#include <examples/common/Panel.h>
#include <examples/common/Picture.h>
#include <examples/dates/CalendarAxis.h>

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace vlm::dates {
namespace {

using examples::Align;
using examples::Axis;
using examples::DrawText;
using examples::kPale;
using examples::Panel;
using examples::PanelDot;

constexpr double kWidth = 700.0;
constexpr double kHeight = 430.0;
constexpr double kLeft = 58.0;
constexpr double kTop = 62.0;
constexpr double kBottom = kHeight - 48.0;
constexpr double kStrip = 26.0;
constexpr double kGap = 8.0;
constexpr double kLegend = 206.0;
constexpr double kLegendLine = 30.0;
constexpr double kRadius = 2.4;
constexpr std::size_t kMostLines = 10;
constexpr std::size_t kMostDots = 20000;

// The colours of M. Okabe and K. Ito, which readers with any colour vision tell apart; red stays
// for what is not read.
const std::array<Color4b, 6> kColors = {Color4b(0, 114, 178, 255),  Color4b(230, 159, 0, 255),
                                        Color4b(0, 158, 115, 255),  Color4b(204, 121, 167, 255),
                                        Color4b(86, 180, 233, 255), Color4b(110, 100, 20, 255)};
const Color4b kOther(120, 124, 132, 255);
const Color4b kUnread(196, 40, 20, 255);
const Color4b kHalo(255, 255, 255, 255);

Color4b ColorOf(std::size_t form) { return form < kColors.size() ? kColors[form] : kOther; }

bool IsTimeAlone(double date) { return date > -1.0 && date < 1.0; }

class SurveyPicture {
 public:
  SurveyPicture(const Survey& survey, std::string title)
      : survey_(survey), title_(std::move(title)), rows_(RowAxis(survey.rows)) {
    const auto isTime = [](const Entry& entry) { return IsTimeAlone(entry.date); };
    timesAreBeside_ = !std::all_of(survey.entries.begin(), survey.entries.end(), isTime);
    bool isFirst = true;
    double low = 0.0;
    double high = 1.0;
    for (const Entry& entry : survey.entries) {
      if (!IsOnAxis(entry)) continue;
      const double numeric = KQDoubleFromDate(entry.date);
      low = isFirst ? numeric : std::min(low, numeric);
      high = isFirst ? numeric : std::max(high, numeric);
      isFirst = false;
    }
    // Without a date the axis has no ticks.
    if (!isFirst) dates_ = MakeCalendarAxis(low, high, 7);
  }

  void Draw(cairo_t* context) const {
    const std::string form = survey_.forms.size() == 1 ? " shape" : " shapes";
    DrawText(context, Vec2d(kLeft, 24.0), {"{\\b " + examples::Verbatim(title_) + "}", 13.0});
    DrawText(context, Vec2d(kLeft, 41.0),
             {"The dates of column {\\b " + examples::Verbatim(survey_.column) + "}, typed in " +
                  std::to_string(survey_.forms.size()) + form,
              9.5, Align::Left, kPale});
    DrawStrip(context);
    DrawDates(context);
    DrawLegend(context);
  }

 private:
  static Axis RowAxis(std::size_t count) {
    const double last = static_cast<double>(count);
    Axis axis = examples::MakeAxis(1.0, std::max(last, 2.0), 8);
    // Rows count downwards.
    const double room = std::max(0.02 * last, 0.5);
    axis.low = last + room;
    axis.high = 1.0 - room;
    for (std::size_t i = axis.ticks.size(); i-- > 0;) {
      const double tick = axis.ticks[i];
      if (tick >= 1.0 && tick <= last && tick == std::floor(tick)) {
        axis.labels[i] = std::to_string(static_cast<long long>(tick));
        continue;
      }
      axis.ticks.erase(axis.ticks.begin() + static_cast<std::ptrdiff_t>(i));
      axis.labels.erase(axis.labels.begin() + static_cast<std::ptrdiff_t>(i));
    }
    return axis;
  }

  [[nodiscard]] bool IsOnAxis(const Entry& entry) const {
    return !timesAreBeside_ || !IsTimeAlone(entry.date);
  }

  // The halos go first, so that none covers a dot.
  static void DrawDots(Panel& panel, const std::vector<PanelDot>& dots) {
    std::vector<PanelDot> halos = dots;
    for (PanelDot& halo : halos) halo = {halo.point, halo.radius + 0.6, kHalo};
    panel.Dots(halos);
    panel.Dots(dots);
  }

  void DrawStrip(cairo_t* context) const {
    Axis across;
    Panel strip(context, Box2d(kLeft, kTop, kLeft + kStrip, kBottom), across, rows_);
    std::vector<PanelDot> dots;
    const std::size_t stride = survey_.unread.size() / kMostDots + 1;
    for (std::size_t i = 0; i < survey_.unread.size(); i += stride) {
      dots.push_back({Vec2d(0.5, static_cast<double>(survey_.unread[i].row)), kRadius, kUnread});
    }
    for (const Entry& entry : survey_.entries) {
      if (dots.size() > 2 * kMostDots) break;
      if (IsOnAxis(entry)) continue;
      dots.push_back({Vec2d(0.5, static_cast<double>(entry.row)), kRadius, ColorOf(entry.form)});
    }
    DrawDots(strip, dots);
    strip.Frame();
    strip.TicksLeft("Row of the file");
    DrawText(context, Vec2d(kLeft + kStrip / 2.0, kTop - 5.0),
             {"no date", 7.5, Align::Center, kPale});
  }

  void DrawDates(cairo_t* context) const {
    const Box2d window(kLeft + kStrip + kGap, kTop, kWidth - kLegend, kBottom);
    Panel panel(context, window, dates_, rows_);
    std::vector<PanelDot> dots;
    const std::size_t stride = survey_.entries.size() / kMostDots + 1;
    for (std::size_t i = 0; i < survey_.entries.size(); i += stride) {
      const Entry& entry = survey_.entries[i];
      if (!IsOnAxis(entry)) continue;
      const Vec2d point(KQDoubleFromDate(entry.date), static_cast<double>(entry.row));
      dots.push_back({point, kRadius, ColorOf(entry.form)});
    }
    DrawDots(panel, dots);
    panel.Frame();
    panel.TicksBelow("Date");
  }

  void DrawLegend(cairo_t* context) const {
    double y = kTop + 8.0;
    const std::size_t count = survey_.forms.size();
    const std::size_t told = count > kMostLines ? kMostLines - 1 : count;
    for (std::size_t i = 0; i < told; ++i) {
      const Form& form = survey_.forms[i];
      DrawLine(context, y, ColorOf(i), form.count, form.shape, "first: " + form.example);
    }
    std::size_t others = 0;
    for (std::size_t i = told; i < count; ++i) others += survey_.forms[i].count;
    if (others > 0) DrawLine(context, y, kOther, others, "other forms", "");
    if (survey_.unread.empty()) return;
    DrawLine(context, y, kUnread, survey_.unread.size(), "not read",
             "first: " + survey_.unread[0].text);
  }

  static void DrawLine(cairo_t* context, double& y, Color4b color, std::size_t count,
                       const std::string& name, const std::string& example) {
    const double left = kWidth - kLegend + 20.0;
    const double room = kLegend - 36.0;
    cairo_arc(context, left, y - 3.0, 3.6, 0.0, 6.2831853);
    examples::SetSourceColor(context, color);
    cairo_fill(context);
    DrawText(context, Vec2d(left + 9.0, y),
             {"{\\b " + examples::Verbatim(name) + "}  " + std::to_string(count), 9.0, Align::Left,
              examples::kInk, room});
    DrawText(context, Vec2d(left + 9.0, y + 11.5),
             {examples::Verbatim(example), 8.0, Align::Left, kPale, room});
    y += kLegendLine;
  }

  const Survey& survey_;
  const std::string title_;
  Axis rows_;
  Axis dates_;
  bool timesAreBeside_ = false;
};

}  // namespace

void DrawSurvey(const Survey& survey, const std::string& title, const std::string& path) {
  const SurveyPicture picture(survey, title);
  examples::WritePicture(path, kWidth, kHeight, [&](cairo_t* context) { picture.Draw(context); });
}

}  // namespace vlm::dates
