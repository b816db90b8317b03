#include <velum/platform/detail/FontTables.h>
#include <velum/platform/detail/OutlineFont.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace vlm::platform;

void Require(bool fact) {
  if (!fact) std::abort();
}

/// A file in memory of the bytes.
class File {
 public:
  File(const std::uint8_t* data, std::size_t size) : descriptor_(::memfd_create("font", 0)) {
    Require(descriptor_ >= 0 && ::write(descriptor_, data, size) == static_cast<::ssize_t>(size));
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { ::close(descriptor_); }

  [[nodiscard]] std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

/// What must hold of the measures of any face that is accepted.
void Check(const vlm::OUTLINETEXTMETRICA& record) {
  const vlm::TEXTMETRICA& metrics = record.otmTextMetrics;
  Require(RecordProblem(record) == nullptr);
  Require(metrics.tmAscent >= 0 && metrics.tmDescent >= 0);
  Require(metrics.tmHeight == metrics.tmAscent + metrics.tmDescent);
  Require(metrics.tmInternalLeading ==
          metrics.tmHeight - static_cast<std::int32_t>(record.otmEMSquare));
  Require(metrics.tmWeight >= 1 && metrics.tmWeight <= 1000 && metrics.tmExternalLeading >= 0);
  Require(record.otmItalicAngle >= -900 && record.otmItalicAngle <= 900);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const File file(data, size);
  for (const unsigned int index : {0u, 1u}) {
    vlm::OUTLINETEXTMETRICA record{};
    std::string problem;
    const FontTables result = ReadFontTables(file.Path(), index, record, problem);
    Require((result == FontTables::kDamaged) == !problem.empty());
    if (result == FontTables::kGood) Check(record);
    const auto font = OutlineFont::Open(file.Path(), index);
    if (font && font->FillRecord(record)) Check(record);
  }
  return 0;
}
