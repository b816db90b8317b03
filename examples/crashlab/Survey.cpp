#include <examples/crashlab/Survey.h>

#include <velum/commands/Command.h>
#include <velum/commands/CommandStack.h>
#include <velum/diagnostics/CrashHandler.h>
#include <velum/diagnostics/Logger.h>

#include <sys/resource.h>

#include <cstdlib>
#include <memory>

namespace vlm::crashlab {
namespace {

constexpr int kWells = 4;
double theWells[kWells] = {812.0, 455.5, 1290.0, 37.0};
const Way* theWay = nullptr;

// Compares two wells; at the third time something goes wrong.
[[gnu::noinline]] int CompareDepths(const void* a, const void* b) {
  static int calls = 0;
  if (++calls == 3) theWay->crash();
  const double difference = *static_cast<const double*>(a) - *static_cast<const double*>(b);
  return difference < 0.0 ? -1 : difference > 0.0 ? 1 : 0;
}

[[gnu::noinline]] int SortWells() {
  std::qsort(theWells, kWells, sizeof(double), &CompareDepths);
  return kWells;
}

class SortCommand final : public Command {
 public:
  std::unique_ptr<Command> Clone() const override { return std::make_unique<SortCommand>(*this); }

 private:
  StatusCode DoImpl() override {
    g_Logger.SendVA(LogInformation, "Sorting %d wells by depth", kWells);
    const int sorted = SortWells();
    g_Logger.SendVA(LogInformation, "Sorted %d wells", sorted);
    return STATUS_SUCCESS;
  }
  StatusCode UndoImpl() override { return STATUS_FAILURE; }
  StatusCode RedoImpl() override { return STATUS_FAILURE; }
  GString KeyImpl() const override { return "SortWells"; }
  bool UndoRedoableImpl() const override { return false; }
};

}  // namespace

void RunChild(const Way& way, const std::string& logPath) {
  // The dump is what this is about; a core as well would only lie about.
  const rlimit noCore{0, 0};
  ::setrlimit(RLIMIT_CORE, &noCore);
  g_Logger.SetOutputFile(logPath, false);
  g_Logger.Enable(true);
  SetCrashHandler(GString("crashlab-") + way.name);
  theWay = &way;
  g_Logger.Send(LogInformation, "Opened survey/line-07.dat");
  g_Logger.SendVA(LogInformation, "Read %d wells, %d of them without a depth", kWells + 2, 2);
  g_Logger.Send(LogFailure, "No face 'Optima'; labels are set in 'Arial'");
  CommandStack history(10);
  history.Do(std::make_shared<SortCommand>());
}

}  // namespace vlm::crashlab
