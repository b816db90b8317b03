#pragma once

/// \file
/// Records of a published platform interface, as plain structures: points, rectangles, sizes,
/// palette entries, bitmaps, times, entries of folders, and handles. Field names, order and widths
/// are those of that interface, so that stored structures can be read as they are.
///
///     vlm::RECT page{0, 0, 210, 297};
///     vlm::POINT centre{page.right / 2, page.bottom / 2};

#include <cstdint>

namespace vlm {

using BOOL = std::int32_t;       ///< 0 for false.
using WORD = std::uint16_t;      ///< 16 bits.
using DWORD = std::uint32_t;     ///< 32 bits.
using UINT = std::uint32_t;      ///< A number that is not negative.
using HRESULT = std::int32_t;    ///< A result; below 0 for a failure.
using COLORREF = std::uint32_t;  ///< A colour: red, green, blue from the lowest byte up.

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

/// The size and form of a bitmap, as it stands before its colour table and its pixels.
struct BITMAPINFOHEADER {
  std::uint32_t biSize;          ///< The number of bytes of this record: 40.
  std::int32_t biWidth;          ///< The pixels of a row.
  std::int32_t biHeight;         ///< The number of rows, of which the lowest comes first.
  std::uint16_t biPlanes;        ///< 1.
  std::uint16_t biBitCount;      ///< The bits of a pixel: 1, 4, 8, 16, 24 or 32.
  std::uint32_t biCompression;   ///< `BI_RGB` or another of these numbers.
  std::uint32_t biSizeImage;     ///< The bytes of the pixels; 0 says nothing.
  std::int32_t biXPelsPerMeter;  ///< The pixels on a meter of a row; 0 says nothing.
  std::int32_t biYPelsPerMeter;  ///< The pixels on a meter of a column; 0 says nothing.
  std::uint32_t biClrUsed;       ///< The entries of the colour table; 0 is all that the bits allow.
  std::uint32_t biClrImportant;  ///< How many of these matter; 0 is all.
};

inline constexpr std::uint32_t BI_RGB = 0;        ///< Pixels as they are.
inline constexpr std::uint32_t BI_RLE8 = 1;       ///< Runs of equal pixels of 8 bits.
inline constexpr std::uint32_t BI_RLE4 = 2;       ///< Runs of equal pixels of 4 bits.
inline constexpr std::uint32_t BI_BITFIELDS = 3;  ///< Pixels whose channels three masks tell.

/// A bitmap's header and the first entry of its colour table; the others follow.
struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;  ///< The size and form.
  RGBQUAD bmiColors[1];        ///< The colour table, if there is one.
};

/// A time: hundreds of nanoseconds since the beginning of 1601, in two halves.
struct FILETIME {
  std::uint32_t dwLowDateTime;   ///< The low 32 bits.
  std::uint32_t dwHighDateTime;  ///< The high 32 bits.
};

/// A time taken apart.
struct SYSTEMTIME {
  std::uint16_t wYear;          ///< The year.
  std::uint16_t wMonth;         ///< From 1, January.
  std::uint16_t wDayOfWeek;     ///< From 0, Sunday.
  std::uint16_t wDay;           ///< From 1.
  std::uint16_t wHour;          ///< From 0 to 23.
  std::uint16_t wMinute;        ///< From 0.
  std::uint16_t wSecond;        ///< From 0.
  std::uint16_t wMilliseconds;  ///< From 0.
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

inline constexpr std::uint32_t FILE_ATTRIBUTE_READONLY = 0x0001;    ///< May not be written.
inline constexpr std::uint32_t FILE_ATTRIBUTE_HIDDEN = 0x0002;      ///< Is not usually shown.
inline constexpr std::uint32_t FILE_ATTRIBUTE_SYSTEM = 0x0004;      ///< Belongs to the system.
inline constexpr std::uint32_t FILE_ATTRIBUTE_DIRECTORY = 0x0010;   ///< Is a folder.
inline constexpr std::uint32_t FILE_ATTRIBUTE_ARCHIVE = 0x0020;     ///< Waits for a backup.
inline constexpr std::uint32_t FILE_ATTRIBUTE_NORMAL = 0x0080;      ///< Has no other attribute.
inline constexpr std::uint32_t FILE_ATTRIBUTE_TEMPORARY = 0x0100;   ///< Will not stay.
inline constexpr std::uint32_t FILE_ATTRIBUTE_COMPRESSED = 0x0800;  ///< Is stored compressed.

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

/// What a crash was: a code, where it happened, and what goes with it.
struct EXCEPTION_RECORD {
  std::uint32_t ExceptionCode;              ///< The kind, such as `EXCEPTION_ACCESS_VIOLATION`.
  std::uint32_t ExceptionFlags;             ///< 1 if the program can't go on; otherwise 0.
  EXCEPTION_RECORD* ExceptionRecord;        ///< The crash that led to this one, or null.
  void* ExceptionAddress;                   ///< The instruction.
  std::uint32_t NumberParameters;           ///< How many of the following there are.
  std::uintptr_t ExceptionInformation[15];  ///< What the kind says they are.
};
/// The processor at the moment of a crash, in the system's own form. No object of it exists.
struct CONTEXT;
/// What a crash was, and the processor's state.
struct EXCEPTION_POINTERS {
  EXCEPTION_RECORD* ExceptionRecord;  ///< What it was.
  CONTEXT* ContextRecord;             ///< The state; null if it is not known.
};

/// Memory that the program may not use in this way. The first parameter is 0 for reading and 1 for
/// writing, the second is the address.
inline constexpr std::uint32_t EXCEPTION_ACCESS_VIOLATION = 0xC0000005;

/// A number that nobody else gives to what it names.
struct GUID {
  std::uint32_t Data1;    ///< The first 32 bits.
  std::uint16_t Data2;    ///< The next 16.
  std::uint16_t Data3;    ///< The next 16.
  std::uint8_t Data4[8];  ///< The other 64.
};

/// The size and place of a glyph. x goes right and y up from the place of the pen.
struct GLYPHMETRICS {
  std::uint32_t gmBlackBoxX;  ///< The width of what is drawn.
  std::uint32_t gmBlackBoxY;  ///< The height of what is drawn.
  POINT gmptGlyphOrigin;      ///< The upper left corner of what is drawn.
  std::int16_t gmCellIncX;    ///< How far the pen moves right for the next glyph.
  std::int16_t gmCellIncY;    ///< The height of the cell.
};

/// A description of a face. A positive height is that of the cell.
struct LOGFONTA {
  std::int32_t lfHeight;          ///< The height of the cell.
  std::int32_t lfWidth;           ///< The mean width of the glyphs.
  std::int32_t lfEscapement;      ///< The angle of the line of text, in tenths of a degree.
  std::int32_t lfOrientation;     ///< The angle of each glyph, in tenths of a degree.
  std::int32_t lfWeight;          ///< From 100, thin, to 900; 400 is normal and 700 bold.
  std::uint8_t lfItalic;          ///< Not 0 for italic.
  std::uint8_t lfUnderline;       ///< Not 0 for an underscore.
  std::uint8_t lfStrikeOut;       ///< Not 0 for a line through the text.
  std::uint8_t lfCharSet;         ///< 0 for western text, 2 for symbols.
  std::uint8_t lfOutPrecision;    ///< How closely the output must match.
  std::uint8_t lfClipPrecision;   ///< How glyphs are cut at edges.
  std::uint8_t lfQuality;         ///< How fine the output is.
  std::uint8_t lfPitchAndFamily;  ///< 1 for a fixed, 2 for a variable pitch; the family above.
  char lfFaceName[32];            ///< The name, terminated.
};

/// A description of a face as a list of faces gives it.
struct ENUMLOGFONTA {
  LOGFONTA elfLogFont;           ///< The description.
  std::uint8_t elfFullName[64];  ///< The full name, terminated.
  std::uint8_t elfStyle[32];     ///< The name of the style, terminated.
};

/// The measures of a face.
struct TEXTMETRICA {
  std::int32_t tmHeight;            ///< The height of the cell: ascent and descent.
  std::int32_t tmAscent;            ///< The part of it above the baseline.
  std::int32_t tmDescent;           ///< The part of it below the baseline.
  std::int32_t tmInternalLeading;   ///< The part of it beyond the em square.
  std::int32_t tmExternalLeading;   ///< What is added between lines.
  std::int32_t tmAveCharWidth;      ///< The mean width of the glyphs.
  std::int32_t tmMaxCharWidth;      ///< The width of the widest glyph.
  std::int32_t tmWeight;            ///< The weight, as in `LOGFONTA`.
  std::int32_t tmOverhang;          ///< What a made-up bold or italic adds to a width.
  std::int32_t tmDigitizedAspectX;  ///< The horizontal part of the aspect it was made for.
  std::int32_t tmDigitizedAspectY;  ///< The vertical part of that.
  std::uint8_t tmFirstChar;         ///< The lowest code.
  std::uint8_t tmLastChar;          ///< The highest code.
  std::uint8_t tmDefaultChar;       ///< The code that is shown for one that is missing.
  std::uint8_t tmBreakChar;         ///< The code that parts words.
  std::uint8_t tmItalic;            ///< Not 0 for italic.
  std::uint8_t tmUnderlined;        ///< Not 0 for an underscore.
  std::uint8_t tmStruckOut;         ///< Not 0 for a line through the text.
  std::uint8_t tmPitchAndFamily;    ///< Pitch and technique in the low bits, family above.
  std::uint8_t tmCharSet;           ///< 0 for western text, 2 for symbols.
};

/// The measures of an outline face as a list of faces gives them: those of `TEXTMETRICA`, and the
/// units in which the face is drawn.
struct NEWTEXTMETRICA {
  std::int32_t tmHeight;            ///< As in `TEXTMETRICA`.
  std::int32_t tmAscent;            ///< As in `TEXTMETRICA`.
  std::int32_t tmDescent;           ///< As in `TEXTMETRICA`.
  std::int32_t tmInternalLeading;   ///< As in `TEXTMETRICA`.
  std::int32_t tmExternalLeading;   ///< As in `TEXTMETRICA`.
  std::int32_t tmAveCharWidth;      ///< As in `TEXTMETRICA`.
  std::int32_t tmMaxCharWidth;      ///< As in `TEXTMETRICA`.
  std::int32_t tmWeight;            ///< As in `TEXTMETRICA`.
  std::int32_t tmOverhang;          ///< As in `TEXTMETRICA`.
  std::int32_t tmDigitizedAspectX;  ///< As in `TEXTMETRICA`.
  std::int32_t tmDigitizedAspectY;  ///< As in `TEXTMETRICA`.
  std::uint8_t tmFirstChar;         ///< As in `TEXTMETRICA`.
  std::uint8_t tmLastChar;          ///< As in `TEXTMETRICA`.
  std::uint8_t tmDefaultChar;       ///< As in `TEXTMETRICA`.
  std::uint8_t tmBreakChar;         ///< As in `TEXTMETRICA`.
  std::uint8_t tmItalic;            ///< As in `TEXTMETRICA`.
  std::uint8_t tmUnderlined;        ///< As in `TEXTMETRICA`.
  std::uint8_t tmStruckOut;         ///< As in `TEXTMETRICA`.
  std::uint8_t tmPitchAndFamily;    ///< As in `TEXTMETRICA`.
  std::uint8_t tmCharSet;           ///< As in `TEXTMETRICA`.
  std::uint32_t ntmFlags;           ///< Bits: 1 italic, 32 bold, 64 regular.
  std::uint32_t ntmSizeEM;          ///< The units of the em square.
  std::uint32_t ntmCellHeight;      ///< The height of the cell in these units.
  std::uint32_t ntmAvgWidth;        ///< The mean width of the glyphs in these units.
};

/// A classification of Latin letters by ten digits (Hewlett-Packard's PANOSE).
struct PANOSE {
  std::uint8_t bFamilyType;       ///< Text, script, decorative or symbol.
  std::uint8_t bSerifStyle;       ///< The form of the serifs.
  std::uint8_t bWeight;           ///< The weight of the strokes.
  std::uint8_t bProportion;       ///< The widths; 9 is one width for all.
  std::uint8_t bContrast;         ///< Thick against thin strokes.
  std::uint8_t bStrokeVariation;  ///< How strokes change.
  std::uint8_t bArmStyle;         ///< The ends of arms.
  std::uint8_t bLetterform;       ///< Upright or oblique, round or square.
  std::uint8_t bMidline;          ///< Where the middle bar of capitals is.
  std::uint8_t bXHeight;          ///< How high small letters are.
};

/// The measures of an outline face. Names are places in bytes from the start of the record, where
/// terminated texts follow it.
struct OUTLINETEXTMETRICA {
  std::uint32_t otmSize;                ///< The bytes of the record and all that follows.
  TEXTMETRICA otmTextMetrics;           ///< The measures of any face.
  std::uint8_t otmFiller;               ///< Not in use.
  PANOSE otmPanoseNumber;               ///< The classification.
  std::uint32_t otmfsSelection;         ///< Bits: 1 italic, 2 underscored, 4 negative, 32 bold.
  std::uint32_t otmfsType;              ///< Bits: how it may be embedded in documents.
  std::int32_t otmsCharSlopeRise;       ///< The vertical part of the slope of the cursor.
  std::int32_t otmsCharSlopeRun;        ///< The horizontal part of it.
  std::int32_t otmItalicAngle;          ///< The slope of the letters, in tenths of a degree.
  std::uint32_t otmEMSquare;            ///< The units of the em square.
  std::int32_t otmAscent;               ///< The ascent by which lines are set.
  std::int32_t otmDescent;              ///< The descent by which lines are set, negative.
  std::uint32_t otmLineGap;             ///< What lines have between them.
  std::uint32_t otmsCapEmHeight;        ///< The height of capitals.
  std::uint32_t otmsXHeight;            ///< The height of small letters.
  RECT otmrcFontBox;                    ///< The box of all glyphs together.
  std::int32_t otmMacAscent;            ///< The ascent for another system.
  std::int32_t otmMacDescent;           ///< The descent for it.
  std::uint32_t otmMacLineGap;          ///< The line gap for it.
  std::uint32_t otmusMinimumPPEM;       ///< The least useful size, in pixels of the em square.
  POINT otmptSubscriptSize;             ///< The size of subscripts.
  POINT otmptSubscriptOffset;           ///< Where they stand.
  POINT otmptSuperscriptSize;           ///< The size of superscripts.
  POINT otmptSuperscriptOffset;         ///< Where they stand.
  std::uint32_t otmsStrikeoutSize;      ///< The width of a line through the text.
  std::int32_t otmsStrikeoutPosition;   ///< Where it is.
  std::int32_t otmsUnderscoreSize;      ///< The width of an underscore.
  std::int32_t otmsUnderscorePosition;  ///< Where it is.
  std::uint32_t otmpFamilyName;         ///< Where the name of the family stands.
  std::uint32_t otmpFaceName;           ///< Where the name of the face stands.
  std::uint32_t otmpStyleName;          ///< Where the name of the style stands.
  std::uint32_t otmpFullName;           ///< Where the full name stands.
};

/// What `HDC` points to; only its address means anything.
struct HDC__ {
  int unused;  ///< Not in use.
};
/// What `HFONT` points to; only its address means anything.
struct HFONT__ {
  int unused;  ///< Not in use.
};
/// What `HINSTANCE` points to; only its address means anything.
struct HINSTANCE__ {
  int unused;  ///< Not in use.
};
/// What `HTHEME` points to. No object of it exists.
struct HTHEME__;
/// What `HIMAGELIST` points to. No object of it exists.
struct HIMAGELIST__;
/// What `HRGN` points to. No object of it exists.
struct HRGN__;
/// What `HBRUSH` points to. No object of it exists.
struct HBRUSH__;
/// What `HWND` points to. No object of it exists.
struct HWND__ {
  int unused;  ///< Not in use.
};
/// What `HBITMAP` points to; only its address means anything.
struct HBITMAP__ {
  int unused;  ///< Not in use.
};
/// What `HPEN` points to; only its address means anything.
struct HPEN__ {
  int unused;  ///< Not in use.
};
using HWND = HWND__*;              ///< A handle of a window; null for the screen.
using HBITMAP = HBITMAP__*;        ///< A handle of a bitmap made for a drawing context.
using HPEN = HPEN__*;              ///< A handle of a pen made for drawing.
using HRGN = HRGN__*;              ///< A handle of a region.
using HBRUSH = HBRUSH__*;          ///< A handle of a brush.
using HTHEME = HTHEME__*;          ///< A handle of a theme.
using HIMAGELIST = HIMAGELIST__*;  ///< A handle of a list of pictures.
using HDC = HDC__*;                ///< A handle of a drawing context.
using HFONT = HFONT__*;            ///< A handle of a face made for drawing.
using HINSTANCE = HINSTANCE__*;    ///< A handle of a loaded module.

/// What a run of text depends on, in 16 bits.
struct SCRIPT_STATE {
  std::uint16_t uBidiLevel : 5;          ///< The embedding level, odd from right to left.
  std::uint16_t fOverrideDirection : 1;  ///< The direction is overridden.
  std::uint16_t fInhibitSymSwap : 1;     ///< Brackets are not mirrored.
  std::uint16_t fCharShape : 1;          ///< Not in use.
  std::uint16_t fDigitSubstitute : 1;    ///< Digits are shown as the language has them.
  std::uint16_t fInhibitLigate : 1;      ///< There are no ligatures.
  std::uint16_t fDisplayZWG : 1;         ///< Control characters are shown.
  std::uint16_t fArabicNumContext : 1;   ///< The text before is Arabic.
  std::uint16_t fGcpClusters : 1;        ///< Not in use.
  std::uint16_t fReserved : 1;           ///< Not in use.
  std::uint16_t fEngineReserved : 2;     ///< Not in use.
};

/// The script and the direction of a run of text.
struct SCRIPT_ANALYSIS {
  std::uint16_t eScript : 10;       ///< The number of the script.
  std::uint16_t fRTL : 1;           ///< The text is read from right to left.
  std::uint16_t fLayoutRTL : 1;     ///< The run is set from right to left.
  std::uint16_t fLinkBefore : 1;    ///< The first character joins the one before it.
  std::uint16_t fLinkAfter : 1;     ///< The last character joins the one behind it.
  std::uint16_t fLogicalOrder : 1;  ///< Glyphs come in the order of the text.
  std::uint16_t fNoGlyphIndex : 1;  ///< Glyph numbers are not in use.
  SCRIPT_STATE s;                   ///< What else the run depends on.
};

/// A run of text, by its start.
struct SCRIPT_ITEM {
  std::int32_t iCharPos;  ///< The position of its first character.
  SCRIPT_ANALYSIS a;      ///< Its script and direction.
};

/// What is particular about a script.
struct SCRIPT_PROPERTIES {
  std::uint32_t langid : 16;                 ///< A language that is written in it; 0 for none.
  std::uint32_t fNumeric : 1;                ///< It has digits alone.
  std::uint32_t fComplex : 1;                ///< Its glyphs depend on each other.
  std::uint32_t fNeedsWordBreaking : 1;      ///< Its words have no spaces between them.
  std::uint32_t fNeedsCaretInfo : 1;         ///< Its clusters can't be entered.
  std::uint32_t bCharSet : 8;                ///< The character set that goes with it.
  std::uint32_t fControl : 1;                ///< It has control characters alone.
  std::uint32_t fPrivateUseArea : 1;         ///< It has characters of private use alone.
  std::uint32_t fNeedsCharacterJustify : 1;  ///< Its letters are spread to fill a line.
  std::uint32_t fInvalidGlyph : 1;           ///< There is a glyph for what is malformed.
  std::uint32_t fInvalidLogAttr : 1;         ///< What is malformed is told.
  std::uint32_t fCDM : 1;                    ///< It has marks that combine.
  std::uint32_t fAmbiguousCharSet : 1;       ///< No one character set goes with it.
  std::uint32_t fClusterSizeVaries : 1;      ///< Its clusters depend on the face.
  std::uint32_t fRejectInvalid : 1;          ///< What is malformed is to be refused.
};

using tagPOINT = POINT;      ///< `POINT` under its tag name.
using tagRECT = RECT;        ///< `RECT` under its tag name.
using tagSIZE = SIZE;        ///< `SIZE` under its tag name.
using tagRGBQUAD = RGBQUAD;  ///< `RGBQUAD` under its tag name.

using tagBITMAPINFOHEADER = BITMAPINFOHEADER;  ///< `BITMAPINFOHEADER` under its tag name.
using tagBITMAPINFO = BITMAPINFO;              ///< `BITMAPINFO` under its tag name.

using _GLYPHMETRICS = GLYPHMETRICS;              ///< `GLYPHMETRICS` under its tag name.
using tagLOGFONTA = LOGFONTA;                    ///< `LOGFONTA` under its tag name.
using tagENUMLOGFONTA = ENUMLOGFONTA;            ///< `ENUMLOGFONTA` under its tag name.
using tagNEWTEXTMETRICA = NEWTEXTMETRICA;        ///< `NEWTEXTMETRICA` under its tag name.
using tagTEXTMETRICA = TEXTMETRICA;              ///< `TEXTMETRICA` under its tag name.
using _OUTLINETEXTMETRICA = OUTLINETEXTMETRICA;  ///< `OUTLINETEXTMETRICA` under its tag name.
using tag_SCRIPT_STATE = SCRIPT_STATE;           ///< `SCRIPT_STATE` under its tag name.
using tag_SCRIPT_ANALYSIS = SCRIPT_ANALYSIS;     ///< `SCRIPT_ANALYSIS` under its tag name.
using tag_SCRIPT_ITEM = SCRIPT_ITEM;             ///< `SCRIPT_ITEM` under its tag name.

static_assert(sizeof(POINT) == 8 && sizeof(RECT) == 16 && sizeof(SIZE) == 8);
static_assert(sizeof(RGBQUAD) == 4);
static_assert(sizeof(BITMAPINFOHEADER) == 40 && sizeof(BITMAPINFO) == 44);
static_assert(sizeof(GUID) == 16);
static_assert(sizeof(GLYPHMETRICS) == 20 && sizeof(LOGFONTA) == 60);
static_assert(sizeof(TEXTMETRICA) == 56 && sizeof(OUTLINETEXTMETRICA) == 212);
static_assert(sizeof(SCRIPT_ANALYSIS) == 4 && sizeof(SCRIPT_ITEM) == 8);
static_assert(sizeof(SCRIPT_PROPERTIES) == 8);
static_assert(sizeof(ENUMLOGFONTA) == 156 && sizeof(NEWTEXTMETRICA) == 72);
static_assert(sizeof(SYSTEMTIME) == 16);
static_assert(sizeof(FILETIME) == 8 && sizeof(WIN32_FIND_DATAA) == 320);

}  // namespace vlm
