#include <velum/mathtext/MTDirectTextIF.h>

namespace vlm {

CMTDirectTextIF::CMTDirectTextIF(KQTextIF& device) : CMTTextIF(device) {}

CMTDirectTextIF::CMTDirectTextIF(const CMTDirectTextIF& other) = default;

CMTDirectTextIF& CMTDirectTextIF::operator=(const CMTDirectTextIF& other) = default;

CMTDirectTextIF::~CMTDirectTextIF() = default;

void CMTDirectTextIF::SetColor(Color4b color) { GetDevice().SetColor(color); }

Color4b CMTDirectTextIF::GetColor() const { return GetDevice().GetColor(); }

void CMTDirectTextIF::SetFace(const GString& face) { GetDevice().SetFace(face); }

GString CMTDirectTextIF::GetFace() const { return GetDevice().GetFace(); }

void CMTDirectTextIF::SetWeight(unsigned int weight) { GetDevice().SetWeight(weight); }

unsigned int CMTDirectTextIF::GetWeight() const { return GetDevice().GetWeight(); }

void CMTDirectTextIF::SetStyle(unsigned int style) { GetDevice().SetStyle(style); }

unsigned int CMTDirectTextIF::GetStyle() const { return GetDevice().GetStyle(); }

void CMTDirectTextIF::SetCharset(unsigned int charset) { GetDevice().SetCharset(charset); }

unsigned int CMTDirectTextIF::GetCharset() const { return GetDevice().GetCharset(); }

void CMTDirectTextIF::SetPitch(unsigned int pitch) { GetDevice().SetPitch(pitch); }

unsigned int CMTDirectTextIF::GetPitch() const { return GetDevice().GetPitch(); }

void CMTDirectTextIF::SetFamily(unsigned int family) { GetDevice().SetFamily(family); }

unsigned int CMTDirectTextIF::GetFamily() const { return GetDevice().GetFamily(); }

void CMTDirectTextIF::SetHorizAlignment(unsigned int alignment) {
  GetDevice().SetHorizAlignment(alignment);
}

unsigned int CMTDirectTextIF::GetHorizAlignment() const { return GetDevice().GetHorizAlignment(); }

void CMTDirectTextIF::SetVertAlignment(unsigned int alignment) {
  GetDevice().SetVertAlignment(alignment);
}

unsigned int CMTDirectTextIF::GetVertAlignment() const { return GetDevice().GetVertAlignment(); }

void CMTDirectTextIF::SetHorizJustify(unsigned int justify) {
  GetDevice().SetHorizJustify(justify);
}

unsigned int CMTDirectTextIF::GetHorizJustify() const { return GetDevice().GetHorizJustify(); }

void CMTDirectTextIF::SetHeight(double height) { GetDevice().SetHeight(height); }

double CMTDirectTextIF::GetHeight() const { return GetDevice().GetHeight(); }

void CMTDirectTextIF::PreserveState() { GetDevice().PreserveState(); }

void CMTDirectTextIF::RestoreState() { GetDevice().RestoreState(); }

}  // namespace vlm
