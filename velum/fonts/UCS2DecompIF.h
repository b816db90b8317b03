#pragma once

/// \file
/// Who receives the pieces of a text that each have one face and one direction.
///
///     class Painter : public vlm::UCS2DecompIF {
///       void BeginDecomp() override {}
///       void EndDecomp() override {}
///       void SubText(const vlm::UCS2DecompSubSet& piece) override { Draw(piece.GetString()); }
///     };

#include <velum/core/Api.h>

#include <memory>
#include <string>

namespace vlm {

class CFaceInfo;

/// A piece of text, with the face to draw it in and its direction.
///
/// A value; copies share the face.
class VELUM_API UCS2DecompSubSet {
 public:
  /// A piece of UTF-16, one unit to an element.
  UCS2DecompSubSet(const std::wstring& text, std::shared_ptr<const CFaceInfo> face, bool rtl);
  /// A copy.
  UCS2DecompSubSet(const UCS2DecompSubSet& other);
  /// Copies all of another piece.
  UCS2DecompSubSet& operator=(const UCS2DecompSubSet& other);
  virtual ~UCS2DecompSubSet();

  /// The characters.
  [[nodiscard]] const std::wstring& GetString() const noexcept { return text_; }
  /// The face.
  [[nodiscard]] std::shared_ptr<const CFaceInfo> GetFaceInfoPtr() const noexcept { return face_; }
  /// True if the piece is read from right to left.
  [[nodiscard]] bool IsRTLReading() const noexcept { return rtl_; }

 private:
  std::wstring text_;
  std::shared_ptr<const CFaceInfo> face_;
  bool rtl_;
};

/// Receives the pieces of a text from `UCS2Decomp::Decompose`. Applications implement it.
class VELUM_API UCS2DecompIF {
 public:
  virtual ~UCS2DecompIF();

  /// Comes once, before any piece.
  virtual void BeginDecomp() = 0;
  /// Comes once, after the last piece; not after an error.
  virtual void EndDecomp() = 0;
  /// Comes for each piece, in the order of the text.
  virtual void SubText(const UCS2DecompSubSet& piece) = 0;
};

}  // namespace vlm
