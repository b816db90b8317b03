#pragma once

/// \file
/// Reads the fields of a line that are separated by commas.
///
///     vlm::CTokenizer fields("\"Well 7\", 12.5, 3");
///     vlm::GString name;
///     double depth = 0;
///     fields.Parse(name, true);  // Well 7
///     fields.Parse(depth);       // 12.5

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// A place in a text, from which field after field is read.
///
/// A small value; a copy reads on by itself. The text belongs to the caller. White space around a
/// field is no part of it, as the runtime's present locale knows it.
class VELUM_API CTokenizer {
 public:
  /// What a field turned out to be. The numbers are part of the interface.
  enum Status {
    TokenOK = 0,     ///< A field was read.
    TokenEmpty = 1,  ///< An empty field: a comma stood at once.
    TokenEnd = 2,    ///< There is no more text, or none at all.
    TokenError = 3,  ///< A quoted field without its end, or no number where one was asked for.
  };

  /// Without a text.
  CTokenizer() noexcept = default;
  /// At the start of the terminated text `source`, or without a text if it is null.
  ///
  /// *Lifetime*: keeps the pointer.
  explicit CTokenizer(const char* source) noexcept : position_(source) {}

  /// The place of the next character to be read; null without a text.
  [[nodiscard]] const char* GetScannerPos() const noexcept { return position_; }

  /// Goes to the start of another text.
  ///
  /// *Lifetime*: keeps the pointer.
  void SetSource(const char* source) noexcept { position_ = source; }

  /// Reads a field, which ends at white space or a comma, and the comma behind it. `token` is empty
  /// unless there is one.
  ///
  /// With `allowQuotes`, a field that starts with a double quotation mark ends at the next one, and
  /// two in a row stand for one. Without its end, it is `TokenError`: `token` is then what there
  /// was, and the text is at its end.
  ///
  /// `a,,b` gives "a", `TokenEmpty`, "b", `TokenEnd`.
  Status Parse(GString& token, bool allowQuotes);
  /// Reads a field that starts with a whole number in base 10; the rest of it is passed over.
  ///
  /// With `TokenError` the place is where it was; unless the result is `TokenOK`, `value` is, too.
  /// A number out of range gives the limit of `int`.
  Status Parse(int& value);
  /// The same for a number as `strtod` reads it, in the runtime's present locale.
  Status Parse(double& value);
  /// Reads a whole number as a truth value: any but 0 is true.
  Status Parse(bool& value);

 private:
  template <class Number, class Convert>
  Status ParseNumber(Number& value, Convert convert);

  const char* position_ = nullptr;
};

}  // namespace vlm
