// Runs the examples and writes a page with their pictures; gallery --help tells how.

#include <velum/files/HtmlReport.h>
#include <examples/common/HtmlParts.h>
#include <examples/common/Program.h>
#include <examples/gallery/List.h>
#include <examples/gallery/Options.h>
#include <examples/gallery/Page.h>
#include <examples/gallery/Places.h>
#include <examples/gallery/Run.h>

#include <iostream>

namespace vlm::gallery {
namespace {

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
    return;
  }
  const List list = ReadList(options.list);
  const Places places = PlacesOf(options.list, options.programs, options.output);
  const std::vector<Outcome> outcomes = RunAll(list, places, std::cout);
  CHtmlReport report;
  WritePage(report, list, places, outcomes);
  const std::string page = places.gallery + "/" + kPage;
  examples::WriteReport(report, page);
  std::cout << "Made " << page << "\n";
}

}  // namespace
}  // namespace vlm::gallery

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("gallery", [&] {
    vlm::gallery::Run(vlm::gallery::ParseOptions({argv + 1, argv + argc}));
  });
}
