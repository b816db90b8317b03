#include <examples/georeference/ErrorChart.h>

#include <velum/colour/Color4b.h>
#include <velum/core/GString.h>
#include <velum/geometry/Constants.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/LabelLayout.h>
#include <examples/georeference/Methods.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace vlm::georeference {
namespace {

using examples::SetSourceColor;

constexpr double kTextHeight = 9.5;
const Color4b kInk(40, 44, 52, 255);
const Color4b kLine(205, 209, 216, 255);
const Color4b kError(34, 94, 168, 255);

void Write(cairo_t* context, const std::string& text, const Vec2d& left,
           double height = kTextHeight) {
  examples::CairoTextDevice device(context, height);
  device.SetColor(kInk);
  examples::LabelLayout(device, text).Draw(device, left);
}

void WriteCentered(cairo_t* context, const std::string& text, const Vec2d& center) {
  examples::CairoTextDevice device(context, kTextHeight);
  device.SetColor(kInk);
  const examples::LabelLayout label(device, text);
  label.Draw(device, center - Vec2d(label.Box().Center().x, 0.0));
}

// A name as words.
std::string Words(std::string name) {
  std::replace(name.begin(), name.end(), '-', ' ');
  return name;
}

// A logarithmic axis across a part of the page, from a power of ten to another.
class Axis {
 public:
  Axis(double left, double right, const std::vector<Trial>& trials) : left_(left) {
    constexpr double kLeast = 1e-9;  // km
    double least = std::numeric_limits<double>::max();
    double largest = kLeast;
    for (const Trial& trial : trials) {
      if (trial.method == IdentityMap) continue;
      least = std::min(least, std::max(trial.elsewhere.rms, kLeast));
      largest = std::max(largest, trial.elsewhere.worst);
    }
    low_ = static_cast<int>(std::floor(std::log10(least)));
    high_ = std::max(static_cast<int>(std::ceil(std::log10(largest))), low_ + 1);
    step_ = (right - left) / (high_ - low_);
  }

  [[nodiscard]] double OnPage(double value) const {
    return left_ + step_ * std::max(std::log10(value) - low_, 0.0);
  }

  void Draw(cairo_t* context, double top, double bottom) const {
    for (int power = low_; power <= high_; ++power) {
      const double x = left_ + step_ * (power - low_);
      SetSourceColor(context, kLine);
      cairo_set_line_width(context, 0.75);
      cairo_move_to(context, x, top);
      cairo_line_to(context, x, bottom);
      cairo_stroke(context);
      GString label;
      label.FormatString("%g", std::pow(10.0, power));
      WriteCentered(context, label, {x, bottom + 13.0});
    }
  }

 private:
  double left_;
  double step_;
  int low_;
  int high_;
};

// A line from the root of the mean square to the worst, with a dot at the former.
void DrawErrors(cairo_t* context, const Axis& axis, const Distances& errors, double y) {
  const double rms = axis.OnPage(errors.rms);
  const double worst = axis.OnPage(errors.worst);
  SetSourceColor(context, kError);
  cairo_set_line_width(context, 1.5);
  cairo_arc(context, rms, y, 3.0, 0.0, TWO_PI);
  cairo_fill(context);
  cairo_move_to(context, rms, y);
  cairo_line_to(context, worst, y);
  cairo_move_to(context, worst, y - 3.5);
  cairo_line_to(context, worst, y + 3.5);
  cairo_stroke(context);
}

}  // namespace

void DrawErrorChart(cairo_t* context, const Box2d& window, const std::string& letter,
                    const std::vector<Trial>& trials) {
  constexpr double kNames = 122.0;
  constexpr double kFoot = 36.0;
  const double bottom = window.yMax() - kFoot;
  Write(context, "{\\b " + letter + "}  All methods at 1000 other points",
        {window.xMin(), window.yMin() - 7.0}, 11.0);
  const Axis axis(window.xMin() + kNames, window.xMax() - 10.0, trials);
  axis.Draw(context, window.yMin(), bottom);
  WriteCentered(context, "Dot: root mean square error; bar: worst error (km)",
                {window.Center().x, bottom + 30.0});
  const double rowHeight = (bottom - window.yMin()) / static_cast<double>(trials.size() - 1);
  double y = window.yMin() + 0.5 * rowHeight;
  for (const Trial& trial : trials) {
    if (trial.method == IdentityMap) continue;
    Write(context, Words(NameOf(trial.method)), {window.xMin(), y + 3.5});
    DrawErrors(context, axis, trial.elsewhere, y);
    y += rowHeight;
  }
}

}  // namespace vlm::georeference
