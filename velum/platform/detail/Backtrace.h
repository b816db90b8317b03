#pragma once

/// \file
/// The return addresses on a thread's stack, from where it crashed.
///
///     static vlm::platform::Backtrace trace;
///     vlm::platform::Backtrace::Prepare();  // once, outside of a handler
///     trace.Begin(context);                 // in the handler
///     trace.Walk(context, code);

#include <velum/platform/detail/LoadedCode.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace vlm::platform {

/// The addresses from where the processor was, outwards to where the thread began: first that of
/// the instruction, then return addresses. Of a deep stack those at both ends are kept.
///
/// An object with identity, for static storage, used by one thread.
class Backtrace {
 public:
  /// So many are kept at the inner end.
  static constexpr std::size_t kInner = 100;
  /// So many are kept at the outer end.
  static constexpr std::size_t kOuter = 28;

  /// No addresses.
  constexpr Backtrace() noexcept = default;
  Backtrace(const Backtrace&) = delete;
  Backtrace& operator=(const Backtrace&) = delete;

  /// Loads what `Walk` needs.
  static void Prepare() noexcept;

  /// Takes the instruction's address from the state that the handler of a signal was given.
  void Begin(const void* context) noexcept;
  /// Adds the return addresses, each as soon as it is found.
  ///
  /// - The stack or its descriptions are damaged: it may crash; what was found before is kept.
  /// - A call led to where no code is: the trace goes on with the caller. The state is changed
  ///   meanwhile, see `SetInstruction`; a crash leaves it so.
  /// - A processor that CrashContext.h does not know: the addresses of the handler follow.
  void Walk(void* context, const LoadedCode& code) noexcept;

  /// Adds an address at the outer end.
  void Add(std::uintptr_t address) noexcept;
  /// How many addresses were found.
  [[nodiscard]] std::size_t Count() const noexcept { return count_; }
  /// How many of them are not kept, from number `kInner` on.
  [[nodiscard]] std::size_t LeftOut() const noexcept {
    return count_ > kInner + kOuter ? count_ - kInner - kOuter : 0;
  }
  /// One that is kept.
  [[nodiscard]] std::uintptr_t operator[](std::size_t i) const noexcept {
    return i < kInner ? inner_[i] : outer_[(i - kInner) % kOuter];
  }

 private:
  std::array<std::uintptr_t, kInner> inner_{};
  std::array<std::uintptr_t, kOuter> outer_{};  // The last ones, in a ring.
  std::size_t count_ = 0;
};

}  // namespace vlm::platform
