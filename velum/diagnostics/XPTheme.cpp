#include <velum/diagnostics/XPTheme.h>

#include <velum/core/Exception.h>

namespace vlm {

namespace {

[[noreturn]] void Missing(const char* symbol) {
  ThrowErrorImpl("XPTheme", __LINE__, ERR_FIND_SYMBOL, symbol);
}

}  // namespace

template class Singleton<CXPTheme>;

CXPTheme::CXPTheme() = default;
CXPTheme::~CXPTheme() = default;

HRESULT CXPTheme::CloseThemeData(HTHEME) { Missing("CloseThemeData"); }
HRESULT CXPTheme::DrawThemeBackground(HTHEME, HDC, int, int, const RECT*, const RECT*) {
  Missing("DrawThemeBackground");
}
HRESULT CXPTheme::DrawThemeEdge(HTHEME, HDC, int, int, const RECT*, UINT, UINT, RECT*) {
  Missing("DrawThemeEdge");
}
HRESULT CXPTheme::DrawThemeIcon(HTHEME, HDC, int, int, const RECT*, HIMAGELIST, int) {
  Missing("DrawThemeIcon");
}
HRESULT CXPTheme::DrawThemeParentBackground(HWND, HDC, RECT*) {
  Missing("DrawThemeParentBackground");
}
HRESULT CXPTheme::DrawThemeText(HTHEME, HDC, int, int, const wchar_t*, int, DWORD, DWORD,
                                const RECT*) {
  Missing("DrawThemeText");
}
HRESULT CXPTheme::EnableThemeDialogTexture(HWND, DWORD) { Missing("EnableThemeDialogTexture"); }
HRESULT CXPTheme::EnableTheming(BOOL) { Missing("EnableTheming"); }
HRESULT CXPTheme::GetCurrentThemeName(wchar_t*, int, wchar_t*, int, wchar_t*, int) {
  Missing("GetCurrentThemeName");
}
DWORD CXPTheme::GetThemeAppProperties() { Missing("GetThemeAppProperties"); }
HRESULT CXPTheme::GetThemeBackgroundContentRect(HTHEME, HDC, int, int, const RECT*, RECT*) {
  Missing("GetThemeBackgroundContentRect");
}
HRESULT CXPTheme::GetThemeBackgroundExtent(HTHEME, HDC, int, int, const RECT*, RECT*) {
  Missing("GetThemeBackgroundExtent");
}
HRESULT CXPTheme::GetThemeBackgroundRegion(HTHEME, HDC, int, int, const RECT*, HRGN*) {
  Missing("GetThemeBackgroundRegion");
}
HRESULT CXPTheme::GetThemeBool(HTHEME, int, int, int, BOOL*) { Missing("GetThemeBool"); }
HRESULT CXPTheme::GetThemeColor(HTHEME, int, int, int, COLORREF*) { Missing("GetThemeColor"); }
HRESULT CXPTheme::GetThemeDocumentationProperty(const wchar_t*, const wchar_t*, wchar_t*, int) {
  Missing("GetThemeDocumentationProperty");
}
HRESULT CXPTheme::GetThemeEnumValue(HTHEME, int, int, int, int*) { Missing("GetThemeEnumValue"); }
HRESULT CXPTheme::GetThemeFilename(HTHEME, int, int, int, wchar_t*, int) {
  Missing("GetThemeFilename");
}
HRESULT CXPTheme::GetThemeFont(HTHEME, HDC, int, int, int, LOGFONTW*) { Missing("GetThemeFont"); }
HRESULT CXPTheme::GetThemeInt(HTHEME, int, int, int, int*) { Missing("GetThemeInt"); }
HRESULT CXPTheme::GetThemeIntList(HTHEME, int, int, int, INTLIST*) { Missing("GetThemeIntList"); }
HRESULT CXPTheme::GetThemeMargins(HTHEME, HDC, int, int, int, RECT*, MARGINS*) {
  Missing("GetThemeMargins");
}
HRESULT CXPTheme::GetThemeMetric(HTHEME, HDC, int, int, int, int*) { Missing("GetThemeMetric"); }
HRESULT CXPTheme::GetThemePartSize(HTHEME, HDC, int, int, RECT*, THEMESIZE, SIZE*) {
  Missing("GetThemePartSize");
}
HRESULT CXPTheme::GetThemePosition(HTHEME, int, int, int, POINT*) { Missing("GetThemePosition"); }
HRESULT CXPTheme::GetThemePropertyOrigin(HTHEME, int, int, int, PROPERTYORIGIN*) {
  Missing("GetThemePropertyOrigin");
}
HRESULT CXPTheme::GetThemeRect(HTHEME, int, int, int, RECT*) { Missing("GetThemeRect"); }
HRESULT CXPTheme::GetThemeString(HTHEME, int, int, int, wchar_t*, int) {
  Missing("GetThemeString");
}
BOOL CXPTheme::GetThemeSysBool(HTHEME, int) { Missing("GetThemeSysBool"); }
COLORREF CXPTheme::GetThemeSysColor(HTHEME, int) { Missing("GetThemeSysColor"); }
HBRUSH CXPTheme::GetThemeSysColorBrush(HTHEME, int) { Missing("GetThemeSysColorBrush"); }
HRESULT CXPTheme::GetThemeSysFont(HTHEME, int, LOGFONTW*) { Missing("GetThemeSysFont"); }
HRESULT CXPTheme::GetThemeSysInt(HTHEME, int, int*) { Missing("GetThemeSysInt"); }
int CXPTheme::GetThemeSysSize(HTHEME, int) { Missing("GetThemeSysSize"); }
HRESULT CXPTheme::GetThemeSysString(HTHEME, int, wchar_t*, int) { Missing("GetThemeSysString"); }
HRESULT CXPTheme::GetThemeTextExtent(HTHEME, HDC, int, int, const wchar_t*, int, DWORD, const RECT*,
                                     RECT*) {
  Missing("GetThemeTextExtent");
}
HRESULT CXPTheme::GetThemeTextMetrics(HTHEME, HDC, int, int, TEXTMETRICW*) {
  Missing("GetThemeTextMetrics");
}
HTHEME CXPTheme::GetWindowTheme(HWND) { Missing("GetWindowTheme"); }
HRESULT CXPTheme::HitTestThemeBackground(HTHEME, HDC, int, int, DWORD, const RECT*, HRGN, POINT,
                                         WORD*) {
  Missing("HitTestThemeBackground");
}
BOOL CXPTheme::IsAppThemed() { Missing("IsAppThemed"); }
BOOL CXPTheme::IsThemeActive() { Missing("IsThemeActive"); }
BOOL CXPTheme::IsThemeBackgroundPartiallyTransparent(HTHEME, int, int) {
  Missing("IsThemeBackgroundPartiallyTransparent");
}
BOOL CXPTheme::IsThemeDialogTextureEnabled(HWND) { Missing("IsThemeDialogTextureEnabled"); }
BOOL CXPTheme::IsThemePartDefined(HTHEME, int, int) { Missing("IsThemePartDefined"); }
HTHEME CXPTheme::OpenThemeData(HWND, const wchar_t*) { Missing("OpenThemeData"); }
HTHEME CXPTheme::OpenThemeData(HWND, const char*) { Missing("OpenThemeData"); }
void CXPTheme::SetThemeAppProperties(DWORD) { Missing("SetThemeAppProperties"); }
HRESULT CXPTheme::SetWindowTheme(HWND, const wchar_t*, const wchar_t*) {
  Missing("SetWindowTheme");
}

}  // namespace vlm
