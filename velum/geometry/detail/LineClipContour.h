#pragma once

/// \file
/// What GLineClipPolygon keeps of a polygon: its path, and its edges in an order in which those
/// that a segment may meet are found quickly.

#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vlm::detail {

/// The contours of a polygon, ready for lines to be clipped to their inside by even-odd parity.
///
/// The path is one walk through all contours, along return paths from one to the next. Those have
/// no part in clipping: the edges are taken from the contours themselves, each of which is a ring
/// of its own with neighbours of its own.
///
/// Immutable; several threads may clip to it at once.
class LineClipContour {
 public:
  /// A piece of a segment inside the polygon, from the end that comes first by x, then by y.
  struct Piece {
    Vec2d begin;  ///< The end that comes first.
    Vec2d end;    ///< The other one.
  };

  /// A place on a segment where a piece ends.
  struct Crossing {
    Vec2d point;    ///< The place.
    double key;     ///< How far along the segment it is, see `Line`.
    bool isToggle;  ///< Whether inside and outside change places here.

    /// Orders along the segment, and beyond it such that the order never depends on how crossings
    /// were found.
    friend bool operator<(const Crossing& a, const Crossing& b) noexcept {
      if (a.key != b.key) return a.key < b.key;
      if (a.point < b.point || b.point < a.point) return a.point < b.point;
      return a.isToggle < b.isToggle;
    }
  };

  /// A part of a segment along an edge, by keys.
  struct Stretch {
    double low;   ///< Where it begins.
    double high;  ///< Where it ends.
  };

  /// What a segment meets.
  struct Crossings {
    bool beginsInside = false;       ///< Whether the segment's begin is inside.
    std::vector<Crossing> list;      ///< The crossings between its ends, in any order.
    std::vector<Stretch> stretches;  ///< The edges along it, in any order.
  };

  /// Makes the contour of a polygon by its contours, `counts[i]` points each, and by the path
  /// through all of them. The path loses points between two others on one line. Contours lose them
  /// too, and points that are not finite.
  LineClipContour(const std::vector<Vec2d>& path, const std::vector<Vec2d>& points,
                  const std::vector<unsigned>& counts);

  /// Returns the path.
  [[nodiscard]] const std::vector<Vec2d>& GetPath() const noexcept { return path_; }

  /// Replaces `found` by what the segment from `begin` to `end` meets. `begin` comes first by x,
  /// then by y; both are finite.
  void FindCrossings(const Vec2d& begin, const Vec2d& end, Crossings& found) const;
  /// Gives the same by looking at every edge.
  void FindCrossingsPlainly(const Vec2d& begin, const Vec2d& end, Crossings& found) const;

  /// Replaces `pieces` by the parts of a segment that are inside, in the order of their ends;
  /// `found` serves as memory. Pieces end where edges cross the segment, and where one lies along
  /// it with its neighbours on both sides.
  ///
  /// - A part along the boundary at the beginning: outside. Further on it is what the part before
  ///   it is.
  /// - An end that is not finite: nothing.
  void Clip(Vec2d begin, Vec2d end, Crossings& found, std::vector<Piece>& pieces) const;

 private:
  // An edge and the first and last edge of its ring.
  struct Edge {
    Vec2d start;
    Vec2d end;
    std::uint32_t first;
    std::uint32_t last;
  };

  class Line;

  void AddRing(const Vec2d* points, unsigned count);
  void BuildIndex();
  [[nodiscard]] const Edge& Previous(std::size_t i) const noexcept;
  [[nodiscard]] const Edge& Next(std::size_t i) const noexcept;
  void Meet(const Line& line, std::size_t i, Crossings& found) const;
  void MeetAlong(const Line& line, std::size_t i, Crossings& found) const;
  void MeetBlock(const Line& line, std::size_t level, std::size_t block, Crossings& found) const;
  [[nodiscard]] bool PassesOver(const Line& line, std::size_t begin, std::size_t end,
                                bool& isOdd) const noexcept;

  std::vector<Vec2d> path_;
  std::vector<Edge> edges_;
  // Boxes of blocks of consecutive edges; a block of one level is several of the level before it.
  std::vector<std::vector<Box2d>> levels_;
};

}  // namespace vlm::detail
