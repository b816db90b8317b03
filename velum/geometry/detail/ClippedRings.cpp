#include <velum/geometry/detail/ClippedRings.h>

#include <velum/core/ErrorCodes.h>
#include <velum/core/Exception.h>
#include <velum/geometry/detail/ForEachRing.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace vlm::detail {

namespace {

// Rings as the clipper takes them, with vertices of their own.
class Contours {
 public:
  explicit Contours(const MultiPolygon2d& polygons) {
    ForEachRing(polygons, [this](const Ring2d& ring) { Add(ring); });
    gpc_vertex* vertex = vertices_.data();
    for (gpc_vertex_list& list : lists_) {
      list.vertex = vertex;
      vertex += list.num_vertices;
    }
    holes_.resize(lists_.size());
  }

  gpc_polygon Polygon() noexcept {
    return {static_cast<std::int32_t>(lists_.size()), holes_.data(), lists_.data()};
  }

 private:
  void Add(const Ring2d& ring) {
    if (ring.empty()) return;
    for (std::size_t i = 0; i + 1 < ring.size(); ++i) vertices_.push_back({ring[i].x, ring[i].y});
    lists_.push_back({static_cast<std::int32_t>(ring.size() - 1), nullptr});
  }

  std::vector<gpc_vertex> vertices_;
  std::vector<gpc_vertex_list> lists_;
  std::vector<std::int32_t> holes_;
};

Ring2d RingOf(const gpc_vertex_list& contour) {
  Ring2d ring;
  ring.reserve(static_cast<std::size_t>(contour.num_vertices) + 1);
  for (std::int32_t i = 0; i < contour.num_vertices; ++i) {
    ring.push_back(Vec2d(contour.vertex[i].x, contour.vertex[i].y));
  }
  ring.push_back(ring.front());
  return ring;
}

}  // namespace

ClippedRings::ClippedRings(gpc_op operation, const MultiPolygon2d& left,
                           const MultiPolygon2d& right) {
  Contours subject(left);
  Contours clip(right);
  gpc_polygon a = subject.Polygon();
  gpc_polygon b = clip.Polygon();
  try {
    gpc_polygon_clip(operation, &a, &b, &contours_);
    hasResult_ = true;
  } catch (const Exception& error) {
    if (error.GetErrCode() == ERR_OUT_OF_MEMORY) throw std::bad_alloc();
    contours_ = {};
  }
}

ClippedRings::~ClippedRings() { gpc_free_polygon(&contours_); }

MultiPolygon2d ClippedRings::LooseRings() const {
  MultiPolygon2d loose;
  loose.resize(1);
  for (std::int32_t i = 0; i < contours_.num_contours; ++i) {
    Ring2d ring = RingOf(contours_.contour[i]);
    if (contours_.hole[i]) {
      loose.front().inners().push_back(std::move(ring));
    } else {
      loose.emplace_back().outer() = std::move(ring);
    }
  }
  return loose;
}

}  // namespace vlm::detail
