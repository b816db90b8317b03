#include <velum/files/EncodedBufferedFile.h>

#include <velum/core/Exception.h>
#include <velum/files/File.h>
#include <velum/files/detail/FileError.h>
#include <velum/files/detail/OpenModes.h>
#include <velum/files/detail/TextStream.h>
#include <velum/platform/detail/CodePages.h>
#include <velum/platform/detail/FileSystem.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <string_view>
#include <utility>

namespace vlm {

namespace {

using detail::TextStream;

constexpr unsigned int kSample = 512;
constexpr wchar_t kNoElement = 0xFFFF;
/// A buffer of more elements is given back when its line is gone.
constexpr std::size_t kMostKept = 1 << 20;

constexpr std::string_view kSuffixes[] = {"", ",ccs=UTF-8", ",ccs=UTF-16LE", ",ccs=UTF-16BE"};

TextEncoding EncodingOf(const GString& modeSuffix) {
  const auto* const found =
      std::find(std::begin(kSuffixes), std::end(kSuffixes), modeSuffix.String());
  return static_cast<TextEncoding>(found - std::begin(kSuffixes));
}

/// True for the modes whose file is examined.
bool ExaminesFile(const GString& mode) {
  constexpr std::string_view kModes[] = {"r", "r+", "rt", "rt+", "rb", "rb+"};
  return std::find(std::begin(kModes), std::end(kModes), mode.String()) != std::end(kModes);
}

bool IsYes(ConfidenceLevel level) {
  return level == ConfidenceCertain || level == ConfidenceLikely;
}

ConfidenceLevel IsFileUTF16(const GString& path, TextEncoding encoding) {
  return encoding == EncodingUTF16LE ? IsFileUTF16LE(path, kSample) : IsFileUTF16BE(path, kSample);
}

/// True for a file whose first bytes can be looked at before it is read: none that gives bytes
/// without having a size, as pipes do, and those files that the system makes up as they are read.
bool CanBeExamined(const GString& path) {
  if (platform::SizeOf(path.c_str()) != 0) return true;
  if (!platform::IsRegularFile(path.c_str())) return false;
  CFile file(path, CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyNone);
  char byte;
  return file.Read(&byte, 1) == 0;
}

/// Reads a line of up to `size` - 1 characters: `next` gives one, below 0 at the end, and `sees`
/// tells whether a line feed comes next.
template <class Char, class Next, class Sees>
Char* ReadChunk(Char* buffer, unsigned int size, Next next, Sees sees) {
  if (size == 0) return nullptr;
  Char* to = buffer;
  Char* const last = buffer + size - 1;
  *to = 0;
  while (to != last) {
    const int c = next();
    if (c < 0) return to == buffer ? nullptr : buffer;
    if (c == '\r' && sees()) continue;
    const bool isEnd = c == '\r' || c == '\n';
    *to++ = static_cast<Char>(isEnd ? '\n' : c);
    *to = 0;
    if (isEnd) break;
  }
  return buffer;
}

}  // namespace

CEncodedBufferedFile::CEncodedBufferedFile() noexcept = default;

CEncodedBufferedFile::CEncodedBufferedFile(const GString& path, const GString& mode,
                                           Sharing sharing, TextEncoding encoding,
                                           unsigned int codePage, bool trustEncoding,
                                           bool removeOnAbort) {
  Open(path, mode, sharing, encoding, codePage, trustEncoding, removeOnAbort);
}

CEncodedBufferedFile::CEncodedBufferedFile(const CEncodedBufferedFile& other) = default;

CEncodedBufferedFile& CEncodedBufferedFile::operator=(const CEncodedBufferedFile& other) {
  if (this == &other) return *this;
  CEncodedBufferedFile copy(other);
  if (opened_ && IsOpen() && stream_.use_count() == 1) Abort(removeOnAbort_);
  opened_ = copy.opened_;
  removeOnAbort_ = copy.removeOnAbort_;
  std::swap(path_, copy.path_);
  stream_ = std::move(copy.stream_);
  encoding_ = copy.encoding_;
  codePage_ = copy.codePage_;
  startOfText_ = copy.startOfText_;
  input_ = std::move(copy.input_);
  readAt_ = copy.readAt_;
  return *this;
}

CEncodedBufferedFile::~CEncodedBufferedFile() {
  if (opened_ && IsOpen()) Abort(removeOnAbort_);
}

bool CEncodedBufferedFile::IsOpen() const noexcept { return stream_ && stream_->IsOpen(); }

std::int64_t CEncodedBufferedFile::GetPosition() const noexcept {
  return IsOpen() ? stream_->Position() : -1;
}

std::int64_t CEncodedBufferedFile::GetLength() const {
  if (!IsOpen()) return -1;
  ClearInput();
  Require(stream_->Seek(0, 2), __LINE__, ERR_SEEK);
  const std::int64_t length = stream_->Position();
  Require(stream_->Seek(startOfText_, 0), __LINE__, ERR_SEEK);
  return length;
}

bool CEncodedBufferedFile::EndOfFile() const noexcept { return !IsOpen() || stream_->AtEnd(); }

void CEncodedBufferedFile::Open(const GString& path, const GString& mode, Sharing sharing,
                                TextEncoding encoding, unsigned int codePage, bool trustEncoding,
                                bool removeOnAbort) {
  if (!OpenNoThrow(path, mode, sharing, encoding, codePage, trustEncoding, removeOnAbort)) {
    detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_OPEN, path);
  }
}

bool CEncodedBufferedFile::OpenNoThrow(const GString& path, const GString& mode, Sharing sharing,
                                       TextEncoding encoding, unsigned int codePage,
                                       bool trustEncoding, bool removeOnAbort) {
  if (path.empty() || mode.empty() || IsOpen()) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  }
  path_ = GString(path);
  if (sharing < ShareDenyAll || sharing > ShareDenyNone) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  }
  if (encoding < EncodingANSI || encoding > EncodingUnknown) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
  }
  const auto wish = detail::ReadStreamMode(mode.String(), sharing);
  if (!wish) return false;
  GString modeSuffix;
  bool isExamined = false;
  try {
    isExamined = ExaminesFile(mode) && CanBeExamined(path_);
    Choose(isExamined, encoding, trustEncoding, modeSuffix);
  } catch (const Exception& error) {
    // What can't be opened to be examined can't be opened to be read; errno has the reason.
    if (error.GetErrCode() != ERR_OPEN) throw;
    return false;
  }
  stream_ = TextStream::Open(path_.c_str(), *wish, EncodingOf(modeSuffix));
  if (!stream_) return false;
  if (ExaminesFile(mode) && !isExamined) {
    startOfText_ = static_cast<unsigned int>(stream_->Position());  // behind its mark, if any
  }
  const bool isBehindMark = !isExamined || stream_->Position() == startOfText_;
  if (!isBehindMark && !stream_->Seek(startOfText_, 0)) {
    const int error = errno;
    stream_.reset();
    errno = error;
    return false;
  }
  codePage_ = codePage;
  removeOnAbort_ = removeOnAbort;
  opened_ = true;
  ClearInput();
  return true;
}

void CEncodedBufferedFile::Choose(bool examines, TextEncoding encoding, bool trustEncoding,
                                  GString& modeSuffix) {
  unsigned int markSize = 0;
  TextEncoding markEncoding = EncodingANSI;
  if (examines && platform::SizeOf(path_.c_str()) > 0) GetBOMInfo(path_, markSize, markEncoding);
  const TextEncoding asked = encoding == EncodingUnknown ? EncodingANSI : encoding;
  const unsigned int usualSize = asked == EncodingANSI ? 0 : asked == EncodingUTF8 ? 3 : 2;
  Settle(asked, usualSize, modeSuffix);
  if (!examines) return;
  if (trustEncoding) {
    if (asked != EncodingANSI) startOfText_ = markSize;
    return;
  }
  switch (asked) {
    case EncodingUTF8:
      return VerifyUTF8(markSize, markEncoding, modeSuffix);
    case EncodingUTF16LE:
      return VerifyUTF16LE(markSize, markEncoding, modeSuffix);
    case EncodingUTF16BE:
      return VerifyUTF16BE(markSize, markEncoding, modeSuffix);
    default:
      return VerifyANSI(markSize, markEncoding, modeSuffix);
  }
}

void CEncodedBufferedFile::Close() {
  const GString path = std::exchange(path_, GString());
  const auto stream = std::exchange(stream_, nullptr);
  opened_ = false;
  startOfText_ = 0;
  ClearInput();
  if (stream && stream->IsOpen() && !stream->Close()) {
    detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_CLOSE, path);
  }
}

void CEncodedBufferedFile::Abort(bool removeFile) noexcept {
  const GString path = std::exchange(path_, GString());
  const auto stream = std::exchange(stream_, nullptr);
  opened_ = false;
  startOfText_ = 0;
  ClearInput();
  if (stream && stream->IsOpen()) stream->Close();
  if (removeFile) detail::RemoveQuietly(path);
}

void CEncodedBufferedFile::Flush() {
  if (IsOpen()) Require(stream_->Flush(), __LINE__, ERR_WRITE);
}

void CEncodedBufferedFile::SetCodePage(unsigned int codePage) noexcept {
  codePage_ = std::min(codePage, 0xFFFFu);
}

wchar_t CEncodedBufferedFile::Getc() {
  if (readAt_ == input_.size() && FillInputBuffer() == 0) return kNoElement;
  return input_[readAt_++];
}

wchar_t CEncodedBufferedFile::UnGetc(wchar_t c) {
  if (readAt_ == input_.size()) {
    if (EndOfFile()) {
      ClearInput();
    } else if (FillInputBuffer() == 0) {
      return kNoElement;
    }
  }
  if (readAt_ == 0) {
    // Room for more that may come, so that many cost no more than they should.
    constexpr std::size_t kLeastRoom = 16;
    const std::size_t room = std::max(kLeastRoom, input_.size());
    input_.insert(0, room, L'\0');
    readAt_ = room;
  }
  input_[--readAt_] = c;
  return c;
}

bool CEncodedBufferedFile::ReadString(std::wstring& line) {
  if (readAt_ == input_.size() && FillInputBuffer() == 0) return false;
  if (readAt_ == 0) {
    line.swap(input_);
  } else {
    line.assign(input_, readAt_);
  }
  ClearInput();
  if (!line.empty() && line.back() == L'\n') {
    line.pop_back();
    if (!line.empty() && line.back() == L'\r') line.pop_back();
  }
  return true;
}

unsigned short CEncodedBufferedFile::Putc(unsigned short c) {
  if (!IsOpen()) return static_cast<unsigned short>(kNoElement);
  WriteString(std::wstring(1, static_cast<wchar_t>(c)));
  return c;
}

void CEncodedBufferedFile::WriteString(const std::wstring& text) {
  if (IsOpen()) Require(stream_->Write(text, codePage_), __LINE__, ERR_WRITE);
}

std::int64_t CEncodedBufferedFile::SeekToBegin() { return Seek(startOfText_, 0); }

std::int64_t CEncodedBufferedFile::SeekToEnd() { return Seek(0, 2); }

std::int64_t CEncodedBufferedFile::Seek(std::int64_t offset, int origin) {
  if (!IsOpen()) return -1;
  Require(stream_->Seek(offset, origin), __LINE__, ERR_SEEK);
  ClearInput();
  return stream_->Position();
}

std::size_t CEncodedBufferedFile::FillInputBuffer() {
  ClearInput();
  if (!IsOpen()) return 0;
  const auto lock = stream_->Lock();
  try {
    if (encoding_ != EncodingANSI || platform::IsUtf8Page(codePage_)) {
      Require(stream_->AppendLine(input_), __LINE__, ERR_READ);
    } else {
      FillFromPage();
    }
  } catch (...) {
    // A part of a line would pass for a whole one.
    ClearInput();
    throw;
  }
  return input_.size();
}

void CEncodedBufferedFile::FillFromPage() {
  // Some pages have lines that are no text, such as those that only switch character sets.
  for (std::string bytes; input_.empty(); bytes.clear()) {
    Require(stream_->AppendLine(bytes), __LINE__, ERR_READ);
    if (bytes.empty()) return;
    // A whole line at once, so that no character of several bytes is cut.
    platform::AppendWide(bytes, codePage_, input_);
  }
}

wchar_t* CEncodedBufferedFile::ReadText(wchar_t* buffer, unsigned int size) {
  if (!buffer) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (!IsOpen()) return nullptr;
  const auto lock = stream_->Lock();
  return ReadChunk(
      buffer, size, [&] { return GetNextWideChar(); }, [&] { return SeesLineFeed(false); });
}

char* CEncodedBufferedFile::ReadText(char* buffer, unsigned int size) {
  if (!buffer) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  if (!IsOpen()) return nullptr;
  const auto lock = stream_->Lock();
  return ReadChunk(
      buffer, size, [&] { return GetNextChar(); }, [&] { return SeesLineFeed(true); });
}

int CEncodedBufferedFile::GetNextChar() {
  int byte = TextStream::kNone;
  if (IsOpen()) Require(stream_->ReadByte(byte), __LINE__, ERR_READ);
  return byte;
}

int CEncodedBufferedFile::GetNextWideChar() {
  int unit = TextStream::kNone;
  if (IsOpen()) Require(stream_->ReadUnit(unit), __LINE__, ERR_READ);
  return unit;
}

bool CEncodedBufferedFile::SeesLineFeed(bool asByte) {
  bool sees = false;
  Require(stream_->SeesLineFeed(sees, asByte), __LINE__, ERR_READ);
  return sees;
}

void CEncodedBufferedFile::VerifyANSI(unsigned int markSize, TextEncoding markEncoding,
                                      GString& modeSuffix) {
  const ConfidenceLevel ansi = IsFileANSI(path_, kSample);
  if (!IsYes(ansi)) {
    for (const TextEncoding encoding : {EncodingUTF16LE, EncodingUTF16BE}) {
      const ConfidenceLevel level = IsFileUTF16(path_, encoding);
      const bool isIt = ansi == ConfidenceNo ? level != ConfidenceNo : IsYes(level);
      if (isIt) return Settle(encoding, markSize, modeSuffix);
    }
  }
  Settle(markEncoding == EncodingUTF8 ? EncodingUTF8 : EncodingANSI, markSize, modeSuffix);
}

void CEncodedBufferedFile::VerifyUTF8(unsigned int markSize, TextEncoding markEncoding,
                                      GString& modeSuffix) {
  if (markEncoding == EncodingUTF8) return Settle(EncodingUTF8, markSize, modeSuffix);
  for (const TextEncoding encoding : {EncodingUTF16LE, EncodingUTF16BE}) {
    if (IsYes(IsFileUTF16(path_, encoding))) return Settle(encoding, markSize, modeSuffix);
  }
  Settle(EncodingANSI, 0, modeSuffix);
}

void CEncodedBufferedFile::VerifyUTF16LE(unsigned int markSize, TextEncoding markEncoding,
                                         GString& modeSuffix) {
  VerifyUTF16(EncodingUTF16LE, EncodingUTF16BE, markSize, markEncoding, modeSuffix);
}

void CEncodedBufferedFile::VerifyUTF16BE(unsigned int markSize, TextEncoding markEncoding,
                                         GString& modeSuffix) {
  VerifyUTF16(EncodingUTF16BE, EncodingUTF16LE, markSize, markEncoding, modeSuffix);
}

void CEncodedBufferedFile::VerifyUTF16(TextEncoding first, TextEncoding second,
                                       unsigned int markSize, TextEncoding markEncoding,
                                       GString& modeSuffix) {
  for (const TextEncoding encoding : {first, second}) {
    if (IsYes(IsFileUTF16(path_, encoding))) return Settle(encoding, markSize, modeSuffix);
  }
  if (markEncoding == EncodingUTF8) return Settle(EncodingUTF8, markSize, modeSuffix);
  if (!IsYes(IsFileANSI(path_, kSample))) return Settle(first, markSize, modeSuffix);
  Settle(EncodingANSI, 0, modeSuffix);
}

void CEncodedBufferedFile::Settle(TextEncoding encoding, unsigned int startOfText,
                                  GString& modeSuffix) {
  encoding_ = encoding;
  startOfText_ = startOfText;
  modeSuffix = std::string(kSuffixes[encoding]);
}

void CEncodedBufferedFile::ClearInput() const noexcept {
  if (input_.capacity() > kMostKept) {
    std::wstring().swap(input_);
  } else {
    input_.clear();
  }
  readAt_ = 0;
}

void CEncodedBufferedFile::Require(bool succeeded, int line, int code) const {
  if (!succeeded) detail::ThrowSystemError(__FILE_NAME__, line, code, path_);
}

}  // namespace vlm
