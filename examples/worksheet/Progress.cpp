#include <examples/worksheet/Progress.h>

#include <algorithm>
#include <csignal>
#include <ostream>

namespace vlm::worksheet {
namespace {

volatile std::sig_atomic_t isInterrupted = 0;

extern "C" void NoteInterrupt(int) { isInterrupted = 1; }

}  // namespace

TerminalProgress::TerminalProgress(std::ostream& stream, bool isShown)
    : stream_(stream), isShown_(isShown) {
  isInterrupted = 0;
  std::signal(SIGINT, NoteInterrupt);
}

TerminalProgress::~TerminalProgress() {
  std::signal(SIGINT, SIG_DFL);
  TerminalProgress::End();
}

void TerminalProgress::Begin(GString title, double total) {
  title_ = title;
  text_.clear();
  total_ = total;
  done_ = 0.0;
  percent_ = 0;
  Show();
}

void TerminalProgress::Advance(double done) {
  done_ += done;
  const double share = total_ > 0.0 ? std::min(done_ / total_, 1.0) : 0.0;
  const int percent = static_cast<int>(100.0 * share);
  if (percent == percent_) return;
  percent_ = percent;
  Show();
}

void TerminalProgress::Text(GString text) { text_ = text; }

bool TerminalProgress::IsCanceled() const { return isInterrupted != 0; }

void TerminalProgress::End() {
  if (width_ > 0) stream_ << '\r' << std::string(width_, ' ') << '\r' << std::flush;
  width_ = 0;
}

void TerminalProgress::Show() {
  if (!isShown_) return;
  std::string line = title_ + ": " + std::to_string(percent_) + " %";
  if (!text_.empty()) line += ", " + text_;
  stream_ << '\r' << line << std::string(width_ - std::min(width_, line.size()), ' ') << std::flush;
  width_ = std::max(width_, line.size());
}

}  // namespace vlm::worksheet
