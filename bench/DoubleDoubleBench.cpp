// Double-double numbers beside dd_real of the QD library. "array" rows work on 1024 numbers that do
// not depend on each other, "chain" rows feed each result to the next operation. The sum of dd_real
// takes a shorter way with a weaker bound on its error; the rows of QD_ieee take its other sum,
// which has the bound that the library's has.

#include <velum/numerics/DoubleDouble.h>

#include <benchmark/benchmark.h>
#include <qd/dd_real.h>

#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <ios>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using vlm::doubledouble;

constexpr std::size_t kNumbers = 1024;

// The same numbers from 0.5 to 2 for every row.
template <class Number>
std::vector<Number> Numbers(unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> high(0.5, 2);
  std::uniform_real_distribution<double> low(-0x1p-55, 0x1p-55);
  std::vector<Number> numbers;
  for (std::size_t i = 0; i < kNumbers; ++i) {
    const double hi = high(random);
    numbers.push_back(Number(hi, low(random)));
  }
  return numbers;
}

void SetItems(benchmark::State& state) {
  state.SetItemsProcessed(static_cast<std::int64_t>(kNumbers) * state.iterations());
}

template <class Number, class Operation>
void Array(benchmark::State& state, Operation operation) {
  const std::vector<Number> a = Numbers<Number>(1);
  const std::vector<Number> b = Numbers<Number>(2);
  using Result = decltype(operation(a[0], b[0]));
  std::vector<Result> results(kNumbers);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kNumbers; ++i) {
      results[i] = operation(a[i], b[i]);
    }
    benchmark::DoNotOptimize(results.data());
    benchmark::ClobberMemory();
  }
  SetItems(state);
}

template <class Number, class Operation>
void Chain(benchmark::State& state, Operation operation) {
  const std::vector<Number> a = Numbers<Number>(1);
  for (auto _ : state) {
    Number result = a[0];
    for (const Number& x : a) {
      result = operation(result, x);
    }
    benchmark::DoNotOptimize(result);
  }
  SetItems(state);
}

template <class Number, class Operation>
void RegisterArray(const std::string& name, Operation operation) {
  benchmark::RegisterBenchmark(
      ("DoubleDouble" + name + "/array").c_str(),
      [operation](benchmark::State& state) { Array<Number>(state, operation); });
}

template <class Number, class Operation>
void RegisterBoth(const std::string& name, Operation operation) {
  RegisterArray<Number>(name, operation);
  benchmark::RegisterBenchmark(
      ("DoubleDouble" + name + "/chain").c_str(),
      [operation](benchmark::State& state) { Chain<Number>(state, operation); });
}

// An expression of two numbers that is the same for both libraries.
template <class Operation>
void Binary(const std::string& family, Operation operation) {
  RegisterBoth<doubledouble>(family + "/velum", operation);
  RegisterBoth<dd_real>(family + "/QD", operation);
}

// A function that has no use for its own result; each library has its own way to call it.
template <class Ours, class Theirs>
void Unary(const std::string& family, Ours ours, Theirs theirs) {
  RegisterArray<doubledouble>(family + "/velum", ours);
  RegisterArray<dd_real>(family + "/QD", theirs);
}
template <class Operation>
void Unary(const std::string& family, Operation operation) {
  Unary(family, operation, operation);
}

double High(const doubledouble& x) { return x.hi; }
double High(const dd_real& x) { return x.x[0]; }

template <class Number>
std::string Written(const Number& x) {
  std::ostringstream out;
  out << std::setprecision(32) << x;
  return out.str();
}

const std::string theText = "3.1415926535897932384626433832795";

[[maybe_unused]] const bool isRegistered = [] {
  using Ours = const doubledouble&;
  using Theirs = const dd_real&;
  Binary("Add", [](const auto& a, const auto& b) { return a + b; });
  RegisterBoth<dd_real>("Add/QD_ieee", [](Theirs a, Theirs b) { return dd_real::ieee_add(a, b); });
  Binary("Subtract", [](const auto& a, const auto& b) { return a - b; });
  RegisterBoth<dd_real>("Subtract/QD_ieee",
                        [](Theirs a, Theirs b) { return dd_real::ieee_add(a, -b); });
  Binary("Multiply", [](const auto& a, const auto& b) { return a * b; });
  Binary("Divide", [](const auto& a, const auto& b) { return a / b; });
  Binary("AddDouble", [](const auto& a, const auto& b) { return a + High(b); });
  Binary("MultiplyDouble", [](const auto& a, const auto& b) { return a * High(b); });
  Binary("DivideDouble", [](const auto& a, const auto& b) { return a / High(b); });
  Unary("Less", [](const auto& a, const auto& b) { return static_cast<char>(a < b); });
  Unary("Square", [](const auto& a, const auto&) { return sqr(a); });
  Unary("Sqrt", [](const auto& a, const auto&) { return sqrt(a); });
  Unary("Floor", [](const auto& a, const auto&) { return floor(a); });
  Unary("Absolute", [](const auto& a, const auto&) { return fabs(a); });
  Unary(
      "Reciprocal", [](Ours a, Ours) { return recip(a); }, [](Theirs a, Theirs) { return inv(a); });
  Unary(
      "Power25", [](Ours a, Ours) { return pow(a, 25); },
      [](Theirs a, Theirs) { return npwr(a, 25); });
  Unary(
      "Scale", [](Ours a, Ours) { return scalb(a, 7); },
      [](Theirs a, Theirs) { return ldexp(a, 7); });
  Unary(
      "ExactProduct", [](Ours a, Ours b) { return vlm::Multiply(a.hi, b.hi); },
      [](Theirs a, Theirs b) { return dd_real::mul(a.x[0], b.x[0]); });
  Unary("Write", [](const auto& a, const auto&) { return Written(a); });
  Unary(
      "Read", [](Ours, Ours) { return vlm::atodd(theText.c_str()); },
      [](Theirs, Theirs) { return dd_real(theText.c_str()); });
  return true;
}();

}  // namespace
