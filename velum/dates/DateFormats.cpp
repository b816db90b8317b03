#include <velum/dates/DateFormats.h>

#include <velum/dates/DateText.h>
#include <velum/dates/detail/DateWriter.h>
#include <velum/dates/detail/Moment.h>
#include <velum/dates/detail/TextOut.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

namespace vlm {
namespace {

using detail::Moment;
using detail::MomentOf;
using detail::RaiseMisuse;

constexpr std::array<std::string_view, 17> kDateFormats = {
    "",          "m/d",        "m/d/yy",      "mm/dd/yy",     "d-mmm",     "d-mmm-yy",
    "dd-mmm-yy", "mmm-yy",     "mmmm-yy",     "mmmm d, yyyy", "mmmmm",     "mmmmm-yy",
    "m/d/yyyy",  "d-mmm-yyyy", "d mmmm yyyy", "d.m.yy",       "dd/mm/yyyy"};
constexpr std::array<std::string_view, 8> kTimeFormats = {
    "", "h:mm", "h:mm AM/PM", "h:mm:ss", "h:mm:ss AM/PM", "mm:ss", "mm:ss.0", "[h]:mm:ss"};

// The order in which a format string is looked for: none before one that it is part of.
constexpr std::array<unsigned char, 17> kDateSearch = {9, 14, 13, 16, 6, 12, 3, 5, 11,
                                                       8, 15, 2,  7,  4, 10, 1, 0};
constexpr std::array<unsigned char, 8> kTimeSearch = {4, 2, 6, 7, 3, 5, 1, 0};

template <std::size_t Count>
int FindFormat(std::string_view text, const std::array<std::string_view, Count>& formats,
               const std::array<unsigned char, Count>& order) {
  for (const unsigned char type : order) {
    if (text.find(formats[type]) != std::string_view::npos) return type;
  }
  return 0;
}

bool ShowsFractions(int timeFmt) {
  return timeFmt == KQDateTime::TIME_MM_SS || timeFmt == KQDateTime::TIME_MM_SS_0;
}

// What a text of ours reads as; the latest date if it reads as none.
double ReadBack(const char* text) {
  double date = 0.0;
  const bool isRead = KQParseDateTimeStr(text, &date, nullptr, nullptr);
  return isRead ? date : KQDateTime::Max_DTVal;
}

constexpr int kTextRoom = 40;

}  // namespace

bool KQValidDateFmtType(int dateFmt) noexcept {
  return dateFmt >= 0 && dateFmt <= KQDateTime::DATE_DD_MM_YYYY;
}

bool KQValidTimeFmtType(int timeFmt) noexcept {
  return timeFmt >= 0 && timeFmt <= KQDateTime::TIME_ELAPSED;
}

void KQDateTime::GetDateStr(int dateFmt, char* buffer, int size) const {
  RequireDate(__LINE__);
  if (buffer == nullptr || !KQValidDateFmtType(dateFmt)) RaiseMisuse(__LINE__);
  char text[detail::kLongestText];
  const char* end = detail::WriteDate(text, dateFmt, MomentOf(m_dt, __LINE__).day);
  detail::CopyText(text, end, buffer, size);
}

void KQDateTime::GetTimeStr(int timeFmt, char* buffer, int size) const {
  RequireDate(__LINE__);
  if (buffer == nullptr || !KQValidTimeFmtType(timeFmt)) RaiseMisuse(__LINE__);
  char text[detail::kLongestText];
  const char* end = detail::WriteTime(text, timeFmt, m_dt, MomentOf(m_dt, __LINE__));
  detail::CopyText(text, end, buffer, size);
}

void KQDateTime::GetDateTimeStr(int dateFmt, int timeFmt, char* buffer, int size) const {
  RequireDate(__LINE__);
  if (buffer == nullptr || !KQValidTimeFmtType(timeFmt)) RaiseMisuse(__LINE__);
  const Moment moment = MomentOf(m_dt, __LINE__);
  char text[detail::kLongestText];
  char* end = text;
  if (m_dt <= -1.0 || m_dt >= 1.0) {
    if (!KQValidDateFmtType(dateFmt)) RaiseMisuse(__LINE__);
    const bool both = dateFmt != DATE_NONE && timeFmt != TIME_NONE;
    const bool rounds = both && !ShowsFractions(timeFmt);
    end = detail::WriteDate(end, dateFmt, rounds ? Rounded(moment).day : moment.day);
    if (both) end = detail::Put(end, ' ');
  }
  end = detail::WriteTime(end, timeFmt, m_dt, moment);
  detail::CopyText(text, end, buffer, size);
}

void KQMapFmtTypesToExcelFmtStr(int dateFmt, int timeFmt, char* buffer, int size) {
  if (buffer == nullptr || !KQValidDateFmtType(dateFmt) || !KQValidTimeFmtType(timeFmt)) {
    RaiseMisuse(__LINE__);
  }
  char text[detail::kLongestText];
  char* end = detail::Put(text, kDateFormats[static_cast<std::size_t>(dateFmt)]);
  if (dateFmt != KQDateTime::DATE_NONE && timeFmt != KQDateTime::TIME_NONE) {
    end = detail::Put(end, ' ');
  }
  end = detail::Put(end, kTimeFormats[static_cast<std::size_t>(timeFmt)]);
  detail::CopyText(text, end, buffer, size);
}

void KQMapExcelFmtStrToFmtTypes(const char* text, KQDateTime::DATE_FORMAT_TYPE* dateFmt,
                                KQDateTime::TIME_FORMAT_TYPE* timeFmt) {
  if (text == nullptr || dateFmt == nullptr || timeFmt == nullptr) RaiseMisuse(__LINE__);
  std::string plain;
  for (; *text != '\0'; ++text) {
    if (*text == '\\' && text[1] != '\0') ++text;
    plain += *text;
  }
  const int date = FindFormat(plain, kDateFormats, kDateSearch);
  const int time = FindFormat(plain, kTimeFormats, kTimeSearch);
  *dateFmt = static_cast<KQDateTime::DATE_FORMAT_TYPE>(date);
  *timeFmt = static_cast<KQDateTime::TIME_FORMAT_TYPE>(time);
}

int KQClosestAccurateDateFmt(double date, int dateFmt) {
  if (!KQValidDateFmtType(dateFmt)) RaiseMisuse(__LINE__);
  if (dateFmt == KQDateTime::DATE_NONE) return dateFmt;
  const KQDateTime day(KQDateFromDouble(std::floor(KQDoubleFromDate(date))));
  char text[kTextRoom];
  day.GetDateStr(dateFmt, text, kTextRoom);
  if (ReadBack(text) == day.GetDateTime()) return dateFmt;
  switch (dateFmt) {
    case KQDateTime::DATE_M_D:
    case KQDateTime::DATE_M_D_YY:
    case KQDateTime::DATE_MM_DD_YY:
      return KQDateTime::DATE_M_D_YYYY;
    case KQDateTime::DATE_MMMM_D_YYYY:
    case KQDateTime::DATE_M_D_YYYY:
    case KQDateTime::DATE_D_MMM_YYYY:
    case KQDateTime::DATE_D_MMMM_YYYY:
    case KQDateTime::DATE_DD_MM_YYYY:
      return dateFmt;
    default:
      return KQDateTime::DATE_D_MMM_YYYY;
  }
}

int KQClosestAccurateTimeFmt(double date, int timeFmt) {
  if (!KQValidTimeFmtType(timeFmt)) RaiseMisuse(__LINE__);
  if (timeFmt == KQDateTime::TIME_NONE) return timeFmt;
  const double numeric = KQDoubleFromDate(date);
  const KQDateTime time(numeric - std::floor(numeric));
  char text[kTextRoom];
  time.GetTimeStr(timeFmt, text, kTextRoom);
  const Moment shown = Rounded(MomentOf(KQDateTime(ReadBack(text)).GetDateTime(), __LINE__));
  const Moment meant = Rounded(MomentOf(time.GetDateTime(), __LINE__));
  if (shown.second == meant.second) return timeFmt;
  if (timeFmt == KQDateTime::TIME_H_MM) return KQDateTime::TIME_H_MM_SS;
  if (timeFmt == KQDateTime::TIME_H_MM_AMPM) return KQDateTime::TIME_H_MM_SS_AMPM;
  return timeFmt;
}

}  // namespace vlm
