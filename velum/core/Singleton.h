#pragma once

/// \file
/// One object of a class for the whole process, made when it is first asked for.
///
///     class Settings : public vlm::Singleton<Settings> {
///       friend class vlm::Singleton<Settings>;
///       Settings() = default;
///     };
///     Settings& settings = Settings::Instance();

#include <velum/core/Api.h>

namespace vlm {

/// Gives a class its one object. `T` derives from `Singleton<T>` or not, as it likes; its default
/// constructor is open to `Singleton<T>`.
///
/// The object is destroyed when the process ends, and nothing may ask for it after that. The first
/// call that returns must have done so before a second thread asks.
///
/// For a class that a shared library exports, the library declares `extern template class
/// vlm::Singleton<T>;` beside it and instantiates it in one source, so that all modules have the
/// same object.
template <class T>
class VELUM_API Singleton {
 public:
  Singleton(const Singleton&) = delete;
  Singleton& operator=(const Singleton&) = delete;

  /// The object; the first call makes it.
  ///
  /// *Errors*: what the constructor of `T` throws; the next call tries again.
  static T& Instance();
  /// The same as `Instance()`.
  static T& GetInstance();

 protected:
  Singleton() = default;
  ~Singleton() = default;

 private:
  bool operator==(const Singleton&) const { return false; }
};

// Out of the class, so that `extern template` keeps them out of every other module.

template <class T>
T& Singleton<T>::Instance() {
  static T instance;
  return instance;
}

template <class T>
T& Singleton<T>::GetInstance() {
  return Instance();
}

}  // namespace vlm
