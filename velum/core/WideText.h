#pragma once

/// \file
/// Narrow text made wide and back, at the edges of the system.
///
///     const vlm::AtoW wide("Größe");
///     const std::wstring copy = static_cast<const wchar_t*>(wide);
///     const std::string back = static_cast<const char*>(vlm::WtoA(wide));
///
/// Wide text holds UTF-16 code units, one to an element of `wchar_t`. An element above 0xFFFF, as a
/// literal may hold one, is taken as that code point.
///
/// A code page is a number such as 1252, 437 or 28591. 0, the system's own, and 65001 are UTF-8. A
/// number that names no code page gives the empty text.
///
/// No text fails to convert: what is malformed becomes U+FFFD, one for each longest part of a
/// character that could still have gone on; a character that the code page lacks becomes "?".
///
/// *Errors*: `Exception` with `ERR_INTERNAL` if the system's count of characters disagrees with
/// what it then gives; `std::bad_alloc`.

#include <velum/core/Api.h>

#include <string>
#include <vector>

namespace vlm {

/// The wide form of a narrow text, made at construction and owned by the object.
class VELUM_API AtoW {
 public:
  /// Converts a terminated text; null stays null.
  explicit AtoW(const char* text, unsigned int codePage = 0);
  /// Converts `text` up to its first terminator.
  explicit AtoW(const std::string& text, unsigned int codePage = 0);
  AtoW(const AtoW&) = delete;
  AtoW& operator=(const AtoW&) = delete;
  ~AtoW() { delete[] text_; }

  /// The terminated wide text, or null.
  ///
  /// *Lifetime*: as long as this object.
  operator const wchar_t*() const noexcept { return text_; }

 private:
  const wchar_t* text_;
};

/// The narrow form of a wide text, made at construction and owned by the object.
class VELUM_API WtoA {
 public:
  /// Converts a terminated text; null stays null.
  explicit WtoA(const wchar_t* text, unsigned int codePage = 0);
  WtoA(const WtoA&) = delete;
  WtoA& operator=(const WtoA&) = delete;
  ~WtoA() { delete[] text_; }

  /// The terminated narrow text, or null.
  ///
  /// *Lifetime*: as long as this object.
  operator const char*() const noexcept { return text_; }

 private:
  const char* text_;
};

/// A formatted narrow text made wide, owned by the object.
class VELUM_API AtoWV {
 public:
  /// Formats as `FormatString` does and converts from UTF-8; empty where formatting fails.
  explicit AtoWV(const char* format, ...);
  AtoWV(const AtoWV&) = delete;
  AtoWV& operator=(const AtoWV&) = delete;
  ~AtoWV() { delete[] text_; }

  /// The terminated wide text.
  ///
  /// *Lifetime*: as long as this object.
  operator const wchar_t*() const noexcept { return text_; }

 private:
  const wchar_t* text_;
};

/// A narrow copy of a wide text that a caller keeps across calls.
///
/// A value: copies are independent.
class VELUM_API WtoAArray {
 public:
  /// The empty text.
  WtoAArray() : text_(1, '\0') {}

  /// The terminated text.
  ///
  /// *Lifetime*: until the next change of this object.
  [[nodiscard]] const char* c_str() const noexcept { return text_.data(); }

  /// Holds the UTF-8 form of a terminated text from now on; null gives the empty text.
  void SetArray(const wchar_t* text);

 private:
  std::vector<char> text_;
};

}  // namespace vlm
