// Reads any bytes as a text file, in blocks of any size and through the file class, and holds the
// lines against those of a reader that goes character by character. What was read is written and
// read again. The first byte of the input chooses encoding, block and whether the encoding is
// trusted.

#include <velum/files/EncodedBufferedFile.h>
#include <velum/files/detail/TextStream.h>
#include <velum/files/test/reference/PlainTextReader.h>

#include <testing/TemporaryFolder.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace {

using File = vlm::CEncodedBufferedFile;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

std::vector<std::wstring> Lines(File& file) {
  std::vector<std::wstring> lines;
  std::wstring line;
  while (file.ReadString(line)) lines.push_back(line);
  return lines;
}

/// The next line; that of a code page as if each byte were a character.
bool ReadLine(vlm::detail::TextStream& stream, vlm::TextEncoding encoding, std::wstring& line) {
  if (encoding != vlm::EncodingANSI) return stream.AppendLine(line);
  std::string bytes;
  if (!stream.AppendLine(bytes)) return false;
  for (const char byte : bytes) line += static_cast<wchar_t>(static_cast<unsigned char>(byte));
  return true;
}

void CheckBlocks(const std::string& path, const std::string& bytes, vlm::TextEncoding encoding,
                 std::size_t blockSize) {
  constexpr unsigned int kLatin1 = 28591;  // where each byte is a character
  vlm::platform::OpenWish wish;
  wish.sharing.reads = true;
  const auto stream = vlm::detail::TextStream::Open(path.c_str(), wish, encoding, blockSize);
  Require(stream != nullptr, "the stream opens");
  vlm::test::PlainTextReader plain(bytes, encoding, kLatin1, stream->Position());
  std::wstring expected;
  while (plain.ReadString(expected)) {
    std::wstring line;
    Require(ReadLine(*stream, encoding, line), "the stream reads");
    if (!line.empty() && line.back() == L'\n') line.pop_back();
    Require(line == expected, "blocks change nothing");
    Require(stream->Position() == plain.GetPosition(), "positions are those of lines");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const vlm::testing::TemporaryFolder folder;
  if (size == 0 || size > 100000) return 0;
  const unsigned int choice = data[0];
  const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string path = folder.Path("a");
  std::ofstream(path, std::ios::binary) << bytes;
  const auto asked = static_cast<vlm::TextEncoding>(choice % 4);
  const bool trust = choice / 4 % 2 != 0;
  constexpr unsigned int kPages[] = {0, 1252, 932, 50220};
  // The plain reader converts a line with zeros part by part, and so loses a switch in between.
  const bool hasZeros = bytes.find('\0') != std::string::npos;
  const unsigned int page = kPages[choice / 8 % (hasZeros ? 2 : 4)];
  CheckBlocks(path, bytes, asked, 6 + choice / 8);

  File file(path, "r", File::ShareDenyNone, asked, page, trust, false);
  Require(!trust || file.GetEncoding() == asked, "a trusted encoding is kept");
  const vlm::TextEncoding encoding = file.GetEncoding();
  vlm::test::PlainTextReader plain(bytes, encoding, page, file.GetPosition());
  const std::vector<std::wstring> lines = Lines(file);
  std::vector<std::wstring> expected;
  std::wstring line;
  while (plain.ReadString(line)) expected.push_back(line);
  Require(lines == expected, "the lines are those of the plain reader");
  file.Close();

  // A page may lose characters; UTF-8 and UTF-16 keep all that was read.
  if (encoding == vlm::EncodingANSI) return 0;
  file.Open(path, "w", File::ShareDenyNone, encoding, page, true, false);
  for (const std::wstring& text : lines) file.WriteString(text + L'\n');
  file.Close();
  file.Open(path, "r", File::ShareDenyNone, encoding, page, true, false);
  Require(Lines(file) == lines, "what is written is read again");
  return 0;
}
