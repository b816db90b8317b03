#include <velum/diagnostics/MapMode.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <utility>

namespace vlm {

static bool operator==(const POINT& a, const POINT& b) { return a.x == b.x && a.y == b.y; }
static bool operator==(const SIZE& a, const SIZE& b) { return a.cx == b.cx && a.cy == b.cy; }

namespace {

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

SIZE WindowExt(const GMapMode& mapping) {
  SIZE extent{};
  EXPECT_TRUE(mapping.GetWindowExtEx(&extent));
  return extent;
}

SIZE ViewportExt(const GMapMode& mapping) {
  SIZE extent{};
  EXPECT_TRUE(mapping.GetViewportExtEx(&extent));
  return extent;
}

TEST(GMapMode, ModesSetTheExtents) {
  const struct {
    const char* why;
    bool roundExtents;
    int mode, widthMM, heightMM, widthPixels, heightPixels;
    SIZE window, viewport;
  } rows[] = {
      {"a unit is a pixel", false, MM_TEXT, 320, 240, 1024, 768, {1, 1}, {1, 1}},
      {"tenths of a millimetre", false, 2, 320, 240, 1024, 768, {3200, 2400}, {1024, -768}},
      {"hundredths", false, 3, 320, 240, 1024, 768, {32000, 24000}, {1024, -768}},
      {"254 mm are 10 inches", false, 4, 254, 254, 1000, 1000, {1000, 1000}, {1000, -1000}},
      {"thousandths of an inch", false, 5, 254, 127, 9, 8, {10000, 5000}, {9, -8}},
      {"1440 to an inch", false, 6, 254, 127, 9, 8, {14400, 7200}, {9, -8}},
      {"x is the longer one", false, 7, 100, 100, 1000, 500, {1000, 1000}, {500, -500}},
      {"y is the longer one", false, 7, 100, 100, 500, 1000, {1000, 1000}, {500, -500}},
      {"what is kept stays", false, 8, 100, 100, 1000, 500, {1, 1}, {1, 1}},
      {"no mode", false, 99, 100, 100, 1000, 500, {1, 1}, {1, 1}},
      {"rounded where it is adjusted", true, 7, 3, 7, 10, 10, {30, 70}, {4, -10}},
      {"a display without a size", false, 2, 0, 0, 0, 0, {0, 0}, {0, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    GMapMode mapping(row.roundExtents);
    EXPECT_EQ(
        mapping.SetMapMode(row.mode, row.widthMM, row.heightMM, row.widthPixels, row.heightPixels),
        MM_TEXT);
    EXPECT_EQ(mapping.GetMapMode(), row.mode);
    EXPECT_TRUE(WindowExt(mapping) == row.window)
        << WindowExt(mapping).cx << ", " << WindowExt(mapping).cy;
    EXPECT_TRUE(ViewportExt(mapping) == row.viewport)
        << ViewportExt(mapping).cx << ", " << ViewportExt(mapping).cy;
  }
}

TEST(GMapMode, PointsGoToTheDeviceAndBack) {
  const struct {
    const char* why;
    int mode;
    POINT windowOrg, viewportOrg;
    SIZE windowExt, viewportExt;
    POINT logical, device;
  } rows[] = {
      {"a new mapping", 1, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {-7, 12}, {-7, 12}},
      {"origins move in any mode", 1, {10, 20}, {5, -5}, {0, 0}, {0, 0}, {11, 22}, {6, -3}},
      {"a fixed mode keeps its extents",
       2,
       {0, 0},
       {0, 0},
       {7, 7},
       {7, 7},
       {3200, 2400},
       {1024, -768}},
      {"extents of one's own", 8, {0, 0}, {0, 0}, {2, 4}, {6, -12}, {5, 5}, {15, -15}},
      {"the same unit in both", 7, {0, 0}, {0, 0}, {10, 10}, {30, 20}, {5, 5}, {10, 10}},
      {"a sign survives the adjusting", 7, {0, 0}, {0, 0}, {10, 10}, {-30, 20}, {5, 5}, {-10, 10}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    GMapMode mapping;
    mapping.SetMapMode(row.mode, 320, 240, 1024, 768);
    EXPECT_TRUE(mapping.SetWindowOrgEx(row.windowOrg.x, row.windowOrg.y, nullptr));
    EXPECT_TRUE(mapping.SetViewportOrgEx(row.viewportOrg.x, row.viewportOrg.y, nullptr));
    EXPECT_TRUE(mapping.SetWindowExtEx(row.windowExt.cx, row.windowExt.cy, nullptr));
    EXPECT_TRUE(mapping.SetViewportExtEx(row.viewportExt.cx, row.viewportExt.cy, nullptr));
    POINT point = row.logical;
    EXPECT_TRUE(mapping.LPtoDP(&point, 1));
    EXPECT_TRUE(point == row.device) << point.x << ", " << point.y;
    EXPECT_TRUE(mapping.DPtoLP(&point, 1));
    EXPECT_TRUE(point == row.logical) << point.x << ", " << point.y;
    EXPECT_TRUE(mapping.LPtoDP(&point, 0) && mapping.DPtoLP(&point, -1));
    EXPECT_TRUE(point == row.logical) << "no point was given";
  }
}

TEST(GMapMode, ResultsAreRoundedAwayFromZeroAndStayInRange) {
  const struct {
    const char* why;
    SIZE window, viewport;
    std::int32_t from, to;
  } rows[] = {
      {"a half goes up", {2, 2}, {1, 1}, 1, 1},
      {"a half goes down below zero", {2, 2}, {1, 1}, -1, -1},
      {"less than a half", {3, 3}, {1, 1}, -1, 0},
      {"too large", {1, 1}, {1000, 1000}, kMost, kMost},
      {"too small", {1, 1}, {1000, 1000}, kMost * -1, kLeast},
      {"nowhere", {0, 0}, {1, 1}, 0, 0},
      {"divided by nothing", {0, 0}, {1, 1}, -5, kLeast},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    GMapMode mapping;
    mapping.SetMapMode(MM_ANISOTROPIC, 0, 0, 0, 0);
    mapping.SetWindowExtEx(row.window.cx, row.window.cy, nullptr);
    mapping.SetViewportExtEx(row.viewport.cx, row.viewport.cy, nullptr);
    POINT points[] = {{0, 0}, {row.from, row.from}};
    mapping.LPtoDP(points, 2);
    EXPECT_EQ(points[1].x, row.to);
    EXPECT_EQ(points[1].y, row.to);
  }
}

TEST(GMapMode, OldValuesAreGivenRoundedAndNullIsRefused) {
  GMapMode mapping;
  mapping.SetMapMode(MM_HIENGLISH, 100, 50, 640, 480);
  SIZE extent{};
  EXPECT_TRUE(mapping.SetWindowExtEx(5, 6, &extent));
  EXPECT_TRUE((extent == SIZE{3937, 1969}));
  EXPECT_TRUE((WindowExt(mapping) == SIZE{3937, 1969})) << "the mode has its own";
  EXPECT_TRUE(mapping.SetViewportExtEx(5, 6, &extent));
  EXPECT_TRUE((extent == SIZE{640, -480}));
  POINT origin{};
  mapping.SetWindowOrgEx(3, 4, nullptr);
  mapping.SetViewportOrgEx(5, 6, nullptr);
  EXPECT_TRUE(mapping.SetWindowOrgEx(0, 0, &origin));
  EXPECT_TRUE((origin == POINT{3, 4}));
  EXPECT_TRUE(mapping.SetViewportOrgEx(0, 0, &origin));
  EXPECT_TRUE((origin == POINT{5, 6}));
  EXPECT_EQ(mapping.SetMapMode(99, 1, 1, 1, 1), MM_HIENGLISH);
  EXPECT_TRUE(mapping.SetWindowExtEx(5, 6, nullptr));
  EXPECT_TRUE((WindowExt(mapping) == SIZE{3937, 1969})) << "no mode takes extents but 7 and 8";
  EXPECT_FALSE(mapping.GetWindowOrgEx(nullptr) || mapping.GetViewportOrgEx(nullptr) ||
               mapping.GetWindowExtEx(nullptr) || mapping.GetViewportExtEx(nullptr));
}

// 100 mm are 3937.007874 units: only a rounded extent brings (3937, 0) to a whole number of pixels.
TEST(GMapMode, RoundedExtentsAreWhole) {
  for (const auto& [rounds, expected] : {std::pair(true, 1'000'000), std::pair(false, 999'998)}) {
    GMapMode mapping(rounds);
    mapping.SetMapMode(MM_HIENGLISH, 100, 100, 1'000'000, 1'000'000);
    POINT point{3937, 0};
    mapping.LPtoDP(&point, 1);
    EXPECT_EQ(point.x, expected);
  }
}

}  // namespace
}  // namespace vlm
