// Reads any bytes as a polygon file, text or binary, with hole flags or without: the first byte
// says which. What could not be read must be released; what was read must come back from what is
// written of it.
#include <velum/geometry/Gpc.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

struct Form {
  bool (*write)(FILE*, int, gpc_polygon*);
  bool (*read)(FILE*, int, gpc_polygon*);
};

constexpr Form kForms[] = {{gpc_write_polygon, gpc_read_polygon},
                           {gpc_write_polygon_binary, gpc_read_polygon_binary}};

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

bool Read(const Form& form, int flags, const std::string& bytes, gpc_polygon& polygon) {
  FILE* const file = fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "r");
  const bool read = form.read(file, flags, &polygon);
  if (file) std::fclose(file);
  return read;
}

std::string Write(const Form& form, int flags, gpc_polygon& polygon) {
  char* buffer = nullptr;
  std::size_t size = 0;
  FILE* const file = open_memstream(&buffer, &size);
  Require(form.write(file, flags, &polygon), "a polygon can be written");
  std::fclose(file);
  const std::string bytes(buffer, size);
  std::free(buffer);
  return bytes;
}

void CheckRoundTrip(const Form& form, int flags, gpc_polygon& polygon) {
  const std::string written = Write(form, flags, polygon);
  gpc_polygon again{};
  Require(Read(form, flags, written, again), "what was written can be read");
  Require(Write(form, flags, again) == written, "and is the same");
  gpc_free_polygon(&again);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t form = data[0] & 1;
  const int flags = data[0] >> 1 & 1;
  const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  gpc_polygon polygon{};
  if (Read(kForms[form], flags, bytes, polygon)) {
    if (form == 1) {
      Require(bytes.starts_with(Write(kForms[1], flags, polygon)), "bits stay as they were");
    }
    for (const Form& each : kForms) CheckRoundTrip(each, flags, polygon);
  }
  gpc_free_polygon(&polygon);
  Require(!polygon.contour && !polygon.hole && polygon.num_contours == 0, "released is empty");
  return 0;
}
