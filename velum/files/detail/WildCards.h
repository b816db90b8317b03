#pragma once

/// \file
/// Names with wild cards, as the search for files takes them.
///
///     const vlm::detail::WildCards mask("Well*.*");
///     const bool found = mask.Match("well7");  // true: `.*` goes without an extension, too

#include <string_view>
#include <vector>

namespace vlm::detail {

/// A name with wild cards. ASCII letters are folded.
///
/// - `*`: any bytes.
/// - `?`: one byte; none before a point or at the end of the name.
/// - A point with a wild card behind it: a point, or the end of the name.
/// - `*.` at the end: any bytes but a point. Any other point at the end stands for nothing.
class WildCards {
 public:
  explicit WildCards(std::string_view mask);

  /// True if the whole of `name` matches.
  ///
  /// *Cost*: the product of both lengths.
  [[nodiscard]] bool Match(std::string_view name) const;

 private:
  enum class Kind { Byte, Any, AnyButPoint, OneOrEnd, PointOrEnd };
  struct Step {
    Kind kind;
    char byte;
  };

  std::vector<Step> steps_;
};

}  // namespace vlm::detail
