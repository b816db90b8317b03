#include <examples/sketchbook/Refuse.h>

#include <velum/core/Exception.h>
#include <velum/files/DeprecatedPath.h>

namespace vlm::sketchbook {

void Refuse(const GString& message, const char* file, int line) {
  throw Exception("Sketchbook", DeprecatedPath::GetNamePtr(file), line, ERR_CUSTOM, message);
}

}  // namespace vlm::sketchbook
