#pragma once

/// \file
/// A library that is loaded while the program runs.
///
///     vlm::CDynLib library("libz.so.1");
///     using Version = const char* (*)();
///     if (auto* version = reinterpret_cast<Version>(library.GetSymbol("zlibVersion")))
///       puts(version());

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Holds one shared object, or the name of one that is not loaded yet, and lets it go in the end.
///
/// A name without a folder is looked for by the system's loader where it looks for libraries;
/// another one is a path of the library's form. Everything that a library needs must be there
/// when it is loaded, and its names do not serve other libraries. The system unloads it when the
/// last holder of the process has let it go.
///
/// A copy takes the name alone: each object that loads is a holder of its own.
///
/// Threads: an object belongs to one thread at a time; nothing is locked.
class VELUM_API CDynLib {
 public:
  /// Nothing, without a name.
  CDynLib() noexcept;
  /// The library `name`, not loaded.
  explicit CDynLib(const GString& name);
  /// The same name, not loaded.
  CDynLib(const CDynLib& other);
  /// Unloads.
  ~CDynLib();

  /// True while a library is loaded.
  [[nodiscard]] bool IsLoaded() const noexcept { return module_ != nullptr; }
  /// The loaded library; null for none. `GetModuleFilename` tells its path.
  [[nodiscard]] HINSTANCE GetModule() const noexcept { return module_; }

  /// Unloads what is loaded, takes `name` and loads that. Gives whether it worked; the name stays
  /// in any case. `g_Logger` is told first, with type `LogInformation`. A file that is cut short is
  /// refused, unless the loader finds it.
  ///
  /// *Errors*: those of the log.
  bool Load(const GString& name);
  /// Unloads what is loaded, and tells `g_Logger`. The name stays.
  ///
  /// - A log that can't be written: the line is lost.
  void Unload() noexcept;
  /// The address of a function or variable of the library, which is loaded if it is not.
  ///
  /// - A library that can't be loaded, a symbol that it does not have, null: null.
  /// - A symbol of another library that this one needs: that one's, as the system's loader has it.
  ///
  /// *Errors*: `ERR_INTERNAL` for an object without a name; those of the log.
  /// *Lifetime*: of what is at the address: until the library is unloaded.
  [[nodiscard]] void* GetSymbol(const char* name);

  /// Unloads what is loaded and takes the name of `other`; nothing happens to an object that is
  /// assigned to itself.
  CDynLib& operator=(const CDynLib& other);

 protected:
  /// Tells `g_Logger` and loads the library of the present name, which is not loaded.
  bool Load();

 private:
  GString name_;
  HINSTANCE module_ = nullptr;
};

}  // namespace vlm
