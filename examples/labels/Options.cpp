#include <examples/labels/Options.h>

#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>

namespace vlm::examples {
namespace {

constexpr char kUsage[] =
    "Draws math text: a sheet of labels, or one label.\n"
    "\n"
    "  labels [-o FOLDER] [--labels FILE]   writes labels.png, labels.svg and labels.pdf\n"
    "  labels --text TEXT -o FILE           writes one label; FILE ends in .png, .svg or .pdf\n"
    "\n"
    "  -o, --output PATH   where to write; the sheet goes to the present folder unless told\n"
    "  --labels FILE       the labels of the sheet; those that come with the program unless told\n"
    "  --text TEXT         the label to draw\n"
    "  --face NAME         draws the labels with plain lines, in a stroked face such as KQ Roman\n"
    "  -h, --help          this text\n"
    "\n"
    "The status is 0 if all was written, 1 if something failed, 2 for a wrong command line.\n"
    "Wrong labels of a sheet are shown on it and listed; a wrong TEXT fails.\n";

void CheckOptions(const Options& options) {
  if (options.help || !options.text) return;
  if (!options.labels.empty()) throw UsageError("--text and --labels exclude each other");
  if (options.output.empty()) throw UsageError("--text needs --output FILE");
  CheckPicture(options.output);
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  OptionReader reader;
  reader.Text({"-o", "--output"}, options.output);
  reader.Text({"--labels"}, options.labels);
  reader.Value({"--text"}, [&](const std::string& text) { options.text = text; });
  reader.Text({"--face"}, options.face, "the name of a face");
  options.help = !reader.Read(arguments);
  CheckOptions(options);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::examples
