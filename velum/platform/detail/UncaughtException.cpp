#include <velum/platform/detail/UncaughtException.h>

#include <cxxabi.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string_view>
#include <typeinfo>

namespace vlm::platform {
namespace {

constexpr char kNone[] = "std::terminate was called without an exception";

/// The texts of threads that terminate at once: one that finds no room aborts without.
struct Note {
  std::atomic<pid_t> thread{0};
  std::atomic<const char*> text{nullptr};
  char rooms[2][2048] = {};  // One is shown while the other one is written.
};
constinit Note theNotes[4];
constinit std::atomic<TellException> theTeller{nullptr};

/// Writes another text: the type, and what the exception says of itself.
void Write(Note& note, std::string_view type, TellException tell) {
  auto& room = note.rooms[note.text == note.rooms[0] ? 1 : 0];
  SafeText out(room, sizeof(room) - 1);
  out.PutPrintable(type);
  if (tell) tell(out.Put(": "));
  room[out.View().size()] = '\0';
  note.text = room;
}

Note* NoteOf(pid_t thread) noexcept {
  for (Note& note : theNotes) {
    if (note.thread == thread) return &note;
  }
  return nullptr;
}

/// Writes the type as people spell it. Memory is asked for, which the handler of a signal must not.
void WriteReadable(Note& note, const char* type) noexcept {
  int failed = 0;
  const std::unique_ptr<char, decltype(&std::free)> readable(
      abi::__cxa_demangle(type, nullptr, nullptr, &failed), &std::free);
  if (readable) Write(note, readable.get(), nullptr);
}

[[noreturn]] void OnTerminate() noexcept {
  for (Note& note : theNotes) {
    pid_t nobody = 0;
    if (!note.thread.compare_exchange_strong(nobody, ::gettid())) continue;
    const std::type_info* const type = abi::__cxa_current_exception_type();
    Write(note, type ? type->name() : kNone, nullptr);
    if (type) WriteReadable(note, type->name());
    break;
  }
  std::abort();
}

}  // namespace

void KeepUncaughtExceptions(TellException tell) noexcept {
  theTeller = tell;
  std::set_terminate(&OnTerminate);
}

const char* UncaughtException() noexcept {
  const Note* const note = NoteOf(::gettid());
  return note ? note->text.load() : nullptr;
}

void AskUncaughtException() {
  Note* const note = NoteOf(::gettid());
  if (note && abi::__cxa_current_exception_type()) Write(*note, note->text.load(), theTeller);
}

}  // namespace vlm::platform
