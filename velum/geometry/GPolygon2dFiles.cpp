#include <velum/geometry/GPolygon2d.h>

#include <velum/core/Exception.h>
#include <velum/files/BufferedFile.h>
#include <velum/platform/detail/RuntimeLocale.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace vlm {

namespace {

constexpr char kSource[] = "GPolygon2d";

[[noreturn]] void Fail(int line, int code, const CBufferedFile& file) {
  ThrowErrorImpl(kSource, line, code, file.GetFilePath().c_str(), "");
}

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

// The runtime's functions use the decimal point of its locale, the file always '.'.
void Exchange(std::string& text, std::string_view from, std::string_view to) {
  const std::size_t place = from == to ? std::string::npos : text.find(from);
  if (place != std::string::npos) text.replace(place, from.size(), to);
}

class TextWriter {
 public:
  explicit TextWriter(CBufferedFile& file) : file_(file) {}

  void Comment(const char* format, unsigned int i, unsigned int j = 0) {
    char line[64];
    std::snprintf(line, sizeof line, format, i, j);
    file_.WriteString(line);
  }

  void Count(std::size_t count) {
    char line[16];
    std::snprintf(line, sizeof line, "%u\n", static_cast<unsigned int>(count));
    file_.WriteString(line);
  }

  void Ring(const Ring2d& ring) {
    Count(ring.size());
    for (const Vec2d& p : ring) {
      std::string x = Number(p.x);
      file_.WriteString(x.append(", ").append(Number(p.y)).append("\n").c_str());
    }
  }

 private:
  std::string Number(double value) const {
    char text[64];
    std::snprintf(text, sizeof text, "%.16lg", value);
    std::string number = text;
    Exchange(number, point_, ".");
    return number;
  }

  CBufferedFile& file_;
  std::string point_ = platform::DecimalPoint();
};

class TextReader {
 public:
  explicit TextReader(CBufferedFile& file) : file_(file) {}

  // Of the number only the low 32 bits count, and below 0 there is nothing.
  std::uint32_t Count() {
    std::string_view line = Trimmed(Line());
    if (line.starts_with('+') && !line.starts_with("+-")) line.remove_prefix(1);
    std::int64_t number = 0;
    const auto read = std::from_chars(line.data(), line.data() + line.size(), number);
    if (read.ec != std::errc() || read.ptr != line.data() + line.size()) {
      Fail(__LINE__, ERR_READ, file_);
    }
    const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
    return low < 0 ? 0 : static_cast<std::uint32_t>(low);
  }

  void Ring(Ring2d& ring) {
    for (std::uint32_t left = Count(); left > 0; --left) {
      const std::string_view line = Line();
      const std::size_t comma = line.find(',');
      if (comma == std::string_view::npos) Fail(__LINE__, ERR_READ, file_);
      const double x = Number(line.substr(0, comma));
      ring.push_back(Vec2d(x, Number(line.substr(comma + 1))));
    }
  }

 private:
  const std::string& Line() {
    do {
      if (!file_.ReadString(line_)) Fail(__LINE__, ERR_READ, file_);
    } while (line_.empty() || line_[0] == ';');
    return line_;
  }

  double Number(std::string_view field) {
    number_ = Trimmed(field);
    const bool isForeign = point_ != "." && number_.find(point_) != std::string::npos;
    Exchange(number_, ".", point_);
    char* end = nullptr;
    const double value = std::strtod(number_.c_str(), &end);
    if (isForeign || number_.empty() || end != number_.c_str() + number_.size()) {
      Fail(__LINE__, ERR_READ, file_);
    }
    return value;
  }

  CBufferedFile& file_;
  std::string point_ = platform::DecimalPoint();
  std::string line_;
  std::string number_;
};

// The binary form has values as they stand.
static_assert(std::endian::native == std::endian::little);

// As many points as go through the file at a time: what a count says is no more than a claim.
constexpr std::size_t kSomePoints = 4096;

class BinaryWriter {
 public:
  explicit BinaryWriter(CBufferedFile& file) : file_(file) {}

  void Comment(const char*, unsigned int, unsigned int = 0) {}

  void Count(std::size_t count) {
    const std::uint64_t number = count;
    file_.Write(&number, sizeof number);
  }

  void Ring(const Ring2d& ring) {
    Count(ring.size());
    for (std::size_t i = 0; i < ring.size(); i += kSomePoints) {
      const std::size_t now = std::min(ring.size() - i, kSomePoints);
      file_.Write(ring.data() + i, static_cast<unsigned int>(now * sizeof(Vec2d)));
    }
  }

 private:
  CBufferedFile& file_;
};

class BinaryReader {
 public:
  explicit BinaryReader(CBufferedFile& file) : file_(file) {}

  std::uint32_t Count() {
    std::uint64_t number = 0;
    file_.ReadN(&number, sizeof number);
    return static_cast<std::uint32_t>(number);
  }

  void Ring(Ring2d& ring) {
    for (std::size_t left = Count(); left > 0;) {
      const std::size_t now = std::min(left, kSomePoints);
      file_.ReadN(some_.data(), static_cast<unsigned int>(now * sizeof(Vec2d)));
      ring.insert(ring.end(), some_.begin(), some_.begin() + static_cast<std::ptrdiff_t>(now));
      left -= now;
    }
  }

 private:
  CBufferedFile& file_;
  std::vector<Vec2d> some_ = std::vector<Vec2d>(kSomePoints);
};

template <class Writer>
void Write(const MultiPolygon2d& polygons, CBufferedFile& file) {
  if (!file.IsOpen()) Fail(__LINE__, ERR_WRITE, file);
  Writer writer(file);
  writer.Comment(";MultiPolygon.size()\n", 0);
  writer.Count(polygons.size());
  for (unsigned int i = 0; i < polygons.size(); ++i) {
    writer.Comment(";Polygon[%u].outer().size()\n", i);
    writer.Ring(polygons[i].outer());
    writer.Comment(";Polygon[%u].inners().size()\n", i);
    const auto& inners = polygons[i].inners();
    writer.Count(inners.size());
    for (unsigned int j = 0; j < inners.size(); ++j) {
      writer.Comment(";Polygon[%u].inners[%u].size()\n", i, j);
      writer.Ring(inners[j]);
    }
  }
}

template <class Reader>
MultiPolygon2d Read(CBufferedFile& file) {
  if (!file.IsOpen()) Fail(__LINE__, ERR_READ, file);
  Reader reader(file);
  MultiPolygon2d polygons;
  for (std::uint32_t left = reader.Count(); left > 0; --left) {
    RingPolygon2d& polygon = polygons.emplace_back();
    reader.Ring(polygon.outer());
    for (std::uint32_t inners = reader.Count(); inners > 0; --inners) {
      reader.Ring(polygon.inners().emplace_back());
    }
  }
  return polygons;
}

}  // namespace

void GPolygon2d::DumpToTextFile(CBufferedFile& file) const { Write<TextWriter>(polygons_, file); }

void GPolygon2d::LoadFromTextFile(CBufferedFile& file) { Replace(Read<TextReader>(file)); }

void GPolygon2d::DumpToBinaryFile(CBufferedFile& file) const {
  Write<BinaryWriter>(polygons_, file);
}

void GPolygon2d::LoadFromBinaryFile(CBufferedFile& file) { Replace(Read<BinaryReader>(file)); }

}  // namespace vlm
