#include <examples/convert/ConvertPicture.h>

#include <velum/colour/Color4b.h>
#include <velum/core/StringFormat.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/PageText.h>
#include <examples/common/Picture.h>
#include <examples/common/Program.h>
#include <examples/convert/ByteCells.h>

#include <cairo.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace vlm::convert {
namespace {

using examples::Align;
using examples::DrawText;
using examples::kInk;
using examples::kPale;
using examples::PageText;

constexpr std::size_t kColumns = 16;
constexpr std::size_t kMostRows = 12;
constexpr double kMargin = 18.0;
constexpr double kOffsets = 34.0;  // for the number of a row's first byte
constexpr double kCell = 31.0;
constexpr double kRow = 36.0;
constexpr double kBetweenRows = 5.0;
constexpr double kTop = 62.0;
constexpr double kSide = 232.0;  // for the evidence
constexpr double kGap = 26.0;
constexpr double kLegendLine = 17.0;

// Fills that a reader with any colour vision tells apart, light enough for ink upon them.
const std::array<Color4b, kByteClasses> kFills = {
    Color4b(196, 178, 224, 255), Color4b(236, 239, 243, 255), Color4b(120, 184, 226, 255),
    Color4b(190, 221, 241, 255), Color4b(246, 205, 106, 255), Color4b(168, 216, 176, 255),
    Color4b(255, 255, 255, 255), Color4b(233, 128, 110, 255)};
const Color4b kEdge(132, 138, 150, 255);
const Color4b kBroken(120, 20, 10, 255);
const Color4b kHex(66, 72, 86, 255);

Color4b FillOf(ByteClass byteClass) { return kFills[static_cast<std::size_t>(byteClass)]; }

void FillBox(cairo_t* context, double x, double y, double width, double height, Color4b fill) {
  cairo_rectangle(context, x, y, width, height);
  examples::SetSourceColor(context, fill);
  cairo_fill(context);
}

void FrameBox(cairo_t* context, double x, double y, double width, double height) {
  cairo_rectangle(context, x, y, width, height);
  examples::SetSourceColor(context, kEdge);
  cairo_set_line_width(context, 0.6);
  cairo_stroke(context);
}

class Sheet {
 public:
  Sheet(std::string name, std::vector<ByteCell> cells, const Evidence& evidence,
        const Survey& survey)
      : name_(std::move(name)), cells_(std::move(cells)), evidence_(evidence), survey_(survey) {}

  [[nodiscard]] double Width() const { return Right() + kGap + kSide + kMargin; }
  [[nodiscard]] double Height() const {
    const double grid = kTop + static_cast<double>(std::max<std::size_t>(Rows(), 1)) * kRow;
    return std::max(grid + 4.0 * kLegendLine, 360.0) + kMargin;
  }

  void Draw(cairo_t* context) const {
    const std::string shown =
        cells_.size() < survey_.bytes
            ? ToString("the first %d of %d bytes", static_cast<int>(cells_.size()),
                       static_cast<int>(survey_.bytes))
            : ToString("all of its %d bytes", static_cast<int>(survey_.bytes));
    DrawText(context, Vec2d(kMargin, 24.0), {"{\\b " + examples::Verbatim(name_) + "}", 13.0});
    DrawText(
        context, Vec2d(kMargin, 40.0),
        {shown + ", read as {\\b " + evidence_.encoding.Name() + "}", 9.5, Align::Left, kPale});
    DrawGrid(context);
    DrawLegend(context);
    DrawEvidence(context);
  }

 private:
  [[nodiscard]] static double Right() {
    return kMargin + kOffsets + static_cast<double>(kColumns) * kCell;
  }
  [[nodiscard]] std::size_t Rows() const { return (cells_.size() + kColumns - 1) / kColumns; }
  [[nodiscard]] static Vec2d Corner(std::size_t i) {
    return Vec2d(kMargin + kOffsets + static_cast<double>(i % kColumns) * kCell,
                 kTop + static_cast<double>(i / kColumns) * kRow);
  }

  void DrawGrid(cairo_t* context) const {
    for (std::size_t column = 0; column < kColumns; ++column) {
      DrawText(context, Corner(column) + Vec2d(kCell / 2.0, -5.0),
               {ToString("%X", static_cast<unsigned int>(column)), 7.5, Align::Center, kPale});
    }
    for (std::size_t i = 0; i < cells_.size(); i += kColumns) {
      DrawText(context, Corner(i) + Vec2d(-7.0, 15.0),
               {ToString("%04X", static_cast<unsigned int>(i)), 7.5, Align::Right, kPale});
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      const Vec2d at = Corner(i);
      // Above, a character has one colour; below, each byte has its own.
      constexpr double kUpper = 19.0;
      const ByteClass byteClass = cells_[i].byteClass;
      const bool isFirst = byteClass == ByteClass::First && cells_[i].length > 1;
      FillBox(context, at.x, at.y, kCell, kUpper, FillOf(isFirst ? ByteClass::Further : byteClass));
      FillBox(context, at.x, at.y + kUpper, kCell, kRow - kBetweenRows - kUpper, FillOf(byteClass));
      DrawText(
          context, at + Vec2d(kCell / 2.0, 28.0),
          {ToString("%02X", static_cast<unsigned int>(cells_[i].byte)), 7.5, Align::Center, kHex});
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      if (cells_[i].length > 0) DrawCharacter(context, i);
    }
  }

  // The character stands amid its bytes, or with the first ones if a row's end parts them. A frame
  // holds its bytes together and is open where the row ends.
  void DrawCharacter(cairo_t* context, std::size_t i) const {
    const ByteCell& cell = cells_[i];
    const std::size_t length = std::min(cell.length, cells_.size() - i);
    const std::size_t inRow = std::min(length, kColumns - i % kColumns);
    const Vec2d at = Corner(i);
    const double width = static_cast<double>(inRow) * kCell;
    const bool isName = cell.text.size() > 1 && static_cast<unsigned char>(cell.text[0]) < 0x80;
    DrawText(context, at + Vec2d(width / 2.0, 15.0),
             {examples::Verbatim(cell.text), isName ? 7.0 : 12.5, Align::Center,
              cell.byteClass == ByteClass::Malformed ? kBroken : kInk});
    FrameBytes(context, at, width, false, inRow < length);
    if (inRow == length) return;
    FrameBytes(context, Corner(i + inRow), static_cast<double>(length - inRow) * kCell, true,
               false);
  }

  static void FrameBytes(cairo_t* context, const Vec2d& at, double width, bool openLeft,
                         bool openRight) {
    const double right = at.x + width;
    const double bottom = at.y + kRow - kBetweenRows;
    cairo_move_to(context, at.x, bottom);
    openLeft ? cairo_move_to(context, at.x, at.y) : cairo_line_to(context, at.x, at.y);
    cairo_line_to(context, right, at.y);
    openRight ? cairo_move_to(context, right, bottom) : cairo_line_to(context, right, bottom);
    cairo_line_to(context, at.x, bottom);
    examples::SetSourceColor(context, kEdge);
    cairo_set_line_width(context, 0.6);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_SQUARE);
    cairo_stroke(context);
  }

  void DrawLegend(cairo_t* context) const {
    const double top = kTop + static_cast<double>(Rows()) * kRow + 10.0;
    constexpr double kEntry = 130.0;
    for (int i = 0; i < kByteClasses; ++i) {
      const double x = kMargin + kOffsets + (i % 4) * kEntry;
      const double y = top + (i / 4) * kLegendLine;
      FillBox(context, x, y, 11.0, 11.0, FillOf(static_cast<ByteClass>(i)));
      FrameBox(context, x, y, 11.0, 11.0);
      DrawText(context, Vec2d(x + 16.0, y + 9.0), {InWords(static_cast<ByteClass>(i)), 8.5});
    }
    DrawText(context, Vec2d(kMargin + kOffsets, top + 2.0 * kLegendLine + 12.0),
             {"Below, the bytes in hexadecimal; above, the character that they make, or its name; "
              "a frame "
              "holds its bytes together",
              8.0, Align::Left, kPale, Right() - kMargin - kOffsets});
  }

  void DrawEvidence(cairo_t* context) const {
    const double left = Right() + kGap;
    double y = kTop + 8.0;
    const auto heading = [&](const char* text) {
      DrawText(context, Vec2d(left, y), {"{\\b " + std::string(text) + "}", 10.0});
      y += 16.0;
    };
    const auto row = [&](const std::string& name, const std::string& value) {
      DrawText(context, Vec2d(left, y), {name, 9.0, Align::Left, kPale});
      DrawText(context, Vec2d(left + kSide, y), {value, 9.0, Align::Right});
      y += 14.5;
    };
    heading("The first 512 bytes");
    row("byte order mark", MarkText(evidence_));
    row("UTF-16, low byte first", InWords(evidence_.utf16le));
    row("UTF-16, high byte first", InWords(evidence_.utf16be));
    row("narrow text", InWords(evidence_.narrow));
    row("no text at all", InWords(evidence_.binary));
    y += 8.0;
    heading(evidence_.isSure ? "Therefore" : "Assumed");
    row("encoding", "{\\b " + evidence_.encoding.Name() + "}");
    for (const std::string& line : Wrapped(evidence_.reason)) {
      DrawText(context, Vec2d(left, y), {line, 9.0, Align::Left, kPale, kSide});
      y += 12.5;
    }
    y += 10.0;
    heading("The text");
    const auto count = [&](const char* name, std::uint64_t value) {
      row(name, std::to_string(value));
    };
    count("lines", survey_.lines);
    count("characters", survey_.characters);
    count("of them above U+FFFF", survey_.pairs);
    count("malformed sequences", survey_.malformed);
    count("line ends LF", survey_.feeds);
    count("line ends CR LF", survey_.returnFeeds);
    count("line ends CR", survey_.returns);
  }

  static std::vector<std::string> Wrapped(const std::string& text) {
    constexpr std::size_t kMost = 46;
    std::vector<std::string> lines(1);
    std::istringstream words(text);
    std::string word;
    while (words >> word) {
      if (!lines.back().empty() && lines.back().size() + word.size() >= kMost) lines.emplace_back();
      lines.back() += (lines.back().empty() ? "" : " ") + word;
    }
    return lines;
  }

  std::string name_;
  std::vector<ByteCell> cells_;
  const Evidence& evidence_;
  const Survey& survey_;
};

}  // namespace

void DrawFile(const std::string& path, const Evidence& evidence, const Survey& survey,
              const std::string& picture) {
  // A few bytes more, so that the last character shown is not cut.
  constexpr std::size_t kShown = kColumns * kMostRows;
  std::string bytes(kShown + 4, '\0');
  std::ifstream file = examples::OpenInput(path);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  const bool isMarked = evidence.markSize > 0 && evidence.mark.kind == evidence.encoding.kind;
  std::vector<ByteCell> cells = CellsOf(bytes, evidence.encoding, isMarked ? evidence.markSize : 0);
  if (cells.size() > kShown) cells.resize(kShown);
  const Sheet sheet(path.substr(path.rfind('/') + 1), std::move(cells), evidence, survey);
  examples::WritePicture(picture, sheet.Width(), sheet.Height(),
                         [&](cairo_t* context) { sheet.Draw(context); });
}

}  // namespace vlm::convert
