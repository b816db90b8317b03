#pragma once

/// \file
/// A table of values by key, with one value that stands for all keys that are not in it.
///
///     vlm::Flyweight<std::string, unsigned> counts;
///     counts.Store("Fig", 2, true);
///     const unsigned none = counts.Get("Table");  // 0

#include <velum/core/StandardErrors.h>

#include <cstddef>
#include <functional>
#include <map>
#include <utility>

namespace vlm {

/// A map from keys to values other than the default value. A plain value; distinct tables are
/// independent.
template <class Key, class Value, class Compare = std::less<Key>>
class Flyweight {
 public:
  /// An empty table in which `defaultValue` stands for every key.
  explicit Flyweight(Value defaultValue = Value()) : default_(std::move(defaultValue)) {}

  /// True if `key` is in the table.
  [[nodiscard]] bool Has(const Key& key) const { return values_.find(key) != values_.end(); }
  /// The value of `key`, or the default value.
  ///
  /// *Lifetime*: until the table is changed.
  [[nodiscard]] const Value& Get(const Key& key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? default_ : found->second;
  }
  /// The number of keys.
  [[nodiscard]] std::size_t size() const noexcept { return values_.size(); }

  /// Enters `value` under `key`; gives false, and changes nothing, if the key is in the table and
  /// `replace` is not set.
  ///
  /// *Errors*: `StandardError` "Invalid flyweight argument." for the default value. The table is as
  /// it was when this throws.
  bool Store(const Key& key, const Value& value, bool replace) {
    if (value == default_) throw StandardError("Invalid flyweight argument.");
    const auto [place, isNew] = values_.try_emplace(key, value);
    if (!isNew && replace) place->second = value;
    return isNew || replace;
  }
  /// Removes all keys.
  void Clear() noexcept { values_.clear(); }

 private:
  Value default_;
  std::map<Key, Value, Compare> values_;
};

}  // namespace vlm
