#include <velum/core/Exception.h>
#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/MachineInfo.h>
#include <velum/diagnostics/test/Environment.h>
#include <velum/platform/Types.h>
#include <velum/platform/detail/FloatingPointUnit.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>

#include <unistd.h>

namespace vlm {
namespace {

using test::Environment;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;

using Report = void (CLogger::*)();

std::string TextOf(Report report) {
  CLogger log;
  (log.*report)();
  return log.GetBuffer();
}

TEST(LoggerReports, SectionsHaveTheirTitlesRulesAndLines) {
  struct Row {
    Report report;
    const char* text;  // Lines that a machine may not have are optional.
  };
  for (const Row& row :
       {Row{&CLogger::Time,
            "Current time is [0-2][0-9]:[0-5][0-9]:[0-6][0-9] on [01][0-9]/[0-3][0-9]/[0-9]{2}\n"},
        Row{&CLogger::OSVersion,
            "Operating System\n----------------\nOperating system is .+, Version [0-9]+[.][0-9]+, "
            "build [0-9]+\nTemp directory = '.+\\\\'\nAppData directory = '(.+\\\\|unknown)'\n\n"},
        Row{&CLogger::VideoInfo,
            "Video Configuration\n-------------------\nDisplay name = .+\n"
            "(Number of monitors = [0-9]+\n)?(Screen resolution = [0-9]+ x [0-9]+\n)?"
            "(Virtual screen resolution = [0-9]+ x [0-9]+\n)?(Bits per pixel = [0-9]+\n)?\n"},
        Row{&CLogger::Processor,
            "Processor Configuration\n-----------------------\n(Vendor identifier = [^ ].*\n)?"
            "(Processor name string = [^ ].*[^ ]\n)?(Identifier = .+\n)?"
            "Number of processors = [1-9][0-9]*\nActive processor mask = [0-9a-f]{8,16}\n\n"},
        Row{&CLogger::Memory,
            "Memory Configuration\n--------------------\nMemory in use = [0-9]{1,3}%\n"
            "Physical memory = [0-9]+ MB\nFree memory = [0-9]+ MB\nPaging file size = [0-9]+ MB\n"
            "Paging file free = [0-9]+ MB\nVirtual memory size = [0-9]+ MB\n"
            "Virtual memory free = [0-9]+ MB\n\n"}}) {
    EXPECT_THAT(TextOf(row.report), MatchesRegex(row.text));
  }
  const auto bytes = static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES)) *
                     static_cast<std::uint64_t>(::sysconf(_SC_PAGE_SIZE));
  EXPECT_THAT(TextOf(&CLogger::Memory),
              HasSubstr("\nPhysical memory = " + std::to_string(bytes >> 20) + " MB\n"));
  // What a process starts with: all exceptions masked, 64 bits of precision.
  const std::string word = "Floating point control word = 0000037f\n";
  EXPECT_EQ(TextOf(&CLogger::Coprocessor),
            "Coprocessor Configuration\n-------------------------\n" +
                (platform::FloatingPointControlWord() ? word : "") + "\n");
  EXPECT_THAT(TextOf(&CLogger::OSVersion), HasSubstr(GetOSNameAndVersion()));
}

TEST(LoggerReports, FoldersThatAreNotThereAreUnknown) {
  const Environment temporary("TMPDIR", "/velum that is nowhere");
  const Environment settings("XDG_CONFIG_HOME", "/velum that is nowhere");
  EXPECT_THAT(TextOf(&CLogger::OSVersion),
              HasSubstr("\nTemp directory = 'unknown'\nAppData directory = 'unknown'\n"));
  setenv("TMPDIR", "/usr/", 1);
  setenv("XDG_CONFIG_HOME", "/usr", 1);
  EXPECT_THAT(TextOf(&CLogger::OSVersion),
              HasSubstr("\nTemp directory = '\\usr\\'\nAppData directory = '\\usr\\'\n"));
}

TEST(LoggerReports, TextsFromElsewhereBreakNoLine) {
  const Environment display("WAYLAND_DISPLAY", "a\n\nFake Section\x1b[2J");
  EXPECT_THAT(TextOf(&CLogger::VideoInfo), HasSubstr("\nDisplay name = a??Fake Section?[2J\n"));
}

TEST(LoggerReports, ModulesAreListedWithVersionTimeAndSize) {
  const std::string text = TextOf(&CLogger::EnumModules);
  EXPECT_THAT(text, ContainsRegex("^Loaded Modules \\(path, version, time, size\\)\n-{42}\n"));
  EXPECT_THAT(text, ContainsRegex("\n[^ ]*libvelum[.]so[^ ]* +[^ ]+ +"
                                  "[01][0-9]:[0-5][0-9][ap]m [0-9]{2}/[0-9]{2}/[0-9]{4} [0-9]+\n"));
  EXPECT_THAT(text, ContainsRegex("\n[^ ]*libc[.]so[.]6 +[0-9.]+ +"));
}

TEST(LoggerReports, AllOfThemComeInTheirOrder) {
  const std::string text = TextOf(&CLogger::LogAllConfigInfo);
  std::size_t last = 0;
  for (const char* title :
       {"Current time is", "\nOperating System\n", "\nVideo Configuration\n",
        "\nProcessor Configuration\n", "\nCoprocessor Configuration\n", "\nMemory Configuration\n",
        "\nLoaded Modules (path, version, time, size)\n"}) {
    const std::size_t at = text.find(title);
    ASSERT_NE(at, text.npos) << title;
    EXPECT_GE(at, last) << title;
    last = at;
  }
  EXPECT_EQ(text.find("\n\n\n"), text.npos);
}

std::string TextOf(EXCEPTION_RECORD record) {
  CLogger log;
  EXCEPTION_POINTERS pointers{&record, nullptr};
  log.Exception(&pointers);
  return log.GetBuffer();
}

TEST(LoggerReports, ExceptionTellsCodeAccessFlagsAndAddress) {
  EXCEPTION_RECORD record{};
  record.ExceptionCode = EXCEPTION_ACCESS_VIOLATION;
  record.ExceptionFlags = 1;
  record.ExceptionAddress = reinterpret_cast<void*>(std::uintptr_t{0x401a2b});
  record.NumberParameters = 2;
  record.ExceptionInformation[0] = 8;
  record.ExceptionInformation[1] = 0xdeadbeef;
  const std::string title = "Exception Info\n--------------\n";
  EXPECT_EQ(TextOf(record), title +
                                "Code = c0000005 (Access Violation)\n"
                                "Attempt to write at address 0xdeadbeef\n"
                                "Flags = 00000001\nAddress = 0x401a2b\n\n");
  record.NumberParameters = 1;
  EXPECT_EQ(TextOf(record).find("Attempt"), std::string::npos) << "one parameter";
  record.NumberParameters = 2;
  record.ExceptionCode = 0xC0000006;
  EXPECT_EQ(TextOf(record), title +
                                "Code = c0000006 (Paging error)\n"
                                "Flags = 00000001\nAddress = 0x401a2b\n\n");
}

TEST(LoggerReports, ExceptionNamesTheCodes) {
  struct Row {
    std::uint32_t code;
    const char* name;
  };
  for (const Row& row :
       {Row{0x80000002, "80000002 (Misalignment)"}, Row{0x80000004, "80000004 (SingleStep)"},
        Row{0xC0000026, "c0000026 (Invalid Disposition)"},
        Row{0xC000008C, "c000008c (Bounds Exceeded)"},
        Row{0xC0000093, "c0000093 (Float: Undeflow)"},
        Row{0xC0000096, "c0000096 (Privileged Instruction Encountered)"},
        Row{0xC00000FD, "c00000fd (Stack Overflow)"}, Row{0xC00000FE, "c00000fe (Unknown)"},
        Row{0, "00000000 (Unknown)"}}) {
    EXCEPTION_RECORD record{};
    record.ExceptionCode = row.code;
    EXPECT_THAT(TextOf(record), HasSubstr(std::string("Code = ") + row.name + "\n"));
  }
}

TEST(LoggerReports, ExceptionAsksForARecordUnlessDisabled) {
  CLogger log;
  EXCEPTION_POINTERS none{};
  for (EXCEPTION_POINTERS* pointers : {static_cast<EXCEPTION_POINTERS*>(nullptr), &none}) {
    try {
      log.Exception(pointers);
      ADD_FAILURE();
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
    }
  }
  log.Enable(false);
  log.Exception(nullptr);
  log.LogAllConfigInfo();
  EXPECT_EQ(log.GetBuffer(), "");
}

TEST(LoggerReports, LinesHaveTheirTypes) {
  CLogger log(GString(), LogInformation);
  EXCEPTION_RECORD record{};
  EXCEPTION_POINTERS pointers{&record, nullptr};
  log.Exception(&pointers);
  EXPECT_EQ(log.GetBuffer(), "Exception Info\n--------------\n\n");
  log.EmptyBuffer();
  log.SetType(LogAlert);
  log.Coprocessor();
  EXPECT_EQ(log.GetBuffer(), "Coprocessor Configuration\n-------------------------\n\n");
}

}  // namespace
}  // namespace vlm
