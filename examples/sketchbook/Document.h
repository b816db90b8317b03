#pragma once

/// \file
/// A sketch: its shapes and the styles that they share.
///
///     vlm::sketchbook::Document sketch;
///     auto circle = std::make_shared<vlm::sketchbook::Ellipse>(vlm::Vec2d(20, 20));
///     circle->SetName("lens");
///     circle->SetStyle(std::make_shared<vlm::sketchbook::Style>());
///     sketch.Insert(circle, sketch.End());

#include <velum/core/GString.h>
#include <velum/core/TypedObject.h>
#include <examples/sketchbook/Shape.h>
#include <examples/sketchbook/Style.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace vlm::sketchbook {

/// Owns the shapes, in the order in which they are drawn, and the styles that have names.
///
/// Has identity. These hold between its operations, and `Fault` tells which one a document from a
/// file breaks:
/// - names are those of one shape or one style;
/// - a style with a name is in the list, one without a name is not;
/// - a connector is known by both its ends, each of which is in the document, and by nobody else.
///
/// Operations leave the document as it was if they throw.
class Document final : public CTypedObject {
 public:
  /// Where a shape stands among others, so that it can come back there.
  struct Place {
    std::size_t inDocument;          ///< among all shapes
    std::size_t inConnectorsOfFrom;  ///< of a connector, among those of its first end
    std::size_t inConnectorsOfTo;    ///< of a connector, among those of its last end
  };

  /// The shapes in the order in which they are drawn.
  [[nodiscard]] const std::vector<std::shared_ptr<Shape>>& Shapes() const { return shapes_; }
  /// The styles that have names, in the order in which they came.
  [[nodiscard]] const std::vector<std::shared_ptr<Style>>& Styles() const { return styles_; }
  /// The shape with this name, or null.
  [[nodiscard]] std::shared_ptr<Shape> FindShape(const GString& name) const;
  /// The style with this name, or null.
  [[nodiscard]] std::shared_ptr<Style> FindStyle(const GString& name) const;
  /// How many shapes have this style.
  [[nodiscard]] std::size_t UsersOf(const Style& style) const;
  /// A name that is still free: `stem`, or `stem` with a number.
  [[nodiscard]] GString FreeName(const GString& stem) const;
  /// What is wrong with the document, in words; empty if nothing is.
  [[nodiscard]] GString Fault() const;

  /// The place in front of all shapes that are there: where a new one, which may be a connector,
  /// goes.
  [[nodiscard]] Place End(const Shape& shape) const;
  /// Puts a shape in its place and, if it is a connector, among those of its ends.
  ///
  /// *Errors*: `Exception` if the shape is not sound, or its name is taken.
  void Insert(std::shared_ptr<Shape> shape, const Place& place);
  /// Takes out a shape to which no connector leads; gives its place.
  ///
  /// Shapes that are put back in the opposite order to that in which they were taken out leave the
  /// document as it was to the last byte.
  Place Remove(const std::shared_ptr<Shape>& shape);
  /// Puts a style that has a name at a place in the list.
  ///
  /// *Errors*: `Exception` if the style is not sound, or its name is taken.
  void Insert(std::shared_ptr<Style> style, std::size_t place);
  /// Takes out a style that no shape has; gives its place.
  std::size_t Remove(const std::shared_ptr<Style>& style);

  /// The record of this class.
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  /// Transfers styles and shapes. The result of reading needs a look at `Fault`.
  void Serialize(Archive& archive) override;

 private:
  void RequireFree(const GString& name) const;

  static const CTypeInfo kType;

  std::vector<std::shared_ptr<Style>> styles_;
  std::vector<std::shared_ptr<Shape>> shapes_;
};

}  // namespace vlm::sketchbook
