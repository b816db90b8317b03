#pragma once

/// \file
/// The lines of a text file, with the places of their bytes.
///
///     vlm::detail::ProfileLines lines(source, 1 << 20);
///     vlm::detail::ProfileLine line;
///     while (lines.Next(line)) Show(line.text);

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vlm::detail {

/// Gives bytes, one piece after the other.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  /// Up to `count` bytes, fewer only at the end; gives their number, -1 for failure.
  virtual std::int64_t Read(char* data, std::size_t count) = 0;
};

/// Thrown where a source fails; errno tells why.
struct ProfileReadError {};

/// One line. Offsets count the bytes of the file.
struct ProfileLine {
  std::string_view text;  ///< Its text, as UTF-8 if the file is in UTF-16; good until the next one.
  bool isCut;             ///< There is more text than is held.
  std::uint64_t begin;    ///< Where it begins.
  std::uint64_t textEnd;  ///< Where its end, `ending`, begins.
  std::uint64_t end;      ///< Where the next one begins.
  std::string_view ending;  ///< "\r\n", "\n", "\r"; empty if the file ends without one.
};

/// Reads lines in pieces, and holds one line at a time.
///
/// *Errors*: `ProfileReadError`.
class ProfileLines {
 public:
  /// Of a longer line no more than about `mostHeld` bytes are held.
  ProfileLines(ByteSource& source, std::size_t mostHeld);
  ProfileLines(const ProfileLines&) = delete;
  ProfileLines& operator=(const ProfileLines&) = delete;

  /// From now on holds lines whole that are no comments, headers or blank as far as they are held.
  void HoldEntriesWhole() noexcept { holdsEntries_ = true; }
  /// Reads the next line; false at the end.
  bool Next(ProfileLine& line);
  /// The offset of the first line, behind a mark.
  [[nodiscard]] std::uint64_t FirstOffset() const noexcept { return first_; }
  /// True once the end of a UTF-16 file has left half a character over, which is in no line.
  [[nodiscard]] bool IsOdd() const noexcept { return isOdd_; }
  /// The offset in the file of the byte at `index` of a line's text.
  [[nodiscard]] std::uint64_t OffsetOf(const ProfileLine& line, std::size_t index) const noexcept;
  /// `text` in the encoding of the file; nothing if it would not come back as it is, which is so
  /// for what is no UTF-8 in a file in UTF-16.
  [[nodiscard]] std::optional<std::string> Encoded(std::string_view text) const;

 private:
  static constexpr std::size_t kNone = std::string::npos;

  /// Appends a piece to the buffer; false at the end of the file.
  bool Fill();
  /// Where the next end of a line is in the buffer, from `from` on; `kNone` if nowhere.
  std::size_t FindEnd(std::size_t from);
  /// How many bytes to hold of the line at `at_`, of which more than `mostHeld_` are in the buffer.
  [[nodiscard]] std::size_t MostOfLongLine() const noexcept;
  /// True if `c` stands at `index` of the buffer.
  [[nodiscard]] bool Is(std::size_t index, char c) const noexcept;
  /// The text from `first` up to `last` of the buffer.
  std::string_view TextOf(std::size_t first, std::size_t last);

  ByteSource& source_;
  std::size_t mostHeld_;
  bool holdsEntries_ = false;
  std::size_t width_ = 1;   ///< The bytes of a unit.
  bool highFirst_ = false;  ///< The order of a unit's bytes.
  bool atEnd_ = false;
  bool isOdd_ = false;
  std::string buffer_;
  std::size_t at_ = 0;      ///< Where the next line begins in the buffer.
  std::uint64_t base_ = 0;  ///< What an index in the buffer needs to be an offset.
  std::uint64_t first_ = 0;
  std::size_t nextFeed_ = 0;    ///< A line feed, or where to go on looking; see `FindEnd`.
  std::size_t nextReturn_ = 0;  ///< The same for a carriage return.
  std::string decoded_;
};

}  // namespace vlm::detail
