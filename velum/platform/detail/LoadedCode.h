#pragma once

/// \file
/// Where code is loaded in this process, told without the loader, whose lock a crashed thread may
/// hold.
///
///     static vlm::platform::LoadedCode code;
///     code.Read();
///     if (const auto* module = code.Find(address)) ...

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vlm::platform {

/// A file, or a piece of memory without one, with code in it.
struct CodeModule {
  std::uintptr_t begin = 0;      ///< The first address.
  std::uintptr_t end = 0;        ///< Behind the last address.
  std::uintptr_t codeBegin = 0;  ///< The first address that may be executed.
  std::uintptr_t codeEnd = 0;    ///< Behind the last of those.
  bool isFile = false;           ///< Whether it comes from a file.
  bool isReadable = false;       ///< Whether its first page may be read.
  std::string_view path;         ///< The file, or the system's name in brackets.
};

/// The modules with code, by rising addresses: up to 1024, with paths of together 128 KiB. A large
/// object, for static storage. Safe in the handler of a signal.
class LoadedCode {
 public:
  /// An empty list.
  constexpr LoadedCode() noexcept = default;
  LoadedCode(const LoadedCode&) = delete;
  LoadedCode& operator=(const LoadedCode&) = delete;

  /// Reads the list as it is now; false if the system does not tell.
  bool Read() noexcept;

  /// The number of modules.
  [[nodiscard]] std::size_t Count() const noexcept { return count_; }
  /// One of them.
  [[nodiscard]] const CodeModule& operator[](std::size_t i) const noexcept { return modules_[i]; }
  /// The one that an address is in; null for none.
  [[nodiscard]] const CodeModule* Find(std::uintptr_t address) const noexcept;
  /// True if the address may be executed.
  [[nodiscard]] bool IsCode(std::uintptr_t address) const noexcept;

 private:
  void TakeLine(std::string_view line) noexcept;

  std::array<CodeModule, 1024> modules_{};
  std::size_t count_ = 0;
  std::array<char, 128 * 1024> paths_{};
  std::size_t pathsUsed_ = 0;
  std::array<char, 8192> input_{};
};

/// The build ID of a module, as the linker wrote it, read from its memory; empty for none. Reads
/// what the module's headers say: a damaged module may make it crash.
[[nodiscard]] std::string_view BuildId(const CodeModule& module) noexcept;

}  // namespace vlm::platform
