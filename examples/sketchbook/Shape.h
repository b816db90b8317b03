#pragma once

/// \file
/// What all shapes of a sketch have in common.
///
///     const vlm::Vec2d place = shape.Center(canvas);
///     shape.SetPlacement(shape.Placement() * vlm::Mat3d::MakeTranslation(vlm::Vec2d(10, 0)));

#include <velum/core/GString.h>
#include <velum/core/TypedObject.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Vec2.h>
#include <examples/sketchbook/Style.h>

#include <memory>
#include <vector>

namespace vlm::sketchbook {

class Canvas;
class Connector;

/// A shape: its name, its style, where it stands, and which connectors hold on to it.
///
/// Has identity; the document owns it. A shape and its connectors lead to each other, a cycle: the
/// connector owns its ends, and the shape knows its connectors by pointers that don't own, so that
/// nothing keeps itself alive. Both are stored.
///
/// Units are points, y grows downwards. A shape is drawn in coordinates of its own, which its
/// placement takes to the page.
class Shape : public CTypedObject {
 public:
  Shape(const Shape&) = delete;
  Shape& operator=(const Shape&) = delete;

  /// The name, which no other shape or style of the document has.
  [[nodiscard]] const GString& Name() const { return name_; }
  /// How it looks; shared with others if the style has a name.
  [[nodiscard]] const std::shared_ptr<vlm::sketchbook::Style>& Style() const { return style_; }
  /// From the shape's coordinates to the page's.
  [[nodiscard]] const Mat3d& Placement() const { return placement_; }
  /// The connectors that end here, in the order in which they came.
  [[nodiscard]] const std::vector<std::weak_ptr<Connector>>& Connectors() const {
    return connectors_;
  }
  /// The middle of its extent, on the page.
  [[nodiscard]] Vec2d Center(const Canvas& canvas) const;
  /// Where a line from the center towards `target` leaves the shape, both on the page. The center
  /// itself if the shape has no inside there.
  [[nodiscard]] Vec2d EdgeTowards(const Vec2d& target, const Canvas& canvas) const;
  /// What kind of shape it is: "circle".
  [[nodiscard]] virtual GString Kind() const = 0;
  /// False for a shape that stands where others put it.
  [[nodiscard]] virtual bool IsPlaced() const { return true; }
  /// What is wrong with its own members, in words; empty if nothing is. What comes from a file may
  /// have anything wrong with it.
  [[nodiscard]] virtual GString Fault() const;
  /// Draws the shape.
  virtual void Draw(Canvas& canvas) const = 0;

  /// Gives it a name.
  void SetName(const GString& name) { name_ = name; }
  /// Gives it another look.
  void SetStyle(std::shared_ptr<vlm::sketchbook::Style> style) { style_ = std::move(style); }
  /// Puts it elsewhere.
  void SetPlacement(const Mat3d& placement) { placement_ = placement; }
  /// Transfers name, style, placement and connectors; a class of shapes adds its own members.
  void Serialize(Archive& archive) override;

  /// The record of this class, the parent of all others.
  [[nodiscard]] static const CTypeInfo* GetClassTypeId() { return &kType; }

 protected:
  Shape() = default;

 private:
  friend class Document;  // which keeps both sides of a connection

  // In the shape's coordinates.
  virtual Box2d Extent(const Canvas& canvas) const = 0;
  // `direction` leads from the middle of the extent; the result as well.
  virtual Vec2d Edge(const Vec2d& halfSize, const Vec2d& direction) const;

  static const CTypeInfo kType;

  GString name_;
  std::shared_ptr<vlm::sketchbook::Style> style_;
  Mat3d placement_;
  std::vector<std::weak_ptr<Connector>> connectors_;
};

}  // namespace vlm::sketchbook
