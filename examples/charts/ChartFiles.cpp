#include <examples/charts/ChartFiles.h>

#include <examples/common/Picture.h>

#include <cairo.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace vlm::charts {
namespace {

struct Size {
  const char* name;
  int width;
  int height;
  int boxHeight;  // box plots are strips
  int magnification;
};

// What is printed is a column of a page, 6.3 inches, with 288 pixels to the inch.
constexpr Size kSizes[] = {
    {"tiny", 240, 180, 24, 1}, {"screen", 800, 600, 60, 1}, {"print", 605, 420, 45, 3}};

}  // namespace

void WritePage(const std::string& path, int width, int height, int magnification,
               const std::function<void(Gdiplus::Graphics&)>& draw) {
  // A page has points, and a PNG two pixels to each.
  const bool isPng = examples::PictureFormatOf(path) == examples::PictureFormat::Png;
  const double points = isPng ? magnification / 2.0 : 0.75;
  examples::WritePicture(path, width * points, height * points, [&](cairo_t* context) {
    cairo_scale(context, points, points);
    Gdiplus::Graphics graphics(context);
    draw(graphics);
    if (graphics.GetLastStatus() != Gdiplus::Ok) {
      throw std::runtime_error("cannot paint '" + path + "'");
    }
  });
}

std::vector<std::string> WriteCharts(const std::string& folder, Sample& sample) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) {
    throw std::runtime_error("cannot make the folder '" + folder + "': " + error.message());
  }
  std::vector<std::string> paths;
  for (const Kind kind : kKinds) {
    for (const Size& size : kSizes) {
      const int height = kind == Kind::Box ? size.boxHeight : size.height;
      for (const char* extension : {".png", ".svg"}) {
        paths.push_back(folder + "/" + NameOf(kind) + "-" + size.name + extension);
        WritePage(paths.back(), size.width, height, size.magnification, [&](auto& graphics) {
          Draw(kind, graphics, {0, 0, size.width, height}, sample);
        });
      }
    }
  }
  return paths;
}

}  // namespace vlm::charts
