#include <velum/files/BufferedFile.h>
#include <velum/fonts/detail/SymbolSetReader.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace {

void Require(bool fact) {
  if (!fact) std::abort();
}

/// What must hold of any set that is accepted.
void Check(const vlm::detail::SymbolSet& set) {
  Require(set.glyphs.size() == std::size_t{set.lastChar} - set.firstChar + 1);
  Require(set.firstChar <= set.defaultChar && set.defaultChar <= set.lastChar);
  Require(set.emSize >= 0 && set.emSize <= 255 && set.aspect == set.aspect);
  for (const auto& glyph : set.glyphs) {
    const int points = std::accumulate(glyph.counts.begin(), glyph.counts.end(), 0);
    Require(glyph.vertices.size() == static_cast<std::size_t>(points) && points <= 127);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::uint8_t> bytes(data, data + size);
  bytes.push_back(0);
  vlm::CBufferedFile file;
  file.Open(bytes.data(), static_cast<unsigned int>(size));
  vlm::detail::SymbolSet set;
  if (vlm::detail::ReadSymbolSet(file, size % 2 == 0, set)) {
    Check(set);
  } else {
    Require(set.glyphs.empty());
  }
  return 0;
}
