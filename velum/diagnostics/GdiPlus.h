#pragma once

/// \file
/// Painting: shapes and texts on a bitmap, or on a Cairo context of the application.
///
///     namespace Gdiplus = vlm::Gdiplus;
///     Gdiplus::Bitmap bitmap(320, 200);
///     Gdiplus::Graphics graphics(&bitmap);
///     const Gdiplus::SolidBrush white(Gdiplus::Color(0xFFFFFFFF));
///     const Gdiplus::Pen black(Gdiplus::Color(0xFF000000));
///     graphics.FillRectangle(&white, 0, 0, 320, 200);
///     graphics.DrawLine(&black, 10, 100, 309, 100);
///     vlm::GUID png;
///     if (vlm::GetEncoderClsid(L"image/png", &png) >= 0) bitmap.Save(L"line.png", &png);
///
/// Names and numbers are those of a published interface, of which this is the part that charts use.
///
/// *Units.* A pixel is 1/96 inch, on every kind of surface: a font of 12 points is 16 pixels high
/// everywhere, and an application scales its context by 0.75 for a surface that counts points.
///
/// *Pixels.* Coordinates name pixels, whose centres they are: a line of width 1 from (2, 5) to
/// (8, 5) paints the seven pixels from 2 to 8 of row 5, whole. A filled rectangle holds its first
/// column and row and as many more as it is wide and high; an outline of the same rectangle reaches
/// one pixel further. Slanted lines and curves have smooth edges. On a surface of vectors the same
/// shapes stand as vectors.
///
/// *Status.* Nothing throws but what makes an object, which may give `std::bad_alloc`. A call that
/// fails says so by its result, paints nothing and leaves its status in the object; whatever comes
/// next is painted all the same. Coordinates beyond 1,000,000, or beyond 4,000,000 pixels of a
/// surface whose context magnifies, are taken as that.

#include <velum/core/Api.h>
#include <velum/platform/Types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct _cairo;

namespace vlm::platform {
class Painter;
class PixelSurface;
struct PaintFont;
}  // namespace vlm::platform

/// Painting under the names of a published interface.
namespace vlm::Gdiplus {

using REAL = float;          ///< A real number of the interface.
using INT = std::int32_t;    ///< A whole number of the interface.
using UINT = std::uint32_t;  ///< A whole number that is not negative.
using ARGB = std::uint32_t;  ///< A colour: alpha, red, green, blue from the highest byte down.

/// What a call answers.
enum Status : int {
  Ok = 0,                  ///< It is done.
  GenericError = 1,        ///< The system failed.
  InvalidParameter = 2,    ///< An argument is not allowed, a null pointer say.
  OutOfMemory = 3,         ///< There is no memory for it.
  Win32Error = 7,          ///< A file can't be written; errno has the reason.
  WrongState = 8,          ///< The object is not in a state to do it.
  UnknownImageFormat = 13  ///< No encoder, or no form of pixels, of this name.
};

/// What a bitmap may be locked for.
enum ImageLockMode : unsigned {
  ImageLockModeRead = 1,  ///< Reading.
  ImageLockModeWrite = 2  ///< Writing.
};

using PixelFormat = INT;  ///< A form of pixels.
/// 32 bits with alpha; red, green and blue are multiplied by it.
inline constexpr PixelFormat PixelFormat32bppPARGB = 0xE200B;

/// How a font is drawn.
enum FontStyle : int {
  FontStyleRegular = 0,  ///< Plain.
  FontStyleBold = 1      ///< Bold.
};

/// Where a text stands, seen from its point.
enum StringAlignment : int {
  StringAlignmentNear = 0,    ///< Right of it, or below it.
  StringAlignmentCenter = 1,  ///< Centred on it.
  StringAlignmentFar = 2      ///< Left of it, or above it.
};

/// A colour. A value.
class Color {
 public:
  /// Opaque black.
  constexpr Color() noexcept = default;
  /// The colour of a word.
  constexpr explicit Color(ARGB argb) noexcept : argb_(argb) {}

  /// The word.
  [[nodiscard]] constexpr ARGB GetValue() const noexcept { return argb_; }

 private:
  ARGB argb_ = 0xFF000000;
};

/// A point in pixels. A value.
struct Point {
  /// The origin.
  constexpr Point() noexcept = default;
  /// A point.
  constexpr Point(INT x, INT y) noexcept : X(x), Y(y) {}

  INT X = 0;  ///< Across.
  INT Y = 0;  ///< Down.
};

/// A point in pixels and their parts. A value.
struct PointF {
  /// The origin.
  constexpr PointF() noexcept = default;
  /// A point.
  constexpr PointF(REAL x, REAL y) noexcept : X(x), Y(y) {}

  REAL X = 0;  ///< Across.
  REAL Y = 0;  ///< Down.
};

/// A rectangle in pixels. A value.
struct Rect {
  /// An empty one at the origin.
  constexpr Rect() noexcept = default;
  /// A rectangle by its first column, first row and size.
  constexpr Rect(INT x, INT y, INT width, INT height) noexcept
      : X(x), Y(y), Width(width), Height(height) {}

  INT X = 0;       ///< The first column.
  INT Y = 0;       ///< The first row.
  INT Width = 0;   ///< How many columns.
  INT Height = 0;  ///< How many rows.
};

/// A rectangle in pixels and their parts. A value.
struct RectF {
  /// An empty one at the origin.
  constexpr RectF() noexcept = default;
  /// A rectangle by its left top corner and size.
  constexpr RectF(REAL x, REAL y, REAL width, REAL height) noexcept
      : X(x), Y(y), Width(width), Height(height) {}

  REAL X = 0;       ///< The left edge.
  REAL Y = 0;       ///< The upper edge.
  REAL Width = 0;   ///< The width.
  REAL Height = 0;  ///< The height.
};

/// An affine transform of row vectors: x' = m11 x + m21 y + dx, y' = m12 x + m22 y + dy. A value.
class Matrix {
 public:
  /// The identity.
  constexpr Matrix() noexcept = default;
  /// A transform by its six elements.
  constexpr Matrix(REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy) noexcept
      : elements_{m11, m12, m21, m22, dx, dy} {}

  /// Writes the six elements, in the order of the constructor, to `elements`.
  Status GetElements(REAL* elements) const noexcept {
    if (!elements) return InvalidParameter;
    for (int i = 0; i < 6; ++i) elements[i] = elements_[i];
    return Ok;
  }
  /// Takes six elements.
  Status SetElements(REAL m11, REAL m12, REAL m21, REAL m22, REAL dx, REAL dy) noexcept {
    *this = Matrix(m11, m12, m21, m22, dx, dy);
    return Ok;
  }

 private:
  REAL elements_[6] = {1, 0, 0, 1, 0, 0};
};

/// Where the pixels of a bitmap lie. A plain record, which does not own them.
struct BitmapData {
  UINT Width = 0;               ///< The columns.
  UINT Height = 0;              ///< The rows.
  INT Stride = 0;               ///< From a row to the next in bytes, negative for upward.
  INT PixelFormat = 0;          ///< The form of the pixels, such as `PixelFormat32bppPARGB`.
  void* Scan0 = nullptr;        ///< The first row.
  std::uintptr_t Reserved = 0;  ///< Not in use.
};

/// What lines are drawn with. A value.
class Pen {
 public:
  /// A pen of a colour, `width` pixels wide; one that is not above 0 draws lines of 1 pixel.
  explicit Pen(const Color& color, REAL width = 1) noexcept : color_(color), width_(width) {}

  /// The colour.
  [[nodiscard]] Color GetColor() const noexcept { return color_; }
  /// The width.
  [[nodiscard]] REAL GetWidth() const noexcept { return width_; }

 private:
  Color color_;
  REAL width_;
};

/// What areas and texts are filled with. A value.
class SolidBrush {
 public:
  /// A brush of a colour.
  explicit SolidBrush(const Color& color) noexcept : color_(color) {}

  /// The colour.
  [[nodiscard]] Color GetColor() const noexcept { return color_; }

 private:
  Color color_;
};

/// How a text stands at its point: at first right of it and below it. A value.
class StringFormat {
 public:
  /// Where it stands across.
  [[nodiscard]] StringAlignment GetAlignment() const noexcept { return across_; }
  /// Where it stands down.
  [[nodiscard]] StringAlignment GetLineAlignment() const noexcept { return down_; }

  /// Sets where it stands across.
  Status SetAlignment(StringAlignment alignment) noexcept {
    across_ = alignment;
    return Ok;
  }
  /// Sets where it stands down.
  Status SetLineAlignment(StringAlignment alignment) noexcept {
    down_ = alignment;
    return Ok;
  }

 private:
  StringAlignment across_ = StringAlignmentNear;
  StringAlignment down_ = StringAlignmentNear;
};

class Graphics;

/// A face at a size. A value.
///
/// A family that the system does not have is replaced by the one that it finds nearest; a character
/// that the face lacks comes from another one.
class VELUM_API Font {
 public:
  /// The family `family`, `emSize` points high, regular or bold (`FontStyle`).
  Font(const wchar_t* family, REAL emSize, INT style = FontStyleRegular);
  /// Copies the description.
  Font(const Font& other);
  /// Copies the description.
  Font& operator=(const Font& other);
  ~Font();

  /// The distance from a line of text to the next one on `graphics`, in pixels; 0 if it can't be
  /// had, and `graphics` keeps the status.
  REAL GetHeight(const Graphics* graphics) const;

 private:
  friend class Graphics;

  [[gnu::visibility("hidden")]] bool IsUsable() const noexcept;
  [[gnu::visibility("hidden")]] bool CanSet(const std::string& text) const noexcept;
  [[gnu::visibility("hidden")]] platform::PaintFont Describe() const;

  std::string family_;
  REAL emSize_;
  INT style_;
};

/// A picture in memory, 32 bits a pixel with alpha, transparent at first.
///
/// Has identity and owns its pixels. One thread uses it at a time.
class VELUM_API Bitmap {
 public:
  /// A picture of `width` columns and `height` rows.
  ///
  /// - A size below 1, or above 32767: nothing, and the status is `InvalidParameter`. Without
  ///   memory: nothing, `OutOfMemory`.
  Bitmap(INT width, INT height);
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;
  ~Bitmap();

  /// The columns; 0 for nothing.
  [[nodiscard]] UINT GetWidth() const noexcept;
  /// The rows; 0 for nothing.
  [[nodiscard]] UINT GetHeight() const noexcept;
  /// The status of the last call that failed since this was last asked for; `Ok` for none.
  Status GetLastStatus() const noexcept;

  /// Writes the picture to a file with the encoder of `GetEncoderClsid`. The file is a path of the
  /// library's form; it is replaced when it is whole, so that a failure leaves what was there.
  ///
  /// *Errors*: by status: `UnknownImageFormat` for another encoder, `Win32Error` with errno for a
  /// file that can't be written.
  Status Save(const wchar_t* path, const GUID* encoder);
  /// Gives access to the pixels of `rect`, of the whole picture if that is null; `flags` are those
  /// of `ImageLockMode`. The pixels are those of the picture; of a rectangle that is narrower they
  /// are copies, row by row without a gap, which `UnlockBits` puts back if they were locked for
  /// writing.
  ///
  /// *Errors*: by status: `UnknownImageFormat` for a form other than `PixelFormat32bppPARGB`,
  /// `InvalidParameter` for a rectangle that reaches out of the picture or no flags, `WrongState`
  /// for a picture that is locked, `OutOfMemory`.
  /// *Lifetime*: until `UnlockBits`; nothing paints on the picture till then.
  Status LockBits(const Rect* rect, UINT flags, PixelFormat format, BitmapData* data);
  /// Ends the access that `LockBits` gave.
  Status UnlockBits(BitmapData* data);

 private:
  friend class Graphics;

  [[gnu::visibility("hidden")]] Status Keep(Status status) const noexcept;
  [[gnu::visibility("hidden")]] BitmapData Part(const Rect& part) const noexcept;

  std::unique_ptr<platform::PixelSurface> surface_;
  mutable Status status_ = Ok;
  bool isLocked_ = false;
  Rect lockedPart_;
  UINT lockedFor_ = 0;
  std::vector<std::uint32_t> copies_;
};

/// Paints on a bitmap or on a Cairo context.
///
/// Has identity. It holds on to its surface, so that the bitmap or the context may go first. Its
/// coordinates are those that the context has when the object is made; the clip of the context
/// holds too, and each call leaves the context as it was. One thread uses it at a time; objects of
/// different threads do not disturb each other on different surfaces, since each thread has fonts
/// of its own.
///
/// A text is UTF-16; `length` counts its elements, -1 for a terminated one, and a terminator ends
/// any. It is measured as it is drawn, whatever the surface and its scale: as wide as the pen
/// moves, as high as its lines. One that would be longer than 1,000,000 pixels if each byte of its
/// UTF-8 form were as wide as the font is high is refused: `InvalidParameter`.
class VELUM_API Graphics {
 public:
  /// Paints on `bitmap`. Null, or one that holds nothing: every call answers `WrongState`.
  explicit Graphics(Bitmap* bitmap);
  /// Paints on `context` (a `cairo_t`). Null: every call answers `WrongState`.
  explicit Graphics(struct _cairo* context);
  /// Paints through `painter`.
  [[gnu::visibility("hidden")]] explicit Graphics(std::unique_ptr<platform::Painter> painter);
  Graphics(const Graphics&) = delete;
  Graphics& operator=(const Graphics&) = delete;
  ~Graphics();

  /// The status of the last call that failed since this was last asked for; `Ok` for none.
  Status GetLastStatus() const noexcept;

  /// Fills the pixels of a rectangle; none for a size below 1.
  Status FillRectangle(const SolidBrush* brush, INT x, INT y, INT width, INT height);
  /// The same.
  Status FillRectangle(const SolidBrush* brush, const Rect& rect);
  /// Draws the outline of a rectangle, to the pixels at `x + width` and `y + height`. A size of 0
  /// draws a line or a point, one below draws nothing.
  Status DrawRectangle(const Pen* pen, INT x, INT y, INT width, INT height);
  /// The same.
  Status DrawRectangle(const Pen* pen, const Rect& rect);
  /// Draws a line, both its ends included.
  Status DrawLine(const Pen* pen, INT x1, INT y1, INT x2, INT y2);
  /// Draws the lines from each point to the next. *Errors*: `InvalidParameter` below 2 points.
  Status DrawLines(const Pen* pen, const Point* points, INT count);
  /// Draws the ellipse within the outline of a rectangle, see `DrawRectangle`.
  Status DrawEllipse(const Pen* pen, INT x, INT y, INT width, INT height);
  /// The same.
  Status DrawEllipse(const Pen* pen, const Rect& rect);
  /// Fills the ellipse within the outline of a rectangle; nothing for a size below 1.
  Status FillEllipse(const SolidBrush* brush, INT x, INT y, INT width, INT height);
  /// The same.
  Status FillEllipse(const SolidBrush* brush, const Rect& rect);

  /// Writes the box that `DrawString` fills for a text at `origin`, near in both directions. A
  /// text without characters has no size.
  Status MeasureString(const wchar_t* text, INT length, const Font* font, const PointF& origin,
                       RectF* box) const;
  /// Draws a text at a point, as `format` says; null stands for near in both directions.
  Status DrawString(const wchar_t* text, INT length, const Font* font, const PointF& origin,
                    const StringFormat* format, const SolidBrush* brush);

  /// Moves what comes next, before the transforms that are there already. An origin further than
  /// 1,000,000 pixels away is refused: `GenericError`.
  Status TranslateTransform(REAL dx, REAL dy);
  /// Turns what comes next by degrees clockwise, before the transforms that are there already.
  Status RotateTransform(REAL degrees);
  /// Takes away all transforms of this object.
  Status ResetTransform();
  /// Paints inside of the pixels of a rectangle alone, from now on. The transforms that are there
  /// apply to it.
  Status SetClip(const Rect& rect);
  /// Takes the clip of `SetClip` away.
  Status ResetClip();
  /// Paints inside of the pixels of a rectangle alone that the clip leaves.
  [[gnu::visibility("hidden")]] Status SetInnerClip(const Rect& rect);
  /// Takes the clip of `SetInnerClip` away.
  [[gnu::visibility("hidden")]] Status ResetInnerClip();

  /// A drawing context on the same surface, see DrawingContext.h. Null if there is none.
  /// *Lifetime*: until `ReleaseHDC`; it holds on to the surface.
  [[nodiscard]] HDC GetHDC();
  /// Gives a drawing context back.
  void ReleaseHDC(HDC context);

 private:
  friend class Font;

  [[gnu::visibility("hidden")]] Status Keep(Status status) const noexcept;
  template <class T>
  [[gnu::visibility("hidden")]] Status Paint(bool isValid, T paint) const noexcept;

  std::unique_ptr<platform::Painter> painter_;
  mutable Status status_ = Ok;
};

}  // namespace vlm::Gdiplus
