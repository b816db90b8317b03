#pragma once

/// \file
/// Numeric constants and factors between units of length, each with exactly the bits that its
/// decimal text gives.
///
/// `INFINITY` and `NAN` are those of the standard header cmath, which this one includes;
/// `NEG_INFINITY` stands here.
///
///     double turn = 90 * vlm::DEG_TO_RAD;
///     double lowest = -INFINITY;  // the same as vlm::NEG_INFINITY

#include <cmath>
#include <limits>

namespace vlm {

inline constexpr double PI = 3.141592653589793;            ///< pi
inline constexpr double ONE_PI = PI;                       ///< pi, to stand beside `TWO_PI`
inline constexpr double TWO_PI = 6.283185307179586;        ///< 2 pi
inline constexpr double THREE_PI = 9.42477796076938;       ///< 3 pi
inline constexpr double FOUR_PI = 12.566370614359172;      ///< 4 pi
inline constexpr double HALF_PI = 1.5707963267948966;      ///< pi / 2
inline constexpr double THIRD_PI = 1.0471975511965979;     ///< pi / 3, one unit above the nearest
inline constexpr double QUARTER_PI = 0.7853981633974884;   ///< pi / 4 to 13 digits: 105 units high
inline constexpr double PI_INV = 0.3183098861837907;       ///< 1 / pi
inline constexpr double TWO_PI_INV = 0.15915494309189535;  ///< 1 / (2 pi)
inline constexpr double SQRT_PI = 1.772453850905516;       ///< square root of pi
inline constexpr double SQRT_PI_INV = 0.5641895835477563;  ///< 1 / square root of pi
inline constexpr double SQRT_TWO_PI = 2.5066282746310007;  ///< square root of 2 pi
inline constexpr double SQRT_TWO_PI_INV = 0.3989422804014327;  ///< 1 / square root of 2 pi
inline constexpr double SQRT_2 = 1.4142135623730951;           ///< square root of 2
inline constexpr double SQRT_2_INV = 0.7071067811865476;       ///< 1 / square root of 2
inline constexpr double DEG_TO_RAD = 0.017453292519943295;     ///< radians in a degree
inline constexpr double RAD_TO_DEG = 57.29577951308232;        ///< degrees in a radian
inline constexpr double EULER_E = 2.718281828459045;           ///< the base of natural logarithms
inline constexpr double EULER_GAMMA = 0.5772156649015329;      ///< the Euler-Mascheroni constant
inline constexpr double GOLDEN_RATIO = 1.618033988749895;      ///< (1 + square root of 5) / 2
inline constexpr double LN_TWO = 0.6931471805599453;           ///< natural logarithm of 2
inline constexpr double LN_TEN = 2.302585092994046;            ///< natural logarithm of 10

/// The distance from 1 to the next `double`: 2 to the power -52.
inline constexpr double EPSILON = 2.220446049250313e-16;
/// The least number that is large enough to divide by: the smallest normal `float`, 2 to the power
/// -126, as a `double`.
inline constexpr double SUKOSHI = 1.1754943508222875e-38;
/// Negative infinity.
inline constexpr double NEG_INFINITY = -std::numeric_limits<double>::infinity();

inline constexpr double CM_PER_INCH = 2.54;                       ///< centimetres in an inch
inline constexpr double INCHES_PER_CM = 0.3937007874015748;       ///< inches in a centimetre
inline constexpr double METERS_PER_INCH = 0.0254;                 ///< metres in an inch
inline constexpr double INCHES_PER_METER = 39.37007874015748;     ///< inches in a metre
inline constexpr double POINTS_PER_INCH = 72.0;                   ///< points in an inch
inline constexpr double INCHES_PER_POINT = 0.013888888888888888;  ///< inches in a point
inline constexpr double TWIPS_PER_INCH = 1440.0;                  ///< twips in an inch
inline constexpr double INCHES_PER_TWIP = 0.0006944444444444445;  ///< inches in a twip
inline constexpr double TWIPS_PER_POINT = 20.0;                   ///< twips in a point
inline constexpr double POINTS_PER_TWIP = 0.05;                   ///< points in a twip

}  // namespace vlm
