#include <examples/palette/Report.h>

#include <velum/core/StringFormat.h>

#include <ostream>

namespace vlm::palette {

std::string HexOf(const RGBQUAD& color) {
  return ToString("#%02X%02X%02X", color.rgbRed, color.rgbGreen, color.rgbBlue);
}

void PrintReport(std::ostream& out, const Image& image, const Quantized& quantized) {
  const std::vector<RGBQUAD>& palette = quantized.image.palette;
  out << image.width << " x " << image.height << " pixels, " << quantized.coloursBefore
      << " colours\n"
      << "reduced to " << palette.size() << ": mean squared error "
      << ToString("%.2f", quantized.meanSquaredError);
  if (quantized.meanSquaredError > 0.0) {
    out << ToString(", %.2f dB", Decibels(quantized.meanSquaredError));
  }
  out << "\n\n";
  const auto all = static_cast<double>(image.pixels.size());
  for (std::size_t i = 0; i < palette.size(); ++i) {
    const double share = 100.0 * static_cast<double>(quantized.frequency[i]) / all;
    out << ToString("%3d  %6.2f %%  ", static_cast<int>(i), share) << HexOf(palette[i])
        << ToString("  %3d %3d %3d  ", palette[i].rgbRed, palette[i].rgbGreen, palette[i].rgbBlue)
        << NearestName(palette[i]) << "\n";
  }
}

}  // namespace vlm::palette
