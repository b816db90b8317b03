#include <velum/platform/detail/ElfNames.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using vlm::platform::ByteSource;
using vlm::platform::ElfNames;

void Require(bool fact) {
  if (!fact) std::abort();
}

/// The bytes as a file, which counts how often it is asked.
class Bytes final : public ByteSource {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  std::size_t Read(std::uint64_t offset, void* to, std::size_t count) const override {
    ++reads;
    if (offset >= size_) return 0;
    count = std::min(count, size_ - static_cast<std::size_t>(offset));
    std::memcpy(to, data_ + offset, count);
    return count;
  }

  mutable std::size_t reads = 0;

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

bool IsNumber(const std::string& text) {
  return text.find_first_not_of("0123456789.") == std::string::npos &&
         (text.empty() || (text.front() != '.' && text.back() != '.'));
}

/// True if the bytes hold the text with a terminator behind it.
bool Holds(const std::uint8_t* data, std::size_t size, const std::string& text) {
  const char* const end = text.c_str() + text.size() + 1;
  return std::search(data, data + size, text.c_str(), end, [](std::uint8_t a, char b) {
           return a == static_cast<std::uint8_t>(b);
         }) != data + size;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Bytes file(data, size);
  ElfNames names;
  const bool isElf = vlm::platform::ReadElfNames(file, names);
  Require(isElf || (names.soname.empty() && names.newestVersion.empty()));
  // What is said stands in the file, fits a line, and does not cost more than the tables' limits.
  Require(names.soname.size() <= 255 && names.newestVersion.size() <= 255);
  Require(names.soname.empty() || Holds(data, size, names.soname));
  Require(std::none_of(names.soname.begin(), names.soname.end(),
                       [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }));
  Require(IsNumber(names.newestVersion) && IsNumber(VersionIn(names)));
  Require(file.reads < 20000);
  (void)IsCutElf(file, size);
  return 0;
}
