#pragma once

/// \file
/// Options of a command, set as text and read as what they mean.
///
///     using vlm::sketchbook::OptionKind;
///     constexpr vlm::sketchbook::OptionRow kMove[] = {{"name", OptionKind::Name},
///                                                     {"dx", OptionKind::Number}};
///     vlm::sketchbook::OptionValues options(kMove);
///     options.Set("dx", "20");              // true
///     options.Set("dx", "far");             // false: no number
///     double dx = options.Number("dx", 0);  // 20

#include <velum/colour/Color4b.h>
#include <velum/core/GString.h>
#include <velum/geometry/Vec2.h>
#include <examples/sketchbook/Arrow.h>

#include <list>
#include <span>
#include <utility>
#include <vector>

namespace vlm::sketchbook {

/// What an option's text must be.
enum class OptionKind {
  Text,       ///< Anything but nothing.
  Name,       ///< The name of a shape or style.
  Number,     ///< A number of at most 10000, in either direction.
  Color,      ///< What ReadColor reads.
  Flag,       ///< A truth value.
  Points,     ///< Numbers in pairs: "0,0 10,5".
  Arrow,      ///< "none", "end" or "both".
  Alignment,  ///< "left", "center" or "right".
};

/// One option that a command takes. The key is in small letters.
struct OptionRow {
  const char* key;  ///< the name
  OptionKind kind;  ///< the kind of its values
};

/// All options that a command takes; a constant.
using OptionTable = std::span<const OptionRow>;

/// The options that were set, by their keys. A value; every text in it is well-formed.
///
/// A function that reads an option gives what was set, or else its second argument.
class OptionValues {
 public:
  /// Nothing is set; these may be. *Lifetime*: keeps the table's place.
  explicit OptionValues(const OptionTable& table) : table_(table) {}

  /// True if the option is set.
  [[nodiscard]] bool Has(const GString& key) const { return Find(key) != nullptr; }
  /// All that are set, in the order in which they came first.
  [[nodiscard]] const std::list<std::pair<GString, GString>>& All() const { return values_; }
  /// The text itself.
  [[nodiscard]] GString Text(const GString& key, const GString& otherwise = "") const;
  /// A number.
  [[nodiscard]] double Number(const GString& key, double otherwise) const;
  /// A colour.
  [[nodiscard]] Color4b Color(const GString& key, const Color4b& otherwise) const;
  /// A truth value; false if it is not set.
  [[nodiscard]] bool Flag(const GString& key) const;
  /// Points; none if they are not set.
  [[nodiscard]] std::vector<Vec2d> Points(const GString& key) const;
  /// Arrowheads; none if they are not set.
  [[nodiscard]] sketchbook::Arrow Arrow(const GString& key) const;
  /// 1, 2 or 3 for left, center and right.
  [[nodiscard]] unsigned int Alignment(const GString& key, unsigned int otherwise) const;

  /// Sets an option. False, and nothing is changed, if the table has no such key or the text is
  /// nothing of its kind.
  bool Set(const GString& key, const GString& value);

 private:
  const GString* Find(const GString& key) const;

  OptionTable table_;
  std::list<std::pair<GString, GString>> values_;
};

}  // namespace vlm::sketchbook
