#include <velum/files/HtmlReport.h>
#include <velum/files/PrimType.h>
#include <velum/files/WksStore.h>
#include <velum/files/XMLScanner.h>

#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>
#include <expat.h>
#include <malloc.h>

#include <pugixml.hpp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

// --- A document of 50 MB: elements with attributes and text, four levels deep.

const std::string& DocumentPath() {
  static const vlm::testing::TemporaryFolder folder;
  static const std::string path = [] {
    constexpr std::size_t kSize = 50'000'000;
    std::string text = "<?xml version=\"1.0\"?>\n<survey>\n";
    for (int well = 0; text.size() < kSize; ++well) {
      const std::string number = std::to_string(well);
      text += "  <well name=\"W" + number + "\" depth=\"" + std::to_string(well % 997) +
              ".25\" operator=\"Northern &quot;Shelf&quot;\">\n";
      for (int i = 0; i < 8; ++i) {
        text +=
            "    <sample id=\"" + number + "-" + std::to_string(i) +
            "\" unit=\"percent\">0.174 0.312 0.087 quartz and feldspar, fine grained</sample>\n";
      }
      text += "    <!-- logged twice -->\n  </well>\n";
    }
    text += "</survey>\n";
    std::ofstream(folder.Path("survey.xml"), std::ios::binary) << text;
    return folder.Path("survey.xml");
  }();
  return path;
}

template <class Work>
void DocumentRow(const char* name, Work work) {
  benchmark::RegisterBenchmark(name, [work](benchmark::State& state) {
    const std::string path = DocumentPath();
    for (auto _ : state) benchmark::DoNotOptimize(work(path));
    std::ifstream file(path, std::ios::ate);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.tellg()));
  })->Unit(benchmark::kMillisecond);
}

std::size_t ScanWithVelum(const std::string& path) {
  vlm::XMLScanner scanner;
  return scanner.ScanFile(path)->FindChild("survey", 0)->children.size();
}

/// The scanner without its tree: what the states alone cost.
class Emptying : public vlm::XMLScanner {
 protected:
  bool ReadCloseTag() override {
    const bool goesOn = XMLScanner::ReadCloseTag();
    GetCurrentNode()->Done();
    return goesOn;
  }
};

std::size_t ScanWithoutTree(const std::string& path) {
  Emptying scanner;
  return scanner.ScanFile(path)->children.size();
}

std::size_t ScanWithPugixml(const std::string& path) {
  pugi::xml_document document;
  document.load_file(path.c_str(), pugi::parse_default | pugi::parse_ws_pcdata);
  return static_cast<std::size_t>(
      std::distance(document.first_child().begin(), document.first_child().end()));
}

/// A tree like ours, that of expat's events.
struct Element {
  std::string name;
  std::map<std::string, std::string> attributes;
  std::string value;
  std::vector<std::shared_ptr<Element>> children;
};

struct Reading {
  std::vector<std::shared_ptr<Element>> open{std::make_shared<Element>()};
  std::size_t events = 0;
};

template <bool kBuilds>
std::size_t ScanWithExpat(const std::string& path) {
  Reading reading;
  XML_Parser parser = XML_ParserCreate(nullptr);
  XML_SetUserData(parser, &reading);
  XML_SetElementHandler(
      parser,
      [](void* data, const XML_Char* name, const XML_Char** attributes) {
        auto& to = *static_cast<Reading*>(data);
        ++to.events;
        if constexpr (!kBuilds) return;
        auto element = std::make_shared<Element>();
        element->name = name;
        for (; *attributes; attributes += 2) element->attributes[attributes[0]] = attributes[1];
        to.open.back()->children.push_back(element);
        to.open.push_back(std::move(element));
      },
      [](void* data, const XML_Char*) {
        if constexpr (kBuilds) static_cast<Reading*>(data)->open.pop_back();
      });
  XML_SetCharacterDataHandler(parser, [](void* data, const XML_Char* text, int size) {
    auto& to = *static_cast<Reading*>(data);
    ++to.events;
    if constexpr (kBuilds) to.open.back()->value.append(text, static_cast<std::size_t>(size));
  });
  std::FILE* const file = std::fopen(path.c_str(), "rb");
  std::vector<char> block(65536);
  for (bool isLast = false; !isLast;) {
    const std::size_t size = std::fread(block.data(), 1, block.size(), file);
    isLast = size < block.size();
    if (XML_Parse(parser, block.data(), static_cast<int>(size), isLast) != XML_STATUS_OK) abort();
  }
  std::fclose(file);
  XML_ParserFree(parser);
  return reading.events + reading.open[0]->children.size();
}

// --- Worksheets.

constexpr unsigned kNumbers = 10'000'000;
constexpr unsigned kTexts = 1'000'000;

void NumbersInVelum(benchmark::State& state) {
  for (auto _ : state) {
    vlm::CWksStore store;
    for (unsigned row = 0; row < kNumbers; ++row) store.SetCell(row, 0, row * 0.5);
    double sum = 0;
    double number = 0;
    for (unsigned row = 0; row < kNumbers; ++row) {
      if (store.GetCell(row, 0, number)) sum += number;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kNumbers);
}

void NumbersInAVector(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<double> store;
    for (unsigned row = 0; row < kNumbers; ++row) store.push_back(row * 0.5);
    benchmark::DoNotOptimize(store.data());
    double sum = 0;
    for (unsigned row = 0; row < kNumbers; ++row) sum += store[row];
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kNumbers);
}

const std::vector<const char*>& Words() {
  static std::vector<std::string> words;
  static std::vector<const char*> pointers;
  if (!words.empty()) return pointers;
  for (int i = 0; i < 1000; ++i) {
    words.push_back(i % 3 == 0 ? "W" + std::to_string(i)
                    : i % 3 == 1
                        ? "sandstone " + std::to_string(i)
                        : "quartz and feldspar, fine grained, sample " + std::to_string(i));
  }
  for (const std::string& word : words) pointers.push_back(word.c_str());
  return pointers;
}

std::size_t HeldBytes() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

template <class Fill>
void TextsRow(const char* name, Fill fill) {
  benchmark::RegisterBenchmark(name, [fill](benchmark::State& state) {
    const auto& words = Words();
    std::size_t bytes = 0;
    for (auto _ : state) {
      const std::size_t before = HeldBytes();
      const auto store = fill(words);
      bytes = HeldBytes() - before;
      benchmark::DoNotOptimize(&store);
    }
    state.SetItemsProcessed(state.iterations() * kTexts);
    state.counters["bytesPerText"] = static_cast<double>(bytes) / kTexts;
  })->Unit(benchmark::kMillisecond);
}

// --- Casts of all pairs.

using Types = std::tuple<std::int8_t, std::uint8_t, std::int16_t, std::uint16_t, std::int32_t,
                         std::uint32_t, std::int64_t, float, double>;
constexpr const char* kNames[] = {"i8", "u8", "i16", "u16", "i32", "u32", "i64", "f32", "f64"};

char* Buffer(int which) {
  static std::vector<double> buffers[2];
  if (buffers[which].empty()) buffers[which].resize(kNumbers);
  return reinterpret_cast<char*>(buffers[which].data());
}

/// Numbers from 0 to 100, which every type holds.
template <class Src>
Src* Source() {
  auto* const src = reinterpret_cast<Src*>(Buffer(0));
  for (unsigned i = 0; i < kNumbers; ++i) src[i] = static_cast<Src>(i % 100);
  return src;
}

template <class Src, class Dst>
[[gnu::noinline]] void CastPlainly(const Src* src, Dst* dst, int count) {
  for (int i = 0; i < count; ++i) dst[i] = static_cast<Dst>(src[i]);
}

/// Numbers over all that `Dst` holds.
template <class Src, class Dst>
Src* WideSource() {
  constexpr auto kMax = static_cast<double>(std::numeric_limits<Dst>::max());
  constexpr auto kMin = static_cast<double>(std::numeric_limits<Dst>::min());
  auto* const src = reinterpret_cast<Src*>(Buffer(0));
  std::mt19937 random(5);
  // Not quite to the ends, to which a float would round.
  std::uniform_real_distribution<double> numbers(kMin * 0.999, kMax * 0.999);
  for (unsigned i = 0; i < kNumbers; ++i) src[i] = static_cast<Src>(numbers(random));
  return src;
}

template <std::size_t From, std::size_t To>
void CastRows(std::tuple_element_t<From, Types>* (*source)(), const char* range) {
  using Src = std::tuple_element_t<From, Types>;
  using Dst = std::tuple_element_t<To, Types>;
  const std::string pair = std::string(kNames[From]) + "-" + kNames[To] + range;
  const auto row = [source](const std::string& name, auto cast) {
    benchmark::RegisterBenchmark(name.c_str(), [source, cast](benchmark::State& state) {
      const Src* const src = source();
      auto* const dst = reinterpret_cast<Dst*>(Buffer(1));
      for (auto _ : state) {
        cast(src, dst);
        benchmark::ClobberMemory();
      }
      state.SetBytesProcessed(state.iterations() * std::int64_t{sizeof(Src) + sizeof(Dst)} *
                              kNumbers);
    })->Unit(benchmark::kMillisecond);
  };
  row("Cast/velum/" + pair, [](const Src* src, Dst* dst) {
    vlm::CPrimType::CastArray(static_cast<vlm::PrimType>(From), src, static_cast<vlm::PrimType>(To),
                              dst, kNumbers, 1);
  });
  row("Cast/plain/" + pair,
      [](const Src* src, Dst* dst) { CastPlainly<Src, Dst>(src, dst, kNumbers); });
}

template <std::size_t... Pair>
void AllCastRows(std::index_sequence<Pair...>) {
  (CastRows<Pair / 9, Pair % 9>(Source<std::tuple_element_t<Pair / 9, Types>>, ""), ...);
}

/// Reals to integers of 32 bits and more, over the whole range of these.
void WideCastRows() {
  CastRows<7, 4>(WideSource<float, std::int32_t>, " wide");
  CastRows<8, 4>(WideSource<double, std::int32_t>, " wide");
  CastRows<7, 5>(WideSource<float, std::uint32_t>, " wide");
  CastRows<8, 5>(WideSource<double, std::uint32_t>, " wide");
  CastRows<7, 6>(WideSource<float, std::int64_t>, " wide");
  CastRows<8, 6>(WideSource<double, std::int64_t>, " wide");
}

// --- A report with a table of 20,000 rows.

constexpr int kRows = 20'000;

std::string ReportByVelum() {
  vlm::RowAttrib right;
  right.align = "right";
  vlm::CHtmlReport report;
  report << vlm::TableBeg();
  for (int row = 0; row < kRows; ++row) {
    report << vlm::TRBeg(right);
    for (int i = 0; i < 5; ++i) report << vlm::TDBeg() << row * 0.25 + i << vlm::TDEnd();
    report << vlm::TREnd();
  }
  report << vlm::TableEnd();
  return report.GetReport();
}

std::string ReportByHand() {
  std::ostringstream report;
  report.precision(14);
  report << "<TABLE>\n";
  for (int row = 0; row < kRows; ++row) {
    report << "<TR ALIGN=\"right\">\n";
    for (int i = 0; i < 5; ++i) report << "<TD>\n" << row * 0.25 + i << "</TD>\n";
    report << "</TR>\n";
  }
  report << "</TABLE>\n";
  return report.str() + "</BODY>\n</HTML>";
}

void ReportRow(const char* name, std::string (*make)()) {
  benchmark::RegisterBenchmark(name, [make](benchmark::State& state) {
    std::size_t size = 0;
    for (auto _ : state) {
      const std::string text = make();
      size = text.size();
      benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
  })->Unit(benchmark::kMillisecond);
}

const int registered = [] {
  DocumentRow("Xml/velum/tree", ScanWithVelum);
  DocumentRow("Xml/expat/tree", ScanWithExpat<true>);
  DocumentRow("Xml/pugixml/tree", ScanWithPugixml);
  DocumentRow("Xml/velum/no tree", ScanWithoutTree);
  DocumentRow("Xml/expat/no tree", ScanWithExpat<false>);
  benchmark::RegisterBenchmark("Worksheet/velum/numbers", NumbersInVelum)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("Worksheet/vector/numbers", NumbersInAVector)
      ->Unit(benchmark::kMillisecond);
  TextsRow("Worksheet/velum/texts", [](const std::vector<const char*>& words) {
    vlm::CWksStore store;
    for (unsigned row = 0; row < kTexts; ++row) store.SetCell(row, 0, words[row % words.size()]);
    return store;
  });
  TextsRow("Worksheet/vector/texts", [](const std::vector<const char*>& words) {
    std::vector<std::string> store;
    for (unsigned row = 0; row < kTexts; ++row) store.emplace_back(words[row % words.size()]);
    return store;
  });
  ReportRow("Report/velum/table", ReportByVelum);
  ReportRow("Report/stream/table", ReportByHand);
  AllCastRows(std::make_index_sequence<81>());
  WideCastRows();
  return 0;
}();

}  // namespace
