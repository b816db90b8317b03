#pragma once

/// \file
/// Names the classes of math text without their definitions.

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

}  // namespace vlm
