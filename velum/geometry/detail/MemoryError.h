#pragma once

/// \file
/// Missing memory as an error of the library.
///
///     WithMemoryError("GPolygon", __LINE__, [&] { points.resize(count); });

#include <velum/core/Exception.h>

#include <new>
#include <stdexcept>

namespace vlm::detail {

/// Runs what fills containers.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` of the source file `source` and `line` where memory is missing, or
/// a container can't be so long; whatever else `action` throws.
template <class Action>
void WithMemoryError(const char* source, int line, const Action& action) {
  try {
    action();
  } catch (const std::bad_alloc&) {
    ThrowErrorImpl(source, line, ERR_OUT_OF_MEMORY);
  } catch (const std::length_error&) {
    ThrowErrorImpl(source, line, ERR_OUT_OF_MEMORY);
  }
}

}  // namespace vlm::detail
