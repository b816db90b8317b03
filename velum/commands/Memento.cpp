#include <velum/commands/Memento.h>

namespace vlm {

Memento::Memento() = default;
Memento::Memento(const Memento&) = default;
Memento::~Memento() = default;

}  // namespace vlm
