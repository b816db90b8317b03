#include <velum/files/WksStore.h>

#include <velum/core/StandardErrors.h>
#include <velum/files/test/FileErrors.h>

#include <testing/FailingAllocations.h>
#include <testing/Sanitized.h>

#include <gtest/gtest.h>

#include <malloc.h>
#include <sys/resource.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <map>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using Texts = std::vector<std::string>;

// Sanitizers bring a malloc of their own, which counts nothing and does not fail.
constexpr bool kIsMallocOurs = !testing::kIsSanitized;

std::size_t HeldBytes() {
  const struct mallinfo2 info = ::mallinfo2();
  return info.uordblks + info.hblkhd;
}

// While it lives the process gets no more memory from the system, whatever asks for it.
class NoMoreMemory {
 public:
  NoMoreMemory() {
    ::getrlimit(RLIMIT_AS, &before_);
    const struct rlimit none { 0, before_.rlim_max };
    ::setrlimit(RLIMIT_AS, &none);
  }
  NoMoreMemory(const NoMoreMemory&) = delete;
  NoMoreMemory& operator=(const NoMoreMemory&) = delete;
  ~NoMoreMemory() { ::setrlimit(RLIMIT_AS, &before_); }

 private:
  struct rlimit before_ {};
};

TEST(CWksStore, AColumnGrowsUpToTheCell) {
  CWksStore store;
  EXPECT_TRUE(store.IsEmpty());
  store.SetCell(5, 2, 1.0);
  EXPECT_EQ(store.GetColCount(), 3u);
  EXPECT_EQ(store.GetRowCount(2), 6u);
  EXPECT_EQ(store.GetRowCount(0), 0u);
  EXPECT_EQ(store.GetRowCount(3), 0u);
  EXPECT_EQ(store.GetRowCount(), 6u);
  for (unsigned row = 0; row < 5; ++row) {
    EXPECT_EQ(store.GetCellType(row, 2), CWksStore::DataEmpty);
  }
  EXPECT_EQ(store.GetCellType(5, 2), CWksStore::DataNumber);
  EXPECT_EQ(store.GetCellType(6, 2), CWksStore::DataEmpty);
  EXPECT_EQ(store.GetCellType(0xFFFFFFFF, 0xFFFFFFFF), CWksStore::DataEmpty);
  store.DeleteContents();
  EXPECT_EQ(store.GetColCount(), 0u);
}

TEST(CWksStore, CellsReadAsWhatTheyHold) {
  CWksStore store;
  store.SetCell(0, 0, 0.1 + 0.2);
  store.SetCell(0, 1, "");
  store.SetCell(0, 3, "depth");
  store.SetCell(0, 4, 0);
  double number = -1;
  const char* text = nullptr;
  EXPECT_TRUE(store.GetCell(0, 0, number));
  EXPECT_EQ(number, 0.1 + 0.2);
  EXPECT_FALSE(store.GetCell(0, 0, text) || store.GetCell(0, 2, text) ||
               store.GetCell(0, 3, number));
  EXPECT_EQ(text, nullptr);
  EXPECT_TRUE(store.GetCell(0, 3, text));
  EXPECT_STREQ(text, "depth");
  EXPECT_EQ(store.GetRow(0), (Texts{"0.3", "", "", "depth", "0"}));
  EXPECT_EQ(store.GetRow(0, CWksStore::DataNumber), (Texts{"0.3", "", "", "", "0"}));
  EXPECT_EQ(store.GetRow(7, CWksStore::DataText), Texts(5));
  EXPECT_EQ(store.GetCellType(0, 1), CWksStore::DataText);
}

TEST(CWksStore, TheMarkOfAnEmptyCellIsNoNumber) {
  const struct {
    const char* why;
    double number;
    CWksStore::DataType type;
  } rows[] = {
      {"a NaN with the mark", std::bit_cast<double>(0xFFFFFFFF00000000u), CWksStore::DataEmpty},
      {"the place of a text", std::bit_cast<double>(0xFFFFFFFF7FFFFFFFu), CWksStore::DataEmpty},
      {"the mark alone", std::bit_cast<double>(0xFFFFFFFFFFFFFFFFu), CWksStore::DataEmpty},
      {"next to the mark", std::bit_cast<double>(0xFFFFFFFEFFFFFFFFu), CWksStore::DataNumber},
      {"NaN", NAN, CWksStore::DataNumber},
      {"-NaN", -NAN, CWksStore::DataNumber},
      {"infinity", -HUGE_VAL, CWksStore::DataNumber},
  };
  for (const auto& row : rows) {
    CWksStore store;
    store.SetCell(2, 0, row.number);
    EXPECT_EQ(store.GetCellType(2, 0), row.type) << row.why;
    EXPECT_EQ(store.IsEmpty(), row.type == CWksStore::DataEmpty) << row.why;
  }
}

TEST(CWksStore, StrayIndicesAreRefused) {
  CWksStore store;
  store.SetCell(0, 0, 1.0);
  const std::pair<unsigned, unsigned> strays[] = {
      {0xFFFFFFFF, 0}, {0, 0xFFFFFFFF}, {1u << 29, 0}, {(1u << 29) - 1, 1}, {0, 1u << 29}};
  for (const auto& [row, col] : strays) {
    EXPECT_THROW(store.SetCell(row, col, 1.0), std::length_error) << row << ", " << col;
    try {
      store.SetCell(row, col, "x");
      ADD_FAILURE();
    } catch (const LengthError& error) {
      EXPECT_STREQ(error.what(), "vector<T> too long");
    }
  }
  EXPECT_EQ(test::CodeOf([&] { store.SetCell(5, 5, static_cast<const char*>(nullptr)); }),
            ERR_INTERNAL);
  EXPECT_EQ(store.GetColCount(), 1u);
  EXPECT_EQ(store.GetRowCount(), 1u);
}

TEST(CWksStore, ATextOfTheStoreMayBeStoredAgain) {
  // Long enough that the pool moves several times.
  const std::string first(60, 'x');
  CWksStore store;
  store.SetCell(0, 0, first.c_str());
  for (unsigned row = 1; row <= 60; ++row) {
    const char* text = nullptr;
    ASSERT_TRUE(store.GetCell(row - 1, 0, text));
    store.SetCell(row, 0, text + 1);
    EXPECT_EQ(store.GetCell(row, 0), first.substr(row));
  }
}

TEST(CWksStore, CopiesAreDeep) {
  CWksStore store;
  store.SetCell(1, 2, "old");
  CWksStore copy = store;
  CWksStore assigned;
  assigned.SetCell(0, 0, 1.0);
  assigned = store;
  store.SetCell(1, 2, "new");
  store.SetCell(0, 0, 3.0);
  copy.SetCell(2, 2, "more");
  EXPECT_EQ(copy.GetRow(1), (Texts{"", "", "old"}));
  EXPECT_EQ(copy.GetRow(2), (Texts{"", "", "more"}));
  EXPECT_EQ(assigned.GetRow(1), (Texts{"", "", "old"}));
  EXPECT_EQ(assigned.GetRowCount(0), 0u);
  const CWksStore& self = assigned;
  assigned = self;
  CWksStore moved;
  moved.SetCell(5, 5, "gone");
  moved = std::move(assigned);
  EXPECT_EQ(moved.GetRowCount(5), 0u);
  EXPECT_EQ(moved.GetCell(1, 2), "old");
  EXPECT_EQ(assigned.GetColCount(), 0u);
}

TEST(CWksStore, AgreesWithAMapOfCells) {
  const unsigned seed = std::random_device()();
  std::mt19937 random(seed);
  CWksStore store;
  std::map<std::pair<unsigned, unsigned>, std::string> cells;
  for (int i = 0; i < 20000; ++i) {
    const auto row = static_cast<unsigned>(random() % 300);
    const auto col = static_cast<unsigned>(random() % 7);
    if (random() % 2 == 0) {
      const int number = static_cast<int>(random() % 1000);
      store.SetCell(row, col, number);
      cells[{row, col}] = std::to_string(number);
    } else {
      const std::string text(random() % 40, static_cast<char>('a' + random() % 26));
      store.SetCell(row, col, text.c_str());
      cells[{row, col}] = text;
    }
  }
  for (unsigned row = 0; row < 300; ++row) {
    for (unsigned col = 0; col < 7; ++col) {
      const auto cell = cells.find({row, col});
      const bool isEmpty = cell == cells.end();
      ASSERT_EQ(store.GetCellType(row, col) == CWksStore::DataEmpty, isEmpty) << seed;
      ASSERT_EQ(store.GetCell(row, col), isEmpty ? "" : cell->second) << seed;
    }
  }
}

TEST(CWksStore, ExhaustedMemoryLeavesTheCells) {
  if (!vlm::testing::kAllocationsCanFail) GTEST_SKIP();
  CWksStore store;
  store.SetCell(0, 0, "old");
  const std::string text(300, 'x');
  bool done = false;
  for (std::size_t succeeding = 0; !done; ++succeeding) {
    vlm::testing::FailingAllocations exhausted(succeeding);
    try {
      store.SetCell(0, 0, text.c_str());
      store.SetCell(9, 9, text.c_str());
      CWksStore other;
      other = store;
      done = true;
    } catch (const std::bad_alloc&) {
    }
    const char* held = nullptr;
    ASSERT_TRUE(store.GetCell(0, 0, held));
    ASSERT_TRUE(std::string_view(held) == "old" || held == text);
  }
}

TEST(CWksStore, AnExhaustedPoolLeavesItsTexts) {
  if (!kIsMallocOurs) GTEST_SKIP();
  CWksStore store;
  store.SetCell(0, 0, "old");
  store.SetCell(1, 0, 1.0);
  const std::string text(32 << 20, 'x');
  {
    const NoMoreMemory exhausted;
    EXPECT_THROW(store.SetCell(0, 0, text.c_str()), std::bad_alloc);
    EXPECT_THROW(store.SetCell(1, 0, text.c_str()), std::bad_alloc);
    EXPECT_THROW(store.SetCell(2, 0, text.c_str()), std::bad_alloc);
  }
  EXPECT_EQ(store.GetCell(0, 0), "old");
  EXPECT_EQ(store.GetCell(1, 0), "1");
  EXPECT_EQ(store.GetCellType(2, 0), CWksStore::DataEmpty);
  store.SetCell(2, 0, text.c_str());
  EXPECT_EQ(store.GetCell(2, 0), text);
}

TEST(CWksStore, ACellTakesEightBytesAndATextItsBytes) {
  if (!kIsMallocOurs) GTEST_SKIP();
  const std::size_t before = HeldBytes();
  CWksStore store;
  store.SetCell(999'999, 0, 1.0);
  const std::size_t cells = HeldBytes() - before;
  EXPECT_GE(cells, 8'000'000u);
  EXPECT_LT(cells, 8'010'000u);
  for (unsigned row = 0; row < 10'000; ++row) store.SetCell(row, 0, "seven b");
  // The pool doubles from 256 bytes.
  const std::size_t pool = HeldBytes() - before - cells;
  EXPECT_GE(pool, 80'000u);
  EXPECT_LT(pool, 131'072u + 10'000u);
  const CWksStore copy = store;
  store.DeleteContents();
  EXPECT_LT(HeldBytes() - before, 8'000'000u + 131'072u + 20'000u) << "only the copy is left";
}

}  // namespace
}  // namespace vlm
