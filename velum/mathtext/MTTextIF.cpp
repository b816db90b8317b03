#include <velum/mathtext/MTTextIF.h>

#include <exception>
#include <typeinfo>
#include <utility>

namespace vlm {

namespace detail {

// Every member of the device is pure, so no source is the home of its type information. Named here,
// the library exports it under every compiler.
extern const std::type_info& kHeldDeviceType;
const std::type_info& kHeldDeviceType = typeid(KQTextIF);

}  // namespace detail

CMTTextIF::CMTTextIF(KQTextIF& device) : device_(&device) {
  // The members stand in the order of the record, the calls in the order that devices are used to.
  Record record{};
  record.text.color = device.GetColor();
  record.text.face = device.GetFace();
  record.text.weight = device.GetWeight();
  record.text.style = device.GetStyle();
  record.text.charset = device.GetCharset();
  record.text.pitch = device.GetPitch();
  record.text.family = device.GetFamily();
  record.text.height = device.GetHeight();
  record.horizAlignment = device.GetHorizAlignment();
  record.vertAlignment = device.GetVertAlignment();
  record.horizJustify = device.GetHorizJustify();
  record.times = 1;
  records_.push_back(std::move(record));
}

CMTTextIF::CMTTextIF(const CMTTextIF& other) = default;

CMTTextIF& CMTTextIF::operator=(const CMTTextIF& other) = default;

CMTTextIF::~CMTTextIF() = default;

void CMTTextIF::SetColor(Color4b color) {
  if (records_.back().text.color == color) return;
  RecordToChange().text.color = color;
  device_->SetColor(color);
}

Color4b CMTTextIF::GetColor() const { return records_.back().text.color; }

void CMTTextIF::SetFace(const GString& face) {
  if (records_.back().text.face == face) return;
  RecordToChange().text.face = face;
  device_->SetFace(face);
}

GString CMTTextIF::GetFace() const { return records_.back().text.face; }

void CMTTextIF::SetWeight(unsigned int weight) {
  if (records_.back().text.weight == weight) return;
  RecordToChange().text.weight = weight;
  device_->SetWeight(weight);
}

unsigned int CMTTextIF::GetWeight() const { return records_.back().text.weight; }

void CMTTextIF::SetStyle(unsigned int style) {
  if (records_.back().text.style == style) return;
  RecordToChange().text.style = style;
  device_->SetStyle(style);
}

unsigned int CMTTextIF::GetStyle() const { return records_.back().text.style; }

void CMTTextIF::SetCharset(unsigned int charset) {
  if (records_.back().text.charset == charset) return;
  RecordToChange().text.charset = charset;
  device_->SetCharset(charset);
}

unsigned int CMTTextIF::GetCharset() const { return records_.back().text.charset; }

void CMTTextIF::SetPitch(unsigned int pitch) {
  if (records_.back().text.pitch == pitch) return;
  RecordToChange().text.pitch = pitch;
  device_->SetPitch(pitch);
}

unsigned int CMTTextIF::GetPitch() const { return records_.back().text.pitch; }

void CMTTextIF::SetFamily(unsigned int family) {
  if (records_.back().text.family == family) return;
  RecordToChange().text.family = family;
  device_->SetFamily(family);
}

unsigned int CMTTextIF::GetFamily() const { return records_.back().text.family; }

void CMTTextIF::SetHorizAlignment(unsigned int alignment) {
  if (records_.back().horizAlignment == alignment) return;
  RecordToChange().horizAlignment = alignment;
  device_->SetHorizAlignment(alignment);
}

unsigned int CMTTextIF::GetHorizAlignment() const { return records_.back().horizAlignment; }

void CMTTextIF::SetVertAlignment(unsigned int alignment) {
  if (records_.back().vertAlignment == alignment) return;
  RecordToChange().vertAlignment = alignment;
  device_->SetVertAlignment(alignment);
}

unsigned int CMTTextIF::GetVertAlignment() const { return records_.back().vertAlignment; }

void CMTTextIF::SetHorizJustify(unsigned int justify) {
  if (records_.back().horizJustify == justify) return;
  RecordToChange().horizJustify = justify;
  device_->SetHorizJustify(justify);
}

unsigned int CMTTextIF::GetHorizJustify() const { return records_.back().horizJustify; }

void CMTTextIF::SetHeight(double height) {
  if (records_.back().text.height == height) return;
  RecordToChange().text.height = height;
  device_->SetHeight(height);
}

double CMTTextIF::GetHeight() const { return records_.back().text.height; }

void CMTTextIF::PreserveState() { ++records_.back().times; }

void CMTTextIF::RestoreState() {
  if (records_.back().times > 1) {
    --records_.back().times;
    return;
  }
  if (records_.size() == 1) return;

  const Record& left = records_.back();
  const Record& now = records_[records_.size() - 2];

  // A device that refuses one attribute must not be left behind in the others.
  std::exception_ptr failure;
  const auto handOver = [&failure](auto set) {
    try {
      set();
    } catch (...) {
      if (!failure) failure = std::current_exception();
    }
  };
  if (left.text.color != now.text.color) handOver([&] { device_->SetColor(now.text.color); });
  if (left.text.face != now.text.face) handOver([&] { device_->SetFace(now.text.face); });
  if (left.text.weight != now.text.weight) handOver([&] { device_->SetWeight(now.text.weight); });
  if (left.text.style != now.text.style) handOver([&] { device_->SetStyle(now.text.style); });
  if (left.text.charset != now.text.charset)
    handOver([&] { device_->SetCharset(now.text.charset); });
  if (left.text.pitch != now.text.pitch) handOver([&] { device_->SetPitch(now.text.pitch); });
  if (left.text.family != now.text.family) handOver([&] { device_->SetFamily(now.text.family); });
  if (left.horizAlignment != now.horizAlignment)
    handOver([&] { device_->SetHorizAlignment(now.horizAlignment); });
  if (left.vertAlignment != now.vertAlignment)
    handOver([&] { device_->SetVertAlignment(now.vertAlignment); });
  if (left.horizJustify != now.horizJustify)
    handOver([&] { device_->SetHorizJustify(now.horizJustify); });
  if (left.text.height != now.text.height) handOver([&] { device_->SetHeight(now.text.height); });
  records_.pop_back();
  if (failure) std::rethrow_exception(failure);
}

void CMTTextIF::GetBounds(const GString& text, Box2d& box) { device_->GetBounds(text, box); }

void CMTTextIF::GetExtent(const GString& text, Vec2d& extent) { device_->GetExtent(text, extent); }

void CMTTextIF::GetMetrics(KQTextIF::_TXTMETRICS& metrics) { device_->GetMetrics(metrics); }

bool CMTTextIF::Draw(const Vec2d& position, const GString& text) {
  return device_->Draw(position, text);
}

bool CMTTextIF::DrawLine(const Vec2d& from, const Vec2d& to) { return device_->DrawLine(from, to); }

CMTTextIF::Record& CMTTextIF::RecordToChange() {
  if (records_.back().times > 1) {
    records_.push_back(records_.back());
    records_.back().times = 1;
    --records_[records_.size() - 2].times;
  }
  return records_.back();
}

}  // namespace vlm
