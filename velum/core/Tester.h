#pragma once

/// \file
/// A test that a program carries with it and runs on request.
///
///     class GridTester : public vlm::Tester {
///       void TestImpl() override { assert(2 + 2 == 4); }
///     };
///     GridTester().Test();

#include <velum/core/Api.h>

namespace vlm {

/// Something that can test itself. Applications implement it; nothing in the library does.
///
/// How a failure is told is the implementer's choice; what `TestImpl` throws passes through.
class VELUM_API Tester {
 public:
  virtual ~Tester() = default;

  /// Runs the test.
  void Test() { TestImpl(); }

 protected:
  Tester() = default;
  /// Copies the base, which holds nothing.
  Tester(const Tester&) = default;
  /// Copies the base, which holds nothing.
  Tester& operator=(const Tester&) = default;

 private:
  /// Makes the test.
  virtual void TestImpl() = 0;
};

}  // namespace vlm
