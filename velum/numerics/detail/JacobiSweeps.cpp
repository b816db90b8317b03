#include <velum/numerics/detail/JacobiSweeps.h>

#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace vlm::detail {

namespace {

// So many rotations stay in the second cache beside a pair of panels.
constexpr std::size_t kMostRotations = 8192;

struct Angle {
  double tangent, cosine, sine;
};

// The rotation that makes the element apq zero.
Angle AngleFor(double app, double aqq, double apq) noexcept {
  const double theta = (aqq - app) / (2 * apq);
  const double length = std::hypot(1.0, theta);
  const double t = theta < 0 ? -1 / (length - theta) : 1 / (length + theta);
  const double c = 1 / std::hypot(1.0, t);
  return {t, c, c * t};
}

void Rotate(Rotation rotation, double& u, double& w) noexcept {
  const double before = u;
  u = rotation.cosine * u - rotation.sine * w;
  w = rotation.cosine * w + rotation.sine * before;
}

// The first rotation that is not of a column before this one.
const Rotation* From(std::size_t column, const Rotation* first, const Rotation* last) noexcept {
  while (first != last && first->index < column) ++first;
  return first;
}

}  // namespace

JacobiSweeps::JacobiSweeps(const RMatrix& a, const SolverKernelSet& kernels)
    : kernels_(&kernels),
      n_(a.nCols()),
      panelCount_((n_ + kPanelRows - 1) / kPanelRows),
      width_(panelCount_ * kPanelRows),
      panelSize_(width_ * kPanelRows),
      entries_(panelCount_ * panelSize_),
      vectors_(panelCount_ * panelSize_),
      diagonal_(n_),
      row_(width_),
      previous_(width_) {
  rotations_.reserve(std::max(kMostRotations, 2 * n_));
  steps_.reserve(n_);
  for (unsigned i = 0; i < n_; ++i) {
    diagonal_[i] = a(i, i);
    VectorsOf(i / kPanelRows)[kPanelRows * i + i % kPanelRows] = 1;
    for (unsigned j = i + 1; j < n_; ++j) Entry(i, j) = a(i, j);
  }
}

bool JacobiSweeps::Run() noexcept {
  constexpr int kMostSweeps = 100;
  double off = OffDiagonal();
  const double tolerance = 1e-16 * off;
  for (int sweep = 0; sweep < kMostSweeps; ++sweep) {
    if (sweep > 0) off = OffDiagonal();
    if (off < tolerance || off == 0) return true;
    // What is not rotated now, NaN say, would not be in a later sweep.
    if (!Sweep(off / (static_cast<double>(n_) * static_cast<double>(n_)))) return false;
  }
  return false;
}

double JacobiSweeps::OffDiagonal() noexcept {
  double sum = 0;
  for (std::size_t i = 0; i < n_; ++i) {
    const double* const lane = EntriesOf(i / kPanelRows) + i % kPanelRows;
    for (std::size_t j = i + 1; j < n_; ++j) sum += std::abs(lane[kPanelRows * j]);
  }
  return 2 * sum;
}

bool JacobiSweeps::Sweep(double limit) noexcept {
  bool rotates = false;
  first_ = 0;
  TakeRow(0);
  for (std::size_t panel = 0; panel < panelCount_; ++panel) ChooseRotations(0, panel, limit);
  for (std::size_t p = 0; p + 1 < n_; ++p) {
    if (rotations_.size() > first_) {
      rotates = true;
      steps_.push_back({p, first_, rotations_.size()});
    }
    if (rotations_.size() + n_ > rotations_.capacity()) RotateWhatWaits();
    FinishStep(p, limit);
  }
  RotateWhatWaits();
  return rotates;
}

// Goes through the panels with the rotations of row p, which are all known now. What has had them
// chooses those of the next row while it is in the cache.
void JacobiSweeps::FinishStep(std::size_t p, double limit) noexcept {
  Range range = {rotations_.data() + first_, rotations_.data() + rotations_.size()};
  const bool rotates = range.first != range.last;
  const std::size_t next = p + 1;
  first_ = rotations_.size();
  std::swap(row_, previous_);
  for (std::size_t panel = p / kPanelRows; panel < panelCount_; panel += 2) {
    range.first = RotateRowsBelow(p, panel, range);
    if (next + 1 == n_) continue;
    if (panel == p / kPanelRows) TakeRow(next);
    if (panel >= next / kPanelRows) ChooseRotations(next, panel, limit);
    if (panel + 1 < panelCount_) ChooseRotations(next, panel + 1, limit);
  }
  if (rotates) PutRow(p);
}

// To the left of the diagonal the row has column p, as far as it lies in the same panel: those rows
// are rotated together with the ones below. The row before is not in its place yet.
void JacobiSweeps::TakeRow(std::size_t p) noexcept {
  for (std::size_t k = p / kPanelRows * kPanelRows; k < p; ++k) {
    row_[k] = k + 1 == p ? previous_[p] : Entry(k, p);
  }
  row_[p] = 0;
  const double* const lane = EntriesOf(p / kPanelRows) + p % kPanelRows;
  for (std::size_t k = p + 1; k < n_; ++k) row_[k] = lane[kPanelRows * k];
}

void JacobiSweeps::PutRow(std::size_t p) noexcept {
  for (std::size_t k = p / kPanelRows * kPanelRows; k < p; ++k) Entry(k, p) = previous_[k];
  double* const lane = EntriesOf(p / kPanelRows) + p % kPanelRows;
  for (std::size_t k = p + 1; k < n_; ++k) lane[kPanelRows * k] = previous_[k];
}

// Chooses the rotations of row p with the rows q of a panel, and rotates what lies to the right of
// the diagonal in both.
void JacobiSweeps::ChooseRotations(std::size_t p, std::size_t panel, double limit) noexcept {
  const std::size_t front = panel * kPanelRows;
  const std::size_t end = std::min(front + kPanelRows, n_);
  double* const entries = EntriesOf(panel);
  double* const row = row_.data();
  double app = diagonal_[p];
  Rotation lanes[kPanelRows];
  std::size_t count = 0;
  for (std::size_t q = std::max(front, p + 1); q < end; ++q) {
    const double apq = row[q];
    if (!(std::abs(apq) > limit)) continue;
    const Angle angle = AngleFor(app, diagonal_[q], apq);
    const Rotation rotation = {angle.cosine, angle.sine, q};
    app -= angle.tangent * apq;
    diagonal_[q] += angle.tangent * apq;
    double* const lane = entries + q - front;
    for (std::size_t k = q + 1; k < end; ++k) Rotate(rotation, row[k], lane[kPanelRows * k]);
    row[q] = 0;
    rotations_.push_back(rotation);
    lanes[count] = rotation;
    lanes[count++].index = q - front;
  }
  if (count == 0) return;
  diagonal_[p] = app;
  kernels_->rotateRows(entries, row, front + kPanelRows, width_, lanes, lanes + count);
}

// The columns that are those of the panel's own rows: a triangle. Row p itself is in hand.
void JacobiSweeps::RotateOwnColumns(std::size_t p, std::size_t panel, Range range) noexcept {
  const std::size_t front = panel * kPanelRows;
  double* const entries = EntriesOf(panel);
  double* const row = previous_.data();
  for (const Rotation* r = range.first; r != range.last; ++r) {
    const Rotation rotation = *r;
    double* const column = entries + kPanelRows * rotation.index - front;
    for (std::size_t k = front; k < rotation.index; ++k) {
      if (k != p) Rotate(rotation, row[k], column[k]);
    }
  }
}

// What is to the left of q in the rows of this panel and the next one. In the panel of row p, its
// place there is written over afterwards. Returns the rotations that panels further down meet.
const Rotation* JacobiSweeps::RotateRowsBelow(std::size_t p, std::size_t panel,
                                              Range range) noexcept {
  const std::size_t front = panel * kPanelRows;
  const Rotation* const next = From(front + kPanelRows, range.first, range.last);
  const Rotation* const beyond = From(front + 2 * kPanelRows, next, range.last);
  double* const entries = EntriesOf(panel);
  double* const u = previous_.data() + front;
  RotateOwnColumns(p, panel, {range.first, next});
  kernels_->rotateColumns(entries, u, next, beyond);
  if (next == range.last) return range.last;
  RotateOwnColumns(p, panel + 1, {next, beyond});
  kernels_->rotateColumnsOfTwo(entries, u, entries + panelSize_, u + kPanelRows, beyond,
                               range.last);
  return beyond;
}

// All that the steps up to now have left, but for the rows below the last one: its rotations stay.
void JacobiSweeps::RotateWhatWaits() noexcept {
  const Rotation* const rotations = rotations_.data();
  for (std::size_t panel = 0; panel < panelCount_; panel += 2) {
    double* const entries = EntriesOf(panel);
    double* const vectors = VectorsOf(panel);
    const bool isPair = panel + 1 < panelCount_;
    for (const Step& step : steps_) {
      if (step.p < (panel + 1) * kPanelRows) continue;
      double* const u = entries + kPanelRows * step.p;
      const Rotation* const first = rotations + step.first;
      const Rotation* const last = rotations + step.last;
      if (step.p < (panel + 2) * kPanelRows) {
        kernels_->rotateColumns(entries, u, first, last);
      } else {
        kernels_->rotateColumnsOfTwo(entries, u, entries + panelSize_, u + panelSize_, first, last);
      }
    }
    for (const Step& step : steps_) {
      double* const u = vectors + kPanelRows * step.p;
      const Rotation* const first = rotations + step.first;
      const Rotation* const last = rotations + step.last;
      if (isPair) {
        kernels_->rotateColumnsOfTwo(vectors, u, vectors + panelSize_, u + panelSize_, first, last);
      } else {
        kernels_->rotateColumns(vectors, u, first, last);
      }
    }
  }
  steps_.clear();
  rotations_.erase(rotations_.begin(), rotations_.begin() + static_cast<std::ptrdiff_t>(first_));
  first_ = 0;
}

void JacobiSweeps::Give(RMatrix& a, RVector& s) const {
  const auto size = [this](std::size_t i) {
    const double x = std::abs(diagonal_[i]);
    return std::isnan(x) ? -1 : x;
  };
  std::vector<std::size_t> order(n_);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&size](std::size_t i, std::size_t j) {
    return size(i) != size(j) ? size(i) > size(j) : i < j;
  });
  const auto n = static_cast<unsigned>(n_);
  s.Resize(n);
  for (unsigned i = 0; i < n; ++i) s(i) = diagonal_[order[i]];
  for (unsigned k = 0; k < n; ++k) {
    const double* const lane = vectors_.data() + k / kPanelRows * panelSize_ + k % kPanelRows;
    double* const row = a.Base(k, 0);
    for (unsigned i = 0; i < n; ++i) row[i] = lane[kPanelRows * order[i]];
  }
}

}  // namespace vlm::detail
