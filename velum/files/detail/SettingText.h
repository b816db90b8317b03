#pragma once

/// \file
/// Numbers as lists of settings hold them: written in one form, read leniently, with the point
/// whatever the locale.
///
///     int count = 0;
///     const bool isRead = vlm::detail::ScanSetting(" 12 pixels", count);  // 12
///     const vlm::GString text = vlm::detail::SettingText(2.5);
///
/// Reading skips white space, takes a sign, and lets anything follow. Where no number comes the
/// result is false and the value stays. A whole number out of range gives the nearest one; a
/// negative one for a type without sign counts down from above the type's largest, and gives that
/// largest if it is out of range itself.

#include <velum/core/GString.h>

#include <cstdint>

namespace vlm::detail {

/// Reads a whole number.
[[nodiscard]] bool ScanSetting(const GString& text, int& value);
/// Reads a whole number from 0.
[[nodiscard]] bool ScanSetting(const GString& text, unsigned int& value);
/// Reads a whole number from 0, of 32 bits.
[[nodiscard]] bool ScanSetting(const GString& text, unsigned long& value);
/// Reads a whole number of 64 bits.
[[nodiscard]] bool ScanSetting(const GString& text, std::int64_t& value);
/// Reads a number as C's `scanf` does, in hexadecimal form and in words as well; a word or a
/// hexadecimal number that breaks off, as `infix` or `0xg`, is none.
[[nodiscard]] bool ScanSetting(const GString& text, double& value);
/// Reads a whole number; all but 0 are true.
[[nodiscard]] bool ScanSetting(const GString& text, bool& value);

/// A whole number's digits.
[[nodiscard]] GString SettingText(int value);
/// A whole number's digits.
[[nodiscard]] GString SettingText(unsigned int value);
/// A whole number's digits.
[[nodiscard]] GString SettingText(std::int64_t value);
/// A number with 17 significant digits, or as many as said, and an exponent with `E` or, for
/// `small`, `e`. What is no number has no sign.
[[nodiscard]] GString SettingText(double value, int digits = 17, bool small = false);
/// "1" or "0".
[[nodiscard]] GString SettingText(bool value);

/// Reads a number by the rules of `StringToDouble`, with the point.
[[nodiscard]] bool ReadPlainDouble(const GString& text, double& value);

}  // namespace vlm::detail
