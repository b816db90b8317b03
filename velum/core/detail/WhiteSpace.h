#pragma once

/// \file
/// White space as the global `std::locale` knows it.
///
///     const vlm::detail::WhiteSpace<char> space;
///     const bool blank = space(' ');

#include <locale>

namespace vlm::detail {

/// Tells white space from other characters, by the global locale of the moment it is made.
template <class Char>
class WhiteSpace {
 public:
  /// True for white space.
  bool operator()(Char c) const { return facet_.is(std::ctype_base::space, c); }

 private:
  std::locale locale_;
  const std::ctype<Char>& facet_ = std::use_facet<std::ctype<Char>>(locale_);
};

}  // namespace vlm::detail
