#pragma once

/// \file
/// A display of progress that an application implements.
///
///     const auto progress = vlm::ProgressFactory::Construct();
///     progress->Begin("Gridding", 100);
///     for (int row = 0; row < 100 && !progress->IsCanceled(); ++row) {
///       GridRow(row);
///       progress->Advance(1);
///     }
///     progress->End();

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// Shows how far some work has come. Nothing in the library implements it or calls it.
class VELUM_API IProgress {
 public:
  IProgress() = default;
  /// Copies the base, which holds nothing.
  IProgress(const IProgress&) = default;
  /// Copies the base, which holds nothing.
  IProgress& operator=(const IProgress&) = default;
  virtual ~IProgress() = default;

  /// Starts the display of work that has `total` steps, in any unit.
  virtual void Begin(GString title, double total) = 0;
  /// Says that another `done` steps are done.
  virtual void Advance(double done) = 0;
  /// Shows what is being done at present.
  virtual void Text(GString text) = 0;
  /// True once the user has asked for the work to be given up.
  [[nodiscard]] virtual bool IsCanceled() const = 0;
  /// Ends the display.
  virtual void End() = 0;
};

}  // namespace vlm
