#include <velum/commands/CriticalSection.h>

namespace vlm {

CCriticalSection::CCriticalSection() = default;
CCriticalSection::~CCriticalSection() = default;

void CCriticalSection::Lock() { mutex_.lock(); }
bool CCriticalSection::TryLock() noexcept { return mutex_.try_lock(); }
void CCriticalSection::Unlock() noexcept { mutex_.unlock(); }

}  // namespace vlm
