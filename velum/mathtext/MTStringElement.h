#pragma once

/// \file
/// The leaf of a laid-out math text: a run of text in one set of attributes.
///
///     vlm::CMTStringElement label(textIF, "Easting (m)");
///     const double width = label.GetExtentUsingTextIF(textIF);

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <velum/mathtext/Forward.h>
#include <velum/mathtext/MTElement.h>

#include <memory>
#include <vector>

namespace vlm {

/// A run of text in one set of attributes.
///
/// Its box is the device's box of the text's ink, its width the text's advance. See `CMTElement`
/// for ownership, threads and units.
class VELUM_API CMTStringElement : public CMTElement {
 public:
  /// Makes a string with default attributes.
  explicit CMTStringElement(const GString& text);
  /// Makes a string with the attributes of the interface.
  CMTStringElement(CMTTextIF& textIF, const GString& text);
  /// Copies the text, the attributes and the kept measures.
  CMTStringElement(const CMTStringElement& other);
  /// Copies the text, the attributes and the kept measures.
  CMTStringElement& operator=(const CMTStringElement& other);
  ~CMTStringElement() override;

  [[nodiscard]] CMTStringElement* Clone() const override;
  [[nodiscard]] bool empty() const override;
  void clear() override;
  double GetExtentUsingTextIF(CMTTextIF& textIF) const override;
  void InternalDraw(CMTTextIF& textIF, const Vec2d& position) override;
  void FillMTStringElementList(std::vector<std::shared_ptr<CMTStringElement>>& list) const override;
  [[nodiscard]] GString GetSimpleText() const override;
  Box2d GetGenericBBox(CMTTextIF& textIF) const override;

  /// Sets the text and drops the kept measures.
  void SetText(const GString& text);
  /// Gives the text.
  [[nodiscard]] GString GetText() const;

 private:
  GString text_;
};

}  // namespace vlm
