#pragma once

/// \file
/// The service that runs parts of a loop on all processors. ParallelRanges.h is what the library
/// calls.

#include <cstddef>
#include <functional>

namespace vlm::platform {

/// Calls `body(begin, end)` for parts of the range from 0 to `count`, and returns when all have
/// returned.
///
/// *Errors:* `std::bad_alloc`; the service is not to be called again then.
void RunOnAllProcessors(std::size_t count, std::size_t grain,
                        const std::function<void(std::size_t begin, std::size_t end)>& body);

}  // namespace vlm::platform
