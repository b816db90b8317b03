#include <velum/core/StringCompare.h>
#include <velum/core/StringConvert.h>
#include <velum/core/StringFormat.h>

#include <benchmark/benchmark.h>
#include <strings.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kInputs = 1024;  // Few enough to stay in the cache.

/// The same inputs in each run.
template <class Make>
auto Inputs(Make make) {
  std::mt19937_64 random(1);
  std::vector<decltype(make(random))> all;
  for (std::size_t i = 0; i < kInputs; ++i) all.push_back(make(random));
  return all;
}

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

/// What a caller writes who has only the standard library: text in a buffer, checked and copied.
template <class... Arguments>
bool Print(std::string& target, const char* format, Arguments... arguments) {
  char text[256];
  const int length = std::snprintf(text, sizeof(text), format, arguments...);
  if (length < 0 || length >= static_cast<int>(sizeof(text))) return false;
  target.assign(text, static_cast<std::size_t>(length));
  return true;
}

std::string Printed(const char* format, double value) {
  std::string text;
  Print(text, format, value);
  return text;
}

void FormatRows() {
  static std::string text;
  const auto numbers = Inputs([](auto& random) { return static_cast<int>(random() % 100000); });
  const auto reals =
      Inputs([](auto& random) { return static_cast<double>(random() % 1000000) / 1024; });
  Row("FormatString/velum/names", numbers,
      [](int n) { return vlm::FormatString(text, "%s: %d of %d", "Wells", n, 7); });
  Row("FormatString/snprintf/names", numbers,
      [](int n) { return Print(text, "%s: %d of %d", "Wells", n, 7); });
  Row("FormatString/velum/reals", reals,
      [](double v) { return vlm::FormatString(text, "%.3f %.6g", v, v); });
  Row("FormatString/snprintf/reals", reals,
      [](double v) { return Print(text, "%.3f %.6g", v, v); });
}

void ReadRows(const std::string& input, const std::vector<std::string>& texts) {
  Row("StringToDouble/velum/" + input, texts, [](const std::string& text) {
    double value;
    return vlm::StringToDouble(text, value) ? value : 0;
  });
  Row("StringToDouble/from_chars/" + input, texts, [](const std::string& text) {
    double value;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    return read.ec == std::errc() && read.ptr == end ? value : 0;
  });
  Row("StringToDouble/strtod/" + input, texts, [](const std::string& text) {
    char* end;
    const double value = std::strtod(text.c_str(), &end);
    return end == text.c_str() + text.size() ? value : 0;
  });
}

void WriteRows(const std::string& input, const std::vector<double>& values) {
  Row("DoubleToString/velum/" + input, values,
      [](double value) { return vlm::DoubleToString(value, 3); });
  Row("DoubleToString/to_chars/" + input, values, [](double value) {
    char text[400];
    const auto written =
        std::to_chars(text, text + sizeof(text), value, std::chars_format::fixed, 3);
    return std::string(text, written.ptr);
  });
  Row("DoubleToString/snprintf/" + input, values,
      [](double value) { return Printed("%.3f", value); });
}

using Pair = std::pair<std::string, std::string>;

void CompareRows(const std::string& input, const std::vector<Pair>& pairs) {
  Row("StringLess/velum/" + input, pairs,
      [](const Pair& pair) { return vlm::StringLess()(pair.first, pair.second); });
  Row("StringLess/strcasecmp/" + input, pairs,
      [](const Pair& pair) { return strcasecmp(pair.first.c_str(), pair.second.c_str()) < 0; });
}

/// `length` letters, and the same in other cases with one letter changed at a random place.
std::vector<Pair> Names(std::size_t length) {
  return Inputs([length](auto& random) {
    Pair pair;
    for (std::size_t i = 0; i < length; ++i) {
      const char letter = static_cast<char>('a' + random() % 26);
      pair.first += letter;
      pair.second += random() % 4 ? letter : static_cast<char>(letter - 0x20);
    }
    pair.second[random() % length] = 'm';
    return pair;
  });
}

const bool added = [] {
  FormatRows();
  ReadRows("short", Inputs([](auto& random) {
             return Printed("%.3f", static_cast<double>(random() % 1000000) / 1024);
           }));
  ReadRows("17digits", Inputs([](auto& random) {
             return Printed("%.17g", static_cast<double>(random()) / 3e9);
           }));
  WriteRows("short",
            Inputs([](auto& random) { return static_cast<double>(random() % 1000000) / 1024; }));
  WriteRows("long", Inputs([](auto& random) { return static_cast<double>(random()) / 3e3; }));
  CompareRows("8", Names(8));
  CompareRows("40", Names(40));
  return true;
}();

}  // namespace
