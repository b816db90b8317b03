#include <examples/common/Axis.h>

#include <velum/core/StringFormat.h>
#include <velum/dates/AxisIntervals.h>
#include <velum/dates/NumberFormatSpec.h>
#include <velum/geometry/Rounding.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vlm::examples {
namespace {

constexpr int kMostTicks = 50;
constexpr int kMostDigits = 5;
constexpr double kMax = std::numeric_limits<double>::max();
constexpr char kMinus[] = "\xE2\x88\x92";

int PowerOfTen(double value) { return static_cast<int>(std::floor(std::log10(value) + 1e-9)); }

std::string WithMinus(const std::string& text) {
  return text.starts_with('-') ? kMinus + text.substr(1) : text;
}

// "1.50e+06" as a factor and a raised power of ten.
std::string WithPower(const std::string& text) {
  const std::size_t e = text.find('e');
  if (e == std::string::npos) return WithMinus(text);
  const int power = std::stoi(text.substr(e + 1));
  return WithMinus(text.substr(0, e)) +
         "\xC2\xB7"
         "10\\up38 {\\fs70 " +
         WithMinus(std::to_string(power)) + "}\\dn38 ";
}

}  // namespace

double Axis::Share(double value) const {
  // By halves, so that no range overflows.
  const double range = high / 2.0 - low / 2.0;
  const double share = (value / 2.0 - low / 2.0) / range;
  return std::isfinite(share) ? share : 0.5;
}

std::string NumberLabel(double value, double step) {
  if (std::abs(value) < step / 2.0) value = 0.0;
  const int last = PowerOfTen(step);
  const int first = value == 0.0 ? last : PowerOfTen(std::abs(value));
  const bool isPlain = last >= -5 && first <= 6;
  if (isPlain || value == 0.0) {
    const auto decimals = static_cast<unsigned>(isPlain ? std::max(0, -last) : 0);
    const NumberFormatSpec spec(NumberFormatSpec::Fixed, decimals);
    return WithMinus(ToString(spec.GetFormat().c_str(), value));
  }
  const auto digits = static_cast<unsigned>(std::clamp(first - last, 0, 15));
  const NumberFormatSpec spec(NumberFormatSpec::Exponential, digits);
  return WithPower(ToString(spec.GetFormat().c_str(), value));
}

Axis MakeAxis(double low, double high, int count) {
  Axis axis;
  axis.low = low;
  axis.high = high;
  ExpandSingularLimits(axis.low, axis.high);
  double first = 0.0;
  double last = 0.0;
  const double step = CalcAutoInc(axis.low, axis.high, count, &first, &last);
  const double steps = std::round((last - first) / step);
  if (!(steps >= 0.0 && steps <= kMostTicks)) return axis;  // a range that overflows
  const double largest = std::max(std::abs(first), std::abs(last));
  const bool isLong = largest > 0.0 && PowerOfTen(largest) - PowerOfTen(step) > kMostDigits;
  const double offset = isLong ? first : 0.0;
  if (isLong) {
    axis.offset = (offset < 0.0 ? " + " : std::string(" ") + kMinus + " ") +
                  WithPower(ToString("%.15g", std::abs(offset)));
  }
  for (int i = 0; i <= static_cast<int>(steps); ++i) {
    axis.ticks.push_back(first + i * step);
    axis.labels.push_back(NumberLabel(axis.ticks.back() - offset, step));
  }
  return axis;
}

Axis MakePaddedAxis(double low, double high, int count, double padding) {
  ExpandSingularLimits(low, high);
  const double room = std::min((high / 2.0 - low / 2.0) * 2.0 * padding, kMax);
  return MakeAxis(std::max(low - room, -kMax), std::min(high + room, kMax), count);
}

}  // namespace vlm::examples
