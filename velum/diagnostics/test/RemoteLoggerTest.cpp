#include <velum/diagnostics/RemoteLogger.h>

#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/test/Receiver.h>

#include <gtest/gtest.h>
#include <netdb.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

using std::chrono::milliseconds;

/// How long a look-up takes, and how many were begun and ended.
std::atomic<int> theDelay{0};
std::atomic<int> theBegun{0};
std::atomic<int> theEnded{0};
/// Whether what the library asked was as it should be.
std::atomic<bool> theQuestionWasRight{true};

}  // namespace

// The library's look-ups come here instead of to the C library; the second function frees
// what the first gives.
extern "C" int getaddrinfo(const char* name, const char*, const addrinfo* wish, addrinfo** result) {
  ++theBegun;
  const std::string asked(name);
  std::this_thread::sleep_for(milliseconds(theDelay));
  theQuestionWasRight = theQuestionWasRight && wish->ai_family == AF_INET && asked == name;
  if (asked != "localhost") {
    ++theEnded;
    return EAI_NONAME;
  }
  auto* const answer =
      static_cast<addrinfo*>(std::calloc(1, sizeof(addrinfo) + sizeof(sockaddr_in)));
  auto* const address = reinterpret_cast<sockaddr_in*>(answer + 1);
  address->sin_family = AF_INET;
  address->sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  answer->ai_family = AF_INET;
  answer->ai_addrlen = sizeof(sockaddr_in);
  answer->ai_addr = reinterpret_cast<sockaddr*>(address);
  *result = answer;
  ++theEnded;
  return 0;
}

extern "C" void freeaddrinfo(addrinfo* answer) noexcept { std::free(answer); }

namespace vlm {
namespace {

/// Runs `work` and gives how long it took.
template <class Work>
milliseconds TimeOf(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
}

void WaitForLookups() {
  while (theBegun != theEnded) std::this_thread::sleep_for(milliseconds(5));
}

TEST(RemoteLogger, SendsEachLineAsOneDatagram) {
  const test::Receiver receiver;
  CRemoteLogger remote("127.0.0.1", receiver.Port(), 0);
  ASSERT_TRUE(remote.IsEnabled());
  struct Row {
    std::string text;
    std::string arrives;
    const char* why;
  };
  for (const Row& row :
       {Row{"Hello", "<6> Hello", "a line"}, Row{"", "<6> ", "an empty line"},
        Row{"100% Größe\n", "<6> 100% Größe\n", "nothing is interpreted"},
        Row{std::string("a\0b", 3), "<6> a", "up to the terminator"},
        Row{std::string(65'503, 'x'), "<6> " + std::string(65'503, 'x'), "as long as can be"}}) {
    EXPECT_TRUE(remote.Send(row.text)) << row.why;
    EXPECT_EQ(receiver.Next(), row.arrives) << row.why;
  }
  EXPECT_FALSE(remote.Send(std::string(65'504, 'x')));
  EXPECT_TRUE(remote.SendVA("%s %d", "n", 5));
  EXPECT_EQ(receiver.Next(), "<6> n 5");
  EXPECT_FALSE(remote.SendVA("%s", std::string(8192, 'x').c_str())) << "can't be formatted";
  EXPECT_FALSE(remote.SendVA(nullptr));
  remote.Enable(false);
  EXPECT_FALSE(remote.IsEnabled());
  EXPECT_FALSE(remote.Send("a"));
  EXPECT_FALSE(remote.SendVA("a"));
  EXPECT_EQ(receiver.Next(false), std::nullopt);
}

TEST(RemoteLogger, DottedAddressesAreNotLookedUp) {
  const int before = theBegun;
  theDelay = 10'000;
  for (const char* host : {"127.0.0.1", "127.1", "0x7f000001", "2130706433", "255.255.255.255"}) {
    EXPECT_LT(TimeOf([&] { EXPECT_TRUE(CRemoteLogger(host, 1, 60'000).IsEnabled()) << host; }),
              milliseconds(1'000));
  }
  EXPECT_EQ(theBegun, before);
  const test::Receiver receiver;
  EXPECT_TRUE(CRemoteLogger("127.1", receiver.Port(), 0).Send("short"));
  EXPECT_EQ(receiver.Next(), "<6> short");
  theDelay = 0;
}

TEST(RemoteLogger, NamesAreLookedUp) {
  const test::Receiver receiver;
  CRemoteLogger remote("", receiver.Port(), 0);
  EXPECT_FALSE(remote.IsEnabled()) << "without a host nothing is set";
  EXPECT_TRUE(remote.SetHost("localhost", receiver.Port(), 10'000));
  EXPECT_TRUE(remote.Send("by name"));
  EXPECT_EQ(receiver.Next(), "<6> by name");
  EXPECT_TRUE(theQuestionWasRight);
  for (const char* host : {"no.such.host", "256.1.1.1", ""}) {
    EXPECT_FALSE(remote.SetHost(host, receiver.Port(), 10'000)) << host;
    EXPECT_FALSE(remote.IsEnabled());
    EXPECT_TRUE(remote.SetHost("localhost", receiver.Port(), ~0ul)) << "no overflow";
  }
  for (const int port : {-1, 65'536}) {
    EXPECT_FALSE(remote.SetHost("127.0.0.1", port, 0)) << port;
    EXPECT_FALSE(remote.Send("a"));
  }
}

TEST(RemoteLogger, SlowLookUpIsGivenUpAndTouchesNothingLater) {
  theDelay = 1'000;
  {
    const std::string name = std::string("local") + "host";  // Gone before the answer comes.
    CRemoteLogger remote("", 0, 0);
    const milliseconds time = TimeOf([&] { EXPECT_FALSE(remote.SetHost(name, 9, 50)); });
    EXPECT_GE(time, milliseconds(50));
    EXPECT_LT(time, milliseconds(950));
    EXPECT_FALSE(remote.Send("a"));
    EXPECT_LT(TimeOf([&] { EXPECT_FALSE(remote.SetHost(name, 9, 0)); }), milliseconds(950));
  }
  EXPECT_GT(theBegun, theEnded);
  WaitForLookups();
  EXPECT_TRUE(theQuestionWasRight) << "the name was still there";
  CLogger log;
  EXPECT_FALSE(log.SetRemoteLogger("", "localhost", 9, 20));
  EXPECT_FALSE(log.IsRemoteLoggerEnabled());
  log.Send(16, "not sent");
  WaitForLookups();
  theDelay = 0;
}

TEST(RemoteLogger, ExitDoesNotWaitForALookUp) {
  const milliseconds time = TimeOf([] {
    EXPECT_EXIT(
        {
          theDelay = 60'000;
          CRemoteLogger("localhost", 9, 10);
          std::exit(0);
        },
        ::testing::ExitedWithCode(0), "");
  });
  EXPECT_LT(time, milliseconds(20'000));
}

}  // namespace
}  // namespace vlm
