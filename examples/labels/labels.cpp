// Draws a sheet of labels, or one label; labels --help tells how.

#include <examples/common/Handles.h>
#include <examples/common/LabelLayout.h>
#include <examples/common/Picture.h>
#include <examples/common/Program.h>
#include <examples/labels/LabelDevice.h>
#include <examples/labels/LabelFile.h>
#include <examples/labels/LabelSheet.h>
#include <examples/labels/Options.h>

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <system_error>

namespace vlm::examples {
namespace {

constexpr double kSingleLabelHeight = 24.0;
constexpr double kSingleLabelMargin = 12.0;

LabelLayout LayOutSingle(const std::string& text, const std::string& face) {
  const SurfacePtr surface(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr));
  const ContextPtr context(cairo_create(surface.get()));
  LabelDevice device(context.get(), kSingleLabelHeight, face);
  return {device.Get(), text};
}

void DrawSingle(const std::string& text, const std::string& face, const std::string& output) {
  const LabelLayout label = LayOutSingle(text, face);
  if (label.Fault()) throw std::runtime_error(label.Fault()->InWords());
  const Box2d& box = label.Box();
  const Vec2d position(kSingleLabelMargin - box.xMin(), kSingleLabelMargin - box.yMin());
  WritePicture(output, box.xRange() + 2.0 * kSingleLabelMargin,
               box.yRange() + 2.0 * kSingleLabelMargin, [&](cairo_t* context) {
                 LabelDevice device(context, kSingleLabelHeight, face);
                 label.Draw(device.Get(), position);
               });
  std::cout << "Made " << output << "\n";
}

void MakeFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) {
    throw std::runtime_error("cannot make the folder '" + folder.string() +
                             "': " + error.message());
  }
}

void DrawSheet(const std::string& labelFile, const std::string& face,
               const std::filesystem::path& folder) {
  const std::vector<Label> labels = ReadLabelFile(labelFile);
  const LabelSheet sheet(labels, face);
  MakeFolder(folder);
  for (const char* name : {"labels.png", "labels.svg", "labels.pdf"}) {
    const std::string path = (folder / name).string();
    WritePicture(path, sheet.Width(), sheet.Height(),
                 [&](cairo_t* context) { sheet.Draw(context); });
    std::cout << "Made " << path << "\n";
  }
  std::cout << labels.size() << " labels, " << sheet.Faults().size() << " of them wrong\n";
  for (const std::string& fault : sheet.Faults()) std::cout << "  " << fault << "\n";
}

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
  } else if (options.text) {
    DrawSingle(*options.text, options.face, options.output);
  } else {
    DrawSheet(options.labels.empty() ? VELUM_LABEL_FILE : options.labels, options.face,
              options.output.empty() ? "." : options.output);
  }
}

}  // namespace
}  // namespace vlm::examples

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("labels", [&] {
    vlm::examples::Run(vlm::examples::ParseOptions({argv + 1, argv + argc}));
  });
}
