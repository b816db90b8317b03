#pragma once

/// \file
/// A worksheet of empty cells, numbers and texts, column by column.
///
///     vlm::CWksStore wells;
///     wells.SetCell(0, 0, "depth");
///     wells.SetCell(1, 0, 12.5);
///     double depth;
///     if (wells.GetCell(1, 0, depth)) Plot(depth);

#include <velum/core/Api.h>

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vlm {

/// A table whose columns each have as many cells as were written. A value: copies are deep.
///
/// A cell takes eight bytes whatever it holds, and lives until `DeleteContents`; texts stand one
/// behind the other in one pool for each column, which is never tidied: a text that is replaced
/// keeps its room. The row comes before the column everywhere.
///
/// A column has at most 536,870,911 cells (2^29 - 1) and 4 GB of texts, and there are as many
/// columns at most. What the vectors behind it hold in reserve comes on top.
///
/// Threads: any number may read a store that nobody changes.
///
/// *Errors*: a change throws `LengthError`, "vector<T> too long", beyond those limits, and
/// `std::bad_alloc`. The store then keeps what it held, though it may have grown by empty columns
/// and cells.
class VELUM_API CWksStore {
 public:
  /// What a cell holds.
  enum DataType : int {
    DataEmpty = 0,   ///< Nothing.
    DataNumber = 1,  ///< A number.
    DataText = 2,    ///< A text.
  };

  /// A store without columns.
  CWksStore() noexcept;
  /// Copies every cell and text.
  CWksStore(const CWksStore& other);
  /// Takes the columns, and leaves none.
  CWksStore(CWksStore&& other) noexcept;
  /// Copies every cell and text; if memory ends nothing has changed.
  CWksStore& operator=(const CWksStore& other);
  /// Takes the columns.
  CWksStore& operator=(CWksStore&& other) noexcept;
  ~CWksStore();

  /// The number of columns, those that were never written to among them.
  [[nodiscard]] unsigned int GetColCount() const noexcept;
  /// The number of cells of a column; 0 if there is none.
  [[nodiscard]] unsigned int GetRowCount(unsigned int col) const noexcept;
  /// The largest number of cells of all columns.
  ///
  /// *Cost*: grows with the number of columns.
  [[nodiscard]] unsigned int GetRowCount() const noexcept;
  /// True if no cell holds a number or a text.
  ///
  /// *Cost*: grows with the number of empty cells before the first other one.
  [[nodiscard]] bool IsEmpty() const noexcept;
  /// What a cell holds; a cell that does not exist is empty.
  [[nodiscard]] DataType GetCellType(unsigned int row, unsigned int col) const noexcept;
  /// Gives the number of a cell; false if it holds none, and `out` stays.
  bool GetCell(unsigned int row, unsigned int col, double& out) const noexcept;
  /// Gives the text of a cell; false if it holds none, and `out` stays.
  ///
  /// *Lifetime*: until a text is stored in that column, or the column goes.
  bool GetCell(unsigned int row, unsigned int col, const char*& out) const noexcept;
  /// The text of a cell, or its number with ten significant digits at most and the decimal point of
  /// the runtime's locale; empty for an empty one.
  [[nodiscard]] std::string GetCell(unsigned int row, unsigned int col) const;
  /// The texts of a row, as `GetCell` gives them, one for each column.
  [[nodiscard]] std::vector<std::string> GetRow(unsigned int row) const;
  /// The same, in which only cells of one type are told and the others are empty.
  [[nodiscard]] std::vector<std::string> GetRow(unsigned int row, DataType type) const;

  /// Stores a number; the store grows by what lies before the cell.
  ///
  /// - A NaN whose high 32 bits are all set is what an empty cell is made of: it makes the cell
  ///   empty. NaN as arithmetic and the standard library make it is another one, and a number.
  void SetCell(unsigned int row, unsigned int col, double value);
  /// Stores an integer as a number, beyond 2^53 as the nearest double to it; false is 0, true is 1.
  template <std::integral Integer>
  void SetCell(unsigned int row, unsigned int col, Integer value) {
    SetCell(row, col, static_cast<double>(value));
  }
  /// A character is no number, and a text is a pointer.
  void SetCell(unsigned int row, unsigned int col, char value) = delete;
  /// Stores a text, which may be one of this store.
  ///
  /// *Errors*: `ERR_INTERNAL` for a null pointer.
  void SetCell(unsigned int row, unsigned int col, const char* text);
  /// Removes all columns.
  void DeleteContents() noexcept;

 private:
  struct Column;

  [[gnu::visibility("hidden")]] const Column* Find(unsigned int col) const noexcept;
  [[gnu::visibility("hidden")]] std::uint64_t CellAt(unsigned int row,
                                                     unsigned int col) const noexcept;
  [[gnu::visibility("hidden")]] Column& Grow(unsigned int row, unsigned int col);

  std::vector<std::unique_ptr<Column>> columns_;
};

}  // namespace vlm
