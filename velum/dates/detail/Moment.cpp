#include <velum/dates/detail/Moment.h>

#include <velum/core/Exception.h>

namespace vlm::detail {

void RaiseMisuse(int line) { ThrowErrorImpl("DateTime", line, ERR_INTERNAL); }

}  // namespace vlm::detail
