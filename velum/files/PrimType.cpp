#include <velum/files/PrimType.h>

#include <velum/core/Exception.h>
#include <velum/files/detail/NumberCast.h>

#include <cfloat>
#include <cstddef>
#include <cstring>

namespace vlm {

constinit const int CPrimType::TypeSize[9] = {1, 1, 2, 2, 4, 4, 8, 4, 8};

constinit const double CPrimType::TypeMin[9] = {
    -128, 0, -32768, 0, -2147483648.0, 0, -9223372036854775808.0, -FLT_MAX, -DBL_MAX};

constinit const double CPrimType::TypeMax[9] = {
    127, 255, 32767, 65535, 2147483647, 4294967295, 9223372036854775808.0, FLT_MAX, DBL_MAX};

constinit const char* CPrimType::TypeName[10] = {
    "Signed 8 bits",    "Unsigned 8 bits", "Signed 16 bits",  "Unsigned 16 bits", "Signed 32 bits",
    "Unsigned 32 bits", "Signed 64 bits",  "Float (32 bits)", "Double (64 bits)", nullptr};

namespace {

constexpr PrimType kI8 = PrimInt8, kU8 = PrimUInt8, kI16 = PrimInt16, kU16 = PrimUInt16,
                   kI32 = PrimInt32, kU32 = PrimUInt32, kI64 = PrimInt64, kF = PrimFloat,
                   kD = PrimDouble;

bool AreKnown(PrimType a, PrimType b) {
  return a >= PrimInt8 && a <= PrimDouble && b >= PrimInt8 && b <= PrimDouble;
}

}  // namespace

constinit const PrimType CPrimType::Promotion[9][9] = {
    {kI8, kI16, kI16, kI32, kI32, kI64, kI64, kF, kD},
    {kI16, kU8, kI16, kU16, kI32, kU32, kI64, kF, kD},
    {kI16, kI16, kI16, kI32, kI32, kI64, kI64, kF, kD},
    {kI32, kU16, kI32, kU16, kI32, kU32, kI64, kF, kD},
    {kI32, kI32, kI32, kI32, kI32, kI64, kI64, kF, kD},
    {kI64, kU32, kI64, kU32, kI64, kU32, kI64, kF, kD},
    {kI64, kI64, kI64, kI64, kI64, kI64, kI64, kF, kD},
    {kF, kF, kF, kF, kF, kF, kF, kF, kD},
    {kD, kD, kD, kD, kD, kD, kD, kD, kD},
};

PrimType CPrimType::Promote(PrimType a, PrimType b) noexcept {
  return AreKnown(a, b) ? Promotion[a][b] : PrimDouble;
}

double CPrimType::Clip(PrimType type, double value) noexcept {
  if (!AreKnown(type, type)) return value;
  if (value < TypeMin[type]) return TypeMin[type];
  return value > TypeMax[type] ? TypeMax[type] : value;
}

void CPrimType::CastArray(PrimType srcType, const void* src, PrimType dstType, void* dst, int count,
                          int stride) {
  if (stride < 1) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (count < 1 || !AreKnown(srcType, dstType)) return;
  if (!src || !dst) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  const auto elements = static_cast<std::size_t>(count);
  if (srcType == dstType && stride == 1) {
    std::memmove(dst, src, elements * static_cast<std::size_t>(TypeSize[srcType]));
    return;
  }
  detail::CastFunctionOf(srcType, dstType)(src, dst, elements, static_cast<std::size_t>(stride));
}

}  // namespace vlm
