#pragma once

/// \file
/// What the programs of the examples do alike: they end with a clear message and a status, and open
/// the files that they read.
///
///     int main(int argc, char** argv) {
///       return vlm::examples::RunProgram("labels", [&] { Run(ParseOptions({argv + 1, argv +
///       argc})); });
///     }

#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

namespace vlm::examples {

/// A command line that makes no sense; the message says why.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Runs a program, tells on the standard error what it throws, and gives the exit status: 0, 1 for
/// a failure, 2 for a UsageError.
[[nodiscard]] int RunProgram(const char* name, const std::function<void()>& run);

/// Opens a file to be read.
///
/// *Errors*: `std::runtime_error` with the path and the reason, for a folder too.
[[nodiscard]] std::ifstream OpenInput(const std::string& path);

}  // namespace vlm::examples
