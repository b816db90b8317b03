#pragma once

/// \file
/// Settings that the whole application shares: its folders, its default faces, the characters of
/// its numbers.
///
///     auto& settings = vlm::CSystemInfo::GetInstance();
///     settings.AddExtraSearchPath("\\data\\maps");
///     const char point = settings.DefDecimalChar();

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/core/Singleton.h>

#include <utility>
#include <vector>

namespace vlm {

/// What an application settles once for all of its parts.
///
/// One object for the process, made with its defaults when it is first asked for. Folders are kept
/// with a separator at their end, `\` where the given text ends in neither `\` nor `/`. The decimal
/// character and the thousands character are '.' and ',' in one order or the other.
///
/// Threads: nothing here is locked. Any number of threads may read while none writes.
class VELUM_API CSystemInfo : public Singleton<CSystemInfo> {
 public:
  /// The folder of the application; at first that of the running program.
  ///
  /// *Lifetime*: until it is next set.
  [[nodiscard]] const GString& AppStartupPath() const noexcept { return appStartupPath_; }
  /// The folder of the application's data; empty at first.
  ///
  /// *Lifetime*: until it is next set.
  [[nodiscard]] const GString& AppDataPath() const noexcept { return appDataPath_; }
  /// The name of the face for text of variable pitch: the one that was set, or else what
  /// `CSystemFaceInfo::GetDefVariablePitchFaceInfo` names. The faces of the system are listed when
  /// this is first asked for, so that a machine without fonts can use all the rest.
  ///
  /// *Errors*: those of `CSystemFaceInfo::Instance`, if none was set.
  [[nodiscard]] GString DefVariablePitchFace() const;
  /// The name of the face for text of fixed pitch: the one that was set, or else what
  /// `CSystemFaceInfo::GetDefFixedPitchFaceInfo` names.
  ///
  /// *Errors*: those of `CSystemFaceInfo::Instance`, if none was set.
  [[nodiscard]] GString DefFixedPitchFace() const;
  /// The decimal character, '.' or ','; at first that of the user's locale, see `ResetToDefaults`.
  [[nodiscard]] char DefDecimalChar() const noexcept { return defDecimalChar_; }
  /// The character between thousands: the other of '.' and ','.
  [[nodiscard]] char DefThousandsChar() const noexcept { return defThousandsChar_; }
  /// More folders for `LocateFile`, in the order in which it looks through them; none at first.
  ///
  /// *Lifetime*: until the list is changed.
  [[nodiscard]] const std::vector<GString>& ExtraSearchPaths() const noexcept {
    return extraSearchPaths_;
  }
  /// The code page for text that is translated; 0 at first.
  [[nodiscard]] unsigned AppTranslationCodePage() const noexcept { return appTranslationCodePage_; }
  /// The major and minor version of the system's kernel, (0, 0) if it does not tell.
  [[nodiscard]] std::pair<unsigned, unsigned> OSVersion() const;

  /// Gives every setting its default.
  ///
  /// The decimal character becomes that of the locale which the environment names for the user
  /// (`LC_ALL`, `LC_NUMERIC`, `LANG`), whatever locale the process has set: '.' or ',', and '.' for
  /// one that is neither and for a locale that is not installed.
  ///
  /// *Errors*: `ERR_INTERNAL` if the program's folder can't be had, or its path is longer than 259
  /// bytes; no setting is changed.
  void ResetToDefaults();
  /// Sets the folder of the application.
  void AppStartupPath(const GString& path);
  /// Sets the folder of the application's data.
  void AppDataPath(const GString& path);
  /// Sets the face for text of variable pitch; an empty name changes nothing.
  void DefVariablePitchFace(const GString& name);
  /// Sets the face for text of fixed pitch; an empty name changes nothing.
  void DefFixedPitchFace(const GString& name);
  /// Sets the decimal character, and with it the thousands character.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for a character other than '.' and ','.
  void DefDecimalChar(char c);
  /// Sets the thousands character, and with it the decimal character.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for a character other than '.' and ','.
  void DefThousandsChar(char c);
  /// Replaces the list of folders; empty ones are left out.
  void ExtraSearchPaths(const std::vector<GString>& paths);
  /// Appends a folder to the list; an empty one is left out.
  void AddExtraSearchPath(const GString& path);
  /// Sets the code page for text that is translated; 0 in place of a number of 0x10000 or more.
  void AppTranslationCodePage(unsigned codePage) noexcept;

 private:
  friend class Singleton<CSystemInfo>;

  [[gnu::visibility("hidden")]] CSystemInfo();
  [[gnu::visibility("hidden")]] ~CSystemInfo();

  GString appStartupPath_;
  GString appDataPath_;
  // Empty for the default, which is looked up when it is read.
  GString defVariablePitchFace_;
  GString defFixedPitchFace_;
  char defDecimalChar_ = '.';
  char defThousandsChar_ = ',';
  std::vector<GString> extraSearchPaths_;
  unsigned appTranslationCodePage_ = 0;
};

extern template class Singleton<CSystemInfo>;

}  // namespace vlm
