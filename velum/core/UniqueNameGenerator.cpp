#include <velum/core/UniqueNameGenerator.h>

#include <algorithm>
#include <charconv>
#include <system_error>

namespace vlm {

namespace {

/// Where the "_" of a "_123" at the end of `name` stands, of which `number` gets the value; `npos`
/// if there is none or no `unsigned int` holds it.
std::size_t FindSuffix(const std::string& name, unsigned int& number) {
  const std::size_t mark = name.find_last_not_of("0123456789");
  if (mark == std::string::npos || name[mark] != '_' || mark + 1 == name.size()) {
    return std::string::npos;
  }
  const char* const digits = name.data() + mark + 1;
  const auto read = std::from_chars(digits, name.data() + name.size(), number);
  return read.ec == std::errc() ? mark : std::string::npos;
}

}  // namespace

UniqueNameGenerator::UniqueNameGenerator() = default;
UniqueNameGenerator::UniqueNameGenerator(const UniqueNameGenerator&) = default;
UniqueNameGenerator::~UniqueNameGenerator() = default;
UniqueNameGenerator& UniqueNameGenerator::operator=(const UniqueNameGenerator&) = default;

bool UniqueNameGenerator::Has(const std::string& name) const { return numbers_.Has(name); }

std::size_t UniqueNameGenerator::size() const noexcept { return numbers_.size(); }

void UniqueNameGenerator::Add(const std::string& name) {
  const auto [key, next] = KeyOf(name);
  numbers_.Store(key, numbers_.Has(key) ? next - 1 : 1, true);
}

std::string UniqueNameGenerator::Get(const std::string& name, bool add) {
  const auto [key, next] = KeyOf(name);
  if (!numbers_.Has(key)) {
    if (add) Add(name);
    return name;
  }
  // The next number is 0 when all are used up, which the table refuses.
  if (add || next == 0) numbers_.Store(key, next, true);
  return key + "_" + std::to_string(next);
}

void UniqueNameGenerator::Clear() noexcept { numbers_.Clear(); }

std::pair<std::string, unsigned int> UniqueNameGenerator::StripName(const std::string& name) const {
  unsigned int number = 0;
  const std::size_t suffix = FindSuffix(name, number);
  if (suffix == std::string::npos && !numbers_.Has(name)) return {name, 0};
  std::string stem = suffix == std::string::npos ? name : name.substr(0, suffix);
  const unsigned int highest = std::max(number, numbers_.Get(stem));
  return {std::move(stem), highest + 1};
}

std::pair<std::string, unsigned int> UniqueNameGenerator::KeyOf(const std::string& name) const {
  auto key = StripName(name);
  if (key.first.empty()) key.first = name;
  return key;
}

}  // namespace vlm
