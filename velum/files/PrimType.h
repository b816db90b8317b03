#pragma once

/// \file
/// The nine types of numbers that data can have, known only at run time.
///
///     const vlm::CPrimType type = vlm::CPrimType::Promote(vlm::PrimUInt8, vlm::PrimFloat);
///     puts(type.Name());  // Float (32 bits)
///     const short depths[] = {-3, 7};
///     float numbers[2];
///     vlm::CPrimType::CastArray(vlm::PrimInt16, depths, vlm::PrimFloat, numbers, 2, 1);

#include <velum/core/Api.h>

namespace vlm {

/// One of nine types of numbers, with what there is to know of it. A value.
///
/// Threads: any number may use the tables at once, which nobody is to change.
class VELUM_API CPrimType {
 public:
  /// The types.
  enum PrimType : int {
    PrimInt8 = 0,    ///< Signed, 8 bits.
    PrimUInt8 = 1,   ///< Unsigned, 8 bits.
    PrimInt16 = 2,   ///< Signed, 16 bits.
    PrimUInt16 = 3,  ///< Unsigned, 16 bits.
    PrimInt32 = 4,   ///< Signed, 32 bits.
    PrimUInt32 = 5,  ///< Unsigned, 32 bits.
    PrimInt64 = 6,   ///< Signed, 64 bits.
    PrimFloat = 7,   ///< A number with a fraction, 32 bits.
    PrimDouble = 8,  ///< A number with a fraction, 64 bits.
  };

  /// `PrimUInt8`.
  constexpr CPrimType() noexcept = default;
  /// Takes a type; one that is none of the nine is kept, and its size and limits are 0.
  constexpr CPrimType(PrimType type) noexcept : type_(type) {}

  /// The number of bytes.
  [[nodiscard]] int Size() const noexcept { return IsKnown() ? TypeSize[type_] : 0; }
  /// The name, in English; empty for a type that is none.
  [[nodiscard]] const char* Name() const noexcept { return IsKnown() ? TypeName[type_] : ""; }
  /// The smallest number, or the double next to it.
  [[nodiscard]] double GetMin() const noexcept { return IsKnown() ? TypeMin[type_] : 0.0; }
  /// The largest number, or the double next to it.
  [[nodiscard]] double GetMax() const noexcept { return IsKnown() ? TypeMax[type_] : 0.0; }
  /// True for `PrimFloat` and `PrimDouble`.
  [[nodiscard]] bool IsFloat() const noexcept { return type_ == PrimFloat || type_ == PrimDouble; }
  /// True for all others.
  [[nodiscard]] bool IsInteger() const noexcept { return !IsFloat(); }
  /// The type itself.
  constexpr operator PrimType() const noexcept { return type_; }

  /// Gives the type that holds numbers of both: see `Promotion`.
  ///
  /// - One of them is none of the nine: `PrimDouble`.
  [[nodiscard]] static PrimType Promote(PrimType a, PrimType b) noexcept;
  /// The names in the order of the types, and a null pointer behind them.
  [[nodiscard]] static const char** GetNameList() noexcept { return TypeName; }
  /// Limits a number to those that a type holds. NaN stays, and so do all numbers for a type that
  /// is none of the nine.
  [[nodiscard]] static double Clip(PrimType type, double value) noexcept;
  /// Converts the elements 0, `stride`, 2 `stride` ... of `src` that lie before `count`, and stores
  /// them in `dst` one behind the other: the whole part of (`count` + `stride` - 1) / `stride`.
  ///
  /// The arrays need no alignment; they do not overlap, unless types and places are the same and
  /// the stride is 1. No number is limited to the range of the type:
  ///
  /// - From integer to integer the low bytes stay; a wider one is extended by the source's sign.
  /// - A number with a fraction loses it, and of what 64 bits hold the low bytes stay. NaN and
  ///   infinity give 0, and so does what lies beyond 64 bits.
  /// - `PrimDouble` to `PrimFloat` gives the nearest number, infinity beyond the range.
  /// - A `count` below 1, and a type that is none of the nine: nothing is written.
  ///
  /// *Errors*: `ERR_INTERNAL` for a stride below 1 and for null pointers, before anything is
  /// written.
  static void CastArray(PrimType srcType, const void* src, PrimType dstType, void* dst, int count,
                        int stride);

  /// Takes a type.
  constexpr CPrimType& operator=(PrimType type) noexcept {
    type_ = type;
    return *this;
  }
  /// Takes a type by its number.
  constexpr CPrimType& operator=(int type) noexcept {
    type_ = static_cast<PrimType>(type);
    return *this;
  }
  /// True for the same type.
  constexpr bool operator==(PrimType type) const noexcept { return type_ == type; }
  /// True for the same type.
  constexpr bool operator==(const CPrimType& other) const noexcept { return type_ == other.type_; }
  /// True for another type.
  constexpr bool operator!=(PrimType type) const noexcept { return type_ != type; }
  /// True for another type.
  constexpr bool operator!=(const CPrimType& other) const noexcept { return type_ != other.type_; }

  static const int TypeSize[9];           ///< Bytes by type.
  static const double TypeMin[9];         ///< Smallest numbers by type.
  static const double TypeMax[9];         ///< Largest numbers by type.
  static const char* TypeName[10];        ///< Names by type, and a null pointer.
  static const PrimType Promotion[9][9];  ///< By the first and the second type.

 private:
  [[nodiscard]] constexpr bool IsKnown() const noexcept {
    return type_ >= PrimInt8 && type_ <= PrimDouble;
  }

  PrimType type_ = PrimUInt8;
};

using PrimType = CPrimType::PrimType;  ///< The types by their short name.
using enum CPrimType::PrimType;

}  // namespace vlm
