#pragma once

/// \file
/// Records of a published platform interface, as plain structures: points, rectangles, sizes,
/// palette entries, times, entries of folders, and handles. Field names, order and widths are those
/// of that interface, so that stored structures can be read as they are.
///
///     vlm::RECT page{0, 0, 210, 297};
///     vlm::POINT centre{page.right / 2, page.bottom / 2};

#include <cstdint>

namespace vlm {

/// A point in integer coordinates. Plain data: a `POINT p;` is not initialised.
struct POINT {
  std::int32_t x;  ///< The horizontal coordinate.
  std::int32_t y;  ///< The vertical coordinate.
};

/// A rectangle by its edges, in integer coordinates. Nothing keeps `left` at or below `right`.
struct RECT {
  std::int32_t left;    ///< x of the left edge.
  std::int32_t top;     ///< y of the upper edge.
  std::int32_t right;   ///< x of the right edge.
  std::int32_t bottom;  ///< y of the lower edge.
};

/// A width and a height in integer units.
struct SIZE {
  std::int32_t cx;  ///< The width.
  std::int32_t cy;  ///< The height.
};

/// A palette entry or pixel of a bitmap: four bytes, blue first.
struct RGBQUAD {
  std::uint8_t rgbBlue;      ///< Blue, 0 to 255.
  std::uint8_t rgbGreen;     ///< Green, 0 to 255.
  std::uint8_t rgbRed;       ///< Red, 0 to 255.
  std::uint8_t rgbReserved;  ///< 0, or the opacity where a function says so.
};

/// A time: hundreds of nanoseconds since the beginning of 1601, in two halves.
struct FILETIME {
  std::uint32_t dwLowDateTime;   ///< The low 32 bits.
  std::uint32_t dwHighDateTime;  ///< The high 32 bits.
};

/// An entry of a folder, as a search gives it. Texts are terminated.
struct WIN32_FIND_DATAA {
  std::uint32_t dwFileAttributes;  ///< Bits such as `FILE_ATTRIBUTE_DIRECTORY`.
  FILETIME ftCreationTime;         ///< When it was made.
  FILETIME ftLastAccessTime;       ///< When it was last read.
  FILETIME ftLastWriteTime;        ///< When it was last written.
  std::uint32_t nFileSizeHigh;     ///< The size in bytes, the high 32 bits.
  std::uint32_t nFileSizeLow;      ///< The size in bytes, the low 32 bits.
  std::uint32_t dwReserved0;       ///< Not in use.
  std::uint32_t dwReserved1;       ///< Not in use.
  char cFileName[260];             ///< The name without its folder.
  char cAlternateFileName[14];     ///< A short form of the name.
};

/// What a `HKEY` points to. No object of it exists.
struct HKEY__ {
  int unused;  ///< Not in use.
};
/// A top-level key of the registry: a number in the form of a pointer, which leads nowhere.
using HKEY = HKEY__*;

// A number made a pointer is no constant expression, so that these can't be constexpr.
/// The classes of documents.
const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(std::uintptr_t{0x80000000});
/// What belongs to the user.
const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(std::uintptr_t{0x80000001});
/// What belongs to the computer.
const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(std::uintptr_t{0x80000002});
/// What belongs to all users.
const HKEY HKEY_USERS = reinterpret_cast<HKEY>(std::uintptr_t{0x80000003});

inline constexpr std::uint32_t FILE_ATTRIBUTE_READONLY = 0x0001;    ///< May not be written.
inline constexpr std::uint32_t FILE_ATTRIBUTE_HIDDEN = 0x0002;      ///< Is not usually shown.
inline constexpr std::uint32_t FILE_ATTRIBUTE_SYSTEM = 0x0004;      ///< Belongs to the system.
inline constexpr std::uint32_t FILE_ATTRIBUTE_DIRECTORY = 0x0010;   ///< Is a folder.
inline constexpr std::uint32_t FILE_ATTRIBUTE_ARCHIVE = 0x0020;     ///< Waits for a backup.
inline constexpr std::uint32_t FILE_ATTRIBUTE_NORMAL = 0x0080;      ///< Has no other attribute.
inline constexpr std::uint32_t FILE_ATTRIBUTE_TEMPORARY = 0x0100;   ///< Will not stay.
inline constexpr std::uint32_t FILE_ATTRIBUTE_COMPRESSED = 0x0800;  ///< Is stored compressed.

using tagPOINT = POINT;      ///< `POINT` under its tag name.
using tagRECT = RECT;        ///< `RECT` under its tag name.
using tagSIZE = SIZE;        ///< `SIZE` under its tag name.
using tagRGBQUAD = RGBQUAD;  ///< `RGBQUAD` under its tag name.

static_assert(sizeof(POINT) == 8 && sizeof(RECT) == 16 && sizeof(SIZE) == 8);
static_assert(sizeof(RGBQUAD) == 4);
static_assert(sizeof(FILETIME) == 8 && sizeof(WIN32_FIND_DATAA) == 320);

}  // namespace vlm
