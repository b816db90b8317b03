#pragma once

/// \file
/// What an ELF file says of itself, read without loading it.
///
///     vlm::platform::ElfNames names;
///     if (vlm::platform::ReadElfNames(source, names)) Report(VersionIn(names));

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vlm::platform {

class InputFile;

/// Bytes that can be read from any place.
class ByteSource {
 public:
  virtual ~ByteSource();
  /// Reads up to `count` bytes from `offset` on, fewer only at the end; gives their number.
  [[nodiscard]] virtual std::size_t Read(std::uint64_t offset, void* data,
                                         std::size_t count) const = 0;
};

/// The bytes of an open file, which must stay open.
class FileBytes final : public ByteSource {
 public:
  explicit FileBytes(const InputFile& file) : file_(file) {}
  [[nodiscard]] std::size_t Read(std::uint64_t offset, void* data,
                                 std::size_t count) const override;

 private:
  const InputFile& file_;
};

/// The names in the tables for the loader. Texts are printable and have 255 bytes at most.
struct ElfNames {
  std::string soname;         ///< The name that the library goes by; empty without one.
  std::string newestVersion;  ///< The greatest number of its version symbols; empty without one.
};

/// Reads the names of a file of this machine's kind, with segments; sections are not looked at. The
/// bytes may be anything: what does not fit is left out, and time and memory stay bounded. False
/// for a file of another kind.
[[nodiscard]] bool ReadElfNames(const ByteSource& file, ElfNames& names);

/// True for a file of this machine's kind of which a part that the loader would map lies beyond its
/// end, at `size`. A process that loads such a file is ended by the system.
[[nodiscard]] bool IsCutElf(const ByteSource& file, std::uint64_t size);

/// The version that names tell: the number of the SONAME if it has two parts or more, or else that
/// of the version symbols, if it has two parts or is the greater one, or else that of the SONAME
/// all the same.
[[nodiscard]] std::string VersionIn(const ElfNames& names);

/// The number in a SONAME: "1.74.0" of "libx.so.1.74.0", "2.4" of "libx-2.4.so"; empty if there is
/// none.
[[nodiscard]] std::string_view NumberInSoname(std::string_view soname);

/// The number that ends the name of a version: "2.36" of "GLIBC_2.36", "1.3" of "DBUS_1_3"; empty
/// if there is none, or one of its parts has more than nine digits.
[[nodiscard]] std::string NumberOfVersion(std::string_view name);

}  // namespace vlm::platform
