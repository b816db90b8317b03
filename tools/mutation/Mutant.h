#pragma once

/// Whether this number is that of the mutant in force.
extern "C" bool velum_mutant(int number) noexcept;
