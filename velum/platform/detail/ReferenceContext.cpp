#include <velum/platform/detail/ReferenceContext.h>

#include <velum/platform/detail/FontCatalog.h>
#include <velum/platform/detail/OutlineFont.h>

#include <memory>

namespace vlm::platform {

namespace {

struct Font : HFONT__ {
  const FontEntry* entry = nullptr;
  std::unique_ptr<OutlineFont> outline;
  bool isOpened = false;
};

// What is selected in a new context.
constinit Font stockFont{};

Font* Selected(HDC context) {
  return static_cast<Font*>(static_cast<FontContext*>(context)->selected);
}

}  // namespace

FontContext::FontContext() noexcept : HDC__{}, selected(&stockFont) {}

FontContext::~FontContext() = default;

HFONT CreateFontHandle(const FontEntry& entry) {
  auto* const font = new Font{};
  font->entry = &entry;
  return font;
}

HFONT SelectFontHandle(HDC context, HFONT font) noexcept {
  Font* const before = Selected(context);
  static_cast<FontContext*>(context)->selected = font;
  return before;
}

void DeleteFontHandle(HFONT font) noexcept {
  if (font != &stockFont) delete static_cast<Font*>(font);
}

const FontEntry* SelectedEntry(HDC context) noexcept { return Selected(context)->entry; }

const OutlineFont* SelectedFont(HDC context) {
  Font& font = *Selected(context);
  if (!font.isOpened && font.entry) {
    font.outline = OutlineFont::Open(font.entry->file, font.entry->index);
    font.isOpened = true;
  }
  return font.outline.get();
}

}  // namespace vlm::platform
