#pragma once

/// \file
/// Keeps the drawing library started as long as somebody uses it.
///
///     const vlm::CStartGdiPlus started;

#include <velum/core/Api.h>

namespace vlm {

/// Counts one more user of the drawing library; the first one starts it. Any thread may call it.
///
/// The libraries that the system draws with need no start, so that only the users are counted.
VELUM_API void InitGdiPlus();
/// Counts one user less; the last one stops the drawing library. Any thread may call it. A call
/// more than there were of `InitGdiPlus` is told in the log, as "s_GdiRefs invalid: -1" of type 8.
VELUM_API void TermGdiPlus();

/// A user of the drawing library, for as long as the object lives.
class VELUM_API CStartGdiPlus {
 public:
  /// Calls `InitGdiPlus`.
  CStartGdiPlus();
  CStartGdiPlus(const CStartGdiPlus&) = delete;
  CStartGdiPlus& operator=(const CStartGdiPlus&) = delete;
  /// Calls `TermGdiPlus`.
  ~CStartGdiPlus();
};

}  // namespace vlm
