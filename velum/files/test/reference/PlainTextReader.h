#pragma once

/// \file
/// Reading a text file character by character, as `CEncodedBufferedFile` is held against.
///
///     vlm::test::PlainTextReader reader(bytes, vlm::EncodingUTF16LE, 0, 2);

#include <velum/files/TextEncoding.h>

#include <cstdint>
#include <string>

namespace vlm::test {

/// The text of `bytes`, from `startOfText` on. Slow and plain: one chunk of 256 characters after
/// the other, one character after the other, each decoded where it stands.
class PlainTextReader {
 public:
  PlainTextReader(std::string bytes, TextEncoding encoding, unsigned int codePage,
                  std::int64_t startOfText);

  wchar_t Getc();
  wchar_t UnGetc(wchar_t c);
  bool ReadString(std::wstring& line);
  void SeekToBegin();
  [[nodiscard]] bool EndOfFile() const { return metEnd_; }
  [[nodiscard]] std::int64_t GetPosition() const { return static_cast<std::int64_t>(at_); }

 private:
  static constexpr int kNone = -1;

  [[nodiscard]] std::size_t FillInputBuffer();
  /// Reads a line ahead; false at the end.
  bool FillFromLine();
  [[nodiscard]] std::wstring FromPage(const std::string& line) const;
  /// A chunk of at most 255 characters; false if there are none.
  bool ReadText(std::wstring& chunk);
  int Next();
  /// Decodes a character at `at`, which moves behind it.
  char32_t Decode(std::size_t& at) const;
  char32_t DecodeUtf8(std::size_t& at) const;
  [[nodiscard]] int Unit(std::size_t at) const;

  std::string bytes_;
  TextEncoding encoding_;
  unsigned int codePage_;
  std::size_t start_;
  std::size_t at_;
  int half_ = kNone;
  bool metEnd_ = false;
  std::wstring input_;
  std::size_t readAt_ = 0;
};

}  // namespace vlm::test
