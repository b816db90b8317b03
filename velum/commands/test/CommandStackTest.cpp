#include <velum/commands/CommandStack.h>

#include <velum/core/Exception.h>

#include <testing/FailingAllocations.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;
using vlm::testing::FailingAllocations;

/// A command that does at each step what the test says.
class Scripted : public Command {
 public:
  explicit Scripted(const char* name) : name_(name) {}
  ~Scripted() override {
    if (onDestruction) onDestruction();
  }

  std::unique_ptr<Command> Clone() const override { return std::make_unique<Scripted>(*this); }

  /// Runs in `Do`, `Undo` and `Redo` alike.
  std::function<StatusCode()> step = [] { return STATUS_SUCCESS; };
  std::function<void()> onDestruction;
  bool allows = true;

 private:
  StatusCode DoImpl() override { return step(); }
  StatusCode UndoImpl() override { return step(); }
  StatusCode RedoImpl() override { return step(); }
  GString KeyImpl() const override { return name_; }
  bool UndoRedoableImpl() const override { return allows; }

  const char* name_;
};

std::shared_ptr<Scripted> Make(const char* name) { return std::make_shared<Scripted>(name); }

/// All that can be seen of a stack: "C B|A, 3 of 9" has undone B and C.
std::string Seen(const CommandStack& stack) {
  std::string seen;
  const auto undo = stack.UndoCommand();
  const auto redo = stack.RedoCommand();
  bool met = false;
  for (const auto& command : stack) {
    if (command == undo && !met) {
      seen += '|';
      met = true;
    }
    seen += command->Key();
    if (command == redo && !met) seen += '<';
  }
  EXPECT_EQ(stack.UndoLabel(), undo ? undo->Label() : GString());
  EXPECT_EQ(stack.RedoLabel(), redo ? redo->Label() : GString());
  EXPECT_EQ(stack.Undoable(), undo != nullptr);
  EXPECT_EQ(stack.Redoable(), redo != nullptr);
  EXPECT_EQ(stack.size(), static_cast<std::size_t>(std::distance(stack.rbegin(), stack.rend())));
  EXPECT_EQ(stack.empty(), stack.begin() == stack.end());
  return seen;
}

/// The refusal that `work` meets.
template <class Work>
std::string Refusal(Work work) {
  try {
    work();
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetModule(), "Velum");
    EXPECT_EQ(error.GetSrcFile(), "CommandStack");
    EXPECT_EQ(error.GetErrCode(), 0);
    return error.GetDescription();
  }
  return "";
}

constexpr const char* kNothingToUndo = "Cannot undo invalid command.";
constexpr const char* kNothingToRedo = "Cannot redo invalid command.";

TEST(CommandStack, IsEmptyAtFirst) {
  CommandStack stack(9);
  EXPECT_EQ(Seen(stack), "");
  EXPECT_EQ(stack.MaximumSize(), 9u);
  EXPECT_EQ(Refusal([&] { stack.Undo(); }), kNothingToUndo);
  EXPECT_EQ(Refusal([&] { stack.Redo(); }), kNothingToRedo);
  for (const unsigned int limit : {0u, 9u}) {
    CommandStack other(limit);
    EXPECT_EQ(Refusal([&] { other.Do(nullptr); }), "Cannot execute invalid command.");
  }
}

TEST(CommandStack, WalksBackAndForth) {
  CommandStack stack(9);
  for (const char* const name : {"A", "B", "C"}) EXPECT_EQ(stack.Do(Make(name)), STATUS_SUCCESS);
  EXPECT_EQ(Seen(stack), "|CBA");
  const std::vector<std::string> undone{"C<|BA", "CB<|A", "CBA<"};
  for (const auto& seen : undone) {
    EXPECT_EQ(stack.Undo(), STATUS_SUCCESS);
    EXPECT_EQ(Seen(stack), seen);
  }
  EXPECT_EQ(Refusal([&] { stack.Undo(); }), kNothingToUndo);
  for (const char* const seen : {"CB<|A", "C<|BA", "|CBA"}) {
    EXPECT_EQ(stack.Redo(), STATUS_SUCCESS);
    EXPECT_EQ(Seen(stack), seen);
  }
  EXPECT_EQ(Refusal([&] { stack.Redo(); }), kNothingToRedo);
  stack.Undo();
  stack.Do(Make("D"));
  EXPECT_EQ(Seen(stack), "|DBA") << "what was undone is gone";
  for (int i = 0; i < 3; ++i) stack.Undo();
  stack.Do(Make("E"));
  EXPECT_EQ(Seen(stack), "|E") << "all were undone";
  stack.Undo();
  stack.Clear();
  EXPECT_EQ(Seen(stack), "");
  EXPECT_EQ(Refusal([&] { stack.Undo(); }), kNothingToUndo);
}

TEST(CommandStack, TheSameCommandMayStandTwice) {
  CommandStack stack(9);
  const auto command = Make("A");
  stack.Do(command);
  stack.Do(command);
  stack.Undo();
  stack.Undo();
  EXPECT_EQ(stack.size(), 2u);
  EXPECT_EQ(command.use_count(), 3);
}

TEST(CommandStack, LosesTheOldestBeyondTheLimit) {
  CommandStack stack(2);
  for (const char* const name : {"A", "B", "C"}) stack.Do(Make(name));
  EXPECT_EQ(Seen(stack), "|CB");
  stack.Undo();
  stack.Undo();
  EXPECT_EQ(Refusal([&] { stack.Undo(); }), kNothingToUndo);

  CommandStack none(0);
  EXPECT_EQ(none.Do(Make("A")), STATUS_SUCCESS);
  EXPECT_EQ(Seen(none), "");
}

TEST(CommandStack, ALowerLimitLeavesBothPositionsNowhere) {
  CommandStack stack(9);
  for (const char* const name : {"A", "B", "C"}) stack.Do(Make(name));
  stack.Undo();
  stack.MaximumSize(3);
  EXPECT_EQ(Seen(stack), "C<|BA") << "it fits";
  stack.MaximumSize(2);
  EXPECT_EQ(Seen(stack), "CB");
  const auto failing = Make("F");
  failing->step = [] { return STATUS_FAILURE; };
  stack.Do(failing);
  EXPECT_EQ(Seen(stack), "CB");
  stack.Do(Make("D"));
  EXPECT_EQ(Seen(stack), "|D") << "what could not be undone any more goes with the next command";
}

TEST(CommandStack, OneDisabledCommandBlocksAllOlder) {
  CommandStack stack(9);
  stack.Do(Make("A"));
  const auto command = Make("B");
  stack.Do(command);
  command->UndoRedoEnabled(false);
  EXPECT_EQ(Seen(stack), "BA");
  EXPECT_EQ(Refusal([&] { stack.Undo(); }), kNothingToUndo);
  command->UndoRedoEnabled(true);
  stack.Undo();
  command->allows = false;
  EXPECT_EQ(Seen(stack), "B|A");
  EXPECT_EQ(Refusal([&] { stack.Redo(); }), kNothingToRedo);
}

/// Stands C, B, A with C undone, B about to be undone, and X about to be done. `step` is that of
/// all the commands from then on.
struct Scene {
  explicit Scene(std::function<StatusCode()> step = {}) : stack(9) {
    for (const auto& command : {a, b, c}) stack.Do(command);
    stack.Undo();
    if (step) Script(step);
  }
  void Script(const std::function<StatusCode()>& step) {
    for (const auto& command : {a, b, c, x}) command->step = step;
  }

  std::shared_ptr<Scripted> a = Make("A"), b = Make("B"), c = Make("C"), x = Make("X");
  CommandStack stack;
};

using Step = StatusCode (*)(Scene&);
const std::pair<const char*, Step> kSteps[] = {
    {"Do", [](Scene& scene) { return scene.stack.Do(scene.x); }},
    {"Undo", [](Scene& scene) { return scene.stack.Undo(); }},
    {"Redo", [](Scene& scene) { return scene.stack.Redo(); }},
};
constexpr const char* kBefore = "C<|BA";
const std::string kAfter[] = {"|XBA", "CB<|A", "|CBA"};

TEST(CommandStack, MovesAsTheStatusSays) {
  // Do keeps a command on success alone; Undo and Redo stay where they are on failure alone.
  for (const StatusCode status :
       {STATUS_CANCELED, STATUS_SUCCESS, STATUS_FAILURE, static_cast<StatusCode>(3)}) {
    for (int i = 0; i < 3; ++i) {
      Scene scene([status] { return status; });
      EXPECT_EQ(kSteps[i].second(scene), status);
      const bool moves = i == 0 ? status == STATUS_SUCCESS : status != STATUS_FAILURE;
      EXPECT_EQ(Seen(scene.stack), moves ? kAfter[i] : kBefore) << kSteps[i].first << status;
    }
  }
}

TEST(CommandStack, StaysAsItWasWhenACommandThrows) {
  for (int i = 0; i < 3; ++i) {
    Scene scene([]() -> StatusCode { throw std::runtime_error("half done"); });
    EXPECT_THROW(kSteps[i].second(scene), std::runtime_error);
    EXPECT_EQ(Seen(scene.stack), kBefore) << kSteps[i].first;
    scene.Script([] { return STATUS_SUCCESS; });
    EXPECT_EQ(kSteps[i].second(scene), STATUS_SUCCESS);
    EXPECT_EQ(Seen(scene.stack), kAfter[i]) << "works as before";
  }
}

TEST(CommandStack, RefusesACommandThatCallsBack) {
  const std::pair<const char*, std::function<void(Scene&)>> calls[] = {
      {"Do", [](Scene& scene) { scene.stack.Do(Make("Y")); }},
      {"Undo", [](Scene& scene) { scene.stack.Undo(); }},
      {"Redo", [](Scene& scene) { scene.stack.Redo(); }},
      {"Clear", [](Scene& scene) { scene.stack.Clear(); }},
      {"MaximumSize", [](Scene& scene) { scene.stack.MaximumSize(1); }},
  };
  for (const auto& [name, call] : calls) {
    for (int i = 0; i < 3; ++i) {
      for (const bool settles : {false, true}) {
        SCOPED_TRACE(std::string(name) + " inside " + kSteps[i].first);
        Scene scene;
        std::string refusal;
        scene.Script([&scene, &refusal, settles, back = call] {
          EXPECT_EQ(Seen(scene.stack), kBefore) << "questions are answered";
          if (!settles) back(scene);
          refusal = Refusal([&] { back(scene); });
          EXPECT_EQ(Seen(scene.stack), kBefore);
          return STATUS_SUCCESS;
        });
        const std::string outcome = Refusal([&] { kSteps[i].second(scene); });
        EXPECT_EQ(outcome.empty(), settles);
        if (!settles) refusal = outcome;
        EXPECT_EQ(refusal, "Cannot change the command stack from inside one of its commands.");
        EXPECT_EQ(Seen(scene.stack), settles ? kAfter[i] : kBefore);
        EXPECT_EQ(scene.stack.MaximumSize(), 9u);
        scene.Script([] { return STATUS_SUCCESS; });
        scene.stack.Do(Make("Z"));
        EXPECT_EQ(scene.stack.UndoLabel(), "Z") << "works as before";
      }
    }
  }
}

TEST(CommandStack, ACommandMayRunOnAnotherStack) {
  Scene inner, outer;
  outer.x->step = [&inner] { return inner.stack.Undo(); };
  EXPECT_EQ(outer.stack.Do(outer.x), STATUS_SUCCESS);
  EXPECT_EQ(Seen(inner.stack), kAfter[1]);
  EXPECT_EQ(Seen(outer.stack), kAfter[0]);
}

TEST(CommandStack, StaysAsItWasWhenThereIsNoMemoryToKeepACommand) {
  if (!vlm::testing::kAllocationsCanFail)
    GTEST_SKIP() << "the thread sanitizer keeps operator new to itself";
  int refused = 0;
  for (int done = 0; done < 40; ++done) {
    for (int undone = 0; undone <= std::min(done, 2); ++undone) {
      SCOPED_TRACE(std::to_string(done) + " done, of which undone " + std::to_string(undone));
      CommandStack stack(30);
      for (int i = 0; i < done; ++i) stack.Do(Make("A"));
      for (int i = 0; i < undone; ++i) stack.Undo();
      const std::string before = Seen(stack);
      const auto command = Make("X");
      std::optional<FailingAllocations> exhausted;
      command->step = [&exhausted] {
        exhausted.emplace();
        return STATUS_SUCCESS;
      };
      bool kept = true;
      try {
        stack.Do(command);
      } catch (const std::bad_alloc&) {
        kept = false;
      }
      exhausted.reset();
      command->step = [] { return STATUS_SUCCESS; };
      if (!kept) {
        ++refused;
        ASSERT_EQ(Seen(stack), before);
        ASSERT_EQ(command.use_count(), 1);
        ASSERT_EQ(stack.Do(command), STATUS_SUCCESS);
      }
      ASSERT_EQ(stack.UndoLabel(), "X");
      ASSERT_EQ(static_cast<int>(stack.size()), std::min(std::min(done, 30) - undone + 1, 30));
      ASSERT_FALSE(stack.Redoable());
      ASSERT_EQ(stack.Undo(), STATUS_SUCCESS);
      ASSERT_EQ(stack.RedoLabel(), "X");
    }
  }
  EXPECT_GT(refused, 3);
}

TEST(CommandStack, NeedsNoMemoryToStepOrToForget) {
  Scene scene;
  bool stepped = false;
  {
    const FailingAllocations exhausted;
    scene.stack.Undo();
    scene.stack.Redo();
    scene.stack.MaximumSize(1);
    scene.stack.Clear();
    stepped = !exhausted.HaveFailed();
  }
  EXPECT_TRUE(stepped);
}

TEST(CommandStack, ACommandThatGoesFindsTheStackWhole) {
  std::vector<std::string> seen;
  std::string refusal;
  {
    CommandStack stack(2);
    const auto watched = [&](const char* name) {
      auto command = Make(name);
      command->onDestruction = [&, name] {
        seen.push_back(name + (": " + Seen(stack)));
        refusal = Refusal([&stack] { stack.Clear(); });
      };
      return command;
    };
    for (const char* const name : {"A", "B", "C", "D"}) stack.Do(watched(name));
    EXPECT_THAT(seen, ElementsAre("A: CB", "B: DC"));
    stack.Undo();
    seen.clear();
    stack.Do(watched("E"));
    EXPECT_THAT(seen, ElementsAre("D: |C"));
    seen.clear();
    stack.MaximumSize(1);
    stack.Clear();
    EXPECT_THAT(seen, ElementsAre("C: E", "E: "));
    for (const char* const name : {"F", "G"}) stack.Do(watched(name));
    seen.clear();
  }
  EXPECT_THAT(seen, ElementsAre("G: "));
  EXPECT_EQ(refusal, "Cannot change the command stack from inside one of its commands.");
}

TEST(CommandStack, AgreesWithTwoPlainListsOnRandomSteps) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  constexpr unsigned int kLimit = 5;
  CommandStack stack(kLimit);
  std::vector<const Command*> done, undone;
  for (int round = 0; round < 20000; ++round) {
    const auto choice = random() % 8;
    if (choice < 3) {
      const auto command = Make("A");
      command->step = [success = random() % 4 != 0] {
        return success ? STATUS_SUCCESS : STATUS_CANCELED;
      };
      const bool kept = stack.Do(command) == STATUS_SUCCESS;
      command->step = [] { return STATUS_SUCCESS; };
      if (kept) {
        done.push_back(command.get());
        undone.clear();
        if (done.size() > kLimit) done.erase(done.begin());
      }
    } else if (choice < 6) {
      ASSERT_EQ(Refusal([&] { stack.Undo(); }), done.empty() ? kNothingToUndo : "");
      if (!done.empty()) {
        undone.push_back(done.back());
        done.pop_back();
      }
    } else {
      ASSERT_EQ(Refusal([&] { stack.Redo(); }), undone.empty() ? kNothingToRedo : "");
      if (!undone.empty()) {
        done.push_back(undone.back());
        undone.pop_back();
      }
    }
    std::vector<const Command*> expected(undone.begin(), undone.end()), found;
    expected.insert(expected.end(), done.rbegin(), done.rend());
    for (const auto& command : stack) found.push_back(command.get());
    ASSERT_EQ(found, expected);
    ASSERT_EQ(stack.UndoCommand().get(), done.empty() ? nullptr : done.back());
    ASSERT_EQ(stack.RedoCommand().get(), undone.empty() ? nullptr : undone.back());
  }
}

}  // namespace
}  // namespace vlm
