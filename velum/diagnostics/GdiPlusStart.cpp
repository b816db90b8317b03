#include <velum/diagnostics/GdiPlusStart.h>

#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/detail/QuietLog.h>

#include <atomic>

namespace vlm {

namespace {

constinit std::atomic<int> users{0};

}  // namespace

void InitGdiPlus() { ++users; }

void TermGdiPlus() {
  const int left = --users;
  if (left < 0) detail::LogQuietly(LogScope, "s_GdiRefs invalid: %d", left);
}

CStartGdiPlus::CStartGdiPlus() { InitGdiPlus(); }
CStartGdiPlus::~CStartGdiPlus() { TermGdiPlus(); }

}  // namespace vlm
