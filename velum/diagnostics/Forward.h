#pragma once

/// \file
/// Declares the classes of the diagnostics, for headers that only name them.
///
///     #include <velum/diagnostics/Forward.h>
///     void Report(vlm::CLogger& log);

namespace vlm {

namespace Gdiplus {
class Bitmap;
class Color;
class Font;
class Graphics;
class Matrix;
class Pen;
class SolidBrush;
class StringFormat;
struct BitmapData;
struct Point;
struct PointF;
struct Rect;
struct RectF;
}  // namespace Gdiplus

class CDllCache;
class CDynLib;
class CLogger;
class CMemDC;
class CModQuery;
class CRemoteLogger;
class CStartGdiPlus;
class CSystemInfo;
class CTimer;
class CXPTheme;
class CrashStack;
class EMFRefDC;
class GMapMode;
class ScopedLogMessage;
struct DllEntry;
struct DllEntryLess;

}  // namespace vlm
