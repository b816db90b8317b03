#include <examples/describe/Progress.h>

#include <algorithm>
#include <ostream>
#include <string>

namespace vlm::describe {

ProgressLine::~ProgressLine() {
  if (width_ > 0) stream_ << '\r' << std::string(width_, ' ') << '\r' << std::flush;
}

void ProgressLine::Update(std::uint64_t bytes, std::size_t rows) {
  if (bytes < next_) return;
  next_ = bytes + std::max<std::uint64_t>(total_ / 100, 1u << 20);
  std::string text = "Reading: ";
  if (total_ > 0) {
    const double share = static_cast<double>(bytes) / static_cast<double>(total_);
    text += std::to_string(std::min(100, static_cast<int>(100.0 * share))) + " %, ";
  } else {
    text += std::to_string(bytes / 1'000'000) + " MB, ";
  }
  text += std::to_string(rows) + " rows";
  stream_ << '\r' << text << std::flush;
  width_ = std::max(width_, text.size());
}

}  // namespace vlm::describe
