#pragma once

/// \file
/// Declares the classes of the diagnostics, for headers that only name them.
///
///     #include <velum/diagnostics/Forward.h>
///     void Report(vlm::CLogger& log);

namespace vlm {

class CLogger;
class CRemoteLogger;
class ScopedLogMessage;

}  // namespace vlm
