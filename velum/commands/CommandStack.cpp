#include <velum/commands/CommandStack.h>

#include <velum/core/Exception.h>

#include <cstddef>
#include <utility>

namespace vlm {

namespace {

[[noreturn]] void Refuse(int line, const char* why) {
  throw Exception("Velum", "CommandStack", line, ERR_CUSTOM, why);
}

/// True if there is a command at `position` and it can be undone and redone.
bool Allows(const std::shared_ptr<Command>* position) {
  return position && (*position)->UndoRedoable();
}

}  // namespace

/// Keeps commands from changing the stack while it runs them or lets them go.
class CommandStack::Locked {
 public:
  explicit Locked(CommandStack& stack) : stack_(stack) {
    if (stack_.locked_) {
      Refuse(__LINE__, "Cannot change the command stack from inside one of its commands.");
    }
    stack_.locked_ = true;
  }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
  ~Locked() { stack_.locked_ = false; }

 private:
  CommandStack& stack_;
};

CommandStack::CommandStack(unsigned int maximumSize) : maximumSize_(maximumSize) {}

CommandStack::~CommandStack() {
  locked_ = true;
  DropOldest(0);
}

bool CommandStack::Undoable() const { return Allows(UndoPosition()); }

bool CommandStack::Redoable() const { return Allows(RedoPosition()); }

std::shared_ptr<const Command> CommandStack::UndoCommand() const {
  const value_type* const position = UndoPosition();
  return Allows(position) ? *position : nullptr;
}

std::shared_ptr<const Command> CommandStack::RedoCommand() const {
  const value_type* const position = RedoPosition();
  return Allows(position) ? *position : nullptr;
}

GString CommandStack::UndoLabel() const {
  const auto command = UndoCommand();
  return command ? command->Label() : GString();
}

GString CommandStack::RedoLabel() const {
  const auto command = RedoCommand();
  return command ? command->Label() : GString();
}

StatusCode CommandStack::Do(std::shared_ptr<Command> command) {
  if (!command) Refuse(__LINE__, "Cannot execute invalid command.");
  const Locked locked(*this);
  const StatusCode status = command->Do();
  if (status != STATUS_SUCCESS) return status;
  // Throws only where nothing was undone: otherwise there is a place to spare.
  DropUndone();
  history_.push_back(std::move(command));
  VerifyStackSize();
  done_ = history_.size();
  return status;
}

StatusCode CommandStack::Undo() {
  const Locked locked(*this);
  const value_type* const position = UndoPosition();
  if (!Allows(position)) Refuse(__LINE__, "Cannot undo invalid command.");
  const StatusCode status = (*position)->Undo();
  if (status == STATUS_FAILURE) return status;
  --done_;
  redoCut_ = false;
  return status;
}

StatusCode CommandStack::Redo() {
  const Locked locked(*this);
  const value_type* const position = RedoPosition();
  if (!Allows(position)) Refuse(__LINE__, "Cannot redo invalid command.");
  const StatusCode status = (*position)->Redo();
  if (status != STATUS_FAILURE) ++done_;
  return status;
}

void CommandStack::Clear() {
  const Locked locked(*this);
  DropOldest(0);
}

void CommandStack::MaximumSize(unsigned int maximumSize) {
  const Locked locked(*this);
  maximumSize_ = maximumSize;
  VerifyStackSize();
}

void CommandStack::VerifyStackSize() noexcept {
  if (size() > maximumSize_) DropOldest(maximumSize_);
}

// Commands leave the history before they are destroyed, so that one that looks at the stack then
// finds it whole.

void CommandStack::DropOldest(std::size_t kept) noexcept {
  done_ = first_;
  redoCut_ = true;
  while (size() > kept) {
    const value_type dropped = std::move(history_[first_]);
    done_ = ++first_;
  }
  // Places are given up when they are more than the commands, so that each moves few of these.
  if (first_ > kept) {
    history_.erase(history_.begin(), history_.begin() + static_cast<std::ptrdiff_t>(first_));
    done_ = first_ = 0;
  }
  if (history_.empty()) history_ = {};
}

void CommandStack::DropUndone() noexcept {
  redoCut_ = true;
  while (history_.size() > done_) {
    const value_type dropped = std::move(history_.back());
    history_.pop_back();
  }
}

}  // namespace vlm
