#include <velum/files/HtmlReport.h>

#include <testing/FileBytes.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iomanip>
#include <iterator>
#include <locale>
#include <sstream>
#include <string>
#include <utility>

namespace vlm {
namespace {

template <class Tag>
std::string Written(const Tag& tag) {
  std::ostringstream out;
  // None of this is to show in a tag.
  out << std::hex << std::showpos << std::setfill('*') << std::setw(40) << tag;
  return out.str();
}

const CoreAttrib kCore("i", "c", "s", "t");
constexpr char kCoreText[] = R"( ID="i" CLASS="c" STYLE="s" TITLE="t")";
const RowAttrib kRow("i", "c", "s", "t", "al", "ch", "co", "va");
const std::string kRowText =
    std::string(kCoreText) + R"( ALIGN="al" CHAR="ch" CHAROFF="co" VALIGN="va")";

TEST(HtmlTags, AttributesWriteWhatIsNotEmptyInTheirOrder) {
  CoreAttrib id;
  EXPECT_EQ(Written(id), "");
  id.id = "x";
  EXPECT_EQ(Written(id), R"( ID="x")");
  EXPECT_EQ(Written(kCore), kCoreText);
  EXPECT_EQ(Written(kRow), kRowText);
  const auto expect = [](auto attributes, const std::string& text) {
    EXPECT_EQ(Written(attributes), text);
    attributes.clear();
    EXPECT_EQ(Written(attributes), "");
  };
  expect(ImageAttrib("i", "c", "s", "t", "sr", "al", "lo", "wi", "he", "us", "is"),
         std::string(kCoreText) + R"( SRC="sr" ALT="al" LONGDESC="lo" WIDTH="wi" HEIGHT="he")"
                                  R"( USEMAP="us" ISMAP="is")");
  expect(ColAttrib("i", "c", "s", "t", "al", "ch", "co", "va", "2", "50%"),
         kRowText + R"( SPAN="2" WIDTH="50%")");
  expect(CellAttrib("i", "c", "s", "t", "al", "ch", "co", "va", "2", "3", "h", "a", "row", "x"),
         kRowText + R"( ROWSPAN="2" COLSPAN="3" HEADERS="h" ABBR="a" SCOPE="row" AXIS="x")");
  expect(TableAttrib("i", "c", "s", "t", "su", "wi", "1", "box", "all", "2", "3"),
         std::string(kCoreText) + R"( SUMMARY="su" WIDTH="wi" BORDER="1" FRAME="box")"
                                  R"( RULES="all" CELLSPACING="2" CELLPADDING="3")");
}

TEST(HtmlTags, EachWritesItselfToTheByte) {
  const CellAttrib cell("", "", "", "", "right", "", "", "", "9", "9", "h", "", "", "");
  ImageAttrib image;
  image.alt = "old";
  image.ismap = "ismap";
  const std::string core = kCoreText;
  const struct {
    std::string written;
    std::string text;
  } rows[] = {
      {Written(VSpace(0)), "\n"},
      {Written(VSpace(-1)), "\n"},
      {Written(VSpace(3)), "<BR><BR><BR>\n"},
      {Written(HRule()), "<HR>\n"},
      {Written(HRule(kCore)), "<HR" + core + ">\n"},
      {Written(Img("a.png")), "<IMG SRC=\"a.png\">\n"},
      {Written(Img("a.png", "4", "3", image)),
       "<IMG SRC=\"a.png\" ALT=\"old\" WIDTH=\"4\" HEIGHT=\"3\" ISMAP=\"ismap\">\n"},
      {Written(Img("a.png", "4", "3", {})), "<IMG SRC=\"a.png\" WIDTH=\"4\" HEIGHT=\"3\">\n"},
      {Written(Img("a.png", "4", "3", "new")),
       "<IMG SRC=\"a.png\" ALT=\"new\" WIDTH=\"4\" HEIGHT=\"3\">\n"},
      {Written(Img("a.png", "", "3", "new", image)),
       "<IMG SRC=\"a.png\" ALT=\"new\" HEIGHT=\"3\" ISMAP=\"ismap\">\n"},
      {Written(Paragraph("a <b>")), "<P>a <b></P>\n"},
      {Written(Note("n", kCore)), "<SPAN" + core + ">n</SPAN>\n"},
      {Written(Heading(1, "h")), "<H1>h</H1>\n"},
      {Written(Heading(12, "h", kCore)), "<H12" + core + ">h</H12>\n"},
      {Written(Anchor("u", "t", kCore)), "<A HREF=\"u\"" + core + ">t</A>\n"},
      {Written(DLBeg()) + Written(DLBeg(kCore)), "<DL>\n<DL" + core + ">\n"},
      {Written(OLBeg(kCore)), "<OL" + core + ">\n"},
      {Written(ULBeg()) + Written(ULBeg(kCore)), "<UL>\n<UL" + core + ">\n"},
      {Written(LIBeg(kCore)), "<LI" + core + ">\n"},
      {Written(DLEnd()) + Written(OLEnd()) + Written(ULEnd()) + Written(LIEnd()),
       "</DL>\n</OL>\n</UL>\n</LI>\n"},
      {Written(Caption("c", kCore)), "<CAPTION" + core + ">c</CAPTION>\n"},
      {Written(Col()) + Written(ColGroup()), "<COL>\n<COLGROUP>\n"},
      {Written(ColGroup(ColAttrib("", "", "", "", "", "", "", "", "2", ""))),
       "<COLGROUP SPAN=\"2\">\n"},
      {Written(THeadBeg(kRow)) + Written(TFootBeg(kRow)),
       "<THEAD" + kRowText + ">\n<TFOOT" + kRowText + ">\n"},
      {Written(TableBeg()), "<TABLE>\n"},
      {Written(TBodyBeg(kRow)) + Written(THeadBeg()) + Written(TFootBeg()) + Written(TRBeg(kRow)),
       "<TBODY" + kRowText + ">\n<THEAD>\n<TFOOT>\n<TR" + kRowText + ">\n"},
      {Written(TableEnd()) + Written(TBodyEnd()) + Written(THeadEnd()) + Written(TFootEnd()) +
           Written(TREnd()) + Written(TDEnd()),
       "</TABLE>\n</TBODY>\n</THEAD>\n</TFOOT>\n</TR>\n</TD>\n"},
      {Written(TDBeg()), "<TD>\n"},
      {Written(TDBeg("2", "", cell)), "<TD ALIGN=\"right\" ROWSPAN=\"2\" HEADERS=\"h\">\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.written, row.text);
}

TEST(HtmlTags, TheTimeIsThatOfTheMoment) {
  const auto written = [](std::time_t when) {
    return std::string("<SPAN ID=\"x\">") + std::ctime(&when) + "</SPAN>\n";
  };
  CoreAttrib id;
  id.id = "x";
  const std::time_t before = std::time(nullptr);
  const std::string text = Written(TimeStamp(id));
  // A second may begin in between.
  EXPECT_TRUE(text == written(before) || text == written(std::time(nullptr))) << text;
}

TEST(CHtmlReport, ThePreambleIsThatOfATransitionalPage) {
  CHtmlReport report;
  report << Preamble("", "P {color:red}");
  EXPECT_EQ(report.str(), R"(<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01 Transitional//EN" )"
                          R"("http://www.w3.org/TR/html4/loose.dtd">
<HTML>
<HEAD>
<META HTTP-EQUIV="Content-Type" CONTENT="text/html; charset=iso-8859-1">
<META HTTP-EQUIV="Content-Style-Type" CONTENT="text/css">
<TITLE>Report</TITLE>
<STYLE TYPE="text/css">
BODY    {font-family:Arial, sans-serif;}
CAPTION {font-size:larger; font-weight:bold}
TD      {padding-left:1ex; padding-right:1ex;}
)"
                          "TH      {padding-left:1ex; padding-right:1ex; border-bottom:solid black "
                          "thin; font-weight:bold; text-align:left; background-color:lightgrey;}\n"
                          R"(P {color:red}
</STYLE>
</HEAD>
<BODY>
)");
}

TEST(CHtmlReport, TheEndIsAddedToTheResultAlone) {
  CHtmlReport report;
  report << "a" << 1.0 / 3;
  EXPECT_EQ(report.GetReport(), "a0.33333333333333</BODY>\n</HTML>");
  report << "b";
  EXPECT_EQ(report.GetReport(), "a0.33333333333333b</BODY>\n</HTML>");
}

struct CommaPoint : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(CHtmlReport, TheGlobalLocaleDoesNotShow) {
  const std::locale before = std::locale::global({std::locale::classic(), new CommaPoint});
  CHtmlReport report;
  std::locale::global(before);
  report << Heading(1, "a") << 1234.5 << " " << 1234;
  EXPECT_EQ(report.str(), "<H1>a</H1>\n1234.5 1234");
}

TEST(CHtmlReport, MovesTakeTextAndDigits) {
  CHtmlReport report;
  report << "a";
  CHtmlReport moved = std::move(report);
  moved << 1.0 / 3;
  CHtmlReport assigned;
  assigned << "gone";
  assigned = std::move(moved);
  assigned << 2.0 / 3;
  EXPECT_EQ(assigned.str(), "a0.333333333333330.66666666666667");
}

TEST(CHtmlReport, AFileIsReplacedAndAFailureIsSilent) {
  const testing::TemporaryFolder folder;
  CHtmlReport report;
  report << "a";
  const std::string path = folder.Path("a.html");
  testing::PutFile(path, "something longer than the report, which is all to go");
  for (int i = 0; i < 2; ++i) {
    report.WriteToFile(path);
    EXPECT_EQ(testing::BytesOfFile(path), "a</BODY>\n</HTML>\n");
  }
  // A second name goes on leading to the page.
  std::filesystem::create_hard_link(path, folder.Path("b.html"));
  report << "b";
  report.WriteToFile(path);
  EXPECT_EQ(testing::BytesOfFile(folder.Path("b.html")), "ab</BODY>\n</HTML>\n");
  report.WriteToFile(folder.Path("none/a.html"));
  report.WriteToFile(folder.Path());
  report.WriteToFile("");
  report.WriteToFile("/dev/null");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
  const std::filesystem::directory_iterator files(folder.Path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 2);
}

TEST(CHtmlReport, AnothersFileInAStickyFolderIsWrittenInPlace) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can step down to another user";
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("a.html");
  testing::PutFile(path, "something longer than the report, which is all to go");
  ASSERT_EQ(chmod(path.c_str(), 0666), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 01777), 0);
  const pid_t child = fork();
  if (child == 0) {
    if (setuid(65534) != 0) _exit(2);
    CHtmlReport report;
    report << "a";
    report.WriteToFile(path);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  EXPECT_EQ(testing::BytesOfFile(path), "a</BODY>\n</HTML>\n");
  const std::filesystem::directory_iterator files(folder.Path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(CHtmlReport, ACheckerFindsNothingWrongWithBalancedTags) {
  if (std::string(VELUM_TIDY).empty()) GTEST_SKIP() << "there is no tidy";
  const testing::TemporaryFolder folder;
  TableAttrib table;
  table.summary = "Depths";
  RowAttrib right;
  right.align = "right";
  ColAttrib narrow;
  narrow.width = "50";
  ImageAttrib image;
  image.alt = "A chart";
  CHtmlReport report;
  report << Preamble("Wells", "P {margin:0}") << Heading(1, "Depths") << Paragraph("&#955; &lt; 3")
         << HRule() << TableBeg(table) << Caption("All") << ColGroup() << Col(narrow) << Col()
         << THeadBeg() << TRBeg() << TDBeg("", "2") << "depth" << TDEnd() << TREnd() << THeadEnd()
         << TFootBeg() << TRBeg() << TDBeg() << "a" << TDEnd() << TDBeg() << 1.5 << TDEnd()
         << TREnd() << TFootEnd() << TBodyBeg(right) << TRBeg() << TDBeg() << TDEnd() << TDBeg()
         << TDEnd() << TREnd() << TBodyEnd() << TableEnd() << ULBeg() << LIBeg() << "x" << LIEnd()
         << ULEnd() << OLBeg() << LIBeg() << Anchor("a.html", "link") << LIEnd() << OLEnd()
         << "<P>\n"
         << Img("a.png", "4", "3", image) << VSpace(2) << Note("n", kCore) << TimeStamp()
         << "</P>\n"
         << DLBeg() << "<DT>t<DD>d\n"
         << DLEnd();
  const auto verdict = [&](const std::string& name) {
    report.WriteToFile(folder.Path(name));
    const std::string command = std::string(VELUM_TIDY) + " -q -e -utf8 '" + folder.Path(name) +
                                "' 2> '" + folder.Path("said.txt") + "'";
    return WEXITSTATUS(std::system(command.c_str()));
  };
  EXPECT_EQ(verdict("a.html"), 0) << testing::BytesOfFile(folder.Path("said.txt"));
  report << LIEnd();
  EXPECT_EQ(verdict("b.html"), 1) << "a tag that nothing opened is to be found";
}

}  // namespace
}  // namespace vlm
