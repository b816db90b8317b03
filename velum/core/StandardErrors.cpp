#include <velum/core/StandardErrors.h>

namespace vlm {

// Out of line, so that their type information stands in the library alone.

StandardError::StandardError(const char* text) noexcept : text_(text) {}
StandardError::StandardError(const StandardError&) noexcept = default;
StandardError::~StandardError() = default;
const char* StandardError::what() const noexcept { return text_; }

OutOfRangeError::OutOfRangeError(const char* text) : std::out_of_range(text) {}
OutOfRangeError::OutOfRangeError(const OutOfRangeError&) noexcept = default;
OutOfRangeError::~OutOfRangeError() = default;

LengthError::LengthError(const char* text) : std::length_error(text) {}
LengthError::LengthError(const LengthError&) noexcept = default;
LengthError::~LengthError() = default;

BadAllocError::BadAllocError() noexcept = default;
BadAllocError::BadAllocError(const BadAllocError&) noexcept = default;
BadAllocError::~BadAllocError() = default;
const char* BadAllocError::what() const noexcept { return "bad allocation"; }

}  // namespace vlm
