#include <velum/numerics/Histogram.h>

#include <velum/core/Exception.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>

namespace vlm {
namespace {

constexpr char kSource[] = "Histogram";

// A block with one owner, whose counts are those at `counts`, or 0.
unsigned int* NewBlock(unsigned int bins, const unsigned int* counts) {
  // In 64 bits, which the largest number of bins doesn't overflow.
  const std::size_t words = std::size_t{bins} + 1;
  void* memory = ::operator new(words * sizeof(unsigned int), std::nothrow);
  if (memory == nullptr) ThrowErrorImpl(kSource, __LINE__, ERR_OUT_OF_MEMORY);
  auto* block = static_cast<unsigned int*>(memory);
  block[0] = 1;
  if (counts != nullptr) {
    std::copy_n(counts, bins, block + 1);
  } else {
    std::fill_n(block + 1, bins, 0u);
  }
  return block;
}

}  // namespace

CHistogram::CHistogram(double min, double max, unsigned int bins) {
  if (bins > 0) Init(min, max, bins);
}

CHistogram::CHistogram(const CHistogram& other) noexcept
    : min_(other.min_),
      max_(other.max_),
      binWidth_(other.binWidth_),
      binCount_(other.binCount_),
      totalCount_(other.totalCount_),
      block_(other.block_) {
  AddRef();
}

CHistogram& CHistogram::operator=(const CHistogram& other) noexcept {
  if (this == &other) return *this;
  DecRef();
  min_ = other.min_;
  max_ = other.max_;
  binWidth_ = other.binWidth_;
  binCount_ = other.binCount_;
  totalCount_ = other.totalCount_;
  block_ = other.block_;
  AddRef();
  return *this;
}

CHistogram::~CHistogram() { DecRef(); }

const unsigned int* CHistogram::GetCounts() const noexcept {
  return block_ != nullptr ? block_ + 1 : nullptr;
}

const unsigned int& CHistogram::operator[](unsigned int i) const noexcept {
  return block_[std::size_t{i} + 1];
}

double CHistogram::GetProbability(unsigned int i) const noexcept {
  return static_cast<double>((*this)[i]) / static_cast<double>(totalCount_);
}

void CHistogram::Init(double min, double max, unsigned int bins) {
  // Made first: without memory the histogram stays what it is.
  unsigned int* const block = bins > 0 ? NewBlock(bins, nullptr) : nullptr;
  DecRef();
  min_ = min;
  max_ = max;
  binWidth_ = bins > 0 ? (max - min) / bins : 0.0;
  binCount_ = bins;
  totalCount_ = 0;
  block_ = block;
}

void CHistogram::Init(double min, double max, unsigned int bins, const unsigned int* counts) {
  if (bins > 0 && counts == nullptr) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  // The counts may be this histogram's own, which the first step gives up.
  const CHistogram before(*this);
  Init(min, max, bins);
  for (unsigned int i = 0; i < bins; ++i) {
    block_[std::size_t{i} + 1] = counts[i];
    totalCount_ += counts[i];
  }
}

bool CHistogram::Add(double x) {
  if (binCount_ == 0 || !(x >= min_ && x <= max_)) return false;
  CopyOnWrite();
  const double position = std::floor((x - min_) / binWidth_);
  // What has no place of its own, as where all bins are of no width, is at the upper limit.
  const unsigned int i = position < binCount_ ? static_cast<unsigned int>(position) : binCount_ - 1;
  ++block_[std::size_t{i} + 1];
  ++totalCount_;
  return true;
}

void CHistogram::Reset() {
  CopyOnWrite();
  if (block_ != nullptr) std::fill_n(block_ + 1, binCount_, 0u);
  totalCount_ = 0;
}

void CHistogram::AddRef() noexcept {
  if (block_ != nullptr) ++block_[0];
}

void CHistogram::DecRef() noexcept {
  if (block_ != nullptr && --block_[0] == 0) ::operator delete(block_);
  block_ = nullptr;
}

void CHistogram::CopyOnWrite() {
  if (binCount_ == 0 || (block_ != nullptr && block_[0] < 2)) return;
  unsigned int* const own = NewBlock(binCount_, GetCounts());
  DecRef();
  block_ = own;
}

}  // namespace vlm
