#pragma once

/// \file
/// The files of a folder whose names match a pattern.
///
///     vlm::CFileFind find("\\data\\*.dat");
///     while (find.FindNextFileA())
///       if (!find.IsDirectory()) puts(find.GetFilePath(true).c_str());

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/platform/Types.h>

#include <cstdint>
#include <memory>

namespace vlm {

/// A walk through the entries of one folder that match a pattern.
///
/// A value: a copy of an open search reads on by itself, from where the original stands. The names
/// are taken from the folder when the search begins; an entry that is gone when its turn comes is
/// passed over.
///
/// The pattern is a path whose name may hold wild cards. Names match without regard to the case of
/// ASCII letters.
///
/// - `*`: any bytes. `*.*` is every name, with a point or without, and `*.` every one without.
/// - `?`: one byte, or none before a point and at the end: `a??.txt` finds a.txt, too.
/// - A point before a wild card: a point, or the end of the name: `abc.*` finds abc, too.
///
/// "." and ".." come first, where the pattern is nothing but `*` and points, then the others in the
/// order of their bytes. A name without a wild card is looked for as it is spelt.
///
/// Of the attributes this system has the folder, the read-only file that nobody may write, the
/// hidden file whose name begins with a point, and the normal file that is none of these.
///
/// Threads: an object belongs to one thread at a time.
class VELUM_API CFileFind {
 public:
  /// A search for `pattern`, which begins with the first `FindNextFileA`.
  CFileFind(const GString& pattern = GString());
  /// A copy, which reads on by itself.
  CFileFind(const CFileFind& other);
  /// Takes over a search; the other must be given a pattern before it is used again.
  CFileFind(CFileFind&& other) noexcept;
  /// Closes the search.
  virtual ~CFileFind();

  /// The name of the present entry.
  [[nodiscard]] GString GetFileName() const { return GString(found_.cFileName); }
  /// Its name without the extension, see `CPath::GetName`.
  [[nodiscard]] GString GetFileNameNoExt() const;
  /// Its path: `GetRoot` and the name.
  [[nodiscard]] GString GetFilePath(bool keepSeparator) const;
  /// The folder of the search that was begun last, with or without a backslash at its end.
  [[nodiscard]] GString GetRoot(bool keepSeparator) const;
  /// Its size in bytes.
  [[nodiscard]] std::uint64_t GetLength() const noexcept {
    return std::uint64_t{found_.nFileSizeHigh} << 32 | found_.nFileSizeLow;
  }
  /// Its record.
  [[nodiscard]] const WIN32_FIND_DATAA& GetFindData() const noexcept { return found_; }
  /// True for "." and "..".
  [[nodiscard]] bool IsDots() const noexcept;
  /// True if it has one of the attributes of `mask`, such as `FILE_ATTRIBUTE_HIDDEN`.
  [[nodiscard]] bool MatchesMask(unsigned long mask) const noexcept {
    return (found_.dwFileAttributes & mask) != 0;
  }
  /// True if it may not be written.
  [[nodiscard]] bool IsReadOnly() const noexcept { return MatchesMask(FILE_ATTRIBUTE_READONLY); }
  /// True if it is not usually shown.
  [[nodiscard]] bool IsHidden() const noexcept { return MatchesMask(FILE_ATTRIBUTE_HIDDEN); }
  /// True if it belongs to the system.
  [[nodiscard]] bool IsSystem() const noexcept { return MatchesMask(FILE_ATTRIBUTE_SYSTEM); }
  /// True for a folder.
  [[nodiscard]] bool IsDirectory() const noexcept { return MatchesMask(FILE_ATTRIBUTE_DIRECTORY); }
  /// True if it waits for a backup.
  [[nodiscard]] bool IsArchived() const noexcept { return MatchesMask(FILE_ATTRIBUTE_ARCHIVE); }
  /// True if it has no other attribute.
  [[nodiscard]] bool IsNormal() const noexcept { return MatchesMask(FILE_ATTRIBUTE_NORMAL); }
  /// True if it will not stay.
  [[nodiscard]] bool IsTemporary() const noexcept { return MatchesMask(FILE_ATTRIBUTE_TEMPORARY); }
  /// True if it is stored compressed.
  [[nodiscard]] bool IsCompressed() const noexcept {
    return MatchesMask(FILE_ATTRIBUTE_COMPRESSED);
  }

  /// Closes an open search and takes another pattern. An empty one does nothing at all.
  void Init(const GString& pattern);
  /// Moves to the next entry, at first to the first; false if there is none, and for an empty
  /// pattern. A search that found nothing is tried again by the next call; one that came to its end
  /// stays there.
  ///
  /// *Errors*: `ERR_INTERNAL` for a search that was taken over by another object.
  bool FindNextFileA();
  /// Closes the search: the next call begins again.
  void Close() noexcept;

  /// Copies a search, which reads on by itself.
  CFileFind& operator=(const CFileFind& other);
  /// Takes over a search; the other must be given a pattern before it is used again.
  CFileFind& operator=(CFileFind&& other) noexcept;

 private:
  struct Search;

  bool first_ = true;
  std::unique_ptr<Search> search_;
  GString root_;
  GString pattern_;
  WIN32_FIND_DATAA found_{};
};

}  // namespace vlm
