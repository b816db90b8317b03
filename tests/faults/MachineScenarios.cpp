#include "Scenarios.h"

#include <velum/diagnostics/DllCache.h>
#include <velum/diagnostics/DynLib.h>
#include <velum/diagnostics/LocateFile.h>
#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/MachineInfo.h>
#include <velum/diagnostics/ModQuery.h>
#include <velum/diagnostics/ScopedLogMessage.h>
#include <velum/diagnostics/SystemInfo.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <testing/TemporaryFolder.h>

#include <fstream>
#include <iterator>
#include <string>

namespace vlm::faults {
namespace {

std::string InFolder(const std::string& name) {
  static const testing::TemporaryFolder folder;
  return folder.Path("a file whose name is too long to stand in a string itself " + name);
}

const std::string kLong(300, 'x');

const Scenario kScenarios[] = {
    {"ALog",
     [] {
       const std::string path = InFolder("wells.log");
       std::ofstream(path).close();
       {
         CLogger log(path);
         log.SendVA(LogInformation, "Loaded %d wells and %s", 12, kLong.c_str());
         log.Separator(LogInformation, "Memory");
         log.Send(LogFailure, kLong);
         log.Separator(LogInformation, "");
       }
       std::ifstream file(path);
       return std::string(std::istreambuf_iterator<char>(file), {});
     }},
    {"ALogInMemory",
     [] {
       CLogger log;
       log.SetOutputCallback([](int, const GString&, void*) {}, nullptr);
       log.Send(LogInformation, kLong);
       return log.GetBuffer().String();
     }},
    {"ALogOverTheNetwork",
     [] {
       CLogger log;
       const bool isUsable = log.SetRemoteLogger(kLong, "127.0.0.1", 9, 500);
       log.Send(LogInformation | LogRemote, kLong);
       return std::string(isUsable ? "usable" : "unusable") + log.GetBuffer().String();
     }},
    {"AReportOnTheMachine",
     [] {
       CLogger log;
       log.OSVersion();
       log.Processor();
       log.Memory();
       log.VideoInfo();
       log.EnumModules();
       return std::to_string(log.GetBuffer().find("=") != GString::npos);
     }},
    {"FactsOfTheMachine",
     [] {
       GString features;
       const bool hasFpu = CPUHasFeature(1, &features);
       return GetOSNameAndVersion().String() + features.String() + (hasFpu ? "fpu" : "");
     }},
    {"ModulesOfTheProcess",
     [] {
       const CModQuery modules(1);
       const CModQuery copy = modules;
       return std::to_string(copy.size()) + copy[0].GetPath().String() +
              copy[0].GetVersion().String();
     }},
    {"LibrariesThatAreLoaded",
     [] {
       CDynLib mathematics("libm.so.6");
       const CDynLib copy = mathematics;
       const bool isThere =
           mathematics.GetSymbol("cos") && mathematics.IsLoaded() && !copy.IsLoaded();
       const HINSTANCE module = CDllCache::GetInstance().Load("libz.so.1");
       CDllCache::GetInstance().DecRef(module);
       CDllCache::GetInstance().Flush(true);
       if (!isThere || !module) throw Refused();
       return std::string("there");
     }},
    {"FilesThatAreLocated",
     [] {
       const std::string path = InFolder("data.txt");
       std::ofstream(path) << "x";
       CSystemInfo& system = CSystemInfo::GetInstance();
       system.ResetToDefaults();
       system.AddExtraSearchPath(path.substr(0, path.rfind('/')));
       const GString found = LocateFile(path.substr(path.rfind('/') + 1));
       const auto faces = system.DefVariablePitchFace() + system.DefFixedPitchFace();
       return found.String() + faces.String();
     },
     0, [] { (void)CSystemFaceInfo::GetInstance(); }},
};

}  // namespace

std::span<const Scenario> MachineScenarios() { return kScenarios; }

}  // namespace vlm::faults
