#pragma once

/// \file
/// One number of a type that is known only at run time.
///
///     vlm::CPrimData level = static_cast<unsigned char>(0);
///     level = 2.5;                               // level stays a byte, and holds 3
///     if (level < vlm::CPrimData(1e300)) puts(level.GetDataAsString().c_str());  // 3

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/files/PrimType.h>

#include <cstdint>

namespace vlm {

/// A number with its type. A value.
///
/// Assignment keeps the type of the target and converts: integers keep their low bytes, numbers
/// with a fraction are rounded to the nearest integer first, halves away from zero, and limited to
/// 64 bits; NaN becomes 0. A number that is an integer stays that one, beyond 2^52 as well.
/// Construction and `Replace` take the type as well. A number of a type that is none of the nine is
/// 0 and has no bytes.
///
/// Comparisons go by the numbers, whatever their types, and lose no digit of integers of 64 bits. A
/// number with a fraction that stands beside one of these is rounded first. NaN equals everything.
///
/// Beside a plain number name the type: `level == vlm::CPrimData(3)`.
class VELUM_API CPrimData {
 public:
  static const std::int64_t widest_INT_MAX;  ///< 9223372036854775807.
  static const std::int64_t widest_INT_MIN;  ///< -9223372036854775808.
  static const double widest_REAL_MAX;       ///< 1.7976931348623157e308.
  static const double widest_REAL_MIN;       ///< -1.7976931348623157e308.

  /// `PrimInt32` 0.
  CPrimData() noexcept;
  /// The number of a type whose bytes are at `data`; null gives 0.
  CPrimData(CPrimType type, const void* data) noexcept;
  /// `PrimInt8`.
  CPrimData(char value) noexcept;
  /// `PrimInt8`.
  CPrimData(signed char value) noexcept;
  /// `PrimUInt8`.
  CPrimData(unsigned char value) noexcept;
  /// `PrimInt16`.
  CPrimData(short value) noexcept;
  /// `PrimUInt16`.
  CPrimData(unsigned short value) noexcept;
  /// `PrimInt32`.
  CPrimData(int value) noexcept;
  /// `PrimUInt32`.
  CPrimData(unsigned int value) noexcept;
  /// `PrimInt64`.
  CPrimData(std::int64_t value) noexcept;
  /// `PrimInt64`.
  CPrimData(long long value) noexcept;
  /// `PrimFloat`.
  CPrimData(float value) noexcept;
  /// `PrimDouble`.
  CPrimData(double value) noexcept;
  /// A type is no number.
  CPrimData(PrimType) = delete;
  /// A type is no number.
  CPrimData(CPrimType) = delete;
  /// Takes type and number.
  CPrimData(const CPrimData& other) noexcept;

  /// The smallest number of a type; for `PrimInt8` it is a `PrimInt32`, and `PrimInt32` 0 for a
  /// type that is none.
  [[nodiscard]] static CPrimData PrimMin(CPrimType type) noexcept;
  /// The largest number of a type, in the same way.
  [[nodiscard]] static CPrimData PrimMax(CPrimType type) noexcept;
  /// The number of a type at `data` as 64 bits, rounded as an assignment does it; 0 for a type that
  /// is none. The bytes need no alignment.
  [[nodiscard]] static std::int64_t GetWideInt(CPrimType type, const void* data) noexcept;
  /// The number of a type at `data` as a double, the nearest one to an integer of 64 bits; 0 for a
  /// type that is none.
  [[nodiscard]] static double GetWideReal(CPrimType type, const void* data) noexcept;

  /// The type.
  [[nodiscard]] CPrimType GetType() const noexcept { return m_type; }
  /// The number of bytes.
  [[nodiscard]] int GetSize() const noexcept { return m_type.Size(); }
  /// The name of the type.
  [[nodiscard]] const char* GetName() const noexcept { return m_type.Name(); }
  /// True for `PrimFloat` and `PrimDouble`.
  [[nodiscard]] bool IsFloat() const noexcept { return m_type.IsFloat(); }
  /// True for all other types.
  [[nodiscard]] bool IsInteger() const noexcept { return m_type.IsInteger(); }
  /// Copies the bytes of the number to `out`.
  void GetData(void* out) const noexcept;
  /// Writes the number into `out`: integers with all digits, a `PrimFloat` with 8 and a
  /// `PrimDouble` with 17 significant ones at most, and the decimal point of the runtime's locale.
  void GetDataAsString(GString& out) const;
  /// The same as a result.
  [[nodiscard]] GString GetDataAsString() const;

  /// The low bytes of the number as 64 bits.
  operator char() const noexcept;
  /// The low bytes of the number as 64 bits.
  operator signed char() const noexcept;
  /// The low bytes of the number as 64 bits.
  operator unsigned char() const noexcept;
  /// The low bytes of the number as 64 bits.
  operator short() const noexcept;
  /// The low bytes of the number as 64 bits.
  operator unsigned short() const noexcept;
  /// The low bytes of the number as 64 bits.
  operator int() const noexcept;
  /// The low bytes of the number as 64 bits.
  operator unsigned int() const noexcept;
  /// The number as 64 bits, see `GetWideInt`.
  operator std::int64_t() const noexcept;
  /// The number as 64 bits, see `GetWideInt`.
  operator long long() const noexcept;
  /// The double that `GetWideReal` gives, as a float.
  operator float() const noexcept;
  /// The double that `GetWideReal` gives.
  operator double() const noexcept;

  /// Takes type and number.
  void Replace(const CPrimData& other) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(const CPrimData& other) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(char value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(signed char value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(unsigned char value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(short value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(unsigned short value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(int value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(unsigned int value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(std::int64_t value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(long long value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(float value) noexcept;
  /// Converts the number to this one's type.
  CPrimData& operator=(double value) noexcept;
  /// A type is no number.
  CPrimData& operator=(PrimType) = delete;
  /// A type is no number.
  CPrimData& operator=(CPrimType) = delete;

  /// True if `CompareData` gives 0.
  bool operator==(const CPrimData& other) const noexcept;
  /// True if it gives something else.
  bool operator!=(const CPrimData& other) const noexcept;
  /// True if this number is below the other.
  bool operator<(const CPrimData& other) const noexcept;
  /// True if this number is above the other.
  bool operator>(const CPrimData& other) const noexcept;
  /// True if this number is not above the other.
  bool operator<=(const CPrimData& other) const noexcept;
  /// True if this number is not below the other.
  bool operator>=(const CPrimData& other) const noexcept;

 protected:
  /// Negative, 0 or positive as this number is below, equal to or above that of a type at `data`.
  [[nodiscard]] int CompareData(CPrimType type, const void* data) const noexcept;
  /// -1, 0 or 1.
  [[nodiscard]] static int CompareWideInts(std::int64_t a, std::int64_t b) noexcept;
  /// -1, 0 or 1; 0 for NaN on either side.
  [[nodiscard]] static int CompareWideReals(double a, double b) noexcept;
  /// Converts the other's number to this one's type.
  void ConvertData(const CPrimData& other) noexcept;
  /// Takes a type and the bytes at `data`; null gives 0.
  void CopyData(CPrimType type, const void* data) noexcept;
  /// Rounds to the nearest integer, halves away from zero; limits it to 64 bits. 0 for NaN.
  [[nodiscard]] static std::int64_t WideRealToWideInt(double value) noexcept;

  CPrimType m_type;  ///< The type.

  /// The number: as many bytes as the type has, and 0 behind them.
  union Data {
    signed char int8;        ///< `PrimInt8`.
    unsigned char uint8;     ///< `PrimUInt8`.
    std::int16_t int16;      ///< `PrimInt16`.
    std::uint16_t uint16;    ///< `PrimUInt16`.
    std::int32_t int32;      ///< `PrimInt32`.
    std::uint32_t uint32;    ///< `PrimUInt32`.
    std::int64_t int64;      ///< `PrimInt64`.
    float real32;            ///< `PrimFloat`.
    double real64;           ///< `PrimDouble`.
    unsigned char bytes[8];  ///< Any of them.
  } m_data;                  ///< The number.
};

}  // namespace vlm
