#include <velum/files/TextEncoding.h>

#include <velum/core/Exception.h>
#include <velum/files/File.h>
#include <velum/files/detail/Marks.h>
#include <velum/files/detail/UnicodeTests.h>
#include <velum/platform/detail/FileSystem.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vlm {

namespace {

using namespace detail;

/// The first bytes of a file; none for a file that is empty or can't be examined.
std::string Sample(const GString& path, unsigned int size) {
  if (size < 2 || size % 2 != 0) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
  const std::int64_t length = path.empty() ? -1 : platform::SizeOf(path.c_str());
  if (length <= 0) return {};
  CFile file(path, CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyNone);
  std::string bytes(static_cast<std::size_t>(std::min<std::int64_t>(size, length)), '\0');
  bytes.resize(file.Read(bytes.data(), static_cast<unsigned int>(bytes.size())));
  return bytes;
}

bool Passes(std::string_view bytes, unsigned int anyOf) { return UnicodeTests(bytes, anyOf) != 0; }

/// The tests of one byte order.
struct OrderedTests {
  unsigned int ascii16, statistics, controls, signature, illegalChars;
};
constexpr OrderedTests kLowFirst{kAscii16, kStatistics, kControls, kSignature, kIllegalChars};
constexpr OrderedTests kHighFirst{kReverseAscii16, kReverseStatistics, kReverseControls,
                                  kReverseSignature, kReverseIllegalChars};

ConfidenceLevel LooksUtf16(std::string_view bytes, const OrderedTests& tests) {
  if (bytes.empty()) return ConfidenceCertain;
  if (bytes.size() < 2 || Passes(bytes, kOddLength | tests.illegalChars)) return ConfidenceNo;
  if (Passes(bytes, tests.ascii16)) return ConfidenceCertain;
  const bool isLikely =
      Passes(bytes, tests.statistics) && Passes(bytes, tests.controls | tests.signature);
  return isLikely ? ConfidenceLikely : ConfidenceDoubtful;
}

ConfidenceLevel LooksAnsi(std::string_view bytes, unsigned int sampleSize) {
  if (bytes.empty()) return ConfidenceCertain;
  if (bytes.size() == 1) {
    const auto byte = static_cast<unsigned char>(bytes[0]);
    return byte == 0 ? ConfidenceNo : byte < 32 ? ConfidenceDoubtful : ConfidenceLikely;
  }
  // One zero at the end of a whole file may have ended a text in memory.
  const bool mayEndInZero = bytes.size() < sampleSize && bytes.back() == '\0';
  if (Passes(bytes.substr(0, bytes.size() - (mayEndInZero ? 1 : 0)), kNullBytes)) {
    return ConfidenceNo;
  }
  constexpr unsigned int kOfUtf16 =
      kSignature | kReverseSignature | kStatistics | kReverseStatistics;
  return Passes(bytes, kOfUtf16) ? ConfidenceDoubtful : ConfidenceLikely;
}

}  // namespace

bool GetBOMInfo(const GString& path, unsigned int& size, TextEncoding& encoding) {
  size = 0;
  encoding = EncodingANSI;
  if (path.empty()) return false;
  CFile file(path, CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyNone);
  char bytes[3];
  const std::string_view start(bytes, file.Read(bytes, sizeof(bytes)));
  encoding = MarkedEncoding(start);
  size = static_cast<unsigned int>(MarkOf(encoding).size());
  return true;
}

ConfidenceLevel IsFileANSI(const GString& path, unsigned int sampleSize) {
  return LooksAnsi(Sample(path, sampleSize), sampleSize);
}

ConfidenceLevel IsFileUTF16LE(const GString& path, unsigned int sampleSize) {
  return LooksUtf16(Sample(path, sampleSize), kLowFirst);
}

ConfidenceLevel IsFileUTF16BE(const GString& path, unsigned int sampleSize) {
  return LooksUtf16(Sample(path, sampleSize), kHighFirst);
}

ConfidenceLevel IsFileBinary(const GString& path, unsigned int sampleSize) {
  const std::string bytes = Sample(path, sampleSize);
  const ConfidenceLevel le = LooksUtf16(bytes, kLowFirst);
  const ConfidenceLevel be = LooksUtf16(bytes, kHighFirst);
  const ConfidenceLevel ansi = LooksAnsi(bytes, sampleSize);
  if (le == ConfidenceCertain) return ConfidenceNo;
  if (le == ConfidenceNo && be == ConfidenceNo) {
    return ansi == ConfidenceNo        ? ConfidenceCertain
           : ansi == ConfidenceCertain ? ConfidenceNo
                                       : ConfidenceDoubtful;
  }
  if (be == ConfidenceCertain || ansi == ConfidenceCertain) return ConfidenceNo;
  const bool bothDoubtful = le == ConfidenceDoubtful && be == ConfidenceDoubtful;
  return bothDoubtful && ansi == ConfidenceDoubtful ? ConfidenceLikely : ConfidenceDoubtful;
}

}  // namespace vlm
