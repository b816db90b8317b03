#include <velum/dates/DateFormats.h>
#include <velum/dates/DateText.h>
#include <velum/dates/DateTime.h>

#include <benchmark/benchmark.h>
#include <time.h>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <chrono>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace chrono = std::chrono;
namespace posix_time = boost::posix_time;

constexpr std::size_t kInputs = 1024;  // Few enough to stay in the cache.
constexpr char kFormat[] = "%m/%d/%Y %H:%M:%S";

/// Adds a row that runs `work` on one input after the other.
template <class Input, class Work>
void Row(const std::string& name, const std::vector<Input>& inputs, Work work) {
  const auto run = [inputs, work](benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state) {
      benchmark::DoNotOptimize(work(inputs[i]));
      i = (i + 1) % kInputs;
    }
  };
  benchmark::RegisterBenchmark(name.c_str(), run);
}

template <class Make>
auto Inputs(const std::vector<chrono::sys_seconds>& times, Make make) {
  std::vector<decltype(make(times[0]))> all;
  for (const chrono::sys_seconds time : times) all.push_back(make(time));
  return all;
}

/// Random seconds of the years 1970 to 2069.
std::vector<chrono::sys_seconds> Times() {
  std::mt19937_64 random(1);
  std::vector<chrono::sys_seconds> times(kInputs);
  for (auto& time : times) time = chrono::sys_seconds(chrono::seconds(random() % 3155673600));
  return times;
}

double DateOf(chrono::sys_seconds time) {
  return 25569.0 + static_cast<double>(time.time_since_epoch().count()) / 86400.0;
}

tm TmOf(chrono::sys_seconds time) {
  const time_t seconds = time.time_since_epoch().count();
  tm parts{};
  gmtime_r(&seconds, &parts);
  return parts;
}

/// The text as people write it.
std::string TextOf(chrono::sys_seconds time) {
  char text[40];
  vlm::KQDateTime(DateOf(time)).GetDateTimeStr(12, 3, text, sizeof text);
  return text;
}

void FormatRows(const std::vector<chrono::sys_seconds>& times) {
  static char text[40];
  Row("DateToText/velum/m-d-yyyy h:mm:ss", Inputs(times, DateOf), [](double date) {
    vlm::KQDateTime(date).GetDateTimeStr(12, 3, text, sizeof text);
    return text[0];
  });
  // The peers write all zeros; for this one the parts stand ready.
  Row("DateToText/strftime/m-d-yyyy h:mm:ss", Inputs(times, TmOf), [](const tm& parts) {
    strftime(text, sizeof text, kFormat, &parts);
    return text[0];
  });
  Row("DateToText/gmtime+strftime/m-d-yyyy h:mm:ss", times, [](chrono::sys_seconds time) {
    const tm parts = TmOf(time);
    strftime(text, sizeof text, kFormat, &parts);
    return text[0];
  });
  const auto moments = Inputs(times, [](chrono::sys_seconds time) {
    return posix_time::from_time_t(time.time_since_epoch().count());
  });
  Row("DateToText/Boost facet/m-d-yyyy h:mm:ss", moments, [](const posix_time::ptime& time) {
    static std::ostringstream stream = [] {
      std::ostringstream made;
      made.imbue(std::locale(std::locale::classic(), new posix_time::time_facet(kFormat)));
      return made;
    }();
    stream.seekp(0);
    stream << time;
    return stream.tellp();
  });
  // A form of its own, the fastest that it has.
  Row("DateToText/Boost to_iso_string/m-d-yyyy h:mm:ss", moments,
      [](const posix_time::ptime& time) { return posix_time::to_iso_string(time).size(); });
}

void ParseRows(const std::vector<chrono::sys_seconds>& times) {
  const auto texts = Inputs(times, TextOf);
  Row("TextToDate/velum/m-d-yyyy h:mm:ss", texts, [](const std::string& text) {
    double date;
    vlm::KQDateTime::DATE_FORMAT_TYPE dateFmt;
    vlm::KQDateTime::TIME_FORMAT_TYPE timeFmt;
    vlm::KQParseDateTimeStr(text.c_str(), &date, &dateFmt, &timeFmt);
    return date + static_cast<double>(static_cast<int>(dateFmt) + static_cast<int>(timeFmt));
  });
  // The peer's is the easier task: it knows the form, and gives parts.
  Row("TextToDate/strptime/m-d-yyyy h:mm:ss", texts, [](const std::string& text) {
    tm parts{};
    return strptime(text.c_str(), kFormat, &parts) ? parts.tm_sec : -1;
  });
  Row("TextToDate/strptime+timegm/m-d-yyyy h:mm:ss", texts, [](const std::string& text) {
    tm parts{};
    return strptime(text.c_str(), kFormat, &parts) ? timegm(&parts) : -1;
  });
  // The peer wants all zeros.
  const auto padded = Inputs(times, [](chrono::sys_seconds time) {
    const tm parts = TmOf(time);
    char text[40];
    strftime(text, sizeof text, kFormat, &parts);
    return std::string(text);
  });
  Row("TextToDate/Boost facet/m-d-yyyy h:mm:ss", padded, [](const std::string& text) {
    static std::istringstream stream = [] {
      std::istringstream made;
      made.imbue(std::locale(std::locale::classic(), new posix_time::time_input_facet(kFormat)));
      return made;
    }();
    stream.clear();
    stream.str(text);
    posix_time::ptime time;
    stream >> time;
    return time.is_not_a_date_time();
  });
}

struct Parts {
  chrono::year_month_day date;
  chrono::weekday weekday;
  chrono::hh_mm_ss<chrono::seconds> time;
};

Parts PartsOf(chrono::sys_seconds time) {
  const auto day = chrono::floor<chrono::days>(time);
  return {day, chrono::weekday(day), chrono::hh_mm_ss(time - day)};
}

// The peer with the same work is the one from a number of days: both are given that number and make
// it again. From seconds the standard library is spared the fraction of a day, both ways, and
// neither checks that parts are a date, as is done here.
void ComponentRows(const std::vector<chrono::sys_seconds>& times) {
  using Days = chrono::duration<double, chrono::days::period>;
  const auto dates = Inputs(times, [](chrono::sys_seconds time) { return DateOf(time); });
  Row("DateToComponents/velum/one way", dates, [](double date) {
    vlm::KQDateTime::_COMPONENTS parts;
    vlm::KQDateTime(date).GetDateTime(parts);
    return parts;
  });
  Row("DateToComponents/chrono, from a number of days/one way", dates, [](double date) {
    const Days days(date - 25569.0);
    return PartsOf(chrono::sys_seconds(chrono::floor<chrono::seconds>(days)));
  });
  Row("DateToComponents/chrono, from seconds/one way", times, PartsOf);
  Row("DateToComponents/velum/and back", dates, [](double date) {
    vlm::KQDateTime::_COMPONENTS parts;
    vlm::KQDateTime(date).GetDateTime(parts);
    parts.Fraction = 0.0;
    benchmark::DoNotOptimize(parts);
    return vlm::KQDateTime(parts).GetDateTime();
  });
  Row("DateToComponents/chrono, from a number of days/and back", dates, [](double date) {
    const Days days(date - 25569.0);
    Parts parts = PartsOf(chrono::sys_seconds(chrono::floor<chrono::seconds>(days)));
    benchmark::DoNotOptimize(parts);
    const chrono::sys_days day = parts.date;
    return 25569.0 + Days(day.time_since_epoch() + parts.time.to_duration()).count();
  });
  Row("DateToComponents/chrono, from seconds/and back", times, [](chrono::sys_seconds time) {
    Parts parts = PartsOf(time);
    benchmark::DoNotOptimize(parts);
    return chrono::sys_days(parts.date) + parts.time.to_duration();
  });
}

const bool added = [] {
  const auto times = Times();
  FormatRows(times);
  ParseRows(times);
  ComponentRows(times);
  return true;
}();

}  // namespace
