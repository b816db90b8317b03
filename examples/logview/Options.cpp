#include <examples/logview/Options.h>

#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>

namespace vlm::logview {
namespace {

using examples::UsageError;

constexpr int kHighestPort = 65535;
constexpr double kMostSeconds = 1e6;

constexpr char kUsage[] =
    "Shows log lines that come as datagrams, from this machine or another; or sends some.\n"
    "\n"
    "  logview listen --port N [--address A] [--lines N] [--seconds S] [-o FILE]\n"
    "  logview send --host H --port N [--prefix P] [--timed] FILE\n"
    "\n"
    "listen shows each line as it comes, in a colour for the program that it names first, and\n"
    "ends with a summary after Ctrl-C or one of the limits.\n"
    "\n"
    "  --port N            the port, 1 to 65535; 0 takes a free one and tells it\n"
    "  --address A         the address of this machine to listen at; 127.0.0.1 unless told, which\n"
    "                      hears this machine alone, while 0.0.0.0 hears everybody\n"
    "  --lines N           end after so many lines\n"
    "  --seconds S         end after so many seconds\n"
    "  -o, --output FILE   draw what came, as a picture that ends in .png, .svg or .pdf\n"
    "\n"
    "send sends each line of a file, or of the standard input for -, as one datagram. Datagrams "
    "may\n"
    "be lost on their way, and nobody tells; what the system refuses to send, such as a line of\n"
    "more than 65,503 bytes, is counted, and the status is then 1. Untimed lines go out in groups\n"
    "of some 64 KiB with pauses of 5 ms, so that a listener on this machine keeps up.\n"
    "\n"
    "  --host H            the name or address of the machine to send to\n"
    "  --port N            its port\n"
    "  --prefix P          put P in front of each line\n"
    "  --timed             each line begins with the second at which it is sent\n"
    "\n"
    "  -h, --help          this text\n"
    "\n"
    "Colours go to a terminal, unless NO_COLOR is set. The status is 0 if all went well, 1 if\n"
    "something failed, 2 for a wrong command line.\n";

template <class Number>
Number NumberOf(const char* option, const std::string& text, Number low, Number high) {
  const auto value = examples::NumberIn(text, low, high);
  if (!value) throw UsageError(std::string(option) + " can't be '" + text + "'");
  return *value;
}

void AddListening(examples::OptionReader& reader, Options& options) {
  reader.Text({"--address"}, options.address);
  reader.Value({"--lines"}, [&options](const std::string& lines) {
    options.lines = NumberOf<std::size_t>("--lines", lines, 1, 1'000'000'000);
  });
  reader.Value({"--seconds"}, [&options](const std::string& seconds) {
    options.seconds = NumberOf("--seconds", seconds, 0.0, kMostSeconds);
  });
  reader.Picture({"-o", "--output"}, options.output);
}

void AddSending(examples::OptionReader& reader, Options& options) {
  reader.Text({"--host"}, options.address);
  reader.Text({"--prefix"}, options.prefix);
  reader.Flag({"--timed"}, options.timed);
  reader.Operand(options.file, "file");
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  if (arguments.empty()) throw UsageError("listen or send is needed");
  const std::string& task = arguments.front();
  if (task == "-h" || task == "--help") return {};
  if (task != "listen" && task != "send") throw UsageError("what is '" + task + "'");
  Options options;
  options.task = task == "listen" ? Task::Listen : Task::Send;
  const bool listens = options.task == Task::Listen;
  if (listens) options.address = "127.0.0.1";
  bool hasPort = false;
  examples::OptionReader reader;
  reader.Value({"--port"}, [&](const std::string& port) {
    options.port = NumberOf("--port", port, listens ? 0 : 1, kHighestPort);
    hasPort = true;
  });
  listens ? AddListening(reader, options) : AddSending(reader, options);
  if (!reader.Read({arguments.begin() + 1, arguments.end()})) return {};
  if (!hasPort) throw UsageError("--port is needed");
  if (!listens && options.address.empty()) throw UsageError("--host is needed");
  if (!listens && options.file.empty()) throw UsageError("a file is needed");
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::logview
