#include <velum/commands/ModalElement.h>

namespace vlm {

ModalElement::ModalElement() = default;
ModalElement::~ModalElement() = default;

StatusCode ModalElement::Execute() { return ExecuteImpl(); }

}  // namespace vlm
