#pragma once

/// \file
/// Which ends of a line have an arrowhead.
///
///     vlm::sketchbook::Arrow arrow = vlm::sketchbook::Arrow::End;

namespace vlm::sketchbook {

/// Which ends of a line have an arrowhead. The numbers are stored.
enum class Arrow : int {
  None = 0,  ///< Neither.
  End = 1,   ///< The last point.
  Both = 2,  ///< The first and the last point.
};

/// Tells whether an arrow that was read is one of these.
[[nodiscard]] constexpr bool IsArrow(Arrow arrow) {
  return arrow >= Arrow::None && arrow <= Arrow::Both;
}

}  // namespace vlm::sketchbook
