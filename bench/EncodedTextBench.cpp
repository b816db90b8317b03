#include <velum/files/EncodedBufferedFile.h>
#include <velum/platform/detail/Utf8.h>

#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using vlm::TextEncoding;

/// Sentences in many scripts, most of them in ASCII as the texts of programs are.
constexpr std::string_view kSentences[] = {
    "All human beings are born free and equal in dignity and rights. ",
    "Depth (m)\t12.75\t3.1e-4\twell 17, logged 2018-02-07T10:15:00Z ",
    "They are endowed with reason and conscience and should act in brotherhood. ",
    "Tous les êtres humains naissent libres et égaux en dignité et en droits. ",
    "Все люди рождаются свободными и равными в своем достоинстве и правах. ",
    "Όλοι οι άνθρωποι γεννιούνται ελεύθεροι και ίσοι στην αξιοπρέπεια. ",
    "すべての人間は、生れながらにして自由であり、かつ、尊厳と権利とについて平等である。",
    "🌍 𐌰𐍄𐍄𐌰 𐌿𐌽𐍃𐌰𐍂 ",
};

/// Lines of one to four sentences, the first `kinds` of them.
std::string Text(std::size_t size, std::size_t kinds) {
  std::mt19937 random(1);
  std::string text;
  while (text.size() < size) {
    for (auto count = random() % 4 + 1; count > 0; --count) text += kSentences[random() % kinds];
    text += '\n';
  }
  return text;
}

std::vector<UChar> Units(const std::string& text) {
  std::vector<UChar> units(text.size());
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8(units.data(), static_cast<int32_t>(units.size()), &length, text.data(),
                static_cast<int32_t>(text.size()), &status);
  units.resize(static_cast<std::size_t>(length));
  return units;
}

/// The files that are read.
struct Files {
  static constexpr std::size_t kSize = 100'000'000;

  vlm::testing::TemporaryFolder folder;
  std::string utf8 = folder.Path("utf-8");
  std::string utf16 = folder.Path("utf-16");
  std::string narrow = folder.Path("windows-1252");

  Files() {
    const std::string text = Text(kSize, std::size(kSentences));
    std::ofstream(utf8, std::ios::binary) << text;
    std::vector<UChar> units = Units(text);
    units.resize(kSize / sizeof(UChar));
    units.back() = u'\n';
    std::ofstream(utf16, std::ios::binary)
        .write(reinterpret_cast<const char*>(units.data()), kSize);
    // The first four sentences, in which every byte of the page counts as a character.
    std::string latin = Text(kSize, 4);
    for (char& byte : latin) {
      if (static_cast<unsigned char>(byte) >= 0x80) byte = '\xE9';
    }
    std::ofstream(narrow, std::ios::binary) << latin;
  }
};

const Files& TheFiles() {
  static const Files files;
  return files;
}

void ReadByVelum(benchmark::State& state, const std::string& path, TextEncoding encoding,
                 unsigned int page = 0) {
  std::size_t units = 0;
  for (auto _ : state) {
    vlm::CEncodedBufferedFile file(path, "r", vlm::CEncodedBufferedFile::ShareDenyNone, encoding,
                                   page, true, false);
    std::wstring line;
    while (file.ReadString(line)) units += line.size();
  }
  benchmark::DoNotOptimize(units);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Files::kSize));
}

/// Reads line by line with `std::getline`; `convert` makes each line wide.
template <class Convert>
void ReadByGetline(benchmark::State& state, const std::string& path, bool isWide, Convert convert) {
  std::size_t units = 0;
  for (auto _ : state) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes;
    std::u16string line;
    while (std::getline(file, bytes)) {
      if (isWide) file.get();  // the second byte of the line feed
      convert(bytes, line);
      units += line.size();
    }
  }
  benchmark::DoNotOptimize(units);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Files::kSize));
}

void FromUtf8(const std::string& bytes, std::u16string& line) {
  line.resize(bytes.size());
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(line.data(), static_cast<int32_t>(line.size()), &length, bytes.data(),
                       static_cast<int32_t>(bytes.size()), 0xFFFD, nullptr, &status);
  line.resize(static_cast<std::size_t>(length));
}

void ReadByConverter(benchmark::State& state, const std::string& path, const char* name) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UConverter, void (*)(UConverter*)> converter(ucnv_open(name, &status),
                                                                     ucnv_close);
  const auto convert = [&](const std::string& bytes, std::u16string& line) {
    UErrorCode error = U_ZERO_ERROR;
    line.resize(bytes.size() + 1);
    UChar* to = line.data();
    const char* from = bytes.data();
    ucnv_toUnicode(converter.get(), &to, to + line.size(), &from, from + bytes.size(), nullptr,
                   true, &error);
    line.resize(static_cast<std::size_t>(to - line.data()));
  };
  ReadByGetline(state, path, name == std::string_view("UTF-16LE"), convert);
}

/// A megabyte of text, there and back.
struct Megabyte {
  std::string utf8;
  std::vector<UChar> units;
  std::wstring wide;

  explicit Megabyte(std::size_t kinds) : utf8(Text(1'000'000, kinds)), units(Units(utf8)) {
    wide.assign(units.begin(), units.end());
  }
};

void ConvertRows(const std::string& input, std::size_t kinds) {
  const auto data = std::make_shared<const Megabyte>(kinds);
  const auto row = [&](const std::string& name, auto convert) {
    benchmark::RegisterBenchmark((name + input).c_str(), [data, convert](benchmark::State& state) {
      for (auto _ : state) benchmark::DoNotOptimize(convert(*data));
      state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(data->utf8.size()));
    });
  };
  auto wide = std::make_shared<std::vector<wchar_t>>(data->utf8.size());
  auto units = std::make_shared<std::vector<UChar>>(data->utf8.size());
  auto bytes = std::make_shared<std::vector<char>>(data->utf8.size());
  row("Utf8ToWide/velum/",
      [wide](const Megabyte& text) { return vlm::platform::Utf8ToWide(text.utf8, wide->data()); });
  row("Utf8ToWide/u_strFromUTF8/", [units](const Megabyte& text) {
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(units->data(), static_cast<int32_t>(units->size()), &length, text.utf8.data(),
                  static_cast<int32_t>(text.utf8.size()), &status);
    return length;
  });
  // What the memory allows: each byte copied to an element, and each element to a byte.
  row("Utf8ToWide/copy/", [wide](const Megabyte& text) {
    return std::copy(text.utf8.begin(), text.utf8.end(), wide->begin()) - wide->begin();
  });
  row("WideToUtf8/copy/", [bytes](const Megabyte& text) {
    return std::transform(text.wide.begin(), text.wide.end(), bytes->begin(),
                          [](wchar_t c) { return static_cast<char>(c); }) -
           bytes->begin();
  });
  row("WideToUtf8/velum/", [bytes](const Megabyte& text) {
    return vlm::platform::WideToUtf8(text.wide, bytes->data());
  });
  row("WideToUtf8/u_strToUTF8/", [bytes](const Megabyte& text) {
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(bytes->data(), static_cast<int32_t>(bytes->size()), &length, text.units.data(),
                static_cast<int32_t>(text.units.size()), &status);
    return length;
  });
}

const bool added = [] {
  const auto row = [](const char* name, auto read) {
    benchmark::RegisterBenchmark(name, read)->Unit(benchmark::kMillisecond);
  };
  row("ReadString/velum/utf8-100MB",
      [](benchmark::State& state) { ReadByVelum(state, TheFiles().utf8, vlm::EncodingUTF8); });
  row("ReadString/getline+u_strFromUTF8/utf8-100MB",
      [](benchmark::State& state) { ReadByGetline(state, TheFiles().utf8, false, FromUtf8); });
  row("ReadString/getline+ucnv/utf8-100MB",
      [](benchmark::State& state) { ReadByConverter(state, TheFiles().utf8, "UTF-8"); });
  row("ReadString/velum/utf16-100MB",
      [](benchmark::State& state) { ReadByVelum(state, TheFiles().utf16, vlm::EncodingUTF16LE); });
  row("ReadString/getline+ucnv/utf16-100MB",
      [](benchmark::State& state) { ReadByConverter(state, TheFiles().utf16, "UTF-16LE"); });
  row("ReadString/velum/windows-1252-100MB", [](benchmark::State& state) {
    ReadByVelum(state, TheFiles().narrow, vlm::EncodingANSI, 1252);
  });
  row("ReadString/getline+ucnv/windows-1252-100MB", [](benchmark::State& state) {
    ReadByConverter(state, TheFiles().narrow, "ibm-5348_P100-1997");
  });
  ConvertRows("ascii-1MB", 3);
  ConvertRows("mixed-1MB", std::size(kSentences));
  return true;
}();

}  // namespace
