#include <testing/TemporaryFolder.h>

#include <filesystem>
#include <random>
#include <stdexcept>
#include <system_error>

namespace vlm::testing {

TemporaryFolder::TemporaryFolder() {
  // Making a folder is atomic: a name that somebody else has taken gives false, and the next is
  // tried.
  constexpr int kAttempts = 100;
  std::random_device random;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const auto path =
        std::filesystem::temp_directory_path() / ("velum-test-" + std::to_string(random()));
    std::error_code error;
    if (std::filesystem::create_directory(path, error)) {
      path_ = path.string();
      return;
    }
  }
  throw std::runtime_error("cannot make a temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace vlm::testing
