#pragma once

/// \file
/// The concept behind constructors that read an array. It takes a pointer or an array, but nothing
/// that merely converts to a pointer: a null literal, or a vector with too few components, does not
/// compile.
///
///     double const xyz[] = {1, 2, 3};
///     vlm::Vec3d v(xyz);

#include <concepts>

namespace vlm {

/// True of `T*` and `T const*`, the types by which a function takes an array of `T` to read.
template <class P, class T>
concept PointerTo = std::same_as<P, T*> || std::same_as<P, T const*>;

}  // namespace vlm
