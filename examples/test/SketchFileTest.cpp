#include <examples/sketchbook/SketchFile.h>

#include <velum/core/Exception.h>
#include <examples/sketchbook/SafeFile.h>
#include <examples/sketchbook/Session.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

namespace vlm::sketchbook {
namespace {

namespace fs = std::filesystem;

// Every kind of shape, shared and own styles, shapes and connectors that lead to each other.
std::string SketchStream() {
  std::ostringstream answers;
  Session session(answers, 0);
  for (const char* line : {
           "do add style name=ink color=navy width=2 dash=3",
           "do add circle x=10 y=20 r=5 name=a style=ink",
           "do add ellipse x=40 y=20 rx=5 ry=3 angle=30 name=b fill=gold",
           "do add rectangle x=80 y=20 w=20 h=10 corner=2 name=c style=ink",
           "do add polyline points=\"0,0 5,5 10,0\" closed=1 name=d",
           "do add label x=0 y=40 size=9 align=right name=e text=\"{\\i x}\"",
           "do add connector from=a to=b arrow=end name=ab",
           "do add connector from=b to=c via=\"60,40\" arrow=both name=bc style=ink",
           "do add connector from=c to=a name=ca",
       }) {
    session.Execute(line);
  }
  return StoreSketch(session.Sketch());
}

void PutSum(std::string& stream, std::size_t end) {
  unsigned int sum = 0;
  for (std::size_t i = 0; i < end; ++i) sum += static_cast<unsigned char>(stream[i]);
  stream[end] = static_cast<char>(sum);
  stream[end + 1] = static_cast<char>(sum >> 8);
}

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(SketchFile, StreamOfARestoredSketchIsTheSame) {
  const std::string stream = SketchStream();
  EXPECT_EQ(StoreSketch(RestoreSketch(stream)), stream);
}

TEST(SketchFile, StreamThatIsCutAnywhereIsRefused) {
  const std::string stream = SketchStream();
  for (std::size_t size = 0; size < stream.size(); ++size) {
    EXPECT_THROW(static_cast<void>(RestoreSketch(stream.substr(0, size))), Exception) << size;
  }
}

TEST(SketchFile, StreamWithOneByteChangedIsRefused) {
  const std::string stream = SketchStream();
  for (std::size_t i = 0; i < stream.size(); ++i) {
    for (const int change : {1, 0x7F, 0x80, 0xFF}) {
      std::string damaged = stream;
      damaged[i] = static_cast<char>(damaged[i] + change);
      EXPECT_THROW(static_cast<void>(RestoreSketch(damaged)), Exception) << i << " by " << change;
    }
  }
}

// The sums are put right, so that all that is left to stand on is the look at the document itself.
TEST(SketchFile, ForgedStreamIsRefusedOrMakesASoundSketch) {
  const std::string stream = SketchStream();
  int sound = 0;
  for (std::size_t i = 0; i < stream.size(); ++i) {
    for (const int change : {1, 2, 0x40, 0x80, 0xFF}) {
      std::string forged = stream;
      forged[i] = static_cast<char>(forged[i] + change);
      PutSum(forged, 6);
      PutSum(forged, stream.size() - 2);
      try {
        const std::shared_ptr<Document> sketch = RestoreSketch(forged);
        ++sound;
        ASSERT_EQ(sketch->Fault(), "") << i << " by " << change;
        const std::string again = StoreSketch(sketch);
        ASSERT_EQ(StoreSketch(RestoreSketch(again)), again) << i << " by " << change;
      } catch (const Exception& error) {
        ASSERT_FALSE(error.GetDescription().empty()) << i << " by " << change;
      }
    }
  }
  EXPECT_GT(sound, 100);  // other colours and places
}

TEST(SketchFile, OfANewerFormatIsRefusedAsSuch) {
  std::string stream = SketchStream();
  stream[0] = 2;
  PutSum(stream, 6);
  try {
    static_cast<void>(RestoreSketch(stream));
    FAIL() << "was read";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetDescription(),
              "the sketch has the format 2, which this program is too old to read");
  }
}

TEST(SafeFile, ReplacesWhatALinkLeadsToAndKeepsItsPermissions) {
  const vlm::testing::TemporaryFolder folder;
  std::ofstream(folder.Path("file")) << "old";
  fs::permissions(folder.Path("file"), fs::perms(0640));
  fs::create_symlink("file", folder.Path("link"));
  ReplaceFile(folder.Path("link"), "new");
  EXPECT_EQ(BytesOf(folder.Path("file")), "new");
  EXPECT_EQ(fs::status(folder.Path("file")).permissions(), fs::perms(0640));
  EXPECT_TRUE(fs::is_symlink(folder.Path("link")));
}

TEST(SafeFile, WritesAPipeAndDoesNotReplaceIt) {
  const testing::TemporaryFolder folder;
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::string read;
  std::thread reader([&] { std::getline(std::ifstream(pipe), read); });
  ReplaceFile(pipe, "bytes\n");
  reader.join();
  EXPECT_EQ(read, "bytes");
  EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST(SafeFile, ThatCannotBeWrittenLeavesTheFolderAsItWas) {
  const vlm::testing::TemporaryFolder folder;
  fs::create_directory(folder.Path("folder"));
  for (const char* path : {"folder", "none/file"}) {
    EXPECT_THROW(ReplaceFile(folder.Path(path), "new"), Exception) << path;
  }
  EXPECT_EQ(std::distance(fs::recursive_directory_iterator(folder.Path()), {}), 1);
}

}  // namespace
}  // namespace vlm::sketchbook
