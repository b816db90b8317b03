#include <examples/crashlab/Trace.h>

#include <gtest/gtest.h>

namespace vlm::crashlab {
namespace {

constexpr char kDump[] =
    "Velum crash dump 1\n"
    "Application: crashlab\n"
    "\n"
    "Exception Info\n"
    "--------------\n"
    "Code = c0000005 (Access Violation)\n"
    "Address = 0x1189\n"
    "\n"
    "Stack trace\n"
    "-----------\n"
    "#0   0000000000001189  crash lab + 0x1189\n"
    "#1   00007f0000000012  libc.so.6 + 0x12\n"
    "(40 frames are left out)\n"
    "#42  0000000000000007  (no module)\n"
    "\n"
    "Loaded modules\n"
    "--------------\n"
    "0000000000000000-0000000000002000  -  /a/crash lab\n"
    "\n"
    "Last log lines\n"
    "--------------\n"
    "Sorting\n"
    "\n"
    "Stack trace\n";
constexpr char kResolved[] =
    "Code = c0000005 (Access Violation)\n"
    "\n"
    "#0   At(int) at a b.h:3, inlined into\n"
    "     Sort(int) at a.cpp:7\n"
    "#1   qsort_r  [libc.so.6 + 0x12]\n"
    "(40 frames are left out)\n"
    "#42  (no module)\n";

TEST(CrashlabTrace, HasFunctionsPlacesModulesAndTheLog) {
  const Trace trace = ReadTrace(kDump, kResolved);
  ASSERT_EQ(trace.crash.size(), 2u);
  EXPECT_EQ(trace.crash[1], "Address = 0x1189");
  ASSERT_EQ(trace.frames.size(), 5u);
  const Frame expected[] = {{"#0", "crash lab", "At(int)", "a b.h:3", false},
                            {"", "crash lab", "Sort(int)", "a.cpp:7", false},
                            {"#1", "libc.so.6", "qsort_r", "libc.so.6 + 0x12", false},
                            {"", "", "40 frames are left out", "", true},
                            {"#42", "", "", "(no module)", false}};
  for (std::size_t i = 0; i < trace.frames.size(); ++i) {
    EXPECT_EQ(trace.frames[i].number, expected[i].number) << i;
    EXPECT_EQ(trace.frames[i].module, expected[i].module) << i;
    EXPECT_EQ(trace.frames[i].function, expected[i].function) << i;
    EXPECT_EQ(trace.frames[i].place, expected[i].place) << i;
    EXPECT_EQ(trace.frames[i].isGap, expected[i].isGap) << i;
  }
  // What the log says is the log's, to its end.
  ASSERT_EQ(trace.logLines.size(), 3u);
  EXPECT_EQ(trace.logLines[2], "Stack trace");
}

TEST(CrashlabTrace, OfNothingIsEmpty) {
  for (const char* text : {"", "\n", "Stack trace", "Exception Info\n-", "Last log lines\n---"}) {
    const Trace trace = ReadTrace(text, text);
    EXPECT_TRUE(trace.crash.empty() && trace.frames.empty() && trace.logLines.empty()) << text;
  }
}

}  // namespace
}  // namespace vlm::crashlab
