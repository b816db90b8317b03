#include <velum/commands/ModelessElement.h>

namespace vlm {

ModelessElement::ModelessElement() = default;
ModelessElement::~ModelessElement() = default;

void ModelessElement::Create(bool show) {
  if (!AssertCreated()) CreateImpl();
  if (show && AssertCreated()) ShowImpl();
}

StatusCode ModelessElement::Destroy() { return AssertCreated() ? DestroyImpl() : STATUS_FAILURE; }

void ModelessElement::Show() {
  if (AssertCreated()) ShowImpl();
}

void ModelessElement::Hide() {
  if (AssertCreated()) HideImpl();
}

bool ModelessElement::AssertCreated() const { return IsCreatedImpl(); }

}  // namespace vlm
