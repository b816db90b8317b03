#pragma once

/// \file
/// A folder for what one test writes, gone when the test ends.
///
///     const vlm::testing::TemporaryFolder folder;
///     std::ofstream(folder.Path("settings.ini")) << "[Fonts]";

#include <string>

namespace vlm::testing {

/// A new empty folder among the system's temporary files, removed with all that it holds by the
/// destructor.
///
/// Two objects never have the same folder, also in two processes that run at once.
class TemporaryFolder {
 public:
  /// Makes the folder.
  ///
  /// *Errors*: `std::runtime_error` if none can be made.
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  /// The folder's own path, without a separator at its end.
  [[nodiscard]] const std::string& Path() const { return path_; }

  /// The path of the file or folder `name` inside.
  [[nodiscard]] std::string Path(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

}  // namespace vlm::testing
