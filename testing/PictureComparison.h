#pragma once

/// \file
/// Compares a picture with a stored one and says where and how far the two differ.
///
/// Pictures are PNG files. A stored picture is remade only when the environment variable
/// VELUM_REMAKE_PICTURES is set to 1; the test that remakes it fails, so that a run that remakes
/// can't be taken for a run that compares.
///
///     TEST(Sheet, LooksAsItDid) {
///       DrawSheet("sheet.png");
///       EXPECT_TRUE(vlm::testing::MatchesStoredPicture("sheet.png", kTestData + "/sheet.png"));
///     }

#include <gtest/gtest.h>

#include <cstddef>
#include <iosfwd>
#include <string>

namespace vlm::testing {

/// How far a picture may lie from the stored one and still be taken for the same.
struct PictureTolerance {
  int channel = 0;         ///< a pixel agrees if none of its four bytes differs by more than this
  std::size_t pixels = 0;  ///< so many pixels may disagree
};

/// Where and how far two pictures differ. A plain value.
///
/// Pixels are counted from the top left corner; those that agree within the tolerance are left out
/// of `count` and of the rectangle, but not of `largest`.
struct PictureDifference {
  int width = 0;          ///< of the first picture, in pixels
  int height = 0;         ///< of the first picture
  int otherWidth = 0;     ///< of the second picture
  int otherHeight = 0;    ///< of the second picture
  std::size_t count = 0;  ///< pixels that disagree; 0 if the sizes differ
  int left = 0;           ///< the rectangle around the pixels that disagree
  int top = 0;            ///< its first row
  int right = 0;          ///< one past its last column
  int bottom = 0;         ///< one past its last row
  int largest = 0;        ///< the largest difference of one byte, 0 to 255

  /// Tells whether the two pictures have one size.
  [[nodiscard]] bool SameSize() const { return width == otherWidth && height == otherHeight; }
};

/// Compares two PNG files pixel by pixel, as 32-bit ARGB with the colours multiplied by alpha.
/// Pixels agree of which no byte differs by more than `channel`.
///
/// *Errors*: `std::runtime_error` with the path if a file can't be read as PNG.
[[nodiscard]] PictureDifference ComparePictures(const std::string& path,
                                                const std::string& otherPath, int channel = 0);

/// Writes a difference in words: "12 of 4800 pixels differ, ... in columns 3 to 9, rows 0 to 4".
std::ostream& operator<<(std::ostream& stream, const PictureDifference& difference);

/// Holds a picture against the stored one; for `EXPECT_TRUE`.
///
/// - Equal within the tolerance: success.
/// - Different, or no stored picture: a failure that says what differs and names both files.
/// - VELUM_REMAKE_PICTURES is 1: the stored picture is replaced, and the failure says so.
[[nodiscard]] ::testing::AssertionResult MatchesStoredPicture(
    const std::string& path, const std::string& storedPath, const PictureTolerance& tolerance = {});

}  // namespace vlm::testing
