#include <examples/overlay/Options.h>

#include <examples/common/OptionReader.h>

namespace vlm::overlay {
namespace {

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
  examples::OptionReader reader;
  reader.Picture({"-o", "--output"}, options.output);
  reader.Operand(options.outlines, "file of outlines");
  options.help = !reader.Read(arguments);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::overlay
