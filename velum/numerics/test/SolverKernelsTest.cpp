#include <velum/numerics/detail/SolverKernels.h>

#include <velum/numerics/detail/JacobiSweeps.h>
#include <velum/numerics/test/MatrixOf.h>
#include <velum/platform/detail/VectorUnit.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace vlm::detail {
namespace {

using vlm::testing::RandomOf;
using vlm::testing::SameBits;

std::vector<double> Random(std::size_t count, std::mt19937& random) {
  return RandomOf(std::vector<double>(count), random, true);
}

std::vector<Rotation> Rotations(std::size_t count, std::size_t from, std::size_t to,
                                std::mt19937& random) {
  std::uniform_real_distribution<double> angle(0, 1);
  std::vector<Rotation> rotations;
  for (std::size_t i = from; i < to; ++i) {
    if (random() % 2 || rotations.size() == count) continue;
    const double a = angle(random);
    rotations.push_back({std::cos(a), std::sin(a), i});
  }
  return rotations;
}

// Whatever this processor would choose. The registers of two doubles are held against the plain
// loops by the tests of the solvers, wherever those of four are not there.
TEST(SolverKernels, HaveTheSameBitsInRegistersOfAnyWidth) {
  if (!platform::HasFourWide()) GTEST_SKIP() << "no AVX2";
  std::mt19937 random(41);
  SCOPED_TRACE("seed 41");
  for (int i = 0; i < 200; ++i) {
    const std::size_t n = 8 * (1 + random() % 6);
    const std::size_t count = 1 + random() % n;
    const std::vector<double> matrix = Random(n * n, random);
    const std::vector<double> panels = Random(2 * n * kPanelRows, random);
    const std::vector<double> strip = Random(n * kStripCols, random);
    const std::vector<double> v = Random(n, random);
    const std::vector<Rotation> columns = Rotations(n, 0, n, random);
    const std::vector<Rotation> lanes = Rotations(kPanelRows, 0, kPanelRows, random);
    std::vector<double> results[2];
    for (const auto* set : {&kSolverKernelsTwoWide, &kSolverKernelsFourWide}) {
      std::vector<double>& result = results[set == &kSolverKernelsFourWide];
      const auto keep = [&result](const std::vector<double>& part) {
        result.insert(result.end(), part.begin(), part.end());
      };
      std::vector<double> out = v;
      set->addMultiple(count, v[0], matrix.data(), out.data());
      set->addMultiples(count, count, v.data(), matrix.data(), n, out.data());
      keep(out);
      set->multiplyRows(count, count, matrix.data(), n, v.data(), out.data());
      keep(out);
      set->multiplySymmetric(count, matrix.data(), n, v.data(), out.data());
      keep(out);
      std::vector<double> changed = panels;
      double* const second = changed.data() + n * kPanelRows;
      std::vector<double> u(panels.begin(), panels.begin() + 2 * kPanelRows);
      const Rotation* const first = columns.data();
      set->rotateColumns(changed.data(), u.data(), first, first + columns.size());
      set->rotateColumnsOfTwo(changed.data(), u.data(), second, u.data() + kPanelRows, first,
                              first + columns.size());
      out = v;
      set->rotateRows(changed.data(), out.data(), 0, n, lanes.data(), lanes.data() + lanes.size());
      keep(changed);
      keep(u);
      keep(out);
      changed = strip;
      std::vector<double> products(2 * kStripCols);
      double* const squares = products.data() + kStripCols;
      const double* const column = matrix.data();
      const StripStep steps[] = {{nullptr, nullptr, column, products.data(), nullptr},
                                 {column, v.data(), nullptr, nullptr, squares},
                                 {column, v.data(), column + n, products.data(), nullptr},
                                 {column, v.data(), nullptr, nullptr, nullptr}};
      for (const StripStep& step : steps) {
        if (n < kStripCols) break;
        set->stepStrip(count, changed.data(), step);
        keep(products);
      }
      keep(changed);
    }
    ASSERT_EQ(results[0].size(), results[1].size());
    EXPECT_TRUE(SameBits(results[0].data(), results[1].data(), results[0].size()));
  }
}

TEST(SolverKernels, SweepsHaveTheSameBitsInRegistersOfAnyWidth) {
  if (!platform::HasFourWide()) GTEST_SKIP() << "no AVX2";
  std::mt19937 random(43);
  SCOPED_TRACE("seed 43");
  for (const unsigned n : {2u, 9u, 40u, 77u}) {
    const RMatrix a = RandomOf(RMatrix(n, n), random);
    RMatrix vectors[] = {a, a};
    RVector values[2];
    for (const bool wide : {false, true}) {
      JacobiSweeps sweeps(a, wide ? kSolverKernelsFourWide : kSolverKernelsTwoWide);
      EXPECT_TRUE(sweeps.Run());
      sweeps.Give(vectors[wide], values[wide]);
    }
    EXPECT_TRUE(SameBits(vectors[0], vectors[1]) && SameBits(values[0], values[1])) << n;
  }
}

}  // namespace
}  // namespace vlm::detail
