#include <velum/platform/detail/UncaughtException.h>

#include <cxxabi.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <exception>
#include <memory>
#include <typeinfo>

namespace vlm::platform {
namespace {

constexpr char kNone[] = "std::terminate was called without an exception";

/// The texts of threads that terminate at once: one that finds no room aborts without.
struct Note {
  std::atomic<pid_t> thread{0};
  std::atomic<bool> isWhole{false};
  char text[2048] = {};
};
constinit Note theNotes[4];
constinit std::atomic<TellException> theTeller{nullptr};

/// Starts a text anew: the type, and what the exception says of itself.
void Write(Note& note, std::string_view type, TellException tell) {
  note.isWhole = false;
  SafeText out(note.text, sizeof(note.text) - 1);
  out.PutPrintable(type);
  if (tell) tell(out.Put(": "));
  note.text[out.View().size()] = '\0';
  note.isWhole = true;
}

/// Describes the exception in steps, each of which leaves a text: the later ones call code that
/// may crash.
void Describe(Note& note) {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  if (!type) return Write(note, kNone, nullptr);
  Write(note, type->name(), nullptr);
  int failed = 0;
  const std::unique_ptr<char, decltype(&std::free)> readable(
      abi::__cxa_demangle(type->name(), nullptr, nullptr, &failed), &std::free);
  const char* const name = failed || !readable ? type->name() : readable.get();
  Write(note, name, nullptr);
  Write(note, name, theTeller);
}

[[noreturn]] void OnTerminate() noexcept {
  const pid_t self = ::gettid();
  for (Note& note : theNotes) {
    pid_t nobody = 0;
    if (note.thread.compare_exchange_strong(nobody, self)) {
      Describe(note);
      break;
    }
    // It came here before: what tells of the exception has failed.
    if (nobody == self) break;
  }
  std::abort();
}

}  // namespace

void KeepUncaughtExceptions(TellException tell) noexcept {
  theTeller = tell;
  std::set_terminate(&OnTerminate);
}

const char* UncaughtException() noexcept {
  const pid_t self = ::gettid();
  for (const Note& note : theNotes) {
    if (note.thread == self && note.isWhole) return note.text;
  }
  return nullptr;
}

}  // namespace vlm::platform
