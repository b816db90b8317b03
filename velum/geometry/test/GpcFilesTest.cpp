#include <velum/geometry/Gpc.h>

#include <velum/geometry/detail/GpcAlloc.h>
#include <velum/geometry/test/GpcPolygons.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

namespace vlm {
namespace {

using namespace test;

struct Form {
  const char* name;
  bool (*write)(FILE*, int, gpc_polygon*);
  bool (*read)(FILE*, int, gpc_polygon*);
};

constexpr Form kText{"text", gpc_write_polygon, gpc_read_polygon};
constexpr Form kBinary{"binary", gpc_write_polygon_binary, gpc_read_polygon_binary};

// A temporary file.
class Stream {
 public:
  explicit Stream(const std::string& bytes = {}) : file_(std::tmpfile()) {
    EXPECT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), file_), bytes.size());
    std::rewind(file_);
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { std::fclose(file_); }

  FILE* Get() const { return file_; }
  std::string Bytes() const {
    std::rewind(file_);
    std::string bytes;
    for (int c; (c = std::getc(file_)) != EOF;) bytes += static_cast<char>(c);
    return bytes;
  }

 private:
  FILE* file_;
};

std::string Written(const Form& form, int flags, const PlainPolygon& plain) {
  OwnedPolygon polygon(plain);
  const Stream stream;
  EXPECT_TRUE(form.write(stream.Get(), flags, polygon));
  return stream.Bytes();
}

std::string Int(std::int32_t number) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>(static_cast<std::uint32_t>(number) >> shift & 0xff);
  }
  return bytes;
}

const PlainPolygon kTwo{{{{0, 0}, {1.5, -2.25}, {0.1, 1e17}}}, {{{-0.0, 1e-15}}, true}};

constexpr char kTwoWithFlags[] =
    "2\n3\n0\n"
    " 0.000000000000000  0.000000000000000\n"
    " 1.500000000000000 -2.250000000000000\n"
    " 0.100000000000000  100000000000000000.000000000000000\n"
    "1\n1\n"
    "-0.000000000000000  0.000000000000001\n";

TEST(GpcFiles, TheFormsByteForByte) {
  EXPECT_EQ(Written(kText, 1, kTwo), kTwoWithFlags);
  EXPECT_EQ(Written(kText, 0, {kTwo[1]}), "1\n1\n-0.000000000000000  0.000000000000001\n");
  EXPECT_EQ(Written(kText, 1, {}), "0\n");
  using namespace std::string_literals;
  EXPECT_EQ(Written(kBinary, 1, {{{{1.5, -2}}, true}}),
            Int(1) + Int(1) + Int(1) + "\0\0\0\0\0\0\xf8\x3f\0\0\0\0\0\0\0\xc0"s);
  EXPECT_EQ(Written(kBinary, 0, {{{{0, 0}}, true}}), Int(1) + Int(1) + std::string(16, '\0'));
  EXPECT_EQ(Written(kBinary, 1, {}), Int(0));
}

TEST(GpcFiles, ThePointIsThatOfTheFileWhateverTheLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
  const std::string written = Written(kText, 1, kTwo);
  OwnedPolygon polygon;
  const bool read = gpc_read_polygon(Stream(kTwoWithFlags).Get(), 1, polygon);
  OwnedPolygon comma;
  const bool readComma = gpc_read_polygon(Stream("1\n1\n1,5 2\n").Get(), 0, comma);
  std::setlocale(LC_ALL, before.c_str());
  EXPECT_EQ(written, kTwoWithFlags);
  EXPECT_TRUE(read);
  EXPECT_EQ(ToPlain(*polygon), kTwo);
  EXPECT_FALSE(readComma);
}

TEST(GpcFiles, RoundTrips) {
  constexpr double kMax = std::numeric_limits<double>::max();
  PlainPolygon plain = kTwo;
  plain.push_back({{{kMax, -kMax}, {0x1p-1074, 1 / 3.0}}});
  plain.push_back({});
  for (int i = 0; i < 3000; ++i) plain.back().vertices.push_back({i / 7.0, -i / 3.0});
  plain.insert(plain.end(), 200, PlainContour{{{1, 2}}, true});
  for (const int flags : {0, 1}) {
    PlainPolygon expected = plain;
    for (PlainContour& contour : expected) contour.hole = contour.hole && flags;
    OwnedPolygon binary;
    EXPECT_TRUE(
        gpc_read_polygon_binary(Stream(Written(kBinary, flags, plain)).Get(), flags, binary));
    EXPECT_EQ(ToPlain(*binary), expected);
    const std::string text = Written(kText, flags, plain);
    OwnedPolygon polygon;
    const Stream stream(text + "rest");
    ASSERT_TRUE(gpc_read_polygon(stream.Get(), flags, polygon));
    EXPECT_EQ(std::getc(stream.Get()), '\n') << "what follows the last number is not taken";
    EXPECT_EQ(Written(kText, flags, ToPlain(*polygon)), text);
    for (std::size_t c = 0; c < plain.size(); ++c) {
      for (std::size_t i = 0; i < plain[c].vertices.size(); ++i) {
        ASSERT_NEAR(polygon->contour[c].vertex[i].x, plain[c].vertices[i].x, 5.01e-16) << c;
      }
    }
  }
  const PlainPolygon odd{{{{std::nan(""), -std::numeric_limits<double>::infinity()}}}};
  OwnedPolygon read;
  EXPECT_TRUE(gpc_read_polygon_binary(Stream(Written(kBinary, 0, odd)).Get(), 0, read));
  EXPECT_EQ(std::memcmp(read->contour[0].vertex, odd[0].vertices.data(), 16), 0);
  OwnedPolygon readText;
  EXPECT_TRUE(gpc_read_polygon(Stream(Written(kText, 0, odd)).Get(), 0, readText));
  EXPECT_TRUE(std::isnan(readText->contour[0].vertex[0].x));
}

TEST(GpcFiles, TextTakesAnyWhiteSpace) {
  OwnedPolygon polygon;
  EXPECT_TRUE(gpc_read_polygon(Stream(" \t\r\n+1\v2 -0 1e2\f.5\n\n0x1p3 -1E-1").Get(), 1, polygon));
  EXPECT_EQ(ToPlain(*polygon), (PlainPolygon{{{{100, 0.5}, {8, -0.1}}}}));
}

struct Damage {
  const char* reason;
  const Form& form;
  int flags;
  std::string bytes;
  std::int32_t contours;  // that are left
};

TEST(GpcFiles, DamageIsFalseAndCanBeReleased) {
  const std::int32_t huge = std::numeric_limits<std::int32_t>::max();
  const Damage rows[] = {
      {"nothing", kText, 0, "", 0},
      {"nothing", kBinary, 0, "", 0},
      {"half a number", kBinary, 0, std::string(2, '\0'), 0},
      {"no number", kText, 0, "x", 0},
      {"a fraction", kText, 0, "1.5\n", 0},
      {"a number too large", kText, 0, "3000000000\n", 0},
      {"two signs", kText, 0, "+-1\n", 0},
      {"a negative number of contours", kText, 0, "-1\n1\n0 0\n", 0},
      {"a negative number of contours", kBinary, 0, Int(-1), 0},
      {"a huge number of contours", kText, 0, "2147483647\n1\n0 0\n", 2},
      {"a huge number of contours", kBinary, 0, Int(huge) + Int(0) + Int(0), 3},
      {"a negative number of vertices", kText, 0, "1\n-5\n", 1},
      {"a negative number of vertices", kBinary, 1, Int(1) + Int(-5) + Int(0), 1},
      {"a huge number of vertices", kText, 1, "1\n2147483647\n0\n1 1\n2 2\n", 1},
      {"a huge number of vertices", kBinary, 0, Int(1) + Int(huge) + std::string(40, '\1'), 1},
      {"no flag", kText, 1, "1\n1", 1},
      {"half a vertex", kText, 0, "1\n1\n1.0", 1},
      {"no coordinate", kText, 0, "1\n1\n1.0 -", 1},
      {"two numbers in one", kText, 0, "1\n1\n1.0.0 1", 1},
      {"a zero byte", kText, 0, std::string("1\n1\n1\0 1", 9), 1},
      {"an endless item", kText, 0, "1\n1\n" + std::string(100000, '1') + " 1", 1},
  };
  for (const Damage& row : rows) {
    SCOPED_TRACE(std::string(row.form.name) + ": " + row.reason);
    OwnedPolygon polygon;
    polygon->num_contours = 77;
    EXPECT_FALSE(row.form.read(Stream(row.bytes).Get(), row.flags, polygon));
    EXPECT_EQ(polygon->num_contours, row.contours);
  }
  OwnedPolygon polygon({{{{1, 1}}}});
  for (const Form& form : {kText, kBinary}) {
    EXPECT_FALSE(form.read(nullptr, 0, polygon));
    EXPECT_FALSE(form.read(Stream("1").Get(), 0, nullptr));
    EXPECT_FALSE(form.write(nullptr, 0, polygon));
    EXPECT_FALSE(form.write(Stream().Get(), 0, nullptr));
    FILE* const full = std::fopen("/dev/full", "w");
    std::setbuf(full, nullptr);
    EXPECT_FALSE(form.write(full, 0, polygon));
    std::fclose(full);
  }
}

TEST(GpcFiles, AFileCutAnywhereIsFalse) {
  for (const Form& form : {kText, kBinary}) {
    const std::string whole = Written(form, 1, kTwo);
    // The last item of a text may lose digits and its line's end.
    const std::size_t end = form.read == gpc_read_polygon ? whole.rfind(' ') + 1 : whole.size();
    for (std::size_t size = 0; size < end; ++size) {
      OwnedPolygon polygon;
      EXPECT_FALSE(form.read(Stream(whole.substr(0, size)).Get(), 1, polygon))
          << form.name << " " << size;
      EXPECT_LE(polygon->num_contours, 2);
    }
  }
}

// Allocations of this thread while one of these lives; the one of number `failing` fails.
class Allocations {
 public:
  explicit Allocations(int failing = -1) {
    count_ = 0;
    bytes_ = 0;
    failing_ = failing;
    detail::gpcMalloc = [](std::size_t size) -> void* {
      bytes_ += size;
      return count_++ == failing_ ? nullptr : std::malloc(size);
    };
  }
  Allocations(const Allocations&) = delete;
  Allocations& operator=(const Allocations&) = delete;
  ~Allocations() { detail::gpcMalloc = &std::malloc; }

  static bool HasFailed() { return count_ > failing_; }
  static std::size_t Bytes() { return bytes_; }

 private:
  inline static thread_local int count_;
  inline static thread_local int failing_;
  inline static thread_local std::size_t bytes_;
};

TEST(GpcFiles, MemoryGrowsWithTheFileAndNotWithItsNumbers) {
  const std::int32_t huge = std::numeric_limits<std::int32_t>::max();
  const std::string bytes = Int(huge) + Int(huge) + std::string(16000, '\0');
  const Allocations allocations;
  OwnedPolygon polygon;
  EXPECT_FALSE(gpc_read_polygon_binary(Stream(bytes).Get(), 0, polygon));
  EXPECT_EQ(polygon->contour[0].num_vertices, 1000);
  OwnedPolygon contours;
  EXPECT_FALSE(gpc_read_polygon_binary(Stream(bytes).Get(), 1, contours));
  OwnedPolygon empty;
  EXPECT_FALSE(
      gpc_read_polygon_binary(Stream(Int(huge) + std::string(8000, '\0')).Get(), 0, empty));
  EXPECT_EQ(empty->num_contours, 2001);
  EXPECT_LT(Allocations::Bytes(), 10 * 3 * bytes.size());
}

// Lets each allocation of `work` fail once, and gives the number of them.
template <class Work, class Check>
int FailEach(const std::string& labels, Work work, Check check) {
  for (int failing = 0;; ++failing) {
    try {
      const Allocations allocations(failing);
      work();
      if (!Allocations::HasFailed()) return failing;
      ADD_FAILURE() << "allocation " << failing << " failed unnoticed";
      return failing;
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetErrCode(), ERR_OUT_OF_MEMORY);
      EXPECT_EQ(error.GetModule(), "GPC Library");
      EXPECT_EQ(error.GetSrcFile(), "Gpc");
      EXPECT_GT(error.GetSrcLine(), 0);
      const std::string text = error.GetDescription().c_str();
      const std::string start = "GPCAlloc failure: ";
      EXPECT_EQ(text.substr(0, start.size()), start);
      EXPECT_NE(labels.find("[" + text.substr(start.size()) + "]"), std::string::npos) << text;
      check();
    }
  }
}

constexpr char kClipLabels[] =
    "[LMT insertion][scanbeam tree insertion][edge table creation][IT insertion][ST insertion]"
    "[vertex node creation][polygon node creation][tristrip vertex creation]"
    "[tristrip node creation][Bounding box creation][overlap table creation][vertex creation]"
    "[contour creation][hole flag array creation][hole flag table creation][sbt creation]"
    "[tristrip creation]";

TEST(GpcAlloc, EachAllocationOfAClipMayFail) {
  RandomPolygons random(RandomPolygons::kReal, 5, 3, 20);
  PlainPolygon plainA, plainB;
  while (plainA.size() < 3) plainA = random.Next();
  while (plainB.size() < 3) plainB = random.Next();
  OwnedPolygon a(plainA), b(plainB);
  for (const gpc_op operation : {GPC_DIFF, GPC_INT, GPC_XOR, GPC_UNION}) {
    const auto unchanged = [&] {
      EXPECT_EQ(ToPlain(*a), plainA);
      EXPECT_EQ(ToPlain(*b), plainB);
    };
    gpc_polygon contours{};
    EXPECT_GT(FailEach(
                  kClipLabels, [&] { gpc_polygon_clip(operation, a, b, &contours); }, unchanged),
              5);
    gpc_free_polygon(&contours);
    gpc_tristrip strips{};
    EXPECT_GT(FailEach(
                  kClipLabels, [&] { gpc_tristrip_clip(operation, a, b, &strips); }, unchanged),
              5);
    gpc_free_tristrip(&strips);
  }
}

TEST(GpcAlloc, EachAllocationOfAppendingAndReadingMayFail) {
  OwnedPolygon polygon(kTwo);
  gpc_vertex vertices[] = {{0, 0}, {1, 0}, {0, 1}};
  gpc_vertex_list triangle{3, vertices};
  const auto append = [&] { gpc_add_contour(polygon, &triangle, 0); };
  const auto unchanged = [&] { EXPECT_EQ(ToPlain(*polygon), kTwo); };
  EXPECT_EQ(FailEach("[contour addition][contour hole addition]", append, unchanged), 3);

  PlainPolygon plain(100, PlainContour{{{1, 2}}, true});
  plain.front().vertices.resize(200);
  for (const Form& form : {kText, kBinary}) {
    const Stream stream(Written(form, 1, plain));
    gpc_polygon read{};
    const auto load = [&] {
      std::rewind(stream.Get());
      EXPECT_TRUE(form.read(stream.Get(), 1, &read));
    };
    EXPECT_GT(FailEach("[hole flag array creation][contour creation][vertex creation]", load,
                       [&] { gpc_free_polygon(&read); }),
              100);
    EXPECT_EQ(ToPlain(read), plain);
    gpc_free_polygon(&read);
  }
}

}  // namespace
}  // namespace vlm
