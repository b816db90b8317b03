#include <velum/diagnostics/GdiPlus.h>

#include <velum/core/WideText.h>
#include <velum/diagnostics/GdiPlusUtil.h>

#include <testing/PictureComparison.h>
#include <testing/TemporaryFolder.h>

#include <cairo-svg.h>
#include <cairo.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace vlm {
namespace {

using namespace Gdiplus;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using testing::TemporaryFolder;

const Pen kBlack(Color(0xFF000000));
const SolidBrush kInk(Color(0xFF000000));
const SolidBrush kWhite(Color(0xFFFFFFFF));

std::uint32_t PixelAt(const BitmapData& data, UINT x, UINT y) {
  std::uint32_t pixel;
  std::memcpy(&pixel,
              static_cast<const char*>(data.Scan0) + y * static_cast<UINT>(data.Stride) + 4 * x, 4);
  return pixel;
}

/// The pixels as letters: '.' white, '#' black, '+' something between.
std::vector<std::string> Letters(Bitmap& bitmap) {
  BitmapData data;
  EXPECT_EQ(bitmap.LockBits(nullptr, ImageLockModeRead, PixelFormat32bppPARGB, &data), Ok);
  std::vector<std::string> rows(data.Height);
  for (UINT y = 0; y < data.Height; ++y) {
    for (UINT x = 0; x < data.Width; ++x) {
      const std::uint32_t pixel = PixelAt(data, x, y);
      rows[y] += pixel == 0xFFFFFFFF ? '.' : pixel == 0xFF000000 ? '#' : '+';
    }
  }
  EXPECT_EQ(bitmap.UnlockBits(&data), Ok);
  return rows;
}

std::vector<std::string> Drawn(INT width, INT height, const std::function<void(Graphics&)>& draw) {
  Bitmap bitmap(width, height);
  {
    Graphics graphics(&bitmap);
    graphics.FillRectangle(&kWhite, 0, 0, width, height);
    draw(graphics);
    EXPECT_EQ(graphics.GetLastStatus(), Ok);
  }
  return Letters(bitmap);
}

TEST(Graphics, StraightStrokesPaintWholePixels) {
  const struct {
    const char* why;
    std::function<void(Graphics&)> draw;
    std::vector<std::string> expected;
  } rows[] = {
      {"a line has both ends",
       [](Graphics& g) { g.DrawLine(&kBlack, 1, 1, 4, 1); },
       {"......", ".####.", "......", "......"}},
      {"also backward and down",
       [](Graphics& g) { g.DrawLine(&kBlack, 5, 3, 5, 1); },
       {"......", ".....#", ".....#", ".....#"}},
      {"a line without length is a pixel",
       [](Graphics& g) { g.DrawLine(&kBlack, 2, 2, 2, 2); },
       {"......", "......", "..#...", "......"}},
      {"a filled rectangle has its size",
       [](Graphics& g) { g.FillRectangle(&kInk, 1, 1, 3, 2); },
       {"......", ".###..", ".###..", "......"}},
      {"rectangles of one record are those of four numbers",
       [](Graphics& g) {
         g.FillRectangle(&kInk, Rect(0, 0, 2, 2));
         g.DrawRectangle(&kBlack, Rect(3, 1, 2, 2));
       },
       {"##....", "##.###", "...#.#", "...###"}},
      {"an outline reaches one further",
       [](Graphics& g) { g.DrawRectangle(&kBlack, 1, 1, 3, 2); },
       {"......", ".####.", ".#..#.", ".####."}},
      {"a flat outline is a line",
       [](Graphics& g) { g.DrawRectangle(&kBlack, 1, 1, 3, 0); },
       {"......", ".####.", "......", "......"}},
      {"a negative size is nothing",
       [](Graphics& g) {
         g.DrawRectangle(&kBlack, 4, 1, -3, 2);
         g.FillRectangle(&kInk, 4, 1, -3, 2);
         g.DrawEllipse(&kBlack, 4, 1, -3, 2);
         g.FillEllipse(&kInk, 4, 1, 3, 0);
       },
       {"......", "......", "......", "......"}},
      {"corners of lines are whole",
       [](Graphics& g) {
         const Point points[] = {{1, 3}, {1, 1}, {4, 1}};
         g.DrawLines(&kBlack, points, 3);
       },
       {"......", ".####.", ".#....", ".#...."}},
      {"what lies beyond is left out",
       [](Graphics& g) { g.DrawLine(&kBlack, -2147483647, 1, 2147483647, 1); },
       {"......", "######", "......", "......"}},
      {"the clip holds its pixels",
       [](Graphics& g) {
         g.SetClip(Rect(1, 1, 2, 2));
         g.FillRectangle(&kInk, 0, 0, 6, 4);
         g.ResetClip();
         g.FillRectangle(&kInk, 5, 3, 1, 1);
       },
       {"......", ".##...", ".##...", ".....#"}},
      {"transforms go before those that are there",
       [](Graphics& g) {
         g.TranslateTransform(1, 3);
         g.RotateTransform(-90);
         g.DrawLine(&kBlack, 0, 0, 2, 0);
         g.FillRectangle(&kInk, 0, 2, 1, 3);
         g.ResetTransform();
         g.DrawLine(&kBlack, 0, 0, 0, 0);
       },
       {"#.....", ".#....", ".#....", ".#.###"}},
  };
  for (const auto& row : rows) {
    EXPECT_THAT(Drawn(6, 4, row.draw), ElementsAreArray(row.expected)) << row.why;
  }
}

TEST(Graphics, WhatIsFarAwayLeavesTheContextWhole) {
  for (const double scale : {1.0, 20.0, 1000.0}) {
    cairo_surface_t* const image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 40, 40);
    const unsigned char* const pixels = cairo_image_surface_get_data(image);
    cairo_t* const context = cairo_create(image);
    cairo_scale(context, scale, scale);
    Graphics graphics(context);
    const INT most = 2147483647;
    for (const INT far : {-most, -2000000, 2000000, most - 9}) {
      EXPECT_EQ(graphics.FillEllipse(&kInk, far, 0, 10, 10), Ok);
      EXPECT_EQ(graphics.DrawEllipse(&kBlack, 0, far, 10, 10), Ok);
      EXPECT_EQ(graphics.FillRectangle(&kInk, far, 0, 10, 10), Ok);
      EXPECT_EQ(graphics.DrawLine(&kBlack, far, 0, far, 10), Ok);
    }
    cairo_surface_flush(image);
    EXPECT_EQ(std::count(pixels, pixels + 40 * 40 * 4, 0), 40 * 40 * 4) << scale;
    for (const INT far : {100000, 500000, 1000000, most}) {
      cairo_save(context);
      cairo_set_operator(context, CAIRO_OPERATOR_CLEAR);
      cairo_paint(context);
      cairo_restore(context);
      EXPECT_EQ(graphics.DrawLine(&kBlack, -far, 0, far, 0), Ok);
      cairo_surface_flush(image);
      EXPECT_EQ(std::count(pixels, pixels + 40 * 4, 255), 40) << scale << ' ' << far;
    }
    EXPECT_EQ(cairo_status(context), CAIRO_STATUS_SUCCESS) << scale;
    cairo_destroy(context);
    cairo_surface_destroy(image);
  }
}

TEST(Graphics, EllipsesAreCentredOnTheirPixel) {
  for (const INT radius : {1, 2, 5}) {
    const std::vector<std::string> disc = Drawn(13, 13, [&](Graphics& g) {
      g.FillEllipse(&kInk, Rect(6 - radius, 6 - radius, 2 * radius, 2 * radius));
      g.DrawEllipse(&kBlack, Rect(6 - radius, 6 - radius, 2 * radius, 2 * radius));
    });
    for (std::size_t i = 0; i < 13; ++i) {
      EXPECT_EQ(disc[i], disc[12 - i]);
      EXPECT_EQ(disc[i], std::string(disc[i].rbegin(), disc[i].rend()));
    }
    EXPECT_EQ(disc[6].find_first_not_of('.'), static_cast<std::size_t>(6 - radius));
    EXPECT_EQ(disc[6][6], '#');
  }
}

/// The box of all pixels that are not white; empty for none.
Rect InkBox(const std::vector<std::string>& rows) {
  Rect box(1000, 1000, -1000, -1000);
  for (INT y = 0; y < static_cast<INT>(rows.size()); ++y) {
    const std::string& row = rows[static_cast<std::size_t>(y)];
    const std::size_t first = row.find_first_not_of('.');
    if (first == std::string::npos) continue;
    const INT last = static_cast<INT>(row.find_last_not_of('.'));
    box.X = std::min(box.X, static_cast<INT>(first));
    box.Width = std::max(box.Width, last + 1 - box.X);
    box.Y = std::min(box.Y, y);
    box.Height = y + 1 - box.Y;
  }
  return box;
}

TEST(Graphics, TextLiesInItsMeasuredBoxWhereverItIsAligned) {
  const Gdiplus::Font font(L"DejaVu Sans", 12, FontStyleBold);
  const StringAlignment all[] = {StringAlignmentNear, StringAlignmentCenter, StringAlignmentFar};
  for (const StringAlignment across : all) {
    for (const StringAlignment down : all) {
      RectF box;
      const auto rows = Drawn(200, 100, [&](Graphics& g) {
        EXPECT_EQ(g.MeasureString(L"HxH", -1, &font, PointF(100, 50), &box), Ok);
        StringFormat format;
        format.SetAlignment(across);
        format.SetLineAlignment(down);
        g.DrawString(L"HxH", -1, &font, PointF(100, 50), &format, &kInk);
      });
      const Rect ink = InkBox(rows);
      // Where the box is with its first pixel, centre or last pixel at the point; letters leave
      // some of it free, and baselines move to whole pixels.
      const float left = 100.5f - (across == StringAlignmentNear     ? 0.5f
                                   : across == StringAlignmentCenter ? box.Width / 2
                                                                     : box.Width - 0.5f);
      const float top = 50.5f - (down == StringAlignmentNear     ? 0.5f
                                 : down == StringAlignmentCenter ? box.Height / 2
                                                                 : box.Height - 0.5f);
      SCOPED_TRACE(std::to_string(across) + std::to_string(down));
      EXPECT_GE(ink.X, std::floor(left));
      EXPECT_LE(ink.X, left + 3);
      EXPECT_LE(ink.X + ink.Width, std::ceil(left + box.Width));
      EXPECT_GE(ink.X + ink.Width, left + box.Width - 3);
      EXPECT_GE(ink.Y, std::floor(top));
      EXPECT_LE(ink.Y + ink.Height, std::ceil(top + box.Height));
      EXPECT_NEAR(ink.Height, 0.729 * 16, 1) << "capitals of this face are 0.729 em high";
    }
  }
}

/// The last rows and columns of letters without round feet, level and upright, in pixels of a
/// surface with a scale and an offset of its own; -1 if there is anything but black.
std::vector<int> BaselinesAt(double scale, double offset) {
  std::vector<int> lines;
  for (int i = 0; i < 20; ++i) {
    const bool isLevel = i < 10;
    cairo_surface_t* const image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 40, 40);
    cairo_surface_set_device_scale(image, scale, scale);
    cairo_surface_set_device_offset(image, offset, offset);
    cairo_t* const context = cairo_create(image);
    cairo_translate(context, -offset / scale, -offset / scale);
    cairo_scale(context, 1 / scale, 1 / scale);
    {
      Graphics graphics(context);
      const Gdiplus::Font font(L"DejaVu Sans", 10);
      const REAL place = 5 + 0.37f * static_cast<REAL>(i % 10);
      graphics.TranslateTransform(isLevel ? 5 : place, isLevel ? place : 30);
      graphics.RotateTransform(isLevel ? 0 : -90);
      graphics.DrawString(L"E", -1, &font, PointF(0, 0), nullptr, &kInk);
    }
    cairo_destroy(context);
    cairo_surface_flush(image);
    int last = 39;
    int most = 0;
    for (; last >= 0 && most == 0; --last) {
      for (int j = 0; j < 40; ++j) {
        const int at = isLevel ? last * 40 + j : j * 40 + last;
        most = std::max<int>(most, cairo_image_surface_get_data(image)[4 * at + 3]);
      }
    }
    lines.push_back(most == 255 ? last : -1);
    cairo_surface_destroy(image);
  }
  return lines;
}

TEST(Graphics, BaselinesLieOnThePixelsOfTheSurface) {
  const std::vector<int> expected = BaselinesAt(1, 0);
  EXPECT_THAT(expected, ::testing::Each(::testing::Gt(10)));
  for (const double scale : {1.0, 2.0, 3.0}) {
    for (const double offset : {0.0, 0.5}) {
      EXPECT_EQ(BaselinesAt(scale, offset), expected) << scale << ' ' << offset;
    }
  }
}

// From DejaVu Sans' own tables: 2048 units to the em, digits advance by 1303, ascent and descent
// are 1901 and 483.
TEST(Graphics, TextMeasuresWhatTheFaceSaysOnEverySurface) {
  cairo_surface_t* const image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 10, 10);
  cairo_surface_t* const svg = cairo_svg_surface_create(nullptr, 10, 10);
  cairo_t* const contexts[] = {cairo_create(image), cairo_create(image), cairo_create(svg)};
  cairo_scale(contexts[1], 3.7, 3.7);
  cairo_scale(contexts[2], 0.75, 0.75);
  for (cairo_t* const context : contexts) {
    Graphics graphics(context);
    const struct {
      const wchar_t* text;
      INT length;
      float points;
      double width, lines;
    } rows[] = {
        {L"0", -1, 12, 1, 1},
        {L"0123456789", -1, 12, 10, 1},
        {L"0123456789", 4, 9, 4, 1},
        {L"01\n23456", -1, 10, 5, 2},
        {L"12\0"
         L"345",
         6, 10, 2, 1},
    };
    for (const auto& row : rows) {
      const Gdiplus::Font font(L"DejaVu Sans", row.points);
      const double em = row.points * 96 / 72;
      RectF box;
      EXPECT_EQ(graphics.MeasureString(row.text, row.length, &font, PointF(3, 4), &box), Ok);
      EXPECT_EQ(box.X, 3);
      EXPECT_EQ(box.Y, 4);
      EXPECT_NEAR(box.Width, row.width * em * 1303 / 2048, 0.01 * row.width) << row.text;
      EXPECT_NEAR(box.Height, row.lines * em * (1901 + 483) / 2048, 0.01 * row.lines);
      EXPECT_NEAR(font.GetHeight(&graphics), em * (1901 + 483) / 2048, 0.01);
      // Drawing under a scale must not change what comes after.
      graphics.DrawString(row.text, row.length, &font, PointF(0, 0), nullptr, &kInk);
    }
    RectF empty(1, 1, 1, 1);
    EXPECT_EQ(graphics.MeasureString(nullptr, 0, &*std::make_unique<Gdiplus::Font>(L"", 10.0f),
                                     PointF(0, 0), &empty),
              Ok);
    EXPECT_EQ(empty.Width + empty.Height, 0);
    EXPECT_EQ(graphics.GetLastStatus(), Ok);
    cairo_destroy(context);
  }
  cairo_surface_destroy(image);
  cairo_surface_destroy(svg);
}

TEST(Graphics, AContextKeepsItsStateAndTheApplicationsClipHolds) {
  cairo_surface_t* const image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 20, 20);
  cairo_t* const context = cairo_create(image);
  cairo_rectangle(context, 0, 0, 10, 20);
  cairo_clip(context);
  cairo_translate(context, 2, 0);
  cairo_set_operator(context, CAIRO_OPERATOR_ADD);
  cairo_move_to(context, 1, 2);
  cairo_line_to(context, 3, 4);
  {
    Graphics graphics(context);
    graphics.SetClip(Rect(0, 0, 20, 5));
    graphics.FillRectangle(&kInk, 0, 0, 20, 20);
  }
  double x;
  double y;
  cairo_get_current_point(context, &x, &y);
  EXPECT_EQ(x, 3);
  EXPECT_EQ(y, 4);
  EXPECT_EQ(cairo_get_operator(context), CAIRO_OPERATOR_ADD);
  cairo_destroy(context);
  cairo_surface_flush(image);
  const auto pixel = [&](int column, int row) {
    std::uint32_t value;
    std::memcpy(&value,
                cairo_image_surface_get_data(image) + row * cairo_image_surface_get_stride(image) +
                    4 * column,
                4);
    return value;
  };
  EXPECT_EQ(pixel(2, 0), 0xFF000000u);
  EXPECT_EQ(pixel(9, 4), 0xFF000000u);
  EXPECT_EQ(pixel(1, 0), 0u) << "left of the application's origin";
  EXPECT_EQ(pixel(10, 0), 0u) << "out of the application's clip";
  EXPECT_EQ(pixel(9, 5), 0u) << "out of the painting's clip";
  cairo_surface_destroy(image);
}

TEST(Graphics, AFailedCallLeavesItsStatusAndTheNextOnePaints) {
  Bitmap bitmap(4, 4);
  Graphics graphics(&bitmap);
  graphics.FillRectangle(&kWhite, 0, 0, 4, 4);
  const Point points[] = {{0, 0}, {1, 1}};
  const Gdiplus::Font font(L"DejaVu Sans", 10);
  const std::wstring endless(75001, L'm');  // each as wide as 40 / 3 pixels at most
  const Gdiplus::Font huge(L"DejaVu Sans", 1e9f);
  const Gdiplus::Font none(nullptr, std::nanf(""));
  RectF box;
  const std::function<Status()> calls[] = {
      [&] { return graphics.FillRectangle(nullptr, 0, 0, 1, 1); },
      [&] { return graphics.DrawRectangle(nullptr, 0, 0, 1, 1); },
      [&] { return graphics.DrawLine(nullptr, 0, 0, 1, 1); },
      [&] { return graphics.DrawLines(&kBlack, points, 1); },
      [&] { return graphics.DrawLines(&kBlack, nullptr, 2); },
      [&] { return graphics.DrawEllipse(nullptr, 0, 0, 1, 1); },
      [&] { return graphics.FillEllipse(nullptr, 0, 0, 1, 1); },
      [&] { return graphics.MeasureString(L"a", -1, &font, {}, nullptr); },
      [&] { return graphics.MeasureString(L"a", -1, &huge, {}, &box); },
      [&] { return graphics.MeasureString(L"a", -1, &none, {}, &box); },
      [&] { return graphics.MeasureString(nullptr, -1, &font, {}, &box); },
      [&] { return graphics.MeasureString(L"a", -2, &font, {}, &box); },
      [&] { return graphics.MeasureString(endless.c_str(), -1, &font, {}, &box); },
      [&] { return graphics.DrawString(endless.c_str(), -1, &font, {}, nullptr, &kInk); },
      [&] { return graphics.DrawString(L"a", -1, nullptr, {}, nullptr, &kInk); },
      [&] { return graphics.DrawString(L"a", -1, &font, {}, nullptr, nullptr); },
      [&] {
        return graphics.DrawString(L"a", -1, &font, {INFINITY, 0}, nullptr, &kInk);
      },
      [&] { return graphics.TranslateTransform(NAN, 0); },
      [&] { return graphics.RotateTransform(INFINITY); },
  };
  for (const auto& call : calls) {
    EXPECT_EQ(call(), InvalidParameter) << &call - calls;
    EXPECT_EQ(graphics.DrawLine(&kBlack, 0, 0, 0, 0), Ok);
    EXPECT_EQ(graphics.GetLastStatus(), InvalidParameter);
    EXPECT_EQ(graphics.GetLastStatus(), Ok);
  }
  EXPECT_EQ(graphics.TranslateTransform(1e38f, 0), GenericError);
  EXPECT_EQ(graphics.FillRectangle(&kInk, 1, 1, 1, 1), Ok);
  EXPECT_THAT(Letters(bitmap), ElementsAre("#...", ".#..", "....", "...."));
}

TEST(Graphics, WithoutASurfaceEveryCallIsRefused) {
  Graphics ofNoBitmap(static_cast<Bitmap*>(nullptr));
  Bitmap none(0, 5);
  Graphics ofNothing(&none);
  Graphics ofNoContext(static_cast<cairo_t*>(nullptr));
  for (Graphics* graphics : {&ofNoBitmap, &ofNothing, &ofNoContext}) {
    EXPECT_EQ(graphics->GetLastStatus(), WrongState);
    EXPECT_EQ(graphics->FillRectangle(&kInk, 0, 0, 1, 1), WrongState);
    EXPECT_EQ(graphics->GetHDC(), nullptr);
  }
}

TEST(Graphics, ThreadsMeasureAndDrawEachOnItsOwn) {
  const auto draw = [] {
    std::vector<std::string> rows;
    for (int i = 0; i < 5; ++i) {
      rows = Drawn(60, 20, [](Graphics& g) {
        const Gdiplus::Font font(L"DejaVu Sans", 10);
        g.DrawString(L"12.5", -1, &font, PointF(1, 1), nullptr, &kInk);
      });
    }
    return rows;
  };
  const std::vector<std::string> expected = draw();
  std::vector<std::string> results[3];
  std::vector<std::thread> threads;
  for (auto& result : results) threads.emplace_back([&] { result = draw(); });
  for (std::thread& thread : threads) thread.join();
  for (const auto& result : results) EXPECT_EQ(result, expected);
}

TEST(Bitmap, SizesThatCanNotBeAreRefused) {
  for (const auto& [width, height] :
       {std::pair(0, 1), {1, -1}, {32768, 1}, {2147483647, 2147483647}}) {
    Bitmap bitmap(width, height);
    EXPECT_EQ(bitmap.GetLastStatus(), InvalidParameter);
    EXPECT_EQ(bitmap.GetWidth() + bitmap.GetHeight(), 0u);
    GUID png;
    GetEncoderClsid(L"image/png", &png);
    EXPECT_EQ(bitmap.Save(L"never.png", &png), WrongState);
  }
}

TEST(Bitmap, BitsAreLockedInParts) {
  Bitmap bitmap(5, 4);
  BitmapData data;
  const Rect part(1, 2, 3, 2);
  ASSERT_EQ(bitmap.LockBits(&part, ImageLockModeWrite, PixelFormat32bppPARGB, &data), Ok);
  EXPECT_EQ(data.Width, 3u);
  EXPECT_EQ(data.Height, 2u);
  EXPECT_EQ(data.Stride, 12) << "nobody who copies by the stride comes behind the last row";
  BitmapData second;
  EXPECT_EQ(bitmap.LockBits(&part, ImageLockModeRead, PixelFormat32bppPARGB, &second), WrongState);
  const std::uint32_t white = 0xFFFFFFFF;
  std::memcpy(static_cast<char*>(data.Scan0) + data.Stride + 4, &white, 4);
  EXPECT_EQ(bitmap.UnlockBits(&data), Ok);
  EXPECT_EQ(bitmap.UnlockBits(&data), WrongState);
  EXPECT_THAT(Letters(bitmap), ElementsAre("+++++", "+++++", "+++++", "++.++"));
  const Rect bad[] = {
      {-1, 0, 2, 2}, {0, 0, 6, 1}, {4, 3, 2, 1}, {0, 0, 0, 1}, {2147483647, 0, 2, 1}};
  for (const Rect& rect : bad) {
    EXPECT_EQ(bitmap.LockBits(&rect, ImageLockModeRead, PixelFormat32bppPARGB, &data),
              InvalidParameter);
  }
  EXPECT_EQ(bitmap.LockBits(nullptr, ImageLockModeRead, 0, &data), UnknownImageFormat);
  EXPECT_EQ(bitmap.LockBits(nullptr, 0, PixelFormat32bppPARGB, &data), InvalidParameter);
}

TEST(Bitmap, APartIsCopiedOutAndBack) {
  Bitmap bitmap(5, 4);
  const Rect part(2, 1, 3, 3);  // up to the last pixel
  std::vector<std::uint32_t> written(9);
  for (std::uint32_t i = 0; i < 9; ++i) written[i] = 0xFF000000 | i;
  BitmapData rows;
  rows.Height = 3;
  rows.Stride = 12;
  rows.Scan0 = written.data();
  BitmapData data;
  ASSERT_EQ(bitmap.LockBits(&part, ImageLockModeWrite, PixelFormat32bppPARGB, &data), Ok);
  CopyGdiBitmapData(data, rows);
  bitmap.UnlockBits(&data);

  std::vector<std::uint32_t> read(9);
  rows.Scan0 = read.data();
  ASSERT_EQ(bitmap.LockBits(&part, ImageLockModeRead, PixelFormat32bppPARGB, &data), Ok);
  CopyGdiBitmapData(rows, data);
  std::memset(data.Scan0, 0x7F, 4);
  bitmap.UnlockBits(&data);
  EXPECT_EQ(read, written);
  ASSERT_EQ(bitmap.LockBits(nullptr, ImageLockModeRead, PixelFormat32bppPARGB, &data), Ok);
  EXPECT_EQ(PixelAt(data, 2, 1), 0xFF000000u) << "what is locked for reading is not put back";
  EXPECT_EQ(PixelAt(data, 1, 1), 0u);
  EXPECT_EQ(PixelAt(data, 4, 3), 0xFF000008u);
  bitmap.UnlockBits(&data);
}

TEST(Bitmap, AFileHoldsEveryPixel) {
  const TemporaryFolder folder;
  // Wide enough that its data fill several chunks: noise does not compress.
  Bitmap bitmap(300, 200);
  BitmapData data;
  ASSERT_EQ(bitmap.LockBits(nullptr, ImageLockModeWrite, PixelFormat32bppPARGB, &data), Ok);
  std::uint32_t noise = 1;
  for (std::size_t i = 0; i < 300 * 200; ++i) {
    noise = noise * 1664525 + 1013904223;
    // Half the pixels are opaque, in runs, and a few are no valid colours at their alpha.
    const std::uint32_t pixel = i / 20 % 2 ? noise | 0xFF000000 : noise >> 8 & 0x7F7F7F7F;
    const std::uint32_t alpha = pixel >> 24;
    const auto part = [&](int shift) { return std::min(pixel >> shift & 0xFF, alpha) << shift; };
    const std::uint32_t valid = alpha << 24 | part(16) | part(8) | part(0);
    std::memcpy(static_cast<char*>(data.Scan0) + 4 * i, &valid, 4);
  }
  const std::string path = folder.Path("noise.png");
  const std::string peer = folder.Path("peer.png");
  cairo_surface_t* const image = cairo_image_surface_create_for_data(
      static_cast<unsigned char*>(data.Scan0), CAIRO_FORMAT_ARGB32, 300, 200, data.Stride);
  ASSERT_EQ(cairo_surface_write_to_png(image, peer.c_str()), CAIRO_STATUS_SUCCESS);
  cairo_surface_destroy(image);
  ASSERT_EQ(bitmap.UnlockBits(&data), Ok);
  GUID png;
  ASSERT_EQ(GetEncoderClsid(L"image/png", &png), 0);
  ASSERT_EQ(bitmap.Save(AtoW(path), &png), Ok);
  EXPECT_EQ(testing::ComparePictures(path, peer).largest, 0);
}

TEST(Bitmap, AFailureToSaveLeavesWhatWasThere) {
  const TemporaryFolder folder;
  Bitmap bitmap(3, 3);
  GUID png;
  ASSERT_EQ(GetEncoderClsid(L"image/png", &png), 0);
  GUID other = png;
  ++other.Data1;
  const std::string path = folder.Path("a.png");
  std::ofstream(path) << "old";
  EXPECT_EQ(bitmap.Save(AtoW(path), &other), UnknownImageFormat);
  EXPECT_EQ(bitmap.Save(AtoW(path), nullptr), InvalidParameter);
  EXPECT_EQ(bitmap.Save(nullptr, &png), InvalidParameter);
  EXPECT_EQ(bitmap.Save(AtoW(folder.Path("none/a.png")), &png), Win32Error);
  EXPECT_EQ(errno, ENOENT);
  EXPECT_EQ(bitmap.GetLastStatus(), Win32Error);
  EXPECT_EQ(std::filesystem::file_size(path), 3u);
  EXPECT_EQ(bitmap.Save(AtoW(path), &png), Ok);
  EXPECT_EQ(bitmap.Save(AtoW(folder.Path("Grün.png")), &png), Ok);
  EXPECT_EQ(testing::ComparePictures(path, folder.Path("Grün.png")).count, 0u);
}

}  // namespace
}  // namespace vlm
