#include <examples/describe/Selection.h>

#include <examples/common/Shown.h>
#include <examples/describe/Values.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>

namespace vlm::describe {
namespace {

using examples::Shown;

using Names = std::vector<std::string>;

std::optional<std::size_t> FindName(std::string_view name, const Names& names) {
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) return std::nullopt;
  const auto another = std::find(found + 1, names.end(), name);
  if (another != names.end()) {
    throw std::runtime_error("columns " + std::to_string(found - names.begin() + 1) + " and " +
                             std::to_string(another - names.begin() + 1) + " are both named '" +
                             Shown(name) + "': tell the number");
  }
  return static_cast<std::size_t>(found - names.begin());
}

std::optional<std::size_t> FindNumber(std::string_view text, const Names& names) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (number == 0 || number > names.size()) return std::nullopt;
  return number - 1;
}

[[noreturn]] void ThrowUnknown(std::string_view column, const Names& names) {
  constexpr std::size_t kTold = 12;
  std::string there;
  for (std::size_t i = 0; i < std::min(names.size(), kTold); ++i) {
    there += (i == 0 ? "" : ", ") + Shown(names[i]);
  }
  if (names.size() > kTold) there += ", ...";
  throw std::runtime_error("there is no column '" + Shown(column) + "' among the " +
                           std::to_string(names.size()) + ": " + there);
}

}  // namespace

std::vector<std::size_t> SelectColumns(std::string_view list, const Names& names) {
  if (const auto whole = FindName(list, names)) return {*whole};
  std::vector<std::size_t> places;
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(',', begin), list.size());
    const std::string_view column = Trimmed(list.substr(begin, end - begin));
    std::optional<std::size_t> place = FindName(column, names);
    if (!place) place = FindNumber(column, names);
    if (!place) ThrowUnknown(column, names);
    places.push_back(*place);
    begin = end + 1;
  }
  return places;
}

}  // namespace vlm::describe
