#include <velum/core/StandardErrors.h>

namespace vlm {

// Out of line, so that their type information stands in the library alone.

OutOfRangeError::OutOfRangeError(const char* text) : std::out_of_range(text) {}
OutOfRangeError::OutOfRangeError(const OutOfRangeError&) noexcept = default;
OutOfRangeError::~OutOfRangeError() = default;

LengthError::LengthError(const char* text) : std::length_error(text) {}
LengthError::LengthError(const LengthError&) noexcept = default;
LengthError::~LengthError() = default;

}  // namespace vlm
