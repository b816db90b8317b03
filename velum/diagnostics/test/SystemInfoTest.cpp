#include <velum/diagnostics/SystemInfo.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/test/Environment.h>
#include <velum/files/FileUtilities.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <locale.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vlm {
namespace {

struct SystemInfo : ::testing::Test {
  SystemInfo() { settings.ResetToDefaults(); }
  ~SystemInfo() override { settings.ResetToDefaults(); }
  CSystemInfo& settings = CSystemInfo::GetInstance();
};

TEST_F(SystemInfo, FoldersEndInASeparator) {
  EXPECT_EQ(settings.AppStartupPath(), GetStartupPath(nullptr, true));
  EXPECT_EQ(settings.AppDataPath(), "");
  const std::pair<const char*, const char*> rows[] = {
      {"\\data", "\\data\\"}, {"\\data\\", "\\data\\"}, {"/data/", "/data/"},
      {"/data", "/data\\"},   {"c:", "c:\\"},           {"", ""},
  };
  for (const auto& [given, kept] : rows) {
    settings.AppStartupPath(given);
    settings.AppDataPath(given);
    EXPECT_EQ(settings.AppStartupPath(), kept);
    EXPECT_EQ(settings.AppDataPath(), kept);
  }
  settings.AddExtraSearchPath("first");
  settings.AddExtraSearchPath("");
  settings.AddExtraSearchPath("second\\");
  EXPECT_EQ(settings.ExtraSearchPaths(), (std::vector<GString>{"first\\", "second\\"}));
  settings.ExtraSearchPaths(settings.ExtraSearchPaths());
  EXPECT_EQ(settings.ExtraSearchPaths(), (std::vector<GString>{"first\\", "second\\"}));
  settings.ExtraSearchPaths({"", "third", ""});
  EXPECT_EQ(settings.ExtraSearchPaths(), (std::vector<GString>{"third\\"}));
}

TEST_F(SystemInfo, DefaultsComeBack) {
  settings.AppStartupPath("\\elsewhere");
  settings.AppDataPath("\\data");
  settings.DefFixedPitchFace("Fixed");
  settings.DefVariablePitchFace("Variable");
  settings.AddExtraSearchPath("first");
  settings.AppTranslationCodePage(1252);
  settings.ResetToDefaults();
  EXPECT_EQ(settings.AppStartupPath(), GetStartupPath(nullptr, true));
  EXPECT_EQ(settings.AppDataPath(), "");
  EXPECT_NE(settings.DefFixedPitchFace(), "Fixed");
  EXPECT_NE(settings.DefVariablePitchFace(), "Variable");
  EXPECT_TRUE(settings.ExtraSearchPaths().empty());
  EXPECT_EQ(settings.AppTranslationCodePage(), 0u);
}

TEST_F(SystemInfo, FacesAreThoseOfTheSystemUnlessTheyAreSet) {
  const auto& faces = CSystemFaceInfo::GetInstance();
  EXPECT_EQ(settings.DefVariablePitchFace(), faces.GetDefVariablePitchFaceInfo()->GetFaceName());
  EXPECT_EQ(settings.DefFixedPitchFace(), faces.GetDefFixedPitchFaceInfo()->GetFaceName());
  settings.DefVariablePitchFace("Variable");
  settings.DefFixedPitchFace("Fixed");
  settings.DefVariablePitchFace("");
  settings.DefFixedPitchFace("");
  EXPECT_EQ(settings.DefVariablePitchFace(), "Variable");
  EXPECT_EQ(settings.DefFixedPitchFace(), "Fixed");
}

TEST_F(SystemInfo, AMachineWithoutFontsCanLocateFilesButHasNoDefaultFaces) {
  const testing::TemporaryFolder folder;
  std::ofstream(folder.Path("fonts.conf")) << "<fontconfig></fontconfig>";
  // In a process of its own, since faces are listed once.
  const auto report = [&folder](const char* test) {
    std::string program = GetModuleFilename(nullptr);
    std::replace(program.begin(), program.end(), '\\', '/');
    const std::string command = "FONTCONFIG_FILE=" + folder.Path("fonts.conf") + " '" + program +
                                "' --gtest_filter=" + test + " 2>&1";
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
    std::string text;
    for (int c = std::getc(pipe.get()); c != EOF; c = std::getc(pipe.get())) {
      text += static_cast<char>(c);
    }
    return text;
  };
  const std::string located = report("LocateFile.TakesTheFirstOfTheSearchPathsAsItWasGiven");
  EXPECT_NE(located.find("[  PASSED  ] 1 test."), std::string::npos) << located;
  const std::string faces = report("SystemInfo.FacesAreThoseOfTheSystemUnlessTheyAreSet");
  EXPECT_NE(faces.find("[  FAILED  ] 1 test,"), std::string::npos) << faces;
}

TEST_F(SystemInfo, DecimalAndThousandsCharactersAreNeverEqual) {
  settings.DefDecimalChar(',');
  EXPECT_EQ(settings.DefThousandsChar(), '.');
  settings.DefThousandsChar(',');
  EXPECT_EQ(settings.DefDecimalChar(), '.');
  for (const char wrong : {' ', '\'', '\0', ';'}) {
    for (void (CSystemInfo::*set)(char) :
         {static_cast<void (CSystemInfo::*)(char)>(&CSystemInfo::DefDecimalChar),
          static_cast<void (CSystemInfo::*)(char)>(&CSystemInfo::DefThousandsChar)}) {
      try {
        (settings.*set)(wrong);
        ADD_FAILURE() << "taken: " << int{wrong};
      } catch (const Exception& error) {
        EXPECT_EQ(error.GetErrCode(), ERR_INVALID_PARAMETER);
        EXPECT_EQ(error.GetSrcFile(), "SystemInfo");
      }
      EXPECT_EQ(settings.DefDecimalChar(), '.');
      EXPECT_EQ(settings.DefThousandsChar(), ',');
    }
  }
}

TEST_F(SystemInfo, TheDecimalCharacterIsThatOfTheUsersLocale) {
  const locale_t german = newlocale(LC_NUMERIC_MASK, "de_DE.UTF-8", locale_t{});
  if (!german) GTEST_SKIP() << "needs the locale de_DE.UTF-8; ctest says where it is";
  freelocale(german);
  const test::Environment before("LC_ALL");
  const std::pair<const char*, char> rows[] = {
      {"de_DE.UTF-8", ','}, {"C", '.'}, {"POSIX", '.'}, {"xx_XX.not-installed", '.'}};
  for (const auto& [name, point] : rows) {
    setenv("LC_ALL", name, 1);
    settings.ResetToDefaults();
    EXPECT_EQ(settings.DefDecimalChar(), point) << name;
    EXPECT_EQ(settings.DefThousandsChar(), point == '.' ? ',' : '.') << name;
  }
}

TEST_F(SystemInfo, CodePagesHaveSixteenBits) {
  settings.AppTranslationCodePage(0xFFFF);
  EXPECT_EQ(settings.AppTranslationCodePage(), 0xFFFFu);
  settings.AppTranslationCodePage(0x10000);
  EXPECT_EQ(settings.AppTranslationCodePage(), 0u);
}

}  // namespace
}  // namespace vlm
