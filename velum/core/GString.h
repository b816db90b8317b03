#pragma once

/// \file
/// The string of the library: every name, path, message and label is a `GString`.
///
///     vlm::GString title("Depth");
///     title += " (m)";
///     const std::string& text = title;       // converts freely, without a copy
///     title.FormatString("%s: %d", "Wells", 12);

#include <velum/core/Api.h>

#include <compare>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <utility>

namespace vlm {

/// A text of bytes, a value like `std::string`, which it holds and converts to.
///
/// Lengths and positions count bytes. The bytes are UTF-8 where they come from the library; no
/// operation treats a character of several bytes as one. A byte 0 is allowed inside, but whatever
/// works on terminated text (`c_str`, `StringLess`) stops there.
///
/// A text holds at most 0xFFFFFFFE bytes; so must one that is changed through the reference that
/// the conversion to `std::string&` gives.
///
/// Threads: distinct objects are independent; one that is shared needs the caller's lock.
///
/// *Errors*: `OutOfRangeError` "invalid string position" for a position beyond the end;
/// `LengthError` "string too long" for a text that would outgrow the limit; `std::bad_alloc`. The
/// text is then as it was.
class VELUM_API GString {
 public:
  using value_type = char;                                             ///< The element: a byte.
  using size_type = unsigned int;                                      ///< Lengths and positions.
  using difference_type = std::ptrdiff_t;                              ///< Distance of iterators.
  using reference = char&;                                             ///< A byte in place.
  using const_reference = const char&;                                 ///< A byte to be read.
  using iterator = std::string::iterator;                              ///< Walks and changes.
  using const_iterator = std::string::const_iterator;                  ///< Walks.
  using reverse_iterator = std::string::reverse_iterator;              ///< Walks backwards.
  using const_reverse_iterator = std::string::const_reverse_iterator;  ///< Walks backwards.

  /// The position that stands for nothing found, and the count that stands for all the rest.
  static constexpr unsigned int npos = 0xFFFFFFFF;

  /// The empty text.
  GString() noexcept = default;
  /// A copy.
  GString(const GString&) = default;
  /// Takes over the text of an object that is no longer needed.
  GString(GString&&) noexcept = default;
  /// A copy of a standard string.
  GString(const std::string& text) : text_(Checked(text)) {}
  /// Takes over the text of a standard string.
  GString(std::string&& text) : text_(std::move(Checked(text))) {}
  /// `count` copies of `c`: ``GString(3, 'x')`` is "xxx".
  GString(unsigned int count, char c) : text_(Room(count), c) {}
  /// The bytes of `text` up to its terminator; `text` is not null.
  GString(const char* text) : text_(text, Room(std::char_traits<char>::length(text))) {}
  GString(std::nullptr_t) = delete;
  ~GString() = default;

  /// The byte at `position`, which is not checked; the one at `size()` is 0 and stays so.
  [[nodiscard]] const char& operator[](unsigned int position) const { return text_[position]; }
  /// The byte at `position`, to be changed.
  [[nodiscard]] char& operator[](unsigned int position) { return text_[position]; }
  /// The bytes with a terminator.
  ///
  /// *Lifetime*: until the text is changed or destroyed.
  [[nodiscard]] const char* c_str() const noexcept { return text_.c_str(); }
  /// The number of bytes.
  [[nodiscard]] unsigned int size() const noexcept {
    return static_cast<unsigned int>(text_.size());
  }
  /// The number of bytes.
  [[nodiscard]] unsigned int length() const noexcept { return size(); }
  /// True for a text without a byte.
  [[nodiscard]] bool empty() const noexcept { return text_.empty(); }

  [[nodiscard]] iterator begin() noexcept { return text_.begin(); }               ///< First byte.
  [[nodiscard]] const_iterator begin() const noexcept { return text_.begin(); }   ///< First byte.
  [[nodiscard]] const_iterator cbegin() const noexcept { return text_.begin(); }  ///< First byte.
  [[nodiscard]] iterator end() noexcept { return text_.end(); }               ///< Behind the last.
  [[nodiscard]] const_iterator end() const noexcept { return text_.end(); }   ///< Behind the last.
  [[nodiscard]] const_iterator cend() const noexcept { return text_.end(); }  ///< Behind the last.
  /// The last byte, for a walk backwards.
  [[nodiscard]] reverse_iterator rbegin() noexcept { return text_.rbegin(); }
  /// The last byte, for a walk backwards.
  [[nodiscard]] const_reverse_iterator rbegin() const noexcept { return text_.rbegin(); }
  /// The end of a walk backwards.
  [[nodiscard]] reverse_iterator rend() noexcept { return text_.rend(); }
  /// The end of a walk backwards.
  [[nodiscard]] const_reverse_iterator rend() const noexcept { return text_.rend(); }

  /// Where `text` first stands at or after `position`; `npos` if nowhere.
  [[nodiscard]] unsigned int find(const GString& text, unsigned int position = 0) const noexcept {
    return static_cast<unsigned int>(text_.find(text.text_, position));
  }
  /// Where the terminated `text` first stands at or after `position`; `npos` if nowhere.
  [[nodiscard]] unsigned int find(const char* text, unsigned int position = 0) const noexcept {
    return static_cast<unsigned int>(text_.find(text, position));
  }
  /// Where `c` first stands at or after `position`; `npos` if nowhere.
  [[nodiscard]] unsigned int find(char c, unsigned int position = 0) const noexcept {
    return static_cast<unsigned int>(text_.find(c, position));
  }
  /// Where `c` last stands at or before `position`; `npos` if nowhere.
  [[nodiscard]] unsigned int find_last_of(char c, unsigned int position = npos) const noexcept {
    return static_cast<unsigned int>(text_.find_last_of(c, position));
  }
  /// The `count` bytes from `position`, or as many as there are.
  ///
  /// *Errors*: `OutOfRangeError` if `position` is above `size()`.
  [[nodiscard]] GString substr(unsigned int position = 0, unsigned int count = npos) const;

  /// Converts without a copy.
  ///
  /// *Lifetime*: as long as this object.
  operator std::string&() { return text_; }
  /// Converts without a copy.
  ///
  /// *Lifetime*: as long as this object.
  operator const std::string&() const { return text_; }
  /// The text as a standard string, without a copy.
  ///
  /// *Lifetime*: as long as this object.
  [[nodiscard]] const std::string& String() const noexcept { return text_; }

  /// The text itself: narrow text is never converted, whatever the code page.
  ///
  /// *Lifetime*: as long as this object.
  [[nodiscard]] const std::string& ToNarrow(unsigned int codePage = 0) const noexcept;
  /// The text up to its first terminator as wide text; see `AtoW`.
  [[nodiscard]] std::wstring ToWide(unsigned int codePage = 0) const;
  /// A copy of the text, for messages about it.
  [[nodiscard]] std::string WtoAForDiagnostics() const;

  /// Reads a truth value; see `StringToBool`.
  bool ToBool(bool& value) const;
  /// Reads a number; see `StringToDouble`.
  bool ToDouble(double& value) const;
  /// Reads a whole number; see `StringToInt`.
  bool ToInt(int& value) const;
  /// Reads a whole number; see `StringToInt64`.
  bool ToInt64(std::int64_t& value) const;
  /// Reads a whole number from 0; see `StringToUnsigned`.
  bool ToUnsignedInt(unsigned int& value) const;
  /// A copy in small letters; see `vlm::ToLower`.
  [[nodiscard]] GString ToLower() const;
  /// A copy in capital letters; see `vlm::ToUpper`.
  [[nodiscard]] GString ToUpper() const;
  /// Gives the next field of a delimited line and moves `position` behind it; see
  /// `vlm::ParseToken`.
  GString ParseToken(unsigned int& position, char delimiter) const;
  /// True if the whole text matches `pattern`; see `vlm::WildCmp`.
  [[nodiscard]] bool WildCmp(const GString& pattern, bool caseSensitive) const;

  /// Makes the text empty.
  void clear() noexcept { text_.clear(); }
  /// Cuts the text to `count` bytes, or fills it up with bytes of value 0.
  void resize(unsigned int count) { text_.resize(Room(count)); }
  /// Replaces the text by the `count` bytes at `text`, which may be part of this one.
  GString& assign(const char* text, unsigned int count);
  /// Removes the `count` bytes from `position`, or as many as there are.
  ///
  /// *Errors*: `OutOfRangeError` if `position` is above `size()`.
  GString& erase(unsigned int position = 0, unsigned int count = npos);
  /// Removes one byte; gives the place behind it.
  iterator erase(const_iterator place) { return text_.erase(place); }
  /// Removes the bytes from `first` up to `last`; gives the place behind them.
  iterator erase(const_iterator first, const_iterator last) { return text_.erase(first, last); }
  /// Appends `count` copies of `c`.
  GString& append(unsigned int count, char c);
  /// Appends the bytes of `text` up to its terminator.
  GString& append(const char* text);
  /// Appends the `count` bytes at `text`, which may be part of this text.
  GString& append(const char* text, unsigned int count);

  /// Replaces the text by the bytes of `text` up to its terminator; `codePage` has no effect.
  GString& FromNarrow(const char* text, unsigned int codePage = 0);
  /// Replaces the text by a terminated wide text; null gives the empty text. See `WtoA`.
  GString& FromWide(const wchar_t* text, unsigned int codePage = 0);
  /// Turns capital letters into small ones, in place.
  void MakeLower();
  /// Turns small letters into capital ones, in place.
  void MakeUpper();
  /// Removes white space at both ends; gives this object.
  GString& Trim();
  /// Removes white space at the start; gives this object.
  GString& TrimLeft();
  /// Removes white space at the end; gives this object.
  GString& TrimRight();
  /// Replaces the text by a formatted one. False if it can't be formatted: the text is then as it
  /// was. See `vlm::FormatString`.
  bool FormatString(const char* format, ...);
  /// The same with an argument list.
  bool FormatStringVA(const char* format, va_list arguments);
  /// Appends a formatted text. False if it can't be formatted: the text is then as it was.
  bool AppendFormatString(const char* format, ...);

  /// Copies the text of another object.
  GString& operator=(const GString&) = default;
  /// Takes over the text of an object that is no longer needed.
  GString& operator=(GString&&) noexcept = default;
  /// Copies a standard string.
  GString& operator=(const std::string& text);
  /// Takes over the text of a standard string.
  GString& operator=(std::string&& text);
  /// Copies the bytes of `text` up to its terminator.
  GString& operator=(const char* text);
  /// Makes this the text of one byte.
  GString& operator=(char c);

  /// Appends a text.
  GString& operator+=(const GString& text) { return Append(text.text_.data(), text.text_.size()); }
  /// Appends a standard string.
  GString& operator+=(const std::string& text) { return Append(text.data(), text.size()); }
  /// Appends the bytes of `text` up to its terminator.
  GString& operator+=(const char* text) { return append(text); }
  /// Appends one byte.
  GString& operator+=(char c);

  /// True for the same bytes.
  friend bool operator==(const GString& a, const GString& b) noexcept { return a.text_ == b.text_; }
  /// True for the same bytes.
  friend bool operator==(const GString& a, const std::string& b) noexcept { return a.text_ == b; }
  /// True for the same bytes.
  friend bool operator==(const GString& a, const char* b) { return a.text_ == b; }

  /// The order of the bytes, taken as unsigned.
  friend std::strong_ordering operator<=>(const GString& a, const GString& b) noexcept {
    return a.text_.compare(b.text_) <=> 0;
  }
  /// The order of the bytes, taken as unsigned.
  friend std::strong_ordering operator<=>(const GString& a, const std::string& b) noexcept {
    return a.text_.compare(b) <=> 0;
  }
  /// The order of the bytes, taken as unsigned.
  friend std::strong_ordering operator<=>(const GString& a, const char* b) {
    return a.text_.compare(b) <=> 0;
  }

  /// Joins two texts.
  friend GString operator+(const GString& a, const GString& b) { return a + b.text_; }
  /// Joins two texts.
  friend GString operator+(const GString& a, const std::string& b) {
    return Join(a.text_.data(), a.text_.size(), b.data(), b.size());
  }
  /// Joins two texts.
  friend GString operator+(const std::string& a, const GString& b) {
    return Join(a.data(), a.size(), b.text_.data(), b.text_.size());
  }
  /// Joins two texts.
  friend GString operator+(const GString& a, const char* b) {
    return Join(a.text_.data(), a.text_.size(), b, std::char_traits<char>::length(b));
  }
  /// Joins two texts.
  friend GString operator+(const char* a, const GString& b) {
    return Join(a, std::char_traits<char>::length(a), b.text_.data(), b.text_.size());
  }
  /// Puts one byte behind a text.
  friend GString operator+(const GString& a, char b) {
    return Join(a.text_.data(), a.text_.size(), &b, 1);
  }
  /// Puts one byte before a text.
  friend GString operator+(char a, const GString& b) {
    return Join(&a, 1, b.text_.data(), b.text_.size());
  }
  /// Joins two texts in the room of the first, so that a chain of `+` copies each part once.
  friend GString operator+(GString&& a, const GString& b) { return std::move(a += b); }
  /// Joins two texts in the room of the first.
  friend GString operator+(GString&& a, const std::string& b) { return std::move(a += b); }
  /// Joins two texts in the room of the first.
  friend GString operator+(GString&& a, const char* b) { return std::move(a += b); }
  /// Puts one byte behind a text.
  friend GString operator+(GString&& a, char b) { return std::move(a += b); }

  /// Writes the bytes to a stream, as a standard string is written.
  template <class Traits>
  friend std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                                      const GString& text) {
    return stream << text.text_;
  }

 private:
  static constexpr std::size_t kMaxSize = npos - 1;

  [[noreturn]] static void ThrowTooLong();
  static GString Join(const char* a, std::size_t aSize, const char* b, std::size_t bSize);

  /// `size`, once it is known to be allowed.
  static std::size_t Room(std::size_t size) {
    if (size > kMaxSize) ThrowTooLong();
    return size;
  }
  template <class Text>
  static Text& Checked(Text& text) {
    Room(text.size());
    return text;
  }
  GString& Append(const char* text, std::size_t count) {
    Room(text_.size() + count);
    text_.append(text, count);
    return *this;
  }

  std::string text_;
};

}  // namespace vlm

/// Lets a text be the key of an unordered container.
template <>
struct std::hash<vlm::GString> {
  /// The hash of the bytes: that of an equal `std::string`.
  std::size_t operator()(const vlm::GString& text) const noexcept {
    return std::hash<std::string>()(text.String());
  }
};
