#pragma once

/// \file
/// Contexts in which one face is selected, behind plain handles.

#include <velum/platform/Types.h>

namespace vlm::platform {

struct FontEntry;
class OutlineFont;

/// A context of the screen, with no outline face selected. *Errors*: `std::bad_alloc`.
[[nodiscard]] HDC GetReferenceContext();
/// Gives a context back; not the face that is selected in it.
void ReleaseReferenceContext(HDC context) noexcept;

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
