#include <examples/gallery/Options.h>

#include <examples/common/Program.h>

namespace vlm::gallery {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Runs the examples of a list on their data, and writes a page with their pictures.\n"
    "\n"
    "  gallery --programs FOLDER [-o FOLDER] LIST\n"
    "\n"
    "  LIST                    the list, an XML file in a folder of the examples' folder\n"
    "      --programs FOLDER   where each example has a folder with its program\n"
    "  -o, --output FOLDER     gets the page, index.html, and all that the examples make; gallery\n"
    "                          unless told\n"
    "  -h, --help              this text\n"
    "\n"
    "An example that fails ends the run with what it said, and no page is written.\n"
    "The status is 0 if all was done, 1 if something failed, 2 for a wrong command line.\n";

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::string& name = *argument;
    const auto value = [&]() -> const std::string& {
      if (argument + 1 == arguments.end()) throw UsageError(name + " needs a value");
      return *++argument;
    };
    if (name == "-h" || name == "--help") {
      options.help = true;
    } else if (name == "--programs") {
      options.programs = value();
    } else if (name == "-o" || name == "--output") {
      options.output = value();
    } else if (name.starts_with('-')) {
      throw UsageError("unknown option '" + name + "'");
    } else if (!options.list.empty()) {
      throw UsageError("more than one list");
    } else {
      options.list = name;
    }
  }
  if (options.help) return options;
  if (options.list.empty()) throw UsageError("a list is needed");
  if (options.programs.empty()) throw UsageError("--programs FOLDER is needed");
  if (options.output.empty()) throw UsageError("--output needs the name of a folder");
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::gallery
