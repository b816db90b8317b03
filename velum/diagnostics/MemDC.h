#pragma once

/// \file
/// Painting that shows all at once.
///
///     {
///       vlm::CMemDC memory(context);
///       vlm::PlotRect(memory, {10, 10, 90, 60});
///     }  // now it is there

#include <velum/core/Api.h>
#include <velum/platform/Types.h>

namespace vlm {

/// A context in memory that takes the place of another one for a painting, and is copied there when
/// it goes.
///
/// It has the mapping of the target, so that what would be painted there is painted here with the
/// same coordinates, and the target's background colour everywhere. It lives on the stack, shorter
/// than its target, which must not change meanwhile. One thread uses it.
class VELUM_API CMemDC {
 public:
  /// Begins a painting of `rect`, in logical units of `target`; null stands for all that can be
  /// painted there.
  ///
  /// *Errors*: `ERR_INTERNAL` from "GdiUtil" for a null target, and if the context or its bitmap
  /// can't be made: an empty rectangle, or one wider or higher than 32767 pixels.
  explicit CMemDC(HDC target, const RECT* rect = nullptr);
  CMemDC(const CMemDC&) = delete;
  CMemDC& operator=(const CMemDC&) = delete;
  /// Copies what is painted to the target.
  ~CMemDC();

  /// The context to paint on.
  operator HDC() const noexcept { return memory_; }
  /// The same.
  HDC operator->() const noexcept { return memory_; }

 private:
  HDC memory_;
  HDC target_;
  HBITMAP bitmap_ = nullptr;
  HBITMAP replaced_ = nullptr;
  RECT rect_;
};

}  // namespace vlm
