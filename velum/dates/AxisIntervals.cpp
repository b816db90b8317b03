#include <velum/dates/AxisIntervals.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vlm {
namespace {

constexpr double kTolerance = 1e-5;  // of a step

struct Wish {
  double range;   // of the data, above 0 and finite
  double wanted;  // the step that would give the count exactly
  double power;   // the power of ten not above it
};

Wish WishFor(double lo, double hi, int count) noexcept {
  const double range = std::min(hi - lo, std::numeric_limits<double>::max());
  // The quotient of the smallest ranges rounds to 0, and so does their power of ten.
  constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
  const double wanted = std::max(range / std::max(count, 1), kSmallest);
  const double power = std::pow(10.0, std::floor(std::log10(wanted)));
  return {range, wanted, std::max(power, kSmallest)};
}

// A tick a whole step outside is the work of rounding alone: the limit is the better tick.
double WithinAStep(double tick, double lo, double hi, double step) noexcept {
  if (lo - tick >= step) {
    return lo;
  }
  return tick - hi >= step ? hi : tick;
}

double FirstTick(double lo, double hi, double step) noexcept {
  const double tick = std::ceil(lo / step) * step;
  const double below = tick - step;
  return WithinAStep(std::abs(below - lo) <= kTolerance * step ? below : tick, lo, hi, step);
}

double LastTick(double lo, double hi, double step) noexcept {
  const double tick = std::floor(hi / step) * step;
  const double above = tick + step;
  return WithinAStep(std::abs(above - hi) <= kTolerance * step ? above : tick, lo, hi, step);
}

void Write(double value, double* out) noexcept {
  if (out != nullptr) {
    *out = value;
  }
}

// Adds steps, as long as that changes anything, until `multiple` is not below `limit`.
double Raised(double multiple, double limit, double step) noexcept {
  while (multiple < limit && multiple + step != multiple) {
    multiple += step;
  }
  return multiple;
}

double Lowered(double multiple, double limit, double step) noexcept {
  while (multiple > limit && multiple - step != multiple) {
    multiple -= step;
  }
  return multiple;
}

bool ChangesNothing(double value, double step) noexcept {
  return !(step > 0) || std::isinf(step) || value + step == value || value - step == value;
}

}  // namespace

int CalcAxisIntervals(double lo, double hi, int count, double* first, double* last) noexcept {
  if (!(lo < hi) || std::isinf(lo) || std::isinf(hi)) {
    Write(lo, first);
    Write(hi, last);
    return 0;
  }
  const auto [range, wanted, power] = WishFor(lo, hi, count);
  double step = power;
  if (wanted > power) {
    for (const double multiple : {2.0, 5.0, 10.0}) {
      const double candidate = multiple * power;
      if (candidate >= wanted && candidate < range) {
        step = candidate;
        break;
      }
    }
  }
  const double from = FirstTick(lo, hi, step);
  const double to = LastTick(lo, hi, step);
  Write(from, first);
  Write(to, last);
  const double width = to - from;
  const double intervals = std::round(std::isinf(width) ? to / step - from / step : width / step);
  return static_cast<int>(std::min(intervals, double{std::numeric_limits<int>::max()}));
}

double CalcAutoInc(double lo, double hi, int count, double* first, double* last) noexcept {
  if (lo >= hi) {
    Write(lo - 1, first);
    Write(lo + 1, last);
    return 1;
  }
  if (!std::isfinite(lo) || !std::isfinite(hi)) {
    Write(lo, first);
    Write(hi, last);
    return std::numeric_limits<double>::quiet_NaN();
  }
  const auto [range, wanted, power] = WishFor(lo, hi, count);
  double step = power;
  // Ten times the power is above what is wanted, so that no candidate beyond it is ever reached.
  for (const double multiple : {2.0, 5.0, 10.0, 20.0}) {
    const double candidate = multiple * power;
    if (step >= wanted || candidate >= range) {
      break;
    }
    step = candidate;
  }
  Write(FirstTick(lo, hi, step), first);
  Write(LastTick(lo, hi, step), last);
  return step;
}

double SyncUpInterval(double value, double step) noexcept {
  if (ChangesNothing(value, step)) {
    return value;
  }
  const double multiple = Raised(std::ceil(value / step) * step, value, step);
  return Lowered(multiple, value + step, step);
}

double SyncDownInterval(double value, double step) noexcept {
  if (ChangesNothing(value, step)) {
    return value;
  }
  const double multiple = Lowered(std::floor(value / step) * step, value, step);
  return Raised(multiple, value - step, step);
}

}  // namespace vlm
