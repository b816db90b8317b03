#include <velum/diagnostics/MachineInfo.h>

#include <velum/platform/detail/MachineFacts.h>

#include <bit>
#include <string>
#include <utility>

namespace vlm {

namespace {

/// By bits of register EDX.
constexpr const char* kFeatures[] = {
    "x87 FPU On Chip",
    "Virtual-8086 Mode Enhancement",
    "Debugging Extensions",
    "Page Size Extensions",
    "Time Stamp Counter",
    "RDMSR and WRMSR Support",
    "Physical Address Extensions",
    "Machine Check Exception",
    "CMPXCHG8B Instruction",
    "APIC On Chip",
    "Unknown1",
    "SYSENTER and SYSEXIT",
    "Memory Type Range Registers",
    "PTE Global Bit",
    "Machine Check Architecture",
    "Conditional Move/Compare Instruction",
    "Page Attribute Table",
    "Page Size Extension",
    "Processor Serial Number",
    "CFLUSH Extension",
    "Unknown2",
    "Debug Store",
    "Thermal Monitor and Clock Ctrl",
    "MMX Technology",
    "FXSAVE/FXRSTOR",
    "SSE Extensions",
    "SSE2 Extensions",
    "Self Snoop",
    "Hyper-threading Technology",
    "Thermal Monitor",
    "Unknown4",
    "Pend. Brk. EN.",
};
static_assert(sizeof(kFeatures) / sizeof(kFeatures[0]) == 32);

/// The system's name; empty without a kernel that tells its version.
GString NameOf(bool isKnown, const platform::KernelFacts& kernel) {
  if (!isKnown) return {};
  std::string name = platform::ReleaseName();
  return name.empty() ? kernel.name : std::move(name);
}

}  // namespace

GString GetOSName() {
  platform::KernelFacts kernel;
  const bool isKnown = platform::ReadKernelFacts(kernel);
  return NameOf(isKnown, kernel);
}

GString GetOSNameAndVersion() {
  platform::KernelFacts kernel;
  const bool isKnown = platform::ReadKernelFacts(kernel);
  const GString name = NameOf(isKnown, kernel);
  if (name.empty()) return {};
  GString version;
  (void)version.FormatString(", Version %u.%u, build %u", kernel.major, kernel.minor, kernel.build);
  return name + version;
}

std::uint64_t GetPhysicalMemory() {
  platform::MemoryFacts memory;
  return platform::ReadMemoryFacts(memory) ? memory.physicalFree : 0;
}

bool CPUHasFeature(unsigned long mask, GString* name) {
  const auto bits = static_cast<std::uint32_t>(mask);
  if (bits == 0) return false;
  if (name) *name = kFeatures[std::bit_width(bits) - 1];
  return (bits & platform::ProcessorFeatures()) != 0;
}

}  // namespace vlm
