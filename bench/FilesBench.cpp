#include <velum/files/BufferedFile.h>
#include <velum/files/FilenameCompare.h>
#include <velum/files/MemoryFile.h>

#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

template <class Work>
void Row(const char* name, Work work) {
  benchmark::RegisterBenchmark(name, [work](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(work());
  })->Unit(benchmark::kMillisecond);
}

/// A text file of 100 MB, whose lines have up to `longest` bytes.
std::string TextFile(std::size_t longest) {
  static const vlm::testing::TemporaryFolder folder;
  constexpr std::size_t kSize = 100'000'000;
  const std::string path = folder.Path("lines" + std::to_string(longest));
  std::mt19937_64 random(1);
  std::string text;
  while (text.size() < kSize) text.append(random() % (longest + 1), 'x') += '\n';
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

std::size_t ReadWithVelum(const std::string& path) {
  vlm::CBufferedFile file(path, "r", vlm::CBufferedFile::ShareDenyNone, false);
  std::string line;
  std::size_t size = 0;
  while (file.ReadString(line)) size += line.size();
  return size;
}

std::size_t ReadWithGetline(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string line;
  std::size_t size = 0;
  while (std::getline(file, line)) size += line.size();
  return size;
}

/// 100,000 names of files as applications number them, in no order.
std::vector<std::string> Names() {
  std::mt19937_64 random(1);
  std::vector<std::string> names;
  for (int i = 0; i < 100'000; ++i) {
    const char* const stems[] = {"well", "scan_", "IMG ", "profile-2024-"};
    const std::string name = stems[random() % 4] + std::to_string(random() % 100'000) +
                             (random() % 2 ? ".dat" : "_raw.dat");
    names.emplace_back(name);
  }
  return names;
}

template <class Before>
std::string Sorted(std::vector<std::string> names, Before before) {
  std::sort(names.begin(), names.end(), before);
  return names.front();
}

constexpr unsigned int kFields = 1'000'000;

std::size_t WriteFieldsWithVelum() {
  vlm::CMemoryFile file;
  for (unsigned int i = 0; i < kFields; ++i) {
    const double field = i;
    file.Write(&field, sizeof(field));
  }
  return file.GetLength();
}

std::size_t WriteFieldsWithVector() {
  std::vector<unsigned char> bytes;
  for (unsigned int i = 0; i < kFields; ++i) {
    const double field = i;
    const auto* const first = reinterpret_cast<const unsigned char*>(&field);
    bytes.insert(bytes.end(), first, first + sizeof(field));
  }
  return bytes.size();
}

const bool added = [] {
  for (const std::size_t longest : {100, 12}) {
    const std::string input = "100MB_lines_to_" + std::to_string(longest) + "_bytes";
    const std::string path = TextFile(longest);
    Row(("ReadLine/velum/" + input).c_str(), [path] { return ReadWithVelum(path); });
    Row(("ReadLine/getline/" + input).c_str(), [path] { return ReadWithGetline(path); });
  }
  Row("NaturalSort/velum/1e5",
      [names = Names()] { return Sorted(names, vlm::CFilenameCompare()); });
  Row("NaturalSort/strverscmp/1e5", [names = Names()] {
    return Sorted(names, [](const std::string& a, const std::string& b) {
      return strverscmp(a.c_str(), b.c_str()) < 0;
    });
  });
  Row("WriteFields/velum/1e6", WriteFieldsWithVelum);
  Row("WriteFields/vector/1e6", WriteFieldsWithVector);
  return true;
}();

}  // namespace
