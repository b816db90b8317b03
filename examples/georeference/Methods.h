#pragma once

/// \file
/// The names of the warping methods, on the command line and in tables.
///
///     const auto method = vlm::georeference::MethodOf("thin-plate-spline");

#include <velum/numerics/ImageRegistration.h>

#include <optional>
#include <string_view>

namespace vlm::georeference {

/// How many methods there are; their numbers begin with 0.
constexpr int kMethods = 13;

/// The name of a method.
[[nodiscard]] const char* NameOf(WarpingMethod method);

/// The method of a name, nothing for a name that is none.
[[nodiscard]] std::optional<WarpingMethod> MethodOf(std::string_view name);

}  // namespace vlm::georeference
