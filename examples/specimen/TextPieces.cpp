#include <examples/specimen/TextPieces.h>

#include <velum/core/WideText.h>
#include <velum/fonts/UCS2Decomp.h>
#include <examples/common/Handles.h>

#include <pango/pango.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace vlm::specimen {
namespace {

// Keeps the pieces that it gets.
class Collector final : public UCS2DecompIF {
 public:
  void BeginDecomp() override { pieces.clear(); }
  void EndDecomp() override {}
  void SubText(const UCS2DecompSubSet& piece) override {
    pieces.push_back({piece.GetString(), piece.GetFaceInfoPtr(), piece.IsRTLReading(), 0});
  }

  std::vector<TextPiece> pieces;
};

// The number of the character to which each UTF-16 unit belongs.
std::vector<std::size_t> CharactersOf(const std::wstring& text) {
  std::vector<std::size_t> characters;
  std::size_t character = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isSecondHalf = i > 0 && text[i] >= 0xDC00 && text[i] < 0xE000 &&
                              text[i - 1] >= 0xD800 && text[i - 1] < 0xDC00;
    if (i > 0 && !isSecondHalf) ++character;
    characters.push_back(character);
  }
  return characters;
}

// The embedding level of each UTF-16 unit in a paragraph from left to right.
std::vector<int> LevelsOf(const std::wstring& text) {
  const std::string utf8(static_cast<const char*>(WtoA(text.c_str())));
  PangoDirection direction = PANGO_DIRECTION_LTR;
  const std::unique_ptr<guint8, examples::Releaser<g_free>> levels(
      pango_log2vis_get_embedding_levels(utf8.data(), static_cast<int>(utf8.size()), &direction));
  std::vector<int> result;
  for (const std::size_t character : CharactersOf(text)) {
    result.push_back(levels.get()[character]);
  }
  return result;
}

}  // namespace

std::vector<TextPiece> CutText(const std::string& text,
                               const std::shared_ptr<const CFaceInfo>& face) {
  const AtoW wide(text);
  UCS2Decomp decomp;
  if (!decomp.SetupDecomp(static_cast<const wchar_t*>(wide))) {
    throw std::runtime_error("the text changes script or direction too often");
  }
  Collector collector;
  decomp.Decompose(collector, face, DECOMP_CHECK_GLYPHS);
  const std::vector<int> levels = LevelsOf(static_cast<const wchar_t*>(wide));
  std::size_t first = 0;
  for (TextPiece& piece : collector.pieces) {
    piece.level = first < levels.size() ? levels[first] : 0;
    // The library's word on the direction counts.
    if ((piece.level % 2 == 1) != piece.isRightToLeft) piece.level = piece.isRightToLeft ? 1 : 0;
    first += piece.text.size();
  }
  return std::move(collector.pieces);
}

std::vector<bool> LineBreaks(const std::wstring& text) {
  std::vector<bool> breaks(text.size());
  if (text.empty()) return breaks;
  const std::string utf8(static_cast<const char*>(WtoA(text.c_str())));
  const std::vector<std::size_t> characters = CharactersOf(text);
  std::vector<PangoLogAttr> found(characters.back() + 2);
  pango_get_log_attrs(utf8.data(), static_cast<int>(utf8.size()), -1,
                      pango_language_from_string("en"), found.data(),
                      static_cast<int>(found.size()));
  for (std::size_t i = 1; i < text.size(); ++i) {
    breaks[i] = characters[i] != characters[i - 1] && found[characters[i]].is_line_break != 0;
  }
  return breaks;
}

std::vector<std::size_t> VisualOrder(const std::vector<int>& levels) {
  std::vector<std::size_t> order(levels.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const int highest = levels.empty() ? 0 : *std::max_element(levels.begin(), levels.end());
  for (int level = highest; level > 0; --level) {
    const auto isWithin = [&](std::size_t at) { return levels[at] >= level; };
    for (auto begin = order.begin(); begin != order.end();) {
      begin = std::find_if(begin, order.end(), isWithin);
      const auto end = std::find_if_not(begin, order.end(), isWithin);
      std::reverse(begin, end);
      begin = end;
    }
  }
  return order;
}

}  // namespace vlm::specimen
