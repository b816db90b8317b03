#include <velum/core/StringCompare.h>
#include <velum/core/WideText.h>
#include <velum/files/CodePageInfo.h>

#include <velum/files/test/FileErrors.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace vlm {
namespace {

using test::CodeOf;

std::vector<unsigned int> NumbersOf(const CodePageInfo& pages) {
  std::vector<unsigned int> numbers;
  for (unsigned int i = 0; i < pages.GetCount(); ++i) {
    numbers.push_back(pages.GetPageNumberByIndex(i));
  }
  return numbers;
}

std::vector<std::string> NamesOf(const CodePageInfo& pages) {
  std::vector<std::string> names;
  for (unsigned int i = 0; i < pages.GetCount(); ++i) names.push_back(pages.GetNameByIndex(i));
  return names;
}

TEST(CodePageInfo, EveryOrderHoldsTheSamePages) {
  CodePageInfo pages(CodePageInfo::CPIOrderByNumber);
  ASSERT_EQ(pages.GetCount(), 138u);
  const std::vector<unsigned int> byNumber = NumbersOf(pages);
  EXPECT_EQ(byNumber.front(), 0u);
  EXPECT_EQ(byNumber.back(), 65001u);
  EXPECT_TRUE(std::is_sorted(byNumber.begin(), byNumber.end()));
  EXPECT_EQ(std::adjacent_find(byNumber.begin(), byNumber.end()), byNumber.end()) << "twice";

  pages.SetOrder(CodePageInfo::CPIOrderByName);
  const std::vector<std::string> byName = NamesOf(pages);
  EXPECT_EQ(byName.front(), "Arabic (864)");
  EXPECT_EQ(byName.back(), "Western European (Windows)");
  EXPECT_TRUE(std::is_sorted(byName.begin(), byName.end(), StringLess()));
  std::vector<unsigned int> numbers = NumbersOf(pages);
  std::sort(numbers.begin(), numbers.end());
  EXPECT_EQ(numbers, byNumber);
}

TEST(CodePageInfo, CommonPagesStandFirstUnlessToldOtherwise) {
  const CodePageInfo pages;
  std::vector<unsigned int> numbers = NumbersOf(pages);
  EXPECT_EQ(std::vector<unsigned int>(numbers.begin(), numbers.begin() + 4),
            (std::vector<unsigned int>{0, 1, 65001, 864}));
  const std::vector<std::string> names = NamesOf(pages);
  EXPECT_TRUE(std::is_sorted(names.begin() + 3, names.end(), StringLess()));
}

TEST(CodePageInfo, CopiesHaveAnOrderOfTheirOwn) {
  const CodePageInfo first;
  CodePageInfo second(first);
  second.SetOrder(CodePageInfo::CPIOrderByNumber);
  EXPECT_EQ(first.GetPageNumberByIndex(2), 65001u);
  EXPECT_EQ(second.GetPageNumberByIndex(2), 37u);
  second = first;
  EXPECT_EQ(NumbersOf(second), NumbersOf(first));
}

TEST(CodePageInfo, FindsNumbersAndNamesInThePresentOrder) {
  const CodePageInfo pages(CodePageInfo::CPIOrderByNumber);
  unsigned int index = 7;
  EXPECT_TRUE(pages.GetIndexFromPageNumber(1252, index));
  EXPECT_EQ(pages.GetNameByIndex(index), "Western European (Windows)");
  EXPECT_TRUE(pages.GetIndexFromName("cyrillic (koi8-r)", index));
  EXPECT_EQ(pages.GetPageNumberByIndex(index), 20866u);
  EXPECT_FALSE(pages.GetIndexFromPageNumber(12345, index));
  EXPECT_EQ(index, 0u);
  index = 7;
  EXPECT_FALSE(pages.GetIndexFromName("Cyrillic", index));
  EXPECT_EQ(index, 0u);
}

TEST(CodePageInfo, RefusesWhatIsOutOfRange) {
  class Opened : public CodePageInfo {
   public:
    using CodePageInfo::MoveCodePageToListTop;
  };
  Opened pages;
  const std::vector<unsigned int> before = NumbersOf(pages);
  unsigned int index = 0;
  EXPECT_EQ(CodeOf([&] { (void)pages.GetNameByIndex(138); }), ERR_INVALID_PARAMETER);
  EXPECT_EQ(CodeOf([&] { (void)pages.GetPageNumberByIndex(138); }), ERR_INVALID_PARAMETER);
  EXPECT_EQ(CodeOf([&] { pages.GetIndexFromPageNumber(65536, index); }), ERR_INVALID_PARAMETER);
  EXPECT_EQ(CodeOf([&] { pages.SetOrder(static_cast<CodePageInfo::CPIOrder>(3)); }),
            ERR_INVALID_PARAMETER);
  EXPECT_EQ(CodeOf([&] { pages.MoveCodePageToListTop(12345); }), ERR_INTERNAL);
  EXPECT_EQ(NumbersOf(pages), before);
  pages.MoveCodePageToListTop(1252);
  EXPECT_EQ(pages.GetPageNumberByIndex(0), 1252u);
  EXPECT_EQ(pages.GetPageNumberByIndex(1), 0u);
}

TEST(DBFLanguages, LeadToCodePagesAndBack) {
  const struct {
    int id, page, back;
  } rows[] = {
      {0x01, 437, 0x01},   {0x02, 850, 0x02},   {0x03, 1252, 0x03}, {0x04, 10000, 0x04},
      {0x64, 852, 0x64},   {0x65, 865, 0x65},   {0x66, 866, 0x66},  {0x67, 861, 0x67},
      {0x69, 852, 0x64},   {0x6A, 737, 0x6A},   {0x6B, 857, 0x6B},  {0x96, 10007, 0x96},
      {0x97, 10029, 0x97}, {0x98, 10006, 0x98}, {0xC8, 1250, 0xC8}, {0xC9, 1251, 0xC9},
      {0xCA, 1254, 0xCA},  {0xCB, 1253, 0xCB},
  };
  int known = 0;
  for (int id = 0; id < 256; ++id) {
    const auto* const row =
        std::find_if(std::begin(rows), std::end(rows), [id](const auto& r) { return r.id == id; });
    const int page = MapDBFLangIDtoCodePage(static_cast<unsigned char>(id));
    EXPECT_EQ(page, row == std::end(rows) ? 0 : row->page) << id;
    if (row == std::end(rows)) continue;
    ++known;
    EXPECT_EQ(MapCodePageToDBFLangID(page), row->back) << page;
  }
  EXPECT_EQ(known, 18);
  EXPECT_EQ(MapCodePageToDBFLangID(65001), 0);
  EXPECT_EQ(MapCodePageToDBFLangID(-1), 0);
}

std::string Narrow(const std::wstring& text, unsigned int page) {
  return static_cast<const char*>(WtoA(text.c_str(), page));
}

std::wstring Wide(const std::string& text, unsigned int page) {
  return static_cast<const wchar_t*>(AtoW(text, page));
}

/// How many of the characters tried come back from a page as they went. Those that the
/// page takes and gives back changed are added to `changed`.
int CharactersThatComeBack(unsigned int page, std::wstring& changed) {
  int count = 0;
  // Every character of the alphabets, and some of the many others.
  for (unsigned int code = 1; code < 0x10000; code += code < 0x1200 ? 1 : 17) {
    if (code >= 0xD800 && code < 0xE000) continue;
    const std::wstring text(1, static_cast<wchar_t>(code));
    const std::wstring back = Wide(Narrow(text, page), page);
    if (back == text) {
      ++count;
    } else if (!back.empty() && back != L"?") {
      changed += text;
    }
  }
  return count;
}

TEST(CodePages, OfTheListConvertBothWaysUnlessTheSystemHasNoTable) {
  // Those that ICU has no table for, and UTF-16, which no terminated narrow text can hold.
  const std::vector<unsigned int> without = {1200,  1201,  1361,  10001, 10002, 10003, 10004, 10005,
                                             10008, 10010, 10021, 10079, 10082, 20000, 20001, 20002,
                                             20003, 20004, 20005, 20105, 20106, 20107, 20108, 20261,
                                             20269, 20423, 20833, 20880, 20905, 20924};
  std::vector<unsigned int> empty;
  for (const unsigned int page : NumbersOf(CodePageInfo(CodePageInfo::CPIOrderByNumber))) {
    std::wstring changed;
    const int count = CharactersThatComeBack(page, changed);
    if (count == 0) {
      empty.push_back(page);
      continue;
    }
    EXPECT_GE(count, page == 20127 ? 127 : 150) << page;
    // Variants that the makers of tables keep in the private area; of the Indic pages a sign of
    // Gurmukhi and the joiner, which they spell as another mark.
    EXPECT_EQ(changed.find_first_not_of(L"\u0A70\u200D\uF86F\uF8A0"), std::wstring::npos) << page;
  }
  EXPECT_EQ(empty, without);
}

}  // namespace
}  // namespace vlm
