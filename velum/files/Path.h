#pragma once

/// \file
/// A path, taken apart and put together.
///
///     vlm::CPath path("c:\\data\\wells.dat");
///     path.SetExtension("bak");
///     path.GetPath();                    // c:\data\wells.bak
///     path.GetDriveAndDirectory(false);  // c:\data
///
/// Paths have one form on every system: an optional drive of one character and a colon, folders
/// with a backslash behind each, a name, and an extension that begins with the name's last point.
/// `/` separates as well. What is made here, full paths and folders of the system, has backslashes.
///
/// | path | drive | directory | name | extension |
/// |---|---|---|---|---|
/// | `c:\data\a.b.dat` | `c:` | `\data` and a separator | `a.b` | `.dat` |
/// | `../wells` | | `../` | `wells` | |
/// | `\tmp\.profile` | | `\tmp` and a separator | | `.profile` |
/// | `c:name.` | `c:` | | `name` | `.` |
/// | `..` | | | `..` | |
///
/// Where a system has no drives, a path with one names nothing.

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// One path. A value.
///
/// It holds its text as it was given. Functions that give a part of it do not look at any file,
/// unless their comment says so. `GetDirectory` and `GetName` give nothing for a part of more than
/// 255 bytes, `GetFullPath` for one of more than 259.
class VELUM_API CPath {
 public:
  /// The empty path.
  CPath() = default;
  /// The path `path` up to its first terminator.
  CPath(const GString& path);
  /// A copy.
  CPath(const CPath&) = default;
  virtual ~CPath();

  /// The character behind a drive.
  [[nodiscard]] static char DriveSeparator() noexcept { return ':'; }
  /// The character before an extension.
  [[nodiscard]] static char ExtSeparator() noexcept { return '.'; }
  /// The character between folders.
  [[nodiscard]] static char DirSeparator() noexcept { return '\\'; }

  /// The path as it is held.
  [[nodiscard]] const GString& GetPath() const noexcept { return path_; }
  /// The drive with its colon, or the server of a path that begins with two separators: `\\server`.
  [[nodiscard]] GString GetDrive() const;
  /// The folders, without the drive; see `DeprecatedPath::GetDirectory`.
  [[nodiscard]] GString GetDirectory(bool keepSeparator) const;
  /// The path without its name. With `keepSeparator` a backslash stands at its end, unless nothing
  /// is left.
  ///
  /// - `c:\data\a.txt`: `c:\data`, and the separator behind it
  /// - `a.txt`: empty with and without
  /// - `/a.txt`: the separator alone, a backslash, or empty
  /// - `c:a.txt`: `c:`, and a separator behind it, though there was none
  [[nodiscard]] GString GetDriveAndDirectory(bool keepSeparator) const;
  /// The name without its extension.
  [[nodiscard]] GString GetName() const;
  /// The extension with its point; empty for a point alone.
  [[nodiscard]] GString GetExtension() const;
  /// The name and the extension, as the two functions give them: `name.` gives `name`.
  [[nodiscard]] GString GetNameAndExtension() const;
  /// The absolute form, with backslashes, its steps to the same folder and to the one above taken;
  /// empty if it is longer than 259 bytes. No file is looked at but the current folder, which is
  /// what the empty path gives.
  [[nodiscard]] GString GetFullPath() const;
  /// True if the full forms are the same but for the case of ASCII letters.
  [[nodiscard]] bool IsEquivalent(const CPath& other) const;

  /// Replaces the path by `path` up to its first terminator; true.
  bool SetPath(const GString& path);
  /// Replaces the name and keeps the folder and the extension.
  ///
  /// - The empty name keeps the folder alone: from `c:\dir\a.txt` only `a.txt` goes.
  void SetName(const GString& name);
  /// Replaces the extension, or adds one; the point may be left out. The empty one removes it.
  void SetExtension(const GString& extension);
  /// Replaces the name and the extension by `name` as it stands.
  void SetNameAndExtension(const GString& name);

  /// Makes the folder that the full path names, and all those above it; true if it is there now.
  ///
  /// - A file stands in its place: false, and the last error is 80.
  bool CreatePath() const;

  /// A copy of `text` that ends in a backslash if `add`, or with one removed from its end if not.
  /// The empty text stays empty.
  [[nodiscard]] static GString AppendDirSeparator(const GString& text, bool add);
  /// The system's folder for temporary files.
  [[nodiscard]] static GString GetTempPathA(bool keepSeparator);
  /// Creates an empty file with a name of its own in the folder `directory`, or among the temporary
  /// files for an empty one, and gives its path; empty if that fails or the path would be longer
  /// than 259 bytes.
  [[nodiscard]] static GString GetTempFilename(const GString& directory);
  /// See `DeprecatedPath::ChangeExtension`.
  [[nodiscard]] static GString ChangeExtension(const char* path, const char* extension);
  /// See `DeprecatedPath::ChangeName`.
  [[nodiscard]] static GString ChangeName(const char* path, const char* name);
  /// See `DeprecatedPath::HasExtension`.
  [[nodiscard]] static bool HasExtension(const char* path) noexcept;

  /// Copies another path.
  CPath& operator=(const CPath&) = default;

 private:
  GString path_;
};

}  // namespace vlm
