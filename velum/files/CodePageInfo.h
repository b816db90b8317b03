#pragma once

/// \file
/// The code pages that a user can choose from, and those of dBASE files.
///
///     const vlm::CodePageInfo pages;
///     for (unsigned int i = 0; i < pages.GetCount(); ++i) puts(pages.GetNameByIndex(i).c_str());

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <utility>
#include <vector>

namespace vlm {

/// A list of code pages, each a number such as 1252 and a name such as "Western European
/// (Windows)", in an order fit for a list box.
///
/// A value: each object has a copy of the list in an order of its own. All pages are listed,
/// whether or not this system converts them; `AtoW` and `WtoA` give empty text for one that it does
/// not. An index counts from 0 in the present order.
///
/// *Errors*: `Exception` with `ERR_INVALID_PARAMETER` for an index at or above the count.
class VELUM_API CodePageInfo {
 public:
  /// An order of the list.
  enum CPIOrder : int {
    CPIOrderByNumber = 0,     ///< Ascending by number.
    CPIOrderByName = 1,       ///< By name, ignoring case.
    CPIOrderCommonFirst = 2,  ///< 0, 1 and 65001, and then all others by name.
  };

  /// The list with the common pages first.
  CodePageInfo();
  /// The list in an order; see `SetOrder`.
  explicit CodePageInfo(CPIOrder order);
  /// A list of its own in the same order.
  CodePageInfo(const CodePageInfo& other);
  /// Takes the order of another list.
  CodePageInfo& operator=(const CodePageInfo& other);
  ~CodePageInfo();

  /// The number of code pages, 138.
  [[nodiscard]] unsigned int GetCount() const noexcept;
  /// The name at an index.
  [[nodiscard]] GString GetNameByIndex(unsigned int index) const;
  /// The number at an index.
  [[nodiscard]] unsigned int GetPageNumberByIndex(unsigned int index) const;
  /// Finds where a number stands; false and index 0 for one that is not in the list.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for a number above 65535.
  bool GetIndexFromPageNumber(unsigned int page, unsigned int& index) const;
  /// Finds where a name stands, ignoring case; false and index 0 for one that is not in the list.
  bool GetIndexFromName(const GString& name, unsigned int& index) const;

  /// Sorts the list afresh.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for an order that is none; the list stays as it is.
  void SetOrder(CPIOrder order);

 protected:
  /// Fills the list, in no particular order.
  void InitInternalList();
  /// Sorts ascending by number.
  void SortListByNumber();
  /// Sorts by name, ignoring case.
  void SortListByName();
  /// Moves a code page to the front; the others keep their order.
  ///
  /// *Errors*: `ERR_INTERNAL` for a page that is not in the list.
  void MoveCodePageToListTop(unsigned int page);

 private:
  std::vector<std::pair<unsigned int, GString>> entries_;
};

/// The identifier under which dBASE files store a code page; the lowest of several, 0 if there is
/// none.
[[nodiscard]] VELUM_API unsigned char MapCodePageToDBFLangID(int page) noexcept;

/// The code page that an identifier in a dBASE file stands for; 0 if there is none.
[[nodiscard]] VELUM_API int MapDBFLangIDtoCodePage(unsigned char id) noexcept;

}  // namespace vlm
