#pragma once

/// \file
/// How a number is to be written.
///
///     vlm::NumberFormatSpec spec(vlm::NumberFormatSpec::Fixed, 2);
///     vlm::GString text;
///     vlm::FormatString(text, spec.GetFormat().c_str(), 3.14159);  // 3.14

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// A form of numbers and a count of digits, from which the format of the printf family follows.
///
/// A value. Any number of threads may read one.
class VELUM_API NumberFormatSpec {
 public:
  /// The form of the number.
  enum Type {
    Exponential = 0,  ///< With an exponent: 1.5000e+03.
    Fixed = 1,        ///< With a fixed number of decimals: 1500.0000.
    General = 2,      ///< The shorter of the two, without trailing zeros: 1500.
  };

  /// Makes the general form with 4 digits.
  NumberFormatSpec() noexcept = default;
  /// Makes the form `type` with `digits` digits: decimals for Exponential and Fixed, significant
  /// digits for General.
  NumberFormatSpec(Type type, unsigned int digits) noexcept : type_(type), digits_(digits) {}

  /// Returns the form.
  [[nodiscard]] Type GetType() const noexcept { return type_; }
  /// Sets the form; a value that is none of the three changes nothing.
  void SetType(Type type) noexcept;

  /// Returns the number of digits.
  [[nodiscard]] unsigned int GetNumDigits() const noexcept { return digits_; }
  /// Sets the number of digits.
  void SetNumDigits(unsigned int digits) noexcept { digits_ = digits; }

  /// Returns the format of the printf family for one double: `%.4g`, say.
  ///
  /// - From 2^31 digits on the number is negative, and the format of no use.
  [[nodiscard]] GString GetFormat() const;

 private:
  Type type_ = General;
  unsigned int digits_ = 4;
};

}  // namespace vlm
