// Loads any bytes as a polygon with holes, from its text (first byte even) or its binary form.
// Damage must be one of the documented errors, which leave the polygon as it was; what loads must
// come back from its own file. Small polygons go through a set operation too, which must give a
// result or refuse the rings.

#include <velum/core/Exception.h>
#include <velum/files/BufferedFile.h>
#include <velum/geometry/GPolygon2d.h>

#include <boost/geometry/algorithms/detail/has_self_intersections.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using vlm::CBufferedFile;
using vlm::GPolygon2d;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

void Load(CBufferedFile& file, bool text, GPolygon2d& polygon) {
  text ? polygon.LoadFromTextFile(file) : polygon.LoadFromBinaryFile(file);
}

std::string Stored(const GPolygon2d& polygon, bool text) {
  CBufferedFile file;
  file.Open();
  text ? polygon.DumpToTextFile(file) : polygon.DumpToBinaryFile(file);
  return std::string(reinterpret_cast<char*>(file.GetBuffer()),
                     static_cast<std::size_t>(file.GetLength()));
}

void Combine(const GPolygon2d& polygon) {
  if (polygon.GetTotalVertexCount() > 60) return;
  GPolygon2d square(0, 0, 5, 5);
  try {
    square.XOR(polygon);
    square.Union(polygon);
  } catch (const boost::geometry::overlay_invalid_input_exception&) {
  }
  static_cast<void>(polygon.PointInside(vlm::Vec2d(1, 1)));
  static_cast<void>(polygon.IsRectangle());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const bool text = data[0] % 2 == 0;
  std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  CBufferedFile file;
  file.Open(bytes.data(), static_cast<unsigned int>(bytes.size()));
  GPolygon2d polygon(0, 0, 1, 1);
  try {
    Load(file, text, polygon);
  } catch (const vlm::Exception& error) {
    const int code = error.GetErrCode();
    Require(code == vlm::ERR_READ || code == vlm::ERR_END_OF_FILE, "the error is a documented one");
    Require(polygon.GetTotalVertexCount() == 4, "the polygon stays as it was");
    return 0;
  }
  std::string stored = Stored(polygon, text);
  CBufferedFile again;
  again.Open(stored.data(), static_cast<unsigned int>(stored.size()));
  GPolygon2d copy;
  Load(again, text, copy);
  Require(text ? copy.GetTotalVertexCount() == polygon.GetTotalVertexCount()
               : Stored(copy, text) == stored,
          "what was stored loads and is the same");
  Combine(polygon);
  return 0;
}
