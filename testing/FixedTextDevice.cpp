#include <testing/FixedTextDevice.h>

#include <string>
#include <utility>

namespace vlm::testing {

void FixedTextDevice::PreserveState() { stack_.push_back(now_); }

void FixedTextDevice::RestoreState() {
  if (stack_.empty()) return;
  now_ = std::move(stack_.back());
  stack_.pop_back();
}

void FixedTextDevice::GetBounds(const GString& text, Box2d& box) {
  const std::string& bytes = text.String();
  const std::size_t first = bytes.find_first_not_of(' ');
  if (first == std::string::npos) {
    box = Box2d(0.0, 0.0, 0.0, 0.0);
    return;
  }
  const double width = CharWidth();
  const bool low = bytes.find_first_not_of("x ") == std::string::npos;
  const double left = bytes[0] == 'j' ? -now_.height / 4.0 : static_cast<double>(first) * width;
  const double right = static_cast<double>(bytes.find_last_not_of(' ') + 1) * width;
  box = Box2d(left, low ? -now_.height / 2.0 : -now_.height * 0.75, right,
              low ? 0.0 : now_.height / 4.0);
}

void FixedTextDevice::GetExtent(const GString& text, Vec2d& extent) {
  extent = Vec2d(static_cast<double>(text.size()) * CharWidth(), now_.height);
}

void FixedTextDevice::GetMetrics(KQTextIF::_TXTMETRICS& metrics) {
  metrics = {};
  metrics.emSquare = 1024;
  metrics.height = now_.height;
  metrics.ascent = now_.height * 0.75;
  metrics.descent = now_.height / 4.0;
  metrics.aveCharWidth = now_.height / 2.0;
  metrics.maxCharWidth = now_.height * 0.625;
}

bool FixedTextDevice::Draw(const Vec2d& /*position*/, const GString& /*text*/) { return true; }

bool FixedTextDevice::DrawLine(const Vec2d& /*from*/, const Vec2d& /*to*/) { return true; }

double FixedTextDevice::CharWidth() const {
  return now_.weight >= TEXT_WEIGHT_BOLD ? now_.height * 0.625 : now_.height / 2.0;
}

}  // namespace vlm::testing
