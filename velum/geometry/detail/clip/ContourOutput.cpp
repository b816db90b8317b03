#include <velum/geometry/detail/clip/ContourOutput.h>

#include <velum/geometry/detail/GpcAlloc.h>
#include <velum/geometry/detail/clip/ClipErrors.h>

#include <cstddef>
#include <cstdint>
#include <limits>

namespace vlm::detail {

void ContourOutput::BeginStretch() noexcept {
  open_ = kNone;
  lastX_ = -std::numeric_limits<double>::max();
}

bool ContourOutput::Moved(double x) noexcept {
  if (x == lastX_) return false;
  lastX_ = x;
  return true;
}

void ContourOutput::AtLine(Index edge, VertexClass vertexClass, double x, double y) {
  ActiveEdge& it = edges_[edge];
  const Index below = it.outputBelow;
  switch (vertexClass) {
    case VertexClass::kExternalMaximum:
      AddLeftIfMoved(x, y);
      MergeRight(open_, below);
      open_ = kNone;
      break;
    case VertexClass::kExternalLeftIntermediate:
      AddLeft(below, x, y);
      lastX_ = x;
      open_ = below;
      break;
    case VertexClass::kExternalRightIntermediate:
      AddRightIfMoved(x, y);
      it.output = open_;
      open_ = kNone;
      break;
    case VertexClass::kRightEdge:
      if (it.bottomY == y) AddRight(below, x, y);
      it.output = below;
      lastX_ = x;
      break;
    case VertexClass::kInternalMaximumAndMinimum:
      AddRightIfMoved(x, y);
      MergeLeft(open_, below);
      it.output = open_ = Begin(x, y);
      break;
    case VertexClass::kInternalMinimum:
    case VertexClass::kExternalMinimum:
      it.output = open_ = Begin(x, y);
      lastX_ = x;
      break;
    case VertexClass::kExternalMaximumAndMinimum:
      AddLeftIfMoved(x, y);
      MergeRight(open_, below);
      it.output = open_ = Begin(x, y);
      break;
    case VertexClass::kLeftEdge:
      if (it.bottomY == y) AddLeft(below, x, y);
      it.output = below;
      lastX_ = x;
      break;
    case VertexClass::kInternalLeftIntermediate:
      AddLeftIfMoved(x, y);
      it.output = open_;
      open_ = kNone;
      break;
    case VertexClass::kInternalRightIntermediate:
      AddRight(below, x, y);
      lastX_ = x;
      open_ = below;
      break;
    case VertexClass::kInternalMaximum:
      AddRightIfMoved(x, y);
      MergeLeft(open_, below);
      open_ = kNone;
      break;
    case VertexClass::kNull:
    case VertexClass::kTopEdge:
    case VertexClass::kBottomEdge:
    case VertexClass::kFull:
      break;
  }
}

void ContourOutput::AtBend(Index edge, VertexClass vertexClass, double y) {
  const ActiveEdge& it = edges_[edge];
  if (vertexClass == VertexClass::kLeftEdge) {
    AddLeft(it.output, it.bottomX, y);
  } else if (vertexClass == VertexClass::kRightEdge) {
    AddRight(it.output, it.bottomX, y);
  }
}

void ContourOutput::AtCrossing(Index left, Index right, VertexClass vertexClass, double x,
                               double y) {
  Index& leftOutput = edges_[left].output;
  Index& rightOutput = edges_[right].output;
  const Index p = leftOutput;
  const Index q = rightOutput;
  const bool both = p != kNone && q != kNone;
  switch (vertexClass) {
    case VertexClass::kExternalMinimum:
    case VertexClass::kInternalMinimum:
      leftOutput = rightOutput = Begin(x, y);
      break;
    case VertexClass::kExternalRightIntermediate:
    case VertexClass::kInternalLeftIntermediate:
      if (p == kNone) break;
      if (vertexClass == VertexClass::kInternalLeftIntermediate) {
        AddLeft(p, x, y);
      } else {
        AddRight(p, x, y);
      }
      rightOutput = p;
      leftOutput = kNone;
      break;
    case VertexClass::kExternalLeftIntermediate:
    case VertexClass::kInternalRightIntermediate:
      if (q == kNone) break;
      if (vertexClass == VertexClass::kExternalLeftIntermediate) {
        AddLeft(q, x, y);
      } else {
        AddRight(q, x, y);
      }
      leftOutput = q;
      rightOutput = kNone;
      break;
    case VertexClass::kExternalMaximum:
    case VertexClass::kExternalMaximumAndMinimum:
      if (!both) break;
      AddLeft(p, x, y);
      MergeRight(p, q);
      leftOutput = rightOutput =
          vertexClass == VertexClass::kExternalMaximumAndMinimum ? Begin(x, y) : kNone;
      break;
    case VertexClass::kInternalMaximum:
    case VertexClass::kInternalMaximumAndMinimum:
      if (!both) break;
      AddRight(p, x, y);
      MergeLeft(p, q);
      leftOutput = rightOutput =
          vertexClass == VertexClass::kInternalMaximumAndMinimum ? Begin(x, y) : kNone;
      break;
    case VertexClass::kNull:
    case VertexClass::kTopEdge:
    case VertexClass::kRightEdge:
    case VertexClass::kLeftEdge:
    case VertexClass::kBottomEdge:
    case VertexClass::kFull:
      break;
  }
}

Index ContourOutput::Proxy(Index contour) {
  if (contour == kNone) ThrowBrokenSweep(__LINE__);
  // Each contour on the way comes to stand nearer to its proxy.
  while (contours_[contour].proxy != contour) {
    Index& proxy = contours_[contour].proxy;
    proxy = contours_[proxy].proxy;
    contour = proxy;
  }
  return contour;
}

void ContourOutput::AddLeft(Index contour, double x, double y) {
  Contour& it = contours_[Proxy(contour)];
  vertices_.Push({x, y, it.head});
  it.head = static_cast<Index>(vertices_.size() - 1);
  ++it.count;
}

void ContourOutput::AddRight(Index contour, double x, double y) {
  Contour& it = contours_[Proxy(contour)];
  vertices_.Push({x, y, kNone});
  const auto vertex = static_cast<Index>(vertices_.size() - 1);
  vertices_[it.tail].next = vertex;
  it.tail = vertex;
  ++it.count;
}

void ContourOutput::MergeLeft(Index from, Index into) {
  const Index p = Proxy(from);
  const Index q = Proxy(into);
  contours_[q].hole = true;
  if (p == q) return;
  vertices_[contours_[p].tail].next = contours_[q].head;
  contours_[q].head = contours_[p].head;
  contours_[q].count += contours_[p].count;
  contours_[p].proxy = q;
}

void ContourOutput::MergeRight(Index from, Index into) {
  const Index p = Proxy(from);
  const Index q = Proxy(into);
  contours_[q].hole = false;
  if (p == q) return;
  vertices_[contours_[q].tail].next = contours_[p].head;
  contours_[q].tail = contours_[p].tail;
  contours_[q].count += contours_[p].count;
  contours_[p].proxy = q;
}

Index ContourOutput::Begin(double x, double y) {
  const auto vertex = static_cast<Index>(vertices_.size());
  const auto contour = static_cast<Index>(contours_.size());
  vertices_.Push({x, y, kNone});
  contours_.Push({vertex, vertex, contour, 1, false});
  return contour;
}

void ContourOutput::Write(gpc_polygon& result) const {
  std::size_t count = 0;
  for (std::size_t i = 0; i < contours_.size(); ++i) {
    count += contours_[i].proxy == i && contours_[i].count > 2;
  }
  result = {};
  if (count == 0) return;
  result.contour = GPCAllocArray<gpc_vertex_list>(__LINE__, "contour creation", count);
  result.hole = GPCAllocArray<std::int32_t>(__LINE__, "hole flag table creation", count);
  for (std::size_t i = contours_.size(); i-- > 0;) {
    const Contour& contour = contours_[i];
    if (contour.proxy != i || contour.count <= 2) continue;
    auto* const vertices = GPCAllocArray<gpc_vertex>(__LINE__, "vertex creation", contour.count);
    result.contour[result.num_contours] = {static_cast<std::int32_t>(contour.count), vertices};
    result.hole[result.num_contours++] = contour.hole ? 1 : 0;
    gpc_vertex* place = vertices + contour.count;
    for (Index at = contour.head; at != kNone; at = vertices_[at].next) {
      *--place = {vertices_[at].x, vertices_[at].y};
    }
  }
}

}  // namespace vlm::detail
