#include <velum/mathtext/MTMetricsTextIF.h>

#include <velum/fonts/SystemFaceInfo.h>
#include <gtest/gtest.h>

namespace vlm {
namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

TEST(CMTMetricsTextIF, BeginsWithTheDefaultsAndTheEmSquareAsHeight) {
  const CMTMetricsTextIF device;
  CSystemFaceInfo& faces = CSystemFaceInfo::GetInstance();
  const int face = faces.Match("Arial", 400, 0, 0, 0, 7, faces.GetFontMatcherFaceTypeFlags());
  EXPECT_EQ(device.GetHeight(), faces.GetFaceInfo(static_cast<unsigned int>(face))->GetEmSize());
  EXPECT_EQ(device.GetColor(), Color4b(0, 0, 0, 255));
  EXPECT_EQ(device.GetFace(), "Arial");
  EXPECT_EQ(device.GetWeight(), 4u);
  EXPECT_EQ(device.GetStyle(), 0u);
  EXPECT_EQ(device.GetCharset(), 1u);
  EXPECT_EQ(device.GetPitch(), 2u);
  EXPECT_EQ(device.GetFamily(), 2u);
  EXPECT_EQ(device.GetHorizAlignment(), 0u);
  EXPECT_EQ(device.GetVertAlignment(), 1u);
  EXPECT_EQ(device.GetHorizJustify(), 1u);
}

TEST(CMTMetricsTextIF, MeasuresWithTheDefaultFaceWhereNoTypeIsAccepted) {
  CSystemFaceInfo& faces = CSystemFaceInfo::GetInstance();
  faces.SetFontMatcherFaceTypeFlags(4);
  CMTMetricsTextIF device;
  Vec2d extent;
  device.GetExtent("Depth", extent);
  EXPECT_EQ(extent.x, faces.GetDefVariablePitchFaceInfo()->CalcEmExtent("Depth"));
  EXPECT_EQ(MathTextToSimpleText("km{\\up40 2}"), "km2");
  faces.SetFontMatcherFaceTypeFlags(65535);
}

// Widths, boxes and tables as fontTools 4.38 reads them from the files of DejaVu 2.37 and
// Liberation 2.1.5.
TEST(CMTMetricsTextIF, MeasuresInUnitsOfTheEmSquareAtAnyHeight) {
  const struct {
    const char* why;
    const char* face;
    unsigned int weight;
    unsigned int style;
    double advance;  // of "fA"
    Box2d box;
  } rows[] = {
      {"normal", "DejaVu Sans", 4, 0, 721 + 1401, Box2d(0, -1901, 721 + 1401, 483)},
      {"below bold", "DejaVu Sans Mono", 7, 0, 2 * 1233, Box2d(0, -1901, 2 * 1233, 483)},
      {"italic reaches beyond its cell", "Liberation Serif", 6, 1 | 4, 569 + 1251,
       Box2d(0, -1825, 569 + 1258, 443)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    CMTMetricsTextIF device;
    device.SetFace(row.face);
    device.SetWeight(row.weight);
    device.SetStyle(row.style);
    for (const double height : {2048.0, 1.0}) {
      device.SetHeight(height);
      Vec2d extent;
      Box2d box;
      device.GetExtent("fA", extent);
      device.GetBounds("fA", box);
      EXPECT_EQ(extent, Vec2d(row.advance, row.box.yRange()));
      EXPECT_EQ(box, row.box);
    }
  }
}

TEST(CMTMetricsTextIF, FillsTheMeasuresOfTheFace) {
  CMTMetricsTextIF device;
  device.SetFace("Liberation Serif");
  device.SetStyle(TEXT_STYLE_ITALIC);
  KQTextIF::_TXTMETRICS metrics{};
  metrics.reserved = 7;
  device.GetMetrics(metrics);
  EXPECT_EQ(metrics.emSquare, 2048u);
  EXPECT_EQ(metrics.height, 1825 + 443);
  EXPECT_EQ(metrics.ascent, 1825);
  EXPECT_EQ(metrics.descent, 443);
  EXPECT_EQ(metrics.internalLeading, 1825 + 443 - 2048);
  EXPECT_EQ(metrics.externalLeading, 87);
  EXPECT_EQ(metrics.aveCharWidth, 1098);
  EXPECT_EQ(metrics.maxCharWidth, 2618);
  EXPECT_EQ(metrics.italicAngle, -163 / 10.0 * kRadiansPerDegree);
  EXPECT_EQ(metrics.simulatedItalicAngle, -15 * kRadiansPerDegree);
  EXPECT_EQ(metrics.minimumPpem, 8);
  EXPECT_EQ(metrics.strikeoutSize, 102);
  EXPECT_EQ(metrics.strikeoutPosition, 530);
  EXPECT_EQ(metrics.underscoreSize, 100);
  EXPECT_EQ(metrics.underscorePosition, -123);
  EXPECT_EQ(metrics.defaultChar, 31);
  EXPECT_EQ(metrics.breakChar, 32);
  EXPECT_EQ(metrics.reserved, 0);
}

TEST(CMTMetricsTextIF, KeepsAStackAndIsSafeAgainstOneRestoreTooMany) {
  CMTMetricsTextIF device;
  device.PreserveState();
  device.SetFace("DejaVu Serif");
  device.SetHorizJustify(3);
  device.PreserveState();
  device.SetHeight(5);
  device.RestoreState();
  EXPECT_EQ(device.GetFace(), "DejaVu Serif");
  EXPECT_NE(device.GetHeight(), 5);
  device.RestoreState();
  device.RestoreState();
  EXPECT_EQ(device.GetFace(), "Arial");
  EXPECT_EQ(device.GetHorizJustify(), 1u);
}

TEST(CMTMetricsTextIF, DrawsNothing) {
  CMTMetricsTextIF device;
  EXPECT_TRUE(device.Draw(Vec2d(1, 2), "text"));
  EXPECT_TRUE(device.DrawLine(Vec2d(1, 2), Vec2d(3, 4)));
}

TEST(MathTextToSimpleText, LeavesTheTextAlone) {
  const struct {
    const char* text;
    const char* simple;
  } rows[] = {
      {"", ""},
      {"{plain} text", "{plain} text"},
      {"km{\\up40 \\fs70 2}", "km2"},
      {"\\b bold\\plain  and\nbelow", "bold and\nbelow"},
      {"a\tb", "ab"},
      {"x\\ssbeg(0,0,left,top) 2\\ssend y", "x2y"},
      {"{\\b open", "open"},
      {"\\b closed}", "*** Math Text Error ***"},
      {"good \\nosuchword(", "*** Math Text Error ***"},
      {"above\n\\ssend below", "*** Math Text Error ***"},
  };
  for (const auto& row : rows) EXPECT_EQ(MathTextToSimpleText(row.text), row.simple) << row.text;
}

}  // namespace
}  // namespace vlm
