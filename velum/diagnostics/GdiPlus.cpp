#include <velum/diagnostics/GdiPlus.h>

#include <velum/diagnostics/DrawingContext.h>
#include <velum/diagnostics/GdiPlusUtil.h>
#include <velum/diagnostics/detail/DeviceContext.h>
#include <velum/platform/detail/Canvas.h>
#include <velum/platform/detail/Painting.h>
#include <velum/platform/detail/Utf8.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace vlm::Gdiplus {

namespace {

using platform::PaintAlignment;
using platform::PaintBox;
using platform::PaintPen;
using platform::PaintPoint;
using platform::PaintResult;

constexpr INT kLargestSide = 32767;
constexpr REAL kLargestFont = 10000;
// Pango counts 1024 to a pixel in 32 bits.
constexpr double kLongestText = 1e6;

Status StatusOf(PaintResult result) {
  switch (result) {
    case PaintResult::kDone:
      return Ok;
    case PaintResult::kNoMemory:
      return OutOfMemory;
    default:
      return GenericError;
  }
}

Status StatusOf(Status status) { return status; }

Status StatusOf(platform::SaveResult result) {
  switch (result) {
    case platform::SaveResult::kDone:
      return Ok;
    case platform::SaveResult::kNoMemory:
      return OutOfMemory;
    default:
      return Win32Error;
  }
}

/// A text of `length` elements, or of those before its terminator.
std::string Narrow(const wchar_t* text, INT length) {
  if (length == 0) return {};
  if (length < 0) return platform::WideToUtf8(text);
  const std::wstring_view all(text, static_cast<std::size_t>(length));
  return platform::WideToUtf8(all.substr(0, all.find(L'\0')));
}

bool IsText(const wchar_t* text, INT length) { return length == 0 || (text && length >= -1); }

PaintPen PaintPenOf(const Pen& pen) {
  const double width = pen.GetWidth();
  return {pen.GetColor().GetValue(), width > 0 ? std::min(width, 1e6) : 1};
}

PaintAlignment PaintAlignmentOf(StringAlignment alignment) {
  return alignment == StringAlignmentCenter ? PaintAlignment::kCentre
         : alignment == StringAlignmentFar  ? PaintAlignment::kFar
                                            : PaintAlignment::kNear;
}

PaintBox BoxOf(INT x, INT y, INT width, INT height) {
  const auto real = [](INT number) { return static_cast<double>(number); };
  return {real(x), real(y), real(width), real(height)};
}

PaintBox ClipBoxOf(const Rect& rect) {
  return BoxOf(rect.X, rect.Y, std::max(rect.Width, 0), std::max(rect.Height, 0));
}

/// Copies the pixels of a part to another place.
void CopyRows(const BitmapData& to, const BitmapData& from) {
  for (std::ptrdiff_t y = 0; y < std::ptrdiff_t{from.Height}; ++y) {
    std::memcpy(static_cast<char*>(to.Scan0) + y * to.Stride,
                static_cast<const char*>(from.Scan0) + y * from.Stride,
                std::size_t{4} * from.Width);
  }
}

}  // namespace

Font::Font(const wchar_t* family, REAL emSize, INT style)
    : family_(family ? platform::WideToUtf8(family) : std::string()),
      emSize_(emSize),
      style_(style) {}
Font::Font(const Font& other) = default;
Font& Font::operator=(const Font& other) = default;
Font::~Font() = default;

REAL Font::GetHeight(const Graphics* graphics) const {
  double width = 0;
  double height = 0;
  if (!graphics) return 0;
  const Status status = graphics->Paint(IsUsable(), [&](platform::Painter& painter) {
    return painter.MeasureText({}, Describe(), width, height);
  });
  return status == Ok ? static_cast<REAL>(height) : 0;
}

bool Font::IsUsable() const noexcept { return emSize_ > 0 && emSize_ <= kLargestFont; }

bool Font::CanSet(const std::string& text) const noexcept {
  return static_cast<double>(text.size()) * emSize_ * 96 / 72 <= kLongestText;
}

platform::PaintFont Font::Describe() const {
  return {family_, emSize_, (style_ & FontStyleBold) != 0};
}

Bitmap::Bitmap(INT width, INT height) {
  if (std::min(width, height) < 1 || std::max(width, height) > kLargestSide) {
    Keep(InvalidParameter);
    return;
  }
  surface_ = platform::PixelSurface::Make(width, height);
  if (!surface_) Keep(OutOfMemory);
}

Bitmap::~Bitmap() = default;

UINT Bitmap::GetWidth() const noexcept {
  return surface_ ? static_cast<UINT>(surface_->Width()) : 0;
}

UINT Bitmap::GetHeight() const noexcept {
  return surface_ ? static_cast<UINT>(surface_->Height()) : 0;
}

Status Bitmap::GetLastStatus() const noexcept { return std::exchange(status_, Ok); }

Status Bitmap::Save(const wchar_t* path, const GUID* encoder) {
  if (!surface_) return Keep(WrongState);
  if (!path || !encoder) return Keep(InvalidParameter);
  GUID png;
  if (GetEncoderClsid(L"image/png", &png) < 0 || std::memcmp(encoder, &png, sizeof png) != 0) {
    return Keep(UnknownImageFormat);
  }
  try {
    return Keep(StatusOf(platform::SavePng(*surface_, platform::WideToUtf8(path).c_str())));
  } catch (const std::bad_alloc&) {
    return Keep(OutOfMemory);
  }
}

Status Bitmap::LockBits(const Rect* rect, UINT flags, PixelFormat format, BitmapData* data) {
  if (!surface_ || isLocked_) return Keep(WrongState);
  if (!data || (flags & (ImageLockModeRead | ImageLockModeWrite)) == 0) {
    return Keep(InvalidParameter);
  }
  if (format != PixelFormat32bppPARGB) return Keep(UnknownImageFormat);
  const Rect part = rect ? *rect : Rect(0, 0, surface_->Width(), surface_->Height());
  if (part.X < 0 || part.Y < 0 || part.Width < 1 || part.Height < 1 ||
      part.Width > surface_->Width() - part.X || part.Height > surface_->Height() - part.Y) {
    return Keep(InvalidParameter);
  }
  const BitmapData pixels = Part(part);
  BitmapData locked = pixels;
  // Whoever copies rows by their stride must not come behind the last one.
  if (part.Width < surface_->Width()) {
    try {
      copies_.resize(std::size_t{pixels.Width} * pixels.Height);
    } catch (const std::bad_alloc&) {
      return Keep(OutOfMemory);
    }
    locked.Stride = 4 * part.Width;
    locked.Scan0 = copies_.data();
    CopyRows(locked, pixels);
  }
  *data = locked;
  isLocked_ = true;
  lockedPart_ = part;
  lockedFor_ = flags;
  return Ok;
}

Status Bitmap::UnlockBits(BitmapData* data) {
  if (!data) return Keep(InvalidParameter);
  if (!isLocked_) return Keep(WrongState);
  isLocked_ = false;
  if ((lockedFor_ & ImageLockModeWrite) != 0) {
    const BitmapData pixels = Part(lockedPart_);
    if (!copies_.empty()) {
      BitmapData copies = pixels;
      copies.Stride = 4 * lockedPart_.Width;
      copies.Scan0 = copies_.data();
      CopyRows(pixels, copies);
    }
    surface_->MarkWritten();
  }
  copies_ = {};
  return Ok;
}

BitmapData Bitmap::Part(const Rect& part) const noexcept {
  BitmapData data;
  data.Width = static_cast<UINT>(part.Width);
  data.Height = static_cast<UINT>(part.Height);
  data.Stride = surface_->Stride();
  data.PixelFormat = PixelFormat32bppPARGB;
  data.Scan0 = surface_->Pixels() + std::ptrdiff_t{part.Y} * surface_->Stride() + 4 * part.X;
  return data;
}

Status Bitmap::Keep(Status status) const noexcept {
  if (status != Ok) status_ = status;
  return status;
}

Graphics::Graphics(Bitmap* bitmap) {
  if (bitmap && bitmap->surface_) painter_ = platform::MakePainter(*bitmap->surface_);
  if (!painter_) Keep(WrongState);
}

Graphics::Graphics(struct _cairo* context) : painter_(platform::MakePainter(context)) {
  if (!painter_) Keep(WrongState);
}

Graphics::Graphics(std::unique_ptr<platform::Painter> painter) : painter_(std::move(painter)) {
  if (!painter_) Keep(WrongState);
}

Graphics::~Graphics() = default;

Status Graphics::GetLastStatus() const noexcept { return std::exchange(status_, Ok); }

Status Graphics::FillRectangle(const SolidBrush* brush, INT x, INT y, INT width, INT height) {
  return Paint(brush, [&](platform::Painter& painter) {
    if (width < 1 || height < 1) return PaintResult::kDone;
    return painter.FillRectangle(brush->GetColor().GetValue(), BoxOf(x, y, width, height));
  });
}

Status Graphics::FillRectangle(const SolidBrush* brush, const Rect& rect) {
  return FillRectangle(brush, rect.X, rect.Y, rect.Width, rect.Height);
}

Status Graphics::DrawRectangle(const Pen* pen, INT x, INT y, INT width, INT height) {
  return Paint(pen, [&](platform::Painter& painter) {
    if (width < 0 || height < 0) return PaintResult::kDone;
    return painter.DrawRectangle(PaintPenOf(*pen), BoxOf(x, y, width, height));
  });
}

Status Graphics::DrawRectangle(const Pen* pen, const Rect& rect) {
  return DrawRectangle(pen, rect.X, rect.Y, rect.Width, rect.Height);
}

Status Graphics::DrawLine(const Pen* pen, INT x1, INT y1, INT x2, INT y2) {
  const Point ends[] = {{x1, y1}, {x2, y2}};
  return DrawLines(pen, ends, 2);
}

Status Graphics::DrawLines(const Pen* pen, const Point* points, INT count) {
  return Paint(pen && points && count >= 2, [&](platform::Painter& painter) {
    std::vector<PaintPoint> path(static_cast<std::size_t>(count));
    std::transform(points, points + count, path.begin(), [](const Point& point) {
      return PaintPoint{static_cast<double>(point.X), static_cast<double>(point.Y)};
    });
    return painter.DrawLines(PaintPenOf(*pen), path.data(), path.size());
  });
}

Status Graphics::DrawEllipse(const Pen* pen, INT x, INT y, INT width, INT height) {
  return Paint(pen, [&](platform::Painter& painter) {
    if (width < 0 || height < 0) return PaintResult::kDone;
    return painter.DrawEllipse(PaintPenOf(*pen), BoxOf(x, y, width, height));
  });
}

Status Graphics::DrawEllipse(const Pen* pen, const Rect& rect) {
  return DrawEllipse(pen, rect.X, rect.Y, rect.Width, rect.Height);
}

Status Graphics::FillEllipse(const SolidBrush* brush, INT x, INT y, INT width, INT height) {
  return Paint(brush, [&](platform::Painter& painter) {
    if (width < 1 || height < 1) return PaintResult::kDone;
    return painter.FillEllipse(brush->GetColor().GetValue(), BoxOf(x, y, width, height));
  });
}

Status Graphics::FillEllipse(const SolidBrush* brush, const Rect& rect) {
  return FillEllipse(brush, rect.X, rect.Y, rect.Width, rect.Height);
}

Status Graphics::MeasureString(const wchar_t* text, INT length, const Font* font,
                               const PointF& origin, RectF* box) const {
  return Paint(
      IsText(text, length) && font && font->IsUsable() && box, [&](platform::Painter& painter) {
        const std::string narrow = Narrow(text, length);
        if (!font->CanSet(narrow)) return InvalidParameter;
        double width = 0;
        double height = 0;
        const PaintResult result =
            narrow.empty() ? PaintResult::kDone
                           : painter.MeasureText(narrow, font->Describe(), width, height);
        if (result == PaintResult::kDone) {
          *box = RectF(origin.X, origin.Y, static_cast<REAL>(width), static_cast<REAL>(height));
        }
        return StatusOf(result);
      });
}

Status Graphics::DrawString(const wchar_t* text, INT length, const Font* font, const PointF& origin,
                            const StringFormat* format, const SolidBrush* brush) {
  const bool isValid = IsText(text, length) && font && font->IsUsable() && brush &&
                       std::isfinite(origin.X) && std::isfinite(origin.Y);
  return Paint(isValid, [&](platform::Painter& painter) {
    const std::string narrow = Narrow(text, length);
    if (narrow.empty()) return Ok;
    if (!font->CanSet(narrow)) return InvalidParameter;
    const StringFormat how = format ? *format : StringFormat();
    return StatusOf(painter.DrawText(
        narrow, font->Describe(), {origin.X, origin.Y}, PaintAlignmentOf(how.GetAlignment()),
        PaintAlignmentOf(how.GetLineAlignment()), brush->GetColor().GetValue()));
  });
}

Status Graphics::TranslateTransform(REAL dx, REAL dy) {
  return Paint(std::isfinite(dx) && std::isfinite(dy),
               [&](platform::Painter& painter) { return painter.Translate(dx, dy); });
}

Status Graphics::RotateTransform(REAL degrees) {
  return Paint(std::isfinite(degrees),
               [&](platform::Painter& painter) { return painter.Rotate(degrees); });
}

Status Graphics::ResetTransform() {
  return Paint(true, [](platform::Painter& painter) { return painter.ResetTransform(); });
}

Status Graphics::SetClip(const Rect& rect) {
  return Paint(true, [&](platform::Painter& painter) { return painter.SetClip(ClipBoxOf(rect)); });
}

Status Graphics::ResetClip() {
  return Paint(true, [](platform::Painter& painter) { return painter.ResetClip(); });
}

Status Graphics::SetInnerClip(const Rect& rect) {
  return Paint(true,
               [&](platform::Painter& painter) { return painter.SetInnerClip(ClipBoxOf(rect)); });
}

Status Graphics::ResetInnerClip() {
  return Paint(true, [](platform::Painter& painter) { return painter.ResetInnerClip(); });
}

HDC Graphics::GetHDC() {
  struct _cairo* const context = painter_ ? painter_->Context() : nullptr;
  HDC handle = nullptr;
  try {
    handle = context ? detail::MakeDeviceContext(platform::MakeCanvas(context)) : nullptr;
  } catch (const std::bad_alloc&) {
    Keep(OutOfMemory);
    return nullptr;
  }
  if (!handle) Keep(WrongState);
  return handle;
}

void Graphics::ReleaseHDC(HDC context) { DeleteDC(context); }

Status Graphics::Keep(Status status) const noexcept {
  if (status != Ok) status_ = status;
  return status;
}

template <class T>
Status Graphics::Paint(bool isValid, T paint) const noexcept {
  if (!painter_) return Keep(WrongState);
  if (!isValid) return Keep(InvalidParameter);
  try {
    return Keep(StatusOf(paint(*painter_)));
  } catch (const std::bad_alloc&) {
    return Keep(OutOfMemory);
  }
}

}  // namespace vlm::Gdiplus
