#pragma once

/// \file
/// The help of an application, as a library sees it.
///
///     void Explain(vlm::IHelp& help) { help.ShowHelp("gridding"); }

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// A source of help. Applications implement it; nothing in the library does.
class VELUM_API IHelp {
 public:
  IHelp() = default;
  /// Copies the base, which holds nothing.
  IHelp(const IHelp&) = default;
  /// Copies the base, which holds nothing.
  IHelp& operator=(const IHelp&) = default;
  virtual ~IHelp() = default;

  /// Shows what there is about `topic`.
  virtual void ShowHelp(GString topic) = 0;
};

}  // namespace vlm
