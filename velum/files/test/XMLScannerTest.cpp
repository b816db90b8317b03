#include <velum/files/XMLScanner.h>

#include <velum/files/test/FileErrors.h>

#include <testing/FailingAllocations.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace vlm {
namespace {

using Node = std::shared_ptr<XMLNode>;

class XMLFiles : public ::testing::Test {
 protected:
  std::string Made(const std::string& text) const {
    const std::string path = folder_.Path("a.xml");
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }
  Node Scan(const std::string& text) { return scanner_.ScanFile(Made(text)); }
  std::string FaultOf(const std::string& text) {
    return test::ErrorOf([&] { Scan(text); });
  }

  vlm::testing::TemporaryFolder folder_;
  XMLScanner scanner_;
};

// A tree in one line: name[attribute=value;...]"text"{children}.
std::string Dump(const XMLNode& node) {
  std::string text = node.name;
  for (const auto& [name, value] : node.attributes) text += "[" + name + "=" + value + "]";
  if (!node.value.empty()) text += "\"" + node.value + "\"";
  if (node.children.empty()) return text;
  text += "{";
  for (const Node& child : node.children) {
    EXPECT_EQ(child->parent.lock().get(), &node);
    text += Dump(*child) + ",";
  }
  text.back() = '}';
  return text;
}

TEST_F(XMLFiles, DocumentsBecomeTrees) {
  const struct {
    const char* why;
    std::string document;
    const char* tree;
  } rows[] = {
      {"nothing", "", ""},
      {"text outside of elements is the root's", " x\n<a/>y", "\" x\ny\"{a}"},
      {"attributes without quotes and without a value", "<a b=1 c/>", "{a[b=1][c=]}"},
      {"blanks wherever they may stand", "< a\tb =\n \"1\"\r\n/ >", "{a[b=1]}"},
      {"a declaration is an element", "<?xml version=\"1.0\"?><a></a>", "{xml[version=1.0],a}"},
      {"pieces of text join", "<a>x<b/>y</a>", "{a\"xy\"{b}}"},
      {"a comment is no text", "<a>x<!-- <b> -- -->y</a>", "{a\"xy\"}"},
      {"three dashes end no comment", "<a><!-- --->x--></a>", "{a}"},
      {"a document type", "<!DOCTYPE a SYSTEM \"a.dtd\"><a/>", "{a}"},
      {"one dash begins no comment", "<!-x><a/>", "{a}"},
      {"a document type drops its first character", "<!><a/><b/>", "{b}"},
      {"the later of two attributes stays", "<a b=1 b=2/>", "{a[b=2]}"},
      {"quotes in attributes", "<a b=\"&quot;x&quot;\" c=&quot;&amp;/>", "{a[b=\"x\"][c=\"&amp;]}"},
      {"what a replacement makes is no new one", "<a b=\"&qu&quot;ot;\"/>", "{a[b=&qu\"ot;]}"},
      {"single quotes are part of a word", "<a b='x y'/>", "{a[b='x][y'=]}"},
      {"a literal keeps its lines", "<a b=\"x\n>y\"/>", "{a[b=x\n>y]}"},
      {"entities and sections stay as they are", "<a>&lt;]]></a>", "{a\"&lt;]]>\"}"},
      {"an end tag with blanks", "<a></ a\n>", "{a}"},
      {"bytes above 127", "<\xC3\xB6 \xFF=\xA0/>", "{\xC3\xB6[\xFF=\xA0]}"},
      {"an element that the file cuts", "<a><b>x", "{a{b\"x\"}}"},
      {"a name that the file cuts", "<a><b", "{a{b}}"},
      {"an attribute that the file cuts", "<a b=1 c", "{a[b=1]}"},
      {"a literal that the file cuts", "<a b=\"x>", "{a}"},
      {"a comment that the file cuts", "<a><!-- x --", "{a}"},
  };
  for (const auto& row : rows) {
    scanner_.Close();
    scanner_.ScanFile(Made(""))->value.clear();
    EXPECT_EQ(Dump(*Scan(row.document)), row.tree) << row.why;
  }
}

TEST_F(XMLFiles, FaultsTellFileAndLine) {
  const struct {
    const char* why;
    const char* document;
    int line;
    const char* fault;
  } rows[] = {
      {"no name", "<>", 1, "Tag without name"},
      {"no name before a blank end", "\n< \n>", 3, "Tag without name"},
      {"a name that is an attribute's", "<=a>", 1, "Tag without name"},
      {"a line feed that is put back counts once", "<a b\nc\n?x>", 3, "Invalid closing bracket"},
      {"a value without a name", "<a =1>", 1, "Invalid closing bracket"},
      {"a slash that ends nothing", "<a/b>", 1, "Invalid closing bracket"},
      {"another element's end", "<a>\n<b></a>", 2, "Closing tag mismatch"},
      {"an end that goes on", "<a></a b>", 1, "Closing tag mismatch"},
      {"an end without a beginning", "</a>", 1, "Closing tag mismatch"},
      {"an end without a name at the root", "<a/></>", 1, "Closing tag mismatch"},
      {"an end without a name", "<a></>", 1, "Closing tag mismatch"},
  };
  for (const auto& row : rows) {
    const std::string fault = FaultOf(row.document);
    EXPECT_TRUE(fault.starts_with("19: ")) << row.why << ": " << fault;
    EXPECT_NE(fault.find(row.fault), std::string::npos) << row.why << ": " << fault;
    EXPECT_NE(fault.find(folder_.Path("a.xml")), std::string::npos) << fault;
    EXPECT_NE(fault.find("line " + std::to_string(row.line)), std::string::npos) << fault;
  }
  EXPECT_TRUE(test::ErrorOf([&] {
                scanner_.ScanFile("no such.xml");
              }).starts_with("10: Unable to open 'no such.xml'"));
  EXPECT_EQ(test::CodeOf([&] { scanner_.ScanFile(folder_.Path()); }), ERR_OPEN);
}

TEST_F(XMLFiles, AScanAfterAFaultBeginsAfreshAndKeepsTheTree) {
  EXPECT_NE(FaultOf("<a>\n<b c=d\n/ x>"), "nothing");
  EXPECT_EQ(Dump(*Scan("<e>y</e>")), "{a\"\n\"{b[c=d]},e\"y\"}");
  EXPECT_NE(FaultOf("</>").find("line 1"), std::string::npos);
  scanner_.Close();
  EXPECT_EQ(Dump(*Scan("<f/>")), "{f}");
}

TEST_F(XMLFiles, EveryCutOfAFileGivesATree) {
  const std::string document =
      "<?xml version=\"1.0\"?>\n<!DOCTYPE a>\n<a b=\"&quot;\" c=2 d>x<!-- - -->\n<e/>y</a>\n";
  for (std::size_t size = 0; size <= document.size(); ++size) {
    scanner_.Close();
    EXPECT_EQ(FaultOf(document.substr(0, size)), "nothing") << size;
  }
  EXPECT_EQ(Dump(*scanner_.ScanFile(Made(""))->FindChild("a", 0)), "a[b=\"][c=2][d=]\"x\ny\"{e}");
}

TEST_F(XMLFiles, BlocksMeetAnywhere) {
  // A file read in blocks of 65,536 bytes: the fault's line and every piece of text tell whether
  // the seam is noticed.
  const std::string document = "<a b=\"x\n\">y<!-- -->\n</a>\n";
  for (std::size_t i = 0; i <= document.size(); ++i) {
    scanner_.Close();
    scanner_.ScanFile(Made(""))->value.clear();
    const std::string filling(65536 - i, ' ');
    EXPECT_EQ(Dump(*Scan(filling + document)), "\"" + filling + "\n\"{a[b=x\n]\"y\n\"}") << i;
    EXPECT_NE(FaultOf(filling + document + "<>").find("line 4"), std::string::npos) << i;
  }
}

// As some documents of the XML Conformance Test Suite are read by another parser; see the README
// beside them.
TEST_F(XMLFiles, ConformingDocumentsAreReadAsAnotherParserReadsThem) {
  std::ifstream expected(VELUM_XML_DATA "/expected.txt", std::ios::binary);
  int count = 0;
  for (std::string name, tree; std::getline(expected, name) && std::getline(expected, tree);) {
    scanner_.Close();
    const Node root = scanner_.ScanFile(VELUM_XML_DATA "/" + name);
    // The other parser has no elements for instructions, and shows ends of lines as \n.
    std::erase_if(root->children, [](const Node& node) { return node->name == "xml"; });
    std::string dump = Dump(*root->children.at(0));
    for (std::size_t i = 0; (i = dump.find('\n', i)) != std::string::npos;)
      dump.replace(i, 1, "\\n");
    EXPECT_EQ(dump, tree) << name;
    ++count;
  }
  EXPECT_GE(count, 10);
}

// Marks attributes, takes comments for text, and leaves at the end of an outermost element.
class LoudScanner : public XMLScanner {
 protected:
  bool ReadCloseTag() override {
    const bool goesOn = XMLScanner::ReadCloseTag();
    return goesOn && GetCurrentNode() != GetRoot();
  }
  void ReadAttributes() override {
    XMLScanner::ReadAttributes();
    if (GetState() == StateAttributeValue) SetAttributeName(GetAttributeName() + "!");
  }
  void ReadComment() override {
    std::string comment;
    while (GetState() == StateComment && comment.find("-->") == std::string::npos) {
      comment += ReadNextChar();
    }
    GetCurrentNode()->value += comment;
    if (GetState() == StateComment) SetState(StateValue);
  }
};

TEST_F(XMLFiles, DerivedScannersReplaceStates) {
  LoudScanner loud;
  EXPECT_EQ(Dump(*loud.ScanFile(Made("<a b=1><!--x--></b"))), "{a[b!=1]\"x-->\"}");
  EXPECT_EQ(loud.ScanFile(Made("<c></c><d/>")), nullptr);
  EXPECT_EQ(Dump(*loud.ScanFile(Made("<e/>"))), "{a[b!=1]\"x-->\",c,e}");
}

// Reads the files that document types name, `<! a.xml>`.
class IncludingScanner : public XMLScanner {
 public:
  using XMLScanner::GetCurrentNode;
  using XMLScanner::ReadNextChar;
  using XMLScanner::SetState;

  std::string folder;
  bool isSilent = false;
  int strayState = StateValue;

 protected:
  void ReadDocType() override {
    const std::string name = ReadWord();
    try {
      ScanFile(folder + name);
    } catch (const Exception&) {
      if (!isSilent) throw;
    }
    XMLScanner::ReadDocType();
    SetState(static_cast<State>(strayState));
  }
  bool ReadCloseTag() override { return XMLScanner::ReadCloseTag() && !isSilent; }
};

TEST_F(XMLFiles, AFileReadWithinAnotherLeavesTheOtherWhereItWas) {
  IncludingScanner scanner;
  EXPECT_NE(scanner.GetCurrentNode(), nullptr);
  EXPECT_EQ(scanner.ReadNextChar(), 0);
  scanner.folder = folder_.Path("");
  std::ofstream(folder_.Path("inner.xml")) << "<b>y\n\n</b><c";
  std::ofstream(folder_.Path("faulty.xml")) << "\n\n<d><>";
  std::ofstream(folder_.Path("left.xml")) << "<e></e><f/>";
  const std::string document = "<a>x\n<! inner.xml>z</a>";
  EXPECT_EQ(Dump(*scanner.ScanFile(Made(document))), "{a\"x\nz\",b\"y\n\n\",c}");
  EXPECT_EQ(scanner.ReadNextChar(), 0);
  const std::string fault = test::ErrorOf([&] { scanner.ScanFile(Made(document + "\n</a>rest")); });
  EXPECT_NE(fault.find("a.xml', line 3"), std::string::npos) << fault;
  EXPECT_EQ(scanner.ReadNextChar(), 0) << "what is left of the file is not there after a fault";

  const std::string both = "<a><! faulty.xml>1<! none.xml>2<! left.xml>3<g/>";
  const std::string inner = test::ErrorOf([&] { scanner.ScanFile(Made(both)); });
  EXPECT_NE(inner.find("faulty.xml"), std::string::npos) << inner;
  scanner.Close();
  scanner.isSilent = true;
  const Node root = scanner.ScanFile(Made(both));
  root->value.clear();
  EXPECT_EQ(Dump(*root), "{a\"123\"{g},d{},e}");
  EXPECT_EQ(scanner.ScanFile(Made("<h></h><i/>")), nullptr);
  EXPECT_EQ(scanner.ReadNextChar(), 0) << "nor after an end that a derived scanner has set";

  scanner.strayState = 9;
  EXPECT_EQ(test::CodeOf([&] { scanner.ScanFile(Made("<! inner.xml>")); }), ERR_INTERNAL);
}

TEST_F(XMLFiles, CloseReleasesWhatACutFileAndAFaultHaveLeft) {
  const Node root = Scan("");
  for (const char* document : {"<a><b>", "<a></c>"}) {
    FaultOf(document);
    const std::weak_ptr<XMLNode> last = root->children.back();
    scanner_.Close();
    EXPECT_TRUE(last.expired()) << document;
  }
}

TEST_F(XMLFiles, AMillionNestedElementsAreBuiltAndReleased) {
  std::string document;
  for (int i = 0; i < 1'000'000; ++i) document += "<a>";
  Node inner = Scan(document);
  int depth = 0;
  for (; !inner->children.empty(); ++depth) inner = inner->children[0];
  EXPECT_EQ(depth, 1'000'000);
  const XMLNode copy = *scanner_.ScanFile(Made(""))->children[0]->children[0];
  scanner_.Close();
  EXPECT_EQ(inner->parent.lock()->name, "a") << "the scanner's copy of a node holds the rest";
}

TEST_F(XMLFiles, OpenTagsTakeMemoryInProportionToTheFile) {
  for (const char* tag : {"<a>", "<a b>", "<a>x", "<a/>"}) {
    std::string document;
    while (document.size() < 300'000) document += tag;
    const std::string path = Made(document);
    XMLScanner scanner;
    const vlm::testing::AllocationPeak peak;
    scanner.ScanFile(path);
    EXPECT_LT(peak.Bytes(), 100 * document.size() + 100'000) << tag;
  }
}

TEST(XMLNode, FindChildCountsThoseOfTheName) {
  Node root = XMLNode::Factory("root");
  for (const char* name : {"b", "c", "b"}) XMLNode::Factory(root)->name = name;
  EXPECT_EQ(root->FindChild("b", 0), root->children[0]);
  EXPECT_EQ(root->FindChild("b", 1), root->children[2]);
  EXPECT_EQ(root->FindChild("b", 2), nullptr);
  EXPECT_EQ(root->FindChild("B", 0), nullptr);
  Node none;
  EXPECT_EQ(test::CodeOf([&] { XMLNode::Factory(none); }), ERR_INTERNAL);
}

TEST(XMLNode, CopiesShareTheChildren) {
  Node root = XMLNode::Factory("root");
  XMLNode::Factory(root)->name = "b";
  XMLNode copy = *root;
  root->Done();
  EXPECT_TRUE(root->children.empty());
  ASSERT_EQ(copy.children.size(), 1u);
  EXPECT_EQ(copy.children[0]->parent.lock(), root);
  copy = *copy.children[0];
  EXPECT_EQ(copy.name, "b");
  EXPECT_TRUE(copy.children.empty());
}

TEST(XMLNode, ReleaseLeavesWhatOthersHold) {
  Node root = XMLNode::Factory();
  std::vector<Node> held;
  Node parent = root;
  for (std::size_t i = 0; i < 20; ++i) {
    for (std::size_t j = 0; j < 3; ++j) XMLNode::Factory(parent)->name = std::to_string(i * 3 + j);
    parent = parent->children[i % 3];
    if (i % 4 == 1) held.push_back(parent);
  }
  parent = nullptr;
  const std::weak_ptr<XMLNode> gone = root->children[1];
  root->Done();
  EXPECT_TRUE(gone.expired());
  ASSERT_EQ(held.size(), 5u);
  EXPECT_EQ(held[0]->children.size(), 3u);
  EXPECT_EQ(held[1]->name, "17");
}

}  // namespace
}  // namespace vlm
