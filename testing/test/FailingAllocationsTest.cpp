#include <testing/FailingAllocations.h>

#include <velum/core/StringText.h>
#include <velum/files/MemoryFile.h>
#include <testing/Sanitized.h>

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <string>
#include <thread>

namespace vlm::testing {
namespace {

/// Allocates twice; gives whether that went well. Calls that name the operator are never optimised
/// away.
bool Allocates() {
  try {
    ::operator delete(::operator new(8));
    ::operator delete[](::operator new[](8));
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

TEST(FailingAllocations, FailAfterThoseThatSucceed) {
  if (!kAllocationsCanFail) GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
  const std::size_t kAllocations = 2;  // of Allocates()
  for (const std::size_t succeeding : {std::size_t{0}, std::size_t{1}, kAllocations}) {
    bool first, second, failed;
    {
      const FailingAllocations exhausted(succeeding);
      first = Allocates();
      failed = exhausted.HaveFailed();
      second = Allocates();
    }
    EXPECT_EQ(first, succeeding == kAllocations) << succeeding;
    EXPECT_EQ(failed, !first) << succeeding;
    EXPECT_FALSE(second) << succeeding;
    EXPECT_TRUE(Allocates());
  }
}

TEST(FailingAllocations, ReachTheLibrariesThatTheProgramUses) {
  if (!kAllocationsCanFail) GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
  bool thrown = false;
  {
    const FailingAllocations exhausted;
    try {
      const std::string text(1000, 'x');  // allocated inside the standard library
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
  }
  EXPECT_TRUE(thrown);
}

TEST(FailingAllocations, GiveNullWhereNothingMayBeThrown) {
  if (!kAllocationsCanFail) GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
  void* memory;
  {
    const FailingAllocations exhausted;
    memory = ::operator new(8, std::nothrow);
  }
  EXPECT_EQ(memory, nullptr);
}

TEST(FailingAllocations, LeaveOtherThreadsAlone) {
  if (!kAllocationsCanFail) GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
  std::atomic<bool> exhaustedHere = false;
  bool allocated = false;
  std::thread other([&] {
    while (!exhaustedHere) std::this_thread::yield();
    allocated = Allocates();
  });
  {
    const FailingAllocations exhausted;
    exhaustedHere = true;
    other.join();
  }
  EXPECT_TRUE(allocated);
}

TEST(FailingAllocations, GiveBackTheOuterOne) {
  if (!kAllocationsCanFail) GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
  bool inner, outer;
  {
    const FailingAllocations exhausted(0);
    {
      const FailingAllocations none(100);
      inner = Allocates();
    }
    outer = Allocates();
  }
  EXPECT_TRUE(inner);
  EXPECT_FALSE(outer);
}

/// Whether the library can make a text, which the standard library allocates for it.
bool LibraryAllocates(const std::string& longText) {
  try {
    return !ToUpper(longText).empty();
  } catch (const std::bad_alloc&) {
    return false;
  }
}

TEST(FailingAllocations, OfTheLibraryLeaveTheTestAlone) {
  if (!kAllocationsCanFail) GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
  const std::string longText(1000, 'x');
  bool library, test, standard;
  {
    const FailingAllocations exhausted(0, 1, Asker::Library);
    test = Allocates();
    standard = std::string(longText).append(1000, 'y').size() == 2000;
    library = LibraryAllocates(longText);
  }
  EXPECT_TRUE(test);
  EXPECT_TRUE(standard);
  EXPECT_FALSE(library);
  EXPECT_TRUE(LibraryAllocates(longText));
}

TEST(FailingAllocations, OfTheLibraryReachMalloc) {
  if constexpr (kIsSanitized) {
    GTEST_SKIP() << "the sanitizers keep malloc to themselves";
  } else {
    CMemoryFile file;
    const std::ptrdiff_t before = HeldOfMalloc();
    {
      const FailingAllocations exhausted(0, 1, Asker::Library);
      EXPECT_THROW(file.Write("x", 1), std::bad_alloc);
    }
    EXPECT_EQ(HeldOfMalloc(), before);
    file.Write("x", 1);
    EXPECT_GT(HeldOfMalloc(), before);
    file.Close();
    EXPECT_EQ(HeldOfMalloc(), before);
  }
}

TEST(AllocationPeak, IsTheMostThatWasHeldAtOnce) {
  if (!kAllocationsCanFail) GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
  const std::string before(100000, 'x');
  const AllocationPeak peak;
  EXPECT_EQ(peak.Bytes(), 0u);
  std::thread([] {
    const std::string one(30000, 'x');
    const std::string two(40000, 'x');
  }).join();
  { const std::string less(50000, 'x'); }
  EXPECT_GE(peak.Bytes(), 70000u);
  EXPECT_LT(peak.Bytes(), 80000u);
}

}  // namespace
}  // namespace vlm::testing
