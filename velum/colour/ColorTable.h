#pragma once

/// \file
/// The named colours of the file "Colors.ini".
///
///     const vlm::CColorTable& table = vlm::CColorTable::Instance();
///     unsigned int index = 0;
///     if (table.IndexFromColor("steelblue", index)) puts(table[index].Name().c_str());

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/core/Singleton.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace vlm {

/// A colour with its name: a value.
class VELUM_API CColorTableEntry {
 public:
  /// Black without a name.
  CColorTableEntry() noexcept : color_(0) {}
  /// The colour of a word 0x00BBGGRR, of which the low 32 bits are kept, with a name.
  CColorTableEntry(unsigned long color, GString name) noexcept
      : color_(static_cast<std::uint32_t>(color)), name_(std::move(name)) {}
  /// Copies the entry.
  CColorTableEntry(const CColorTableEntry&) = default;
  ~CColorTableEntry() = default;

  /// The word 0x00BBGGRR.
  [[nodiscard]] unsigned long Color() const noexcept { return color_; }
  /// The name. *Lifetime*: that of the entry.
  [[nodiscard]] const GString& Name() const noexcept { return name_; }

  /// Copies the entry.
  CColorTableEntry& operator=(const CColorTableEntry&) = default;

 private:
  std::uint32_t color_;
  GString name_;
};

/// The colours of the section "Colors" of the file "Colors.ini", in the order of its lines, each
/// of the form
///
///     AliceBlue = 240 248 255
///
/// with red, green and blue as whole numbers.
/// - Numbers that are missing are 0, of larger ones the low byte counts.
/// - A line without a `=`, or with nothing behind it, is no colour.
///
/// One object for the process, made when it is first asked for and never changed. `LocateFile`
/// finds the file; the one of the library holds the named colours of `Color4b` and some more.
///
/// Threads: any number may read, once the first call of `Instance` has come back.
///
/// *Errors* of `Instance`: `ERR_FIND` from "ColorTable" if there is no file, or what is found can't
/// be read or is no regular file; `ERR_INVALID_PARAMETER` for one whose full path is longer than
/// 259 bytes. The next call looks again.
class VELUM_API CColorTable : public Singleton<CColorTable> {
 public:
  /// Goes through the entries in order.
  using const_iterator = std::vector<CColorTableEntry>::const_iterator;
  /// Goes through the entries from the last one.
  using const_reverse_iterator = std::vector<CColorTableEntry>::const_reverse_iterator;

  /// The number of entries.
  [[nodiscard]] unsigned int size() const noexcept {
    return static_cast<unsigned int>(entries_.size());
  }
  /// True if there is no entry.
  [[nodiscard]] bool empty() const noexcept { return entries_.empty(); }
  /// The first entry.
  [[nodiscard]] const_iterator begin() const noexcept { return entries_.begin(); }
  /// Behind the last entry.
  [[nodiscard]] const_iterator end() const noexcept { return entries_.end(); }
  /// The last entry, to go on to the first.
  [[nodiscard]] const_reverse_iterator rbegin() const noexcept { return entries_.rbegin(); }
  /// Before the first entry.
  [[nodiscard]] const_reverse_iterator rend() const noexcept { return entries_.rend(); }

  /// Gets the index of the first entry with a colour, a word 0x00BBGGRR of which the low 32 bits
  /// count; false if there is none: `index` then stays.
  bool IndexFromColor(unsigned long color, unsigned int& index) const noexcept;
  /// Gets the index of the first entry with a name, whatever the case of its letters; false if
  /// there is none: `index` then stays.
  bool IndexFromColor(const GString& name, unsigned int& index) const noexcept;

  /// The entry of an index below `size`.
  [[nodiscard]] const CColorTableEntry& operator[](unsigned int index) const noexcept {
    return entries_[index];
  }

 private:
  friend class Singleton<CColorTable>;

  [[gnu::visibility("hidden")]] CColorTable();
  [[gnu::visibility("hidden")]] ~CColorTable();

  std::vector<CColorTableEntry> entries_;
};

extern template class Singleton<CColorTable>;

}  // namespace vlm
