#include <velum/diagnostics/EMFRefDC.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/DrawingContext.h>

namespace vlm {

EMFRefDC::EMFRefDC() : context_(GetDC(nullptr)) {
  if (!context_) ThrowErrorImpl("EmfRefDC", __LINE__, ERR_OUT_OF_MEMORY);
}

EMFRefDC::~EMFRefDC() { ReleaseDC(nullptr, context_); }

}  // namespace vlm
