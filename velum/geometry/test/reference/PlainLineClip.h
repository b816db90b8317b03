#pragma once

/// \file
/// Clipping of a segment to one simple contour by its crossings, edge by edge, with a ray for each
/// question whether a point is inside: what GLineClipPolygon is held against on outlines where
/// this walk is right.

#include <velum/geometry/Vec2.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace vlm::reference {

class PlainLineClip {
 public:
  struct Entry {
    Vec2d p;
    int flag;
  };

  explicit PlainLineClip(const std::vector<Vec2d>& ring) {
    const std::size_t n = ring.size();
    Edge last{ring[0], ring[1]};
    for (std::size_t i = 1; i < n; ++i) {
      const Vec2d next = ring[(i + 1) % n];
      if ((last.b.x - last.a.x) * (next.y - last.b.y) ==
          (last.b.y - last.a.y) * (next.x - last.b.x)) {
        last.b = next;
      } else {
        edges_.push_back(last);
        last = {ring[i], next};
      }
    }
    edges_.push_back(last);
    for (const Edge& e : edges_) xMin_ = std::min(xMin_, e.a.x);
  }

  std::vector<std::pair<Vec2d, Vec2d>> Clip(Vec2d a, Vec2d b) const {
    if (b < a) std::swap(a, b);
    std::vector<Entry> list{{a, 0}, {b, 0}};
    Cross({a, b}, list);
    std::vector<std::pair<Vec2d, Vec2d>> pieces;
    bool isInside = false;
    std::size_t first = 0;
    for (; first + 1 < list.size(); ++first) {
      if (StateBehind(list[first].p, list[first + 1].p, isInside)) break;
    }
    bool isPending = false;
    for (std::size_t i = first; i + 1 < list.size(); ++i) {
      if (isInside && list[i].p.DistanceSquared(list[i + 1].p) > 1e-10) {
        pieces.emplace_back(list[i].p, list[i + 1].p);
      }
      if (isPending || list[i + 1].flag == 0) {
        isPending = false;
        isInside = !isInside;
      } else {
        isPending = true;
      }
    }
    return pieces;
  }

 private:
  struct Edge {
    Vec2d a;
    Vec2d b;
  };

  static double Cross(const Vec2d& u, const Vec2d& v) { return u.x * v.y - u.y * v.x; }

  static int Where(const Vec2d& a, const Vec2d& b, const Edge& seg) {
    const double c0 = Cross(seg.b - seg.a, a - seg.a);
    const double c1 = Cross(seg.b - seg.a, b - seg.b);
    return c0 == 0 || c1 == 0 ? 0 : (c0 > 0) == (c1 > 0) ? 1 : -1;
  }

  bool IsOn(const Vec2d& p) const {
    return std::any_of(edges_.begin(), edges_.end(), [&](const Edge& e) {
      return p.x >= std::min(e.a.x, e.b.x) && p.x <= std::max(e.a.x, e.b.x) &&
             p.y >= std::min(e.a.y, e.b.y) && p.y <= std::max(e.a.y, e.b.y) &&
             Cross(e.b - e.a, p - e.a) == 0;
    });
  }

  bool IsInside(const Vec2d& p) const {
    if (IsOn(p)) return false;
    std::vector<Entry> list;
    Cross({Vec2d(xMin_ - 2, p.y), p}, list);
    std::size_t count = 0;
    for (std::size_t i = 0; i < list.size(); ++i, ++count) {
      if (list[i].flag == 1 && i + 1 < list.size() && list[i + 1].flag == 1) ++i;
    }
    return count % 2 == 1;
  }

  // The state between two neighbouring entries, told at a point off the contour.
  bool StateBehind(const Vec2d& a, Vec2d b, bool& isInside) const {
    if (!IsOn(a)) {
      isInside = IsInside(a);
      return true;
    }
    while (a.DistanceSquared(b) > 1e-10) {
      const Vec2d middle = (a + b) * 0.5;
      if (!IsOn(middle)) {
        isInside = IsInside(middle);
        return true;
      }
      b = middle;
    }
    return false;
  }

  void Cross(const Edge& seg, std::vector<Entry>& list) const {
    const Vec2d ds = seg.b - seg.a;
    for (std::size_t i = 0; i < edges_.size(); ++i) {
      const Edge& c = edges_[i];
      const Vec2d before = edges_[(i + edges_.size() - 1) % edges_.size()].a;
      const Vec2d behind = edges_[(i + 1) % edges_.size()].b;
      const Vec2d dc = c.b - c.a;
      const Vec2d w = c.a - seg.a;
      const double den = Cross(ds, dc);
      const double tc = ds.y * w.x - ds.x * w.y;
      const double ts = w.x * dc.y - dc.x * w.y;
      if (den == 0) {
        if (tc == 0 && Where(before, behind, seg) <= 0) {
          // The lower end first, whichever way the edge runs.
          const auto [low, high] = std::minmax(c.a, c.b);
          if (high < seg.a || seg.b < low) continue;
          if (seg.a < low) list.push_back({low, 1});
          if (high < seg.b) list.push_back({high, 1});
        }
      } else if (std::min(0.0, den) <= std::min(tc, ts) && std::max(tc, ts) <= std::max(0.0, den)) {
        if (tc == den || ts == den || ts == 0) continue;
        if (tc == 0 && Where(before, c.b, seg) >= 0) continue;
        const Vec2d p(ds.x == 0 ? seg.a.x : c.a.x + dc.x * tc / den,
                      ds.y == 0 ? seg.a.y : c.a.y + dc.y * tc / den);
        list.push_back({p, 0});
      }
    }
    std::sort(list.begin(), list.end(), [](const Entry& a, const Entry& b) { return a.p < b.p; });
  }

  std::vector<Edge> edges_;
  double xMin_ = 1e308;
};

}  // namespace vlm::reference
