#include <velum/dates/DateTime.h>

#include <velum/dates/DateText.h>
#include <velum/dates/detail/Calendar.h>
#include <velum/dates/detail/Moment.h>
#include <velum/dates/detail/MonthNames.h>
#include <velum/dates/detail/TextOut.h>
#include <velum/platform/Types.h>

#include <cmath>
#include <string_view>

namespace vlm {
namespace {

using detail::Moment;
using detail::MomentOf;
using detail::RaiseMisuse;

// The two limits again: what stands in the class is loaded from memory.
constexpr double kMin = detail::kFirstDay;
constexpr double kMax = detail::kLastDay;

void Fill(const Moment& moment, KQDateTime::_COMPONENTS& components) noexcept {
  const SYSTEMTIME time = detail::SystemTimeOf(moment.day, moment.second);
  components.Year = time.wYear;
  components.Month = time.wMonth;
  components.Day = time.wDay;
  components.DayOfWeek = time.wDayOfWeek;
  components.Hour = time.wHour;
  components.Minute = time.wMinute;
  components.Second = time.wSecond;
  components.Fraction = moment.fraction;
}

double Limited(double date) noexcept {
  if (date < kMin) return kMin;
  return date <= kMax ? date : kMax;
}

// Gives false for parts that are no date; misuse is told as coming from `line`.
bool DateOf(const KQDateTime::_COMPONENTS& components, int line, double& date) {
  if (components.Fraction < 0.0) RaiseMisuse(line);
  const SYSTEMTIME time{components.Year,   components.Month,  0, components.Day, components.Hour,
                        components.Minute, components.Second, 0};
  return components.Fraction < 1.0 && detail::DateOfSystemTime(time, date);
}

// The fraction of a second is added to what a KQDateTime holds of the date.
DTSTATUS AddFraction(double& date, double fraction) {
  if (fraction == 0.0) return DT_VALID;
  const double exact = KQDateFromDouble(detail::NumericForm(Limited(date)) + fraction / 86400.0);
  date = Limited(exact);
  return date == exact ? DT_VALID : DT_INVALID;
}

// The latest date for parts that are none.
DTSTATUS LimitedDateOf(const KQDateTime::_COMPONENTS& components, double& limited) {
  double date = kMax;
  const bool isDate = DateOf(components, __LINE__, date);
  const DTSTATUS added = isDate ? AddFraction(date, components.Fraction) : DT_INVALID;
  limited = Limited(date);
  return limited == date ? added : DT_INVALID;
}

void PutName(std::string_view name, char* buffer, int size) {
  if (buffer == nullptr) RaiseMisuse(__LINE__);
  detail::CopyText(name.data(), name.data() + name.size(), buffer, size);
}

}  // namespace

constinit const double KQDateTime::Min_DTVal = kMin;
constinit const double KQDateTime::Max_DTVal = kMax;

void KQDateTime::_COMPONENTS::RoundToNearestSecond() {
  double date;
  Moment moment{detail::kLastDay, 0, 0.0};
  if (DateOf(*this, __LINE__, date)) {
    moment = {detail::DayOfCivil(Year, Month, Day), (Hour * 60 + Minute) * 60 + Second, Fraction};
  }
  Fill(Rounded(moment), *this);
}

KQDateTime::KQDateTime(double date) noexcept : m_dt(Limited(date)), m_status(DT_VALID) {}
KQDateTime::KQDateTime(const _COMPONENTS& components) : m_status(DT_VALID) {
  LimitedDateOf(components, m_dt);
}
KQDateTime::KQDateTime(const char* text) { SetDateTime(text); }
KQDateTime::KQDateTime(const KQDateTime& other) { Copy(other); }

KQDateTime& KQDateTime::operator=(const KQDateTime& other) {
  Copy(other);
  return *this;
}

double KQDateTime::GetDateTime() const {
  RequireDate(__LINE__);
  return m_dt;
}

double KQDateTime::GetNumericDateTime() const {
  RequireDate(__LINE__);
  return KQDoubleFromDate(m_dt);
}

void KQDateTime::GetDateTime(_COMPONENTS& components) const {
  RequireDate(__LINE__);
  ComponentsFromDate(m_dt, components);
}

DTSTATUS KQDateTime::SetDateTime(double date) noexcept {
  m_status = DT_VALID;
  m_dt = Limited(date);
  return m_dt == date ? DT_VALID : DT_INVALID;
}

DTSTATUS KQDateTime::SetDateTime(const _COMPONENTS& components) {
  const DTSTATUS made = LimitedDateOf(components, m_dt);
  m_status = DT_VALID;
  return made;
}

DTSTATUS KQDateTime::SetDateTime(const char* text) {
  double date = 0.0;
  const bool isRead = KQParseDateTimeStr(text, &date, nullptr, nullptr);
  const DTSTATUS stored = SetValidDateTime(isRead ? date : kMax);
  return isRead ? stored : DT_INVALID;
}

DTSTATUS KQDateTime::SetNumericDateTime(double value) noexcept {
  return SetValidDateTime(KQDateFromDouble(value));
}

DTSTATUS KQDateTime::AddTime(double days, double hours, double minutes, double seconds) {
  RequireDate(__LINE__);
  const double span = days + hours / 24.0 + minutes / 1440.0 + seconds / 86400.0;
  return Move(KQDoubleFromDate(m_dt) + span);
}

DTSTATUS KQDateTime::SubtractTime(double days, double hours, double minutes, double seconds) {
  RequireDate(__LINE__);
  const double span = days + hours / 24.0 + minutes / 1440.0 + seconds / 86400.0;
  return Move(KQDoubleFromDate(m_dt) - span);
}

bool KQDateTime::operator==(const KQDateTime& other) const {
  RequireDate(__LINE__);
  other.RequireDate(__LINE__);
  return m_dt == other.m_dt;
}

bool KQDateTime::operator<(const KQDateTime& other) const {
  return GetNumericDateTime() < other.GetNumericDateTime();
}

bool KQDateTime::operator!=(const KQDateTime& other) const { return !(*this == other); }
bool KQDateTime::operator<=(const KQDateTime& other) const { return !(other < *this); }
bool KQDateTime::operator>(const KQDateTime& other) const { return other < *this; }
bool KQDateTime::operator>=(const KQDateTime& other) const { return !(*this < other); }

bool KQDateTime::IsValidDateTime(double date) const noexcept {
  return date >= kMin && date <= kMax;
}

bool KQDateTime::IsValidStatus(int status) const noexcept {
  return status >= DT_VALID && status <= DT_NULL;
}

bool KQDateTime::IsValid() const noexcept {
  if (!IsValidStatus(m_status)) return false;
  return m_status != DT_VALID || IsValidDateTime(m_dt);
}

DTSTATUS KQDateTime::SetValidDateTime(double date) noexcept { return SetDateTime(date); }

void KQDateTime::ComponentsFromDate(double date, _COMPONENTS& components) const {
  Fill(MomentOf(date, __LINE__), components);
}

DTSTATUS KQDateTime::DateFromComponents(const _COMPONENTS& components, double* date) const {
  if (date == nullptr) RaiseMisuse(__LINE__);
  *date = 0.0;
  if (!DateOf(components, __LINE__, *date)) return DT_INVALID;
  return AddFraction(*date, components.Fraction);
}

void KQDateTime::Copy(const KQDateTime& other) {
  if (other.m_status == DT_INVALID) RaiseMisuse(__LINE__);
  m_dt = other.m_dt;
  m_status = other.m_status;
}

void KQDateTime::RequireDate(int line) const {
  if (m_status != DT_VALID) RaiseMisuse(line);
}

DTSTATUS KQDateTime::Move(double numeric) noexcept {
  return SetValidDateTime(KQDateFromDouble(numeric));
}

double KQDoubleFromDate(double date) noexcept { return detail::NumericForm(date); }

double KQDateFromDouble(double value) noexcept {
  if (value >= 0.0) return value;
  const double day = std::floor(value);
  return value == day ? value : detail::StoredBelowZero(day, value - day);
}

double KQTimeSpanInDays(double date1, double date2) noexcept {
  return std::abs(KQDoubleFromDate(date1) - KQDoubleFromDate(date2));
}

void KQDateFromXLNumber(double serial, double* date) {
  if (date == nullptr) RaiseMisuse(__LINE__);
  *date = serial >= 0.0 && serial < 60.0 ? serial + 1.0 : serial;
}

bool KQXLNumberFromDate(double date, double* serial) {
  if (serial == nullptr) RaiseMisuse(__LINE__);
  *serial = date >= 1.0 && date < 61.0 ? date - 1.0 : date;
  return date >= 1.0;
}

void KQMapMonthToName(unsigned int month, char* buffer, int size) {
  if (month - 1 > 11) RaiseMisuse(__LINE__);
  PutName(detail::MonthName(month), buffer, size);
}

void KQMapMonthToShortName(unsigned int month, char* buffer, int size) {
  if (month - 1 > 11) RaiseMisuse(__LINE__);
  PutName(detail::MonthName(month).substr(0, 3), buffer, size);
}

}  // namespace vlm
