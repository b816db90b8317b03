#include <velum/numerics/detail/RankPartition.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

namespace vlm::detail {
namespace {

constexpr std::size_t kSampleSize = 4096;
constexpr std::size_t kSmall = 4 * kSampleSize;

// A random part of the values, sorted; the same one at each call.
template <class ValueAt>
std::vector<double> SortedSample(std::size_t count, ValueAt valueAt) {
  std::vector<double> sample(kSampleSize);
  std::uint64_t state = 0x9E3779B97F4A7C15u;
  for (double& value : sample) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    value = valueAt(static_cast<std::size_t>(((state >> 32) * count) >> 32));
  }
  std::sort(sample.begin(), sample.end());
  return sample;
}

// Buckets of one width from `low` on, which hold all but the outermost values of a sample. What
// lies below is in the first one, what lies above in the last.
class Buckets {
 public:
  static constexpr std::size_t kCount = 2048;

  explicit Buckets(const std::vector<double>& sample) noexcept
      : low_(sample[kSampleSize / 256]),
        perUnit_(static_cast<double>(kCount) / (sample[kSampleSize - kSampleSize / 256] - low_)) {}

  // Whether there is a width to speak of.
  [[nodiscard]] bool Usable() const noexcept { return perUnit_ > 0 && std::isfinite(perUnit_); }

  /// Calls `use(value, bucket)` for each value, in their order. The values before the current one
  /// may change meanwhile.
  template <class Use>
  void ForEach(std::span<const double> values, Use use) const {
    // The buckets of a whole block first, since the processor has several of them at a time.
    constexpr std::size_t kBlock = 32;
    std::array<std::int32_t, kBlock> buckets;
    const double* at = values.data();
    const double* const end = at + values.size();
    for (; end - at >= std::ptrdiff_t{kBlock}; at += kBlock) {
      for (std::size_t i = 0; i < kBlock; ++i) buckets[i] = Of(at[i]);
      for (std::size_t i = 0; i < kBlock; ++i) use(at[i], static_cast<std::size_t>(buckets[i]));
    }
    for (; at != end; ++at) use(*at, static_cast<std::size_t>(Of(*at)));
  }

 private:
  [[nodiscard]] std::int32_t Of(double value) const noexcept {
    const double place = (value - low_) * perUnit_;
    return static_cast<std::int32_t>(std::max(0.0, std::min(place, double{kCount - 1})));
  }

  double low_;
  double perUnit_;
};

// Runs of buckets. One with a rank in it is a region of its own; those between two such are one
// together.
struct Regions {
  std::array<std::uint8_t, Buckets::kCount> ofBucket;
  std::vector<std::size_t> begins;  // among the values in ascending order; the last one is the end
};

Regions RegionsOf(std::span<const double> values, const Buckets& buckets,
                  std::span<const std::size_t> ranks) {
  std::array<std::size_t, Buckets::kCount> sizes{};
  buckets.ForEach(values, [&](double, std::size_t bucket) { ++sizes[bucket]; });
  Regions regions;
  regions.begins = {0};
  std::size_t end = 0;
  bool ranked = false;
  auto rank = ranks.begin();
  for (std::size_t b = 0; b < Buckets::kCount; ++b) {
    const auto next =
        std::find_if(rank, ranks.end(), [&](std::size_t r) { return r >= end + sizes[b]; });
    if (b > 0 && (ranked || next != rank)) {
      regions.begins.push_back(end);
    }
    ranked = next != rank;
    rank = next;
    regions.ofBucket[b] = static_cast<std::uint8_t>(regions.begins.size() - 1);
    end += sizes[b];
  }
  regions.begins.push_back(values.size());
  return regions;
}

// Moves the values of each region to its place. The lower regions stay within the values, the
// others move out and come back. What may throw comes first: from then on not all values are in
// their span.
void Gather(std::span<double> values, const Buckets& buckets, const Regions& regions) {
  const std::size_t count = values.size();
  const auto& begins = regions.begins;
  std::vector<std::size_t> ends = begins;
  const auto middle = std::lower_bound(begins.begin() + 1, begins.end() - 1, count / 2);
  const auto firstUpper = static_cast<std::uint8_t>(middle - begins.begin());
  const std::size_t lower = *middle;
  const auto moved = std::unique_ptr<double[]>(new double[std::max(lower, count - lower) + 1]);
  std::size_t seen = 0;
  std::size_t stayed = 0;
  buckets.ForEach(values, [&](double value, std::size_t bucket) {
    values[stayed] = value;
    moved[seen - stayed] = value;
    ++seen;
    stayed += static_cast<std::size_t>(regions.ofBucket[bucket] < firstUpper);
  });
  const auto bringBack = [&](std::size_t size) {
    buckets.ForEach({moved.get(), size}, [&](double value, std::size_t bucket) {
      values[ends[regions.ofBucket[bucket]]++] = value;
    });
  };
  bringBack(count - lower);
  std::copy_n(values.begin(), lower, moved.get());
  bringBack(lower);
}

// Orders the values of one region, which begin at `from`, at those ranks that lie in it.
void SelectWithin(double* values, std::size_t from, std::size_t to,
                  std::span<const std::size_t> ranks) {
  for (const std::size_t rank : ranks) {
    if (rank >= from && rank < to) {
      std::nth_element(values + from, values + rank, values + to);
      from = rank + 1;
    }
  }
}

}  // namespace

void PartitionAtRanks(std::span<double> values, std::span<const std::size_t> ranks) {
  const std::size_t count = values.size();
  if (count < kSmall) {
    SelectWithin(values.data(), 0, count, ranks);
    return;
  }
  const Buckets buckets(SortedSample(count, [&](std::size_t i) { return values[i]; }));
  if (!buckets.Usable()) {
    SelectWithin(values.data(), 0, count, ranks);
    return;
  }
  const Regions regions = RegionsOf(values, buckets, ranks);
  Gather(values, buckets, regions);
  for (std::size_t region = 0; region + 1 < regions.begins.size(); ++region) {
    SelectWithin(values.data(), regions.begins[region], regions.begins[region + 1], ranks);
  }
}

double MeanDistanceAtRanks(std::span<const double> values, double centre, std::size_t rank,
                           std::size_t upper) {
  const std::size_t count = values.size();
  const auto distance = [&](std::size_t i) { return std::abs(values[i] - centre); };
  double low = 0;
  double high = INFINITY;
  if (count >= kSmall) {
    const std::vector<double> sample = SortedSample(count, distance);
    // Four standard deviations of the rank within the sample, and a little more.
    constexpr std::size_t kMargin = 2 * 64 + 16;
    static_assert(64 * 64 >= kSampleSize);
    const std::size_t at = rank * kSampleSize / count;
    low = at > kMargin ? sample[at - kMargin] : 0;
    high = at + kMargin < kSampleSize ? sample[at + kMargin] : INFINITY;
  }
  const auto near = std::unique_ptr<double[]>(new double[count]);
  std::size_t below = 0;
  std::size_t found = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double d = distance(i);
    below += d < low ? 1 : 0;
    near[found] = d;
    found += d >= low && d <= high ? 1 : 0;
  }
  if (rank < below || upper >= below + found) {
    // The part misled: all distances are looked at.
    below = 0;
    found = count;
    for (std::size_t i = 0; i < count; ++i) {
      near[i] = distance(i);
    }
  }
  double* const at = near.get() + (rank - below);
  double* const end = near.get() + found;
  std::nth_element(near.get(), at, end);
  return upper == rank ? *at : (*at + *std::min_element(at + 1, end)) * 0.5;
}

}  // namespace vlm::detail
