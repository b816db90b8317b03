#include <examples/overlay/Options.h>

#include <examples/common/Picture.h>
#include <examples/common/Program.h>

namespace vlm::overlay {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Combines two outlines by all four set operations, and draws what comes out.\n"
    "\n"
    "  overlay [-o FILE] [OUTLINES]\n"
    "\n"
    "  OUTLINES            a file whose first two outlines are taken; those that come with the\n"
    "                      program unless told\n"
    "  -o, --output FILE   the picture, which ends in .png, .svg or .pdf; overlay.png unless told\n"
    "  -h, --help          this text\n"
    "\n"
    "The status is 0 if all was drawn, 1 if something failed, 2 for a wrong command line.\n";

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    if (*argument == "-h" || *argument == "--help") {
      options.help = true;
    } else if (*argument == "-o" || *argument == "--output") {
      if (argument + 1 == arguments.end()) throw UsageError(*argument + " needs a value");
      options.output = *++argument;
    } else if (argument->size() > 1 && argument->front() == '-') {
      throw UsageError("unknown option '" + *argument + "'");
    } else if (!options.outlines.empty()) {
      throw UsageError("more than one file of outlines");
    } else {
      options.outlines = *argument;
    }
  }
  if (!examples::PictureFormatOf(options.output)) {
    throw UsageError("'" + options.output + "' ends in none of .png, .svg and .pdf");
  }
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::overlay
