#include <velum/platform/detail/FontTables.h>

#include <velum/platform/detail/InputFile.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

namespace vlm::platform {

namespace {

constexpr std::uint32_t Tag(const char (&name)[5]) {
  std::uint32_t tag = 0;
  for (int i = 0; i < 4; ++i) tag = tag << 8 | static_cast<unsigned char>(name[i]);
  return tag;
}

/// The first bytes of a table, in the byte order of fonts. Reading beyond their end gives 0.
class Bytes {
 public:
  static constexpr std::size_t kMost = 1024;

  /// None.
  Bytes() = default;
  /// As many as the file has of `size` bytes, at most `kMost`.
  Bytes(int descriptor, std::uint64_t place, std::size_t size) {
    const ::ssize_t got =
        ::pread(descriptor, bytes_.data(), std::min(size, kMost), static_cast<::off_t>(place));
    if (got > 0) size_ = static_cast<std::size_t>(got);
  }
  /// The beginning of a table.
  explicit Bytes(std::string_view table) : size_(std::min(table.size(), kMost)) {
    std::copy_n(table.begin(), size_, bytes_.begin());
  }
  [[nodiscard]] std::size_t size() const { return size_; }

  [[nodiscard]] std::uint32_t Unsigned(std::size_t place, std::size_t width) const {
    if (place + width > size_) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value = value << 8 | bytes_[place + i];
    return value;
  }
  [[nodiscard]] std::uint8_t U8(std::size_t place) const {
    return static_cast<std::uint8_t>(Unsigned(place, 1));
  }
  [[nodiscard]] std::uint16_t U16(std::size_t place) const {
    return static_cast<std::uint16_t>(Unsigned(place, 2));
  }
  [[nodiscard]] std::int16_t S16(std::size_t place) const {
    return static_cast<std::int16_t>(U16(place));
  }
  [[nodiscard]] std::uint32_t U32(std::size_t place) const { return Unsigned(place, 4); }

 private:
  std::array<unsigned char, kMost> bytes_;
  std::size_t size_ = 0;
};

class FontFile {
 public:
  explicit FontFile(const std::string& name) {
    struct ::stat status {};
    if (file_.OpenNative(name) && ::fstat(file_.Descriptor(), &status) == 0) {
      size_ = static_cast<std::uint64_t>(status.st_size);
    }
  }

  [[nodiscard]] bool Holds(std::uint64_t place, std::uint64_t size) const {
    return place <= size_ && size <= size_ - place;
  }
  [[nodiscard]] Bytes Read(std::uint64_t place, std::size_t size) const {
    return Holds(place, 1) ? Bytes(file_.Descriptor(), place, size) : Bytes();
  }

 private:
  InputFile file_;
  std::uint64_t size_ = 0;
};

/// The face's directory of tables; empty if the file has another format.
Bytes ReadDirectory(const FontFile& file, unsigned int index) {
  Bytes directory = file.Read(0, Bytes::kMost);
  if (directory.U32(0) == Tag("ttcf")) {
    const unsigned int face = index & 0xFFFF;
    if (face >= directory.U32(8)) return {};
    directory = file.Read(file.Read(12 + 4 * std::uint64_t{face}, 4).U32(0), Bytes::kMost);
  }
  const std::uint32_t format = directory.U32(0);
  const bool isOpenType = format == 0x00010000 || format == Tag("OTTO") || format == Tag("true");
  return isOpenType ? directory : Bytes();
}

constexpr std::size_t kHeadSize = 54, kHheaSize = 36, kLeastOs2Size = 78, kOs2Size = 96,
                      kPostSize = 16;

struct Tables {
  Bytes head;
  Bytes hhea;
  Bytes os2;
  Bytes post;
  bool isTrueType = false;

  [[nodiscard]] bool HasHead() const { return head.size() >= kHeadSize; }
  [[nodiscard]] bool HasHhea() const { return hhea.size() >= kHheaSize; }
  [[nodiscard]] bool HasOs2() const { return os2.size() >= kLeastOs2Size; }
  [[nodiscard]] bool HasPost() const { return post.size() >= kPostSize; }
};

FontTables ReadTables(const FontFile& file, const Bytes& directory, Tables& tables,
                      std::string& problem) {
  const struct {
    std::uint32_t tag;
    std::size_t size;  // as much of it as is read
    Bytes* bytes;
  } wanted[] = {{Tag("head"), kHeadSize, &tables.head},
                {Tag("hhea"), kHheaSize, &tables.hhea},
                {Tag("OS/2"), kOs2Size, &tables.os2},
                {Tag("post"), kPostSize, &tables.post}};
  const std::size_t count = directory.U16(4);
  for (std::size_t row = 12; row < 12 + 16 * count; row += 16) {
    if (row + 16 > directory.size()) {
      problem = "the directory of tables is cut or too long";
      return FontTables::kDamaged;
    }
    const std::uint32_t tag = directory.U32(row);
    const std::uint32_t offset = directory.U32(row + 8);
    const std::uint32_t length = directory.U32(row + 12);
    if (!file.Holds(offset, length)) {
      problem = "the file is cut";
      return FontTables::kDamaged;
    }
    if (tag == Tag("glyf")) tables.isTrueType = true;
    for (const auto& table : wanted) {
      if (tag != table.tag) continue;
      *table.bytes = file.Read(offset, std::min<std::size_t>(length, table.size));
    }
  }
  const bool usual = tables.HasHead() && tables.HasHhea() && tables.HasOs2() && tables.HasPost();
  return usual ? FontTables::kGood : FontTables::kAbsent;
}

/// A height that should be positive: makers store some of them negated.
std::int32_t Height(std::uint16_t value) {
  return std::min(std::abs(static_cast<std::int32_t>(static_cast<std::int16_t>(value))), 32767);
}

std::int32_t Weight(std::uint16_t weightClass) {
  if (weightClass == 0) return 400;
  // Old fonts count from 1 to 9.
  return weightClass < 10 ? 100 * weightClass : std::min<std::int32_t>(weightClass, 1000);
}

/// The upper four bits: 0x10 roman, 0x20 swiss, 0x30 modern, 0x40 script, 0x50 decorative.
std::uint8_t Family(const PANOSE& panose, bool isFixedPitch, unsigned int familyClass) {
  switch (panose.bFamilyType) {
    case 2:
      if (isFixedPitch) return 0x30;
      if (panose.bSerifStyle >= 11) return 0x20;
      if (panose.bSerifStyle >= 2) return 0x10;
      break;
    case 3:
      return 0x40;
    case 4:
    case 5:
      return 0x50;
    default:
      break;
  }
  if (isFixedPitch) return 0x30;
  switch (familyClass) {  // that of IBM, where the digits say nothing
    case 1:
    case 2:
    case 3:
    case 4:
    case 5:
    case 7:
      return 0x10;
    case 8:
      return 0x20;
    case 9:
    case 12:
      return 0x50;
    case 10:
      return 0x40;
    default:
      return 0;
  }
}

/// The character set of the lowest code page that the face was made for.
std::uint8_t CharSet(std::uint32_t codePages) {
  constexpr struct {
    int bit;
    std::uint8_t charSet;
  } kSets[] = {{0, 0},   {1, 238},  {2, 204},  {3, 161},  {4, 162},  {5, 177},  {6, 178}, {7, 186},
               {8, 163}, {16, 222}, {17, 128}, {18, 134}, {19, 129}, {20, 136}, {21, 130}};
  for (const auto& set : kSets) {
    if (codePages >> set.bit & 1) return set.charSet;
  }
  return 0;
}

void FillFromHead(const Bytes& head, OUTLINETEXTMETRICA& record) {
  record.otmEMSquare = head.U16(18);
  record.otmrcFontBox = {head.S16(36), head.S16(42), head.S16(40), head.S16(38)};
  record.otmusMinimumPPEM = head.U16(46);
}

void FillFromHhea(const Bytes& hhea, OUTLINETEXTMETRICA& record) {
  record.otmTextMetrics.tmMaxCharWidth = std::min<std::int32_t>(hhea.U16(10), 32767);
  record.otmsCharSlopeRise = hhea.S16(18);
  record.otmsCharSlopeRun = hhea.S16(20);
  record.otmMacAscent = hhea.S16(4);
  record.otmMacDescent = hhea.S16(6);
  record.otmMacLineGap = static_cast<std::uint32_t>(std::max<int>(hhea.S16(8), 0));
}

void FillFromOs2(const Bytes& os2, OUTLINETEXTMETRICA& record) {
  TEXTMETRICA& metrics = record.otmTextMetrics;
  metrics.tmAscent = Height(os2.U16(74));
  metrics.tmDescent = Height(os2.U16(76));
  metrics.tmHeight = metrics.tmAscent + metrics.tmDescent;
  metrics.tmAveCharWidth = os2.S16(2);
  metrics.tmWeight = Weight(os2.U16(4));
  metrics.tmItalic = os2.U16(62) & 1;
  metrics.tmCharSet = CharSet(os2.size() >= 86 ? os2.U32(78) : 0);

  PANOSE& panose = record.otmPanoseNumber;
  std::uint8_t* const digits[] = {
      &panose.bFamilyType, &panose.bSerifStyle,      &panose.bWeight,   &panose.bProportion,
      &panose.bContrast,   &panose.bStrokeVariation, &panose.bArmStyle, &panose.bLetterform,
      &panose.bMidline,    &panose.bXHeight};
  std::size_t digit = 32;
  for (std::uint8_t* const to : digits) *to = os2.U8(digit++);
  record.otmfsSelection = os2.U16(62);
  record.otmfsType = os2.U16(8);
  record.otmAscent = os2.S16(68);
  record.otmDescent = os2.S16(70);
  record.otmLineGap = static_cast<std::uint32_t>(std::max<int>(os2.S16(72), 0));
  if (os2.size() >= 90 && os2.U16(0) >= 2) {
    record.otmsXHeight = static_cast<std::uint32_t>(std::max<int>(os2.S16(86), 0));
    record.otmsCapEmHeight = static_cast<std::uint32_t>(std::max<int>(os2.S16(88), 0));
  }
  record.otmptSubscriptSize = {os2.S16(10), os2.S16(12)};
  record.otmptSubscriptOffset = {os2.S16(14), os2.S16(16)};
  record.otmptSuperscriptSize = {os2.S16(18), os2.S16(20)};
  record.otmptSuperscriptOffset = {os2.S16(22), os2.S16(24)};
  record.otmsStrikeoutSize = static_cast<std::uint32_t>(std::max<int>(os2.S16(26), 0));
  record.otmsStrikeoutPosition = os2.S16(28);
}

void FillFromPost(const Bytes& post, OUTLINETEXTMETRICA& record) {
  // A fixed-point number with 16 bits behind the point.
  const double angle = static_cast<std::int32_t>(post.U32(4)) / 65536.0;
  record.otmItalicAngle = static_cast<std::int32_t>(std::clamp(angle, -90.0, 90.0) * 10.0);
  record.otmsUnderscorePosition = post.S16(8);
  record.otmsUnderscoreSize = std::max<int>(post.S16(10), 0);
}

/// Sets what several tables tell together.
void FillCombined(const Tables& tables, OUTLINETEXTMETRICA& record) {
  TEXTMETRICA& metrics = record.otmTextMetrics;
  metrics.tmInternalLeading = metrics.tmHeight - static_cast<std::int32_t>(record.otmEMSquare);
  if (tables.HasHhea()) {
    const std::int32_t lineHeight = tables.hhea.S16(4) - tables.hhea.S16(6);
    metrics.tmExternalLeading =
        std::clamp(tables.hhea.S16(8) - (metrics.tmHeight - lineHeight), 0, 32767);
  }
  const PANOSE& panose = record.otmPanoseNumber;
  const bool isFixedPitch =
      tables.HasPost() ? tables.post.U32(12) != 0 : (metrics.tmPitchAndFamily & 1) == 0;
  const bool isMonospaced = panose.bFamilyType == 2 && panose.bProportion == 9;
  metrics.tmPitchAndFamily = static_cast<std::uint8_t>(
      (isFixedPitch || isMonospaced ? 0 : 1) | 2 | (tables.isTrueType ? 4 : 0) |
      Family(panose, isFixedPitch || isMonospaced, tables.os2.U8(30)));
}

void FillFrom(const Tables& tables, OUTLINETEXTMETRICA& record) {
  if (tables.HasHead()) FillFromHead(tables.head, record);
  if (tables.HasHhea()) FillFromHhea(tables.hhea, record);
  if (tables.HasOs2()) FillFromOs2(tables.os2, record);
  if (tables.HasPost()) FillFromPost(tables.post, record);
  FillCombined(tables, record);
}

}  // namespace

FontTables ReadFontTables(const std::string& file, unsigned int index, OUTLINETEXTMETRICA& record,
                          std::string& problem) {
  const FontFile font(file);
  const Bytes directory = ReadDirectory(font, index);
  if (directory.size() == 0) return FontTables::kAbsent;
  Tables tables;
  const FontTables result = ReadTables(font, directory, tables, problem);
  if (result != FontTables::kGood) return result;

  record = {};
  record.otmSize = sizeof(record);
  record.otmTextMetrics.tmDigitizedAspectX = 96;
  record.otmTextMetrics.tmDigitizedAspectY = 96;
  FillFrom(tables, record);
  if (const char* const wrong = RecordProblem(record)) {
    problem = wrong;
    return FontTables::kDamaged;
  }
  return FontTables::kGood;
}

void FillFromTables(const MeasureTables& tables, OUTLINETEXTMETRICA& record) {
  FillFrom({Bytes(tables.head), Bytes(tables.hhea), Bytes(tables.os2), Bytes(tables.post),
            tables.isTrueType},
           record);
}

const char* RecordProblem(const OUTLINETEXTMETRICA& record) noexcept {
  // The format allows em squares of 16 to 16384 units.
  if (record.otmEMSquare < 16 || record.otmEMSquare > 16384) return "the em square has no size";
  if (record.otmTextMetrics.tmHeight <= 0) return "the cell has no height";
  const TEXTMETRICA& metrics = record.otmTextMetrics;
  if (metrics.tmAveCharWidth <= 0 || metrics.tmMaxCharWidth <= 0) return "the glyphs have no width";
  return nullptr;
}

}  // namespace vlm::platform
