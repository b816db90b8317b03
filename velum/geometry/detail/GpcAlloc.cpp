#include <velum/geometry/detail/GpcAlloc.h>

#include <velum/core/Exception.h>
#include <velum/core/GString.h>

#include <cstdlib>

namespace vlm::detail {

constinit thread_local GPCMalloc gpcMalloc = &std::malloc;

void* GPCAlloc(int line, const char* label, std::size_t size, const char* fileName) {
  if (size == 0) return nullptr;
  void* const block = gpcMalloc(size);
  if (!block) {
    throw Exception("GPC Library", fileName, line, ERR_OUT_OF_MEMORY,
                    GString("GPCAlloc failure: ") + label);
  }
  return block;
}

}  // namespace vlm::detail
