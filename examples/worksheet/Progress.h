#pragma once

/// \file
/// A display of progress on one line of a terminal.
///
///     vlm::worksheet::TerminalProgress progress(std::cerr);
///     progress.Begin("Reading wells.csv", 5e6);
///     progress.Advance(1e6);  // Reading wells.csv: 20 %

#include <velum/commands/IProgress.h>

#include <cstddef>
#include <iosfwd>
#include <string>

namespace vlm::worksheet {

/// Writes over one line as the work goes on, once for each per cent, and clears it at the end. An
/// interrupt from the keyboard, while one lives, asks for the work to be given up. Has identity.
class TerminalProgress : public IProgress {
 public:
  /// Writes to `stream`; with `isShown` false it only listens.
  explicit TerminalProgress(std::ostream& stream, bool isShown = true);
  TerminalProgress(const TerminalProgress&) = delete;
  TerminalProgress& operator=(const TerminalProgress&) = delete;
  ~TerminalProgress() override;

  void Begin(GString title, double total) override;
  void Advance(double done) override;
  void Text(GString text) override;
  [[nodiscard]] bool IsCanceled() const override;
  void End() override;

 private:
  void Show();

  std::ostream& stream_;
  const bool isShown_;
  std::string title_;
  std::string text_;
  double total_ = 0.0;
  double done_ = 0.0;
  int percent_ = 0;
  std::size_t width_ = 0;  // of what the line shows
};

}  // namespace vlm::worksheet
