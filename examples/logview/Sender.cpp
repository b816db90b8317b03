#include <examples/logview/Sender.h>

#include <velum/diagnostics/Logger.h>
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
constexpr int kType = LogInformation | LogRemote;

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

std::size_t SendLines(const Options& options) {
  CBufferedFile file(options.file == "-" ? "/dev/stdin" : options.file, "r",
                     CBufferedFile::ShareDenyNone, false);
  CLogger log("/dev/null");
  if (!log.SetRemoteLogger(options.prefix, options.address, options.port, kLookUpMs)) {
    throw std::runtime_error("cannot find the host '" + options.address + "'");
  }
  const auto start = std::chrono::steady_clock::now();
  std::size_t count = 0;
  for (std::string text; file.ReadString(text);) {
    std::string_view line = text;
    ++count;
    if (options.timed) std::this_thread::sleep_until(start + TakeTime(line, count));
    log.Send(kType, std::string(line));
  }
  return count;
}

}  // namespace vlm::logview
