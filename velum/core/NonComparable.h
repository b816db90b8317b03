#pragma once

/// \file
/// Forbids comparison of objects that have identity.
///
///     class Command : private vlm::NonComparable {};
///     // Two commands: a == b does not compile.

#include <velum/core/Api.h>

namespace vlm {

/// An empty base class: `==`, `!=` and `<` on two objects of a derived class do not compile.
///
/// It is meant to be a private base, and adds nothing to the size of the object. A derived class
/// can be copied as its own members allow.
class VELUM_API NonComparable {
 public:
  /// Deleted: objects with identity are not equal or unequal.
  friend bool operator==(const NonComparable&, const NonComparable&) = delete;
  /// Deleted, as equality is.
  friend bool operator!=(const NonComparable&, const NonComparable&) = delete;
  /// Deleted: objects with identity have no order.
  friend bool operator<(const NonComparable&, const NonComparable&) = delete;

 protected:
  NonComparable() = default;
  /// Copies the base, which holds nothing.
  NonComparable(const NonComparable&) = default;
  /// Copies the base, which holds nothing.
  NonComparable& operator=(const NonComparable&) = default;
  ~NonComparable() = default;
};

}  // namespace vlm
