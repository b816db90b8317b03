#pragma once

/// \file
/// Declares the classes of math text, for headers that only name them.
///
///     #include <velum/mathtext/Forward.h>
///     void Draw(vlm::CMTTextIF& textIF);

namespace vlm {

class CMTAssocStringElement;
class CMTContext;
class CMTDirectTextIF;
class CMTElement;
class CMTLineElement;
class CMTMetricsTextIF;
class CMTMultiLineElement;
class CMTStringElement;
class CMTTextIF;
class IMathTextScanner;
class KQTextIF;
struct MTTextAttributes;

}  // namespace vlm
