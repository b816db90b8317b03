#pragma once

/// \file
/// Names that are not in use yet, made by numbers.
///
///     vlm::UniqueNameGenerator names;
///     names.Get("Fig", true);   // Fig
///     names.Get("Fig", true);   // Fig_2
///     names.Get("Fig_9", true); // Fig_10

#include <velum/core/Api.h>
#include <velum/core/Flyweight.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace vlm {

/// Remembers the highest number handed out for each stem, and numbers names that come again. A
/// plain value.
///
/// A name that ends in "_" and digits is a stem with a number. Digits that no `unsigned int` holds
/// are a part of the stem. Names that are nothing but "_" and digits are stems of their own, of
/// which the number does not grow: of these, `Get` may give one twice.
class VELUM_API UniqueNameGenerator {
 public:
  /// Knows no name.
  UniqueNameGenerator();
  /// Copies all names.
  UniqueNameGenerator(const UniqueNameGenerator&);
  ~UniqueNameGenerator();

  /// True if `name` itself is a known stem.
  [[nodiscard]] bool Has(const std::string& name) const;
  /// The number of stems.
  [[nodiscard]] std::size_t size() const noexcept;

  /// Notes that `name` is in use. What `Get` gives for its stem is numbered beyond it.
  ///
  /// *Errors*: `StandardError` "Invalid flyweight argument." for a name of "_" and zeros that is a
  /// stem already, and when the numbers of a stem are used up.
  void Add(const std::string& name);
  /// Gives `name` as long as its stem is unknown, then the stem with the next number. With `add`
  /// the result is in use from then on.
  ///
  /// *Errors*: `StandardError` "Invalid flyweight argument." when the numbers of a stem are used
  /// up.
  std::string Get(const std::string& name, bool add);
  /// Forgets all names.
  void Clear() noexcept;

  /// Copies all names.
  UniqueNameGenerator& operator=(const UniqueNameGenerator&);

 private:
  std::pair<std::string, unsigned int> StripName(const std::string& name) const;
  std::pair<std::string, unsigned int> KeyOf(const std::string& name) const;

  Flyweight<std::string, unsigned int, std::less<std::string>> numbers_;
};

}  // namespace vlm
