#include <velum/diagnostics/detail/CrashLog.h>

#include <velum/diagnostics/Logger.h>
#include <velum/platform/detail/SafeFile.h>
#include <velum/platform/detail/SafeText.h>

#include <array>
#include <atomic>
#include <cstring>
#include <mutex>

namespace vlm::detail {
namespace {

constinit std::atomic<int> theFile{-1};

/// Where a file is opened that is not open yet.
struct Place {
  bool keeps = true;
  std::array<char, 4096> path{};
};
/// The place that counts, and the one that is written meanwhile.
constinit std::array<Place, 2> thePlaces{};
constinit std::atomic<const Place*> thePlace{nullptr};
constinit std::mutex theWriter;
/// A line on its way, too large for the stack of a handler.
constinit char theLine[8 * 1024] = {};

}  // namespace

void CrashLog::TellFile(int descriptor) noexcept { theFile = descriptor; }

void CrashLog::TellPath(std::string_view native, bool append) noexcept {
  const std::lock_guard lock(theWriter);
  Place& place = thePlace == thePlaces.data() ? thePlaces[1] : thePlaces[0];
  if (native.empty() || native.size() >= place.path.size()) {
    thePlace = nullptr;
    return;
  }
  place.keeps = append;
  std::memcpy(place.path.data(), native.data(), native.size());
  place.path[native.size()] = '\0';
  thePlace = &place;
}

CrashLog::CrashLog() noexcept {
  if (!g_Logger.IsEnabled()) return;
  takesAlerts_ = (g_Logger.GetType() & LogAlert) != 0;
  lastWasEmpty_ = g_Logger.lastEmpty_;
  if (theFile < 0) {
    const Place* const place = thePlace;
    if (!place) return;
    TellFile(platform::OpenToAppend(place->path.data(), place->keeps));
    file_ = theFile;
    if (!place->keeps) Line({});
  }
  file_ = theFile;
}

void CrashLog::Begin(std::string_view title) const noexcept {
  if (!lastWasEmpty_) Line({});
  Line(title);
  char rule[80];
  platform::SafeText text(rule);
  for (std::size_t i = 0; i < title.size(); ++i) text.Put("-");
  Line(text.View());
}

void CrashLog::Alert(std::string_view line) const noexcept {
  if (takesAlerts_) Line(line);
}

void CrashLog::Line(std::string_view line) const noexcept {
  if (file_ < 0) return;
  platform::SafeText text(theLine, sizeof(theLine) - 1);
  text.PutPrintable(line);
  theLine[text.View().size()] = '\n';
  platform::WriteSafely(file_, {theLine, text.View().size() + 1});
}

}  // namespace vlm::detail
