// Puts a scanned map back into its coordinates; georeference --help tells how.

#include <velum/core/GString.h>
#include <examples/common/Program.h>
#include <examples/georeference/ControlPoints.h>
#include <examples/georeference/MapSheet.h>
#include <examples/georeference/Methods.h>
#include <examples/georeference/Options.h>
#include <examples/georeference/SheetPicture.h>
#include <examples/georeference/Trials.h>

#include <fstream>
#include <iostream>
#include <stdexcept>

namespace vlm::georeference {
namespace {

RPoints PointsOf(const std::string& list) {
  const std::string name = list.empty() ? "standard input" : list;
  try {
    if (list.empty()) return ReadPoints(std::cin);
    std::ifstream file = examples::OpenInput(list);
    return ReadPoints(file);
  } catch (const std::runtime_error& error) {
    // What cannot be opened is told with its name already.
    const std::string message = error.what();
    throw std::runtime_error(message.starts_with("line ") ? name + ": " + message : message);
  }
}

void PrintImages(const Options& options) {
  const ControlPoints points = ReadControlPointFile(options.points);
  const RPoints list = PointsOf(options.list);
  CImageRegistration map;
  const WarpingMethod inForce = map.Calibrate(points.sheet, points.map, options.method);
  GString text;
  text.FormatString("# %s, %u control points", NameOf(inForce),
                    static_cast<unsigned>(points.sheet.Points().size()));
  if (inForce != options.method) text.AppendFormatString("; no fit of %s", NameOf(options.method));
  std::cout << text << "\n";
  for (const RPoint& p : list.Points()) {
    const RPoint image = map.Transform(p);
    text.FormatString("%.10g %.10g %.10g %.10g\n", p.X(), p.Y(), image.X(), image.Y());
    std::cout << text;
  }
}

void DrawGallery(const Options& options) {
  const std::vector<overlay::Outline> outlines = overlay::ReadOutlineFile(VELUM_OUTLINE_FILE);
  if (outlines.empty()) throw std::runtime_error("there is no outline to draw a map of");
  const ControlPoints points = ReadControlPointFile(VELUM_SHEET_POINTS);
  WriteSheet(DrawSheet(outlines[0]).get(), options.sheet);
  const examples::SurfacePtr sheet = ReadSheet(options.sheet);
  const std::vector<Trial> trials = TryAllMethods(points);
  DrawComparison(sheet.get(), points, trials, options.output);
  std::cout << points.sheet.Points().size() << " control points, 1000 other points\n\n"
            << TableOf(trials) << "\n";
  std::cout << "Made " << options.sheet << "\nMade " << options.output << "\n";
}

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
  } else if (options.points.empty()) {
    DrawGallery(options);
  } else {
    PrintImages(options);
  }
}

}  // namespace
}  // namespace vlm::georeference

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("georeference", [&] {
    vlm::georeference::Run(vlm::georeference::ParseOptions({argv + 1, argv + argc}));
  });
}
