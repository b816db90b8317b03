#include <examples/palette/Options.h>

#include <examples/common/Picture.h>
#include <examples/common/Program.h>
#include <examples/palette/ImageFile.h>

#include <charconv>

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

unsigned ReadColors(const std::string& value) {
  constexpr unsigned kMost = 256;
  unsigned colors = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), colors);
  if (error != std::errc() || end != value.data() + value.size() || colors < 1 || colors > kMost) {
    throw UsageError("there are from 1 to 256 colours, not '" + value + "'");
  }
  return colors;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::string& option = *argument;
    const auto value = [&]() -> const std::string& {
      if (argument + 1 == arguments.end()) throw UsageError(option + " needs a value");
      return *++argument;
    };
    if (option == "-h" || option == "--help") {
      options.help = true;
      return options;
    }
    if (option == "-n" || option == "--colors") {
      options.colors = ReadColors(value());
    } else if (option == "-d" || option == "--diffuse") {
      options.diffuses = true;
    } else if (option == "-o" || option == "--output") {
      options.sheet = value();
      if (!examples::PictureFormatOf(options.sheet)) {
        throw UsageError("'" + options.sheet + "' ends in none of .png, .svg and .pdf");
      }
    } else if (option.size() > 1 && option.front() == '-') {
      throw UsageError("unknown option '" + option + "'");
    } else if (options.input.empty()) {
      options.input = option;
    } else if (ImageFormatOf(option) == ImageFormat::None) {
      throw UsageError("'" + option + "' ends in neither .png nor .bmp");
    } else {
      options.outputs.push_back(option);
    }
  }
  if (options.input.empty()) throw UsageError("a picture is needed");
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::palette
