#pragma once

/// \file
/// A context in which a face is selected at the size of its em square.
///
///     vlm::FontRefDC context;
///     context.SelectEmFont(*face);

#include <velum/core/Api.h>
#include <velum/fonts/FaceInfo.h>
#include <velum/platform/Types.h>

namespace vlm {

/// A reference context for working with faces.
///
/// Owns its context and the face selected in it, and gives both back when it goes. One thread uses
/// it at a time.
class VELUM_API FontRefDC {
 public:
  /// Takes a context, with no outline face selected.
  ///
  /// *Errors*: `std::bad_alloc`, here and for a face that is selected.
  FontRefDC();
  FontRefDC(const FontRefDC&) = delete;
  FontRefDC& operator=(const FontRefDC&) = delete;
  virtual ~FontRefDC();

  /// The context.
  operator HDC() const noexcept { return context_; }

  /// Selects a face at the size of its em square. A face that the system does not have, a symbol
  /// set say, leaves the one that was selected before.
  void SelectEmFont(const CFaceInfo& face);

 private:
  HDC context_;
  HFONT original_ = nullptr;
};

}  // namespace vlm
