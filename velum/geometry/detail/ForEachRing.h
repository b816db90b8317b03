#pragma once

/// \file
/// The rings of a multi-polygon one after the other.
///
///     std::size_t points = 0;
///     ForEachRing(polygons, [&](const Ring2d& ring) { points += ring.size(); });

namespace vlm::detail {

/// Calls `action` with the rings of each polygon, the outer one before the inner ones. They are
/// changed through it where `polygons` may be.
template <class Polygons, class Action>
void ForEachRing(Polygons& polygons, Action action) {
  for (auto& polygon : polygons) {
    action(polygon.outer());
    for (auto& ring : polygon.inners()) action(ring);
  }
}

}  // namespace vlm::detail
