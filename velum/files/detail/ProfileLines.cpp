#include <velum/files/detail/ProfileLines.h>

#include <velum/files/detail/Marks.h>
#include <velum/platform/detail/Utf16.h>
#include <velum/platform/detail/Utf8.h>

#include <algorithm>
#include <cstring>

namespace vlm::detail {

namespace {

constexpr std::size_t kBlock = 1 << 16;

/// The next `c` from `from` on, or the end. `known` is what was found last, which is good up to its
/// place; so a buffer whose lines end in another character is searched once.
std::size_t FindByte(const std::string& buffer, char c, std::size_t from, std::size_t& known) {
  if (known < from || (known < buffer.size() && buffer[known] != c)) {
    const void* const found = std::memchr(buffer.data() + from, c, buffer.size() - from);
    known = found ? static_cast<std::size_t>(static_cast<const char*>(found) - buffer.data())
                  : buffer.size();
  }
  return known;
}

}  // namespace

ProfileLines::ProfileLines(ByteSource& source, std::size_t mostHeld)
    : source_(source), mostHeld_(mostHeld & ~std::size_t{1}) {
  Fill();
  const TextEncoding marked = MarkedEncoding(buffer_);
  highFirst_ = marked == EncodingUTF16BE;
  width_ = highFirst_ || marked == EncodingUTF16LE ? 2 : 1;
  first_ = at_ = MarkOf(marked).size();
}

bool ProfileLines::Next(ProfileLine& line) {
  if (at_ >= kBlock) {
    buffer_.erase(0, at_);
    base_ += at_;
    at_ = nextFeed_ = nextReturn_ = 0;
  }
  line.begin = base_ + at_;
  std::uint64_t dropped = 0;
  std::size_t most = 0;
  std::size_t end = FindEnd(at_);
  while (end == kNone) {
    // Whole units stay together, also those that are dropped.
    const std::size_t searched = (buffer_.size() - at_) / width_ * width_;
    if (most == 0 && searched > mostHeld_) most = MostOfLongLine();
    const std::size_t held = most == 0 ? searched : std::min(searched, most);
    buffer_.erase(at_ + held, searched - held);
    dropped += searched - held;
    if (!Fill()) break;
    end = FindEnd(at_ + held);
  }
  if (end == kNone) {
    const std::size_t odd = (buffer_.size() - at_) % width_;
    isOdd_ = isOdd_ || odd != 0;
    const std::size_t last = buffer_.size() - odd;
    if (at_ == last && dropped == 0) return false;
    line.text = TextOf(at_, last);
    line.ending = {};
    at_ = last;
    line.textEnd = base_ + at_ + dropped;
  } else {
    if (Is(end, '\r') && end + 2 * width_ > buffer_.size()) Fill();
    const bool isPair = Is(end, '\r') && Is(end + width_, '\n');
    // What follows a part that was dropped is no part of the text.
    line.text = TextOf(at_, dropped == 0 ? end : at_ + most);
    line.ending = isPair ? "\r\n" : Is(end, '\r') ? "\r" : "\n";
    at_ = end + line.ending.size() * width_;
    line.textEnd = base_ + end + dropped;
  }
  base_ += dropped;
  line.end = base_ + at_;
  line.isCut = dropped > 0;
  return true;
}

bool ProfileLines::Fill() {
  if (atEnd_) return false;
  const std::size_t before = buffer_.size();
  buffer_.resize(before + kBlock);
  const std::int64_t got = source_.Read(buffer_.data() + before, kBlock);
  if (got < 0) throw ProfileReadError();
  buffer_.resize(before + static_cast<std::size_t>(got));
  nextFeed_ = nextReturn_ = 0;
  atEnd_ = static_cast<std::size_t>(got) < kBlock;
  return got > 0;
}

std::size_t ProfileLines::FindEnd(std::size_t from) {
  if (width_ == 1) {
    const std::size_t end = std::min(FindByte(buffer_, '\n', from, nextFeed_),
                                     FindByte(buffer_, '\r', from, nextReturn_));
    return end < buffer_.size() ? end : kNone;
  }
  for (std::size_t i = from; i + 1 < buffer_.size(); i += 2) {
    if (Is(i, '\n') || Is(i, '\r')) return i;
  }
  return kNone;
}

std::size_t ProfileLines::MostOfLongLine() const noexcept {
  if (!holdsEntries_) return mostHeld_;
  for (std::size_t index = at_; index < at_ + mostHeld_; index += width_) {
    if (Is(index, ' ') || Is(index, '\t') || Is(index, '\v') || Is(index, '\f')) continue;
    const bool isOther = Is(index, ';') || Is(index, '#') || Is(index, '[');
    return isOther ? mostHeld_ : kNone;
  }
  return mostHeld_;
}

bool ProfileLines::Is(std::size_t index, char c) const noexcept {
  if (index + width_ > buffer_.size()) return false;
  return width_ == 1 ? buffer_[index] == c
                     : platform::UnitAt(buffer_.data() + index, highFirst_) == c;
}

std::string_view ProfileLines::TextOf(std::size_t first, std::size_t last) {
  if (width_ == 1) return {buffer_.data() + first, last - first};
  std::wstring wide((last - first) / 2, L'\0');
  platform::Utf16ToWide(buffer_.data() + first, wide.size(), highFirst_, wide.data());
  decoded_.resize(platform::WideToUtf8(wide, nullptr));
  platform::WideToUtf8(wide, decoded_.data());
  return decoded_;
}

std::uint64_t ProfileLines::OffsetOf(const ProfileLine& line, std::size_t index) const noexcept {
  if (width_ == 1) return line.begin + index;
  return line.begin + 2 * platform::Utf8ToWide(line.text.substr(0, index), nullptr);
}

std::optional<std::string> ProfileLines::Encoded(std::string_view text) const {
  if (width_ == 1) return std::string(text);
  std::wstring wide(platform::Utf8ToWide(text, nullptr), L'\0');
  platform::Utf8ToWide(text, wide.data());
  if (platform::WideToUtf8(wide) != text) return std::nullopt;
  std::string bytes(2 * wide.size(), '\0');
  platform::WideToUtf16(wide, highFirst_, bytes.data());
  return bytes;
}

}  // namespace vlm::detail
