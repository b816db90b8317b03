#pragma once

/// \file
/// Operations on paths that are plain terminated texts. New code takes `CPath`.
///
///     vlm::DeprecatedPath::ChangeExtension("wells.dat", ".bak");    // wells.bak
///     vlm::DeprecatedPath::CombinePaths("c:\\data", "wells.dat");   // c:\data\wells.dat
///
/// `Path.h` tells the form of paths.

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// Static operations on paths, without a state. Any thread may call them.
///
/// A null path has no parts: they are empty. Functions that give a part give an empty text for one
/// that is too long: a drive of more than 2 bytes, any other part of more than 255.
struct VELUM_API DeprecatedPath {
  /// The character behind a drive.
  [[nodiscard]] static char GetDriveSeparator() noexcept { return ':'; }
  /// The character between folders.
  [[nodiscard]] static char GetDirectorySeparator() noexcept { return '\\'; }
  /// The characters that no path has, as a terminated text: `"<>|` and the byte 8.
  [[nodiscard]] static const char* GetInvalidPathChars() noexcept { return "\"<>|\b"; }
  /// The characters that no name has, as a terminated text: those of paths, and `\/:*?`.
  [[nodiscard]] static const char* GetInvalidNameChars() noexcept { return "\"<>|\b\\/:*?"; }

  /// The point inside `path` that begins the extension; null if there is none.
  ///
  /// - `a.b.c`: `.c`
  /// - `.profile`: all of it
  /// - `a.`, `dir.x\name`, empty, null: null
  [[nodiscard]] static char* GetExtensionPtr(const char* path) noexcept;
  /// The first character behind the last colon or separator of `path`; null for null.
  [[nodiscard]] static char* GetNamePtr(const char* path) noexcept;
  /// True if there is an extension, as `GetExtensionPtr` sees it.
  [[nodiscard]] static bool HasExtension(const char* path) noexcept;

  /// `path` without the extension that `GetExtensionPtr` sees, and behind it `extension` as it
  /// stands; a null one adds nothing. Empty for an empty or null path.
  [[nodiscard]] static GString ChangeExtension(const char* path, const char* extension);
  /// The drive and directory of `path` and behind them `name`; the extension goes with the old one.
  [[nodiscard]] static GString ChangeName(const char* path, const char* name);
  /// Puts a path together from its parts, each of which may be null or empty: the first character
  /// of `drive` and a colon, `directory` with a separator at its end, `name`, and `extension` with
  /// a point before it. Empty if it would be longer than 259 bytes.
  [[nodiscard]] static GString Combine(const char* drive, const char* directory, const char* name,
                                       const char* extension);
  /// `a`, a backslash unless a separator or colon stands there already, and `b`.
  ///
  /// - `c:` and `x`: `c:x`
  /// - `x/` and `/y`: `x//y`, a doubled separator stays
  /// - An empty `a`: `b` alone
  /// - A null argument: empty
  [[nodiscard]] static GString CombinePaths(const char* a, const char* b);

  /// The drive, `c:` or `c`.
  [[nodiscard]] static GString GetDrive(const char* path, bool keepColon);
  /// The folders, from behind the drive to the last separator. Without `keepSeparator` that one
  /// goes if it is a backslash; a `/` stays.
  [[nodiscard]] static GString GetDirectory(const char* path, bool keepSeparator);
  /// The name without its extension.
  [[nodiscard]] static GString GetName(const char* path);
  /// The extension with its point, from the last point of the name on; `.` for `name.`.
  [[nodiscard]] static GString GetExtension(const char* path);
  /// The drive with its colon, and the directory as `GetDirectory` gives it.
  [[nodiscard]] static GString GetDriveAndDirectory(const char* path, bool keepSeparator);
  /// The name and the extension.
  [[nodiscard]] static GString GetNameAndExtension(const char* path);
  /// See `CPath::GetFullPath`; null counts as the empty path.
  [[nodiscard]] static GString GetFullPath(const char* path);
  /// True if the texts, or else their full forms, are the same but for the case of ASCII letters.
  /// False for null.
  [[nodiscard]] static bool PathsEqual(const char* a, const char* b);

  /// The system's folder for temporary files.
  [[nodiscard]] static GString GetTempPathA(bool keepSeparator);
  /// See `CPath::GetTempFilename`; null counts as empty.
  [[nodiscard]] static GString GetTempFilename(const char* directory);
  /// Makes the folder `path` and all those above it; true if it is there now. The empty path is
  /// always there, a null one never.
  ///
  /// - A file stands in its place: false, and the last error is 80.
  static bool CreatePath(const char* path);

  /// Appends a backslash to a text that is not empty and does not end in one.
  static void AppendDirectorySeparator(GString& text);
  /// Removes one backslash from the end.
  static void RemoveTrailingDirectorySeparator(GString& text);
};

}  // namespace vlm
