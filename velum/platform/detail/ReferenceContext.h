#pragma once

/// \file
/// Contexts in which one face is selected, behind plain handles.

#include <velum/platform/Types.h>

namespace vlm::platform {

struct FontEntry;
class OutlineFont;

/// What a `HDC` of the library points to: with no outline face selected at first. What else a
/// context has belongs to whoever derives from it.
struct FontContext : HDC__ {
  FontContext() noexcept;
  FontContext(const FontContext&) = delete;
  FontContext& operator=(const FontContext&) = delete;
  virtual ~FontContext();

  HFONT selected;  ///< The selected face, never null.
};

/// Makes a handle of an installed face. *Errors*: `std::bad_alloc`. *Lifetime*: that of `entry` at
/// most.
[[nodiscard]] HFONT CreateFontHandle(const FontEntry& entry);
/// Selects a face and gives the one that was selected before, never null.
HFONT SelectFontHandle(HDC context, HFONT font) noexcept;
/// Destroys a face that is selected nowhere. That of a new context stays.
void DeleteFontHandle(HFONT font) noexcept;

/// Where the selected face comes from; null for that of a new context.
[[nodiscard]] const FontEntry* SelectedEntry(HDC context) noexcept;
/// The selected face, opened by the first call; null if there is none or it can't be opened.
[[nodiscard]] const OutlineFont* SelectedFont(HDC context);

}  // namespace vlm::platform
