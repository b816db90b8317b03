// Shows log lines that come as datagrams, or sends some; logview --help tells how.

#include <velum/core/StringFormat.h>
#include <examples/common/Program.h>
#include <examples/logview/Listener.h>
#include <examples/logview/LogPicture.h>
#include <examples/logview/Options.h>
#include <examples/logview/Palette.h>
#include <examples/logview/Sender.h>
#include <examples/logview/Sheet.h>

#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

namespace vlm::logview {
namespace {

bool WantsColors() {
  const char* const no = std::getenv("NO_COLOR");
  return ::isatty(STDOUT_FILENO) && !(no && *no);
}

void Listen(const Options& options) {
  Listener listener(options.address, options.port);
  std::cout << "Listening at " << options.address << ":" << listener.Port() << std::endl;
  if (options.seconds) listener.StopAfter(*options.seconds);
  const bool colors = WantsColors();
  const auto start = std::chrono::steady_clock::now();
  Sheet sheet;
  while (!options.lines || sheet.Count() < *options.lines) {
    const auto datagram = listener.Next();
    if (!datagram) break;
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    const ReceivedLine line = ReadDatagram(*datagram, time.count());
    const std::string shown = ToString("%-7s ", line.severity) +
                              (line.prefix.empty() ? "" : line.prefix + ": ") + line.text;
    const std::size_t lane = sheet.Add(line);
    std::cout << (colors ? OnTerminal(shown, lane) : shown) << std::endl;
  }
  std::cout << sheet.Summary() << "\n";
  if (options.output.empty()) return;
  DrawSheet(sheet, options.output);
  std::cout << "Made " << options.output << "\n";
}

void Send(const Options& options) {
  const Sent sent = SendLines(options);
  if (sent.refused > 0) {
    throw std::runtime_error("the system refused " + std::to_string(sent.refused) + " of " +
                             std::to_string(sent.taken + sent.refused) + " lines");
  }
  std::cout << "Sent " << sent.taken << (sent.taken == 1 ? " line\n" : " lines\n");
}

void Run(const Options& options) {
  switch (options.task) {
    case Task::Help:
      std::cout << UsageText();
      break;
    case Task::Listen:
      Listen(options);
      break;
    case Task::Send:
      Send(options);
      break;
  }
}

}  // namespace
}  // namespace vlm::logview

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("logview", [&] {
    vlm::logview::Run(vlm::logview::ParseOptions({argv + 1, argv + argc}));
  });
}
