#include <examples/dates/Report.h>

#include <velum/core/StringFormat.h>
#include <velum/dates/DateFormats.h>
#include <velum/dates/DateTime.h>

#include <algorithm>
#include <ostream>
#include <stdexcept>
#include <vector>

namespace vlm::dates {
namespace {

constexpr int kRoom = 40;
constexpr std::size_t kMostUnread = 20;
constexpr const char* kWeekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};

std::string TextOf(double date, int dateFmt, int timeFmt) {
  char text[kRoom];
  KQDateTime(date).GetDateTimeStr(dateFmt, timeFmt, text, kRoom);
  return text;
}

std::string Name(int dateFmt, int timeFmt) {
  const std::string name = FormatName(dateFmt, timeFmt);
  return name.empty() ? "none" : name;
}

bool ComesBack(double date, const std::string& text, const KQDateTextOptions& options) {
  double read = 0.0;
  if (!KQParseDateTimeStr(text.c_str(), &read, nullptr, nullptr, options)) return false;
  KQDateTime::_COMPONENTS parts;
  KQDateTime(date).GetDateTime(parts);
  parts.RoundToNearestSecond();
  return KQDateTime(parts) == KQDateTime(read);
}

bool IsTimeAlone(double date) { return date > -1.0 && date < 1.0; }

// A date in the form that a reader anywhere understands.
std::string PlainText(double date) {
  const bool isTime = IsTimeAlone(date);
  KQDateTime::_COMPONENTS parts;
  KQDateTime(date).GetDateTime(parts);
  parts.RoundToNearestSecond();
  const bool hasTime = parts.Hour + parts.Minute + parts.Second != 0;
  const int timeFmt = isTime || hasTime ? KQDateTime::TIME_H_MM_SS : KQDateTime::TIME_NONE;
  return TextOf(date, KQDateTime::DATE_D_MMMM_YYYY, timeFmt);
}

std::string Counted(std::size_t count, const char* thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

void PrintOrders(std::ostream& out, const Survey& survey, const KQDateTextOptions& options) {
  const bool isMonthFirst = options.order == KQDateTextOptions::MonthDayYear;
  const char* const chosen = isMonthFirst ? "month" : "day";
  const char* const other = isMonthFirst ? "day" : "month";
  if (survey.ambiguous > 0) {
    out << Counted(survey.ambiguous, "date") << ", read with the " << chosen
        << " first, would be another with the " << other << " first\n";
  }
  if (survey.swapped > 0) {
    out << Counted(survey.swapped, "date") << " could only be read with the " << other
        << " first\n";
  }
}

void PrintRange(std::ostream& out, const Survey& survey) {
  // Times alone have no place among dates.
  std::vector<double> dates;
  for (const Entry& entry : survey.entries) {
    if (!IsTimeAlone(entry.date)) dates.push_back(entry.date);
  }
  if (dates.size() < survey.entries.size()) {
    out << Counted(survey.entries.size() - dates.size(), "time") << " without a date\n";
  }
  if (dates.empty()) return;
  const auto [first, last] = std::minmax_element(
      dates.begin(), dates.end(),
      [](double a, double b) { return KQDoubleFromDate(a) < KQDoubleFromDate(b); });
  out << "From " << PlainText(*first) << " to " << PlainText(*last) << ", "
      << ToString("%.6g", KQTimeSpanInDays(*first, *last)) << " days\n";
}

}  // namespace

std::string FormatName(int dateFmt, int timeFmt) {
  char name[kRoom];
  KQMapFmtTypesToExcelFmtStr(dateFmt, timeFmt, name, kRoom);
  return name;
}

void PrintForms(std::ostream& out, const std::string& text, const KQDateTextOptions& options) {
  double date = 0.0;
  KQDateTime::DATE_FORMAT_TYPE dateFmt;
  KQDateTime::TIME_FORMAT_TYPE timeFmt;
  if (!KQParseDateTimeStr(text.c_str(), &date, &dateFmt, &timeFmt, options)) {
    throw std::runtime_error("'" + text + "' is no date");
  }
  const KQDateTime held(date);
  date = held.GetDateTime();
  KQDateTime::_COMPONENTS parts;
  held.GetDateTime(parts);
  double serial = 0.0;
  const bool hasSerial = KQXLNumberFromDate(date, &serial);
  out << text << "\n"
      << "  day           " << kWeekdays[parts.DayOfWeek] << ", "
      << (IsTimeAlone(date) ? "30 December 1899: a time alone"
                            : TextOf(date, KQDateTime::DATE_D_MMMM_YYYY, 0))
      << "\n"
      << "  typed as      " << Name(dateFmt, timeFmt) << "  (types " << dateFmt << " and "
      << timeFmt << ")\n"
      << "  number        " << ToString("%.15g", date) << "\n"
      << "  numeric form  " << ToString("%.15g", held.GetNumericDateTime()) << "\n"
      << "  serial number " << (hasSerial ? ToString("%.15g", serial) : std::string("none"))
      << "\n\n";
  for (int day = 1; day <= 16; ++day) {
    for (int time = 1; time <= 7; ++time) {
      const std::string shown = TextOf(date, day, time);
      out << "  " << (ComesBack(date, shown, options) ? '=' : ' ') << ' '
          << ToString("%-28s", FormatName(day, time).c_str()) << ' ' << shown << "\n";
    }
  }
}

void PrintSurvey(std::ostream& out, const Survey& survey, const KQDateTextOptions& options) {
  out << Counted(survey.rows, "row") << ", " << Counted(survey.entries.size(), "date") << ", "
      << survey.unread.size() << " not read, " << survey.empty << " empty\n";
  if (!survey.entries.empty()) PrintRange(out, survey);
  PrintOrders(out, survey, options);
  if (!survey.forms.empty()) {
    out << "\n  count  shape              taken for                line  the first of them\n";
  }
  for (const Form& form : survey.forms) {
    out << ToString("%7u  %-18s %-22s %6u  ", static_cast<unsigned int>(form.count),
                    form.shape.c_str(), Name(form.dateFmt, form.timeFmt).c_str(),
                    static_cast<unsigned int>(form.line))
        << form.example << "\n";
  }
  if (!survey.unread.empty()) out << "\n   line  not read\n";
  for (std::size_t i = 0; i < std::min(survey.unread.size(), kMostUnread); ++i) {
    out << ToString("%7u  ", static_cast<unsigned int>(survey.unread[i].line))
        << survey.unread[i].text << "\n";
  }
  if (survey.unread.size() > kMostUnread) {
    out << "         and " << survey.unread.size() - kMostUnread << " more\n";
  }
}

}  // namespace vlm::dates
