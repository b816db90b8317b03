#include <examples/specimen/TextSheet.h>

#include <velum/core/WideText.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/Handles.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace vlm::specimen {
namespace {

constexpr double kPageWidth = 720.0;
constexpr double kWidestPage = 8000.0;
constexpr double kMargin = 36.0;
constexpr double kSize = 26.0;
constexpr double kAscent = 28.0;   // of all faces: some reach high
constexpr double kBracket = 15.0;  // from the baseline to the bracket below
constexpr double kLane = 9.5;
constexpr double kFirstLane = 11.0;  // from the bracket to the first lane's baseline
constexpr double kLineGap = 16.0;
constexpr double kNameGap = 8.0;
constexpr Type kName{4, 7.0, kPale};

constexpr Color4b kPieceColors[] = {
    {36, 92, 168, 255}, {176, 74, 28, 255}, {40, 122, 82, 255}, {128, 66, 148, 255}};

Color4b ColorOf(std::size_t piece) { return kPieceColors[piece % std::size(kPieceColors)]; }

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c == '\n') {
      lines.emplace_back();
    } else if (c != '\r') {
      lines.back() += c;
    }
  }
  return lines;
}

// A piece in parts, each up to where a line may end; `at` is where the piece begins in its text.
std::vector<TextPiece> PartsOf(const TextPiece& piece, const std::vector<bool>& breaks,
                               std::size_t at) {
  std::vector<TextPiece> parts;
  for (std::size_t i = 0; i < piece.text.size(); ++i) {
    if (i == 0 || breaks[at + i]) {
      parts.push_back({{}, piece.face, piece.isRightToLeft, piece.level});
    }
    parts.back().text += piece.text[i];
  }
  return parts;
}

}  // namespace

TextSheet::TextSheet(const std::string& text, unsigned int face) {
  const examples::SurfacePtr surface(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr));
  const examples::ContextPtr context(cairo_create(surface.get()));
  Page page(context.get());
  height_ = kMargin;
  const auto asked = CSystemFaceInfo::GetInstance().GetFaceInfo(face);
  for (const std::string& line : LinesOf(text)) AddText(line, asked, page);
  height_ += kMargin - kLineGap;
}

void TextSheet::AddText(const std::string& text, const std::shared_ptr<const CFaceInfo>& face,
                        Page& page) {
  const std::vector<TextPiece> pieces = CutText(text, face);
  std::wstring whole;
  for (const TextPiece& piece : pieces) whole += piece.text;
  const std::vector<bool> breaks = LineBreaks(whole);

  std::vector<Word> line;
  std::vector<Word> next;  // what a line may not part
  double lineWidth = 0.0;
  double nextWidth = 0.0;
  const auto addNext = [&] {
    if (nextWidth > kWidestPage) throw std::runtime_error("a word is too long to be drawn");
    if (lineWidth + nextWidth > kPageWidth - 2.0 * kMargin && !line.empty()) {
      AddLine(std::exchange(line, {}), page);
      lineWidth = 0.0;
    }
    std::move(next.begin(), next.end(), std::back_inserter(line));
    next.clear();
    lineWidth += std::exchange(nextWidth, 0.0);
  };
  std::size_t at = 0;
  for (const TextPiece& piece : pieces) {
    const std::size_t number = AddPiece(piece);
    for (const TextPiece& part : PartsOf(piece, breaks, at)) {
      if (breaks[at]) addNext();
      ShapedText shaped = shaper_.Shape(part);
      nextWidth += kSize * shaped.advance;
      next.push_back({std::move(shaped), number, piece.level});
      at += part.text.size();
    }
  }
  addNext();
  AddLine(std::move(line), page);
}

std::size_t TextSheet::AddPiece(const TextPiece& piece) {
  const std::string face = piece.face->GetFaceName().String();
  names_.push_back(piece.isRightToLeft ? "← " + face : face + " →");
  told_.push_back(std::to_string(names_.size()) +
                  (piece.isRightToLeft ? " right to left  " : " left to right  ") + face + "  '" +
                  static_cast<const char*>(WtoA(piece.text.c_str())) + "'");
  return names_.size() - 1;
}

void TextSheet::AddLine(std::vector<Word> words, Page& page) {
  std::vector<int> levels;
  for (const Word& word : words) levels.push_back(word.level);
  Line line;
  double x = kMargin;
  for (const std::size_t at : VisualOrder(levels)) {
    line.lefts.push_back(x);
    x += kSize * words[at].shaped.advance;
    line.words.push_back(std::move(words[at]));
  }
  width_ = std::max(width_, x + kMargin);
  line.baseline = height_ + kAscent;
  AddBrackets(line, page);
  std::size_t lowest = 0;
  for (const Bracket& bracket : line.brackets) {
    lowest = std::max(lowest, bracket.lane);
    width_ = std::max(width_, bracket.nameLeft + bracket.nameWidth + kMargin);
  }
  height_ = line.baseline + kBracket + kFirstLane + static_cast<double>(lowest) * kLane + kLineGap;
  lines_.push_back(std::move(line));
}

void TextSheet::AddBrackets(Line& line, Page& page) const {
  for (std::size_t i = 0; i < line.words.size(); ++i) {
    const std::size_t piece = line.words[i].piece;
    const double right = line.lefts[i] + kSize * line.words[i].shaped.advance;
    if (!line.pieces.empty() && line.pieces.back() == piece) {
      line.brackets.back().right = right;
    } else {
      line.brackets.push_back({line.lefts[i], right, page.Width(kName, names_[piece])});
      line.pieces.push_back(piece);
    }
  }
  PlaceNames(line.brackets, kMargin, kNameGap);
}

void TextSheet::Draw(cairo_t* context) const {
  Page page(context);
  for (const Line& line : lines_) {
    for (std::size_t i = 0; i < line.words.size(); ++i) {
      examples::SetSourceColor(context, kInk);
      shaper_.Draw(context, line.words[i].shaped, Vec2d(line.lefts[i], line.baseline), kSize);
    }
    const double top = line.baseline + kBracket;
    for (std::size_t i = 0; i < line.brackets.size(); ++i) {
      const Bracket& bracket = line.brackets[i];
      const Color4b color = ColorOf(line.pieces[i]);
      // Brackets of neighbours stay apart.
      const double inset = std::min(1.0, 0.2 * (bracket.right - bracket.left));
      const double left = bracket.left + inset;
      const double right = bracket.right - inset;
      page.Rule(Vec2d(left, top), Vec2d(right, top), color, 1.0);
      for (const double x : {left, right}) {
        page.Rule(Vec2d(x, top - 2.5), Vec2d(x, top + 0.5), color, 0.8);
      }
      const double name = top + kFirstLane + static_cast<double>(bracket.lane) * kLane;
      if (bracket.lane > 0) {
        page.Rule(Vec2d(bracket.Middle(), top), Vec2d(bracket.Middle(), name), color, 0.5);
      }
      page.Write({kName.weight, kName.height, color}, bracket.nameLeft, name,
                 names_[line.pieces[i]]);
    }
  }
}

}  // namespace vlm::specimen
