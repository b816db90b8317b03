#pragma once

/// \file
/// The device that metafiles refer to.
///
///     const vlm::EMFRefDC reference;
///     vlm::SIZE extent;
///     vlm::GetViewportExtEx(reference.GetRefDC(), &extent);

#include <velum/core/Api.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Holds a reference context: the screen's stand-in, since this system has no printer contexts.
/// One thread uses it.
class VELUM_API EMFRefDC {
 public:
  /// Takes the context.
  ///
  /// *Errors*: `ERR_OUT_OF_MEMORY` from "EmfRefDC".
  EMFRefDC();
  EMFRefDC(const EMFRefDC&) = delete;
  EMFRefDC& operator=(const EMFRefDC&) = delete;
  /// Gives the context back.
  ~EMFRefDC();

  /// The context. *Lifetime*: that of the object.
  [[nodiscard]] HDC GetRefDC() const noexcept { return context_; }

 private:
  HDC context_;
};

}  // namespace vlm
