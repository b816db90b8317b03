#include <velum/core/Exception.h>
#include <examples/common/HtmlParts.h>
#include <examples/worksheet/Page.h>
#include <examples/worksheet/Progress.h>
#include <examples/worksheet/Settings.h>
#include <examples/worksheet/Sheet.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace vlm::worksheet {
namespace {

Sheet Read(const std::string& text, const Settings& settings = {}) {
  std::istringstream stream(text);
  std::ostringstream shown;
  TerminalProgress progress(shown);
  return ReadSheet(stream, settings, progress, static_cast<double>(text.size()));
}

TEST(WorksheetTypes, ANumberHasTheNarrowestTypeThatHoldsIt) {
  const struct {
    const char* text;
    double number;
    PrimType type;
  } rows[] = {
      {"0", 0, PrimUInt8},
      {"255", 255, PrimUInt8},
      {"-1", -1, PrimInt8},
      {"256", 256, PrimUInt16},
      {"-129", -129, PrimInt16},
      {"65536", 65536, PrimUInt32},
      {"-40000", -40000, PrimInt32},
      {"5e9", 5e9, PrimInt64},
      {"1e20", 1e20, PrimFloat},
      {"1.50", 1.5, PrimFloat},
      {"0.001234", 0.001234, PrimFloat},
      {"1.234567", 1.234567, PrimDouble},
      {"1.5e-300", 1.5e-300, PrimDouble},
  };
  for (const auto& row : rows) EXPECT_EQ(NarrowestType(row.text, row.number), row.type) << row.text;
}

TEST(WorksheetSheet, ColumnsTellWhatTheyHold) {
  const Sheet sheet = Read("a,b,c,d,e\n1,x,0.5,,7\n-2,,123456789,n/a,y\n300,z,,,\n");
  const struct {
    std::size_t numbers, texts, empty;
    const char* type;
  } rows[] = {{3, 0, 0, "Signed 32 bits"},
              {0, 2, 1, ""},
              {2, 0, 1, "Double (64 bits)"},
              {0, 0, 3, ""},
              {1, 1, 1, "Unsigned 8 bits"}};
  ASSERT_EQ(sheet.rows, 3u);
  for (std::size_t i = 0; i < 5; ++i) {
    const SheetColumn& column = sheet.columns[i];
    EXPECT_EQ(column.numbers, rows[i].numbers) << i;
    EXPECT_EQ(column.texts, rows[i].texts) << i;
    EXPECT_EQ(column.empty, rows[i].empty) << i;
    EXPECT_STREQ(column.type ? column.type->Name() : "", rows[i].type) << i;
  }
  EXPECT_EQ(sheet.cells.GetRow(1), (std::vector<std::string>{"-2", "", "123456789", "", "y"}));
  EXPECT_EQ(NumbersOf(sheet, 0), (std::vector<double>{1, -2, 300}));
}

TEST(WorksheetSheet, WhatIsNoTableIsRefused) {
  const auto fault = [](const std::string& text, const Settings& settings = {}) -> std::string {
    try {
      static_cast<void>(Read(text, settings));
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "";
  };
  Settings twice;
  twice.columns = {{"a", "a", "", true}, {"a", "b", "", true}};
  EXPECT_EQ(fault(""), "the file is empty");
  EXPECT_EQ(fault("a,b\n", twice), "the column 'a' is asked for twice");
  EXPECT_EQ(fault("b,c\n", twice), "there is no column 'a' among the 2");
  EXPECT_EQ(fault("a,a\n1,2\n"), "");
}

TEST(WorksheetProgress, AnInterruptEndsTheReading) {
  std::string lines = "a\n";
  for (int i = 0; i < 3000; ++i) lines += "1\n";
  std::istringstream stream(lines);
  std::ostringstream shown;
  TerminalProgress progress(shown);
  std::raise(SIGINT);
  EXPECT_THROW(static_cast<void>(ReadSheet(stream, {}, progress, 6000)), UserAbortException);
  EXPECT_NE(shown.str().find("Reading: 0 %"), std::string::npos);
}

TEST(WorksheetSettings, AFileTellsTheColumns) {
  const testing::TemporaryFolder folder;
  const auto read = [&](const std::string& text) {
    std::ofstream(folder.Path("s.xml")) << text;
    return ReadSettings(folder.Path("s.xml"));
  };
  const Settings settings = read(
      "<?xml version=\"1.0\"?><worksheet title=\"A &amp; B\" delimiter=tab rows=3>"
      "<column name=\"x\" unit=\"m\" chart=\"no\"/><note>&lt; 3</note></worksheet>");
  EXPECT_EQ(settings.title, "A & B");
  EXPECT_EQ(settings.delimiter, '\t');
  EXPECT_EQ(settings.rows, 3u);
  ASSERT_EQ(settings.columns.size(), 1u);
  EXPECT_EQ(settings.columns[0].title, "x");
  EXPECT_FALSE(settings.columns[0].chart);
  EXPECT_EQ(settings.notes, std::vector<std::string>{"< 3"});
  const struct {
    const char* text;
    const char* fault;
  } rows[] = {
      {"<a/>", "one element <worksheet> is needed"},
      {"<worksheet colour=red/>", "<worksheet> has no attribute 'colour'"},
      {"<worksheet rows=many/>", "rows are a number up to 1000, not 'many'"},
      {"<worksheet delimiter=ab/>", "a delimiter is one byte or tab, not 'ab'"},
      {"<worksheet><column/></worksheet>", "a column needs its name"},
      {"<worksheet><column name=a chart=2/></worksheet>", "a chart is yes or no, not '2'"},
      {"<worksheet><row/></worksheet>", "what is <row>? a worksheet has columns and notes"},
  };
  for (const auto& row : rows) {
    try {
      static_cast<void>(read(row.text));
      ADD_FAILURE() << row.text;
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(error.what(), folder.Path("s.xml") + ": " + row.fault);
    }
  }
  EXPECT_THROW(static_cast<void>(read("<worksheet></a>")), Exception);
}

TEST(WorksheetPage, WhatTheFileHoldsIsEscaped) {
  const Sheet sheet = Read("<b>,n\n\"a & \"\"b\"\"\",1\n");
  std::ostringstream page;
  WritePage(page, sheet, {}, "<i>.csv", {});
  EXPECT_EQ(page.str().find("<b>"), std::string::npos);
  EXPECT_EQ(page.str().find("<i>"), std::string::npos);
  EXPECT_NE(page.str().find("a &amp; &quot;b&quot;"), std::string::npos);
}

TEST(HtmlEscape, EveryTextBecomesAscii) {
  const struct {
    std::string text;
    const char* html;
  } rows[] = {
      {"a\tb\n'", "a\tb\n'"},
      {"<&>\"", "&lt;&amp;&gt;&quot;"},
      {"\xC3\xBC \xE2\x82\xAC \xF0\x9F\x98\x80", "&#252; &#8364; &#128512;"},
      {"\xFF\x01\x7F", "&#65533;&#65533;&#65533;"},
      {std::string("a\0b\0", 4), "a&#65533;b&#65533;"},
  };
  for (const auto& row : rows) EXPECT_EQ(examples::HtmlEscape(row.text), row.html);
}

}  // namespace
}  // namespace vlm::worksheet
