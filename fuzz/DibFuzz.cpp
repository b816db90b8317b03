// Reads any bytes as bitmaps in the library's stored form, one behind the other. Damage must be the
// documented error and leave the bitmap alone; what is read must come back from its own stored
// form.
#include <velum/colour/Dib.h>
#include <velum/core/Exception.h>
#include <velum/files/File.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using vlm::CDib;
using vlm::CFile;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

std::string Stored(const CDib& dib) {
  CFile file;
  file.Open();
  dib.Write(file);
  return {reinterpret_cast<const char*>(file.GetBuffer()),
          static_cast<std::size_t>(file.GetLength())};
}

bool Read(CDib& dib, CFile& file) {
  try {
    dib.Read(file);
    return true;
  } catch (const vlm::Exception& error) {
    Require(error.GetErrCode() == vlm::ERR_READ, "the error is the documented one");
    return false;
  }
}

/// Goes through all of a bitmap, so that a sanitizer sees what does not belong to it.
unsigned SumOf(CDib& dib) {
  unsigned sum = 0;
  std::vector<vlm::RGBQUAD> table(dib.GetColorTableSize());
  dib.GetColorTable(0, dib.GetColorTableSize(), table.data());
  for (const vlm::RGBQUAD& entry : table) sum += entry.rgbRed;
  const std::int64_t size = std::int64_t{dib.GetStride()} * dib.GetHeight();
  unsigned char* const bits = dib.GetWritableBits();
  for (std::int64_t i = 0; i < size; ++i) sum += bits[i];
  return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::uint8_t> bytes(data, data + size);
  bytes.push_back(0);
  CFile file;
  file.Open(bytes.data(), static_cast<unsigned int>(size));
  CDib dib;
  for (;;) {
    const CDib before(dib);
    const unsigned sum = SumOf(dib);
    if (!Read(dib, file)) {
      Require(dib.GetBits() == before.GetBits() || SumOf(dib) == sum, "the bitmap is as it was");
      break;
    }
    Require(dib.GetDibSize() <= size, "the bitmap stood in the bytes");
    std::string stored = Stored(dib);
    CFile again;
    again.Open(stored.data(), static_cast<unsigned int>(stored.size()));
    CDib copy;
    Require(Read(copy, again), "what was stored is read");
    Require(Stored(copy) == stored, "and is the same");
  }
  return 0;
}
