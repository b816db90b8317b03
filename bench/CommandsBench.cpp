#include <velum/commands/CommandStack.h>

#include <benchmark/benchmark.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#if __has_include(<QUndoStack>)
#include <QUndoStack>
#endif

namespace {

/// A command without an effect that the compiler can't see through.
class Empty : public vlm::Command {
 public:
  std::unique_ptr<Command> Clone() const override { return std::make_unique<Empty>(*this); }

 private:
  vlm::StatusCode DoImpl() override { return vlm::STATUS_SUCCESS; }
  vlm::StatusCode UndoImpl() override { return vlm::STATUS_SUCCESS; }
  vlm::StatusCode RedoImpl() override { return vlm::STATUS_SUCCESS; }
  vlm::GString KeyImpl() const override { return "Empty"; }
  bool UndoRedoableImpl() const override { return true; }
};

/// The library's history.
class VelumHistory {
 public:
  void Do() { stack_.Do(std::make_shared<Empty>()); }
  void Undo() { stack_.Undo(); }
  void Redo() { stack_.Redo(); }

 private:
  vlm::CommandStack stack_{std::numeric_limits<unsigned int>::max()};
};

#if __has_include(<QUndoStack>)
class EmptyQt : public QUndoCommand {
 public:
  void undo() override {}
  void redo() override {}
};

/// Qt's history, which owns its commands.
class QtHistory {
 public:
  void Do() { stack_.push(new EmptyQt); }
  void Undo() { stack_.undo(); }
  void Redo() { stack_.redo(); }

 private:
  QUndoStack stack_;
};
#endif

/// The least that a history can be: shared commands in an array, and a position.
class VectorHistory {
 public:
  void Do() {
    auto command = std::make_shared<Empty>();
    if (command->Do() != vlm::STATUS_SUCCESS) return;
    commands_.resize(done_);
    commands_.push_back(std::move(command));
    ++done_;
  }
  void Undo() {
    if (commands_[done_ - 1]->Undo() != vlm::STATUS_FAILURE) --done_;
  }
  void Redo() {
    if (commands_[done_]->Redo() != vlm::STATUS_FAILURE) ++done_;
  }

 private:
  std::vector<std::shared_ptr<vlm::Command>> commands_;
  std::size_t done_ = 0;
};

/// Runs one part of the life of a history, the others untimed.
template <class History, class Before, class Timed>
void Measure(benchmark::State& state, Before before, Timed timed) {
  const auto count = state.range(0);
  for (auto _ : state) {
    state.PauseTiming();
    auto history = std::make_unique<History>();
    before(*history, count);
    state.ResumeTiming();
    timed(history, count);
    state.PauseTiming();
    history.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * count);
}

template <class History>
void DoAll(History& history, benchmark::IterationCount count) {
  for (benchmark::IterationCount i = 0; i < count; ++i) history.Do();
}

template <class History>
void UndoAll(History& history, benchmark::IterationCount count) {
  for (benchmark::IterationCount i = 0; i < count; ++i) history.Undo();
}

template <class History>
void Rows(const std::string& peer) {
  const auto row = [&peer](const char* family, auto before, auto timed) {
    const auto run = [before, timed](benchmark::State& state) {
      Measure<History>(state, before, timed);
    };
    benchmark::RegisterBenchmark((family + ("/" + peer) + "/commands").c_str(), run)
        ->Arg(1000)
        ->Arg(1000000)
        ->Unit(benchmark::kMicrosecond);
  };
  using Owner = std::unique_ptr<History>;
  const auto nothing = [](History&, auto) {};
  const auto all = [](History& history, auto count) { DoAll(history, count); };
  const auto allAndBack = [](History& history, auto count) {
    DoAll(history, count);
    UndoAll(history, count);
  };
  row("HistoryDo", nothing, [](Owner& history, auto count) { DoAll(*history, count); });
  row("HistoryUndo", all, [](Owner& history, auto count) { UndoAll(*history, count); });
  row("HistoryRedo", allAndBack, [](Owner& history, auto count) {
    for (benchmark::IterationCount i = 0; i < count; ++i) history->Redo();
  });
  row("HistoryEnd", all, [](Owner& history, auto) { history.reset(); });
  row("HistoryLife", nothing, [](Owner& history, auto count) {
    DoAll(*history, count);
    UndoAll(*history, count);
    history.reset();
  });
}

const bool added = [] {
  Rows<VelumHistory>("velum");
#if __has_include(<QUndoStack>)
  Rows<QtHistory>("qt");
#endif
  Rows<VectorHistory>("vector");
  return true;
}();

}  // namespace
