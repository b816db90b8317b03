// Each scenario runs until it gets all the memory that it asks for: with the first allocation of
// the library failing, with the second, and so on.

#include "Scenarios.h"

#include <velum/core/Exception.h>
#include <testing/FailingAllocations.h>
#include <testing/Sanitized.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vlm::faults {

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

namespace {

using testing::Asker;
using testing::FailingAllocations;

constexpr std::size_t kAll = static_cast<std::size_t>(-1);

/// How one run ended.
struct Ending {
  bool haveFailed = false;            ///< An allocation has failed.
  std::optional<std::string> answer;  ///< Of a run that was not given up.
  std::string fault;                  ///< How it was given up, unless that is documented.
};

Ending Run(const Scenario& scenario, std::size_t succeeding, std::size_t failing) {
  Ending ending;
  const FailingAllocations exhausted(succeeding, failing, Asker::Library);
  try {
    ending.answer = scenario.run();
  } catch (const std::bad_alloc&) {
  } catch (const Refused&) {
  } catch (const Exception& error) {
    if (scenario.code == 0 || error.GetErrCode() != scenario.code) {
      ending.fault = "Exception " + std::to_string(error.GetErrCode()) + ": " +
                     error.GetDescription().String();
    }
  } catch (const std::exception& error) {
    ending.fault = error.what();
  } catch (...) {
    ending.fault = "an exception of no known kind";
  }
  ending.haveFailed = exhausted.HaveFailed();
  return ending;
}

/// The memory in use; with a sanitizer, which tells of leaks at the end, always the same.
std::ptrdiff_t HeldNow() {
  if constexpr (testing::kIsSanitized)
    return 0;
  else
    return testing::HeldOfMalloc();
}

/// Whether a run leaves more memory in use each time. What is made once and kept is not lost, also
/// if one run after the other makes some of it.
bool Leaks(const Scenario& scenario, std::size_t succeeding, std::size_t failing) {
  for (int i = 0; i < 10; ++i) {
    const std::ptrdiff_t before = HeldNow();
    Run(scenario, succeeding, failing);
    if (HeldNow() <= before) return false;
  }
  return true;
}

/// Every number up to 500, and then fewer and fewer.
std::size_t Next(std::size_t n) {
  return n + 1 + (n < static_cast<std::size_t>(testing::Rounds(500)) ? 0 : n / 20);
}

void RunOutOfMemory(const Scenario& scenario, std::size_t failing) {
  std::vector<std::pair<std::size_t, std::string>> answers;  // in spite of a failure
  Ending ending;
  if (scenario.prepare) scenario.prepare();
  for (std::size_t n = 0;; n = Next(n)) {
    const std::ptrdiff_t before = HeldNow();
    ending = Run(scenario, n, failing);
    EXPECT_EQ(ending.fault, "") << "after " << n << " allocations";
    if (!ending.haveFailed) {
      if (testing::kIsSanitized && n == 0) GTEST_SKIP() << "the sanitizer keeps malloc to itself";
      EXPECT_GT(n, 0u) << "the library asks for no memory";
      break;
    }
    if (ending.answer) answers.emplace_back(n, *ending.answer);
    if (HeldNow() > before && Leaks(scenario, n, failing)) {
      ADD_FAILURE() << "leaks after " << n << " allocations";
    }
  }
  ASSERT_TRUE(ending.answer) << "refused with all its memory";
  for (const auto& [n, answer] : answers) {
    EXPECT_EQ(answer, *ending.answer) << "after " << n << " allocations";
  }
  EXPECT_EQ(Run(scenario, kAll, 0).answer, ending.answer) << "once all is over";
}

class AllocationFailure : public ::testing::TestWithParam<Scenario> {
  void SetUp() override {
    if (!testing::kAllocationsCanFail) {
      GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
    }
  }
};

TEST_P(AllocationFailure, OnceIsTold) { RunOutOfMemory(GetParam(), 1); }
TEST_P(AllocationFailure, FromThenOnIsTold) { RunOutOfMemory(GetParam(), kAll); }

std::vector<Scenario> AllScenarios() {
  std::vector<Scenario> all;
  for (const auto some :
       {TextScenarios(), FileScenarios(), DocumentScenarios(), GeometryScenarios(),
        NumericScenarios(), PictureScenarios(), LabelScenarios(), MachineScenarios()}) {
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(Of, AllocationFailure, ::testing::ValuesIn(AllScenarios()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace vlm::faults
