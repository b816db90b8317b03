#include <examples/georeference/Methods.h>

namespace vlm::georeference {
namespace {

constexpr const char* kNames[kMethods] = {"thin-plate-spline",
                                          "natural-cubic-spline",
                                          "marcov-spline",
                                          "exponential-spline",
                                          "rational-quadratic-spline",
                                          "inverse-distance",
                                          "quadratic-polynomial",
                                          "general-linear",
                                          "linear-conformal",
                                          "mixed-scale",
                                          "uniform-scale",
                                          "translate",
                                          "identity"};

}  // namespace

const char* NameOf(WarpingMethod method) { return kNames[method]; }

std::optional<WarpingMethod> MethodOf(std::string_view name) {
  for (int i = 0; i < kMethods; ++i) {
    if (name == kNames[i]) return static_cast<WarpingMethod>(i);
  }
  return std::nullopt;
}

}  // namespace vlm::georeference
