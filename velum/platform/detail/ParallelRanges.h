#pragma once

/// \file
/// Loops whose turns do not depend on each other, on all processors.
///
///     vlm::platform::ForRanges(rows.size(), 64, [&](std::size_t begin, std::size_t end) {
///       for (std::size_t i = begin; i < end; ++i) Sort(rows[i]);
///     });

#include <cstddef>
#include <functional>

namespace vlm::platform {

/// Calls `body(begin, end)` for parts of the range from 0 to `count` that together make it up, some
/// of them at once, and returns when all have returned.
///
/// A part has about `grain` elements or more. What the caller did before is seen by each call, and
/// what the calls did is seen by the caller. `body` throws nothing. Where there is no memory for
/// threads, it is called once for the whole range, whatever it did by then.
void ForRanges(std::size_t count, std::size_t grain,
               const std::function<void(std::size_t begin, std::size_t end)>& body);

}  // namespace vlm::platform
