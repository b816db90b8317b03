#include <examples/gallery/List.h>
#include <examples/gallery/Page.h>
#include <examples/gallery/Places.h>
#include <examples/gallery/Run.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace vlm::gallery {
namespace {

namespace fs = std::filesystem;

// A tree of examples in a folder whose name needs quotes: `one` and `two`, with a program `one`.
class GalleryRun : public ::testing::Test {
 protected:
  GalleryRun() {
    for (const char* name : {"lists", "one", "two"}) fs::create_directories(Path(name));
    for (const char* name : {"one/one.cpp", "two/two.cpp"}) std::ofstream(Path(name)) << "\n";
    const std::string program = Path("one/one");
    std::ofstream(program) << "#!/bin/sh\necho drawn > \"$1\"\necho \"1 < 2\"\n";
    fs::permissions(program, fs::perms::owner_all);
  }

  [[nodiscard]] std::string Path(const std::string& name) const {
    return folder_.Path("it's a tree/" + name);
  }

  // Runs a list whose second example has this command, and gives the page.
  [[nodiscard]] std::string Run(const std::string& command) const {
    const std::string path = Path("lists/list.xml");
    std::ofstream(path) << "<gallery title=\"A &amp; B\"><intro>All\n  of it.</intro>"
                           "<example name=one title=\"One\"><story>The first.</story>"
                           "<command>one a.png</command><picture file=a.png about=\"An a\"/>"
                           "</example><example name=two title=\"Two\"><story>S.</story><command>"
                        << command
                        << "</command><picture file=b.png about=\"A b\"/>"
                           "<also file=b.txt>as text</also></example></gallery>";
    const Places places = PlacesOf(path, Path(""), Path("out"));
    const List list = ReadList(path);
    std::ostringstream progress;
    const std::vector<Outcome> outcomes = RunAll(list, places, progress);
    EXPECT_NE(progress.str().find(" 2 of 2  two "), std::string::npos) << progress.str();
    std::ostringstream page;
    WritePage(page, list, places, outcomes);
    return page.str();
  }

  testing::TemporaryFolder folder_;
};

TEST_F(GalleryRun, ThePageHoldsEveryExampleAndItsLinksLeadSomewhere) {
  const std::string page = Run("cp {examples}/one/one.cpp b.png\n\n   echo x \\\n > b.txt");
  for (const char* text :
       {"<H1>A &amp; B</H1>", "<P CLASS=\"lead\">All of it.</P>", "<H2 ID=\"one\">One</H2>",
        "<H2 ID=\"two\">Two</H2>", "<PRE>one a.png</PRE>", "ALT=\"A b\"", ">as text</A>",
        "<PRE>cp ../one/one.cpp b.png\necho x \\\n  &gt; b.txt</PRE>"}) {
    EXPECT_NE(page.find(text), std::string::npos) << text;
  }
  int links = 0;
  for (const std::string start : {"HREF=\"", "SRC=\""}) {
    for (std::size_t at = 0; (at = page.find(start, at)) != std::string::npos; ++links) {
      at += start.size();
      const std::string target = page.substr(at, page.find('"', at) - at);
      EXPECT_TRUE(target[0] == '#' || fs::exists(Path("out/" + target))) << target;
    }
  }
  // Each example: two pictures with links, its source; one prints, the other has a file.
  EXPECT_EQ(links, 12);
  std::ifstream text(Path("out/one.txt"));
  std::string line;
  EXPECT_TRUE(std::getline(text, line) && line == "1 < 2") << line;
}

TEST_F(GalleryRun, ACommandThatFailsEndsItWithItsWords) {
  const struct {
    const char* command;
    const char* fault;
  } rows[] = {
      {"echo no; exit 3", "two: the command ended with status 3 and said\nno\n"},
      {"false\ntouch b.png b.txt", "two: the command ended with status 1 and said\n"},
      {"kill -9 $$", "two: the command ended before its end and said\n"},
      {"touch b.txt", "two: the command made no 'b.png'"},
  };
  for (const auto& row : rows) {
    fs::create_directories(Path("out"));
    for (const char* name : {"out/index.html", "out/b.png"}) std::ofstream(Path(name)) << "old";
    try {
      static_cast<void>(Run(row.command));
      ADD_FAILURE() << row.command;
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), row.fault);
    }
    EXPECT_FALSE(fs::exists(Path("out/index.html"))) << row.command;
  }
  fs::remove(Path("two/two.cpp"));
  EXPECT_THROW(static_cast<void>(Run("touch b.png b.txt")), std::runtime_error);
}

TEST(GalleryList, TheListOfTheTreeHoldsEveryExample) {
  std::set<std::string> listed;
  for (const Example& example :
       ReadList(std::string(VELUM_EXAMPLES_FOLDER) + "/gallery/gallery.xml").examples) {
    listed.insert(example.name);
  }
  std::set<std::string> programs;
  for (const auto& entry : fs::directory_iterator(VELUM_EXAMPLES_FOLDER)) {
    const std::string name = entry.path().filename().string();
    if (name != "gallery" && fs::exists(entry.path() / (name + ".cpp"))) programs.insert(name);
  }
  EXPECT_EQ(listed, programs);
}

TEST(GalleryList, WhatIsNoListIsRefused) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("list.xml");
  const auto example = [](const std::string& attributes, const std::string& contents) {
    return "<gallery title=g><example " + attributes + ">" + contents + "</example></gallery>";
  };
  const std::string texts = "<story>s</story><command>c</command>";
  const struct {
    std::string text;
    const char* fault;
  } rows[] = {
      {"<a/>", "there is no element <gallery>"},
      {"<gallery/>", "the title is empty"},
      {"<gallery title=g/>", "there is no example"},
      {"<gallery colour=red/>", "<gallery> has no attribute 'colour'"},
      {"<gallery><picture/></gallery>", "what is <picture>?"},
      {example("title=t", texts), "the name of an example is empty"},
      {example("name=e title=t", "<story>s</story>"), "the command of e is empty"},
      {example("name=e title=t", texts), "e has no picture"},
      {example("name=e title=t", texts + "<film/>"), "what is <film> of e?"},
      {example("name=e", texts + "<picture file=\"../p\" about=x/>"),
       "a name consists of letters, digits, - _ and ., unlike '../p'"},
      {example("name=e", texts + "<picture file=\"p\"/>"), "what 'p' is about is empty"},
      {example("name=e", texts + "<also file=\"p\"/>"), "the text of 'p' is empty"},
  };
  for (const auto& row : rows) {
    std::ofstream(path) << row.text;
    try {
      static_cast<void>(ReadList(path));
      ADD_FAILURE() << row.text;
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(error.what(), path + ": " + row.fault);
    }
  }
}

}  // namespace
}  // namespace vlm::gallery
