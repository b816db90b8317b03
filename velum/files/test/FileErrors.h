#pragma once

#include <velum/core/Exception.h>
#include <velum/core/StringFormat.h>

#include <string>

namespace vlm::test {

/// What `work` throws, as its number and message: "10: Unable to open ...". "nothing" for nothing.
template <class Work>
std::string ErrorOf(Work work) {
  try {
    work();
  } catch (const Exception& error) {
    return ToString("%d: %s", error.GetErrCode(), error.GetDescription().c_str());
  }
  return "nothing";
}

/// The number alone; -1 for nothing.
template <class Work>
int CodeOf(Work work) {
  try {
    work();
  } catch (const Exception& error) {
    return error.GetErrCode();
  }
  return -1;
}

}  // namespace vlm::test
