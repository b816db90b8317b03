#pragma once

/// \file
/// Declares the classes of the core, for headers that only name them.
///
///     #include <velum/core/Forward.h>
///     namespace vlm { void Show(const GString& title); }

namespace vlm {

class AtoW;
class AtoWV;
class BadAllocError;
class CTokenizer;
class CTypeInfo;
class CTypedObject;
class Exception;
class GString;
class IError;
class IHelp;
class LengthError;
class NonComparable;
class OutOfRangeError;
class StandardError;
struct StringEquivalent;
struct StringLess;
class Tester;
class UniqueNameGenerator;
class UserAbortException;
class WtoA;
class WtoAArray;

}  // namespace vlm
