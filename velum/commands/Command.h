#pragma once

/// \file
/// An action that can be undone and done again, and that is set up through named options.
///
///     class Recolor : public vlm::Command {
///      public:
///       explicit Recolor(vlm::Color4b& target) : target_(target) {}
///       std::unique_ptr<Command> Clone() const override {
///         return std::make_unique<Recolor>(*this);
///       }
///
///      private:
///       vlm::GString KeyImpl() const override { return "Recolor"; }
///       bool UndoRedoableImpl() const override { return true; }
///       vlm::StatusCode DoImpl() override {
///         std::swap(target_, colour_);
///         return vlm::STATUS_SUCCESS;
///       }
///       vlm::StatusCode UndoImpl() override { return DoImpl(); }
///       vlm::StatusCode RedoImpl() override { return DoImpl(); }
///
///       vlm::Color4b& target_;
///       vlm::Color4b colour_ = vlm::Color4b::Red;
///     };
///
/// CommandStack.h keeps the history, CommandFactory.h makes commands by their keys.

#include <velum/commands/Memento.h>
#include <velum/commands/StatusCode.h>
#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/core/NonComparable.h>

#include <boost/any.hpp>

#include <cstdint>
#include <list>
#include <memory>
#include <utility>

namespace vlm {

/// An action of an application. Applications derive their commands; the library has none.
///
/// A command has identity. It is run alone by `Do`, or handed to a `CommandStack`; which of `Do`,
/// `Undo` and `Redo` came last is the business of whoever calls them. Three flags, all set in a new
/// command, say whether it shows a user interface, whether it shows its progress, and whether it
/// can be undone. One command belongs to one thread at a time.
///
/// What an implementation throws passes through unchanged.
class VELUM_API Command : private NonComparable {
 public:
  virtual ~Command();

  /// Runs the command, whatever the flags are.
  StatusCode Do();
  /// Reverses the command.
  ///
  /// *Errors*: `Exception` "Cannot undo disabled command." of code 0 unless `UndoRedoable()`.
  StatusCode Undo();
  /// Runs the command once more after it was undone.
  ///
  /// *Errors*: `Exception` "Cannot redo disabled command." of code 0 unless `UndoRedoable()`.
  StatusCode Redo();
  /// True if undo and redo are enabled and the command itself allows them.
  [[nodiscard]] bool UndoRedoable() const {
    return HasState(kUndoRedoEnabled) && UndoRedoableImpl();
  }

  /// The name that the command is known by.
  [[nodiscard]] GString Key() const;
  /// The text shown to the user. Here it is the key.
  [[nodiscard]] virtual GString Label() const;
  /// A copy of the command, with an undo state of its own. Nothing in the library calls it.
  [[nodiscard]] virtual std::unique_ptr<Command> Clone() const = 0;
  /// True if the command takes `other` for the same action. Commands of which both the key and the
  /// label differ never are; a command that does not say more is like no other.
  [[nodiscard]] bool Equivalent(const Command& other) const;

  /// True if the command may show a user interface.
  [[nodiscard]] bool GuiEnabled() const noexcept { return HasState(kGuiEnabled); }
  /// Allows a user interface or forbids it.
  void GuiEnabled(bool enabled) noexcept;
  /// True if the command may show its progress.
  [[nodiscard]] bool ProgressEnabled() const noexcept { return HasState(kProgressEnabled); }
  /// Allows a display of progress or forbids it.
  void ProgressEnabled(bool enabled) noexcept;
  /// True if undo and redo are enabled.
  [[nodiscard]] bool UndoRedoEnabled() const noexcept { return HasState(kUndoRedoEnabled); }
  /// Enables undo and redo or disables them.
  void UndoRedoEnabled(bool enabled) noexcept;

  /// Sets the option `key`, whatever the case of its letters, from text. False if there is no such
  /// option or if it does not take this value; then nothing is changed.
  ///
  /// "GuiEnabled", "ProgressEnabled" and "UndoRedoEnabled" are the flags, and read what
  /// `StringToBool` reads. Any other key goes to the command in small letters, with the value as it
  /// is. The empty key and a null pointer give false.
  bool Option(const GString& key, const GString& value);
  /// The same with text from literals.
  bool Option(const GString& key, const char* value);
  /// The same with text from literals.
  bool Option(const char* key, const GString& value);
  /// The same with text from literals.
  bool Option(const char* key, const char* value);
  /// Sets the option `key` from any value.
  ///
  /// A `GString` is taken as text is; `std::string` and `const char*` are not. The flags take a
  /// `bool` alone. Any other key goes to the command in small letters, with the value as it is. The
  /// literal 0 is a null pointer; the number is `boost::any(0)`.
  bool Option(const GString& key, const boost::any& value);
  /// Replaces `options` by the names and values of all options: the three flags, then those of the
  /// command. `Option` takes each pair as it stands.
  void EnumerateOptions(std::list<std::pair<GString, GString>>& options) const;

  Command& operator=(const Command&) = delete;

 protected:
  /// All flags are set, and there is no memento.
  Command();
  /// Copies the flags, and clones the memento if there is one.
  Command(const Command& other);

  /// The undo state, shared; null if there is none.
  [[nodiscard]] std::shared_ptr<vlm::Memento> Memento() noexcept;
  /// The undo state to be read, shared; null if there is none.
  [[nodiscard]] std::shared_ptr<const vlm::Memento> Memento() const noexcept;
  /// Replaces the undo state.
  void Memento(std::shared_ptr<vlm::Memento> memento) noexcept;

 private:
  enum CommandState : std::uint8_t {
    kNone = 0,
    kGuiEnabled = 1,
    kProgressEnabled = 2,
    kUndoRedoEnabled = 4,
  };

  /// Runs the command, and keeps what `UndoImpl` will need.
  virtual StatusCode DoImpl() = 0;
  /// The key, by which a `CommandFactory` would make such a command.
  virtual GString KeyImpl() const = 0;
  /// Runs the command once more after `UndoImpl`.
  virtual StatusCode RedoImpl() = 0;
  /// Reverses the command that `DoImpl` or `RedoImpl` has run last.
  virtual StatusCode UndoImpl() = 0;
  /// Whether the command can be undone at all, or as it is at present.
  virtual bool UndoRedoableImpl() const = 0;
  /// Appends the command's own options, as `Option` takes them; none unless overridden.
  virtual void EnumerateOptionsImpl(std::list<std::pair<GString, GString>>& options) const;
  /// Whether `other`, whose key or label is the same, is the same action; never unless overridden.
  virtual bool EquivalentImpl(const Command& other) const;
  /// Takes a value that is not text for an option of the command's own; tells whether it did. The
  /// key is in small letters and not empty. Takes nothing unless overridden.
  virtual bool OptionImpl(const GString& key, const boost::any& value);
  /// The same for text.
  virtual bool OptionImpl(const GString& key, const GString& value);

  static CommandState FlagOf(const GString& folded) noexcept;
  bool HasState(CommandState state) const noexcept { return (state_ & state) != 0; }
  void SetState(CommandState state, bool set) noexcept;

  std::shared_ptr<vlm::Memento> memento_;
  CommandState state_;
};

}  // namespace vlm
