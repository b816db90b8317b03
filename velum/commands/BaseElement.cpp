#include <velum/commands/BaseElement.h>

namespace vlm {

BaseElement::BaseElement() = default;
BaseElement::~BaseElement() = default;

bool BaseElement::Option(const GString& key, const GString& value) {
  return !key.empty() && OptionImpl(key.ToLower(), value);
}

bool BaseElement::Option(const GString& key, const char* value) {
  return value && Option(key, GString(value));
}

bool BaseElement::Option(const GString& key, const boost::any& value) {
  if (key.empty()) return false;
  if (const auto* const text = boost::any_cast<GString>(&value)) return Option(key, *text);
  return OptionImpl(key.ToLower(), value);
}

boost::any BaseElement::Option(const GString& key) const {
  return key.empty() ? boost::any() : OptionImpl(key.ToLower());
}

void BaseElement::Parent(const boost::any& parent) { ParentImpl(parent); }

boost::any BaseElement::OptionImpl(const GString&) const { return {}; }
bool BaseElement::OptionImpl(const GString&, const boost::any&) { return false; }
bool BaseElement::OptionImpl(const GString&, const GString&) { return false; }
void BaseElement::ParentImpl(const boost::any&) {}

}  // namespace vlm
