#include <velum/files/WksStore.h>

#include <velum/core/Exception.h>
#include <velum/core/StandardErrors.h>
#include <velum/core/StringFormat.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <utility>

namespace vlm {

namespace {

// A cell is a double, or has this mark in its high word: then the low word is the place of a text
// in the pool, or all ones for an empty cell.
constexpr std::uint64_t kMark = 0xFFFFFFFF00000000u;
constexpr std::uint64_t kEmpty = ~std::uint64_t{0};

constexpr std::size_t kMostSlots = 536'870'911;
constexpr std::size_t kMostPool = 0xFFFFFFFF;
constexpr std::size_t kFirstPool = 256;

CWksStore::DataType TypeOf(std::uint64_t cell) noexcept {
  if ((cell & kMark) != kMark) return CWksStore::DataNumber;
  return cell == kEmpty ? CWksStore::DataEmpty : CWksStore::DataText;
}

struct Free {
  void operator()(char* pool) const noexcept { std::free(pool); }
};

[[noreturn]] void ThrowTooLong() { throw LengthError("vector<T> too long"); }

}  // namespace

struct CWksStore::Column {
  Column() = default;
  Column(const Column& other) : cells(other.cells) {
    if (other.poolSize == 0) return;
    MakeRoom(other.poolSize, nullptr);
    poolSize = other.poolSize;
    std::memcpy(pool.get(), other.pool.get(), poolSize);
  }

  // Puts a text behind the others and gives its place.
  std::uint32_t Add(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    if (size > kMostPool - poolSize) ThrowTooLong();
    if (poolSize + size > poolCapacity) text = MakeRoom(size, text);
    std::memcpy(pool.get() + poolSize, text, size);
    const std::uint32_t place = poolSize;
    poolSize += static_cast<std::uint32_t>(size);
    return place;
  }

  // Enlarges the pool for another text and gives the place of that text, which may lie in the pool.
  const char* MakeRoom(std::size_t size, const char* text) {
    std::size_t capacity = std::max<std::size_t>(poolCapacity, kFirstPool / 2);
    while (capacity < poolSize + size) capacity *= 2;
    capacity = std::min(std::max(capacity, kFirstPool), kMostPool);
    const std::less<const char*> before;
    const char* const old = pool.get();
    const bool isOwn = old && !before(text, old) && before(text, old + poolSize);
    const std::ptrdiff_t place = isOwn ? text - old : 0;
    auto* const larger = static_cast<char*>(std::realloc(pool.get(), capacity));
    if (!larger) throw BadAllocError();
    static_cast<void>(pool.release());
    pool.reset(larger);
    poolCapacity = static_cast<std::uint32_t>(capacity);
    return isOwn ? larger + place : text;
  }

  std::vector<std::uint64_t> cells;
  std::uint32_t poolSize = 0;
  std::uint32_t poolCapacity = 0;
  // From malloc, since a large block of that grows without being copied.
  std::unique_ptr<char, Free> pool;
};

CWksStore::CWksStore() noexcept = default;

CWksStore::CWksStore(const CWksStore& other) {
  columns_.reserve(other.columns_.size());
  for (const std::unique_ptr<Column>& column : other.columns_) {
    columns_.push_back(column ? std::make_unique<Column>(*column) : nullptr);
  }
}

CWksStore::CWksStore(CWksStore&& other) noexcept : columns_(std::move(other.columns_)) {
  other.columns_.clear();
}

CWksStore& CWksStore::operator=(const CWksStore& other) {
  if (this != &other) CWksStore(other).columns_.swap(columns_);
  return *this;
}

CWksStore& CWksStore::operator=(CWksStore&& other) noexcept {
  CWksStore(std::move(other)).columns_.swap(columns_);
  return *this;
}

CWksStore::~CWksStore() = default;

unsigned int CWksStore::GetColCount() const noexcept {
  return static_cast<unsigned int>(columns_.size());
}

unsigned int CWksStore::GetRowCount(unsigned int col) const noexcept {
  const Column* const column = Find(col);
  return column ? static_cast<unsigned int>(column->cells.size()) : 0;
}

unsigned int CWksStore::GetRowCount() const noexcept {
  unsigned int count = 0;
  for (unsigned int col = 0; col < GetColCount(); ++col) count = std::max(count, GetRowCount(col));
  return count;
}

bool CWksStore::IsEmpty() const noexcept {
  return std::none_of(columns_.begin(), columns_.end(), [](const auto& column) {
    return column && std::any_of(column->cells.begin(), column->cells.end(),
                                 [](std::uint64_t cell) { return cell != kEmpty; });
  });
}

CWksStore::DataType CWksStore::GetCellType(unsigned int row, unsigned int col) const noexcept {
  return TypeOf(CellAt(row, col));
}

bool CWksStore::GetCell(unsigned int row, unsigned int col, double& out) const noexcept {
  const std::uint64_t cell = CellAt(row, col);
  if (TypeOf(cell) != DataNumber) return false;
  out = std::bit_cast<double>(cell);
  return true;
}

bool CWksStore::GetCell(unsigned int row, unsigned int col, const char*& out) const noexcept {
  const std::uint64_t cell = CellAt(row, col);
  if (TypeOf(cell) != DataText) return false;
  out = columns_[col]->pool.get() + (cell & ~kMark);
  return true;
}

std::string CWksStore::GetCell(unsigned int row, unsigned int col) const {
  double number = 0.0;
  const char* text = "";
  if (GetCell(row, col, number)) return ToString("%.10g", number);
  GetCell(row, col, text);
  return text;
}

std::vector<std::string> CWksStore::GetRow(unsigned int row) const {
  std::vector<std::string> texts(columns_.size());
  for (unsigned int col = 0; col < texts.size(); ++col) texts[col] = GetCell(row, col);
  return texts;
}

std::vector<std::string> CWksStore::GetRow(unsigned int row, DataType type) const {
  std::vector<std::string> texts(columns_.size());
  for (unsigned int col = 0; col < texts.size(); ++col) {
    if (GetCellType(row, col) == type) texts[col] = GetCell(row, col);
  }
  return texts;
}

void CWksStore::SetCell(unsigned int row, unsigned int col, double value) {
  const auto cell = std::bit_cast<std::uint64_t>(value);
  Grow(row, col).cells[row] = (cell & kMark) == kMark ? kEmpty : cell;
}

void CWksStore::SetCell(unsigned int row, unsigned int col, const char* text) {
  if (!text) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  Column& column = Grow(row, col);
  column.cells[row] = kMark | column.Add(text);
}

void CWksStore::DeleteContents() noexcept { std::exchange(columns_, {}); }

const CWksStore::Column* CWksStore::Find(unsigned int col) const noexcept {
  return col < columns_.size() ? columns_[col].get() : nullptr;
}

std::uint64_t CWksStore::CellAt(unsigned int row, unsigned int col) const noexcept {
  const Column* const column = Find(col);
  return column && row < column->cells.size() ? column->cells[row] : kEmpty;
}

// Makes sure that a cell exists.
CWksStore::Column& CWksStore::Grow(unsigned int row, unsigned int col) {
  if (row >= kMostSlots || col >= kMostSlots) ThrowTooLong();
  if (col >= columns_.size()) columns_.resize(std::size_t{col} + 1);
  std::unique_ptr<Column>& column = columns_[col];
  if (!column) column = std::make_unique<Column>();
  std::vector<std::uint64_t>& cells = column->cells;
  if (row == cells.size()) {
    cells.push_back(kEmpty);
  } else if (row > cells.size()) {
    cells.resize(std::size_t{row} + 1, kEmpty);
  }
  return *column;
}

}  // namespace vlm
