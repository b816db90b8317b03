#include <velum/diagnostics/MemDC.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/DrawingContext.h>
#include <velum/diagnostics/detail/DeviceContext.h>
#include <velum/platform/detail/Canvas.h>

#include <cstdint>

namespace vlm {

CMemDC::CMemDC(HDC target, const RECT* rect) : memory_(nullptr), target_(target), rect_{} {
  if (!target) ThrowErrorImpl("GdiUtil", __LINE__, ERR_INTERNAL);
  const detail::DeviceContext& to = *detail::ContextOf(target);
  // Kept in device units, since logical ones may be too coarse to tell pixels apart.
  if (rect) {
    rect_ = detail::ToDevice(to.mapping, *rect);
  } else if (to.canvas) {
    rect_ = to.canvas->ClipBox();
  }
  const SIZE size{detail::Saturated(std::int64_t{rect_.right} - rect_.left),
                  detail::Saturated(std::int64_t{rect_.bottom} - rect_.top)};
  memory_ = CreateCompatibleDC(target);
  bitmap_ = CreateCompatibleBitmap(memory_, size.cx, size.cy);
  replaced_ = bitmap_ ? SelectObject(memory_, bitmap_) : nullptr;
  if (!replaced_) {
    DeleteDC(memory_);
    DeleteObject(bitmap_);
    ThrowErrorImpl("GdiUtil", __LINE__, ERR_INTERNAL);
  }

  POINT corner{rect_.left, rect_.top};
  DPtoLP(target, &corner, 1);
  detail::DeviceContext& memory = *detail::ContextOf(memory_);
  memory.mapping = to.mapping;
  memory.mapping.MoveOrigins(corner, rect_.left, rect_.top);
  memory.background = to.background;
  memory.canvas->Fill({0, 0, size.cx, size.cy}, to.background);
}

CMemDC::~CMemDC() {
  const detail::DeviceContext& to = *detail::ContextOf(target_);
  if (to.canvas) to.canvas->Copy(rect_, *detail::ContextOf(memory_)->canvas, {0, 0});
  SelectObject(memory_, replaced_);
  DeleteObject(bitmap_);
  DeleteDC(memory_);
}

}  // namespace vlm
