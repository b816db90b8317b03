#include <examples/common/GlyphFlattener.h>

#include <velum/fonts/SystemFaceInfo.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace vlm::examples {
namespace {

constexpr double kMostPieces = 64.0;

Vec2d PointOf(const FT_Vector* point) {
  return Vec2d(static_cast<double>(point->x), static_cast<double>(point->y));
}

// Collects the contours of an outline as polygons.
struct Contours {
  explicit Contours(double maxDistance) : tolerance(maxDistance) {}

  // How many chords keep within the tolerance of a curve whose second derivative is at most
  // `bend`: a chord over a step h is off by no more than bend * h * h / 8.
  [[nodiscard]] int Pieces(double bend) const {
    return static_cast<int>(
        std::clamp(std::ceil(std::sqrt(bend / (8.0 * tolerance))), 1.0, kMostPieces));
  }

  void Quadratic(const Vec2d& control, const Vec2d& end) {
    std::vector<Vec2d>& points = contours.back();
    const Vec2d begin = points.back();
    const int pieces = Pieces(2.0 * (begin - control * 2.0 + end).Length());
    for (int i = 1; i < pieces; ++i) {
      const double t = static_cast<double>(i) / pieces;
      const double s = 1.0 - t;
      points.push_back(begin * (s * s) + control * (2.0 * s * t) + end * (t * t));
    }
    points.push_back(end);
  }

  void Cubic(const Vec2d& first, const Vec2d& second, const Vec2d& end) {
    std::vector<Vec2d>& points = contours.back();
    const Vec2d begin = points.back();
    const double bend = 6.0 * std::max((begin - first * 2.0 + second).Length(),
                                       (first - second * 2.0 + end).Length());
    const int pieces = Pieces(bend);
    for (int i = 1; i < pieces; ++i) {
      const double t = static_cast<double>(i) / pieces;
      const double s = 1.0 - t;
      points.push_back(begin * (s * s * s) + first * (3.0 * s * s * t) +
                       second * (3.0 * s * t * t) + end * (t * t * t));
    }
    points.push_back(end);
  }

  double tolerance;
  std::vector<std::vector<Vec2d>> contours;
};

// Nothing may be thrown through FreeType; memory for some points is the only thing that could fail.
int MoveTo(const FT_Vector* to, void* user) noexcept {
  static_cast<Contours*>(user)->contours.push_back({PointOf(to)});
  return 0;
}
int LineTo(const FT_Vector* to, void* user) noexcept {
  static_cast<Contours*>(user)->contours.back().push_back(PointOf(to));
  return 0;
}
int QuadraticTo(const FT_Vector* control, const FT_Vector* to, void* user) noexcept {
  static_cast<Contours*>(user)->Quadratic(PointOf(control), PointOf(to));
  return 0;
}
int CubicTo(const FT_Vector* first, const FT_Vector* second, const FT_Vector* to,
            void* user) noexcept {
  static_cast<Contours*>(user)->Cubic(PointOf(first), PointOf(second), PointOf(to));
  return 0;
}

double Cross(const Vec2d& a, const Vec2d& b) { return a.x * b.y - a.y * b.x; }

double Dot(const Vec2d& a, const Vec2d& b) { return a.x * b.x + a.y * b.y; }

double SignedArea(const std::vector<Vec2d>& points) {
  double twice = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec2d& a = points[i];
    const Vec2d& b = points[(i + 1) % points.size()];
    twice += Cross(a, b);
  }
  return 0.5 * twice;
}

// Where the edges from a to b and from c to d meet, the points b and d left out.
std::optional<Vec2d> MeetingOf(const Vec2d& a, const Vec2d& b, const Vec2d& c, const Vec2d& d) {
  const double toC = Cross(b - a, c - a);
  if (toC == 0.0 && Dot(c - a, c - b) < 0.0) return c;
  const double fromA = Cross(d - c, a - c);
  if (fromA == 0.0 && Dot(a - c, a - d) < 0.0) return a;
  if (toC * Cross(b - a, d - a) >= 0.0) return {};
  const double fromB = Cross(d - c, b - c);
  if (fromA * fromB >= 0.0) return {};
  return a + (b - a) * (fromA / (fromA - fromB));
}

using Contour = std::vector<Vec2d>;

// Takes out the first loop of a contour: what lies between two visits of a point. Empty if the
// contour visits none twice.
Contour TakeLoop(Contour& points) {
  const std::size_t count = points.size();
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = i + 1; j < count; ++j) {
      std::optional<Vec2d> meeting;
      if (points[i] != points[j]) {
        meeting = MeetingOf(points[i], points[(i + 1) % count], points[j], points[(j + 1) % count]);
        if (!meeting) continue;
      }
      const auto begin = points.begin() + static_cast<std::ptrdiff_t>(i) + 1;
      const auto end = points.begin() + static_cast<std::ptrdiff_t>(j) + 1;
      Contour loop(begin, end);
      const auto rest = points.erase(begin, end);
      if (meeting) {
        loop.push_back(*meeting);
        points.insert(rest, *meeting);
      }
      return loop;
    }
  }
  return {};
}

// The loops of a contour, which together wind as it does and don't cross themselves.
std::vector<Contour> LoopsOf(const Contour& contour) {
  constexpr std::size_t kMost = 1000;  // should rounding make ever new crossings
  std::vector<Contour> loops = {contour};
  for (std::size_t at = 0; at < loops.size() && loops.size() < kMost;) {
    Contour loop = TakeLoop(loops[at]);
    if (loop.empty()) {
      ++at;
    } else if (loop.size() > 2) {
      loops.push_back(std::move(loop));
    }
  }
  return loops;
}

// Where there are more of `polygons` than of `others`. The clipper knows the even-odd rule alone,
// under which two strokes that overlap would leave a hole, so areas are kept that are covered once
// at least, twice at least, and so on.
GPolygon MoreOf(const std::vector<GPolygon>& polygons, const std::vector<GPolygon>& others) {
  std::vector<GPolygon> layers;
  for (GPolygon more : polygons) {
    for (GPolygon& layer : layers) {
      GPolygon both = layer;
      both.Intersection(more);
      layer.Union(more);
      more = std::move(both);
    }
    if (more.GetNumContours() > 0) layers.push_back(std::move(more));
  }
  for (const GPolygon& other : others) {
    for (std::size_t i = 0; i < layers.size(); ++i) {
      layers[i].Difference(other);
      if (i + 1 < layers.size()) layers[i].Union(layers[i + 1]);
    }
  }
  return layers.empty() ? GPolygon() : std::move(layers.front());
}

}  // namespace

GPolygon ResolveContours(const std::vector<std::vector<Vec2d>>& contours) {
  std::vector<GPolygon> left;  // those that have what they go around on their left
  std::vector<GPolygon> right;
  for (const Contour& contour : contours) {
    for (const Contour& loop : LoopsOf(contour)) {
      const double area = SignedArea(loop);
      if (area == 0.0) continue;
      (area > 0.0 ? left : right).emplace_back(loop.data(), static_cast<unsigned int>(loop.size()));
    }
  }
  GPolygon area = MoreOf(left, right);
  area.Union(MoreOf(right, left));
  return area;
}

GPolygon FlattenGlyph(const FontFile& font, unsigned int glyph, double tolerance) {
  const FT_Face face = font.Handle();
  if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0 ||
      face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
    return {};
  }
  FT_Outline* outline = &face->glyph->outline;
  Contours collected(tolerance);
  const FT_Outline_Funcs functions{&MoveTo, &LineTo, &QuadraticTo, &CubicTo, 0, 0};
  if (FT_Outline_Decompose(outline, &functions, &collected) != 0) return {};
  return ResolveContours(collected.contours);
}

GlyphFlattener::GlyphFlattener(const CSystemFaceInfo& faces, double tolerance)
    : PolygonalGlyphBuilder(faces), faces_(faces), tolerance_(tolerance) {}

GlyphFlattener::~GlyphFlattener() = default;

std::unique_ptr<PolygonalGlyph> GlyphFlattener::DoBuildGlyph(unsigned int face,
                                                             unsigned short code) const {
  const auto info = faces_.GetFaceInfo(face);
  if (info->GetFaceType() != CFaceInfo::FACE_TYPE_TRUETYPE) return nullptr;
  std::shared_ptr<const FontFile>& file = files_[face];
  if (file == nullptr) file = FontFile::Open(*info);

  auto glyph = std::make_unique<PolygonalGlyph>(code);
  const double unit = static_cast<double>(info->GetEmSize());
  const GPolygon area = FlattenGlyph(*file, file->GlyphOfCode(code), tolerance_ * unit);
  area.GetPolyPolygon(glyph->Vertices(), glyph->Counts(), false);
  return glyph;
}

}  // namespace vlm::examples
