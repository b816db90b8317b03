#include <velum/files/detail/TextStream.h>

#include <velum/files/detail/Marks.h>
#include <velum/platform/detail/CodePages.h>
#include <velum/platform/detail/LineEnds.h>
#include <velum/platform/detail/Utf16.h>
#include <velum/platform/detail/Utf8.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace vlm::detail {

namespace {

constexpr std::size_t kPiece = 4096;  // elements decoded or encoded at once: they stay in the cache

/// How many bytes at the end may begin a character of UTF-8 that goes on.
std::size_t CutOfUtf8(const char* at, const char* end) noexcept {
  constexpr std::ptrdiff_t kLongest = 3;
  const auto room = std::min(end - at, kLongest);
  for (std::ptrdiff_t back = 1; back <= room; ++back) {
    const auto byte = static_cast<unsigned char>(end[-back]);
    if (byte < 0x80) return 0;
    if (byte >= 0xC0) {
      const auto count = static_cast<std::size_t>(back);
      return platform::Utf8Length(byte) > count ? count : 0;
    }
  }
  return 0;
}

}  // namespace

TextStream::TextStream(int file, const platform::OpenWish& wish, TextEncoding encoding,
                       std::size_t blockSize)
    : file_(file),
      encoding_(encoding),
      reads_(wish.sharing.reads),
      writes_(wish.sharing.writes),
      appends_(wish.appends),
      blockSize_(std::max(blockSize, kSmallestBlock)) {}

std::shared_ptr<TextStream> TextStream::Open(const char* path, const platform::OpenWish& wish,
                                             TextEncoding encoding, std::size_t blockSize) {
  // Made before the file, so that no file is left open for want of memory.
  std::shared_ptr<TextStream> stream(new TextStream(-1, wish, encoding, blockSize));
  stream->file_ = platform::OpenFile(path, wish);
  if (stream->file_ == -1) return nullptr;
  if (stream->Begin(wish)) return stream;
  const int error = errno;
  stream.reset();
  errno = error;
  return nullptr;
}

TextStream::~TextStream() {
  if (IsOpen()) Close();
}

bool TextStream::Begin(const platform::OpenWish& wish) {
  const std::string_view mark = MarkOf(encoding_);
  const std::int64_t size = platform::SeekFile(file_, 0, 2);
  if (wish.empties || (wish.creates && size == 0)) {
    written_ = mark;
    return true;
  }
  if (!reads_) {
    offset_ = std::max<std::int64_t>(size, 0);
    return true;
  }
  // A pipe has no positions.
  if (size >= 0 && !Seek(0, 0)) return false;
  if (mark.empty()) return true;
  if (!Hold(mark.size())) return false;
  if (std::string_view(block_.get(), Held()).starts_with(mark)) at_ = mark.size();
  metEnd_ = false;
  return true;
}

bool TextStream::IsUtf16() const noexcept {
  return encoding_ == EncodingUTF16LE || encoding_ == EncodingUTF16BE;
}

std::int64_t TextStream::Position() const noexcept {
  return offset_ + static_cast<std::int64_t>(at_ + written_.size());
}

const char* TextStream::FindEnd(const char* at, const char* end) const noexcept {
  if (!IsUtf16()) return platform::FindLineEnd(at, end);
  const char* const whole = end - (end - at) % 2;
  const char* const found = platform::FindLineEnd16(at, whole, encoding_ == EncodingUTF16BE);
  return found == whole ? end : found;
}

std::size_t TextStream::CutBytes(const char* at, const char* end) const noexcept {
  if (!IsUtf16()) return CutOfUtf8(at, end);
  const auto odd = static_cast<std::size_t>((end - at) % 2);
  const char* const whole = end - odd;
  const bool isCut = whole - at >= 2 && platform::IsHighSurrogate(platform::UnitAt(
                                            whole - 2, encoding_ == EncodingUTF16BE));
  return odd + (isCut ? 2 : 0);
}

void TextStream::Decode(const char* at, const char* end, std::wstring& line) {
  if (at == end) return;
  if (!piece_) piece_ = std::unique_ptr<wchar_t[]>(new wchar_t[kPiece + 1]);
  auto count = static_cast<std::size_t>(end - at);
  if (IsUtf16()) {
    const bool isOdd = count % 2 != 0;
    count /= 2;
    platform::Utf16ToWide(at, count, encoding_ == EncodingUTF16BE, piece_.get());
    if (isOdd) piece_[count++] = static_cast<wchar_t>(platform::kReplacement);
  } else {
    count = platform::Utf8ToWide({at, count}, piece_.get());
  }
  line.append(piece_.get(), count);
}

bool TextStream::AppendLine(std::wstring& line) { return TakeWholeLine(line); }

bool TextStream::AppendLine(std::string& line) { return TakeWholeLine(line); }

template <class Line>
bool TextStream::TakeWholeLine(Line& line) {
  if (!BeginReading()) return false;
  try {
    return TakeLine(line);
  } catch (...) {
    // What is left of it would look like a line.
    SkipLine(sizeof(line[0]) == 1);
    throw;
  }
}

void TextStream::SkipLine(bool isInBytes) {
  half_ = 0;
  while (true) {
    const char* const at = block_.get() + at_;
    const char* const end = block_.get() + end_;
    const char* stop = isInBytes ? platform::FindLineEnd(at, end) : FindEnd(at, end);
    const bool isLine = stop != end;
    // Half a unit waits for the other one.
    if (!isLine && !isInBytes) stop -= static_cast<std::size_t>(end - at) % UnitSize();
    at_ += static_cast<std::size_t>(stop - at);
    if (isLine) {
      (void)TakeLineEnd(isInBytes);
      return;
    }
    if (!Fill()) return;
    if (metEnd_) {
      at_ = end_;
      return;
    }
  }
}

bool TextStream::TakeLine(std::wstring& line) {
  if (half_ != 0) line += std::exchange(half_, L'\0');
  // What is decoded at once never ends inside a character, unless the file does.
  const std::size_t most = kPiece * UnitSize();
  for (bool ended = false;;) {
    const char* const at = block_.get() + at_;
    const char* const end = at + std::min(Held(), most);
    const char* stop = FindEnd(at, end);
    const bool isLine = stop != end;
    const bool isLast = ended && end == block_.get() + end_;
    if (!isLine && !isLast) stop -= CutBytes(at, end);
    Decode(at, stop, line);
    at_ += static_cast<std::size_t>(stop - at);
    if (isLine) {
      line += L'\n';
      return TakeLineEnd(false);
    }
    if (isLast) return true;
    if (stop != at && Held() >= most) continue;
    if (!Fill()) return false;
    ended = metEnd_;
  }
}

bool TextStream::TakeLine(std::string& line) {
  while (true) {
    const char* const at = block_.get() + at_;
    const char* const end = at + Held();
    const char* const stop = platform::FindLineEnd(at, end);
    line.append(at, stop);
    at_ += static_cast<std::size_t>(stop - at);
    if (stop != end) {
      line += '\n';
      return TakeLineEnd(true);
    }
    if (!Fill()) return false;
    if (metEnd_) return true;
  }
}

bool TextStream::ReadByte(int& byte) {
  byte = kNone;
  if (!BeginReading() || !Hold(1)) return false;
  if (Held() > 0) byte = static_cast<unsigned char>(block_[at_++]);
  return true;
}

bool TextStream::ReadUnit(int& unit) {
  if (encoding_ == EncodingANSI) return ReadByte(unit);
  unit = kNone;
  if (!BeginReading()) return false;
  if (half_ != 0) {
    unit = std::exchange(half_, L'\0');
    return true;
  }
  if (!Hold(UnitSize())) return false;
  if (Held() == 0) return true;
  if (!HoldCharacter()) return false;
  const char* const at = block_.get() + at_;
  wchar_t pair[2] = {};
  if (!IsUtf16()) {
    const char* next = at;
    platform::PutWide(platform::NextCodePoint(next, at + Held()), pair);
    at_ += static_cast<std::size_t>(next - at);
  } else if (Held() == 1) {
    pair[0] = static_cast<wchar_t>(platform::kReplacement);
    at_ += 1;
  } else {
    platform::Utf16ToWide(at, Held() < 4 ? 1 : 2, encoding_ == EncodingUTF16BE, pair);
    // The unit behind a character is none of its own.
    if (!platform::IsHighSurrogate(pair[0])) pair[1] = 0;
    at_ += pair[1] != 0 ? 4 : 2;
  }
  unit = pair[0];
  half_ = pair[1];
  return true;
}

bool TextStream::HoldCharacter() {
  if (IsUtf16()) {
    const bool isOdd = Held() < 2;
    return isOdd ||
           !platform::IsHighSurrogate(
               platform::UnitAt(block_.get() + at_, encoding_ == EncodingUTF16BE)) ||
           Hold(4);
  }
  const std::size_t length = platform::Utf8Length(static_cast<unsigned char>(block_[at_]));
  for (std::size_t count = 1; count < length; ++count) {
    if (!Hold(count + 1)) return false;
    const bool goesOn =
        Held() > count && (static_cast<unsigned char>(block_[at_ + count]) & 0xC0) == 0x80;
    if (!goesOn) break;
  }
  return true;
}

bool TextStream::SeesLineFeed(bool& sees, bool asByte) {
  sees = false;
  if (!BeginReading()) return false;
  if (half_ != 0 && !asByte) return true;
  const std::size_t size = asByte ? 1 : UnitSize();
  if (!Hold(size)) return false;
  if (Held() < size) {
    metEnd_ = Held() == 0;  // An odd byte is still to come.
    return true;
  }
  const char* const at = block_.get() + at_;
  sees = size == 2 ? platform::UnitAt(at, encoding_ == EncodingUTF16BE) == L'\n' : *at == '\n';
  return true;
}

bool TextStream::TakeLineEnd(bool isInBytes) {
  const std::size_t size = isInBytes ? 1 : UnitSize();
  const char* const at = block_.get() + at_;
  const wchar_t unit =
      size == 2 ? platform::UnitAt(at, encoding_ == EncodingUTF16BE) : static_cast<wchar_t>(*at);
  at_ += size;
  if (unit != L'\r') return true;
  bool sees = false;
  if (!SeesLineFeed(sees, isInBytes)) return false;
  if (sees) at_ += size;
  return true;
}

bool TextStream::BeginReading() {
  if (!reads_) {
    errno = EBADF;
    return false;
  }
  if (waiting_ != 0) EndPair();
  if (!written_.empty() && !Flush()) return false;
  if (!block_) block_ = std::unique_ptr<char[]>(new char[blockSize_]);
  return true;
}

bool TextStream::Fill() {
  // The rest, which is a cut character at most, moves to the front.
  std::memmove(block_.get(), block_.get() + at_, Held());
  offset_ += static_cast<std::int64_t>(at_);
  end_ -= std::exchange(at_, 0);
  const std::int64_t got = platform::ReadSome(file_, block_.get() + end_, blockSize_ - end_);
  if (got < 0) return false;
  end_ += static_cast<std::size_t>(got);
  metEnd_ = got == 0;
  return true;
}

bool TextStream::Hold(std::size_t count) {
  if (!block_) block_ = std::unique_ptr<char[]>(new char[blockSize_]);
  while (Held() < count) {
    if (!Fill()) return false;
    if (metEnd_) return true;
  }
  return true;
}

bool TextStream::BeginWriting() {
  if (!writes_) {
    errno = EBADF;
    return false;
  }
  if (end_ > 0 && !Seek(0, 1)) return false;
  if (appends_ && written_.empty()) {
    const std::int64_t size = platform::SeekFile(file_, 0, 2);
    if (size >= 0) offset_ = size;
  }
  metEnd_ = false;
  return true;
}

bool TextStream::Write(std::wstring_view text, unsigned int codePage) {
  if (!BeginWriting()) return false;
  if (written_.size() >= kBlock && !Flush()) return false;
  if (text.empty()) return true;
  if (waiting_ != 0) {
    if (platform::IsLowSurrogate(text[0])) {
      const wchar_t pair[] = {std::exchange(waiting_, L'\0'), text[0]};
      Encode({pair, 2}, waitingPage_);
      text.remove_prefix(1);
    } else {
      EndPair();
    }
  }
  const bool isHalf = !text.empty() && platform::IsHighSurrogate(text.back());
  const wchar_t half = isHalf ? text.back() : L'\0';
  if (isHalf) text.remove_suffix(1);
  if (encoding_ == EncodingANSI) {
    // Whole, since a page with switches keeps its state through a text.
    Encode(text, codePage);
    text = {};
  }
  while (!text.empty()) {
    if (written_.size() >= kBlock && !Flush()) return false;
    std::size_t count = std::min(text.size(), kPiece);
    if (count < text.size() && platform::IsHighSurrogate(text[count - 1])) --count;
    Encode(text.substr(0, count), codePage);
    text.remove_prefix(count);
  }
  if (isHalf) {
    waiting_ = half;
    waitingPage_ = codePage;
  }
  return written_.size() < kBlock || Flush();
}

void TextStream::Encode(std::wstring_view text, unsigned int codePage) {
  const std::size_t before = written_.size();
  if (encoding_ == EncodingANSI) {
    written_.resize(before + platform::WideToNarrow(text, codePage, nullptr));
    platform::WideToNarrow(text, codePage, written_.data() + before);
    return;
  }
  constexpr std::size_t kLongest = 4;  // bytes of an element
  char bytes[kPiece * kLongest];
  written_.append(bytes, IsUtf16()
                             ? platform::WideToUtf16(text, encoding_ == EncodingUTF16BE, bytes)
                             : platform::WideToUtf8(text, bytes));
}

void TextStream::EndPair() {
  const wchar_t half = std::exchange(waiting_, L'\0');
  Encode({&half, 1}, waitingPage_);
}

bool TextStream::Flush() {
  if (written_.empty()) return true;
  if (platform::WriteFile(file_, written_.data(), written_.size())) {
    offset_ += static_cast<std::int64_t>(written_.size());
    written_.clear();
    return true;
  }
  // What the system has taken is not offered again.
  const int error = errno;
  const std::int64_t position = platform::SeekFile(file_, 0, 1);
  const auto taken = static_cast<std::size_t>(
      std::clamp<std::int64_t>(position - offset_, 0, static_cast<std::int64_t>(written_.size())));
  written_.erase(0, position < 0 ? written_.size() : taken);
  offset_ += static_cast<std::int64_t>(taken);
  errno = error;
  return false;
}

bool TextStream::Seek(std::int64_t offset, int origin) {
  if (waiting_ != 0) EndPair();
  if (!Flush()) return false;
  std::int64_t target = offset;
  if (origin == 1) {
    if (__builtin_add_overflow(Position(), offset, &target)) {
      errno = EINVAL;
      return false;
    }
    origin = 0;
  }
  const std::int64_t position = platform::SeekFile(file_, target, origin);
  if (position < 0) return false;
  offset_ = position;
  at_ = end_ = 0;
  half_ = 0;
  metEnd_ = false;
  return true;
}

bool TextStream::Close() noexcept {
  bool isWhole = true;
  try {
    if (waiting_ != 0) EndPair();
    isWhole = Flush();
  } catch (...) {
    isWhole = false;
    errno = ENOMEM;
  }
  const int error = errno;
  const bool isClosed = platform::CloseFile(std::exchange(file_, -1));
  if (!isWhole) errno = error;
  return isWhole && isClosed;
}

}  // namespace vlm::detail
