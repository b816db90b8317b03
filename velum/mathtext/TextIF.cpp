#include <velum/mathtext/TextIF.h>

namespace vlm {

// Here, so that the table of its operations is the library's under every compiler.
KQTextIF::KQTextIF() noexcept = default;

}  // namespace vlm
