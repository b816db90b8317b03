#pragma once

/// \file
/// Standard exceptions that carry the library's own texts.
///
///     try { name.erase(100, 1); }
///     catch (const std::out_of_range& error) { puts(error.what()); }  // invalid string position
///
/// A handler for the standard class sees them; the text is the same whatever standard library the
/// program was built with.

#include <velum/core/Api.h>

#include <stdexcept>

namespace vlm {

/// Thrown where a position lies outside of a text or container.
class VELUM_API OutOfRangeError : public std::out_of_range {
 public:
  /// An error that says `text`, which is copied.
  explicit OutOfRangeError(const char* text);
  /// Copies the error and its text.
  OutOfRangeError(const OutOfRangeError&) noexcept;
  ~OutOfRangeError() override;
};

/// Thrown where a text or container would grow beyond its largest size.
class VELUM_API LengthError : public std::length_error {
 public:
  /// An error that says `text`, which is copied.
  explicit LengthError(const char* text);
  /// Copies the error and its text.
  LengthError(const LengthError&) noexcept;
  ~LengthError() override;
};

}  // namespace vlm
