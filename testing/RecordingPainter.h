#pragma once

/// \file
/// A painter without a surface: it measures texts by fixed sizes and writes down what is painted.
///
///     auto painter = std::make_unique<vlm::testing::RecordingPainter>();
///     const auto shapes = painter->Shapes();
///     vlm::Gdiplus::Graphics graphics(std::move(painter));
///     chart.DrawBoxPlot(graphics, {0, 0, 100, 20}, stats);
///     EXPECT_EQ(shapes->front().box.width, 50);
///
/// For tests that link the library's objects.

#include <velum/platform/detail/Painting.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::testing {

/// Something that was painted. A value.
struct PaintedShape {
  enum Kind { Fill, Outline, Lines, Ellipse, Disc, Text, Turned };

  Kind kind = Fill;
  std::uint32_t argb = 0;
  platform::PaintBox box{};                  ///< of a text what it covers, turned as it is
  std::vector<platform::PaintPoint> points;  ///< of lines
  std::string text;
  bool isBold = false;             ///< of a text
  platform::PaintBox clip{};       ///< inside of which it shows; of width -1 for no clip
  platform::PaintBox innerClip{};  ///< and inside of which as well
};

/// Measures and records; nothing fails.
///
/// A byte of a text is 6 pixels wide, of a bold one 8; a line is 13 high, a bold one 17. Turns are
/// by quarters to the left. An object with identity, for one thread.
class RecordingPainter : public platform::Painter {
 public:
  static constexpr int kByteWidth = 6;
  static constexpr int kLineHeight = 13;
  static constexpr int kBoldByteWidth = 8;
  static constexpr int kBoldLineHeight = 17;

  /// What has been painted so far and will be, also when the painter has gone.
  [[nodiscard]] std::shared_ptr<const std::vector<PaintedShape>> Shapes() const { return shapes_; }

  platform::PaintResult FillRectangle(std::uint32_t argb, const platform::PaintBox& box) override;
  platform::PaintResult DrawRectangle(const platform::PaintPen& pen,
                                      const platform::PaintBox& box) override;
  platform::PaintResult DrawLines(const platform::PaintPen& pen, const platform::PaintPoint* points,
                                  std::size_t count) override;
  platform::PaintResult DrawEllipse(const platform::PaintPen& pen,
                                    const platform::PaintBox& box) override;
  platform::PaintResult FillEllipse(std::uint32_t argb, const platform::PaintBox& box) override;
  platform::PaintResult MeasureText(std::string_view text, const platform::PaintFont& font,
                                    double& width, double& height) override;
  platform::PaintResult DrawText(std::string_view text, const platform::PaintFont& font,
                                 const platform::PaintPoint& at, platform::PaintAlignment across,
                                 platform::PaintAlignment down, std::uint32_t argb) override;
  platform::PaintResult Translate(double dx, double dy) override;
  platform::PaintResult Rotate(double degrees) override;
  platform::PaintResult ResetTransform() override;
  platform::PaintResult SetClip(const platform::PaintBox& box) override;
  platform::PaintResult ResetClip() override;
  platform::PaintResult SetInnerClip(const platform::PaintBox& box) override;
  platform::PaintResult ResetInnerClip() override;

 private:
  PaintedShape& Record(PaintedShape::Kind kind, std::uint32_t argb, const platform::PaintBox& box);

  std::shared_ptr<std::vector<PaintedShape>> shapes_ =
      std::make_shared<std::vector<PaintedShape>>();
  platform::PaintPoint origin_{};
  int quarters_ = 0;  // to the left
  platform::PaintBox clip_{0, 0, -1, -1};
  platform::PaintBox innerClip_{0, 0, -1, -1};
};

}  // namespace vlm::testing
