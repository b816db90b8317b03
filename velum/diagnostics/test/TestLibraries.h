#pragma once

/// \file
/// The libraries that tests load: `velum_test_plain.so` and its kin, beside the test program.
///
///     vlm::CDynLib library(vlm::test::TestLibrary("plain"));

#include <velum/core/GString.h>
#include <velum/files/FileUtilities.h>

#include <dlfcn.h>

#include <algorithm>
#include <string>

namespace vlm::test {

/// The path of one of the libraries: "plain" says nothing of itself, "named" has the SONAME
/// libvelum_test.so.3.14.1, "versioned" libvelum_test.so.6 and versions from 2.9 to 2.10.
inline GString TestLibrary(const std::string& name) {
  return GetStartupPath(nullptr, true) + "velum_test_" + name + ".so";
}

/// A path of the library's as the system spells it.
inline std::string Native(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

/// True if the process has a library.
inline bool IsInProcess(const GString& path) {
  void* const loaded = dlopen(Native(path).c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (loaded) dlclose(loaded);
  return loaded != nullptr;
}

}  // namespace vlm::test
