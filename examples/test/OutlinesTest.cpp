#include <examples/overlay/Outlines.h>

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace vlm::overlay {
namespace {

TEST(Outlines, ContoursBelongToTheOutlineBeforeThem) {
  std::istringstream file(
      "# A comment\n\noutline Two islands\ncontour 3\n0 0\n 4.5 0\r\n0 -2e1 \ncontour 4\n"
      "9 9\n8 9\n8 8\n9 9\noutline Nothing\n");
  const std::vector<Outline> outlines = ReadOutlines(file);
  ASSERT_EQ(outlines.size(), 2u);
  EXPECT_EQ(outlines[0].name, "Two islands");
  ASSERT_EQ(outlines[0].shape.GetNumContours(), 2u);
  EXPECT_EQ(outlines[0].shape.GetContourVertexCount(0), 3u);
  EXPECT_EQ(outlines[0].shape.GetContourVertexCount(1), 3u) << "the first one is repeated";
  EXPECT_EQ(outlines[0].shape.GetBBox(), Box2d(0, -20, 9, 9));
  EXPECT_EQ(outlines[1].name, "Nothing");
  EXPECT_EQ(outlines[1].shape.GetNumContours(), 0u);
}

TEST(Outlines, WhatIsWrongIsToldWithItsLine) {
  const struct {
    const char* text;
    const char* message;
  } rows[] = {
      {"contour 1\n1 1\n", "line 1: neither \"outline NAME\" nor a contour of one"},
      {"outline a\ncontour x\n", "line 2: \"contour\" is followed by the number of its points"},
      {"outline a\ncontour -1\n", "line 2: \"contour\" is followed by the number of its points"},
      {"outline a\ncontour 2\n1 1\n", "line 3: the file ends inside a contour"},
      {"outline a\ncontour 4000000000\n1 1\n", "line 3: the file ends inside a contour"},
      {"outline a\ncontour 1\n1 1 1\n", "line 3: a point is two numbers"},
      {"outline a\ncontour 1\n1 nan\n", "line 3: a point is two numbers"},
      {"outline a\ncontour 1\n1,5 2\n", "line 3: a point is two numbers"},
  };
  for (const auto& row : rows) {
    std::istringstream file(row.text);
    try {
      static_cast<void>(ReadOutlines(file));
      ADD_FAILURE() << row.text << " was read";
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), row.message);
    }
  }
}

}  // namespace
}  // namespace vlm::overlay
