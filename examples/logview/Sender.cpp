#include <examples/logview/Sender.h>

#include <velum/diagnostics/RemoteLogger.h>
#include <velum/files/BufferedFile.h>

#include <charconv>
#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

namespace vlm::logview {
namespace {

constexpr unsigned long kLookUpMs = 5'000;
/// After so many bytes comes a pause. A socket that listens has room for some 200,000 bytes, unless
/// somebody changed that, and the system counts a short line as 768.
constexpr std::size_t kGroupBytes = 65'536;
constexpr std::size_t kBytesBesideALine = 768;
constexpr std::chrono::milliseconds kPause{5};

// Takes the time off the start of a line.
std::chrono::duration<double> TakeTime(std::string_view& line, std::size_t number) {
  double seconds = 0.0;
  const char* const end = line.data() + line.size();
  const auto [behind, error] = std::from_chars(line.data(), end, seconds);
  if (error != std::errc() || behind == end || *behind != ' ' || !(seconds >= 0 && seconds < 1e6)) {
    throw std::runtime_error("line " + std::to_string(number) + " does not begin with its time");
  }
  line.remove_prefix(static_cast<std::size_t>(behind + 1 - line.data()));
  return std::chrono::duration<double>(seconds);
}

}  // namespace

Sent SendLines(const Options& options) {
  CBufferedFile file(options.file == "-" ? "/dev/stdin" : options.file, "r",
                     CBufferedFile::ShareDenyNone, false);
  CRemoteLogger remote(options.address, options.port, kLookUpMs);
  if (!remote.IsEnabled()) {
    throw std::runtime_error("cannot find the host '" + options.address + "'");
  }
  const auto start = std::chrono::steady_clock::now();
  Sent sent;
  std::size_t count = 0;
  std::size_t bytes = 0;
  for (std::string text; file.ReadString(text);) {
    std::string_view line = text;
    ++count;
    if (options.timed) std::this_thread::sleep_until(start + TakeTime(line, count));
    ++(remote.Send(options.prefix + std::string(line)) ? sent.taken : sent.refused);
    bytes += kBytesBesideALine + line.size();
    if (options.timed || bytes < kGroupBytes) continue;
    std::this_thread::sleep_for(kPause);
    bytes = 0;
  }
  return sent;
}

}  // namespace vlm::logview
