#include <velum/geometry/Gpc.h>
#include <velum/geometry/detail/GpcAlloc.h>
#include <velum/platform/detail/RuntimeLocale.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <system_error>

namespace {

using vlm::detail::GPCAllocArray;

constexpr int kDecimals = 15;

// Room for a number of the text form: the largest one takes 326 bytes.
constexpr std::size_t kNumberRoom = 512;

bool IsSpace(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The text form. The runtime's functions use the decimal point of its locale, the file always '.'.
class TextFile {
 public:
  explicit TextFile(FILE* file) : file_(file) {}

  bool Write(std::int32_t number) { return std::fprintf(file_, "%d\n", number) >= 1; }

  bool Write(const gpc_vertex* vertices, std::size_t count) {
    for (const gpc_vertex* v = vertices; v != vertices + count; ++v) {
      char line[2 * kNumberRoom];
      const int length =
          std::snprintf(line, sizeof(line), "% .*lf % .*lf\n", kDecimals, v->x, kDecimals, v->y);
      const std::size_t size = UsePoint(line, static_cast<std::size_t>(length));
      if (std::fwrite(line, 1, size, file_) != size) return false;
    }
    return true;
  }

  bool Read(std::int32_t& number) {
    if (!ReadItem()) return false;
    const char* const first = item_ + (item_[0] == '+' && item_[1] != '-' ? 1 : 0);
    const char* const last = item_ + length_;
    const auto read = std::from_chars(first, last, number);
    return read.ec == std::errc() && read.ptr == last;
  }

  // Gives how many of `count` vertices there are.
  std::size_t Read(gpc_vertex* vertices, std::size_t count) {
    std::size_t i = 0;
    while (i < count && Read(vertices[i].x) && Read(vertices[i].y)) ++i;
    return i;
  }

 private:
  // Replaces the locale's decimal point in `text`; gives its new length.
  std::size_t UsePoint(char* text, std::size_t length) const {
    if (point_ == ".") return length;
    char* out = text;
    for (const char* in = text; in != text + length;) {
      if (std::string_view(in, text + length).starts_with(point_)) {
        *out++ = '.';
        in += point_.size();
      } else {
        *out++ = *in++;
      }
    }
    return static_cast<std::size_t>(out - text);
  }

  // Reads what stands up to the next white space, which stays in the file.
  bool ReadItem() {
    int c = std::getc(file_);
    while (IsSpace(c)) c = std::getc(file_);
    for (length_ = 0; c != EOF && !IsSpace(c); c = std::getc(file_)) {
      if (length_ + 1 == kNumberRoom) return false;
      item_[length_++] = static_cast<char>(c);
    }
    if (c != EOF) std::ungetc(c, file_);
    item_[length_] = '\0';
    return length_ > 0;
  }

  bool Read(double& value) {
    if (!ReadItem()) return false;
    char text[2 * kNumberRoom];
    std::size_t length = 0;
    for (const char c : std::string_view(item_, length_)) {
      if (c == '.') {
        // A longer point than a character or two can't fill the room.
        if (length + point_.size() >= sizeof(text)) return false;
        length += point_.copy(text + length, point_.size());
      } else {
        if (c == '\0' || c == point_[0] || length + 1 == sizeof(text)) return false;
        text[length++] = c;
      }
    }
    text[length] = '\0';
    char* end = nullptr;
    value = std::strtod(text, &end);
    return end == text + length;
  }

  FILE* file_;
  std::string_view point_ = vlm::platform::DecimalPoint();
  char item_[kNumberRoom] = {};
  std::size_t length_ = 0;
};

// The binary form: values as they stand, with no gap between the coordinates of a vertex.
static_assert(std::endian::native == std::endian::little);
static_assert(sizeof(gpc_vertex) == 2 * sizeof(double));

class BinaryFile {
 public:
  explicit BinaryFile(FILE* file) : file_(file) {}

  bool Write(std::int32_t number) { return std::fwrite(&number, sizeof(number), 1, file_) == 1; }

  bool Write(const gpc_vertex* vertices, std::size_t count) {
    return std::fwrite(vertices, sizeof(gpc_vertex), count, file_) == count;
  }

  bool Read(std::int32_t& number) { return std::fread(&number, sizeof(number), 1, file_) == 1; }

  // Gives how many of `count` vertices there are.
  std::size_t Read(gpc_vertex* vertices, std::size_t count) {
    return std::fread(vertices, sizeof(gpc_vertex), count, file_);
  }

 private:
  FILE* file_;
};

template <class File>
bool WritePolygon(File file, bool withFlags, const gpc_polygon& polygon) {
  if (!file.Write(polygon.num_contours)) return false;
  for (std::int32_t i = 0; i < polygon.num_contours; ++i) {
    const gpc_vertex_list& contour = polygon.contour[i];
    if (!file.Write(contour.num_vertices)) return false;
    if (withFlags && !file.Write(polygon.hole[i])) return false;
    if (contour.num_vertices < 1) continue;
    if (!file.Write(contour.vertex, static_cast<std::size_t>(contour.num_vertices))) return false;
  }
  return true;
}

// Makes room for more of `wanted` values behind the first `count`, and gives the new capacity. A
// count in a file is no more than a claim: memory grows with what has been read.
template <class T>
std::int32_t Grow(T*& array, std::int32_t count, std::int32_t wanted, const char* label, int line) {
  constexpr std::int32_t kFirst = 64;
  const std::int32_t capacity = count > wanted / 2 ? wanted : std::max(2 * count, kFirst);
  const std::int32_t room = std::min(capacity, wanted);
  T* const larger = GPCAllocArray<T>(line, label, static_cast<std::size_t>(room));
  if (count > 0) std::memcpy(larger, array, static_cast<std::size_t>(count) * sizeof(T));
  std::free(array);
  array = larger;
  return room;
}

template <class File>
bool ReadContour(File& file, std::int32_t wanted, gpc_vertex_list& contour) {
  std::int32_t& count = contour.num_vertices;
  while (count < wanted) {
    const std::int32_t capacity = Grow(contour.vertex, count, wanted, "vertex creation", __LINE__);
    const auto room = static_cast<std::size_t>(capacity - count);
    const std::size_t read = file.Read(contour.vertex + count, room);
    count += static_cast<std::int32_t>(read);
    if (read != room) return false;
  }
  return true;
}

template <class File>
bool ReadPolygon(File file, bool withFlags, gpc_polygon& polygon) {
  polygon = {};
  std::int32_t contours = 0;
  if (!file.Read(contours) || contours < 0) return false;
  std::int32_t& count = polygon.num_contours;
  for (std::int32_t capacity = 0; count < contours;) {
    if (count == capacity) {
      Grow(polygon.hole, count, contours, "hole flag array creation", __LINE__);
      capacity = Grow(polygon.contour, count, contours, "contour creation", __LINE__);
    }
    std::int32_t& hole = polygon.hole[count];
    gpc_vertex_list& contour = polygon.contour[count];
    hole = 0;
    contour = {};
    ++count;
    std::int32_t vertices = 0;
    if (!file.Read(vertices) || vertices < 0) return false;
    if (withFlags && !file.Read(hole)) return false;
    if (!ReadContour(file, vertices, contour)) return false;
  }
  return true;
}

}  // namespace

bool gpc_write_polygon(FILE* file, int writeHoleFlags, gpc_polygon* polygon) {
  return file && polygon && WritePolygon(TextFile(file), writeHoleFlags != 0, *polygon);
}

bool gpc_read_polygon(FILE* file, int readHoleFlags, gpc_polygon* polygon) {
  return file && polygon && ReadPolygon(TextFile(file), readHoleFlags != 0, *polygon);
}

bool gpc_write_polygon_binary(FILE* file, int writeHoleFlags, gpc_polygon* polygon) {
  return file && polygon && WritePolygon(BinaryFile(file), writeHoleFlags != 0, *polygon);
}

bool gpc_read_polygon_binary(FILE* file, int readHoleFlags, gpc_polygon* polygon) {
  return file && polygon && ReadPolygon(BinaryFile(file), readHoleFlags != 0, *polygon);
}
