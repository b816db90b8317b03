#pragma once

/// \file
/// How an action ended.
///
///     if (command->Do() == vlm::STATUS_SUCCESS) puts("done");

namespace vlm {

/// The result of a command or of an element. The numbers are part of the interface.
enum StatusCode {
  STATUS_CANCELED = 0,  ///< The user canceled it.
  STATUS_SUCCESS = 1,   ///< It was done.
  STATUS_FAILURE = 2,   ///< It could not be done.
};

}  // namespace vlm
