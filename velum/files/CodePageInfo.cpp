#include <velum/files/CodePageInfo.h>

#include <velum/core/Exception.h>
#include <velum/core/StringCompare.h>
#include <velum/files/detail/CodePageTable.h>

#include <algorithm>
#include <iterator>

namespace vlm {

namespace {

struct LanguageRow {
  unsigned char id;
  int page;
};

// Ascending by identifier.
constexpr LanguageRow kLanguages[] = {
    {0x01, 437},   {0x02, 850},   {0x03, 1252}, {0x04, 10000}, {0x64, 852},  {0x65, 865},
    {0x66, 866},   {0x67, 861},   {0x69, 852},  {0x6A, 737},   {0x6B, 857},  {0x96, 10007},
    {0x97, 10029}, {0x98, 10006}, {0xC8, 1250}, {0xC9, 1251},  {0xCA, 1254}, {0xCB, 1253},
};

using Entry = std::pair<unsigned int, GString>;

/// Finds the first entry that is wanted; false and index 0 if none is.
template <class Wanted>
bool FindIndex(const std::vector<Entry>& entries, Wanted wanted, unsigned int& index) {
  const auto found = std::find_if(entries.begin(), entries.end(), wanted);
  const bool isThere = found != entries.end();
  index = isThere ? static_cast<unsigned int>(found - entries.begin()) : 0;
  return isThere;
}

}  // namespace

CodePageInfo::CodePageInfo() : CodePageInfo(CPIOrderCommonFirst) {}

CodePageInfo::CodePageInfo(CPIOrder order) {
  InitInternalList();
  SetOrder(order);
}

CodePageInfo::CodePageInfo(const CodePageInfo& other) = default;
CodePageInfo& CodePageInfo::operator=(const CodePageInfo& other) = default;
CodePageInfo::~CodePageInfo() = default;

unsigned int CodePageInfo::GetCount() const noexcept {
  return static_cast<unsigned int>(entries_.size());
}

GString CodePageInfo::GetNameByIndex(unsigned int index) const {
  if (index >= GetCount()) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
  return entries_[index].second;
}

unsigned int CodePageInfo::GetPageNumberByIndex(unsigned int index) const {
  if (index >= GetCount()) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
  return entries_[index].first;
}

bool CodePageInfo::GetIndexFromPageNumber(unsigned int page, unsigned int& index) const {
  constexpr unsigned int kLargestPage = 65535;
  if (page > kLargestPage) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
  return FindIndex(
      entries_, [page](const Entry& entry) { return entry.first == page; }, index);
}

bool CodePageInfo::GetIndexFromName(const GString& name, unsigned int& index) const {
  return FindIndex(
      entries_,
      [&name](const Entry& entry) {
        return StringEquivalent()(entry.second.String(), name.String());
      },
      index);
}

void CodePageInfo::SetOrder(CPIOrder order) {
  switch (order) {
    case CPIOrderByNumber:
      SortListByNumber();
      return;
    case CPIOrderByName:
      SortListByName();
      return;
    case CPIOrderCommonFirst:
      SortListByName();
      for (const unsigned int page : {65001u, 1u, 0u}) MoveCodePageToListTop(page);
      return;
  }
  ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
}

void CodePageInfo::InitInternalList() {
  entries_.clear();
  entries_.reserve(std::size(detail::kCodePages));
  for (const auto& [page, name] : detail::kCodePages) entries_.emplace_back(page, name);
}

void CodePageInfo::SortListByNumber() {
  std::sort(entries_.begin(), entries_.end(),
            [](const Entry& a, const Entry& b) { return a.first < b.first; });
}

void CodePageInfo::SortListByName() {
  std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
    return StringLess()(a.second.String(), b.second.String());
  });
}

void CodePageInfo::MoveCodePageToListTop(unsigned int page) {
  unsigned int index = 0;
  if (!GetIndexFromPageNumber(page, index)) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  }
  const auto found = entries_.begin() + index;
  std::rotate(entries_.begin(), found, found + 1);
}

unsigned char MapCodePageToDBFLangID(int page) noexcept {
  for (const LanguageRow& row : kLanguages) {
    if (row.page == page) return row.id;
  }
  return 0;
}

int MapDBFLangIDtoCodePage(unsigned char id) noexcept {
  for (const LanguageRow& row : kLanguages) {
    if (row.id == id) return row.page;
  }
  return 0;
}

}  // namespace vlm
