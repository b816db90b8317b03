#include <velum/geometry/detail/clip/ActiveEdges.h>

#include <algorithm>

namespace vlm::detail {
namespace {

constexpr char kLabel[] = "edge table creation";

}  // namespace

ActiveEdges::ActiveEdges() noexcept
    : edges_(kLabel),
      freeEdges_(kLabel),
      blocks_(kLabel),
      freeBlocks_(kLabel),
      directory_(kLabel) {}

Index ActiveEdges::Create() {
  if (!freeEdges_.empty()) {
    const Index edge = freeEdges_.back();
    freeEdges_.Pop();
    return edge;
  }
  edges_.Push(ActiveEdge{});
  // So that giving a number back needs no memory.
  freeEdges_.Reserve(edges_.Capacity());
  return static_cast<Index>(edges_.size() - 1);
}

void ActiveEdges::InsertBehind(Index place, Index edge) {
  const Index next = place == kNone ? first_ : edges_[place].next;
  if (place != kNone) {
    const Index block = edges_[place].block;
    AddToBlock(block, PlaceIn(blocks_[block], place) + 1, edge);
  } else {
    AddToBlock(next == kNone ? NewBlock(0) : edges_[next].block, 0, edge);
  }
  ActiveEdge& it = edges_[edge];
  it.previous = place;
  it.next = next;
  it.alive = true;
  (place == kNone ? first_ : edges_[place].next) = edge;
  if (next != kNone) edges_[next].previous = edge;
}

void ActiveEdges::Remove(Index edge) noexcept {
  ActiveEdge& it = edges_[edge];
  (it.previous == kNone ? first_ : edges_[it.previous].next) = it.next;
  if (it.next != kNone) edges_[it.next].previous = it.previous;
  it.alive = false;
  TakeFromBlock(it.block, edge);
  freeEdges_.Push(edge);
}

Index ActiveEdges::PlaceIn(const Block& block, Index edge) noexcept {
  // All of it, which takes no longer than to stop.
  Index place = 0;
  for (Index i = 0; i < kBlockSize; ++i) place |= block.edges[i] == edge ? i : 0;
  return place;
}

void ActiveEdges::AddToBlock(Index block, Index place, Index edge) {
  if (blocks_[block].count == kBlockSize) {
    Split(block);
    if (place > blocks_[block].count) {
      place -= blocks_[block].count;
      block = directory_[blocks_[block].rank + 1];
    }
  }
  Block& it = blocks_[block];
  std::copy_backward(it.edges + place, it.edges + it.count, it.edges + it.count + 1);
  it.edges[place] = edge;
  ++it.count;
  edges_[edge].block = block;
}

void ActiveEdges::TakeFromBlock(Index block, Index edge) noexcept {
  Block& it = blocks_[block];
  const Index place = PlaceIn(it, edge);
  std::copy(it.edges + place + 1, it.edges + it.count, it.edges + place);
  it.edges[--it.count] = kNone;
  if (it.count > 0) return;
  for (std::size_t i = it.rank + 1; i < directory_.size(); ++i) {
    blocks_[directory_[i]].rank = static_cast<Index>(i - 1);
    directory_[i - 1] = directory_[i];
  }
  directory_.Pop();
  freeBlocks_.Push(block);
}

Index ActiveEdges::NewBlock(Index rank) {
  Index block;
  if (freeBlocks_.empty()) {
    blocks_.Push({});
    freeBlocks_.Reserve(blocks_.Capacity());
    block = static_cast<Index>(blocks_.size() - 1);
  } else {
    block = freeBlocks_.back();
    freeBlocks_.Pop();
  }
  directory_.Push(block);
  for (std::size_t i = directory_.size() - 1; i > rank; --i) {
    directory_[i] = directory_[i - 1];
    blocks_[directory_[i]].rank = static_cast<Index>(i);
  }
  directory_[rank] = block;
  blocks_[block].count = 0;
  blocks_[block].rank = rank;
  blocks_[block].silent = false;
  std::fill_n(blocks_[block].edges, kBlockSize, kNone);
  return block;
}

void ActiveEdges::Split(Index block) {
  const Index other = NewBlock(blocks_[block].rank + 1);
  Block& lower = blocks_[block];
  Block& upper = blocks_[other];
  lower.count = kBlockSize / 2;
  upper.count = kBlockSize - lower.count;
  for (Index i = 0; i < upper.count; ++i) {
    upper.edges[i] = std::exchange(lower.edges[lower.count + i], kNone);
    edges_[upper.edges[i]].block = other;
  }
}

Index ActiveEdges::FindPlace(double x, double dx, Index line, double y, double margin,
                             Index from) const noexcept {
  Index place = from;
  Index next = from == kNone ? first_ : edges_[from].next;
  const auto walk = [&](int steps) {
    for (int i = 0; i != steps && next != kNone; ++i) {
      const double nextX = XAt(edges_[next], line, y);
      if (nextX > x || (nextX == x && edges_[next].dx > dx)) return true;
      place = next;
      next = edges_[next].next;
    }
    return next == kNone;
  };
  // The bounds of a minimum are often near each other.
  if (walk(from == kNone ? 1 : 4)) return place;
  // On from an edge that is left of x by more than the margin: none before it is right of x.
  const auto countLeft = [&](std::size_t count, const auto& edgeAt) {
    std::size_t low = 0;
    for (std::size_t high = count; low < high;) {
      const std::size_t middle = (low + high) / 2;
      if (XAt(edges_[edgeAt(middle)], line, y) < x - margin) {
        low = middle + 1;
      } else {
        high = middle;
      }
    }
    return low;
  };
  const std::size_t blocks =
      countLeft(directory_.size(), [&](std::size_t i) { return blocks_[directory_[i]].edges[0]; });
  if (blocks > 0) {
    const Block& block = blocks_[directory_[blocks - 1]];
    place = block.edges[countLeft(block.count, [&](std::size_t i) { return block.edges[i]; }) - 1];
    next = edges_[place].next;
  }
  walk(-1);
  return place;
}

void ActiveEdges::ExchangeEdges(Index left, Index right) noexcept {
  ActiveEdge& a = edges_[left];
  ActiveEdge& b = edges_[right];
  a.next = b.next;
  b.previous = a.previous;
  a.previous = right;
  b.next = left;
  if (a.next != kNone) edges_[a.next].previous = left;
  (b.previous == kNone ? first_ : edges_[b.previous].next) = right;
  Block& blockOfLeft = blocks_[a.block];
  const Index place = PlaceIn(blockOfLeft, left);
  blockOfLeft.edges[place] = right;
  // The right edge comes next: in the same block, or as the first of the next one.
  (a.block == b.block ? blockOfLeft.edges[place + 1] : blocks_[b.block].edges[0]) = left;
  if (a.block == b.block) return;
  std::swap(a.block, b.block);
  Wake(left);
  Wake(right);
}

bool ActiveEdges::Silence(Block& block) noexcept {
  if (block.silent) return true;
  for (Index i = 0; i < block.count; ++i) {
    if (edges_[block.edges[i]].output != kNone) return false;
  }
  return block.silent = true;
}

Index ActiveEdges::NextWithOutput(Index edge) noexcept {
  const Index block = edges_[edge].block;
  do {
    edge = edges_[edge].next;
    if (edge == kNone || edges_[edge].output != kNone) return edge;
  } while (edges_[edge].block == block);
  std::size_t rank = blocks_[edges_[edge].block].rank;
  while (Silence(blocks_[directory_[rank]])) {
    if (++rank == directory_.size()) return kNone;
  }
  edge = blocks_[directory_[rank]].edges[0];
  while (edges_[edge].output == kNone) edge = edges_[edge].next;
  return edge;
}

Index ActiveEdges::PreviousWithOutput(Index edge) noexcept {
  const Index block = edges_[edge].block;
  do {
    edge = edges_[edge].previous;
    if (edge == kNone || edges_[edge].output != kNone) return edge;
  } while (edges_[edge].block == block);
  std::size_t rank = blocks_[edges_[edge].block].rank;
  while (Silence(blocks_[directory_[rank]])) {
    if (rank-- == 0) return kNone;
  }
  const Block& loud = blocks_[directory_[rank]];
  edge = loud.edges[loud.count - 1];
  while (edges_[edge].output == kNone) edge = edges_[edge].previous;
  return edge;
}

void ActiveEdges::Sort(ClipArray<PlacedEdge>& edges) const noexcept {
  if (edges.size() < 2) return;
  if (edges.size() == 2) {
    // Mostly two edges that meet.
    if (edges_[edges[0].edge].next == edges[1].edge) return;
    if (edges_[edges[1].edge].next == edges[0].edge) {
      std::swap(edges[0], edges[1]);
      return;
    }
  }
  for (PlacedEdge& it : edges) it.place = PlaceOf(it.edge);
  std::sort(edges.begin(), edges.end(),
            [](const PlacedEdge& a, const PlacedEdge& b) { return a.place < b.place; });
}

void ActiveEdges::Exchange(Index left, Index right) noexcept {
  // Each edge of the left bundle, from its last, wanders behind the right one's last. The blocks
  // stay as they are.
  Index edge = left;
  while (true) {
    const Index previous = edges_[edge].previous;
    Index passed;
    do {
      passed = edges_[edge].next;
      ExchangeEdges(edge, passed);
    } while (passed != right);
    if (!edges_[edge].joined) return;
    edge = previous;
  }
}

}  // namespace vlm::detail
