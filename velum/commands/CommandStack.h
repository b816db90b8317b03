#pragma once

/// \file
/// The undo history of a document.
///
///     vlm::CommandStack history(100);
///     history.Do(std::make_shared<Recolor>(colour));
///     menu.SetUndo(history.UndoLabel());  // "Recolor", empty if there is nothing to undo
///     if (history.Undoable()) history.Undo();

#include <velum/commands/Command.h>
#include <velum/commands/StatusCode.h>
#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace vlm {

/// Runs commands, keeps those that succeeded, and walks back and forth through them.
///
/// The history is one list, newest first. Two positions stand in it: the command that `Undo` would
/// reverse, and right before it, that is newer, the one that `Redo` would repeat; each may be
/// nowhere. Commands are never merged.
///
/// A stack has identity and shares its commands with whoever else holds them. One stack belongs to
/// one thread at a time; commands run on the caller's thread.
///
/// While it runs a command or lets go of some, the stack answers questions but can't be changed: a
/// command that calls back into its own stack gets an `Exception` "Cannot change the command stack
/// from inside one of its commands." of code 0, and the stack is as it was. Nor may a command
/// destroy its stack.
///
/// *Cost*: constant for each step on the average, and for each command that leaves the history.
class VELUM_API CommandStack {
 public:
  using value_type = std::shared_ptr<Command>;                             ///< A command, shared.
  using const_iterator = std::vector<value_type>::const_reverse_iterator;  ///< Newest first.
  using const_reverse_iterator = std::vector<value_type>::const_iterator;  ///< Oldest first.

  /// An empty history that keeps at most `maximumSize` commands.
  explicit CommandStack(unsigned int maximumSize);
  CommandStack(const CommandStack&) = delete;
  CommandStack& operator=(const CommandStack&) = delete;
  /// Lets go of all commands.
  ~CommandStack();

  /// True if there is a command to undo and it allows that.
  [[nodiscard]] bool Undoable() const;
  /// True if there is a command to redo and it allows that.
  [[nodiscard]] bool Redoable() const;
  /// The command that `Undo` would reverse; null unless `Undoable()`.
  [[nodiscard]] std::shared_ptr<const Command> UndoCommand() const;
  /// The command that `Redo` would repeat; null unless `Redoable()`.
  [[nodiscard]] std::shared_ptr<const Command> RedoCommand() const;
  /// The label of the command that `Undo` would reverse; empty unless `Undoable()`.
  [[nodiscard]] GString UndoLabel() const;
  /// The label of the command that `Redo` would repeat; empty unless `Redoable()`.
  [[nodiscard]] GString RedoLabel() const;
  /// The most commands that the history keeps.
  [[nodiscard]] unsigned int MaximumSize() const noexcept { return maximumSize_; }
  /// The number of commands in the history, done and undone.
  [[nodiscard]] std::size_t size() const noexcept { return history_.size() - first_; }
  /// True if there is no command in the history.
  [[nodiscard]] bool empty() const noexcept { return size() == 0; }

  /// The newest command. An iterator is good until the history changes.
  [[nodiscard]] const_iterator begin() const noexcept { return history_.rbegin(); }
  /// The newest command.
  [[nodiscard]] const_iterator cbegin() const noexcept { return begin(); }
  /// Behind the oldest command.
  [[nodiscard]] const_iterator end() const noexcept { return const_iterator(rbegin()); }
  /// Behind the oldest command.
  [[nodiscard]] const_iterator cend() const noexcept { return end(); }
  /// The oldest command, for a walk to the newest.
  [[nodiscard]] const_reverse_iterator rbegin() const noexcept {
    return history_.begin() + static_cast<std::ptrdiff_t>(first_);
  }
  /// The end of a walk to the newest command.
  [[nodiscard]] const_reverse_iterator rend() const noexcept { return history_.end(); }

  /// Runs `command` and keeps it if it gives `STATUS_SUCCESS`: it is then the next to undo, what
  /// was undone leaves the history, and so do the oldest commands beyond the limit. With any other
  /// status, and when this throws, the stack is as it was. Gives the command's status.
  ///
  /// *Errors*: `Exception` "Cannot execute invalid command." of code 0 for null; what the command
  /// throws; `std::bad_alloc` when there is no memory to keep the command, which has then been run.
  StatusCode Do(std::shared_ptr<Command> command);
  /// Undoes the newest command that is done, which is then the next to redo. Only if it gives
  /// `STATUS_FAILURE` or throws, the stack is as it was. Gives the command's status.
  ///
  /// *Errors*: `Exception` "Cannot undo invalid command." of code 0 unless `Undoable()`; what the
  /// command throws.
  StatusCode Undo();
  /// Repeats the oldest command that is undone, which is then the next to undo. Only if it gives
  /// `STATUS_FAILURE` or throws, the stack is as it was. Gives the command's status.
  ///
  /// *Errors*: `Exception` "Cannot redo invalid command." of code 0 unless `Redoable()`; what the
  /// command throws.
  StatusCode Redo();
  /// Lets go of all commands. The limit stays.
  void Clear();
  /// Sets the limit. If more commands are in the history, the oldest leave it, and of the others
  /// none can be undone or redone: they go with the next command that is done.
  void MaximumSize(unsigned int maximumSize);

 private:
  class Locked;

  const value_type* UndoPosition() const noexcept {
    return done_ > first_ ? &history_[done_ - 1] : nullptr;
  }
  const value_type* RedoPosition() const noexcept {
    return done_ < history_.size() && !redoCut_ ? &history_[done_] : nullptr;
  }

  void VerifyStackSize() noexcept;
  void DropOldest(std::size_t kept) noexcept;
  void DropUndone() noexcept;

  unsigned int maximumSize_;
  // Oldest first, behind places that commands have left: done commands, then undone ones. An array
  // is walked much faster than nodes are.
  std::vector<value_type> history_;
  std::size_t first_ = 0;  // The oldest command.
  std::size_t done_ = 0;   // The oldest command that is undone; the one before it would be undone.
  bool redoCut_ = false;   // The redo position is nowhere, although there are undone commands.
  bool locked_ = false;
};

}  // namespace vlm
