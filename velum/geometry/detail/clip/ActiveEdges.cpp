#include <velum/geometry/detail/clip/ActiveEdges.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace vlm::detail {
namespace {

constexpr char kLabel[] = "edge table creation";

// The bits below a place.
std::uint64_t Below(Index place) noexcept {
  return place == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << place) - 1;
}

// Most blocks have no edges that are joined, and many none of one of the polygons.
void InsertBit(std::uint64_t& bits, Index place, bool bit) noexcept {
  if (bits != 0) {
    const std::uint64_t below = bits & Below(place);
    bits = below | (bits - below) << 1;
  }
  bits |= std::uint64_t{bit} << place;
}

void RemoveBit(std::uint64_t& bits, Index place) noexcept {
  if (bits != 0) bits = (bits & Below(place)) | (bits >> 1 & ~Below(place));
}

void SetBit(std::uint64_t& bits, Index place, bool bit) noexcept {
  bits = (bits & ~(std::uint64_t{1} << place)) | std::uint64_t{bit} << place;
}

TypeMask TypesOf(std::uint64_t clip, std::uint64_t subject) noexcept {
  return static_cast<TypeMask>(__builtin_parityll(clip) * kClipBit +
                               __builtin_parityll(subject) * kSubjectBit);
}
static_assert((kClipBit | kSubjectBit) == 3);

// Eight summaries at once.
constexpr std::size_t kWord = 8;

std::uint64_t WordOf(const std::uint8_t* summaries) noexcept {
  std::uint64_t word;
  std::memcpy(&word, summaries, kWord);
  return word;
}

bool AllHave(const std::uint8_t* summaries, std::uint8_t bit) noexcept {
  const std::uint64_t bits = 0x0101010101010101 * bit;
  return (WordOf(summaries) & bits) == bits;
}

}  // namespace

ActiveEdges::ActiveEdges() noexcept
    : edges_(kLabel),
      freeEdges_(kLabel),
      blocks_(kLabel),
      freeBlocks_(kLabel),
      directory_(kLabel),
      summaries_(kLabel) {}

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
  Link(place, edge);
  edges_[edge].alive = true;
}

void ActiveEdges::Remove(Index edge) noexcept {
  Unlink(edge);
  edges_[edge].alive = false;
  freeEdges_.Push(edge);
}

void ActiveEdges::Link(Index place, Index edge) {
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
  (place == kNone ? first_ : edges_[place].next) = edge;
  if (next != kNone) edges_[next].previous = edge;
}

void ActiveEdges::Unlink(Index edge) noexcept {
  ActiveEdge& it = edges_[edge];
  (it.previous == kNone ? first_ : edges_[it.previous].next) = it.next;
  if (it.next != kNone) edges_[it.next].previous = it.previous;
  TakeFromBlock(it.block, edge);
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
  ActiveEdge& added = edges_[edge];
  added.block = block;
  InsertBit(it.joined, place, added.joined);
  InsertBit(it.same, place, added.same);
  InsertBit(it.clip, place, added.type == kClipBit);
  InsertBit(it.subject, place, added.type == kSubjectBit);
  Summarize(it, summaries_[it.rank] ^ added.type);
}

void ActiveEdges::TakeFromBlock(Index block, Index edge) noexcept {
  Block& it = blocks_[block];
  const Index place = PlaceIn(it, edge);
  std::copy(it.edges + place + 1, it.edges + it.count, it.edges + place);
  it.edges[--it.count] = kNone;
  for (std::uint64_t* bits : {&it.joined, &it.same, &it.clip, &it.subject}) RemoveBit(*bits, place);
  if (it.count > 0) {
    Summarize(it, summaries_[it.rank] ^ edges_[edge].type);
    return;
  }
  for (std::size_t i = it.rank + 1; i < directory_.size(); ++i) {
    blocks_[directory_[i]].rank = static_cast<Index>(i - 1);
    directory_[i - 1] = directory_[i];
    summaries_[i - 1] = summaries_[i];
  }
  directory_.Pop();
  summaries_.Pop();
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
  summaries_.Push(0);
  for (std::size_t i = directory_.size() - 1; i > rank; --i) {
    summaries_[i] = summaries_[i - 1];
    directory_[i] = directory_[i - 1];
    blocks_[directory_[i]].rank = static_cast<Index>(i);
  }
  directory_[rank] = block;
  summaries_[rank] = 0;
  blocks_[block] = {};
  blocks_[block].rank = rank;
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
  for (const auto bits : {&Block::joined, &Block::same, &Block::clip, &Block::subject}) {
    upper.*bits = lower.*bits >> lower.count;
    lower.*bits &= lower.All();
  }
  Summarize(lower, TypesOf(lower.clip, lower.subject));
  Summarize(upper, TypesOf(upper.clip, upper.subject));
}

void ActiveEdges::Summarize(const Block& block, int types) noexcept {
  const std::uint64_t all = block.All();
  summaries_[block.rank] =
      static_cast<Summary>((types & kTypes) | (block.joined == all ? kAllJoined : 0) |
                           (block.same == all ? kAllSame : 0));
}

void ActiveEdges::Join(Index edge, bool joined, bool same) noexcept {
  ActiveEdge& it = edges_[edge];
  if (it.previous != kNone) edges_[it.previous].tail = joined;
  it.joined = joined;
  it.same = same;
  Block& block = blocks_[it.block];
  const Index place = PlaceIn(block, edge);
  SetBit(block.joined, place, joined);
  SetBit(block.same, place, same);
  Summarize(block, summaries_[block.rank]);
}

Index ActiveEdges::FarFirst(Index edge) const noexcept {
  const Block* block = &blocks_[edges_[edge].block];
  std::uint64_t firsts = ~block->joined & Below(PlaceIn(*block, edge) + 1);
  if (firsts == 0) {
    // The first edge of all is not joined.
    std::size_t rank = block->rank;
    while (rank >= kWord && AllHave(summaries_.begin() + rank - kWord, kAllJoined)) rank -= kWord;
    do {
      --rank;
    } while (summaries_[rank] & kAllJoined);
    block = &blocks_[directory_[rank]];
    firsts = ~block->joined & block->All();
  }
  return block->edges[63 - std::countl_zero(firsts)];
}

Index ActiveEdges::FarLast(Index edge, std::uint64_t Block::*chain, Summary all) const noexcept {
  const Block* block = &blocks_[edges_[edge].block];
  std::uint64_t firsts = ~(block->*chain) & block->All() & ~Below(PlaceIn(*block, edge) + 1);
  if (firsts == 0) {
    std::size_t rank = block->rank + 1;
    const std::size_t ranks = directory_.size();
    while (rank + kWord <= ranks && AllHave(summaries_.begin() + rank, all)) rank += kWord;
    while (rank < ranks && (summaries_[rank] & all)) ++rank;
    if (rank == ranks) {
      const Block& last = blocks_[directory_[ranks - 1]];
      return last.edges[last.count - 1];
    }
    block = &blocks_[directory_[rank]];
    firsts = ~(block->*chain) & block->All();
  }
  return edges_[block->edges[std::countr_zero(firsts)]].previous;
}

TypeMask ActiveEdges::TypesOfBundle(Index head) const noexcept {
  TypeMask types = 0;
  for (int i = 0; i < kSteps; ++i) {
    types ^= edges_[head].type;
    if (!edges_[head].joined) return types;
    head = edges_[head].previous;
  }
  const Index first = FarFirst(head);
  const Block& from = blocks_[edges_[first].block];
  const Block& to = blocks_[edges_[head].block];
  std::uint64_t firstBits = ~Below(PlaceIn(from, first));
  const std::uint64_t lastBits = Below(PlaceIn(to, head) + 1);
  if (&from == &to) {
    firstBits &= lastBits;
    return static_cast<TypeMask>(types ^ TypesOf(from.clip & firstBits, from.subject & firstBits));
  }
  std::uint64_t words = TypesOf(from.clip & firstBits, from.subject & firstBits);
  words ^= TypesOf(to.clip & lastBits, to.subject & lastBits);
  std::size_t rank = from.rank + 1;
  for (; rank + kWord <= to.rank; rank += kWord) words ^= WordOf(summaries_.begin() + rank);
  for (; rank < to.rank; ++rank) words ^= summaries_[rank];
  words ^= words >> 32;
  words ^= words >> 16;
  words ^= words >> 8;
  return static_cast<TypeMask>(types ^ (words & kTypes));
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
      // What is the same as the one before it is no further to the right.
      if (next != kNone && edges_[next].same) {
        place = FarLast(next, &Block::same, kAllSame);
        next = edges_[place].next;
      }
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

// Of bundles of one edge each.
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
  Block& blockOfRight = blocks_[b.block];
  const Index place = PlaceIn(blockOfLeft, left);
  // The right edge comes next: in the same block, or as the first of the next one.
  const Index placeOfRight = a.block == b.block ? place + 1 : 0;
  blockOfLeft.edges[place] = right;
  blockOfRight.edges[placeOfRight] = left;
  if (a.type != b.type) {
    for (const auto bits : {&Block::clip, &Block::subject}) {
      blockOfLeft.*bits ^= std::uint64_t{1} << place;
      blockOfRight.*bits ^= std::uint64_t{1} << placeOfRight;
    }
  }
  if (a.block == b.block) return;
  const int types = a.type ^ b.type;
  Summarize(blockOfLeft, summaries_[blockOfLeft.rank] ^ types);
  Summarize(blockOfRight, summaries_[blockOfRight.rank] ^ types);
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

void ActiveEdges::Exchange(Index left, Index right) {
  if (!edges_[left].joined && !edges_[right].joined) {
    ExchangeEdges(left, right);
    return;
  }
  // The bundle that ends first, in step, wanders.
  const Index rightFirst = edges_[left].next;
  Index leftFirst = left;
  Index at = rightFirst;
  while (edges_[leftFirst].joined && at != right) {
    leftFirst = edges_[leftFirst].previous;
    at = edges_[at].next;
  }
  const auto move = [&](Index edge, Index place) {
    Unlink(edge);
    Link(place, edge);
    Wake(edge);
  };
  if (!edges_[leftFirst].joined) {
    for (Index edge = left;; edge = at) {
      at = edges_[edge].previous;
      move(edge, right);
      if (edge == leftFirst) return;
    }
  }
  Index place = edges_[FarFirst(leftFirst)].previous;
  for (Index edge = rightFirst;; edge = at) {
    at = edges_[edge].next;
    move(edge, place);
    place = edge;
    if (edge == right) return;
  }
}

}  // namespace vlm::detail
