#include <velum/diagnostics/CrashHandler.h>
#include <velum/diagnostics/test/crash/CrashRun.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

// Whatever a test expects here is what a child process has left: its log, its dump, its end. The
// sanitizers' own handlers give way to the library's, whose code they watch; a child crashes in
// code that they leave alone. A row that they change is left out there, with its reason.

namespace vlm {
namespace {

using test::CrashRun;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;

#ifdef __has_feature
constexpr bool kHasAddressSanitizer = __has_feature(address_sanitizer);
constexpr bool kHasThreadSanitizer = __has_feature(thread_sanitizer);
#else
constexpr bool kHasAddressSanitizer = false;
constexpr bool kHasThreadSanitizer = false;
#endif

constexpr int kExit = 128;

struct Way {
  const char* name;
  int signal;
  const char* code;  // As the log has it.
  const char* signalInfo;
  const char* more = "";  // A line besides.
};

const std::vector<Way>& Ways() {
  static const std::vector<Way> ways{
      {"null-write", SIGSEGV, "c0000005 \\(Access Violation\\)", "SIGSEGV, SEGV_MAPERR",
       "Attempt to write at address \\(nil\\)\n"},
      {"null-read", SIGSEGV, "c0000005 \\(Access Violation\\)", "SIGSEGV, SEGV_MAPERR",
       "Attempt to read at address \\(nil\\)\n"},
      {"null-call", SIGSEGV, "c0000005 \\(Access Violation\\)", "SIGSEGV, SEGV_MAPERR",
       "Attempt to read at address \\(nil\\)\n"},
      // The processor does not tell an address that can't be one.
      {"wild-read", SIGSEGV, "c0000005 \\(Access Violation\\)", "SIGSEGV, SI_KERNEL",
       "Attempt to read at address 0xffffffffffffffff\n"},
      {"stack-overflow", SIGSEGV, "c00000fd \\(Stack Overflow\\)", "SIGSEGV, SEGV_"},
      {"thread-stack-overflow", SIGSEGV, "c00000fd \\(Stack Overflow\\)", "SIGSEGV, SEGV_ACCERR"},
      {"large-frame-overflow", SIGSEGV, "c00000fd \\(Stack Overflow\\)", "SIGSEGV, SEGV_"},
      {"raised-stack-overflow", SIGSEGV, "c00000fd \\(Stack Overflow\\)", "SIGSEGV, SEGV_"},
      {"own-stack", SIGSEGV, "c0000005 \\(Access Violation\\)", "SIGSEGV, SEGV_MAPERR"},
      {"thread-null-write", SIGSEGV, "c0000005 \\(Access Violation\\)", "SIGSEGV, SEGV_MAPERR"},
      {"kill", SIGSEGV, "c0000005 \\(Access Violation\\)",
       "SIGSEGV, SI_USER\\) from process [0-9]+"},
      {"bus", SIGBUS, "c0000006 \\(Paging error\\)", "SIGBUS, BUS_ADRERR"},
      {"divide", SIGFPE, "c0000094 \\(Integer Division by Zero\\)", "SIGFPE, FPE_INTDIV"},
      {"float-divide", SIGFPE, "c000008e \\(Float: Division by Zero\\)", "SIGFPE, FPE_FLTDIV"},
      {"illegal", SIGILL, "c000001d \\(Illegal Instruction Encountered\\)", "SIGILL, ILL_ILLOPN"},
      {"breakpoint", SIGTRAP, "80000003 \\(Breakpoint\\)", "SIGTRAP, SI_KERNEL"},
      {"abort", SIGABRT, "c0000025 \\(Noncontinuable Exception\\)", "SIGABRT, SI_TKILL"},
      {"throw", SIGABRT, "e06d7363 \\(Unknown\\)", "SIGABRT, SI_TKILL",
       "Uncaught exception = std::runtime_error: no wells\\?at all\n"},
      {"throw-velum", SIGABRT, "e06d7363 \\(Unknown\\)", "SIGABRT, SI_TKILL",
       "Uncaught exception = vlm::Exception: Unable to find 'Colors.ini'.\n"},
      {"throw-number", SIGABRT, "e06d7363 \\(Unknown\\)", "SIGABRT, SI_TKILL",
       "Uncaught exception = int: an object that tells nothing\n"},
      {"throw-through-noexcept", SIGABRT, "e06d7363 \\(Unknown\\)", "SIGABRT, SI_TKILL",
       "Uncaught exception = std::out_of_range: no row 12\n"},
      {"terminate", SIGABRT, "e06d7363 \\(Unknown\\)", "SIGABRT, SI_TKILL",
       "Uncaught exception = std::terminate was called without an exception\n"},
      // What asks the exception crashes: its type is known.
      {"throw-crashing-text", SIGABRT, "e06d7363 \\(Unknown\\)", "SIGABRT, SI_TKILL",
       "Uncaught exception = .*CrashingText\n"},
      {"log-callback", SIGSEGV, "c0000005 \\(Access Violation\\)", "SIGSEGV, SEGV_MAPERR"},
      {"log-is-locked", SIGSEGV, "c0000005 \\(Access Violation\\)", "SIGSEGV, SEGV_MAPERR"},
  };
  return ways;
}

TEST(CrashHandler, ReportsEveryWayToCrashInTheLogAndInTheDump) {
  for (const Way& way : Ways()) {
    SCOPED_TRACE(way.name);
    const CrashRun run(way.name);
    EXPECT_EQ(run.ExitStatus(), kExit + way.signal) << run.Said();
    const std::string info = std::string("Code = ") + way.code + "\n(.*\n)*Flags = 0000000[01]\n" +
                             "Address = .*\n(.*\n)*Signal = [0-9]* \\(" + way.signalInfo;
    const std::string log = run.Log();
    EXPECT_THAT(log, ContainsRegex("^Loaded 12 wells\n(never ends\n|crashes\n)?\n"
                                   "Exception Info\n--------------\n" +
                                   info));
    EXPECT_THAT(log, ContainsRegex(way.more));
    EXPECT_THAT(log, HasSubstr("\n\nSaved dump file to '" + run.Path("Child.dmp") + "'\n"));
    EXPECT_EQ(run.Said(), "Child: Saved dump file to '" + run.Path("Child.dmp") + "'\n");

    const std::string dump = run.Dump();
    EXPECT_THAT(dump, ContainsRegex("^Velum crash dump 1\nApplication: Child\nTime: 2[0-9]*-"));
    EXPECT_THAT(dump, ContainsRegex("\nProcess: " + std::to_string(run.Process()) + ", "));
    EXPECT_THAT(dump, ContainsRegex("\nException Info\n--------------\n" + info));
    EXPECT_THAT(dump, ContainsRegex(way.more));
    EXPECT_THAT(dump, ContainsRegex("\nRegisters\n---------\nrax    = [0-9a-f]{16}\n"));
    EXPECT_THAT(dump, ContainsRegex("\nStack trace\n-----------\n#0   [0-9a-f]{16}  "));
    EXPECT_THAT(dump, ContainsRegex("\n#[0-9]+ +[0-9a-f]{16}  (child|libc[.]so[.]6) [+] 0x"));
    EXPECT_THAT(dump, ContainsRegex("\n[0-9a-f]{16}-[0-9a-f]{16}  [0-9a-f]{40}  " +
                                    run.Path("child") + "\n"));
    EXPECT_THAT(dump, ContainsRegex("\nLast log lines\n--------------\nLoaded 12 wells\n"));
    EXPECT_THAT(dump, Not(HasSubstr("is lost")));
  }
}

TEST(CrashHandler, TraceLeadsFromTheInstructionToWhereTheThreadBegan) {
  struct Row {
    const char* way;
    const char* trace;
  };
  for (const Row& row :
       {Row{"null-write", "#0   [0-9a-f]*  child [+].*\n(.*child [+].*\n)+.*libc.so.6 [+]"},
        // Nothing can be walked from where no code is; the caller can.
        Row{"null-call",
            "#0   0000000000000000  \\(no module\\)\n#1   [0-9a-f]*  child [+].*\n"
            "#2   [0-9a-f]*  child [+].*\n.*libc.so.6 [+]"},
        Row{"abort", "#0   [0-9a-f]*  libc.so.6 [+].*\n(.*libc.so.6 [+].*\n)+.*child [+]"},
        Row{"stack-overflow",
            "#99  [0-9a-f]*  child [+] 0x[0-9a-f]*\n"
            "\\([0-9]+ frames are left out\\)\n#[0-9]{4,} [0-9a-f]*  child [+]"},
        // The walk ends where the stack is damaged.
        Row{"smashed-stack",
            "#0   [0-9a-f]*  child [+] 0x[0-9a-f]*\n"
            "\\(the rest could not be walked\\)\n\nLoaded modules\n"},
        Row{"thread-stack-overflow", "frames are left out\\)\n(#.*\n)*.*libc.so.6 [+]"}}) {
    EXPECT_THAT(CrashRun(row.way).Dump(), ContainsRegex(row.trace)) << row.way;
  }
}

TEST(CrashHandler, LeavesNoFileAndDiesBySignalOnNo) {
  const CrashRun run("null-write", {"question=no"});
  EXPECT_EQ(run.Signal(), SIGSEGV);
  EXPECT_THAT(run.Log(), HasSubstr("Code = c0000005 (Access Violation)"));
  EXPECT_EQ(run.Dump(), "");
  EXPECT_EQ(run.Said(), "");
  EXPECT_EQ(CrashRun("abort", {"question=no"}).Signal(), SIGABRT);
  EXPECT_EQ(CrashRun("thread-null-write", {"question=no"}).Signal(), SIGSEGV);
  EXPECT_EQ(CrashRun("kill", {"question=no"}).Signal(), SIGSEGV);
}

TEST(CrashHandler, AsksAtTheTerminal) {
  const std::string question =
      "\aChild: An unrecoverable error has occurred.  Would you like to save a diagnostic file? "
      "[Y/n] ";
  struct Row {
    const char* typed;
    bool isSaved;
  };
  for (const Row& row :
       {Row{"n\n", false}, Row{"No\n", false}, Row{" n\n", false}, Row{"y\n", true},
        Row{"\n", true}, Row{"what?\nn\n", false}, Row{"\x04", true}}) {  // The end of input.
    SCOPED_TRACE(row.typed);
    const CrashRun run("null-write", {}, row.typed);
    EXPECT_THAT(run.Said(), HasSubstr(question));
    EXPECT_EQ(run.Dump() != "", row.isSaved);
    EXPECT_EQ(run.Signal(), row.isSaved ? 0 : SIGSEGV);
  }
}

TEST(CrashHandler, CrashInItsOwnCourseCostsThatStepAlone) {
  struct Row {
    const char* way;
    const char* question;
  };
  for (const Row& row : {Row{"null-write", "crash"}, Row{"abort", "crash"},
                         Row{"null-write", "abort"}, Row{"stack-overflow", "crash"},
                         // The report goes on from frames that the overflow must not have touched.
                         Row{"null-write", "overflow"}, Row{"thread-null-write", "overflow"},
                         Row{"thread-stack-overflow", "overflow"}}) {
    // Gives every thread a stack for handlers, which the library then has to leave.
    if (kHasAddressSanitizer && row.way == std::string("thread-null-write")) continue;
    SCOPED_TRACE(row.way);
    const CrashRun run(row.way, {std::string("question=") + row.question});
    EXPECT_GE(run.ExitStatus(), kExit);
    EXPECT_THAT(run.Dump(), HasSubstr("Last log lines"));
    EXPECT_THAT(run.Dump(), HasSubstr(run.Path("child")));
    EXPECT_THAT(run.Log(), HasSubstr("Saved dump file"));
  }
}

TEST(CrashHandler, StepThatNeverReturnsIsLeft) {
  struct Row {
    const char* way;
    std::vector<std::string> options;
    int signal;
    const char* told;
  };
  for (const Row& row : {Row{"beside-read", {"alert=hang"}, SIGSEGV, "SIGSEGV"},
                         Row{"beside-signal-thread", {"alert=hang"}, SIGSEGV, "SIGSEGV"},
                         Row{"throw-hanging-text", {}, SIGABRT, "HangingText\n"}}) {
    SCOPED_TRACE(row.way);
    const CrashRun run(row.way, row.options);
    EXPECT_EQ(run.ExitStatus(), kExit + row.signal);
    EXPECT_THAT(run.Dump(), HasSubstr(row.told));
    EXPECT_THAT(run.Dump(), HasSubstr("Last log lines"));
    EXPECT_LT(run.Time().count(), 30.0);
  }
}

TEST(CrashHandler, ManyThreadsThatCrashAtOnceLeaveOneReport) {
  for (int round = 0; round < 5; ++round) {
    const CrashRun run("many-threads");
    EXPECT_EQ(run.ExitStatus(), kExit + SIGSEGV);
    const std::string log = run.Log();
    EXPECT_EQ(log.find("Exception Info"), log.rfind("Exception Info")) << log;
    EXPECT_THAT(run.Dump(), HasSubstr("Last log lines"));
  }
}

TEST(CrashHandler, FileThatCantBeMadeOrFilledIsTold) {
  struct Row {
    const char* why;
    std::vector<std::string> options;
    const char* text;
    int error;
  };
  for (const Row& row :
       {Row{"a folder that may not be written",
            {"drop=1", "append=1"},
            "Failed to create dump file '",
            EACCES},
        Row{"a name that is too long",
            {"app=" + std::string(300, 'x')},
            "Failed to create dump file '",
            ENAMETOOLONG},
        Row{"a full disk", {"room=1000"}, "Failed to save dump file to '", EFBIG},
        Row{"a folder of its name", {"blocked=1"}, "Failed to save dump file to '", EISDIR}}) {
    SCOPED_TRACE(row.why);
    const CrashRun run("null-write", row.options);
    EXPECT_EQ(run.Signal(), SIGSEGV);
    EXPECT_THAT(run.Said(), HasSubstr(row.text + run.Path("")));
    EXPECT_THAT(run.Said(), HasSubstr("' (error " + std::to_string(row.error) + ")\n"));
    EXPECT_THAT(run.Log(), HasSubstr(row.text));
  }
}

TEST(CrashHandler, TakesItsNameFromTheProgramOrTheApplication) {
  const CrashRun unnamed("null-write", {"app="});
  EXPECT_EQ(unnamed.Said(), "child: Saved dump file to '" + unnamed.Path("child.dmp") + "'\n");
  const CrashRun dotted("null-write", {"app=Gridder 8.2", "alert=tell"});
  EXPECT_EQ(dotted.Said(),
            "[Gridder 8.2] Saved dump file to '" + dotted.Path("Gridder 8.2.dmp") + "'\n");
  const CrashRun folders("null-write", {"app=..\\a/b"});
  EXPECT_EQ(folders.Said(), "..\\a/b: Saved dump file to '" + folders.Path(".._a_b.dmp") + "'\n");
}

TEST(CrashHandler, DumpIsForItsOwnerAndFollowsNoLink) {
  const CrashRun run("null-write");
  struct stat status {};
  ASSERT_EQ(::stat(run.Path("Child.dmp").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0600u);
  const CrashRun linked("null-write", {"linked=1"});
  EXPECT_THAT(linked.Dump(), HasSubstr("Last log lines"));
  EXPECT_FALSE(std::filesystem::is_symlink(linked.Path("Child.dmp")));
  EXPECT_FALSE(std::filesystem::exists(linked.Path("a.log.victim")));
}

TEST(CrashHandler, WholeDumpAloneReplacesAnOldOne) {
  const CrashRun whole("null-write", {"old=1"});
  EXPECT_THAT(whole.Dump(), HasSubstr("Last log lines"));
  struct stat status {};
  ASSERT_EQ(::stat(whole.Path("Child.dmp").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777u, 0600u);
  const CrashRun half("null-write", {"old=1", "room=1000"});
  EXPECT_EQ(half.Dump(), "old");
  EXPECT_FALSE(std::filesystem::exists(half.Path("Child.dmp.new")));
}

TEST(CrashHandler, ChildrenOfTheReportEndBySignalAndOthersReport) {
  // The question's child crashes; it is the parent's report that goes on.
  const CrashRun asked("null-write", {"question=fork"});
  EXPECT_EQ(asked.ExitStatus(), kExit + SIGSEGV);
  EXPECT_THAT(asked.Dump(), HasSubstr("SIGSEGV"));
  EXPECT_THAT(asked.Said(), HasSubstr("child ended by signal"));
  EXPECT_LT(asked.Time().count(), 10.0);
  // A child that shares its parent's memory leaves it able to report.
  const CrashRun shared("vfork");
  EXPECT_EQ(shared.ExitStatus(), kExit + SIGABRT);
  EXPECT_THAT(shared.Log(), HasSubstr("SIGSEGV"));
  EXPECT_THAT(shared.Log(), HasSubstr("SIGABRT"));
}

TEST(CrashHandler, LogsByTheRulesOfTheLogger) {
  // A file that nobody has opened yet is opened, and begins as it would have.
  const CrashRun early("null-write", {"early=1"});
  EXPECT_THAT(early.Read("a.log"),
              MatchesRegex("\nException Info\n--------------\nCode = (.*\n)*"));
  // Alerts that are not in the mask are left out, as SendVA does; a separator asks no mask.
  const CrashRun masked("null-write", {"mask=4"});
  EXPECT_THAT(masked.Log(), MatchesRegex("Loaded 12 wells\n\nException Info\n--------------\n\n"
                                         "Saved dump file to '.*'\n"));
  // A log that is not enabled gets nothing.
  const CrashRun none("null-write", {"log="});
  EXPECT_EQ(none.ExitStatus(), kExit + SIGSEGV);
}

TEST(CrashHandler, ThreadWithoutAStackForItOverflowsUnreported) {
  if (kHasAddressSanitizer) GTEST_SKIP() << "gives every thread such a stack";
  const CrashRun run("bare-thread-stack-overflow");
  EXPECT_EQ(run.Signal(), SIGSEGV);
  EXPECT_EQ(run.Dump(), "");
}

TEST(CrashHandler, AsksForNoMemoryWhoseLockIsHeld) {
  if (kHasAddressSanitizer || kHasThreadSanitizer) GTEST_SKIP() << "has a heap of its own";
  const CrashRun run("heap-overrun");
  EXPECT_EQ(run.ExitStatus(), kExit + SIGABRT);
  EXPECT_THAT(run.Said(), HasSubstr("corrupted top size"));
  EXPECT_THAT(run.Dump(), HasSubstr("Last log lines"));
}

TEST(CrashHandler, ThreadThatSetsItGivesItsStackBackAtItsEnd) {
  if (kHasThreadSanitizer) GTEST_SKIP() << "keeps memory of its own for each thread";
  const CrashRun run("set-in-threads");
  EXPECT_EQ(run.ExitStatus(), 0);
}

TEST(CrashStack, GivesBackWhatTheThreadHadBefore) {
  stack_t before{};
  ASSERT_EQ(::sigaltstack(nullptr, &before), 0);
  {
    const CrashStack outer;
    stack_t given{};
    ::sigaltstack(nullptr, &given);
    EXPECT_NE(given.ss_sp, before.ss_sp);
    { const CrashStack inner; }
    stack_t again{};
    ::sigaltstack(nullptr, &again);
    EXPECT_EQ(again.ss_sp, given.ss_sp);
  }
  stack_t after{};
  ::sigaltstack(nullptr, &after);
  EXPECT_EQ(after.ss_sp, before.ss_sp);
  EXPECT_EQ(after.ss_flags, before.ss_flags);
}

}  // namespace
}  // namespace vlm
