#pragma once

/// \file
/// A list of named values that stays from one run of a program to the next.
///
///     vlm::CRegParamList list(vlm::HKEY_CURRENT_USER, "Software\\Plots");
///     list.Set("Window", 800, true);
///     const int width = list.GetDef("Window", 640, true);
///
/// All lists of a user are in one SQLite file, the registry: `velum/registry.db` in the folder that
/// `XDG_CONFIG_HOME` names with an absolute path, or else in `.config` of the home folder. The
/// environment variable `VELUM_REGISTRY` and `SetRegistryFile` name another file. What the variable
/// says is a path in any case, and a relative one starts at the folder that is current when the
/// process first uses it.

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/platform/Types.h>

#include <cstdint>
#include <map>

namespace vlm {

/// The values under one key of the registry, with a cache before them.
///
/// A list is a value: copies have the root, the key, and what the cache holds. What is read or set
/// goes into the cache and is answered from there later, also that there is no value; so what other
/// lists and processes change shows only after `SetRoot`. `persistent` says whether the registry is
/// asked or changed, or the cache alone.
///
/// In the registry keys and names are the same if they differ in the case of ASCII letters only,
/// and end at a byte 0; in the cache they differ by every byte. Separators around the key count for
/// nothing. Only entries of text are seen. An empty text counts as no value.
///
/// Each write is a transaction of its own. Other processes may read and write at the same time, and
/// a write waits up to 5 seconds for theirs; meanwhile other threads may read, and the process may
/// fork. A process that is killed loses nothing that was written; after a loss of power the last
/// writes may be missing, and nothing else is damaged. A process made by `fork` may use its lists
/// at once.
///
/// Numbers are read and written as `CParamList` does. `unsigned long` is a number of 32 bits here.
///
/// Threads: an object belongs to one thread at a time, its const functions included; different
/// objects, also with the same key, may be used on several threads.
///
/// *Errors* of `Set` with `persistent`: `ERR_OPEN_REGISTRY_KEY` with the key if the registry can't
/// be opened or made, may not be written, or is a file that is something else, which is left as it
/// is; `ERR_WRITE_REGISTRY_KEY` with the name if the value can't be written, as one of more than
/// 10^9 bytes. The cache has the value all the same. Reading has no errors: what can't be read is
/// not there. A registry that may not be written, nor its folder, is read all the same.
class VELUM_API CRegParamList {
 public:
  /// The values under `subKey` of `root`, such as `Software\Plots`.
  explicit CRegParamList(HKEY root = HKEY_CURRENT_USER, const GString& subKey = GString());
  /// A copy, with the cache.
  CRegParamList(const CRegParamList&);
  virtual ~CRegParamList();

  /// The top-level key.
  [[nodiscard]] HKEY GetRootKey() const noexcept { return root_; }
  /// The path under it, as it was given.
  [[nodiscard]] const GString& GetRootSubKey() const noexcept { return subKey_; }

  /// The text of `key`; false, and `value` stays, if there is none.
  bool Get(const GString& key, GString& value, bool persistent) const;
  /// Reads a whole number.
  bool Get(const GString& key, int& value, bool persistent) const;
  /// Reads a whole number from 0.
  bool Get(const GString& key, unsigned int& value, bool persistent) const;
  /// Reads a whole number from 0, of 32 bits.
  bool Get(const GString& key, unsigned long& value, bool persistent) const;
  /// Reads a whole number of 64 bits.
  bool Get(const GString& key, std::int64_t& value, bool persistent) const;
  /// Reads a number.
  bool Get(const GString& key, double& value, bool persistent) const;
  /// Reads a truth value.
  bool Get(const GString& key, bool& value, bool persistent) const;

  /// The text of `key`, or `otherwise` where `Get` gives false.
  [[nodiscard]] GString GetDef(const GString& key, const GString& otherwise, bool persistent) const;
  /// The same; null is the empty text.
  [[nodiscard]] GString GetDef(const GString& key, const char* otherwise, bool persistent) const;
  /// The number of `key`, or `otherwise` where `Get` gives false.
  [[nodiscard]] int GetDef(const GString& key, int otherwise, bool persistent) const;
  /// The number of `key`, or `otherwise` where `Get` gives false.
  [[nodiscard]] unsigned int GetDef(const GString& key, unsigned int otherwise,
                                    bool persistent) const;
  /// The number of `key`, or `otherwise` where `Get` gives false.
  [[nodiscard]] std::int64_t GetDef(const GString& key, std::int64_t otherwise,
                                    bool persistent) const;
  /// The number of `key`, or `otherwise` where `Get` gives false.
  [[nodiscard]] double GetDef(const GString& key, double otherwise, bool persistent) const;
  /// The truth value of `key`, or `otherwise` where `Get` gives false.
  [[nodiscard]] bool GetDef(const GString& key, bool otherwise, bool persistent) const;

  /// Goes over to another key and empties the cache.
  void SetRoot(HKEY root, const GString& subKey);

  /// Stores a text. One that is in the cache already is not stored again, so that a value set
  /// without `persistent` stays out of the registry when it is set again unchanged.
  void Set(const GString& key, const GString& value, bool persistent);
  /// The same; null is the empty text.
  void Set(const GString& key, const char* value, bool persistent);
  /// Stores a whole number.
  void Set(const GString& key, int value, bool persistent);
  /// Stores a whole number.
  void Set(const GString& key, unsigned int value, bool persistent);
  /// Stores a whole number of 32 bits.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for a value beyond 32 bits; nothing is stored.
  void Set(const GString& key, unsigned long value, bool persistent);
  /// Stores a whole number.
  void Set(const GString& key, std::int64_t value, bool persistent);
  /// Stores a number.
  void Set(const GString& key, double value, bool persistent);
  /// Stores a truth value.
  void Set(const GString& key, bool value, bool persistent);
  /// Removes the value from the cache, and with `persistent` from the registry; that this fails is
  /// not reported.
  void Remove(const GString& key, bool persistent);

  /// Takes the root, the key and the cache of another list.
  CRegParamList& operator=(const CRegParamList&);

 protected:
  /// Stores a text in the cache, and with `persistent` in the registry.
  virtual void DoSet(const GString& key, const GString& value, bool persistent);
  /// Copies the text of `key`; false, and `value` stays, if there is none.
  virtual bool DoGet(const GString& key, GString& value, bool persistent) const;

 private:
  HKEY root_;
  GString subKey_;
  mutable std::map<GString, GString> cache_;
};

/// Makes the file at `path` the registry of this process; the empty path goes back to what the
/// environment says. The file and its folder are made by the first write.
///
/// Lists keep what is in their caches. The function may be called on any thread.
VELUM_API void SetRegistryFile(const GString& path);

}  // namespace vlm
