#pragma once

/// \file
/// The modules of the running process, and the libraries beside its program.
///
///     for (const auto& module : vlm::CModQuery())
///       printf("%s %s\n", module.GetPath().c_str(), module.GetVersion().c_str());

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/platform/Types.h>

#include <cstddef>
#include <vector>

namespace vlm {

/// A list of modules, in the order in which they were added.
///
/// A value: a read-only sequence that is filled by the constructor and by the two `Add` functions.
/// Making it opens each file, so that it is not for a process that has crashed.
///
/// Threads: an object belongs to one thread at a time; nothing is locked.
class VELUM_API CModQuery {
 public:
  /// A module: what its file says of itself. A value.
  ///
  /// The version is read from the file's ELF tables, without loading it: the number in the name
  /// that it goes by (SONAME), "1.74.0" of "libboost_system.so.1.74.0". Where that is a single
  /// number or missing, the greatest number of the version symbols that the file defines takes its
  /// place, unless it is a single and smaller one: "2.36" for the C library, whose newest symbols
  /// are of GLIBC_2.36. The description is the SONAME. A file of another kind or of another
  /// machine, and one that is cut, has neither; of a damaged one what can be read is told.
  class VELUM_API CModuleInfo {
   public:
    /// Nothing that is known.
    explicit CModuleInfo(bool loaded = false) : loaded_(loaded) {}

    /// True for a module of the process.
    [[nodiscard]] bool GetLoaded() const noexcept { return loaded_; }
    /// The first number of the version; 0 without one.
    [[nodiscard]] int GetVerMajor() const noexcept { return verMajor_; }
    /// The second number of the version; 0 without one.
    [[nodiscard]] int GetVerMinor() const noexcept { return verMinor_; }
    /// The size of the file in bytes, at most 2147483647; 0 if it can't be read.
    [[nodiscard]] int GetSize() const noexcept { return size_; }
    /// When the file was last written, in local time; all 0 if it can't be read.
    [[nodiscard]] const SYSTEMTIME& GetTimeStamp() const noexcept { return timeStamp_; }
    /// The full path, without links.
    [[nodiscard]] const GString& GetPath() const noexcept { return path_; }
    /// The version, or "n/a".
    [[nodiscard]] const GString& GetVersion() const noexcept { return version_; }
    /// What the file calls itself, or "n/a".
    [[nodiscard]] const GString& GetDescription() const noexcept { return description_; }
    /// The time stamp as text, such as "09:05pm 11/23/2026", or "n/a". Noon and midnight are 00.
    [[nodiscard]] const GString& GetTimeStampStr() const noexcept { return timeStampStr_; }

    // Each sets a single fact; none is worked out from another.
    void SetLoaded(bool loaded) noexcept { loaded_ = loaded; }     ///< Whether the process has it.
    void SetVerMajor(int number) noexcept { verMajor_ = number; }  ///< The version's first number.
    void SetVerMinor(int number) noexcept { verMinor_ = number; }  ///< Its second number.
    void SetSize(int bytes) noexcept { size_ = bytes; }            ///< The size of the file.
    void SetTimeStamp(const SYSTEMTIME& t) noexcept { timeStamp_ = t; }  ///< When it was written.
    void SetPath(const GString& path) { path_ = path; }                  ///< Where it lies.
    void SetVersion(const GString& text) { version_ = text; }            ///< The version as text.
    void SetDescription(const GString& text) { description_ = text; }    ///< What it is.
    void SetTimeStampStr(const GString& text) { timeStampStr_ = text; }  ///< The time as text.

   private:
    bool loaded_;
    int verMajor_ = 0;
    int verMinor_ = 0;
    int size_ = 0;
    SYSTEMTIME timeStamp_{};
    GString path_;
    GString version_ = "n/a";
    GString description_ = "n/a";
    GString timeStampStr_ = "n/a";
  };

  using value_type = CModuleInfo;                                   ///< The element.
  using size_type = std::size_t;                                    ///< Numbers and places.
  using difference_type = std::ptrdiff_t;                           ///< Distances.
  using reference = const CModuleInfo&;                             ///< An element in place.
  using const_reference = const CModuleInfo&;                       ///< An element in place.
  using const_iterator = std::vector<CModuleInfo>::const_iterator;  ///< A place in the list.
  using iterator = const_iterator;                                  ///< A place in the list.
  using const_reverse_iterator =
      std::vector<CModuleInfo>::const_reverse_iterator;  ///< Such a place, from the end on.
  using reverse_iterator = const_reverse_iterator;       ///< Such a place, from the end on.

  /// The list after `AddMemoryModules`, if bit 0 of `which` is set, and then `AddDiskModules`, if
  /// bit 1 is. What fails adds nothing.
  ///
  /// *Cost*: some 20 microseconds for each file.
  explicit CModQuery(int which = 3);
  /// A copy.
  CModQuery(const CModQuery& other);
  ~CModQuery();

  /// The first module.
  [[nodiscard]] const_iterator begin() const noexcept { return modules_.begin(); }
  /// The end of a walk.
  [[nodiscard]] const_iterator end() const noexcept { return modules_.end(); }
  /// The last module, for a walk backwards.
  [[nodiscard]] const_reverse_iterator rbegin() const noexcept { return modules_.rbegin(); }
  /// The end of a walk backwards.
  [[nodiscard]] const_reverse_iterator rend() const noexcept { return modules_.rend(); }
  /// The number of modules.
  [[nodiscard]] std::size_t size() const noexcept { return modules_.size(); }
  /// True for no modules.
  [[nodiscard]] bool empty() const noexcept { return modules_.empty(); }
  /// The number of modules.
  [[nodiscard]] std::size_t GetCount() const noexcept { return modules_.size(); }
  /// The module at `index`, which must be below `size()`.
  ///
  /// *Lifetime*: until the list is changed.
  [[nodiscard]] const CModuleInfo& operator[](std::size_t index) const { return modules_[index]; }

  /// Adds what the system's loader has in this process, the program first, 1024 modules at most:
  /// those whose path `GetModuleFilename` could give. False if the loader lists nothing.
  ///
  /// - Modules that are in the list already are added again.
  /// - A module whose file is gone is listed all the same, without version, size and time.
  bool AddMemoryModules();
  /// Adds the program and the libraries in its folder, files whose names match `*.so*`, unless
  /// their paths are in the list, in any case of their ASCII letters. A link counts as the file
  /// that it leads to. False if the program's path can't be had.
  bool AddDiskModules();

  /// Copies a list.
  CModQuery& operator=(const CModQuery& other);

 private:
  [[gnu::visibility("hidden")]] void AddEntry(const GString& path, bool loaded);

  std::vector<CModuleInfo> modules_;
};

}  // namespace vlm
