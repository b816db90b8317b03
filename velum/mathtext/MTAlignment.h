#pragma once

/// \file
/// The two anchors of a piece of text: where it stands relative to the point that it is placed at.
///
/// The numbers are those of the text attributes of TextIF.h, so a value passes there as it is:
///
///     textIF.SetHorizAlignment(vlm::HALIGN_CENTER);
///     textIF.SetVertAlignment(vlm::VALIGN_BOTTOM);

namespace vlm {

/// The side of a text that lies on the point in x.
enum HAlignment : unsigned int {
  HALIGN_LEFT = 0,    ///< the left end of the baseline
  HALIGN_CENTER = 1,  ///< the middle of the box
  HALIGN_RIGHT = 2    ///< the right side of the box
};

/// The side of a text that lies on the point in y.
enum VAlignment : unsigned int {
  VALIGN_TOP = 0,       ///< the top of the box
  VALIGN_BASELINE = 1,  ///< the baseline
  VALIGN_BOTTOM = 2,    ///< the bottom of the box
  VALIGN_CENTER = 3     ///< the middle of the box
};

}  // namespace vlm
