#pragma once

/// \file
/// Glyphs as polygons, and what makes them.
///
///     struct Flattener : vlm::PolygonalGlyphBuilder {
///       explicit Flattener(const vlm::CSystemFaceInfo& faces) : PolygonalGlyphBuilder(faces) {}
///       std::unique_ptr<vlm::PolygonalGlyph> DoBuildGlyph(unsigned int face,
///                                                         unsigned short code) const override;
///     };

#include <velum/core/Api.h>
#include <velum/fonts/Forward.h>
#include <velum/geometry/Vec2.h>

#include <memory>
#include <vector>

namespace vlm {

/// The geometry of a glyph, in a form that its builder and its user agree on: a value.
class VELUM_API PolygonalGlyph {
 public:
  /// An empty glyph of the code `index`.
  explicit PolygonalGlyph(unsigned short index) noexcept;
  /// A glyph of its own.
  PolygonalGlyph(const PolygonalGlyph& other);
  /// Takes all of another glyph, its code too.
  PolygonalGlyph& operator=(const PolygonalGlyph& other);
  ~PolygonalGlyph();

  /// The code.
  [[nodiscard]] unsigned short Index() const noexcept { return index_; }
  /// How many vertices each part has, for example each contour.
  [[nodiscard]] const std::vector<unsigned int>& Counts() const noexcept { return counts_; }
  /// The vertices of all parts, one part after the other.
  [[nodiscard]] const std::vector<Vec2d>& Vertices() const noexcept { return vertices_; }
  /// The bytes of the vertices; nothing else counts.
  [[nodiscard]] unsigned int ByteSize() const noexcept {
    return static_cast<unsigned int>(vertices_.size() * sizeof(Vec2d));
  }

  /// The counts, to be filled.
  [[nodiscard]] std::vector<unsigned int>& Counts() noexcept { return counts_; }
  /// The vertices, to be filled.
  [[nodiscard]] std::vector<Vec2d>& Vertices() noexcept { return vertices_; }

 private:
  unsigned short index_;
  std::vector<unsigned int> counts_;
  std::vector<Vec2d> vertices_;
};

/// Makes the geometry of glyphs; an application derives from it.
///
/// Threads: those that the derived class allows.
class VELUM_API PolygonalGlyphBuilder {
 public:
  PolygonalGlyphBuilder(const PolygonalGlyphBuilder&) = delete;
  PolygonalGlyphBuilder& operator=(const PolygonalGlyphBuilder&) = delete;
  virtual ~PolygonalGlyphBuilder();

  /// Makes the glyph of a code in the face at an index of the list of faces; null if there is no
  /// such face, if the code lies outside of the face, and if `DoBuildGlyph` gives none.
  [[nodiscard]] std::unique_ptr<PolygonalGlyph> BuildGlyph(unsigned int face,
                                                           unsigned short code) const;

 protected:
  /// A builder for the faces of a list, which outlives it.
  explicit PolygonalGlyphBuilder(const CSystemFaceInfo& faces) noexcept;

  /// Makes a glyph that the face has, with `code` as its index; null if that can't be done.
  [[nodiscard]] virtual std::unique_ptr<PolygonalGlyph> DoBuildGlyph(unsigned int face,
                                                                     unsigned short code) const = 0;

 private:
  friend class PolygonalGlyphCache;

  const CSystemFaceInfo& faces_;
};

}  // namespace vlm
