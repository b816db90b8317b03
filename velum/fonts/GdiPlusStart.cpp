#include <velum/fonts/GdiPlusStart.h>

#include <velum/fonts/detail/QuietLog.h>

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
