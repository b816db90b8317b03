#pragma once

/// \file
/// Marks what the shared library exports.

/// Stands before every exported class, function and object. Everything else stays inside
/// `libvelum`.
#define VELUM_API __attribute__((visibility("default")))
