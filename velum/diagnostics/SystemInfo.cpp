#include <velum/diagnostics/SystemInfo.h>

#include <velum/core/Exception.h>
#include <velum/files/FileUtilities.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <velum/platform/detail/MachineFacts.h>
#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/UserLocale.h>

namespace vlm {

namespace {

constexpr char kSource[] = "SystemInfo";

GString WithSeparator(GString path) {
  if (!path.empty() && !platform::IsSeparator(path[path.size() - 1])) path += '\\';
  return path;
}

/// The other of the two characters; an error for a third one.
char Other(char c) {
  if (c != '.' && c != ',') ThrowErrorImpl(kSource, __LINE__, ERR_INVALID_PARAMETER);
  return c == '.' ? ',' : '.';
}

}  // namespace

template class Singleton<CSystemInfo>;

CSystemInfo::CSystemInfo() { ResetToDefaults(); }

CSystemInfo::~CSystemInfo() = default;

GString CSystemInfo::DefVariablePitchFace() const {
  return defVariablePitchFace_.empty()
             ? CSystemFaceInfo::GetInstance().GetDefVariablePitchFaceInfo()->GetFaceName()
             : defVariablePitchFace_;
}

GString CSystemInfo::DefFixedPitchFace() const {
  return defFixedPitchFace_.empty()
             ? CSystemFaceInfo::GetInstance().GetDefFixedPitchFaceInfo()->GetFaceName()
             : defFixedPitchFace_;
}

std::pair<unsigned, unsigned> CSystemInfo::OSVersion() const {
  platform::KernelFacts kernel;
  if (!platform::ReadKernelFacts(kernel)) return {0, 0};
  return {kernel.major, kernel.minor};
}

void CSystemInfo::ResetToDefaults() {
  GString startupPath = GetStartupPath(nullptr, true);
  if (startupPath.empty()) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  const GString point = platform::UserDecimalPoint();
  appStartupPath_ = std::move(startupPath);
  appDataPath_ = GString();
  defVariablePitchFace_ = GString();
  defFixedPitchFace_ = GString();
  DefDecimalChar(point[0] == ',' ? ',' : '.');
  extraSearchPaths_.clear();
  appTranslationCodePage_ = 0;
}

void CSystemInfo::AppStartupPath(const GString& path) { appStartupPath_ = WithSeparator(path); }

void CSystemInfo::AppDataPath(const GString& path) { appDataPath_ = WithSeparator(path); }

void CSystemInfo::DefVariablePitchFace(const GString& name) {
  if (!name.empty()) defVariablePitchFace_ = name;
}

void CSystemInfo::DefFixedPitchFace(const GString& name) {
  if (!name.empty()) defFixedPitchFace_ = name;
}

void CSystemInfo::DefDecimalChar(char c) {
  defThousandsChar_ = Other(c);
  defDecimalChar_ = c;
}

void CSystemInfo::DefThousandsChar(char c) {
  defDecimalChar_ = Other(c);
  defThousandsChar_ = c;
}

void CSystemInfo::ExtraSearchPaths(const std::vector<GString>& paths) {
  std::vector<GString> list;
  for (const GString& path : paths) {
    if (!path.empty()) list.push_back(WithSeparator(path));
  }
  extraSearchPaths_ = std::move(list);
}

void CSystemInfo::AddExtraSearchPath(const GString& path) {
  if (!path.empty()) extraSearchPaths_.push_back(WithSeparator(path));
}

void CSystemInfo::AppTranslationCodePage(unsigned codePage) noexcept {
  appTranslationCodePage_ = codePage < 0x10000 ? codePage : 0;
}

}  // namespace vlm
