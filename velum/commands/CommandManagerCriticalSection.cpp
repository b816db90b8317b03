#include <velum/commands/CommandManagerCriticalSection.h>

namespace vlm::CommandManagerPrivate {

CCriticalSection CommandManagerCriticalSection::criticalSection;

}  // namespace vlm::CommandManagerPrivate
