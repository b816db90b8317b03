#pragma once

/// \file
/// Reads delimited text field by field, as a stream.
///
///     vlm::describe::CsvReader reader(file, ',');
///     vlm::describe::CsvField field;
///     while (reader.Next(field)) std::cout << field.text << (field.isLast ? '\n' : '|');

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace vlm::describe {

/// One field with its place. A view: its text stands until the next one is read.
struct CsvField {
  std::string_view text;   ///< without its quotes; see CsvReader for a very long one
  std::size_t row = 0;     ///< counted from 1, without blank lines
  std::size_t column = 0;  ///< counted from 0
  std::size_t line = 0;    ///< of the file, where the row begins, counted from 1
  bool isLast = false;     ///< whether it ends its row
};

/// Takes a stream apart by the rules of RFC 4180: a field may stand in quotes, inside which
/// delimiters and line ends are text and a quote is doubled. Has identity and does not own the
/// stream.
///
/// A line ends with LF, CR LF or CR; blank lines and a UTF-8 byte order mark are passed over. A
/// quote within a field that begins without one is text. Any bytes are taken, NUL as well. Memory
/// does not grow with the input: of a field longer than kLongestField only that much is kept.
class CsvReader {
 public:
  /// How many bytes of a field are kept.
  static constexpr std::size_t kLongestField = 65536;

  /// Reads from `stream` in blocks of `blockSize` bytes, of at least 4.
  CsvReader(std::istream& stream, char delimiter, std::size_t blockSize = 65536);
  CsvReader(const CsvReader&) = delete;
  CsvReader& operator=(const CsvReader&) = delete;

  /// Reads the next field; false at the end of the stream.
  ///
  /// *Errors*: `std::runtime_error` with the number of the line for a quoted field that does not
  /// end, or goes on behind its quote; for UTF-16; for a stream that fails.
  bool Next(CsvField& field);

  /// How many bytes have been taken from the stream so far.
  [[nodiscard]] std::uint64_t BytesRead() const { return bytesRead_; }

 private:
  bool AtEnd();
  void Fill();
  void SkipByteOrderMark();
  void TakeLineEnd();
  void TakePlain();
  void TakeQuoted();
  void Keep(std::size_t end);

  std::istream& stream_;
  const char delimiter_;
  std::string block_;
  std::size_t position_ = 0;  // in the block
  std::size_t size_ = 0;      // of what the block holds
  std::uint64_t bytesRead_ = 0;
  std::string text_;
  std::size_t row_ = 0;
  std::size_t column_ = 0;
  std::size_t line_ = 1;
  std::size_t rowLine_ = 1;
  bool atRow_ = true;
};

}  // namespace vlm::describe
