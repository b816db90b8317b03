// Replays files through a fuzz target, for compilers without libFuzzer: every argument is a file or
// a folder of files.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Replay(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  const std::string first = argc > 1 ? argv[1] : "";
  if (first.empty() || first == "--help" || first == "-h") {
    std::printf("usage: %s FILE-OR-FOLDER...\nRuns the fuzz target once on every file named.\n",
                argv[0]);
    return first.empty() ? 2 : 0;
  }
  int replayed = 0;
  for (int i = 1; i < argc; ++i) {
    if (!std::filesystem::exists(argv[i])) {
      std::fprintf(stderr, "%s: no such file or folder: %s\n", argv[0], argv[i]);
      return 1;
    }
    if (!std::filesystem::is_directory(argv[i])) {
      Replay(argv[i]);
      ++replayed;
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
      if (!entry.is_regular_file()) continue;
      Replay(entry.path());
      ++replayed;
    }
  }
  std::printf("%d inputs replayed\n", replayed);
  return replayed > 0 ? 0 : 1;
}
