#pragma once

/// \file
/// What is done in any case when a scope is left.
///
///     va_start(arguments, format);
///     const vlm::detail::Finally end([&] { va_end(arguments); });

#include <utility>

namespace vlm::detail {

/// Calls its work, which must not throw, when it is destroyed.
template <class Work>
class Finally {
 public:
  /// Takes what is to be done.
  explicit Finally(Work work) : work_(std::move(work)) {}
  Finally(const Finally&) = delete;
  Finally& operator=(const Finally&) = delete;
  /// Does it.
  ~Finally() { work_(); }

 private:
  Work work_;
};

}  // namespace vlm::detail
