#include <velum/files/PrimData.h>

#include <velum/core/StringFormat.h>

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>

namespace vlm {

namespace {

constexpr double kWideBound = 9223372036854775808.0;  // 2^63, the double next to widest_INT_MAX

template <class T>
T Load(const void* data) {
  T value;
  std::memcpy(&value, data, sizeof(T));
  return value;
}

// Calls `work` with the number at `data` in its own type, or gives 0 for a type that is none.
template <class Result, class Work>
Result WithNumber(CPrimType type, const void* data, Work work) {
  switch (static_cast<PrimType>(type)) {
    case PrimInt8:
      return work(Load<signed char>(data));
    case PrimUInt8:
      return work(Load<unsigned char>(data));
    case PrimInt16:
      return work(Load<std::int16_t>(data));
    case PrimUInt16:
      return work(Load<std::uint16_t>(data));
    case PrimInt32:
      return work(Load<std::int32_t>(data));
    case PrimUInt32:
      return work(Load<std::uint32_t>(data));
    case PrimInt64:
      return work(Load<std::int64_t>(data));
    case PrimFloat:
      return work(Load<float>(data));
    case PrimDouble:
      return work(Load<double>(data));
  }
  return Result();
}

template <class T>
CPrimData Limit(bool isMin) {
  return isMin ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max();
}

CPrimData LimitOf(CPrimType type, bool isMin) {
  switch (static_cast<PrimType>(type)) {
    case PrimInt8:
      return isMin ? -128 : 127;
    case PrimUInt8:
      return Limit<unsigned char>(isMin);
    case PrimInt16:
      return Limit<std::int16_t>(isMin);
    case PrimUInt16:
      return Limit<std::uint16_t>(isMin);
    case PrimInt32:
      return Limit<std::int32_t>(isMin);
    case PrimUInt32:
      return Limit<std::uint32_t>(isMin);
    case PrimInt64:
      return Limit<std::int64_t>(isMin);
    case PrimFloat:
      return Limit<float>(isMin);
    case PrimDouble:
      return Limit<double>(isMin);
  }
  return 0;
}

}  // namespace

constinit const std::int64_t CPrimData::widest_INT_MAX = std::numeric_limits<std::int64_t>::max();
constinit const std::int64_t CPrimData::widest_INT_MIN = std::numeric_limits<std::int64_t>::min();
constinit const double CPrimData::widest_REAL_MAX = DBL_MAX;
constinit const double CPrimData::widest_REAL_MIN = -DBL_MAX;

CPrimData::CPrimData() noexcept : CPrimData(0) {}
CPrimData::CPrimData(CPrimType type, const void* data) noexcept { CopyData(type, data); }
CPrimData::CPrimData(char value) noexcept { CopyData(PrimInt8, &value); }
CPrimData::CPrimData(signed char value) noexcept { CopyData(PrimInt8, &value); }
CPrimData::CPrimData(unsigned char value) noexcept { CopyData(PrimUInt8, &value); }
CPrimData::CPrimData(short value) noexcept { CopyData(PrimInt16, &value); }
CPrimData::CPrimData(unsigned short value) noexcept { CopyData(PrimUInt16, &value); }
CPrimData::CPrimData(int value) noexcept { CopyData(PrimInt32, &value); }
CPrimData::CPrimData(unsigned int value) noexcept { CopyData(PrimUInt32, &value); }
CPrimData::CPrimData(std::int64_t value) noexcept { CopyData(PrimInt64, &value); }
CPrimData::CPrimData(long long value) noexcept { CopyData(PrimInt64, &value); }
CPrimData::CPrimData(float value) noexcept { CopyData(PrimFloat, &value); }
CPrimData::CPrimData(double value) noexcept { CopyData(PrimDouble, &value); }
CPrimData::CPrimData(const CPrimData& other) noexcept = default;

CPrimData CPrimData::PrimMin(CPrimType type) noexcept { return LimitOf(type, true); }
CPrimData CPrimData::PrimMax(CPrimType type) noexcept { return LimitOf(type, false); }

std::int64_t CPrimData::GetWideInt(CPrimType type, const void* data) noexcept {
  return WithNumber<std::int64_t>(type, data, [](auto value) -> std::int64_t {
    if constexpr (std::is_floating_point_v<decltype(value)>) {
      return WideRealToWideInt(value);
    } else {
      return value;
    }
  });
}

double CPrimData::GetWideReal(CPrimType type, const void* data) noexcept {
  return WithNumber<double>(type, data, [](auto value) { return static_cast<double>(value); });
}

void CPrimData::GetData(void* out) const noexcept {
  std::memcpy(out, &m_data, static_cast<std::size_t>(GetSize()));
}

void CPrimData::GetDataAsString(GString& out) const {
  if (m_type == PrimFloat) {
    FormatString(out, "%.8lG", GetWideReal(m_type, &m_data));
  } else if (m_type == PrimDouble) {
    FormatString(out, "%.17lG", GetWideReal(m_type, &m_data));
  } else {
    FormatString(out, "%I64d", GetWideInt(m_type, &m_data));
  }
}

GString CPrimData::GetDataAsString() const {
  GString text;
  GetDataAsString(text);
  return text;
}

CPrimData::operator char() const noexcept { return static_cast<char>(GetWideInt(m_type, &m_data)); }
CPrimData::operator signed char() const noexcept {
  return static_cast<signed char>(GetWideInt(m_type, &m_data));
}
CPrimData::operator unsigned char() const noexcept {
  return static_cast<unsigned char>(GetWideInt(m_type, &m_data));
}
CPrimData::operator short() const noexcept {
  return static_cast<short>(GetWideInt(m_type, &m_data));
}
CPrimData::operator unsigned short() const noexcept {
  return static_cast<unsigned short>(GetWideInt(m_type, &m_data));
}
CPrimData::operator int() const noexcept { return static_cast<int>(GetWideInt(m_type, &m_data)); }
CPrimData::operator unsigned int() const noexcept {
  return static_cast<unsigned int>(GetWideInt(m_type, &m_data));
}
CPrimData::operator std::int64_t() const noexcept { return GetWideInt(m_type, &m_data); }
CPrimData::operator long long() const noexcept { return GetWideInt(m_type, &m_data); }
CPrimData::operator float() const noexcept {
  return static_cast<float>(GetWideReal(m_type, &m_data));
}
CPrimData::operator double() const noexcept { return GetWideReal(m_type, &m_data); }

void CPrimData::Replace(const CPrimData& other) noexcept {
  m_type = other.m_type;
  m_data = other.m_data;
}

CPrimData& CPrimData::operator=(const CPrimData& other) noexcept {
  ConvertData(other);
  return *this;
}
CPrimData& CPrimData::operator=(char value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(signed char value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(unsigned char value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(short value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(unsigned short value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(int value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(unsigned int value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(std::int64_t value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(long long value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(float value) noexcept { return *this = CPrimData(value); }
CPrimData& CPrimData::operator=(double value) noexcept { return *this = CPrimData(value); }

bool CPrimData::operator==(const CPrimData& other) const noexcept {
  return CompareData(other.m_type, &other.m_data) == 0;
}
bool CPrimData::operator!=(const CPrimData& other) const noexcept {
  return CompareData(other.m_type, &other.m_data) != 0;
}
bool CPrimData::operator<(const CPrimData& other) const noexcept {
  return CompareData(other.m_type, &other.m_data) < 0;
}
bool CPrimData::operator>(const CPrimData& other) const noexcept {
  return CompareData(other.m_type, &other.m_data) > 0;
}
bool CPrimData::operator<=(const CPrimData& other) const noexcept {
  return CompareData(other.m_type, &other.m_data) <= 0;
}
bool CPrimData::operator>=(const CPrimData& other) const noexcept {
  return CompareData(other.m_type, &other.m_data) >= 0;
}

int CPrimData::CompareData(CPrimType type, const void* data) const noexcept {
  const double real = GetWideReal(m_type, &m_data);
  const double otherReal = GetWideReal(type, data);
  bool asReals = IsFloat() || type.IsFloat();
  if (m_type == PrimInt64 && type.IsFloat()) asReals = !(std::fabs(otherReal) <= kWideBound);
  if (type == PrimInt64 && IsFloat()) asReals = !(std::fabs(real) <= kWideBound);
  if (asReals) return CompareWideReals(real, otherReal);
  return CompareWideInts(GetWideInt(m_type, &m_data), GetWideInt(type, data));
}

int CPrimData::CompareWideInts(std::int64_t a, std::int64_t b) noexcept {
  return (a > b) - (a < b);
}

int CPrimData::CompareWideReals(double a, double b) noexcept { return (a > b) - (a < b); }

void CPrimData::ConvertData(const CPrimData& other) noexcept {
  if (m_type == other.m_type) {
    m_data = other.m_data;
  } else if (m_type == PrimFloat) {
    const float value = other;
    CopyData(PrimFloat, &value);
  } else if (m_type == PrimDouble) {
    const double value = other;
    CopyData(PrimDouble, &value);
  } else {
    // The low bytes come first on the machines that this runs on.
    const std::int64_t value = other;
    CopyData(m_type, &value);
  }
}

void CPrimData::CopyData(CPrimType type, const void* data) noexcept {
  m_type = type;
  m_data.int64 = 0;
  if (data) std::memcpy(&m_data, data, static_cast<std::size_t>(type.Size()));
}

std::int64_t CPrimData::WideRealToWideInt(double value) noexcept {
  if (value >= kWideBound) return widest_INT_MAX;
  if (value < -kWideBound) return widest_INT_MIN;
  if (std::isnan(value)) return 0;
  // Adding a half first would round once more where a double has no place for it.
  const auto whole = static_cast<std::int64_t>(value);
  const double fraction = value - static_cast<double>(whole);
  return whole + (fraction >= 0.5) - (fraction <= -0.5);
}

}  // namespace vlm
