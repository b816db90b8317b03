#include "Scenarios.h"

#include <velum/files/BufferedFile.h>
#include <velum/files/CodePageInfo.h>
#include <velum/files/ConfigFile.h>
#include <velum/files/EncodedBufferedFile.h>
#include <velum/files/File.h>
#include <velum/files/FileFind.h>
#include <velum/files/FileUtilities.h>
#include <velum/files/HtmlReport.h>
#include <velum/files/HtmlTags.h>
#include <velum/files/MemoryFile.h>
#include <velum/files/Path.h>
#include <velum/files/PrimData.h>
#include <velum/files/RegParamList.h>
#include <velum/files/TextEncoding.h>
#include <velum/files/XMLNode.h>
#include <velum/files/XMLScanner.h>
#include <testing/TemporaryFolder.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace vlm::faults {
namespace {

/// A folder for all scenarios of the process.
std::string InFolder(const std::string& name) {
  static const testing::TemporaryFolder folder;
  return folder.Path("a folder whose name is too long to stand in a string itself " + name);
}

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Put(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

const std::string kLong(3000, 'x');

const Scenario kScenarios[] = {
    {"AFileInMemory",
     [] {
       CMemoryFile file;
       for (int i = 0; i < 4; ++i) file.Write(kLong.data(), 3000);
       return std::to_string(file.GetLength());
     }},
    {"AFileOfTheSystem",
     [] {
       const std::string path = InFolder("file.dat");
       CFile file(path, CFile::AccessReadWrite, CFile::ModeCreateAlways, CFile::ShareDenyAll);
       file.Write(kLong.data(), 3000);
       file.SeekToBegin();
       char text[10];
       file.ReadN(text, sizeof(text));
       file.Close();
       file.Open();
       file.Write(text, sizeof(text));
       return Contents(path) + std::to_string(file.GetLength());
     }},
    {"ABufferedFile",
     [] {
       const std::string path = InFolder("buffered.txt");
       CBufferedFile file(path, "w", CBufferedFile::ShareDenyAll, true);
       file.Printf("%s\n%d", kLong.c_str(), 7);
       file.Close();
       file.Open(path, "r", CBufferedFile::ShareDenyWrite, false);
       std::string line;
       file.ReadString(line);
       file.Close();
       file.Open();
       file.WriteString(kLong.c_str());
       file.SeekToBegin();
       std::string again;
       file.ReadString(again);
       return line + again;
     }},
    {"AFileInUtf16",
     [] {
       using File = CEncodedBufferedFile;
       const std::string path = InFolder("units.txt");
       File file(path, "w", File::ShareDenyAll, EncodingUTF16LE, 0, true, true);
       file.WriteString(L"Gr\u00F6\u00DFe (\u00B5m)\r\n" + std::wstring(600, L'\u03BB') + L"\n");
       file.Close();
       file.Open(path, "r", File::ShareDenyWrite, EncodingANSI, 1252, false, false);
       std::string lengths;
       for (std::wstring line; file.ReadString(line);) lengths += std::to_string(line.size()) + " ";
       return lengths + Contents(path);
     }},
    {"AFileInACodePage",
     [] {
       using File = CEncodedBufferedFile;
       const std::string path = InFolder("page.txt");
       File file(path, "w", File::ShareDenyAll, EncodingANSI, 932, true, true);
       file.WriteString(std::wstring(100, L'\u3042') + L"\n");
       file.Close();
       file.Open(path, "r", File::ShareDenyWrite, EncodingANSI, 932, true, false);
       std::wstring line;
       file.ReadString(line);
       const CodePageInfo pages(CodePageInfo::CPIOrderByName);
       return std::to_string(line.size()) + Contents(path) + pages.GetNameByIndex(3).String();
     }},
    {"WhatAFileIsEncodedIn",
     [] {
       const std::string path = InFolder("guess.txt");
       Put(path, "plain text of some length");
       return std::to_string(IsFileANSI(path, 512)) + std::to_string(IsFileUTF16LE(path, 512)) +
              std::to_string(IsFileBinary(path, 512));
     }},
    {"SettingsThatAreWritten",
     [] {
       const std::string path = InFolder("plots.ini");
       Put(path,
           "; By hand\n[Axes]\n  Ticks = 0.2   \n\n; " + kLong + "\n[Output]\nFolder = plots\n");
       const CConfigFile config(path);
       config.Write("Axes", "Ticks", 0.25);
       config.Write("Axes", "Title", ("  " + kLong).c_str());
       config.RemoveEntry("Output", "Folder");
       return Contents(path);
     }},
    {"SettingsThatAreRead",
     [] {
       const std::string path = InFolder("read.ini");
       Put(path, "[Axes]\nTitle = \"  " + kLong.substr(0, 900) + "\"\nTicks = 7\n");
       const CConfigFile config(path);
       GString title;
       int ticks = 0;
       if (!config.Read("axes", "title", title) || !config.Read("Axes", "Ticks", ticks))
         throw Refused();
       std::vector<GString> lines;
       config.ReadSection("Axes", lines);
       return title.String() + std::to_string(ticks) + lines.at(1).String();
     }},
    {"TheRegistry",
     [] {
       SetRegistryFile(InFolder("registry.db"));
       const GString key("Software\\Plots of the department of geology\\Window");
       CRegParamList window(HKEY_CURRENT_USER, key);
       window.Set("Title of the window as it was last set", kLong.c_str(), true);
       window.Set("Width", 800, true);
       const CRegParamList again(HKEY_CURRENT_USER, key);
       const GString title = again.GetDef("Title of the window as it was last set", "none", true);
       window.Remove("Width", true);
       return title.String() + std::to_string(again.GetDef("Width", 640, true));
     }},
    {"ADocumentOfXml",
     [] {
       const std::string path = InFolder("report.xml");
       Put(path, "<?xml version=\"1.0\"?>\n<worksheet title=\"" + kLong +
                     "\">\n<!-- two -->\n<column name=depth/><column name=rock/>\n<note>" + kLong +
                     "</note>\n</worksheet>\n");
       XMLScanner scanner;
       const auto sheet = scanner.ScanFile(path)->FindChild("worksheet", 0);
       return sheet->attributes["title"].String() + sheet->FindChild("note", 0)->value +
              sheet->FindChild("column", 1)->attributes["name"].String();
     }},
    {"AReportInHtml",
     [] {
       CHtmlReport report;
       report << Preamble(kLong) << Heading(1, "Depths") << TableBeg() << TRBeg() << TDBeg() << 12.5
              << TDEnd() << TREnd() << TableEnd();
       if (!report.good()) throw Refused();  // so streams tell of missing memory
       const std::string path = InFolder("wells.html");
       report.WriteToFile(path);
       return report.GetReport() + Contents(path);
     }},
    {"FilesThatAreFound",
     [] {
       const std::string folder = InFolder("found");
       std::filesystem::create_directory(folder);
       Put(folder + "/a name that is longer than fits.dat", "x");
       Put(folder + "/b.dat", "x");
       CFileFind find(folder + "/*.dat");
       std::string names;
       while (find.FindNextFileA()) {
         const CFileFind copy = find;
         names += copy.GetFilePath(true).String() + copy.GetFileName().String();
       }
       return names;
     }},
    {"APathThatIsTakenApart",
     [] {
       CPath path("c:\\data of the year\\and of the one before\\wells.dat");
       path.SetExtension("backup of yesterday");
       path.SetName("the wells of the northern part");
       const CPath other(InFolder("sub/wells.dat"));
       other.CreatePath();
       const GString temporary = CPath::GetTempFilename(InFolder("sub").c_str());
       const bool isMade = FileExists(temporary) && RemoveFile(temporary);
       return path.GetDriveAndDirectory(false).String() + path.GetFullPath().String() +
              CPath::ChangeExtension(path.GetPath().c_str(), "dat").String() +
              GetCWD(true).String() + GetStartupFilename(nullptr, false).String() +
              (isMade ? "made" : "missing");
     }},
};

}  // namespace

std::span<const Scenario> FileScenarios() { return kScenarios; }

}  // namespace vlm::faults
