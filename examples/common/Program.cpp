#include <examples/common/Program.h>

#include <velum/core/Exception.h>

#include <cerrno>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <system_error>

namespace vlm::examples {

int RunProgram(const char* name, const std::function<void()>& run) {
  constexpr int kWrongCommandLine = 2;
  try {
    run();
    return EXIT_SUCCESS;
  } catch (const UsageError& error) {
    std::cerr << name << ": " << error.what() << "; see " << name << " --help\n";
    return kWrongCommandLine;
  } catch (const Exception& error) {
    std::cerr << name << ": " << error.GetDescription() << "\n";
  } catch (const std::exception& error) {
    std::cerr << name << ": " << error.what() << "\n";
  }
  return EXIT_FAILURE;
}

std::ifstream OpenInput(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  // A folder opens as a file does, and fails at the first byte.
  if (file) file.peek();
  if (file.bad() || !file.is_open()) {
    throw std::runtime_error("cannot read '" + path +
                             "': " + std::generic_category().message(errno));
  }
  file.clear();
  return file;
}

}  // namespace vlm::examples
