#include <velum/platform/detail/Displays.h>
#include <velum/platform/detail/LoadedCode.h>
#include <velum/platform/detail/SafeText.h>
#include <velum/platform/detail/UtcTime.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <link.h>
#include <stdlib.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace vlm::platform {
namespace {

TEST(SafeText, CutsWhatHasNoRoomAndFormatsAsTheRuntimeDoes) {
  char small[5];
  EXPECT_EQ(SafeText(small).Put("abc").Decimal(-123).View(), "abc-1");
  for (const std::int64_t value :
       {std::int64_t{0}, std::int64_t{-1}, std::int64_t{90},
        std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
    const auto bits = static_cast<std::uint64_t>(value);
    char room[40];
    char expected[40];
    EXPECT_EQ(SafeText(room).Decimal(value).View(), std::to_string(value));
    std::snprintf(expected, sizeof(expected), "%08llx", static_cast<unsigned long long>(bits));
    EXPECT_EQ(SafeText(room).Hex(bits, 8).View(), expected);
    std::snprintf(expected, sizeof(expected), "%p", reinterpret_cast<void*>(bits));
    EXPECT_EQ(SafeText(room).Pointer(bits).View(), expected);
  }
}

TEST(UtcTime, IsThatOfTheRuntime) {
  std::vector<std::int64_t> times{0,          951'782'399,   951'782'400,   951'868'800,
                                  4107542399, 4'107'542'400, 1'735'689'599, 253'402'300'799};
  const unsigned int seed = std::random_device()();
  std::mt19937_64 random(seed);
  for (int i = 0; i < 10'000; ++i) times.push_back(static_cast<std::int64_t>(random() >> 28));
  for (const std::int64_t time : times) {
    char room[40];
    char expected[40];
    SafeText text(room);
    PutUtcTime(text, time);
    const std::time_t seconds = time;
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    std::strftime(expected, sizeof(expected), "%Y-%m-%d %H:%M:%S UTC", &parts);
    ASSERT_EQ(text.View(), expected) << "seed " << seed;
  }
}

/// What the loader says of the modules, each with its first address and its build ID.
struct Known {
  std::uintptr_t begin;
  std::string id;
};

std::vector<Known> AskLoader() {
  std::vector<Known> modules;
  ::dl_iterate_phdr(
      [](dl_phdr_info* info, std::size_t, void* user) {
        Known known{info->dlpi_addr, {}};
        for (int i = 0; i < info->dlpi_phnum; ++i) {
          const auto& segment = info->dlpi_phdr[i];
          if (segment.p_type != PT_NOTE) continue;
          const std::string_view notes(
              reinterpret_cast<const char*>(info->dlpi_addr + segment.p_vaddr), segment.p_memsz);
          const std::size_t at = notes.find(std::string_view("\x14\0\0\0\3\0\0\0GNU\0", 12));
          if (at != notes.npos) known.id = notes.substr(at + 12, 20);
        }
        static_cast<std::vector<Known>*>(user)->push_back(known);
        return 0;
      },
      &modules);
  return modules;
}

TEST(LoadedCode, ListsTheModulesOfTheLoaderWithTheirBuildIds) {
  static LoadedCode code;
  ASSERT_TRUE(code.Read());
  for (const Known& known : AskLoader()) {
    // The system's own code has no file, and a program that is not relocated begins at 0 there.
    const CodeModule* const module = code.Find(known.begin);
    if (!module || !module->isFile) continue;
    EXPECT_EQ(module->begin, known.begin) << module->path;
    EXPECT_EQ(BuildId(*module), known.id) << module->path;
  }
  const auto here = reinterpret_cast<std::uintptr_t>(&AskLoader);
  ASSERT_NE(code.Find(here), nullptr);
  EXPECT_EQ(std::filesystem::path(code.Find(here)->path),
            std::filesystem::read_symlink("/proc/self/exe"));
  EXPECT_TRUE(code.IsCode(here));
  EXPECT_FALSE(code.IsCode(0));
  static const int data = 0;
  EXPECT_FALSE(code.IsCode(reinterpret_cast<std::uintptr_t>(&data)));
}

TEST(BuildId, IsNotReadBeyondADamagedModule) {
  // A header that places its notes anywhere; only what lies inside is read.
  const unsigned int seed = std::random_device()();
  std::mt19937_64 random(seed);
  for (int round = 0; round < 2'000; ++round) {
    std::vector<char> image(512);
    for (char& byte : image) byte = static_cast<char>(random());
    ElfW(Ehdr) header{};
    std::memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_phoff = round % 3 ? sizeof(header) : random();
    header.e_phnum = static_cast<std::uint16_t>(random() % 8);
    std::memcpy(image.data(), &header, sizeof(header));
    ElfW(Phdr) segment{};
    segment.p_type = PT_NOTE;
    segment.p_vaddr = random() % 600;
    segment.p_filesz = round % 2 ? random() % 600 : random();
    std::memcpy(image.data() + sizeof(header), &segment, sizeof(segment));
    const auto begin = reinterpret_cast<std::uintptr_t>(image.data());
    const std::string_view id =
        BuildId({begin, begin + image.size(), begin, begin, true, true, "damaged"});
    ASSERT_TRUE(id.empty() ||
                (id.data() >= image.data() && id.data() + id.size() <= image.data() + image.size()))
        << "seed " << seed;
  }
}

TEST(Displays, AreReadFromTheKernelsFolders) {
  const vlm::testing::TemporaryFolder classes;
  const auto write = [&](const std::string& name, const char* text) {
    const std::filesystem::path path = classes.Path(name);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
  };
  ::unsetenv("WAYLAND_DISPLAY");
  ::unsetenv("DISPLAY");
  DisplayFacts facts = ReadDisplayFacts(classes.Path());
  EXPECT_EQ(facts.name, "");
  EXPECT_FALSE(facts.monitors || facts.screen || facts.whole || facts.bitsPerPixel);

  write("drm/card0/enabled", "x");
  write("drm/card0-DP-1/status", "disconnected\n");
  write("drm/card0-DP-2/status", "connected\n");
  write("drm/card0-DP-2/modes", "2560x1440\n1920x1080\n");
  write("drm/card0-HDMI-A-1/status", "connected\n");
  write("drm/card0-HDMI-A-1/modes", "");
  write("graphics/fb0/virtual_size", "2560,1440\n");
  write("graphics/fb0/bits_per_pixel", "32\n");
  ::setenv("DISPLAY", ":0", 1);
  facts = ReadDisplayFacts(classes.Path());
  ::unsetenv("DISPLAY");
  EXPECT_EQ(facts.name, ":0");
  EXPECT_EQ(facts.monitors, 2);
  ASSERT_TRUE(facts.screen && facts.whole);
  EXPECT_EQ(facts.screen->width, 2560);
  EXPECT_EQ(facts.screen->height, 1440);
  EXPECT_EQ(facts.whole->height, 1440);
  EXPECT_EQ(facts.bitsPerPixel, 32);

  for (const char* mode : {"x1440", "0x5", "-3x7", "9999999x9999999", "1024"}) {
    write("drm/card0-DP-2/modes", mode);
    EXPECT_FALSE(ReadDisplayFacts(classes.Path()).screen) << mode;
  }
}

}  // namespace
}  // namespace vlm::platform
