#include <velum/geometry/detail/RingRepair.h>

#include <velum/geometry/detail/Orientation.h>
#include <velum/geometry/detail/RingSweep.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace vlm::detail {

namespace {

// Turns the boundaries of a sweep into rings, and finds for each hole the polygon that it is in.
class RingBuilder {
 public:
  explicit RingBuilder(const RingSweep& sweep)
      : points_(sweep.Points()),
        pieces_(sweep.Pieces()),
        owners_(pieces_.size(), RingSweep::kNone),
        places_(points_.size()) {}

  MultiPolygon2d Build() {
    // The first piece of a way is the lowest one at its least point. With the area below it the way
    // goes round a hole, and the next boundary below belongs to the same area. That one has come
    // before.
    for (std::uint32_t i = 0; i < pieces_.size(); ++i) {
      if (!pieces_[i].isBoundary || owners_[i] != RingSweep::kNone) continue;
      std::uint32_t owner = static_cast<std::uint32_t>(polygons_.size());
      if (pieces_[i].isAreaBelow) {
        owner = owners_[pieces_[i].below];
      } else {
        polygons_.emplace_back();
      }
      Follow(i, owner);
    }
    return std::move(polygons_);
  }

 private:
  // Follows a way back to its start. Where it comes to a point again, what lies between is a ring
  // of its own.
  void Follow(std::uint32_t first, std::uint32_t owner) {
    std::uint32_t piece = first;
    do {
      owners_[piece] = owner;
      const std::uint32_t point =
          pieces_[piece].isAreaBelow ? pieces_[piece].start : pieces_[piece].end;
      if (places_[point] != 0) {
        AddRing(places_[point] - 1, owner);
      }
      way_.push_back(point);
      places_[point] = static_cast<std::uint32_t>(way_.size());
      piece = pieces_[piece].next;
    } while (piece != first);
    AddRing(0, owner);
  }

  // Takes a ring off the end of the way.
  void AddRing(std::size_t start, std::uint32_t owner) {
    Ring2d ring;
    ring.reserve(way_.size() - start + 1);
    for (std::size_t i = start; i < way_.size(); ++i) {
      ring.push_back(points_[way_[i]]);
      places_[way_[i]] = 0;
    }
    way_.resize(start);
    const bool isOuter = RingOrientation(ring.data(), ring.size()) < 0;
    ring.push_back(ring.front());
    RingPolygon2d& polygon = polygons_[owner];
    if (isOuter) {
      polygon.outer() = std::move(ring);
    } else {
      polygon.inners().push_back(std::move(ring));
    }
  }

  const std::vector<Vec2d>& points_;
  const std::vector<RingSweep::Piece>& pieces_;
  std::vector<std::uint32_t> owners_;  // Of each piece the polygon.
  std::vector<std::uint32_t> places_;  // Of each point its place in the way, from 1.
  std::vector<std::uint32_t> way_;
  MultiPolygon2d polygons_;
};

}  // namespace

const MultiPolygon2d& PrepareRings(const MultiPolygon2d& polygons, MultiPolygon2d& repaired) {
  const RingSweep sweep(polygons);
  if (sweep.IsClean()) return polygons;
  repaired = RingBuilder(sweep).Build();
  return repaired;
}

MultiPolygon2d RebuildRings(const MultiPolygon2d& polygons) {
  return RingBuilder(RingSweep(polygons)).Build();
}

}  // namespace vlm::detail
