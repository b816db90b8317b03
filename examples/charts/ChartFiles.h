#pragma once

/// \file
/// Pages of pixels as files, and every chart in one of its own.
///
///     vlm::charts::WritePage("map.png", 320, 200, 2, [](vlm::Gdiplus::Graphics& graphics) {});
///     vlm::charts::WriteCharts("figures", sample);  // figures/histogram-tiny.png and 17 more

#include <examples/charts/Charts.h>

#include <functional>
#include <string>
#include <vector>

namespace vlm::charts {

/// Writes a white page of `width` by `height` pixels of 1/96 inch. The extension decides the
/// format; a PNG is magnified by a whole number, so that its lines stay sharp.
///
/// *Errors*: those of `examples::WritePicture`; `std::runtime_error` if painting failed.
void WritePage(const std::string& path, int width, int height, int magnification,
               const std::function<void(Gdiplus::Graphics&)>& draw);

/// Writes each chart at three sizes, as PNG and as SVG, into a folder that is made if it is
/// missing, and gives the paths.
///
/// *Errors*: those of `WritePage`, and `std::runtime_error` if the folder can't be made.
std::vector<std::string> WriteCharts(const std::string& folder, Sample& sample);

}  // namespace vlm::charts
