#pragma once

/// \file
/// The visual styles of windows, which a library of another system draws.
///
///     if (vlm::CXPTheme::Instance().IsThemed()) {
///       // never here: the library is not there
///     }

#include <velum/core/Api.h>
#include <velum/core/Singleton.h>
#include <velum/platform/Types.h>

namespace vlm {

/// The description of a face, in wide text. No object of it exists.
struct LOGFONTW;
/// The measures of a face, with wide text. No object of it exists.
struct TEXTMETRICW;

/// The margins around something.
struct MARGINS {
  int cxLeftWidth;     ///< Left of it.
  int cxRightWidth;    ///< Right of it.
  int cyTopHeight;     ///< Above it.
  int cyBottomHeight;  ///< Below it.
};

/// A list of numbers.
struct INTLIST {
  int iValueCount;   ///< How many there are.
  int iValues[402];  ///< The numbers.
};

/// Which size of a part is asked for.
enum THEMESIZE : int {
  TS_MIN = 0,   ///< The least one.
  TS_TRUE = 1,  ///< The one that it has by itself.
  TS_DRAW = 2   ///< The one that it is drawn in.
};

/// Where a property is from.
enum PROPERTYORIGIN : int {
  PO_STATE = 0,    ///< The state of a part.
  PO_PART = 1,     ///< The part.
  PO_CLASS = 2,    ///< The class.
  PO_GLOBAL = 3,   ///< The theme.
  PO_NOTFOUND = 4  ///< Nowhere.
};

/// The operations of "UxTheme.dll", each under the name of the function that it stands for.
///
/// One object for the process, without a state: this system has no such library, so that `IsThemed`
/// is false and every other operation raises. Any number of threads may ask it.
///
/// *Errors*: of every operation but `IsThemed`: `ERR_FIND_SYMBOL` from "XPTheme", with the name of
/// the operation.
class VELUM_API CXPTheme : public Singleton<CXPTheme> {
 public:
  /// False: nothing is themed.
  [[nodiscard]] bool IsThemed() const noexcept { return false; }

  /// Closes a theme.
  HRESULT CloseThemeData(HTHEME theme);
  /// Draws the background of a part.
  HRESULT DrawThemeBackground(HTHEME theme, HDC dc, int part, int state, const RECT* rect,
                              const RECT* clip);
  /// Draws an edge.
  HRESULT DrawThemeEdge(HTHEME theme, HDC dc, int part, int state, const RECT* rect, UINT edge,
                        UINT flags, RECT* content);
  /// Draws a picture of a list.
  HRESULT DrawThemeIcon(HTHEME theme, HDC dc, int part, int state, const RECT* rect,
                        HIMAGELIST images, int index);
  /// Draws what is behind a window.
  HRESULT DrawThemeParentBackground(HWND window, HDC dc, RECT* rect);
  /// Draws a text.
  HRESULT DrawThemeText(HTHEME theme, HDC dc, int part, int state, const wchar_t* text, int count,
                        DWORD flags, DWORD flags2, const RECT* rect);
  /// Gives dialogs a texture.
  HRESULT EnableThemeDialogTexture(HWND window, DWORD flags);
  /// Switches themes on or off.
  HRESULT EnableTheming(BOOL enable);
  /// Names the theme in use.
  HRESULT GetCurrentThemeName(wchar_t* file, int fileSize, wchar_t* color, int colorSize,
                              wchar_t* size, int sizeSize);
  /// Tells what of an application is themed.
  DWORD GetThemeAppProperties();
  /// Tells where the content of a part is.
  HRESULT GetThemeBackgroundContentRect(HTHEME theme, HDC dc, int part, int state,
                                        const RECT* bounds, RECT* content);
  /// Tells how large a part is for its content.
  HRESULT GetThemeBackgroundExtent(HTHEME theme, HDC dc, int part, int state, const RECT* content,
                                   RECT* extent);
  /// Tells the shape of a part.
  HRESULT GetThemeBackgroundRegion(HTHEME theme, HDC dc, int part, int state, const RECT* rect,
                                   HRGN* region);
  /// Reads a yes or no.
  HRESULT GetThemeBool(HTHEME theme, int part, int state, int property, BOOL* value);
  /// Reads a colour.
  HRESULT GetThemeColor(HTHEME theme, int part, int state, int property, COLORREF* color);
  /// Reads a text about a theme.
  HRESULT GetThemeDocumentationProperty(const wchar_t* file, const wchar_t* name, wchar_t* value,
                                        int size);
  /// Reads a choice.
  HRESULT GetThemeEnumValue(HTHEME theme, int part, int state, int property, int* value);
  /// Reads the name of a file.
  HRESULT GetThemeFilename(HTHEME theme, int part, int state, int property, wchar_t* file,
                           int size);
  /// Reads a font.
  HRESULT GetThemeFont(HTHEME theme, HDC dc, int part, int state, int property, LOGFONTW* font);
  /// Reads a number.
  HRESULT GetThemeInt(HTHEME theme, int part, int state, int property, int* value);
  /// Reads a list of numbers.
  HRESULT GetThemeIntList(HTHEME theme, int part, int state, int property, INTLIST* list);
  /// Reads margins.
  HRESULT GetThemeMargins(HTHEME theme, HDC dc, int part, int state, int property, RECT* rect,
                          MARGINS* margins);
  /// Reads a measure.
  HRESULT GetThemeMetric(HTHEME theme, HDC dc, int part, int state, int property, int* value);
  /// Tells the size of a part.
  HRESULT GetThemePartSize(HTHEME theme, HDC dc, int part, int state, RECT* rect, THEMESIZE kind,
                           SIZE* size);
  /// Reads a position.
  HRESULT GetThemePosition(HTHEME theme, int part, int state, int property, POINT* point);
  /// Tells where a property is from.
  HRESULT GetThemePropertyOrigin(HTHEME theme, int part, int state, int property,
                                 PROPERTYORIGIN* origin);
  /// Reads a rectangle.
  HRESULT GetThemeRect(HTHEME theme, int part, int state, int property, RECT* rect);
  /// Reads a text.
  HRESULT GetThemeString(HTHEME theme, int part, int state, int property, wchar_t* text, int size);
  /// Reads a yes or no of the system.
  BOOL GetThemeSysBool(HTHEME theme, int number);
  /// Reads a colour of the system.
  COLORREF GetThemeSysColor(HTHEME theme, int number);
  /// Makes a brush of a colour of the system.
  HBRUSH GetThemeSysColorBrush(HTHEME theme, int number);
  /// Reads a font of the system.
  HRESULT GetThemeSysFont(HTHEME theme, int number, LOGFONTW* font);
  /// Reads a number of the system.
  HRESULT GetThemeSysInt(HTHEME theme, int number, int* value);
  /// Reads a size of the system.
  int GetThemeSysSize(HTHEME theme, int number);
  /// Reads a text of the system.
  HRESULT GetThemeSysString(HTHEME theme, int number, wchar_t* text, int size);
  /// Measures a text.
  HRESULT GetThemeTextExtent(HTHEME theme, HDC dc, int part, int state, const wchar_t* text,
                             int count, DWORD flags, const RECT* bounds, RECT* extent);
  /// Measures a font.
  HRESULT GetThemeTextMetrics(HTHEME theme, HDC dc, int part, int state, TEXTMETRICW* metrics);
  /// Gives the theme of a window.
  HTHEME GetWindowTheme(HWND window);
  /// Tells what of a part is at a point.
  HRESULT HitTestThemeBackground(HTHEME theme, HDC dc, int part, int state, DWORD options,
                                 const RECT* rect, HRGN region, POINT point, WORD* code);
  /// Tells whether the application is themed.
  BOOL IsAppThemed();
  /// Tells whether a theme is in use.
  BOOL IsThemeActive();
  /// Tells whether a part lets through what is behind.
  BOOL IsThemeBackgroundPartiallyTransparent(HTHEME theme, int part, int state);
  /// Tells whether a dialog has a texture.
  BOOL IsThemeDialogTextureEnabled(HWND window);
  /// Tells whether a theme has a part.
  BOOL IsThemePartDefined(HTHEME theme, int part, int state);
  /// Opens a theme.
  HTHEME OpenThemeData(HWND window, const wchar_t* classes);
  /// The same, for narrow text.
  HTHEME OpenThemeData(HWND window, const char* classes);
  /// Sets what of an application is themed.
  void SetThemeAppProperties(DWORD flags);
  /// Gives a window a theme.
  HRESULT SetWindowTheme(HWND window, const wchar_t* application, const wchar_t* ids);

 private:
  friend class Singleton<CXPTheme>;

  [[gnu::visibility("hidden")]] CXPTheme();
  [[gnu::visibility("hidden")]] ~CXPTheme();
};

extern template class Singleton<CXPTheme>;

}  // namespace vlm
