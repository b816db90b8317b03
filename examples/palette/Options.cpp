#include <examples/palette/Options.h>

#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>
#include <examples/palette/ImageFile.h>

namespace vlm::palette {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Reduces a picture to a palette of its own, and tells the palette.\n"
    "\n"
    "  palette [options] IN [OUT ...]\n"
    "\n"
    "  -n, --colors N           how many colours, from 1 to 256; 256 unless told\n"
    "  -d, --diffuse            spreads what a pixel is off by over its neighbours\n"
    "  -o, --output PICTURE     draws IN beside itself in 256, 16 and 4 colours; ends in .png,\n"
    "                           .svg or .pdf\n"
    "  -h, --help               this text\n"
    "\n"
    "IN is a PNG or BMP file; what is transparent is laid on white. OUT ends in .png or .bmp; a "
    "BMP\n"
    "file has 1, 4 or 8 bits, as few as the palette allows.\n"
    "\n"
    "The status is 0 if all was done, 1 if something failed, 2 for a wrong command line.\n";

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  examples::OptionReader reader;
  reader.Value({"-n", "--colors"}, [&](const std::string& count) {
    const auto colors = examples::NumberIn(count, 1u, 256u);
    if (!colors) throw UsageError("there are from 1 to 256 colours, not '" + count + "'");
    options.colors = *colors;
  });
  reader.Flag({"-d", "--diffuse"}, options.diffuses);
  reader.Picture({"-o", "--output"}, options.sheet);
  reader.Operands([&](const std::string& file) {
    if (options.input.empty()) {
      options.input = file;
    } else if (ImageFormatOf(file) == ImageFormat::None) {
      throw UsageError("'" + file + "' ends in neither .png nor .bmp");
    } else {
      options.outputs.push_back(file);
    }
  });
  options.help = !reader.Read(arguments);
  if (!options.help && options.input.empty()) throw UsageError("a picture is needed");
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::palette
