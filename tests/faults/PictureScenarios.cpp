#include "Scenarios.h"

#include <velum/colour/ColorTable.h>
#include <velum/colour/Dib.h>
#include <velum/colour/MedianCut.h>
#include <velum/core/ErrorCodes.h>
#include <velum/diagnostics/DrawingContext.h>
#include <velum/diagnostics/GdiPlus.h>
#include <velum/diagnostics/MemDC.h>
#include <velum/diagnostics/SystemInfo.h>
#include <velum/files/File.h>
#include <velum/numerics/DrawStats.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <testing/TemporaryFolder.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vlm::faults {
namespace {

std::string InFolder(const std::string& name) {
  static const testing::TemporaryFolder folder;
  return folder.Path("a picture whose name is too long to stand in a string " + name);
}

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The pixels of a bitmap, or a refusal if something could not be painted on it.
std::string Pixels(Gdiplus::Bitmap& bitmap, const Gdiplus::Graphics& graphics) {
  Gdiplus::BitmapData data;
  const Gdiplus::Rect all(0, 0, static_cast<int>(bitmap.GetWidth()),
                          static_cast<int>(bitmap.GetHeight()));
  if (graphics.GetLastStatus() != Gdiplus::Ok ||
      bitmap.LockBits(&all, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppPARGB, &data) !=
          Gdiplus::Ok) {
    throw Refused();
  }
  std::string pixels(static_cast<const char*>(data.Scan0),
                     static_cast<std::size_t>(data.Stride) * data.Height);
  bitmap.UnlockBits(&data);
  return pixels;
}

CUnivariateStatistics Stats(std::vector<double>& sample) {
  for (int i = 0; i < 60; ++i) sample.push_back(12 + 3 * std::sin(i) + std::cos(5.0 * i));
  CUnivariateStatistics stats;
  Load(stats, sample.begin(), sample.end());
  return stats;
}

const Scenario kScenarios[] = {
    {"ABitmap",
     [] {
       CDib ramp(64, 16, 8, 256);
       CDib framed = ramp;
       framed.GetWritableBits()[0] = 255;
       std::free(framed.CopyToGlobalMem());
       CFile document;
       document.Open();
       framed.Write(document);
       document.SeekToBegin();
       CDib again;
       again.Read(document);
       const std::string path = InFolder("ramp.bmp");
       again.Save(path);
       return Contents(path);
     }},
    {"APalette",
     [] {
       std::vector<ColorCount> colors;
       for (unsigned i = 0; i < 200; ++i) colors.emplace_back(i * 7919 % 0x1000000, i);
       std::vector<RGBQUAD> palette;
       MedianCut(colors, palette, 16);
       return std::to_string(palette.size()) + " " + std::to_string(palette.at(3).rgbRed);
     },
     ERR_OUT_OF_MEMORY},
    {"TheTableOfColours",
     [] {
       unsigned int index = 0;
       const bool isThere = CColorTable::Instance().IndexFromColor("GOLD", index);
       return std::to_string(isThere) + std::to_string(CColorTable::Instance().size()) +
              std::string(64, 'x');
     }},
    {"APaintedBitmap",
     [] {
       Gdiplus::Bitmap bitmap(80, 40);
       if (bitmap.GetLastStatus() != Gdiplus::Ok) throw Refused();
       Gdiplus::Graphics graphics(&bitmap);
       const Gdiplus::SolidBrush brush(Gdiplus::Color(0xFF00FF00));
       const Gdiplus::Pen pen(Gdiplus::Color(0xFFFF0000), 2);
       const Gdiplus::Point points[] = {{0, 0}, {20, 30}, {40, 5}};
       graphics.FillRectangle(&brush, 5, 5, 30, 20);
       graphics.DrawLines(&pen, points, 3);
       graphics.FillEllipse(&brush, 50, 5, 20, 20);
       graphics.SetClip({0, 0, 60, 40});
       const Gdiplus::Font font(L"DejaVu Sans", 9, Gdiplus::FontStyleBold);
       const Gdiplus::StringFormat format;
       graphics.DrawString(L"Depth of the wells in the north", -1, &font, {2, 2}, &format, &brush);
       return Pixels(bitmap, graphics);
     }},
    {"ABitmapOfAContext",
     [] {
       const HDC context = CreateCompatibleDC(nullptr);
       if (!context) throw Refused();
       const HBITMAP bitmap = CreateCompatibleBitmap(context, 20, 20);
       const HPEN pen = CreatePen(PS_DOT, 1, 255);
       bool isDrawn = bitmap && pen;
       if (bitmap && pen) {
         const HBITMAP oldBitmap = SelectObject(context, bitmap);
         const HPEN oldPen = SelectObject(context, pen);
         const POINT points[] = {{0, 0}, {19, 19}};
         isDrawn = Polyline(context, points, 2);
         SelectObject(context, oldPen);
         SelectObject(context, oldBitmap);
       }
       if (bitmap) DeleteObject(bitmap);
       if (pen) DeleteObject(pen);
       DeleteDC(context);
       if (!isDrawn) throw Refused();
       return std::string("drawn");
     }},
    {"AChart",
     [] {
       std::vector<double> sample;
       const CUnivariateStatistics stats = Stats(sample);
       CSystemInfo::GetInstance().DefVariablePitchFace("DejaVu Sans");
       const CDrawStats chart("Thickness of the layers (mm)", 0);
       Gdiplus::Bitmap bitmap(200, 150);
       Gdiplus::Graphics graphics(&bitmap);
       chart.DrawHistogram(graphics, {0, 0, 200, 150}, CDrawStats::kEverything, stats);
       chart.DrawProbabilityPlot(graphics, {0, 0, 200, 150}, CDrawStats::kEverything, stats,
                                 sample.begin(), sample.end());
       return Pixels(bitmap, graphics);
     }},
    {"AChartOnAFile",
     [] {
       std::vector<double> sample;
       const CUnivariateStatistics stats = Stats(sample);
       CSystemInfo::GetInstance().DefVariablePitchFace("DejaVu Sans");
       const CDrawStats chart("Thickness of the layers (mm)", 0);
       const std::string path = InFolder("chart.png");
       std::ofstream(path) << "old";
       chart.DrawHistogram(120, 100, path, CDrawStats::kEverything, stats);
       const std::string picture = Contents(path);
       if (picture == "old") throw Refused();
       return picture;
     }},
};

}  // namespace

std::span<const Scenario> PictureScenarios() { return kScenarios; }

}  // namespace vlm::faults
