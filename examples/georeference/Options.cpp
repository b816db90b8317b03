#include <examples/georeference/Options.h>

#include <examples/common/OptionReader.h>
#include <examples/common/Picture.h>
#include <examples/common/Program.h>
#include <examples/georeference/Methods.h>

namespace vlm::georeference {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Puts a scanned map back into its coordinates by control points.\n"
    "\n"
    "  georeference [-o FILE] [--sheet FILE]\n"
    "  georeference --points FILE [--method NAME] [LIST]\n"
    "\n"
    "The first form draws a bent sheet of a map, fits all methods to control points on it, tells\n"
    "how far each is off, and draws the sheet as four of them straighten it. The second prints\n"
    "where points come to: for each, its coordinates and those of its image.\n"
    "\n"
    "  -o, --output FILE   the picture, which ends in .png, .svg or .pdf; georeference.png unless\n"
    "                      told\n"
    "  --sheet FILE        the sheet, which ends in .png; sheet.png unless told\n"
    "  --points FILE       control points of yours: x and y on the sheet, x and y on the map, in "
    "a\n"
    "                      line each; both y upwards, since not every method can mirror\n"
    "  --method NAME       thin-plate-spline unless told, natural-cubic-spline, marcov-spline,\n"
    "                      exponential-spline, rational-quadratic-spline, inverse-distance,\n"
    "                      quadratic-polynomial, general-linear, linear-conformal, mixed-scale,\n"
    "                      uniform-scale, translate or identity\n"
    "  LIST                points on the sheet, x and y in a line each; the standard input unless\n"
    "                      told\n"
    "  -h, --help          this text\n"
    "\n"
    "The status is 0 if all went well, 1 if something failed, 2 for a wrong command line.\n";

WarpingMethod MethodNamed(const std::string& name) {
  const std::optional<WarpingMethod> method = MethodOf(name);
  if (!method) throw UsageError("there is no method '" + name + "'");
  return *method;
}

void CheckForms(const Options& options, bool draws, bool hasMethod) {
  if (options.points.empty() && (hasMethod || !options.list.empty())) {
    throw UsageError("a method and a list need --points");
  }
  if (draws && !options.points.empty()) {
    throw UsageError("--points makes no picture: it excludes --output and --sheet");
  }
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  bool draws = false;
  bool hasMethod = false;
  examples::OptionReader reader;
  reader.Value({"-o", "--output"}, [&](const std::string& path) {
    examples::CheckPicture(path);
    options.output = path;
    draws = true;
  });
  reader.Value({"--sheet"}, [&](const std::string& path) {
    if (examples::PictureFormatOf(path) != examples::PictureFormat::Png) {
      throw UsageError("'" + path + "' does not end in .png");
    }
    options.sheet = path;
    draws = true;
  });
  reader.Text({"--points"}, options.points);
  reader.Value({"--method"}, [&](const std::string& name) {
    options.method = MethodNamed(name);
    hasMethod = true;
  });
  reader.Operand(options.list, "list of points");
  options.help = !reader.Read(arguments);
  if (!options.help) CheckForms(options, draws, hasMethod);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::georeference
