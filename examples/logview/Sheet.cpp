#include <examples/logview/Sheet.h>

#include <velum/core/StringFormat.h>

#include <algorithm>
#include <utility>

namespace vlm::logview {
namespace {

constexpr std::size_t kMostLanes = 12;
constexpr std::size_t kLinesKept = 60;
constexpr std::size_t kTimesKept = 1'000'000;
constexpr char kOthers[] = "(others)";

}  // namespace

std::size_t Sheet::Add(ReceivedLine line) {
  const auto find = [this](const std::string& prefix) {
    return std::find_if(lanes_.begin(), lanes_.end(),
                        [&](const Lane& lane) { return lane.prefix == prefix; });
  };
  auto lane = find(line.prefix);
  if (lane == lanes_.end()) {
    const std::string name = lanes_.size() + 1 < kMostLanes ? line.prefix : kOthers;
    lane = find(name);
    if (lane == lanes_.end()) lane = lanes_.insert(lanes_.end(), Lane{name, 0, {}});
  }
  ++lane->count;
  if (count_ < kTimesKept) lane->times.push_back(line.time);
  if (count_++ == 0) first_ = line.time;
  final_ = line.time;
  const auto number = static_cast<std::size_t>(lane - lanes_.begin());
  last_.push_back({std::move(line), number});
  if (last_.size() > kLinesKept) last_.pop_front();
  return number;
}

std::string Sheet::Summary() const {
  std::string text = std::to_string(count_) + (count_ == 1 ? " line" : " lines");
  if (count_ > 1) text += ToString(" in %.2f s", final_ - first_);
  const char* separator = ": ";
  for (const Lane& lane : lanes_) {
    text += separator + NameOf(lane.prefix) + " " + std::to_string(lane.count);
    separator = ", ";
  }
  return text;
}

std::string NameOf(const std::string& prefix) { return prefix.empty() ? "-" : prefix; }

}  // namespace vlm::logview
