#include <velum/platform/detail/ElfNames.h>

#include <gtest/gtest.h>
#include <link.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <string>

namespace vlm::platform {
namespace {

/// A file in memory.
struct Bytes final : ByteSource {
  explicit Bytes(std::string given) : bytes(std::move(given)) {}
  std::size_t Read(std::uint64_t offset, void* data, std::size_t count) const override {
    if (offset >= bytes.size()) return 0;
    count = std::min(count, bytes.size() - static_cast<std::size_t>(offset));
    std::memcpy(data, bytes.data() + offset, count);
    return count;
  }
  std::string bytes;
};

/// The header of the program's file.
ElfW(Ehdr) OfThisProgram() {
  ElfW(Ehdr) header{};
  std::ifstream file("/proc/self/exe", std::ios::binary);
  file.read(reinterpret_cast<char*>(&header), sizeof(header));
  return header;
}

/// A library of two segments and three tables, put together by hand: its addresses are not its
/// offsets.
struct Library {
  static constexpr ElfW(Addr) kAddress = 0x400000;

  ElfW(Ehdr) header{};
  ElfW(Phdr) load{};
  ElfW(Phdr) dynamic{};
  ElfW(Dyn) entries[6]{};
  ElfW(Verdef) versions[3]{};
  ElfW(Verdaux) names[3]{};
  char strings[64]{};

  Library() {
    std::memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_ident[EI_CLASS] = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    header.e_ident[EI_DATA] = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB;
    header.e_machine = OfThisProgram().e_machine;
    header.e_phoff = At(&load);
    header.e_phentsize = sizeof(load);
    header.e_phnum = 2;
    load.p_type = PT_LOAD;
    load.p_vaddr = kAddress;
    load.p_filesz = sizeof(*this);
    dynamic.p_type = PT_DYNAMIC;
    dynamic.p_offset = At(entries);
    dynamic.p_filesz = sizeof(entries);
    const char text[] = "\0libx.so.6\0X_2.9\0X_2.10\0libx.so.6";
    std::memcpy(strings, text, sizeof(text));
    SetEntry(0, DT_SONAME, 1);
    SetEntry(1, DT_STRTAB, kAddress + At(strings));
    SetEntry(2, DT_STRSZ, sizeof(strings));
    SetEntry(3, DT_VERDEF, kAddress + At(versions));
    SetEntry(4, DT_VERDEFNUM, 3);
    const unsigned short flags[] = {VER_FLG_BASE, 0, 0};
    const unsigned texts[] = {24, 17, 11};
    for (unsigned i = 0; i < 3; ++i) {
      versions[i].vd_version = VER_DEF_CURRENT;
      versions[i].vd_flags = flags[i];
      versions[i].vd_aux = static_cast<unsigned>(At(&names[i]) - At(&versions[i]));
      versions[i].vd_next = i < 2 ? sizeof(versions[i]) : 0;
      names[i].vda_name = texts[i];
    }
  }

  std::size_t At(const void* part) const {
    return static_cast<std::size_t>(static_cast<const char*>(part) -
                                    reinterpret_cast<const char*>(this));
  }
  void SetEntry(unsigned index, long tag, std::size_t value) {
    entries[index].d_tag = tag;
    entries[index].d_un.d_val = value;
  }
  std::string Text() const { return {reinterpret_cast<const char*>(this), sizeof(*this)}; }
};

/// The names in a library as "SONAME newest", "no" for what is none.
std::string Read(const std::string& bytes) {
  ElfNames names{"old", "old"};
  return ReadElfNames(Bytes(bytes), names) ? names.soname + ' ' + names.newestVersion : "no";
}

TEST(ElfNames, TablesAreFoundByTheirAddresses) {
  EXPECT_EQ(Read(Library().Text()), "libx.so.6 2.10");
}

TEST(ElfNames, WhatDoesNotFitIsLeftOut) {
  const struct {
    const char* why;
    void (*change)(Library&);
    const char* expected;
  } rows[] = {
      {"another kind of file", [](Library& l) { l.header.e_ident[0] = 'M'; }, "no"},
      {"another width", [](Library& l) { l.header.e_ident[EI_CLASS] ^= 3; }, "no"},
      {"another byte order", [](Library& l) { l.header.e_ident[EI_DATA] ^= 3; }, "no"},
      {"another machine", [](Library& l) { l.header.e_machine ^= 1; }, "no"},
      {"segments of another size", [](Library& l) { l.header.e_phentsize = 1; }, "no"},
      {"segments beyond the end", [](Library& l) { l.header.e_phoff = UINT64_MAX - 8; }, "no"},
      {"too many segments", [](Library& l) { l.header.e_phnum = 0xFFFF; }, "no"},
      {"no segments", [](Library& l) { l.header.e_phnum = 0; }, " "},
      {"no table", [](Library& l) { l.dynamic.p_type = PT_NULL; }, " "},
      {"table beyond the end", [](Library& l) { l.dynamic.p_offset = UINT64_MAX - 8; }, " "},
      {"table of any length", [](Library& l) { l.dynamic.p_filesz = UINT64_MAX; },
       "libx.so.6 2.10"},
      {"nothing is loaded", [](Library& l) { l.load.p_type = PT_NULL; }, " "},
      {"loaded from beyond", [](Library& l) { l.load.p_offset = UINT64_MAX - 64; }, " "},
      {"strings beyond their segment", [](Library& l) { l.SetEntry(1, DT_STRTAB, 1); }, " "},
      {"no strings", [](Library& l) { l.SetEntry(2, DT_STRSZ, 0); }, " "},
      {"strings of any length", [](Library& l) { l.SetEntry(2, DT_STRSZ, SIZE_MAX); },
       "libx.so.6 2.10"},
      {"strings cut inside the names", [](Library& l) { l.SetEntry(2, DT_STRSZ, 20); },
       "libx.so.6 2.9"},
      {"name beyond the strings", [](Library& l) { l.SetEntry(0, DT_SONAME, 64); }, " 2.10"},
      {"name without an end", [](Library& l) { std::memset(l.strings + 1, 'x', 63); }, " "},
      {"name with a line end", [](Library& l) { l.strings[2] = '\n'; }, " 2.10"},
      {"any count of versions", [](Library& l) { l.SetEntry(4, DT_VERDEFNUM, SIZE_MAX); },
       "libx.so.6 2.10"},
      {"fewer versions", [](Library& l) { l.SetEntry(4, DT_VERDEFNUM, 1); }, "libx.so.6 "},
      {"versions of another form", [](Library& l) { l.versions[1].vd_version = 9; }, "libx.so.6 "},
      {"next version beyond", [](Library& l) { l.versions[0].vd_next = UINT32_MAX; }, "libx.so.6 "},
      {"name of a version beyond", [](Library& l) { l.versions[1].vd_aux = UINT32_MAX; },
       "libx.so.6 2.9"},
      {"versions in themselves",
       [](Library& l) {
         l.SetEntry(4, DT_VERDEFNUM, SIZE_MAX);
         l.versions[1].vd_next = 1;
       },
       "libx.so.6 2.10"},
  };
  for (const auto& row : rows) {
    Library library;
    row.change(library);
    EXPECT_EQ(Read(library.Text()), row.expected) << row.why;
  }
}

TEST(ElfNames, CutFilesAreReadInBounds) {
  const std::string whole = Library().Text();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::string found = Read(whole.substr(0, length));
    EXPECT_TRUE(found == "no" || found.front() == ' ' || found.rfind("libx.so.6", 0) == 0)
        << length;
  }
}

TEST(ElfNames, FilesOfWhichAPartIsMissingAreCut) {
  Library library;
  const std::uint64_t size = sizeof(library);
  EXPECT_FALSE(IsCutElf(Bytes(library.Text()), size));
  EXPECT_TRUE(IsCutElf(Bytes(library.Text()), size - 1));
  library.load.p_offset = UINT64_MAX;
  EXPECT_TRUE(IsCutElf(Bytes(library.Text()), size));
  EXPECT_FALSE(IsCutElf(Bytes("text"), 4)) << "no such file at all";
}

TEST(ElfNames, NumbersOfNames) {
  const struct {
    const char* soname;
    const char* number;
  } sonames[] = {
      {"libboost_system.so.1.74.0", "1.74.0"},
      {"libc.so.6", "6"},
      {"libx-2.4.so", "2.4"},
      {"libx.so", ""},
      {"libx-data.so", ""},
      {"libx.so.1.so.2", "2"},
      {"libx.so.1a", ""},
      {"libx.so.", ""},
      {"libx.so1", "1"},
      {"libx.so.1.", ""},
      {"", ""},
      {".so", ""},
  };
  for (const auto& row : sonames) EXPECT_EQ(NumberInSoname(row.soname), row.number) << row.soname;
  const struct {
    const char* name;
    const char* number;
  } versions[] = {
      {"GLIBC_2.36", "2.36"},
      {"LIBDBUS_1_3", "1.3"},
      {"GLIBC_PRIVATE", ""},
      {"LIBXML2_2.9.1", "2.9.1"},
      {"SYSTEMD_252", "252"},
      {"X_1234567890", ""},
      {"CXXABI_FLOAT128", ""},
      {"X_1..2_", "1.2"},
      {"", ""},
      {"_._", ""},
      {"7", "7"},
  };
  for (const auto& row : versions) EXPECT_EQ(NumberOfVersion(row.name), row.number) << row.name;
}

TEST(ElfNames, ASingleNumberGivesWayToTheVersionSymbols) {
  EXPECT_EQ(VersionIn({"libc.so.6", "2.36"}), "2.36");
  EXPECT_EQ(VersionIn({"libx.so.1.74.0", "2.36"}), "1.74.0");
  EXPECT_EQ(VersionIn({"libx.so.6", ""}), "6");
  EXPECT_EQ(VersionIn({"", "2.36"}), "2.36");
  EXPECT_EQ(VersionIn({"libpng16.so.16", "0"}), "16") << "that says less";
  EXPECT_EQ(VersionIn({"libsystemd.so.0", "252"}), "252");
  EXPECT_EQ(VersionIn({"libx.so", ""}), "");
}

}  // namespace
}  // namespace vlm::platform
