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

#include <exception>
#include <new>
#include <stdexcept>

namespace vlm {

/// Thrown where a text is all that there is to say, as factories do.
class VELUM_API StandardError : public std::exception {
 public:
  /// An error that says `text`, a literal: the pointer is kept.
  explicit StandardError(const char* text) noexcept;
  /// Copies the error.
  StandardError(const StandardError&) noexcept;
  ~StandardError() override;

  /// The text.
  [[nodiscard]] const char* what() const noexcept override;

 private:
  const char* text_;
};

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

/// Thrown where memory is exhausted or a buffer would grow beyond its largest size: "bad
/// allocation".
class VELUM_API BadAllocError : public std::bad_alloc {
 public:
  /// The error.
  BadAllocError() noexcept;
  /// Copies the error.
  BadAllocError(const BadAllocError&) noexcept;
  ~BadAllocError() override;

  /// The text "bad allocation".
  [[nodiscard]] const char* what() const noexcept override;
};

}  // namespace vlm
