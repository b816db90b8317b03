#pragma once

/// \file
/// Whole files as bytes, for tests of what reads and writes files by other means.
///
///     vlm::testing::PutFile(path, "[Axes]\r\n");
///     EXPECT_EQ(vlm::testing::BytesOfFile(path), "[Axes]\r\n");

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace vlm::testing {

/// Makes the file at `path`, or empties it, and writes `bytes`.
inline void PutFile(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

/// The bytes of the file at `path`; none if it can't be read.
[[nodiscard]] inline std::string BytesOfFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace vlm::testing
