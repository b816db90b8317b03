#include <testing/RecordingPainter.h>

#include <cmath>
#include <utility>

namespace vlm::testing {

using platform::PaintAlignment;
using platform::PaintBox;
using platform::PaintFont;
using platform::PaintPen;
using platform::PaintPoint;
using platform::PaintResult;

namespace {

// Where something of that size begins, seen from its point.
double Begin(PaintAlignment alignment, double size) {
  if (alignment == PaintAlignment::kNear) return 0;
  return alignment == PaintAlignment::kCentre ? -size / 2 : -size;
}

}  // namespace

PaintResult RecordingPainter::FillRectangle(std::uint32_t argb, const PaintBox& box) {
  Record(PaintedShape::Fill, argb, box);
  return PaintResult::kDone;
}

PaintResult RecordingPainter::DrawRectangle(const PaintPen& pen, const PaintBox& box) {
  Record(PaintedShape::Outline, pen.argb, box);
  return PaintResult::kDone;
}

PaintResult RecordingPainter::DrawLines(const PaintPen& pen, const PaintPoint* points,
                                        std::size_t count) {
  Record(PaintedShape::Lines, pen.argb, {}).points.assign(points, points + count);
  return PaintResult::kDone;
}

PaintResult RecordingPainter::DrawEllipse(const PaintPen& pen, const PaintBox& box) {
  Record(PaintedShape::Ellipse, pen.argb, box);
  return PaintResult::kDone;
}

PaintResult RecordingPainter::FillEllipse(std::uint32_t argb, const PaintBox& box) {
  Record(PaintedShape::Disc, argb, box);
  return PaintResult::kDone;
}

PaintResult RecordingPainter::MeasureText(std::string_view text, const PaintFont& font,
                                          double& width, double& height) {
  width = static_cast<double>(text.size()) * (font.isBold ? kBoldByteWidth : kByteWidth);
  height = font.isBold ? kBoldLineHeight : kLineHeight;
  return PaintResult::kDone;
}

PaintResult RecordingPainter::DrawText(std::string_view text, const PaintFont& font,
                                       const PaintPoint& at, PaintAlignment across,
                                       PaintAlignment down, std::uint32_t argb) {
  PaintBox box{};
  MeasureText(text, font, box.width, box.height);
  box.x = at.x + Begin(across, box.width);
  box.y = at.y + Begin(down, box.height);
  // A quarter to the left takes the right end of a text to the top.
  for (int i = 0; i < quarters_; ++i) {
    box = {box.y, -(box.x + box.width), box.height, box.width};
  }
  box.x += origin_.x;
  box.y += origin_.y;
  PaintedShape& shape =
      Record(quarters_ == 0 ? PaintedShape::Text : PaintedShape::Turned, argb, box);
  shape.text = text;
  shape.isBold = font.isBold;
  return PaintResult::kDone;
}

PaintResult RecordingPainter::Translate(double dx, double dy) {
  for (int i = 0; i < quarters_; ++i) {
    const double before = dx;
    dx = dy;
    dy = -before;
  }
  origin_ = {origin_.x + dx, origin_.y + dy};
  return PaintResult::kDone;
}

PaintResult RecordingPainter::Rotate(double degrees) {
  quarters_ = (quarters_ + 4 - static_cast<int>(std::lround(degrees / 90)) % 4) % 4;
  return PaintResult::kDone;
}

PaintResult RecordingPainter::ResetTransform() {
  origin_ = {};
  quarters_ = 0;
  return PaintResult::kDone;
}

PaintResult RecordingPainter::SetClip(const PaintBox& box) {
  clip_ = {box.x + origin_.x, box.y + origin_.y, box.width, box.height};
  return PaintResult::kDone;
}

PaintResult RecordingPainter::ResetClip() {
  clip_ = {0, 0, -1, -1};
  return PaintResult::kDone;
}

PaintResult RecordingPainter::SetInnerClip(const PaintBox& box) {
  innerClip_ = {box.x + origin_.x, box.y + origin_.y, box.width, box.height};
  return PaintResult::kDone;
}

PaintResult RecordingPainter::ResetInnerClip() {
  innerClip_ = {0, 0, -1, -1};
  return PaintResult::kDone;
}

PaintedShape& RecordingPainter::Record(PaintedShape::Kind kind, std::uint32_t argb,
                                       const PaintBox& box) {
  PaintedShape shape;
  shape.kind = kind;
  shape.argb = argb;
  shape.box = box;
  shape.clip = clip_;
  shape.innerClip = innerClip_;
  return shapes_->emplace_back(std::move(shape));
}

}  // namespace vlm::testing
