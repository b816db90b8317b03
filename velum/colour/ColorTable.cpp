#include <velum/colour/ColorTable.h>

#include <velum/colour/detail/ColorFile.h>
#include <velum/core/StringCompare.h>

#include <algorithm>
#include <cstdint>

namespace vlm {

namespace {

template <class Matches>
bool IndexOfFirst(const CColorTable& table, Matches matches, unsigned int& index) noexcept {
  const auto found = std::find_if(table.begin(), table.end(), matches);
  if (found == table.end()) return false;
  index = static_cast<unsigned int>(found - table.begin());
  return true;
}

}  // namespace

template class Singleton<CColorTable>;

CColorTable::CColorTable() : entries_(detail::ReadColorFile("Colors.ini")) {}

CColorTable::~CColorTable() = default;

bool CColorTable::IndexFromColor(unsigned long color, unsigned int& index) const noexcept {
  const auto word = static_cast<std::uint32_t>(color);
  return IndexOfFirst(
      *this, [word](const CColorTableEntry& entry) { return entry.Color() == word; }, index);
}

bool CColorTable::IndexFromColor(const GString& name, unsigned int& index) const noexcept {
  return IndexOfFirst(
      *this,
      [&name](const CColorTableEntry& entry) {
        return entry.Name().size() == name.size() &&
               detail::CompareFolded(entry.Name().c_str(), name.c_str()) == 0;
      },
      index);
}

}  // namespace vlm
