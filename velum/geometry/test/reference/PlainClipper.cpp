#include <velum/geometry/test/reference/PlainClipper.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <list>
#include <map>
#include <set>

namespace vlm::reference {
namespace {

constexpr double kEpsilon = 2.220446049250313e-16;
constexpr double kLargest = std::numeric_limits<double>::max();

enum Side { kLeft, kRight };
enum Level { kAbove, kBelow };
enum Type { kClip, kSubject };
enum BundleState { kUnbundled, kBundleHead, kBundleTail };
enum Horizontal { kNone, kBottom, kTop };
enum VertexClass {
  kNul = 0,
  kEmx = 1,
  kEli = 2,
  kTed = 3,
  kEri = 4,
  kRed = 5,
  kImm = 6,
  kImn = 7,
  kEmn = 8,
  kEmm = 9,
  kLed = 10,
  kIli = 11,
  kBed = 12,
  kIri = 13,
  kImx = 14,
  kFul = 15,
};

constexpr int kInternal = 2;
constexpr int kBroken = 25;

void Require(bool holds, int code = kBroken) {
  if (!holds) throw PlainError(code);
}

// A contour under construction, whose vertices are the first chain, or a strip, which has two.
struct Output {
  bool active = true;
  bool hole = false;
  std::list<PlainVertex> chain[2];
  Output* proxy = this;

  std::size_t Count() const { return chain[kLeft].size() + chain[kRight].size(); }
};

struct Edge {
  PlainVertex bot;
  PlainVertex top;
  double xb;
  double xt = 0;
  double dx;
  Type type;
  int bundle[2][2] = {};  // by level and type
  int bside[2] = {};      // by type
  BundleState bstate[2] = {};
  Output* outp[2] = {};  // by level
  Edge* succ = nullptr;

  bool HasFlagAbove() const { return bundle[kAbove][kClip] || bundle[kAbove][kSubject]; }
  double XAt(double y) const { return bot.x + dx * (y - bot.y); }
};

struct Crossing {
  Edge* edge[2];
  PlainVertex point;  // y from the beam's bottom
};

bool AreEqual(double a, double b) { return std::fabs(a - b) <= kEpsilon; }

class Sweep {
 public:
  Sweep(PlainOperation operation, const PlainPolygon& subject, const PlainPolygon& clip)
      : operation_(operation), subject_(subject), clip_(clip) {}
  Sweep(const Sweep&) = delete;
  Sweep& operator=(const Sweep&) = delete;
  virtual ~Sweep() = default;

  // False if the result is empty and nothing was swept.
  bool Run();

 protected:
  virtual void BeginScanLine() = 0;
  virtual void AtVertex(VertexClass vertexClass, Edge& edge) = 0;
  virtual void AtCrossing(VertexClass vertexClass, Edge& e0, Edge& e1, PlainVertex point) = 0;
  // Where two edges cross, as a share of the way up the beam.
  virtual double CrossingShare(double r) const { return r; }

  double yb_ = 0;
  double yt_ = 0;
  std::vector<Edge*> active_;  // the active edge table
  std::list<Output> outputs_;

 private:
  void RejectContours(std::vector<bool>& useSubject, std::vector<bool>& useClip) const;
  void AddMinima(const PlainVertices& contour, Type type);
  void AddBound(const PlainVertices& kept, std::size_t start, bool forward, Type type);
  void InsertBound(Edge* bound);
  void Bundle();
  void ClassifyVertices();
  void ClassifyVertex(Edge& edge, int parity[2], Horizontal horizontal[2]);
  void RemoveEnded();
  void FindCrossings();
  void ProcessCrossings();
  void ProcessCrossing(const Crossing& crossing);
  bool AreNeighbours(const Crossing& crossing) const;
  void SwapBundles(const Crossing& crossing);
  void PrepareNextBeam();
  std::size_t PlaceOf(const Edge* edge) const;
  std::size_t BundleStart(std::size_t place) const;
  bool Combine(bool clip, bool subject) const;

  PlainOperation operation_;
  const PlainPolygon& subject_;
  const PlainPolygon& clip_;
  std::deque<Edge> edges_;
  std::set<double> scanLines_;
  std::map<double, std::vector<Edge*>> minima_;
  std::list<Crossing> crossings_;
};

struct Bounds {
  double xMin = kLargest, yMin = kLargest, xMax = -kLargest, yMax = -kLargest;

  explicit Bounds(const PlainContour& contour) {
    for (const PlainVertex& v : contour.vertices) {
      xMin = std::min(xMin, v.x);
      yMin = std::min(yMin, v.y);
      xMax = std::max(xMax, v.x);
      yMax = std::max(yMax, v.y);
    }
  }
  bool Overlaps(const Bounds& b) const {
    return xMax >= b.xMin && xMin <= b.xMax && yMax >= b.yMin && yMin <= b.yMax;
  }
};

void RequireFinite(const PlainPolygon& polygon) {
  for (const PlainContour& contour : polygon) {
    for (const PlainVertex& v : contour.vertices) {
      Require(std::isfinite(v.x) && std::isfinite(v.y), kInternal);
    }
  }
}

bool Sweep::Run() {
  // What is not finite has no place on a scan line.
  RequireFinite(subject_);
  RequireFinite(clip_);
  if (subject_.empty() && clip_.empty()) return false;
  if (subject_.empty() && (operation_ == kIntersection || operation_ == kDifference)) return false;
  if (clip_.empty() && operation_ == kIntersection) return false;
  std::vector<bool> useSubject(subject_.size(), true);
  std::vector<bool> useClip(clip_.size(), true);
  if ((operation_ == kIntersection || operation_ == kDifference) && !subject_.empty() &&
      !clip_.empty()) {
    RejectContours(useSubject, useClip);
  }
  for (std::size_t i = 0; i < subject_.size(); ++i) {
    if (useSubject[i]) AddMinima(subject_[i].vertices, kSubject);
  }
  for (std::size_t i = 0; i < clip_.size(); ++i) {
    if (useClip[i]) AddMinima(clip_[i].vertices, kClip);
  }
  if (minima_.empty()) return false;
  for (auto line = scanLines_.begin(); line != scanLines_.end();) {
    yb_ = *line;
    ++line;
    const bool hasBeam = line != scanLines_.end();
    if (hasBeam) yt_ = *line;
    if (!minima_.empty() && minima_.begin()->first == yb_) {
      for (Edge* bound : minima_.begin()->second) InsertBound(bound);
      minima_.erase(minima_.begin());
    }
    Require(!active_.empty(), kInternal);
    Bundle();
    ClassifyVertices();
    RemoveEnded();
    if (!hasBeam) break;
    FindCrossings();
    ProcessCrossings();
    PrepareNextBeam();
  }
  return true;
}

void Sweep::RejectContours(std::vector<bool>& useSubject, std::vector<bool>& useClip) const {
  std::fill(useClip.begin(), useClip.end(), false);
  for (std::size_t s = 0; s < subject_.size(); ++s) {
    bool overlaps = false;
    for (std::size_t c = 0; c < clip_.size(); ++c) {
      if (!Bounds(subject_[s]).Overlaps(Bounds(clip_[c]))) continue;
      overlaps = true;
      useClip[c] = true;
    }
    if (operation_ == kIntersection) useSubject[s] = overlaps;
  }
}

void Sweep::AddMinima(const PlainVertices& contour, Type type) {
  const std::size_t n = contour.size();
  PlainVertices kept;
  for (std::size_t i = 0; i < n; ++i) {
    const double y = contour[i].y;
    if (contour[(i + n - 1) % n].y == y && contour[(i + 1) % n].y == y) continue;
    kept.push_back(contour[i]);
    scanLines_.insert(y);
  }
  const std::size_t k = kept.size();
  for (std::size_t i = 0; i < k; ++i) {
    const double prev = kept[(i + k - 1) % k].y;
    const double next = kept[(i + 1) % k].y;
    if (prev >= kept[i].y && next > kept[i].y) AddBound(kept, i, true, type);
  }
  for (std::size_t i = 0; i < k; ++i) {
    const double prev = kept[(i + k - 1) % k].y;
    const double next = kept[(i + 1) % k].y;
    if (prev > kept[i].y && next >= kept[i].y) AddBound(kept, i, false, type);
  }
}

void Sweep::AddBound(const PlainVertices& kept, std::size_t start, bool forward, Type type) {
  const std::size_t k = kept.size();
  Edge* bound = nullptr;
  Edge* last = nullptr;
  std::size_t i = start;
  for (;;) {
    const std::size_t next = forward ? (i + 1) % k : (i + k - 1) % k;
    if (!(kept[next].y > kept[i].y)) break;
    Edge edge{.bot = kept[i],
              .top = kept[next],
              .xb = kept[i].x,
              .dx = (kept[next].x - kept[i].x) / (kept[next].y - kept[i].y),
              .type = type};
    edge.bside[kClip] = operation_ == kDifference ? kRight : kLeft;
    edges_.push_back(edge);
    (last ? last->succ : bound) = &edges_.back();
    last = &edges_.back();
    i = next;
  }
  // Ascending by x, then by slope; of two that are equal the later one goes behind.
  std::vector<Edge*>& bounds = minima_[bound->bot.y];
  auto place = bounds.begin();
  while (place != bounds.end() &&
         !(bound->bot.x < (*place)->bot.x ||
           (bound->bot.x == (*place)->bot.x && bound->dx < (*place)->dx))) {
    ++place;
  }
  bounds.insert(place, bound);
}

void Sweep::InsertBound(Edge* bound) {
  auto place = active_.begin();
  while (place != active_.end() &&
         !((*place)->xb > bound->xb || ((*place)->xb == bound->xb && (*place)->dx > bound->dx))) {
    ++place;
  }
  active_.insert(place, bound);
}

void Sweep::Bundle() {
  Edge* e = nullptr;
  for (Edge* edge : active_) {
    edge->bundle[kAbove][edge->type] = edge->top.y != yb_;
    edge->bundle[kAbove][!edge->type] = 0;
    edge->bstate[kAbove] = kUnbundled;
    if (e && edge->bundle[kAbove][edge->type] && AreEqual(e->xb, edge->xb) &&
        AreEqual(e->dx, edge->dx) && e->top.y != yb_) {
      edge->bundle[kAbove][edge->type] ^= e->bundle[kAbove][edge->type];
      edge->bundle[kAbove][!edge->type] = e->bundle[kAbove][!edge->type];
      edge->bstate[kAbove] = kBundleHead;
      e->bundle[kAbove][kClip] = 0;
      e->bundle[kAbove][kSubject] = 0;
      e->bstate[kAbove] = kBundleTail;
    }
    e = edge;
  }
}

bool Sweep::Combine(bool clip, bool subject) const {
  switch (operation_) {
    case kXor:
      return clip != subject;
    case kUnion:
      return clip || subject;
    default:
      return clip && subject;
  }
}

void Sweep::ClassifyVertices() {
  BeginScanLine();
  int parity[2] = {kLeft, kLeft};
  if (operation_ == kDifference) parity[kClip] = kRight;
  Horizontal horizontal[2] = {kNone, kNone};
  for (std::size_t i = 0; i < active_.size(); ++i) {
    ClassifyVertex(*active_[i], parity, horizontal);
  }
}

void Sweep::ClassifyVertex(Edge& edge, int parity[2], Horizontal horizontal[2]) {
  static constexpr Horizontal kNextState[3][6] = {
      {kBottom, kTop, kTop, kBottom, kNone, kNone},
      {kNone, kNone, kNone, kNone, kTop, kTop},
      {kNone, kNone, kNone, kNone, kBottom, kBottom},
  };
  int exists[2];
  for (int t : {kClip, kSubject}) {
    exists[t] = edge.bundle[kAbove][t] + 2 * edge.bundle[kBelow][t];
  }
  if (!exists[kClip] && !exists[kSubject]) return;
  for (int t : {kClip, kSubject}) edge.bside[t] = parity[t];

  const bool pC = parity[kClip], pS = parity[kSubject];
  const bool hC = horizontal[kClip] != kNone, hS = horizontal[kSubject] != kNone;
  const bool aC = edge.bundle[kAbove][kClip], aS = edge.bundle[kAbove][kSubject];
  const bool bC = edge.bundle[kBelow][kClip], bS = edge.bundle[kBelow][kSubject];
  const bool eC = exists[kClip], eS = exists[kSubject];
  bool contributing = false;
  switch (operation_) {
    case kDifference:
    case kIntersection:
      contributing = (eC && (pS || hS)) || (eS && (pC || hC)) || (eC && eS && pC == pS);
      break;
    case kXor:
      contributing = eC || eS;
      break;
    case kUnion:
      contributing = (eC && (!pS || hS)) || (eS && (!pC || hC)) || (eC && eS && pC == pS);
      break;
  }
  const bool br = Combine(pC, pS);
  const bool bl = Combine(pC ^ aC, pS ^ aS);
  const bool tr = Combine(pC ^ hC, pS ^ hS);
  const bool tl = Combine(pC ^ hC ^ bC, pS ^ hS ^ bS);

  for (int t : {kClip, kSubject}) parity[t] ^= edge.bundle[kAbove][t];
  for (int t : {kClip, kSubject}) {
    if (!exists[t]) continue;
    const int column = (exists[t] - 1) * 2 + parity[t];
    Require(column >= 0 && column < 6);
    horizontal[t] = kNextState[horizontal[t]][column];
  }
  if (contributing) AtVertex(static_cast<VertexClass>(tr + 2 * tl + 4 * br + 8 * bl), edge);
}

void Sweep::RemoveEnded() {
  for (std::size_t i = 0; i < active_.size();) {
    Edge& edge = *active_[i];
    if (edge.top.y != yb_) {
      edge.xt = edge.top.y == yt_ ? edge.top.x : edge.XAt(yt_);
      ++i;
      continue;
    }
    if (edge.bstate[kBelow] == kBundleHead && i > 0 &&
        active_[i - 1]->bstate[kBelow] == kBundleTail) {
      Edge& before = *active_[i - 1];
      before.outp[kBelow] = edge.outp[kBelow];
      const bool hasTail = i > 1 && active_[i - 2]->bstate[kBelow] == kBundleTail;
      before.bstate[kBelow] = hasTail ? kBundleHead : kUnbundled;
    }
    active_.erase(active_.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

void Sweep::FindCrossings() {
  const double dy = yt_ - yb_;
  struct Sorted {
    Edge* edge;
    double xb, xt, dx;
  };
  std::vector<Sorted> table;
  for (Edge* edge : active_) {
    if (edge->bstate[kAbove] != kBundleHead && !edge->HasFlagAbove()) continue;
    std::size_t place = table.size();
    for (; place > 0; --place) {
      const Sorted& st = table[place - 1];
      const double den = (st.xt - st.xb) - (edge->xt - edge->xb);
      if (st.xt <= edge->xt || st.dx == edge->dx || std::fabs(den) <= kEpsilon) break;
      const double r = CrossingShare((edge->xb - st.xb) / den);
      const Crossing crossing{{st.edge, edge}, {st.xb + r * (st.xt - st.xb), r * dy}};
      // One that overflowed has no place among the others.
      Require(std::isfinite(crossing.point.x) && std::isfinite(crossing.point.y));
      const auto behind = std::find_if(crossings_.begin(), crossings_.end(),
                                       [&](const auto& c) { return c.point.y > crossing.point.y; });
      crossings_.insert(behind, crossing);
    }
    table.insert(table.begin() + static_cast<std::ptrdiff_t>(place),
                 Sorted{edge, edge->xb, edge->xt, edge->dx});
  }
}

std::size_t Sweep::PlaceOf(const Edge* edge) const {
  return static_cast<std::size_t>(std::find(active_.begin(), active_.end(), edge) -
                                  active_.begin());
}

// The place of the first of the edges that go with the one at `place`.
std::size_t Sweep::BundleStart(std::size_t place) const {
  if (active_[place]->bstate[kAbove] != kBundleHead) return place;
  while (place > 0 && active_[place - 1]->bstate[kAbove] == kBundleTail) --place;
  return place;
}

bool Sweep::AreNeighbours(const Crossing& crossing) const {
  const std::size_t start = BundleStart(PlaceOf(crossing.edge[1]));
  return start > 0 && active_[start - 1] == crossing.edge[0];
}

void Sweep::ProcessCrossings() {
  // Where three edges meet in a point, rounding puts their crossings out of order. One whose edges
  // are not neighbours yet waits until others have made them so: else edges would change places
  // that others stand between.
  while (!crossings_.empty()) {
    const auto ready = std::find_if(crossings_.begin(), crossings_.end(),
                                    [this](const Crossing& c) { return AreNeighbours(c); });
    Require(ready != crossings_.end());
    const Crossing crossing = *ready;
    crossings_.erase(ready);
    // Only edges that bound something make output, but all must change places: else bundles that
    // cancelled would stay out of order.
    if (crossing.edge[0]->HasFlagAbove() && crossing.edge[1]->HasFlagAbove()) {
      ProcessCrossing(crossing);
    }
    SwapBundles(crossing);
  }
}

void Sweep::ProcessCrossing(const Crossing& crossing) {
  Edge& e0 = *crossing.edge[0];
  Edge& e1 = *crossing.edge[1];
  const PlainVertex point{crossing.point.x, crossing.point.y + yb_};
  bool in[2];
  for (int t : {kClip, kSubject}) {
    const bool has0 = e0.bundle[kAbove][t], has1 = e1.bundle[kAbove][t];
    in[t] = (has0 && !e0.bside[t]) || (has1 && e1.bside[t]) ||
            (!has0 && !has1 && e0.bside[t] && e1.bside[t]);
  }
  const bool inC = in[kClip], inS = in[kSubject];
  const bool e0C = e0.bundle[kAbove][kClip], e0S = e0.bundle[kAbove][kSubject];
  const bool e1C = e1.bundle[kAbove][kClip], e1S = e1.bundle[kAbove][kSubject];
  const bool tr = Combine(inC, inS);
  const bool tl = Combine(inC ^ e1C, inS ^ e1S);
  const bool br = Combine(inC ^ e0C, inS ^ e0S);
  const bool bl = Combine(inC ^ e1C ^ e0C, inS ^ e1S ^ e0S);
  AtCrossing(static_cast<VertexClass>(tr + 2 * tl + 4 * br + 8 * bl), e0, e1, point);
  for (int t : {kClip, kSubject}) {
    if (e0.bundle[kAbove][t]) e1.bside[t] = !e1.bside[t];
    if (e1.bundle[kAbove][t]) e0.bside[t] = !e0.bside[t];
  }
}

void Sweep::SwapBundles(const Crossing& crossing) {
  const std::size_t middle = BundleStart(PlaceOf(crossing.edge[1]));
  const auto at = [this](std::size_t i) {
    return active_.begin() + static_cast<std::ptrdiff_t>(i);
  };
  std::rotate(at(BundleStart(middle - 1)), at(middle), at(PlaceOf(crossing.edge[1]) + 1));
}

void Sweep::PrepareNextBeam() {
  for (Edge*& place : active_) {
    Edge& edge = *place;
    Edge& next = edge.top.y == yt_ && edge.succ ? *edge.succ : edge;
    next.outp[kBelow] = edge.outp[kAbove];
    next.bstate[kBelow] = edge.bstate[kAbove];
    for (int t : {kClip, kSubject}) next.bundle[kBelow][t] = edge.bundle[kAbove][t];
    if (&next == &edge) edge.xb = edge.xt;
    next.outp[kAbove] = nullptr;
    place = &next;
  }
}

class ContourSweep : public Sweep {
 public:
  using Sweep::Sweep;

  PlainPolygon Result() const {
    PlainPolygon result;
    for (const Output& output : outputs_) {
      if (!output.active || output.proxy->Count() <= 2) continue;
      const auto& chain = output.proxy->chain[kLeft];
      result.push_back({PlainVertices(chain.rbegin(), chain.rend()), output.proxy->hole});
    }
    return result;
  }

 private:
  void BeginScanLine() override {
    px_ = -kLargest;
    cf_ = nullptr;
  }
  void AtVertex(VertexClass vertexClass, Edge& edge) override;
  void AtCrossing(VertexClass vertexClass, Edge& e0, Edge& e1, PlainVertex point) override;

  static void Add(Side side, Output* output, PlainVertex v) {
    Require(output);
    auto& chain = output->proxy->chain[kLeft];
    chain.insert(side == kLeft ? chain.begin() : chain.end(), v);
  }
  void AddLeft(Output* output, PlainVertex v) { Add(kLeft, output, v); }
  void AddRight(Output* output, PlainVertex v) { Add(kRight, output, v); }
  void Merge(Side side, Output* p, Output* q);
  void AddMinimum(Edge& edge, PlainVertex v) {
    outputs_.emplace_front();
    outputs_.front().chain[kLeft].push_back(v);
    edge.outp[kAbove] = &outputs_.front();
  }
  bool Moved(const Edge& edge) {
    const bool moved = edge.xb != px_;
    px_ = edge.xb;
    return moved;
  }

  double px_ = 0;
  Output* cf_ = nullptr;
};

void ContourSweep::Merge(Side side, Output* p, Output* q) {
  Require(p && q);
  Output* const from = p->proxy;
  Output* const to = q->proxy;
  to->hole = side == kLeft;
  if (from == to) return;
  auto& chain = to->chain[kLeft];
  chain.splice(side == kLeft ? chain.begin() : chain.end(), from->chain[kLeft]);
  for (Output& output : outputs_) {
    if (output.proxy != from) continue;
    output.active = false;
    output.proxy = to;
  }
}

void ContourSweep::AtVertex(VertexClass vertexClass, Edge& edge) {
  Output*& above = edge.outp[kAbove];
  Output*& below = edge.outp[kBelow];
  const PlainVertex v{edge.xb, yb_};
  switch (vertexClass) {
    case kEmx:
      if (Moved(edge)) AddLeft(cf_, v);
      Merge(kRight, cf_, below);
      cf_ = nullptr;
      break;
    case kEli:
      AddLeft(below, v);
      px_ = edge.xb;
      cf_ = below;
      break;
    case kEri:
      if (Moved(edge)) AddRight(cf_, v);
      above = cf_;
      cf_ = nullptr;
      break;
    case kRed:
      if (edge.bot.y == yb_) AddRight(below, v);
      above = below;
      px_ = edge.xb;
      break;
    case kImm:
      if (Moved(edge)) AddRight(cf_, v);
      Merge(kLeft, cf_, below);
      below = nullptr;
      AddMinimum(edge, v);
      cf_ = above;
      break;
    case kImn:
    case kEmn:
      AddMinimum(edge, v);
      px_ = edge.xb;
      cf_ = above;
      break;
    case kEmm:
      if (Moved(edge)) AddLeft(cf_, v);
      Merge(kRight, cf_, below);
      below = nullptr;
      AddMinimum(edge, v);
      cf_ = above;
      break;
    case kLed:
      if (edge.bot.y == yb_) AddLeft(below, v);
      above = below;
      px_ = edge.xb;
      break;
    case kIli:
      if (Moved(edge)) AddLeft(cf_, v);
      above = cf_;
      cf_ = nullptr;
      break;
    case kIri:
      AddRight(below, v);
      px_ = edge.xb;
      cf_ = below;
      below = nullptr;
      break;
    case kImx:
      if (Moved(edge)) AddRight(cf_, v);
      Merge(kLeft, cf_, below);
      cf_ = nullptr;
      below = nullptr;
      break;
    default:
      break;
  }
}

void ContourSweep::AtCrossing(VertexClass vertexClass, Edge& e0, Edge& e1, PlainVertex point) {
  Output*& above0 = e0.outp[kAbove];
  Output*& above1 = e1.outp[kAbove];
  Output* const p = above0;
  Output* const q = above1;
  const auto set = [&](Output* first, Output* second) {
    above0 = first;
    above1 = second;
  };
  const auto addMinimum = [&] {
    AddMinimum(e0, point);
    above1 = above0;
  };
  switch (vertexClass) {
    case kEmn:
    case kImn:
      addMinimum();
      break;
    case kEri:
      if (!p) break;
      AddRight(p, point);
      set(nullptr, p);
      break;
    case kEli:
      if (!q) break;
      AddLeft(q, point);
      set(q, nullptr);
      break;
    case kEmx:
      if (!p || !q) break;
      AddLeft(p, point);
      Merge(kRight, p, q);
      set(nullptr, nullptr);
      break;
    case kIli:
      if (!p) break;
      AddLeft(p, point);
      set(nullptr, p);
      break;
    case kIri:
      if (!q) break;
      AddRight(q, point);
      set(q, nullptr);
      break;
    case kImx:
      if (!p || !q) break;
      AddRight(p, point);
      Merge(kLeft, p, q);
      set(nullptr, nullptr);
      break;
    case kImm:
      if (!p || !q) break;
      AddRight(p, point);
      Merge(kLeft, p, q);
      addMinimum();
      break;
    case kEmm:
      if (!p || !q) break;
      AddLeft(p, point);
      Merge(kRight, p, q);
      addMinimum();
      break;
    default:
      break;
  }
}

class StripSweep : public Sweep {
 public:
  using Sweep::Sweep;

  PlainStrips Result() const;

 private:
  // Two edges that nearly coincide may be out of order by rounding, and then seem to cross outside
  // of the beam. Contours bear that, since the point is on both edges. Chains of strips would be
  // folded back by it.
  double CrossingShare(double r) const override { return std::min(1.0, std::max(0.0, r)); }
  void BeginScanLine() override {
    cf_ = nullptr;
    cft_ = kNul;
  }
  void AtVertex(VertexClass vertexClass, Edge& edge) override;
  void AtCrossing(VertexClass vertexClass, Edge& e0, Edge& e1, PlainVertex point) override;
  void SplitAtInnerMinimum();

  static void Add(const Edge& edge, Level level, Side side, PlainVertex v) {
    Require(edge.outp[level]);
    edge.outp[level]->chain[side].push_back(v);
  }
  static void AddLeft(const Edge& edge, PlainVertex v) { Add(edge, kAbove, kLeft, v); }
  static void AddRight(const Edge& edge, PlainVertex v) { Add(edge, kAbove, kRight, v); }
  void NewStrip(Edge& edge, PlainVertex v) {
    outputs_.emplace_back();
    edge.outp[kAbove] = &outputs_.back();
    AddLeft(edge, v);
  }
  Edge& Current() const {
    Require(cf_);
    return *cf_;
  }
  // The nearest edge on one side of `edge` that has an output.
  Edge& Nearest(const Edge& edge, int step) const {
    auto place = static_cast<std::ptrdiff_t>(std::find(active_.begin(), active_.end(), &edge) -
                                             active_.begin());
    do {
      place += step;
      Require(place >= 0 && place < static_cast<std::ptrdiff_t>(active_.size()));
    } while (!active_[static_cast<std::size_t>(place)]->outp[kAbove]);
    return *active_[static_cast<std::size_t>(place)];
  }

  Edge* cf_ = nullptr;
  VertexClass cft_ = kNul;
};

// Ends the strip whose left side is the current edge, which went on upwards, and begins another.
void StripSweep::SplitAtInnerMinimum() {
  Edge& cf = Current();
  if (cft_ != kLed) return;
  if (cf.bot.y != yb_) Add(cf, kBelow, kLeft, {cf.xb, yb_});
  NewStrip(cf, {cf.xb, yb_});
}

void StripSweep::AtVertex(VertexClass vertexClass, Edge& edge) {
  const PlainVertex v{edge.xb, yb_};
  Output*& above = edge.outp[kAbove];
  switch (vertexClass) {
    case kEmx: {
      Current();
      // A tip whose x is that of the current edge is lost unless the strip has that vertex already.
      Require(edge.outp[kBelow] && !edge.outp[kBelow]->chain[kLeft].empty());
      if (edge.outp[kBelow]->chain[kLeft].back() != v) Add(edge, kBelow, kRight, v);
      above = nullptr;
      cf_ = nullptr;
      break;
    }
    case kEli:
      Add(edge, kBelow, kLeft, v);
      above = nullptr;
      cf_ = &edge;
      break;
    case kEri:
      above = Current().outp[kAbove];
      if (edge.xb != cf_->xb) Add(edge, kAbove, kRight, v);
      cf_ = nullptr;
      break;
    case kRed:
      above = Current().outp[kAbove];
      if (cft_ == kLed) {
        if (cf_->bot.y == yb_) {
          Add(edge, kBelow, kRight, v);
        } else if (edge.bot.y == yb_) {
          Add(*cf_, kBelow, kLeft, {cf_->xb, yb_});
          Add(edge, kBelow, kRight, v);
        }
      } else {
        Add(edge, kBelow, kRight, v);
        Add(edge, kAbove, kRight, v);
      }
      cf_ = nullptr;
      break;
    case kImm:
      Add(edge, kBelow, kLeft, v);
      above = Current().outp[kAbove];
      if (edge.xb != cf_->xb) Add(*cf_, kAbove, kRight, v);
      cf_ = &edge;
      break;
    case kImn:
      SplitAtInnerMinimum();
      above = Current().outp[kAbove];
      Add(edge, kAbove, kRight, v);
      break;
    case kEmn:
      NewStrip(edge, v);
      cf_ = &edge;
      break;
    case kEmm:
      Add(edge, kBelow, kRight, v);
      above = nullptr;
      NewStrip(edge, v);
      cf_ = &edge;
      break;
    case kLed:
      if (edge.bot.y == yb_) Add(edge, kBelow, kLeft, v);
      above = edge.outp[kBelow];
      cf_ = &edge;
      cft_ = kLed;
      break;
    case kIli:
      NewStrip(edge, v);
      cf_ = &edge;
      cft_ = kIli;
      break;
    case kIri:
      SplitAtInnerMinimum();
      Add(edge, kBelow, kRight, v);
      above = nullptr;
      break;
    case kImx:
      Add(edge, kBelow, kLeft, v);
      above = nullptr;
      cft_ = kImx;
      break;
    default:
      break;
  }
}

void StripSweep::AtCrossing(VertexClass vertexClass, Edge& e0, Edge& e1, PlainVertex point) {
  Output*& above0 = e0.outp[kAbove];
  Output*& above1 = e1.outp[kAbove];
  const bool both = above0 && above1;
  const auto at = [&](const Edge& edge) { return PlainVertex{edge.XAt(point.y), point.y}; };
  switch (vertexClass) {
    case kEmn:
      NewStrip(e1, point);
      above0 = above1;
      break;
    case kEri: {
      if (!above0) break;
      Edge& p = Nearest(e0, -1);
      AddLeft(p, at(p));
      AddRight(e0, point);
      above1 = above0;
      above0 = nullptr;
      break;
    }
    case kEli: {
      if (!above1) break;
      Edge& n = Nearest(e1, 1);
      AddLeft(e1, point);
      AddRight(n, at(n));
      above0 = above1;
      above1 = nullptr;
      break;
    }
    case kEmx:
      if (!both) break;
      AddLeft(e0, point);
      above0 = above1 = nullptr;
      break;
    case kImn: {
      Edge& p = Nearest(e0, -1);
      Edge& n = Nearest(e1, 1);
      AddLeft(p, at(p));
      AddRight(n, at(n));
      NewStrip(p, at(p));
      above1 = p.outp[kAbove];
      AddRight(e1, point);
      NewStrip(e0, point);
      n.outp[kAbove] = above0;
      AddRight(n, at(n));
      break;
    }
    case kIli: {
      if (!above0) break;
      Edge& n = Nearest(e1, 1);
      AddLeft(e0, point);
      AddRight(n, at(n));
      above1 = above0;
      above0 = nullptr;
      break;
    }
    case kIri: {
      if (!above1) break;
      Edge& p = Nearest(e0, -1);
      AddRight(e1, point);
      AddLeft(p, at(p));
      above0 = above1;
      above1 = nullptr;
      break;
    }
    case kImx: {
      if (!both) break;
      AddRight(e0, point);
      AddLeft(e1, point);
      above0 = above1 = nullptr;
      Edge& p = Nearest(e0, -1);
      Edge& n = Nearest(e1, 1);
      AddLeft(p, at(p));
      NewStrip(p, at(p));
      AddRight(n, at(n));
      n.outp[kAbove] = p.outp[kAbove];
      AddRight(n, at(n));
      break;
    }
    case kImm: {
      if (!both) break;
      AddRight(e0, point);
      AddLeft(e1, point);
      Edge& p = Nearest(e0, -1);
      Edge& n = Nearest(e1, 1);
      AddLeft(p, at(p));
      NewStrip(p, at(p));
      AddRight(n, at(n));
      above1 = p.outp[kAbove];
      AddRight(e1, point);
      NewStrip(e0, point);
      n.outp[kAbove] = above0;
      AddRight(n, at(n));
      break;
    }
    case kEmm:
      if (!both) break;
      AddLeft(e0, point);
      NewStrip(e1, point);
      above0 = above1;
      break;
    default:
      break;
  }
}

PlainStrips StripSweep::Result() const {
  PlainStrips result;
  for (const Output& output : outputs_) {
    if (output.Count() <= 2) continue;
    PlainVertices strip;
    auto left = output.chain[kLeft].begin();
    auto right = output.chain[kRight].begin();
    while (strip.size() < output.Count()) {
      if (left != output.chain[kLeft].end()) strip.push_back(*left++);
      if (right != output.chain[kRight].end()) strip.push_back(*right++);
    }
    result.push_back(strip);
  }
  return result;
}

}  // namespace

PlainPolygon PlainClip(PlainOperation operation, const PlainPolygon& subject,
                       const PlainPolygon& clip) {
  ContourSweep sweep(operation, subject, clip);
  return sweep.Run() ? sweep.Result() : PlainPolygon();
}

PlainStrips PlainStripClip(PlainOperation operation, const PlainPolygon& subject,
                           const PlainPolygon& clip) {
  StripSweep sweep(operation, subject, clip);
  return sweep.Run() ? sweep.Result() : PlainStrips();
}

}  // namespace vlm::reference
