#pragma once

/// \file
/// The environment of a test.

#include <cstdlib>
#include <optional>
#include <string>

namespace vlm::test {

/// An environment variable that has its old value again when the object goes.
class Environment {
 public:
  /// Remembers the value.
  explicit Environment(const char* name) : name_(name) {
    if (const char* const old = std::getenv(name)) old_ = old;
  }
  /// Remembers the value, and sets another.
  Environment(const char* name, const char* value) : Environment(name) { setenv(name, value, 1); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() {
    if (old_) {
      setenv(name_, old_->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

}  // namespace vlm::test
