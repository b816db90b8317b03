#include <velum/diagnostics/DrawingContext.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/EMFRefDC.h>
#include <velum/diagnostics/GdiPlus.h>
#include <velum/diagnostics/GdiPlusUtil.h>
#include <velum/diagnostics/GdiUtil.h>
#include <velum/diagnostics/MemDC.h>
#include <velum/diagnostics/XPTheme.h>
#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Vec2.h>

#include <cairo-svg.h>
#include <cairo.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace vlm {

static bool operator==(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

namespace {

using ::testing::ElementsAre;

/// A picture with a drawing context on it.
class Sheet {
 public:
  Sheet(int width, int height, std::uint32_t argb = 0xFFFFFFFF) : bitmap_(width, height) {
    const Gdiplus::SolidBrush brush{Gdiplus::Color(argb)};
    graphics_.emplace_back(std::make_unique<Gdiplus::Graphics>(&bitmap_));
    graphics_[0]->FillRectangle(&brush, 0, 0, width, height);
    context = graphics_[0]->GetHDC();
  }
  ~Sheet() { graphics_[0]->ReleaseHDC(context); }

  std::vector<std::uint32_t> Pixels() {
    Gdiplus::BitmapData data;
    bitmap_.LockBits(nullptr, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppPARGB, &data);
    std::vector<std::uint32_t> pixels(std::size_t{data.Width} * data.Height);
    for (std::size_t y = 0; y < data.Height; ++y) {
      std::memcpy(&pixels[y * data.Width],
                  static_cast<char*>(data.Scan0) + y * static_cast<unsigned>(data.Stride),
                  4 * data.Width);
    }
    bitmap_.UnlockBits(&data);
    return pixels;
  }
  void Fill(const std::vector<std::uint32_t>& pixels) {
    Gdiplus::BitmapData data;
    bitmap_.LockBits(nullptr, Gdiplus::ImageLockModeWrite, Gdiplus::PixelFormat32bppPARGB, &data);
    for (std::size_t y = 0; y < data.Height; ++y) {
      std::memcpy(static_cast<char*>(data.Scan0) + y * static_cast<unsigned>(data.Stride),
                  &pixels[y * data.Width], 4 * data.Width);
    }
    bitmap_.UnlockBits(&data);
  }
  /// '.' white, '#' black, '+' another.
  std::vector<std::string> Letters() {
    std::vector<std::string> rows(bitmap_.GetHeight());
    const std::vector<std::uint32_t> pixels = Pixels();
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      rows[i / bitmap_.GetWidth()] += pixels[i] == 0xFFFFFFFF   ? '.'
                                      : pixels[i] == 0xFF000000 ? '#'
                                                                : '+';
    }
    return rows;
  }

  HDC context;

 private:
  Gdiplus::Bitmap bitmap_;
  std::vector<std::unique_ptr<Gdiplus::Graphics>> graphics_;
};

TEST(RectHelpers, PointsAndRectanglesGoIntoEachOther) {
  RECT r{5, 5, 5, 5};
  RectAccumPoint({2, 9}, r);
  RectAccumPoint({4, 7}, r);
  EXPECT_TRUE((r == RECT{2, 5, 5, 9}));
  POINT corners[4];
  RectToPoints(r, corners);
  const POINT expected[] = {{2, 5}, {5, 5}, {5, 9}, {2, 9}};
  EXPECT_EQ(std::memcmp(corners, expected, sizeof expected), 0);
  RECT back;
  RectFromPoints(corners, 4, back);
  EXPECT_TRUE(back == r);
  RectFromPoints(nullptr, 0, back);
  EXPECT_TRUE((back == RECT{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN}));
}

TEST(DrawingContext, ARectangleGrowsByADevicePixel) {
  Sheet sheet(10, 10);
  const struct {
    const char* why;
    int mode;
    RECT before, grown;
  } rows[] = {
      {"pixels", MM_TEXT, {1, 2, 30, 40}, {1, 2, 31, 41}},
      // A pixel is 2.6 units, and down is less: 300 units are 113.4 pixels, 114 are 301.6 units.
      {"tenths of a millimetre, upward", MM_LOMETRIC, {0, 0, 300, -300}, {0, 0, 302, -302}},
      {"the end of all numbers", MM_TEXT, {0, 0, INT32_MAX, 5}, {0, 0, INT32_MAX, 6}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    SetMapMode(sheet.context, row.mode);
    RECT r = row.before;
    IncRect(sheet.context, &r);
    EXPECT_TRUE(r == row.grown) << r.right << ", " << r.bottom;
  }
  SetDefDC(sheet.context);
  RECT r{1, 2, 30, 40};
  DecRect(sheet.context, &r);
  EXPECT_TRUE((r == RECT{1, 2, 29, 39}));
  IncRect(nullptr, &r);
  EXPECT_TRUE((r == RECT{1, 2, 29, 39}));
}

TEST(DrawingContext, DefaultsAreBroughtBack) {
  Sheet sheet(10, 10);
  EXPECT_EQ(SetMapMode(sheet.context, MM_ANISOTROPIC), MM_TEXT);
  EXPECT_EQ(SetMapMode(sheet.context, 9), 0);
  SetWindowOrgEx(sheet.context, 5, 5, nullptr);
  SetViewportOrgEx(sheet.context, 6, 6, nullptr);
  SetWindowExtEx(sheet.context, 7, 7, nullptr);
  SetViewportExtEx(sheet.context, 8, 8, nullptr);
  SetDefDC(sheet.context);
  EXPECT_EQ(GetMapMode(sheet.context), MM_TEXT);
  POINT origins[2];
  SIZE extents[2];
  EXPECT_TRUE(GetWindowOrgEx(sheet.context, origins) &&
              GetViewportOrgEx(sheet.context, origins + 1));
  EXPECT_TRUE(GetWindowExtEx(sheet.context, extents) &&
              GetViewportExtEx(sheet.context, extents + 1));
  for (const POINT& origin : origins) EXPECT_TRUE(origin.x == 0 && origin.y == 0);
  for (const SIZE& extent : extents) EXPECT_TRUE(extent.cx == 1 && extent.cy == 1);
}

TEST(DrawingContext, AnOutlineIsOnePixelWideAndWhole) {
  Sheet sheet(6, 4);
  PlotRect(sheet.context, {1, 0, 4, 2});
  EXPECT_THAT(sheet.Letters(), ElementsAre(".####.", ".#..#.", ".####.", "......"));
}

TEST(DrawingContext, LinesLeaveOutTheirLastPixelAndTakePens) {
  Sheet sheet(12, 4);
  const POINT line[] = {{0, 0}, {11, 0}};
  EXPECT_TRUE(Polyline(sheet.context, line, 2));
  const HPEN dotted = CreatePen(PS_DOT, 0, 0x000000);
  const HPEN wide = CreatePen(PS_SOLID, 2, 0x0000FF);
  const HPEN first = SelectObject(sheet.context, dotted);
  SetBkMode(sheet.context, TRANSPARENT);
  const POINT second[] = {{0, 1}, {11, 1}};
  EXPECT_TRUE(Polyline(sheet.context, second, 2));
  EXPECT_EQ(SelectObject(sheet.context, wide), dotted);
  const POINT third[] = {{2, 2}, {5, 2}};
  EXPECT_TRUE(Polyline(sheet.context, third, 2));
  EXPECT_EQ(sheet.Pixels()[2 * 12 + 2], 0xFFFF0000u) << "the low byte is red";
  EXPECT_THAT(sheet.Letters(),
              ElementsAre("###########.", "###...###...", "..++++......", "..++++......"));
  SelectObject(sheet.context, first);
  EXPECT_TRUE(DeleteObject(dotted) && DeleteObject(wide) && DeleteObject(first));
  EXPECT_FALSE(Polyline(sheet.context, line, 1) || Polyline(nullptr, line, 2) ||
               Polyline(sheet.context, nullptr, 2));
  EXPECT_EQ(CreatePen(1, 0, 0), nullptr);
}

TEST(DrawingContext, AWidePenIsASquareOnEachPixelOfAThinOne) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const auto any = [&random](int from, int to) {
    return std::uniform_int_distribution(from, to)(random);
  };
  for (int i = 0; i < 100; ++i) {
    const int width = any(1, 12);
    const POINT path[] = {{any(0, 39), any(0, 39)}, {any(0, 39), any(0, 39)}, {any(0, 39), 0}};
    const auto drawn = [&, style = i % 2 ? PS_DOT : PS_SOLID](int penWidth) {
      Sheet sheet(40, 40);
      const HPEN pen = CreatePen(style, penWidth, 0);
      SelectObject(sheet.context, pen);
      SetBkMode(sheet.context, TRANSPARENT);
      Polyline(sheet.context, path, 3);
      DeleteObject(pen);
      return sheet.Letters();
    };
    const std::vector<std::string> thin = drawn(1);
    std::vector<std::string> expected(40, std::string(40, '.'));
    for (int y = 0; y < 40 * 40 * width * width; ++y) {
      const int at = y / (width * width);
      const int row = at / 40 - (width - 1) / 2 + y % width;
      const int column = at % 40 - (width - 1) / 2 + y / width % width;
      if (thin[static_cast<std::size_t>(at / 40)][static_cast<std::size_t>(at % 40)] == '#' &&
          row >= 0 && row < 40 && column >= 0 && column < 40) {
        expected[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = '#';
      }
    }
    ASSERT_EQ(drawn(width), expected) << width;
  }
}

// The operations as their published truth tables have them: P is the pen, D what is there.
TEST(DrawingContext, OperationsCombineBits) {
  const std::uint32_t pen = 0x0F0F0F;
  const std::uint32_t there = 0x333333;
  const std::uint32_t expected[] = {
      0,           ~(there | pen), there & ~pen, ~pen,           pen & ~there, ~there,
      there ^ pen, ~(there & pen), there & pen,  ~(there ^ pen), there,        there | ~pen,
      pen,         pen | ~there,   pen | there,  0xFFFFFF};
  for (int operation = 1; operation <= 16; ++operation) {
    Sheet sheet(1, 1, 0xFF000000 | there);
    const HPEN grey = CreatePen(PS_SOLID, 0, pen);
    SelectObject(sheet.context, grey);
    EXPECT_EQ(SetROP2(sheet.context, operation), R2_COPYPEN);
    const POINT dot[] = {{0, 0}, {1, 0}};
    EXPECT_TRUE(Polyline(sheet.context, dot, 2));
    EXPECT_EQ(sheet.Pixels()[0], 0xFF000000 | (expected[operation - 1] & 0xFFFFFF)) << operation;
    DeleteObject(grey);
  }
  Sheet sheet(1, 1);
  EXPECT_EQ(SetROP2(sheet.context, 17) + SetROP2(sheet.context, 0) + SetBkMode(sheet.context, 3),
            0);
}

TEST(XorDotRect, DrawnTwiceItIsGoneBitForBit) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  Sheet sheet(40, 30);
  std::vector<std::uint32_t> noise(40 * 30);
  for (std::uint32_t& pixel : noise) pixel = static_cast<std::uint32_t>(random()) | 0xFF000000;
  for (std::size_t i = 0; i < 200; ++i) noise[i] &= 0x7F7F7F7F;  // translucent, too
  sheet.Fill(noise);
  const auto side = [&random] { return std::uniform_int_distribution(-20, 60)(random); };
  int visible = 0;
  for (int i = 0; i < 200; ++i) {
    const RECT r = i == 0   ? RECT{3, 3, 30, 20}
                   : i == 1 ? RECT{5, 5, 20, 5}
                            : RECT{side(), side(), side(), side()};
    XorDotRect(sheet.context, r);
    visible += sheet.Pixels() != noise;
    XorDotRect(sheet.context, r);
    ASSERT_EQ(sheet.Pixels(), noise) << r.left << ' ' << r.top << ' ' << r.right << ' ' << r.bottom;
  }
  EXPECT_GT(visible, 50);
  XorDotRect(sheet.context, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX});
  EXPECT_EQ(GetROP2(sheet.context), R2_COPYPEN);
  EXPECT_EQ(GetBkMode(sheet.context), OPAQUE);
  XorDotRect(nullptr, {0, 0, 1, 1});
}

TEST(DrawingContext, ACairoContextsClipHolds) {
  cairo_surface_t* const image = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 10, 10);
  cairo_t* const cairo = cairo_create(image);
  cairo_scale(cairo, 2, 2);
  cairo_rectangle(cairo, 1, 1, 2, 2);
  cairo_rectangle(cairo, 4, 1, 1, 1);
  cairo_clip(cairo);
  Gdiplus::Graphics graphics(cairo);
  const HDC context = graphics.GetHDC();
  RECT box;
  EXPECT_EQ(GetClipBox(context, &box), SIMPLEREGION);
  EXPECT_TRUE((box == RECT{2, 2, 10, 6})) << "in pixels of the surface, not of the application";
  const HPEN red = CreatePen(PS_SOLID, 0, 0x0000FF);
  SelectObject(context, red);
  const POINT line[] = {{0, 3}, {10, 3}};
  EXPECT_TRUE(Polyline(context, line, 2));
  cairo_surface_flush(image);
  std::string row;
  for (int x = 0; x < 10; ++x) {
    row +=
        cairo_image_surface_get_data(image)[3 * cairo_image_surface_get_stride(image) + 4 * x + 2]
            ? '#'
            : '.';
  }
  EXPECT_EQ(row, "..####..##");
  cairo_arc(cairo, 2, 2, 1, 0, 6);
  cairo_clip(cairo);
  EXPECT_FALSE(Polyline(context, line, 2)) << "a round clip has no whole pixels";
  graphics.ReleaseHDC(context);
  DeleteObject(red);
  cairo_destroy(cairo);
  cairo_surface_destroy(image);
}

TEST(DrawingContext, PixelsWithoutColoursTakeNoLines) {
  cairo_surface_t* const image = cairo_image_surface_create(CAIRO_FORMAT_A8, 10, 10);
  cairo_t* const cairo = cairo_create(image);
  Gdiplus::Graphics graphics(cairo);
  const HDC context = graphics.GetHDC();
  const POINT line[] = {{0, 3}, {10, 3}};
  EXPECT_FALSE(Polyline(context, line, 2));
  graphics.ReleaseHDC(context);
  cairo_destroy(cairo);
  cairo_surface_destroy(image);
}

// Lines by way of pixels, where pixels don't lie as the application's coordinates say.
TEST(DrawingContext, LinesCountThePixelsOfAnySurface) {
  const struct {
    const char* why;
    double scale, offset;
    bool isGroup;
  } rows[] = {{"scaled", 2, 0, false},           {"scaled by what leaves a rest", 3, 0, false},
              {"an origin inside", 1, 5, false}, {"an origin between pixels", 1.5, 4.6, false},
              {"a group in a clip", 1, 0, true}, {"a group, scaled", 3, 0, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    cairo_surface_t* const image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 21, 9);
    cairo_surface_set_device_scale(image, row.scale, row.scale);
    cairo_surface_set_device_offset(image, row.offset, row.offset);
    cairo_t* const cairo = cairo_create(image);
    if (row.isGroup) {
      cairo_rectangle(cairo, 3 / row.scale, 3 / row.scale, 15 / row.scale, 6 / row.scale);
      cairo_clip(cairo);
      cairo_push_group(cairo);
    }
    {
      Gdiplus::Graphics graphics(cairo);
      const HDC context = graphics.GetHDC();
      const int origin = static_cast<int>(std::round(row.offset));
      RECT box;
      GetClipBox(context, &box);
      EXPECT_TRUE((box == (row.isGroup ? RECT{3, 3, 18, 9}
                                       : RECT{-origin, -origin, 21 - origin, 9 - origin})));
      const POINT line[] = {{2 - origin, 4 - origin}, {20 - origin, 4 - origin}};
      EXPECT_TRUE(Polyline(context, line, 2));
      graphics.ReleaseHDC(context);
    }
    if (row.isGroup) {
      cairo_pop_group_to_source(cairo);
      cairo_paint(cairo);
    }
    cairo_surface_flush(image);
    std::string alpha;
    const unsigned char* const data = cairo_image_surface_get_data(image);
    for (int x = 0; x < 21; ++x) alpha += data[4 * (4 * 21 + x) + 3] == 255 ? '#' : '.';
    EXPECT_EQ(alpha, row.isGroup ? "...###############..." : "..##################.");
    EXPECT_EQ(std::count(data, data + 4 * 21 * 9, 255), row.isGroup ? 15 : 18);
    cairo_destroy(cairo);
    cairo_surface_destroy(image);
  }
}

TEST(DrawingContext, OnVectorsLinesAreVectorsAndNothingIsTakenBack) {
  std::string written;
  const auto append = [](void* to, const unsigned char* bytes, unsigned count) {
    static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
  };
  cairo_surface_t* const svg = cairo_svg_surface_create_for_stream(append, &written, 50, 50);
  cairo_t* const cairo = cairo_create(svg);
  {
    Gdiplus::Graphics graphics(cairo);
    const HDC context = graphics.GetHDC();
    const POINT line[] = {{1, 2}, {30, 2}};
    EXPECT_TRUE(Polyline(context, line, 2));
    SetROP2(context, R2_NOTXORPEN);
    EXPECT_FALSE(Polyline(context, line, 2));
    graphics.ReleaseHDC(context);
  }
  cairo_destroy(cairo);
  cairo_surface_destroy(svg);
  EXPECT_THAT(written, ::testing::HasSubstr("M 1.5 2.5 L 30.5 2.5"));
  EXPECT_THAT(written, ::testing::Not(::testing::HasSubstr("<image")));
}

TEST(CMemDC, APaintingShowsWhenItIsDone) {
  Sheet sheet(8, 5);
  SetWindowOrgEx(sheet.context, 100, 200, nullptr);
  SetViewportOrgEx(sheet.context, 1, 1, nullptr);
  SetBkColor(sheet.context, 0xFFFFFF);
  const RECT part{101, 200, 106, 203};
  {
    CMemDC memory(sheet.context, &part);
    EXPECT_EQ(static_cast<HDC>(memory), memory.operator->());
    EXPECT_EQ(GetBkColor(memory), 0xFFFFFFu);
    POINT origin;
    GetWindowOrgEx(memory, &origin);
    EXPECT_TRUE(origin.x == 101 && origin.y == 200) << "the corner of the rectangle";
    const POINT line[] = {{100, 201}, {200, 201}};
    EXPECT_TRUE(Polyline(memory, line, 2));
    EXPECT_THAT(sheet.Letters(), ::testing::Each("........"));
  }
  EXPECT_THAT(sheet.Letters(),
              ElementsAre("........", "........", "..#####.", "........", "........"));
}

TEST(CMemDC, WithoutARectangleAllIsPaintedInAnyMode) {
  for (const int mode : {MM_TEXT, MM_LOMETRIC, MM_HIENGLISH, MM_ANISOTROPIC}) {
    Sheet sheet(7, 5);
    SetMapMode(sheet.context, mode);
    if (mode == MM_ANISOTROPIC) SetViewportExtEx(sheet.context, 3, 4, nullptr);
    SetBkColor(sheet.context, 0x000000);
    { const CMemDC memory(sheet.context); }
    EXPECT_THAT(sheet.Letters(), ::testing::Each("#######")) << mode;
  }
}

TEST(CMemDC, WhatIsPaintedLandsWhereTheTargetHasIt) {
  const struct {
    const char* why;
    int mode;
    SIZE window, viewport;
    POINT windowOrigin, viewportOrigin;
    RECT part;
  } rows[] = {
      {"pixels", MM_TEXT, {1, 1}, {1, 1}, {7, 9}, {3, 2}, {8, 10, 30, 30}},
      {"units of ten pixels", MM_ANISOTROPIC, {1, 1}, {10, 10}, {0, 0}, {5, 5}, {}},
      {"also in a part", MM_ANISOTROPIC, {1, 1}, {10, 7}, {2, -1}, {5, 4}, {3, 0, 5, 3}},
      {"units of no whole pixels, upward",
       MM_LOMETRIC,
       {},
       {},
       {10, 20},
       {3, 38},
       {23, 91, 99, 21}},
      {"mirrored", MM_ANISOTROPIC, {3, 3}, {-7, 8}, {0, 0}, {37, 1}, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    Sheet sheet(40, 40);
    SetMapMode(sheet.context, row.mode);
    SetWindowExtEx(sheet.context, row.window.cx, row.window.cy, nullptr);
    SetViewportExtEx(sheet.context, row.viewport.cx, row.viewport.cy, nullptr);
    SetWindowOrgEx(sheet.context, row.windowOrigin.x, row.windowOrigin.y, nullptr);
    SetViewportOrgEx(sheet.context, row.viewportOrigin.x, row.viewportOrigin.y, nullptr);
    const bool isPart = row.part.right != 0;
    RECT box{0, 0, 40, 40};
    if (isPart) {
      POINT corners[] = {{row.part.left, row.part.top}, {row.part.right, row.part.bottom}};
      LPtoDP(sheet.context, corners, 2);
      box = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
    }
    CMemDC memory(sheet.context, isPart ? &row.part : nullptr);
    POINT corner{box.left, box.top};
    DPtoLP(sheet.context, &corner, 1);
    POINT origin;
    GetWindowOrgEx(memory, &origin);
    EXPECT_TRUE(origin.x == corner.x && origin.y == corner.y);
    for (int x = -200; x < 200; ++x) {
      POINT points[] = {{x, x}, {x, x}};
      LPtoDP(memory, points, 1);
      LPtoDP(sheet.context, points + 1, 1);
      // Halves below 0 are rounded the other way, out of the memory.
      EXPECT_TRUE(points[0].x < 0 || points[0].x + box.left == points[1].x) << x;
      EXPECT_TRUE(points[0].y < 0 || points[0].y + box.top == points[1].y) << x;
    }
  }
}

/// The code and the source of the error that `call` raises.
std::string ErrorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Exception& error) {
    return std::to_string(error.GetErrCode()) + " " + error.GetSrcFile();
  }
  return "nothing";
}

TEST(CMemDC, WhatCanNotBePaintedOnRaises) {
  Sheet sheet(7, 5);
  const RECT empty{3, 3, 3, 9};
  const RECT huge{INT32_MIN, 0, INT32_MAX, 5};
  EXPECT_EQ(ErrorOf([] { CMemDC memory(nullptr); }), "2 GdiUtil");
  EXPECT_EQ(ErrorOf([&] { CMemDC memory(sheet.context, &empty); }), "2 GdiUtil");
  EXPECT_EQ(ErrorOf([&] { CMemDC memory(sheet.context, &huge); }), "2 GdiUtil");
  const EMFRefDC reference;
  EXPECT_EQ(ErrorOf([&] { CMemDC memory(reference.GetRefDC()); }), "2 GdiUtil");
}

TEST(BitBlt, CopiesPixelsWithTheirAlpha) {
  Sheet from(4, 4, 0x80FFFFFF);
  Sheet to(4, 4);
  EXPECT_TRUE(BitBlt(to.context, 1, 1, 2, 2, from.context, 0, 0, SRCCOPY));
  EXPECT_THAT(to.Letters(), ElementsAre("....", ".++.", ".++.", "...."));
  EXPECT_EQ(to.Pixels()[5], from.Pixels()[0]);
  EXPECT_TRUE(BitBlt(to.context, -1, 0, 9, 9, from.context, 2, 3, SRCCOPY));
  EXPECT_THAT(to.Letters(), ElementsAre("+...", ".++.", ".++.", "...."))
      << "nothing is wiped where there is nothing to copy";
  EXPECT_TRUE(BitBlt(to.context, 3, 3, 1, 1, from.context, 4, 0, SRCCOPY));
  EXPECT_TRUE(BitBlt(to.context, 0, 0, 9, 9, from.context, -3, -3, SRCCOPY));
  EXPECT_THAT(to.Letters(), ElementsAre("+...", ".++.", ".++.", "...+"));
  EXPECT_FALSE(BitBlt(to.context, 0, 0, 1, 1, from.context, 0, 0, 0));
  EXPECT_FALSE(BitBlt(to.context, 0, 0, 1, 1, to.context, 0, 0, SRCCOPY));
  EXPECT_FALSE(BitBlt(nullptr, 0, 0, 1, 1, from.context, 0, 0, SRCCOPY));
}

TEST(DrawingContext, HandlesComeAndGo) {
  const HDC memory = CreateCompatibleDC(nullptr);
  const HBITMAP bitmap = CreateCompatibleBitmap(memory, 3, 2);
  const HBITMAP first = SelectObject(memory, bitmap);
  ASSERT_NE(first, nullptr);
  RECT box;
  EXPECT_EQ(GetClipBox(memory, &box), SIMPLEREGION);
  EXPECT_TRUE((box == RECT{0, 0, 3, 2}));
  EXPECT_FALSE(LPtoDP(memory, nullptr, 1) || DPtoLP(memory, nullptr, 1));
  EXPECT_EQ(SelectObject(memory, first), bitmap);
  EXPECT_EQ(GetClipBox(memory, &box), NULLREGION);
  EXPECT_TRUE(DeleteObject(bitmap) && DeleteObject(first) && DeleteDC(memory));
  const HDC screen = GetDC(nullptr);
  EXPECT_EQ(SelectObject(screen, first), nullptr) << "only memory takes a bitmap";
  EXPECT_EQ(ReleaseDC(nullptr, screen), 1);
  HWND__ window{};
  EXPECT_EQ(GetDC(&window), nullptr);
  EXPECT_EQ(CreateCompatibleBitmap(nullptr, 3, 2), nullptr);
  EXPECT_FALSE(ReleaseDC(nullptr, nullptr) || DeleteDC(nullptr) || GetClipBox(nullptr, &box) ||
               GetMapMode(nullptr) || SetROP2(nullptr, R2_COPYPEN) || DeleteObject(HPEN()));
}

TEST(GdiPlusUtil, MatricesAndPointsGoIntoEachOther) {
  Gdiplus::Matrix matrix;
  Gdiplus::REAL e[6];
  const Mat3d plane(1, 2, 90, 3, 4, 91, 5, 6, 92);
  EXPECT_EQ(&ToGdiMatrix(plane, matrix), &matrix);
  matrix.GetElements(e);
  EXPECT_THAT(e, ElementsAre(1, 2, 3, 4, 5, 6));
  Mat3d back;
  EXPECT_EQ(&FromGdiMatrix(matrix, back), &back);
  EXPECT_TRUE(back == Mat3d(1, 2, 0, 3, 4, 0, 5, 6, 1));
  const double space[16] = {1, 2, 90, 91, 3, 4, 92, 93, 94, 95, 96, 97, 7, 8, 98, 99};
  ToGdiMatrix(Mat4d(space), matrix);
  matrix.GetElements(e);
  EXPECT_THAT(e, ElementsAre(1, 2, 3, 4, 7, 8));
  const Gdiplus::PointF from[] = {{0.1f, 2}, {3, -4}};
  Vec2d to[2];
  FromGdiPointFArray(from, to, 2);
  EXPECT_EQ(to[0].x, double{0.1f});
  EXPECT_EQ(to[1].y, -4);
}

TEST(GdiPlusUtil, RowsAreCopiedByTheirStrides) {
  char source[] = "abcdefgh";
  char target[] = "............";
  Gdiplus::BitmapData from;
  from.Height = 2;
  from.Stride = 4;
  from.Scan0 = source;
  Gdiplus::BitmapData to;
  to.Stride = -6;
  to.Scan0 = target + 6;
  CopyGdiBitmapData(to, from);
  EXPECT_STREQ(target, "efgh..abcd..");
  to.Stride = -3;
  EXPECT_EQ(ErrorOf([&] { CopyGdiBitmapData(to, from); }), "4 GdiplusUtil");
  to = Gdiplus::BitmapData();
  to.Stride = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(ErrorOf([&] { CopyGdiBitmapData(to, from); }), "4 GdiplusUtil");
}

TEST(GdiPlusUtil, OnlyPngHasAnEncoder) {
  GUID clsid{};
  EXPECT_EQ(GetEncoderClsid(L"image/PNG", &clsid) + GetEncoderClsid(L"image/png;", &clsid) +
                GetEncoderClsid(nullptr, &clsid) + GetEncoderClsid(L"image/png", nullptr),
            -4);
  EXPECT_EQ(clsid.Data1, 0u);
  EXPECT_EQ(GetEncoderClsid(L"image/png", &clsid), 0);
  EXPECT_EQ(clsid.Data1, 0x557CF406u);
}

TEST(CXPTheme, NothingIsThemedAndEveryOperationRaisesItsName) {
  CXPTheme& theme = CXPTheme::Instance();
  EXPECT_FALSE(theme.IsThemed());
  const auto raised = [](const std::function<void()>& call) -> std::string {
    try {
      call();
    } catch (const Exception& error) {
      return std::to_string(error.GetErrCode()) + error.GetSrcFile() + error.GetDescription();
    }
    return "nothing";
  };
  const auto expected = [](const char* name) {
    try {
      ThrowErrorImpl("XPTheme", 1, ERR_FIND_SYMBOL, name);
    } catch (const Exception& error) {
      return "20XPTheme" + error.GetDescription();
    }
  };
  // clang-format off
  const struct { const char* name; std::function<void()> call; } rows[] = {
      {"CloseThemeData", [&] { theme.CloseThemeData({}); }},
      {"DrawThemeBackground", [&] { theme.DrawThemeBackground({}, {}, {}, {}, {}, {}); }},
      {"DrawThemeEdge", [&] { theme.DrawThemeEdge({}, {}, {}, {}, {}, {}, {}, {}); }},
      {"DrawThemeIcon", [&] { theme.DrawThemeIcon({}, {}, {}, {}, {}, {}, {}); }},
      {"DrawThemeParentBackground", [&] { theme.DrawThemeParentBackground({}, {}, {}); }},
      {"DrawThemeText", [&] { theme.DrawThemeText({}, {}, {}, {}, {}, {}, {}, {}, {}); }},
      {"EnableThemeDialogTexture", [&] { theme.EnableThemeDialogTexture({}, {}); }},
      {"EnableTheming", [&] { theme.EnableTheming({}); }},
      {"GetCurrentThemeName", [&] { theme.GetCurrentThemeName({}, {}, {}, {}, {}, {}); }},
      {"GetThemeAppProperties", [&] { theme.GetThemeAppProperties(); }},
      {"GetThemeBackgroundContentRect", [&] { theme.GetThemeBackgroundContentRect({}, {}, {}, {}, {}, {}); }},
      {"GetThemeBackgroundExtent", [&] { theme.GetThemeBackgroundExtent({}, {}, {}, {}, {}, {}); }},
      {"GetThemeBackgroundRegion", [&] { theme.GetThemeBackgroundRegion({}, {}, {}, {}, {}, {}); }},
      {"GetThemeBool", [&] { theme.GetThemeBool({}, {}, {}, {}, {}); }},
      {"GetThemeColor", [&] { theme.GetThemeColor({}, {}, {}, {}, {}); }},
      {"GetThemeDocumentationProperty", [&] { theme.GetThemeDocumentationProperty({}, {}, {}, {}); }},
      {"GetThemeEnumValue", [&] { theme.GetThemeEnumValue({}, {}, {}, {}, {}); }},
      {"GetThemeFilename", [&] { theme.GetThemeFilename({}, {}, {}, {}, {}, {}); }},
      {"GetThemeFont", [&] { theme.GetThemeFont({}, {}, {}, {}, {}, {}); }},
      {"GetThemeInt", [&] { theme.GetThemeInt({}, {}, {}, {}, {}); }},
      {"GetThemeIntList", [&] { theme.GetThemeIntList({}, {}, {}, {}, {}); }},
      {"GetThemeMargins", [&] { theme.GetThemeMargins({}, {}, {}, {}, {}, {}, {}); }},
      {"GetThemeMetric", [&] { theme.GetThemeMetric({}, {}, {}, {}, {}, {}); }},
      {"GetThemePartSize", [&] { theme.GetThemePartSize({}, {}, {}, {}, {}, {}, {}); }},
      {"GetThemePosition", [&] { theme.GetThemePosition({}, {}, {}, {}, {}); }},
      {"GetThemePropertyOrigin", [&] { theme.GetThemePropertyOrigin({}, {}, {}, {}, {}); }},
      {"GetThemeRect", [&] { theme.GetThemeRect({}, {}, {}, {}, {}); }},
      {"GetThemeString", [&] { theme.GetThemeString({}, {}, {}, {}, {}, {}); }},
      {"GetThemeSysBool", [&] { theme.GetThemeSysBool({}, {}); }},
      {"GetThemeSysColor", [&] { theme.GetThemeSysColor({}, {}); }},
      {"GetThemeSysColorBrush", [&] { theme.GetThemeSysColorBrush({}, {}); }},
      {"GetThemeSysFont", [&] { theme.GetThemeSysFont({}, {}, {}); }},
      {"GetThemeSysInt", [&] { theme.GetThemeSysInt({}, {}, {}); }},
      {"GetThemeSysSize", [&] { theme.GetThemeSysSize({}, {}); }},
      {"GetThemeSysString", [&] { theme.GetThemeSysString({}, {}, {}, {}); }},
      {"GetThemeTextExtent", [&] { theme.GetThemeTextExtent({}, {}, {}, {}, {}, {}, {}, {}, {}); }},
      {"GetThemeTextMetrics", [&] { theme.GetThemeTextMetrics({}, {}, {}, {}, {}); }},
      {"GetWindowTheme", [&] { theme.GetWindowTheme({}); }},
      {"HitTestThemeBackground", [&] { theme.HitTestThemeBackground({}, {}, {}, {}, {}, {}, {}, {}, {}); }},
      {"IsAppThemed", [&] { theme.IsAppThemed(); }},
      {"IsThemeActive", [&] { theme.IsThemeActive(); }},
      {"IsThemeBackgroundPartiallyTransparent", [&] { theme.IsThemeBackgroundPartiallyTransparent({}, {}, {}); }},
      {"IsThemeDialogTextureEnabled", [&] { theme.IsThemeDialogTextureEnabled({}); }},
      {"IsThemePartDefined", [&] { theme.IsThemePartDefined({}, {}, {}); }},
      {"OpenThemeData", [&] { theme.OpenThemeData(nullptr, L"Button"); }},
      {"OpenThemeData", [&] { theme.OpenThemeData(nullptr, "Button"); }},
      {"SetThemeAppProperties", [&] { theme.SetThemeAppProperties({}); }},
      {"SetWindowTheme", [&] { theme.SetWindowTheme({}, {}, {}); }},
  };
  // clang-format on
  for (const auto& row : rows) EXPECT_EQ(raised(row.call), expected(row.name)) << row.name;
}

}  // namespace
}  // namespace vlm
