#include <velum/files/BufferedFile.h>
#include <velum/files/File.h>
#include <velum/files/FileUtilities.h>
#include <velum/files/test/FileErrors.h>

#include <testing/FileBytes.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <barrier>
#include <memory>
#include <string>
#include <thread>
#include <vector>

// Refusals are real ones here, between openers of one process and of two: the other is forked.

namespace vlm {
namespace {

using testing::TemporaryFolder;

struct Opener {
  int access;   ///< 1 reads, 2 writes, 3 does both.
  int permits;  ///< The same of what it lets others do.
  CFile::Sharing sharing;
};

std::vector<Opener> AllOpeners() {
  std::vector<Opener> all;
  for (const int access : {1, 2, 3}) {
    all.push_back({access, 0, CFile::ShareDenyAll});
    all.push_back({access, 1, CFile::ShareDenyWrite});
    all.push_back({access, 2, CFile::ShareDenyRead});
    all.push_back({access, 3, CFile::ShareDenyNone});
  }
  return all;
}

bool MayMeet(const Opener& a, const Opener& b) {
  return (a.access & ~b.permits) == 0 && (b.access & ~a.permits) == 0;
}

bool Opens(CFile& file, const std::string& path, const Opener& opener) {
  return file.OpenNoThrow(path, static_cast<CFile::Access>(opener.access), CFile::ModeOpenExisting,
                          opener.sharing);
}

/// Another process that has a file open from the end of the constructor to the destructor.
class OtherProcess {
 public:
  OtherProcess(const std::string& path, const Opener& opener) {
    int opened[2], done[2];
    if (pipe(opened) != 0 || pipe(done) != 0) ADD_FAILURE() << "no pipe";
    child_ = fork();
    char byte = 'x';
    if (child_ == 0) {
      close(done[1]);
      CFile file;
      byte = Opens(file, path, opener) ? 'o' : 'f';
      const bool told = write(opened[1], &byte, 1) == 1;
      _exit(told && read(done[0], &byte, 1) == 0 ? 0 : 1);
    }
    close(opened[1]);
    close(done[0]);
    EXPECT_EQ(read(opened[0], &byte, 1), 1);
    EXPECT_EQ(byte, 'o');
    close(opened[0]);
    done_ = done[1];
  }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;
  ~OtherProcess() {
    close(done_);
    int status = 0;
    waitpid(child_, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }

 private:
  pid_t child_ = 0;
  int done_ = -1;
};

class Sharing : public ::testing::Test {
 protected:
  Sharing() { testing::PutFile(path_, "abc"); }

  TemporaryFolder folder_;
  std::string path_ = folder_.Path("a");
};

TEST_F(Sharing, LetsInExactlyThoseWhoPermitEachOtherWhatTheyDo) {
  for (const Opener& first : AllOpeners()) {
    for (const bool inOtherProcess : {false, true}) {
      CFile held;
      std::unique_ptr<OtherProcess> other;
      if (inOtherProcess) {
        other = std::make_unique<OtherProcess>(path_, first);
      } else {
        ASSERT_TRUE(Opens(held, path_, first));
      }
      for (const Opener& second : AllOpeners()) {
        CFile file;
        EXPECT_EQ(Opens(file, path_, second), MayMeet(first, second))
            << first.access << first.sharing << " then " << second.access << second.sharing
            << " process " << inOtherProcess;
      }
    }
    CFile after;
    EXPECT_TRUE(Opens(after, path_, {3, 0, CFile::ShareDenyAll})) << "the claims are gone";
  }
}

TEST_F(Sharing, ARefusedOpenerChangesNothingAndIsToldWhy) {
  const OtherProcess other(path_, {1, 1, CFile::ShareDenyWrite});
  CFile file;
  const std::string refused =
      "10: Unable to open '" + path_ + "'.\nResource temporarily unavailable";
  const auto open = [&](CFile::Access access, CFile::Mode mode, CFile::Sharing sharing) {
    return test::ErrorOf([&] { file.Open(path_, access, mode, sharing); });
  };
  EXPECT_EQ(open(CFile::AccessWrite, CFile::ModeCreateAlways, CFile::ShareDenyNone), refused);
  EXPECT_EQ(open(CFile::AccessRead, CFile::ModeTruncateExisting, CFile::ShareDenyNone), refused);
  EXPECT_EQ(open(CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyAll), refused);
  CBufferedFile stream;
  EXPECT_FALSE(stream.OpenNoThrow(path_, "w", CBufferedFile::ShareDenyNone, true));
  EXPECT_FALSE(stream.OpenNoThrow(path_, "a+", CBufferedFile::ShareDenyNone, true));
  EXPECT_FALSE(IsFileWritable(path_));
  EXPECT_EQ(testing::BytesOfFile(path_), "abc");
  EXPECT_EQ(open(CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyWrite), "nothing");
}

TEST_F(Sharing, OneOfManyWhoComeAtOnceGetsIn) {
  constexpr int kThreads = 6;
  constexpr int kRounds = 200;
  std::atomic<int> in = 0;
  std::barrier together(kThreads);
  const auto tryAll = [&](int number) {
    for (int round = 0; round < kRounds; ++round) {
      together.arrive_and_wait();
      CFile file;
      in += Opens(file, path_, {1 + number % 3, 0, CFile::ShareDenyAll});
      together.arrive_and_wait();
      if (number == 0) {
        EXPECT_EQ(in, 1) << round;
        in = 0;
      }
    }
  };
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) threads.emplace_back(tryAll, number);
  for (std::thread& thread : threads) thread.join();
}

TEST_F(Sharing, DevicesAreOpenToAll) {
  CBufferedFile a("/dev/full", "w", CBufferedFile::ShareDenyAll, false);
  CBufferedFile b("/dev/full", "r", CBufferedFile::ShareDenyAll, false);
  EXPECT_TRUE(a.IsOpen() && b.IsOpen());
}

}  // namespace
}  // namespace vlm
