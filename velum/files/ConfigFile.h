#pragma once

/// \file
/// A file of settings in sections, of which only what changes is written.
///
///     const vlm::CConfigFile config("plots.ini");
///     config.Write("Axes", "TickLength", 0.25);
///     double length = 0;
///     if (!config.Read("Axes", "TickLength", length)) length = 0.2;
///
/// The form of the file:
///
///     ; a comment
///     [Axes]
///     TickLength = 0.25
///     Title = "  Depth  "
///
/// - Lines end in CR LF, LF or CR, mixed as they come. White space around a line, a name or a value
///   is passed over.
/// - `[Name]` begins a section, up to the next such line; what stands behind the bracket counts for
///   nothing, and a bracket that is missing is taken to stand at the end of the line.
/// - A line with `=` is an entry: what stands before the first one is the key, the rest the value.
///   Of a pair of ``"`` or ``'`` around a value the inside counts.
/// - `;` and `#` at the begin of a line make it a comment. Any other line means nothing.
/// - Names are the same if they differ in the case of ASCII letters only. The first section of a
///   name counts, and in it the first entry of a key.
/// - Text is bytes, UTF-8 where it comes from the library; a UTF-8 mark may stand before it. A file
///   that begins with the mark of UTF-16 is read and written in UTF-16.

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <vector>

namespace vlm {

/// The settings in one file: a value, which holds the file's path and nothing of its contents.
///
/// Each call reads the file from its begin. A write replaces it at once: another program, a crash
/// or a loss of power find all of the old file or all of the new one. Every byte that the change is
/// not about stays as it was: comments, order, blank and unknown lines, white space, line ends. The
/// file keeps its permissions, and its owner and group as far as the system lets the process give
/// files away. A symbolic link stays and leads to the new file; another hard link to the old file
/// keeps that one. A write that changes nothing leaves the file alone.
///
/// Of processes and threads that write at once none loses an entry: each waits for the lock of the
/// file `.NAME.velum-lock`, which stands beside the file `NAME` during a write. So that name is the
/// library's: a regular file that has it is taken for what a killed process has left, and the next
/// write puts an end to it.
///
/// Numbers have the point, whatever the locale.
///
/// *Errors* of everything that writes: `ERR_WRITE` with the reason. The file is then as it was:
/// - the system refuses; so it does where the folder may not be written, since no new file could
///   take the old one's place;
/// - the file is there and can't be read or is no regular file, or a link or a folder has the lock
///   file's name;
/// - something is to be added to a file in UTF-16 that ends with half a character;
/// - a name or value can't be stored: an empty key; a line end or byte 0 in either; `]` in a
///   section, `=` in a key, and a key that begins with `[`, `;` or `#`; a section or key of more
///   than 256 kB; in UTF-16, what is no UTF-8.
///
/// *Cost*: a read goes through the file up to the entry in pieces of 64 kB, a write copies it. Of a
/// line at most 1 MB is held; in a longer one, what is behind that counts as part of its value.
/// `ReadSection` alone holds lines whole, those that it gives.
class VELUM_API CConfigFile {
 public:
  /// The settings in the file at `path`, which need not be there; the full path is kept.
  ///
  /// *Errors*: `ERR_INTERNAL` for an empty path, `ERR_INVALID_PARAMETER` for one of more than 259
  /// bytes in its full form.
  explicit CConfigFile(const GString& path);
  /// The same file.
  CConfigFile(const CConfigFile&) = default;
  ~CConfigFile();

  /// Reads a text; false if it is empty or missing, or the file can't be read: `value` is then
  /// empty.
  ///
  /// *Errors*: `ERR_INTERNAL` for a text of 1023 bytes or more.
  bool Read(const GString& section, const GString& key, GString& value) const;
  /// Reads a whole number, all of the text by the rules of `StringToInt`.
  ///
  /// - Missing or empty: false, and `value` stays.
  /// - No number: false, and `value` is 0.
  ///
  /// *Errors*: as for a text.
  bool Read(const GString& section, const GString& key, int& value) const;
  /// Reads a whole number from 0 that the text begins with: behind white space and a sign; a
  /// negative one counts down from 2^32, one that is too large gives 4294967295. False, and `value`
  /// stays, if there is none.
  ///
  /// *Errors*: as for a text.
  bool Read(const GString& section, const GString& key, unsigned int& value) const;
  /// Reads a number, all of the text by the rules of `StringToDouble`, with the point. False as for
  /// a whole number.
  ///
  /// *Errors*: as for a text.
  bool Read(const GString& section, const GString& key, double& value) const;
  /// Appends the lines of a section to `lines`: entries as key, `=` and value without white space
  /// around them, the value with its quotes; other lines as they are. Comments and blank lines are
  /// left out. True, also for a section that is missing.
  ///
  /// *Cost*: the memory of the lines, of any length.
  bool ReadSection(const GString& section, std::vector<GString>& lines) const;

  /// Gives an entry a new value. An entry that is not there is added at the end of its section, a
  /// section at the end of the file, a file in a folder that is there.
  ///
  /// A value that would be read differently gets quotes: one with white space at an end, or in
  /// quotes of its own.
  void Write(const GString& section, const GString& key, const GString& value) const;
  /// The same; null is the empty text.
  void Write(const GString& section, const GString& key, const char* value) const;
  /// Writes a whole number.
  void Write(const GString& section, const GString& key, int value) const;
  /// Writes a whole number.
  void Write(const GString& section, const GString& key, unsigned int value) const;
  /// Writes a number with 14 significant digits.
  ///
  /// - What is not finite is written as `inf`, `-inf` and `nan`, that of either sign; `Read` takes
  ///   these for no number.
  void Write(const GString& section, const GString& key, double value) const;
  /// Removes the line of an entry; nothing happens if it is missing.
  void RemoveEntry(const GString& section, const GString& key) const;
  /// Removes a section with all that stands in it, comments too; nothing happens if it is missing.
  void RemoveSection(const GString& section) const;

  /// Goes over to another file.
  CConfigFile& operator=(const CConfigFile&) = default;

 private:
  GString path_;
};

}  // namespace vlm
