// Reads any bytes as math text with the grammar and with the reference, which must report the same
// items.
#include <velum/mathtext/test/reference/ReferenceScanner.h>
#include <velum/mathtext/test/reference/ScanRecorder.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  vlm::test::ScanRecorder found;
  vlm::test::ScanRecorder expected;
  const bool whole = vlm::ScanMathText(text.c_str(), found);
  const bool expectedWhole = vlm::test::ReferenceScan(text.c_str(), expected);
  if (whole == expectedWhole && found.calls == expected.calls) return 0;
  for (const std::string& call : found.calls) std::fprintf(stderr, "found    %s\n", call.c_str());
  for (const std::string& call : expected.calls)
    std::fprintf(stderr, "expected %s\n", call.c_str());
  std::abort();
}
