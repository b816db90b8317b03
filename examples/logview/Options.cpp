#include <examples/logview/Options.h>

#include <examples/common/Picture.h>
#include <examples/common/Program.h>

#include <charconv>
#include <system_error>

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
Number NumberOf(const std::string& option, const std::string& text, Number low, Number high) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() ||
      !(value >= low && value <= high)) {
    throw UsageError(option + " can't be '" + text + "'");
  }
  return value;
}

// Reads the options of either task; gives those that were there.
class Reader {
 public:
  explicit Reader(const std::vector<std::string>& arguments)
      : at_(arguments.begin() + 1), end_(arguments.end()) {}

  void Run(Options& options) {
    const bool listens = options.task == Task::Listen;
    bool hasPort = false;
    for (; at_ != end_; ++at_) {
      const std::string& name = *at_;
      if (name == "-h" || name == "--help") {
        options.task = Task::Help;
        return;
      }
      if (name == "--port") {
        options.port = NumberOf(name, Value(), listens ? 0 : 1, kHighestPort);
        hasPort = true;
      } else if (name == (listens ? "--address" : "--host")) {
        options.address = Value();
      } else if (listens ? !ListenOption(name, options) : !SendOption(name, options)) {
        throw UsageError(name.starts_with('-') ? "unknown option '" + name + "'"
                                               : "what is '" + name + "'");
      }
    }
    if (!hasPort) throw UsageError("--port is needed");
  }

 private:
  const std::string& Value() {
    const std::string& name = *at_;
    if (at_ + 1 == end_) throw UsageError(name + " needs a value");
    return *++at_;
  }

  bool ListenOption(const std::string& name, Options& options) {
    if (name == "--lines") {
      options.lines = NumberOf<std::size_t>(name, Value(), 1, 1'000'000'000);
    } else if (name == "--seconds") {
      options.seconds = NumberOf(name, Value(), 0.0, kMostSeconds);
    } else if (name == "-o" || name == "--output") {
      options.output = Value();
    } else {
      return false;
    }
    return true;
  }

  bool SendOption(const std::string& name, Options& options) {
    if (name == "--prefix") {
      options.prefix = Value();
    } else if (name == "--timed") {
      options.timed = true;
    } else if (name != "-" && name.starts_with('-')) {
      return false;
    } else if (!options.file.empty()) {
      throw UsageError("more than one file");
    } else {
      options.file = name;
    }
    return true;
  }

  std::vector<std::string>::const_iterator at_;
  std::vector<std::string>::const_iterator end_;
};

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  if (arguments.empty()) throw UsageError("listen or send is needed");
  const std::string& task = arguments.front();
  if (task == "-h" || task == "--help") return options;
  if (task == "listen") {
    options.task = Task::Listen;
    options.address = "127.0.0.1";
  } else if (task == "send") {
    options.task = Task::Send;
  } else {
    throw UsageError("what is '" + task + "'");
  }
  Reader(arguments).Run(options);
  if (options.task == Task::Send) {
    if (options.address.empty()) throw UsageError("--host is needed");
    if (options.file.empty()) throw UsageError("a file is needed");
  } else if (!options.output.empty() && !examples::PictureFormatOf(options.output)) {
    throw UsageError("'" + options.output + "' ends in none of .png, .svg and .pdf");
  }
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::logview
