#include <examples/crashlab/Options.h>

#include <velum/core/StringFormat.h>
#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>

namespace vlm::crashlab {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Crashes on purpose, in a child process, and shows what is left: the log, and the dump with\n"
    "its addresses turned into functions and lines by resolve-dump. At a terminal the child asks\n"
    "whether to save the dump. Both files stay beside this program.\n"
    "\n"
    "  crashlab WAY [-o FILE]\n"
    "\n"
    "  -o, --output FILE   draw the stack, as a picture that ends in .png, .svg or .pdf\n"
    "  -h, --help          this text\n"
    "\n"
    "The status is 0 if the child crashed as it should, 1 if something failed, 2 for a wrong\n"
    "command line. The ways:\n"
    "\n";

const Way& WayOf(const std::string& name) {
  const Way* const way = FindWay(name);
  if (!way) throw UsageError("there is no way '" + name + "'");
  return *way;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  examples::OptionReader reader;
  reader.Picture({"-o", "--output"}, options.output);
  reader.Operands([&](const std::string& name) {
    if (options.way) throw UsageError("more than one way");
    options.way = &WayOf(name);
  });
  if (!reader.Read(arguments)) return {};
  if (!options.way) throw UsageError("a way to crash is needed");
  options.task = Task::Trial;
  return options;
}

std::string UsageText() {
  std::string text = kUsage;
  for (const Way& way : AllWays()) text += ToString("  %-17s %s\n", way.name, way.about);
  return text;
}

}  // namespace vlm::crashlab
