#pragma once

/// \file
/// The key of a command and the options that it is to be set up with.
///
///     vlm::CommandOptions add("Add");
///     add.options.emplace_back("shape", "circle");
///     const auto command = vlm::CommandFactory::Construct(add.key);
///     for (const auto& [name, value] : add) command->Option(name, value);

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <cstddef>
#include <list>
#include <utility>

namespace vlm {

/// A command as data: a plain value. The container operations work on the options alone.
struct VELUM_API CommandOptions {
  using Options = std::list<std::pair<GString, GString>>;          ///< Names and values.
  using value_type = Options::value_type;                          ///< One name and its value.
  using iterator = Options::iterator;                              ///< Walks and changes.
  using const_iterator = Options::const_iterator;                  ///< Walks.
  using reverse_iterator = Options::reverse_iterator;              ///< Walks backwards.
  using const_reverse_iterator = Options::const_reverse_iterator;  ///< Walks backwards.

  /// A command without options.
  ///
  /// *Errors*: `Exception` "Command key must be non-empty." of code 0.
  explicit CommandOptions(const GString& commandKey);

  /// True if there is no option.
  [[nodiscard]] bool empty() const noexcept { return options.empty(); }
  /// The number of options.
  [[nodiscard]] std::size_t size() const noexcept { return options.size(); }

  /// The first option.
  [[nodiscard]] iterator begin() noexcept { return options.begin(); }
  /// The first option.
  [[nodiscard]] const_iterator begin() const noexcept { return options.begin(); }
  /// The first option.
  [[nodiscard]] const_iterator cbegin() const noexcept { return options.begin(); }
  /// Behind the last option.
  [[nodiscard]] iterator end() noexcept { return options.end(); }
  /// Behind the last option.
  [[nodiscard]] const_iterator end() const noexcept { return options.end(); }
  /// Behind the last option.
  [[nodiscard]] const_iterator cend() const noexcept { return options.end(); }
  /// The last option, for a walk backwards.
  [[nodiscard]] reverse_iterator rbegin() noexcept { return options.rbegin(); }
  /// The last option, for a walk backwards.
  [[nodiscard]] const_reverse_iterator rbegin() const noexcept { return options.rbegin(); }
  /// The end of a walk backwards.
  [[nodiscard]] reverse_iterator rend() noexcept { return options.rend(); }
  /// The end of a walk backwards.
  [[nodiscard]] const_reverse_iterator rend() const noexcept { return options.rend(); }

  /// Removes all options; the key stays.
  void clear() noexcept { options.clear(); }

  GString key;      ///< The key, for `CommandFactory`.
  Options options;  ///< The options, in the order in which they were added.
};

}  // namespace vlm
