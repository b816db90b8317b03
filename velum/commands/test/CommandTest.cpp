#include <velum/commands/Command.h>

#include <velum/core/Exception.h>

#include <gmock/gmock.h>

#include <string>
#include <typeinfo>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

struct Note : Memento {
  explicit Note(int what) : value(what) {}
  std::unique_ptr<Memento> Clone() const override { return std::make_unique<Note>(*this); }
  int value;
};

/// Notes what reaches it.
class Recorder : public Command {
 public:
  explicit Recorder(const char* key = "Key", const char* label = nullptr)
      : key_(key), label_(label) {}

  GString Label() const override { return label_ ? label_ : Command::Label(); }
  std::unique_ptr<Command> Clone() const override { return std::make_unique<Recorder>(*this); }

  using Command::Memento;

  bool allows = true;
  StatusCode status = STATUS_CANCELED;
  mutable std::vector<std::string> calls;

 private:
  StatusCode Note(const char* call) {
    calls.emplace_back(call);
    return status;
  }
  StatusCode DoImpl() override { return Note("do"); }
  StatusCode UndoImpl() override { return Note("undo"); }
  StatusCode RedoImpl() override { return Note("redo"); }
  GString KeyImpl() const override { return key_; }
  bool UndoRedoableImpl() const override {
    calls.emplace_back("allows");
    return allows;
  }
  void EnumerateOptionsImpl(std::list<std::pair<GString, GString>>& options) const override {
    options.emplace_back("Width", "3");
  }
  bool EquivalentImpl(const Command&) const override {
    calls.emplace_back("equivalent");
    return true;
  }
  bool OptionImpl(const GString& key, const boost::any& value) override {
    calls.push_back(key + " any " + value.type().name());
    return true;
  }
  bool OptionImpl(const GString& key, const GString& value) override {
    calls.push_back(key + " text " + value);
    return true;
  }

  const char* key_;
  const char* label_;
};

/// A command that overrides what it must.
class Plain : public Command {
 public:
  std::unique_ptr<Command> Clone() const override { return std::make_unique<Plain>(*this); }

 private:
  StatusCode DoImpl() override { return STATUS_SUCCESS; }
  StatusCode UndoImpl() override { return STATUS_SUCCESS; }
  StatusCode RedoImpl() override { return STATUS_SUCCESS; }
  GString KeyImpl() const override { return "Plain"; }
  bool UndoRedoableImpl() const override { return true; }
};

std::vector<bool> Flags(const Command& command) {
  return {command.GuiEnabled(), command.ProgressEnabled(), command.UndoRedoEnabled()};
}

TEST(Command, HasThreeFlagsThatChangeOneByOne) {
  Plain command;
  EXPECT_THAT(Flags(command), ElementsAre(true, true, true));
  command.GuiEnabled(false);
  EXPECT_THAT(Flags(command), ElementsAre(false, true, true));
  command.ProgressEnabled(false);
  EXPECT_THAT(Flags(command), ElementsAre(false, false, true));
  command.UndoRedoEnabled(false);
  command.GuiEnabled(true);
  EXPECT_THAT(Flags(command), ElementsAre(true, false, false));
}

TEST(Command, TakesFlagsAsText) {
  struct Row {
    const char* key;
    const char* value;
    bool taken;
    std::vector<bool> flags;
    const char* why;
  };
  const std::vector<bool> kAll{true, true, true};
  const Row rows[] = {
      {"GUIENABLED", "0", true, {false, true, true}, "the case of the key"},
      {"ProgressEnabled", "False", true, {true, false, true}, "as it is enumerated"},
      {"undoredoenabled", "f", true, {true, true, false}, "a short form"},
      {"GuiEnabled", "no", false, kAll, "no truth value"},
      {"GuiEnabled", " 0", false, kAll, "white space"},
      {"GuiEnabled", "", false, kAll, "an empty value"},
      {"GuiEnabled ", "0", false, kAll, "no such key"},
      {"", "0", false, kAll, "an empty key"},
  };
  for (const Row& row : rows) {
    const GString key(row.key), value(row.value);
    for (int form = 0; form < 5; ++form) {
      Plain command;
      const bool taken = form == 0   ? command.Option(key, value)
                         : form == 1 ? command.Option(key, row.value)
                         : form == 2 ? command.Option(row.key, value)
                         : form == 3 ? command.Option(row.key, row.value)
                                     : command.Option(key, boost::any(value));
      EXPECT_EQ(taken, row.taken) << row.why << ", form " << form;
      EXPECT_EQ(Flags(command), row.flags) << row.why << ", form " << form;
    }
  }
}

TEST(Command, TakesFlagsAsTruthValuesAlone) {
  Plain command;
  EXPECT_FALSE(command.Option("guienabled", boost::any(1)));
  EXPECT_FALSE(command.Option("guienabled", boost::any(std::string("0"))));
  EXPECT_FALSE(command.Option("guienabled", boost::any(static_cast<const char*>("0"))));
  EXPECT_FALSE(command.Option("guienabled", boost::any()));
  EXPECT_TRUE(command.GuiEnabled());
  EXPECT_TRUE(command.Option("GuiEnabled", false));
  EXPECT_FALSE(command.GuiEnabled());
  EXPECT_TRUE(command.Option("GuiEnabled", boost::any(true)));
  EXPECT_TRUE(command.GuiEnabled());
}

TEST(Command, PassesOtherOptionsOnWithTheKeyInSmallLetters) {
  Recorder command;
  EXPECT_TRUE(command.Option("Line Width", "Some TEXT"));
  EXPECT_TRUE(command.Option("Line Width", ""));
  EXPECT_TRUE(command.Option("Count", boost::any(7)));
  EXPECT_TRUE(command.Option("Name", boost::any(GString("a"))));
  EXPECT_TRUE(command.Option("Nothing", boost::any()));
  EXPECT_FALSE(command.Option("", boost::any(7)));
  EXPECT_FALSE(command.Option("Null", static_cast<const char*>(nullptr)));
  EXPECT_THAT(command.calls,
              ElementsAre("line width text Some TEXT", "line width text ",
                          std::string("count any ") + typeid(int).name(), "name text a",
                          std::string("nothing any ") + typeid(void).name()));
  Plain plain;
  EXPECT_FALSE(plain.Option("Width", "3"));
  EXPECT_FALSE(plain.Option("Width", boost::any(3)));
}

TEST(Command, EnumeratesWhatOptionTakesBack) {
  Recorder command;
  command.ProgressEnabled(false);
  std::list<std::pair<GString, GString>> options{{"old", "old"}};
  command.EnumerateOptions(options);
  EXPECT_THAT(options, ElementsAre(Pair("GuiEnabled", "True"), Pair("ProgressEnabled", "False"),
                                   Pair("UndoRedoEnabled", "True"), Pair("Width", "3")));
  Recorder other;
  for (const auto& [name, value] : options) EXPECT_TRUE(other.Option(name, value));
  EXPECT_EQ(Flags(other), Flags(command));
  EXPECT_THAT(other.calls, ElementsAre("width text 3"));
}

TEST(Command, IsUndoneAndRedoneOnlyWhereThatIsAllowed) {
  struct Row {
    bool enabled;
    bool allows;
    std::vector<std::string> calls;
  };
  const Row rows[] = {
      {true, true, {"allows", "allows", "undo", "allows", "redo"}},
      {true, false, {"allows", "allows", "allows"}},
      {false, true, {}},
  };
  for (const Row& row : rows) {
    Recorder command;
    command.UndoRedoEnabled(row.enabled);
    command.allows = row.allows;
    const bool allowed = row.enabled && row.allows;
    EXPECT_EQ(command.UndoRedoable(), allowed);
    const auto says = [&command](StatusCode (Command::*step)()) -> std::string {
      try {
        EXPECT_EQ((command.*step)(), STATUS_CANCELED);
        return "";
      } catch (const Exception& error) {
        EXPECT_EQ(error.GetModule(), "Velum");
        EXPECT_EQ(error.GetSrcFile(), "Command");
        EXPECT_EQ(error.GetErrCode(), 0);
        return error.GetDescription();
      }
    };
    EXPECT_EQ(says(&Command::Undo), allowed ? "" : "Cannot undo disabled command.");
    EXPECT_EQ(says(&Command::Redo), allowed ? "" : "Cannot redo disabled command.");
    EXPECT_EQ(command.calls, row.calls);
  }
}

TEST(Command, RunsWhateverTheFlagsAre) {
  Recorder command;
  command.UndoRedoEnabled(false);
  command.allows = false;
  command.status = STATUS_FAILURE;
  EXPECT_EQ(command.Do(), STATUS_FAILURE);
  EXPECT_THAT(command.calls, ElementsAre("do"));
}

TEST(Command, IsComparedUnlessKeyAndLabelBothDiffer) {
  struct Row {
    Recorder other;
    bool asked;
    const char* why;
  };
  const Row rows[] = {
      {Recorder("Key", "Label"), true, "all the same"},
      {Recorder("Key", "Other"), true, "the same key"},
      {Recorder("Other", "Label"), true, "the same label"},
      {Recorder("key", "label"), false, "case matters"},
  };
  for (const Row& row : rows) {
    const Recorder command("Key", "Label");
    EXPECT_EQ(command.Equivalent(row.other), row.asked) << row.why;
    EXPECT_EQ(command.calls.size(), row.asked ? 1u : 0u) << row.why;
  }
  EXPECT_FALSE(Plain().Equivalent(Plain())) << "a command that does not say more is like no other";
  EXPECT_EQ(Plain().Label(), "Plain");
}

TEST(Command, ACopyHasAMementoOfItsOwn) {
  Recorder command;
  EXPECT_EQ(Recorder(command).Memento(), nullptr);
  command.Memento(std::make_shared<struct Note>(5));
  command.GuiEnabled(false);
  const std::unique_ptr<Command> copy = command.Clone();
  auto& copied = dynamic_cast<Recorder&>(*copy);
  EXPECT_FALSE(copied.GuiEnabled());
  EXPECT_NE(copied.Memento(), command.Memento());
  EXPECT_EQ(dynamic_cast<struct Note&>(*copied.Memento()).value, 5);
  const Recorder& constant = command;
  EXPECT_EQ(constant.Memento(), command.Memento()) << "shared, not copied";
}

}  // namespace
}  // namespace vlm
