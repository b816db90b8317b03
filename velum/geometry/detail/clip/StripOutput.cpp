#include <velum/geometry/detail/clip/StripOutput.h>

#include <velum/geometry/detail/GpcAlloc.h>
#include <velum/geometry/detail/clip/ClipErrors.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace vlm::detail {
namespace {

double XAtCrossing(const ActiveEdge& edge, double y) noexcept {
  return edge.bottomX + edge.dx * (y - edge.bottomY);
}

}  // namespace

ActiveEdge& StripOutput::Open(int line) {
  if (open_ == kNone) ThrowBrokenSweep(line);
  return edges_[open_];
}

void StripOutput::AtLine(Index edge, VertexClass vertexClass, double x, double y) {
  ActiveEdge& it = edges_[edge];
  edges_.Wake(edge);
  const Index below = it.outputBelow;
  const auto open = [&] {
    open_ = edge;
    openX_ = x;
  };
  switch (vertexClass) {
    case VertexClass::kExternalMaximum:
      // A tip is still missing unless the left chain has it already; above a left edge it would be
      // lost.
      static_cast<void>(Open(__LINE__));
      if (!LeftEndsAt(below, x, y)) AddRight(below, x, y);
      open_ = kNone;
      break;
    case VertexClass::kExternalLeftIntermediate:
      AddLeft(below, x, y);
      open();
      break;
    case VertexClass::kExternalRightIntermediate:
      it.output = Open(__LINE__).output;
      if (x != openX_) AddRight(it.output, x, y);
      open_ = kNone;
      break;
    case VertexClass::kRightEdge:
      AtRightEdge(it, x, y);
      break;
    case VertexClass::kInternalMaximumAndMinimum:
      AddLeft(below, x, y);
      it.output = Open(__LINE__).output;
      if (x != openX_) AddRight(it.output, x, y);
      open();
      break;
    case VertexClass::kInternalMinimum:
      FinishLeftEdge(y);
      it.output = Open(__LINE__).output;
      AddRight(it.output, x, y);
      break;
    case VertexClass::kExternalMinimum:
      it.output = Begin(x, y);
      open();
      break;
    case VertexClass::kExternalMaximumAndMinimum:
      AddRight(below, x, y);
      it.output = Begin(x, y);
      open();
      break;
    case VertexClass::kLeftEdge:
      if (it.bottomY == y) AddLeft(below, x, y);
      it.output = below;
      open();
      setter_ = vertexClass;
      break;
    case VertexClass::kInternalLeftIntermediate:
      it.output = Begin(x, y);
      open();
      setter_ = vertexClass;
      break;
    case VertexClass::kInternalRightIntermediate:
      FinishLeftEdge(y);
      AddRight(below, x, y);
      break;
    case VertexClass::kInternalMaximum:
      AddLeft(below, x, y);
      setter_ = vertexClass;
      break;
    case VertexClass::kNull:
    case VertexClass::kTopEdge:
    case VertexClass::kBottomEdge:
    case VertexClass::kFull:
      break;
  }
}

void StripOutput::AtRightEdge(ActiveEdge& it, double x, double y) {
  const ActiveEdge& left = Open(__LINE__);
  it.output = left.output;
  if (setter_ != VertexClass::kLeftEdge) {
    AddRight(it.outputBelow, x, y);
    AddRight(it.output, x, y);
  } else if (left.bottomY == y) {
    AddRight(it.outputBelow, x, y);
  } else if (it.bottomY == y) {
    AddLeft(left.outputBelow, openX_, y);
    AddRight(it.outputBelow, x, y);
  }
  open_ = kNone;
}

void StripOutput::FinishLeftEdge(double y) {
  // A left edge that goes on has to begin anew where the inside to its right changes.
  if (setter_ != VertexClass::kLeftEdge) return;
  ActiveEdge& left = Open(__LINE__);
  if (left.bottomY != y) AddLeft(left.outputBelow, openX_, y);
  left.output = Begin(openX_, y);
}

void StripOutput::AtCrossing(Index left, Index right, VertexClass vertexClass, double x, double y) {
  Index& leftOutput = edges_[left].output;
  Index& rightOutput = edges_[right].output;
  edges_.Wake(left);
  edges_.Wake(right);
  const auto add = [&](bool toLeft, const ActiveEdge& edge) {
    const double edgeX = XAtCrossing(edge, y);
    toLeft ? AddLeft(edge.output, edgeX, y) : AddRight(edge.output, edgeX, y);
  };
  switch (vertexClass) {
    case VertexClass::kExternalMinimum:
      leftOutput = rightOutput = Begin(x, y);
      break;
    case VertexClass::kExternalRightIntermediate:
      if (leftOutput == kNone) break;
      add(true, NearestBefore(left));
      AddRight(leftOutput, x, y);
      rightOutput = std::exchange(leftOutput, kNone);
      break;
    case VertexClass::kExternalLeftIntermediate:
      if (rightOutput == kNone) break;
      AddLeft(rightOutput, x, y);
      add(false, NearestBehind(right));
      leftOutput = std::exchange(rightOutput, kNone);
      break;
    case VertexClass::kExternalMaximum:
      if (leftOutput == kNone || rightOutput == kNone) break;
      AddLeft(leftOutput, x, y);
      leftOutput = rightOutput = kNone;
      break;
    case VertexClass::kInternalLeftIntermediate:
      if (leftOutput == kNone) break;
      AddLeft(leftOutput, x, y);
      add(false, NearestBehind(right));
      rightOutput = std::exchange(leftOutput, kNone);
      break;
    case VertexClass::kInternalRightIntermediate:
      if (rightOutput == kNone) break;
      AddRight(rightOutput, x, y);
      add(true, NearestBefore(left));
      leftOutput = std::exchange(rightOutput, kNone);
      break;
    case VertexClass::kExternalMaximumAndMinimum:
      if (leftOutput == kNone || rightOutput == kNone) break;
      AddLeft(leftOutput, x, y);
      leftOutput = rightOutput = Begin(x, y);
      break;
    case VertexClass::kInternalMinimum:
    case VertexClass::kInternalMaximum:
    case VertexClass::kInternalMaximumAndMinimum:
      AtInnerCrossing(left, right, vertexClass, x, y);
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

void StripOutput::AtInnerCrossing(Index left, Index right, VertexClass vertexClass, double x,
                                  double y) {
  ActiveEdge& e0 = edges_[left];
  ActiveEdge& e1 = edges_[right];
  const bool ends = vertexClass != VertexClass::kInternalMinimum;
  const bool begins = vertexClass != VertexClass::kInternalMaximum;
  if (ends) {
    if (e0.output == kNone || e1.output == kNone) return;
    AddRight(e0.output, x, y);
    AddLeft(e1.output, x, y);
    if (!begins) e0.output = e1.output = kNone;
  }
  // The strip between the two neighbours ends; both go on with new ones.
  ActiveEdge& before = NearestBefore(left);
  ActiveEdge& behind = NearestBehind(right);
  const double beforeX = XAtCrossing(before, y);
  const double behindX = XAtCrossing(behind, y);
  AddLeft(before.output, beforeX, y);
  AddRight(behind.output, behindX, y);
  before.output = Begin(beforeX, y);
  if (begins) {
    e1.output = before.output;
    AddRight(e1.output, x, y);
    e0.output = Begin(x, y);
    behind.output = e0.output;
  } else {
    behind.output = before.output;
  }
  AddRight(behind.output, behindX, y);
}

ActiveEdge& StripOutput::NearestBefore(Index edge) {
  const Index before = edges_.PreviousWithOutput(edge);
  if (before == kNone) ThrowBrokenSweep(__LINE__);
  return edges_[before];
}

ActiveEdge& StripOutput::NearestBehind(Index edge) {
  const Index behind = edges_.NextWithOutput(edge);
  if (behind == kNone) ThrowBrokenSweep(__LINE__);
  return edges_[behind];
}

void StripOutput::Append(Chain& chain, double x, double y) {
  vertices_.Push({x, y, kNone});
  const auto vertex = static_cast<Index>(vertices_.size() - 1);
  if (chain.head == kNone) {
    chain.head = vertex;
  } else {
    vertices_[chain.tail].next = vertex;
  }
  chain.tail = vertex;
}

void StripOutput::AddLeft(Index strip, double x, double y) {
  if (strip == kNone) ThrowBrokenSweep(__LINE__);
  Append(strips_[strip].left, x, y);
  ++strips_[strip].count;
}

void StripOutput::AddRight(Index strip, double x, double y) {
  if (strip == kNone) ThrowBrokenSweep(__LINE__);
  Append(strips_[strip].right, x, y);
  ++strips_[strip].count;
}

bool StripOutput::LeftEndsAt(Index strip, double x, double y) const noexcept {
  if (strip == kNone || strips_[strip].left.tail == kNone) return false;
  const Vertex& last = vertices_[strips_[strip].left.tail];
  return last.x == x && last.y == y;
}

Index StripOutput::Begin(double x, double y) {
  strips_.Push({{kNone, kNone}, {kNone, kNone}, 0});
  const auto strip = static_cast<Index>(strips_.size() - 1);
  AddLeft(strip, x, y);
  return strip;
}

void StripOutput::Write(gpc_tristrip& result) const {
  std::size_t count = 0;
  for (const Strip& strip : strips_) count += strip.count > 2;
  result = {};
  if (count == 0) return;
  result.strip = GPCAllocArray<gpc_vertex_list>(__LINE__, "tristrip creation", count);
  for (const Strip& strip : strips_) {
    if (strip.count <= 2) continue;
    auto* vertices = GPCAllocArray<gpc_vertex>(__LINE__, "tristrip vertex creation", strip.count);
    result.strip[result.num_strips++] = {static_cast<std::int32_t>(strip.count), vertices};
    Index left = strip.left.head;
    Index right = strip.right.head;
    while (left != kNone || right != kNone) {
      for (Index* side : {&left, &right}) {
        if (*side == kNone) continue;
        *vertices++ = {vertices_[*side].x, vertices_[*side].y};
        *side = vertices_[*side].next;
      }
    }
  }
}

}  // namespace vlm::detail
