#include <velum/platform/detail/Stack.h>

#include <velum/platform/detail/CrashSignals.h>

#include <pthread.h>
#include <cstdint>
#include <exception>

namespace vlm::platform {
namespace {

// What is taken to be left where the system does not tell.
constexpr std::size_t kAssumed = 64 * 1024;

// The lowest address of the calling thread's stack.
std::uintptr_t LowestAddress(std::uintptr_t here) noexcept {
  const std::uintptr_t assumed = here > kAssumed ? here - kAssumed : 0;
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return assumed;
  void* lowest = nullptr;
  std::size_t size = 0;
  const int failed = pthread_attr_getstack(&attributes, &lowest, &size);
  pthread_attr_destroy(&attributes);
  return failed ? assumed : reinterpret_cast<std::uintptr_t>(lowest);
}

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

std::size_t StackLeft() noexcept {
  // The address of a variable would not do: the address sanitizer keeps variables elsewhere.
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  static thread_local const std::uintptr_t lowest = LowestAddress(here);
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
