#pragma once

/// \file
/// What the library is asked to do while its memory runs out.

#include <span>
#include <string>

namespace vlm::faults {

/// Thrown by a scenario that the library has refused by its result, as is documented of it.
struct Refused {};

/// One piece of work. What it gives is the same in each undisturbed run.
struct Scenario {
  const char* name;
  std::string (*run)();
  int code = 0;  ///< Of the `Exception` that may tell of missing memory in place of `bad_alloc`.
  void (*prepare)() = nullptr;  ///< What comes first, while there is memory.
};

/// Names a scenario in the report of a test.
void PrintTo(const Scenario& scenario, std::ostream* out);

/// The scenarios, by what they are about.
[[nodiscard]] std::span<const Scenario> TextScenarios();
[[nodiscard]] std::span<const Scenario> FileScenarios();
[[nodiscard]] std::span<const Scenario> DocumentScenarios();
[[nodiscard]] std::span<const Scenario> GeometryScenarios();
[[nodiscard]] std::span<const Scenario> NumericScenarios();
[[nodiscard]] std::span<const Scenario> PictureScenarios();
[[nodiscard]] std::span<const Scenario> LabelScenarios();
[[nodiscard]] std::span<const Scenario> MachineScenarios();

}  // namespace vlm::faults
