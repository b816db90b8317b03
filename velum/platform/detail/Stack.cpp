#include <velum/platform/detail/Stack.h>

#include <velum/platform/detail/CrashSignals.h>

#include <pthread.h>

#include <exception>

namespace vlm::platform {
namespace {

struct Work {
  void (*task)(void*);
  void* argument;
  std::exception_ptr thrown;
};

void* Run(void* argument) {
  auto& work = *static_cast<Work*>(argument);
  void* const crashStack = AreCrashesReported() ? GiveCrashStack() : nullptr;
  try {
    work.task(work.argument);
  } catch (...) {
    work.thrown = std::current_exception();
  }
  TakeCrashStack(crashStack);
  return nullptr;
}

}  // namespace

std::uintptr_t LowestOfStack() noexcept {
  pthread_attr_t attributes;
  if (::pthread_getattr_np(::pthread_self(), &attributes) != 0) return 0;
  void* lowest = nullptr;
  std::size_t size = 0;
  const int failed = ::pthread_attr_getstack(&attributes, &lowest, &size);
  ::pthread_attr_destroy(&attributes);
  return failed ? 0 : reinterpret_cast<std::uintptr_t>(lowest);
}

std::size_t StackLeft() noexcept {
  constexpr std::size_t kAssumed = 64 * 1024;
  // The address of a variable would not do: the address sanitizer keeps variables elsewhere.
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  static thread_local const std::uintptr_t lowest = [here] {
    const std::uintptr_t known = LowestOfStack();
    return known != 0 ? known : here - kAssumed;
  }();
  return here > lowest ? here - lowest : 0;
}

bool RunOnNewStack(std::size_t bytes, void (*task)(void*), void* argument) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return false;
  Work work{task, argument, nullptr};
  pthread_t thread;
  const bool started = pthread_attr_setstacksize(&attributes, bytes) == 0 &&
                       pthread_create(&thread, &attributes, Run, &work) == 0;
  pthread_attr_destroy(&attributes);
  if (!started) return false;
  pthread_join(thread, nullptr);
  if (work.thrown) std::rethrow_exception(work.thrown);
  return true;
}

}  // namespace vlm::platform
