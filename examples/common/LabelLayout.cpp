#include <examples/common/LabelLayout.h>

#include <velum/mathtext/MTContext.h>
#include <velum/mathtext/MTTextIF.h>

namespace vlm::examples {
namespace {

constexpr double kCharsPerTab = 8.0;

// A text that fails in the middle leaves its attributes behind, so each label has a text interface
// of its own over a device that is put back at the end.
class DeviceState {
 public:
  explicit DeviceState(KQTextIF& device) : device_(device) { device_.PreserveState(); }
  DeviceState(const DeviceState&) = delete;
  DeviceState& operator=(const DeviceState&) = delete;
  ~DeviceState() { device_.RestoreState(); }

 private:
  KQTextIF& device_;
};

}  // namespace

LabelLayout::LabelLayout(KQTextIF& device, const std::string& text, unsigned int justify)
    : box_(0.0, 0.0, 0.0, 0.0), justify_(justify) {
  const DeviceState state(device);
  CMTTextIF textIF(device);
  CMTContext context(textIF, kCharsPerTab);
  auto block = std::make_shared<CMTMultiLineElement>(textIF);
  if (context.Parse(text, block) != CMTContext::RETVAL_SUCCESS) {
    fault_ = FindFault(text);
    if (!fault_) fault_ = LabelFault{"a number is too large, or substrings are nested too deeply"};
    return;
  }
  block_ = block;
  box_ = block_->GetBBoxUsingTextIF(textIF, Vec2d(0.0, 0.0));
}

void LabelLayout::Draw(KQTextIF& device, const Vec2d& position) const {
  if (block_ == nullptr) return;
  const DeviceState state(device);
  CMTTextIF textIF(device);
  textIF.SetHorizJustify(justify_);
  block_->DrawUsingTextIF(textIF, position);
}

}  // namespace vlm::examples
