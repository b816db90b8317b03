#include <velum/commands/Command.h>

#include <velum/core/Exception.h>
#include <velum/core/StringConvert.h>

namespace vlm {

Command::Command()
    : state_(static_cast<CommandState>(kGuiEnabled | kProgressEnabled | kUndoRedoEnabled)) {}

Command::Command(const Command& other)
    : NonComparable(other),
      memento_(other.memento_ ? other.memento_->Clone() : nullptr),
      state_(other.state_) {}

Command::~Command() = default;

StatusCode Command::Do() { return DoImpl(); }

StatusCode Command::Undo() {
  if (!UndoRedoable()) {
    throw Exception("Velum", "Command", __LINE__, ERR_CUSTOM, "Cannot undo disabled command.");
  }
  return UndoImpl();
}

StatusCode Command::Redo() {
  if (!UndoRedoable()) {
    throw Exception("Velum", "Command", __LINE__, ERR_CUSTOM, "Cannot redo disabled command.");
  }
  return RedoImpl();
}

GString Command::Key() const { return KeyImpl(); }

GString Command::Label() const { return Key(); }

bool Command::Equivalent(const Command& other) const {
  if (Key() != other.Key() && Label() != other.Label()) return false;
  return EquivalentImpl(other);
}

void Command::GuiEnabled(bool enabled) noexcept { SetState(kGuiEnabled, enabled); }
void Command::ProgressEnabled(bool enabled) noexcept { SetState(kProgressEnabled, enabled); }
void Command::UndoRedoEnabled(bool enabled) noexcept { SetState(kUndoRedoEnabled, enabled); }

bool Command::Option(const GString& key, const GString& value) {
  if (key.empty()) return false;
  const GString folded = key.ToLower();
  const CommandState flag = FlagOf(folded);
  if (!flag) return OptionImpl(folded, value);
  bool enabled = false;
  if (!StringToBool(value, enabled)) return false;
  SetState(flag, enabled);
  return true;
}

bool Command::Option(const GString& key, const char* value) {
  return value && Option(key, GString(value));
}

bool Command::Option(const char* key, const GString& value) {
  return key && Option(GString(key), value);
}

bool Command::Option(const char* key, const char* value) {
  return key && value && Option(GString(key), GString(value));
}

bool Command::Option(const GString& key, const boost::any& value) {
  if (key.empty()) return false;
  if (const auto* const text = boost::any_cast<GString>(&value)) return Option(key, *text);
  const GString folded = key.ToLower();
  const CommandState flag = FlagOf(folded);
  if (!flag) return OptionImpl(folded, value);
  const auto* const enabled = boost::any_cast<bool>(&value);
  if (!enabled) return false;
  SetState(flag, *enabled);
  return true;
}

void Command::EnumerateOptions(std::list<std::pair<GString, GString>>& options) const {
  options.clear();
  options.emplace_back("GuiEnabled", BoolToString(GuiEnabled()));
  options.emplace_back("ProgressEnabled", BoolToString(ProgressEnabled()));
  options.emplace_back("UndoRedoEnabled", BoolToString(UndoRedoEnabled()));
  EnumerateOptionsImpl(options);
}

std::shared_ptr<vlm::Memento> Command::Memento() noexcept { return memento_; }
std::shared_ptr<const vlm::Memento> Command::Memento() const noexcept { return memento_; }
void Command::Memento(std::shared_ptr<vlm::Memento> memento) noexcept {
  memento_ = std::move(memento);
}

void Command::EnumerateOptionsImpl(std::list<std::pair<GString, GString>>&) const {}
bool Command::EquivalentImpl(const Command&) const { return false; }
bool Command::OptionImpl(const GString&, const boost::any&) { return false; }
bool Command::OptionImpl(const GString&, const GString&) { return false; }

void Command::SetState(CommandState state, bool set) noexcept {
  state_ = static_cast<CommandState>(set ? state_ | state : state_ & ~state);
}

Command::CommandState Command::FlagOf(const GString& folded) noexcept {
  if (folded == "guienabled") return kGuiEnabled;
  if (folded == "progressenabled") return kProgressEnabled;
  if (folded == "undoredoenabled") return kUndoRedoEnabled;
  return kNone;
}

}  // namespace vlm
