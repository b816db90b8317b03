#include <velum/numerics/detail/ControlPoints.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace vlm::detail {

bool AreControlPoints(const RPoints& from, const RPoints& to, std::size_t least) noexcept {
  const auto areFinite = [](const RPoints& list) {
    return std::all_of(list.Points().begin(), list.Points().end(), [](const RPoint& p) {
      return std::isfinite(p.X()) && std::isfinite(p.Y());
    });
  };
  return from.Points().size() >= least && from.Points().size() == to.Points().size() &&
         areFinite(from) && areFinite(to);
}

unsigned CountOf(const RPoints& points) {
  constexpr std::size_t kMost = std::size_t{1} << 29;
  const std::size_t count = points.Points().size();
  if (count >= kMost) throw std::bad_alloc();
  return static_cast<unsigned>(count);
}

RMatrix RowsOf(const RPoints& points) {
  RMatrix rows(CountOf(points), 2);
  double* out = rows.begin();
  for (const RPoint& p : points.Points()) {
    *out++ = p.X();
    *out++ = p.Y();
  }
  return rows;
}

bool IsFinite(const double* begin, const double* end) noexcept {
  return std::all_of(begin, end, [](double x) { return std::isfinite(x); });
}

RPoint NoPoint() noexcept {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  return {kNaN, kNaN};
}

}  // namespace vlm::detail
