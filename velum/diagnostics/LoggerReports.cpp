#include <velum/diagnostics/Logger.h>

#include <velum/core/Exception.h>
#include <velum/core/StringFormat.h>
#include <velum/diagnostics/MachineInfo.h>
#include <velum/diagnostics/ModQuery.h>
#include <velum/diagnostics/detail/ExceptionText.h>
#include <velum/files/Path.h>
#include <velum/platform/Types.h>
#include <velum/platform/detail/Ascii.h>
#include <velum/platform/detail/Displays.h>
#include <velum/platform/detail/FileSystem.h>
#include <velum/platform/detail/FloatingPointUnit.h>
#include <velum/platform/detail/LocalTime.h>
#include <velum/platform/detail/MachineFacts.h>
#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/UserFolders.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

namespace vlm {
namespace {

const char* OrUnknown(const std::string& text) { return text.empty() ? "unknown" : text.c_str(); }

/// A folder with a separator at its end; empty if it is not there.
std::string IfThere(const std::string& folder) {
  const bool isThere = platform::KindOf(folder.c_str()) == platform::FileKind::kFolder;
  return isThere ? CPath::AppendDirSeparator(folder, true).String() : std::string();
}

unsigned int Megabytes(std::uint64_t bytes) { return static_cast<unsigned int>(bytes >> 20); }

/// A section of a report: its title, and when it ends the empty line behind it.
class Section {
 public:
  Section(CLogger& log, const char* title) : log_(log) { log_.Separator(LogInformation, title); }
  Section(const Section&) = delete;
  Section& operator=(const Section&) = delete;

  /// A line, formatted. Control characters, which texts from elsewhere may hold, show as '?', so
  /// that it stays a single one.
  template <class... Values>
  void Line(const char* format, Values... values) {
    std::string text = ToString(format, values...);
    std::replace_if(text.begin(), text.end(), platform::IsControl, '?');
    log_.SendVA(LogInformation, "%s", text.c_str());
  }
  /// A line with a text, if there is one.
  void LineIfAny(const char* format, const std::string& text) {
    if (!text.empty()) Line(format, text.c_str());
  }
  /// Ends the section; what logging throws goes to the caller, as no destructor's would.
  void End() { log_.Separator(LogInformation, GString()); }

 private:
  CLogger& log_;
};

}  // namespace

void CLogger::Time() {
  if (!IsEnabled()) return;
  const std::tm now = platform::PresentLocalTime();
  const std::string time = ToString("%02d:%02d:%02d", now.tm_hour, now.tm_min, now.tm_sec);
  const std::string date =
      ToString("%02d/%02d/%02d", now.tm_mon + 1, now.tm_mday, now.tm_year % 100);
  SendVA(LogInformation, "Current time is %s on %s", time.c_str(), date.c_str());
}

void CLogger::OSVersion() {
  if (!IsEnabled()) return;
  const std::string name = GetOSNameAndVersion();
  Section section(*this, "Operating System");
  section.Line("Operating system is %s", name.empty() ? "Unknown" : name.c_str());
  section.Line("Temp directory = '%s'", OrUnknown(IfThere(platform::TemporaryFolder())));
  section.Line("AppData directory = '%s'",
               OrUnknown(IfThere(platform::PathFromNative(platform::UserConfigFolder()))));
  section.End();
}

void CLogger::VideoInfo() {
  if (!IsEnabled()) return;
  const platform::DisplayFacts facts = platform::ReadDisplayFacts("/sys/class");
  Section section(*this, "Video Configuration");
  section.Line("Display name = %s", OrUnknown(facts.name));
  if (facts.monitors) section.Line("Number of monitors = %d", *facts.monitors);
  if (facts.screen) {
    section.Line("Screen resolution = %d x %d", facts.screen->width, facts.screen->height);
  }
  if (facts.whole) {
    section.Line("Virtual screen resolution = %d x %d", facts.whole->width, facts.whole->height);
  }
  if (facts.bitsPerPixel) section.Line("Bits per pixel = %d", *facts.bitsPerPixel);
  section.End();
}

void CLogger::Processor() {
  if (!IsEnabled()) return;
  const platform::ProcessorFacts facts = platform::ReadProcessorFacts();
  Section section(*this, "Processor Configuration");
  section.LineIfAny("Vendor identifier = %s", facts.vendor);
  section.LineIfAny("Processor name string = %s", facts.name);
  section.LineIfAny("Identifier = %s", facts.identifier);
  section.Line("Number of processors = %u", platform::ProcessorCount());
  section.Line("Active processor mask = %08I64x", platform::ProcessorMask());
  section.End();
}

void CLogger::Coprocessor() {
  if (!IsEnabled()) return;
  Section section(*this, "Coprocessor Configuration");
  if (const auto word = platform::FloatingPointControlWord()) {
    section.Line("Floating point control word = %08x", unsigned{*word});
  }
  section.End();
}

void CLogger::Memory() {
  if (!IsEnabled()) return;
  platform::MemoryFacts facts;
  const bool isKnown = platform::ReadMemoryFacts(facts) && facts.physical > 0;
  Section section(*this, "Memory Configuration");
  if (isKnown) {
    const std::uint64_t inUse = facts.physical - std::min(facts.physicalFree, facts.physical);
    section.Line("Memory in use = %u%%", static_cast<unsigned int>(inUse * 100 / facts.physical));
    section.Line("Physical memory = %u MB", Megabytes(facts.physical));
    section.Line("Free memory = %u MB", Megabytes(facts.physicalFree));
    section.Line("Paging file size = %u MB", Megabytes(facts.swap));
    section.Line("Paging file free = %u MB", Megabytes(facts.swapFree));
    section.Line("Virtual memory size = %u MB", Megabytes(facts.address));
    section.Line("Virtual memory free = %u MB", Megabytes(facts.addressFree));
  } else {
    section.Line("*** Error reading memory status ***");
  }
  section.End();
}

void CLogger::EnumModules() {
  if (!IsEnabled()) return;
  const CModQuery modules;
  Section section(*this, "Loaded Modules (path, version, time, size)");
  for (const CModQuery::CModuleInfo& module : modules) {
    section.Line("%-40s %-12s %-15s %d", module.GetPath().c_str(), module.GetVersion().c_str(),
                 module.GetTimeStampStr().c_str(), module.GetSize());
  }
  section.End();
}

void CLogger::LogAllConfigInfo() {
  Time();
  OSVersion();
  VideoInfo();
  Processor();
  Coprocessor();
  Memory();
  EnumModules();
}

void CLogger::Exception(EXCEPTION_POINTERS* pointers) {
  if (!IsEnabled()) return;
  if (!pointers || !pointers->ExceptionRecord) ThrowErrorImpl("Logger", __LINE__, ERR_INTERNAL);
  Separator(LogInformation, detail::kExceptionTitle);
  const auto send = [](std::string_view line, void* log) {
    static_cast<CLogger*>(log)->SendVA(LogAlert, "%s", std::string(line).c_str());
  };
  detail::TellException(*pointers->ExceptionRecord, send, this);
  Separator(LogInformation, GString());
}

}  // namespace vlm
