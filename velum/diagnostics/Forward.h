#pragma once

/// \file
/// Declares the classes of the diagnostics, for headers that only name them.
///
///     #include <velum/diagnostics/Forward.h>
///     void Report(vlm::CLogger& log);

namespace vlm {

class CDllCache;
class CDynLib;
class CLogger;
class CModQuery;
class CRemoteLogger;
class CSystemInfo;
class CTimer;
class CrashStack;
class ScopedLogMessage;
struct DllEntry;
struct DllEntryLess;

}  // namespace vlm
