#pragma once

/// \file
/// Takes text in any script apart into pieces that can each be drawn in one face and one direction.
///
///     vlm::UCS2Decomp decomp;
///     if (decomp.SetupDecomp(L"Depth \u05E2\u05D5\u05DE\u05E7")) {
///       decomp.Decompose(painter, face, vlm::DECOMP_CHECK_GLYPHS);
///     }

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/fonts/UCS2DecompIF.h>
#include <velum/platform/Types.h>

#include <memory>
#include <string>
#include <vector>

namespace vlm {

/// What `UCS2Decomp::Decompose` does beyond finding runs, as bits.
enum DecompFlags : unsigned int {
  DECOMP_REVERSE = 1,      ///< right-to-left pieces come with their characters in reverse order
  DECOMP_CHECK_GLYPHS = 2  ///< what the face lacks comes in a face that has it
};

/// Takes a text apart: first into runs of one script and direction, then these into pieces that one
/// face covers.
///
/// An object belongs to one thread at a time. What shaping keeps of the face used last is kept for
/// the process, without a lock: `Decompose` with `DECOMP_CHECK_GLYPHS` is for one thread at a time.
/// It is kept until another face is checked, so many texts in one face open no file.
///
/// *Text* is UTF-16, one unit to an element. An element above 0xFFFF is taken as that character,
/// and what is no character as U+FFFD. A surrogate without its partner goes on as it is, and is
/// shown as U+FFFD is.
///
/// *Directions* are those of the Unicode Bidirectional Algorithm in a left-to-right paragraph.
/// Pieces come in the order of the text; setting them side by side is for who draws them.
class VELUM_API UCS2Decomp {
 public:
  /// Holds no text yet.
  ///
  /// *Errors*: `ERR_INTERNAL` from "UCS2Decomp" if the properties of scripts can't be had.
  UCS2Decomp();
  /// A copy.
  UCS2Decomp(const UCS2Decomp& other);
  /// Copies all of another one.
  UCS2Decomp& operator=(const UCS2Decomp& other);
  virtual ~UCS2Decomp();

  /// Takes a text and finds its runs. False, with nothing to decompose, if there are more than 2000
  /// of them.
  ///
  /// Runs are looked for up to the first zero; what stands from there on belongs to the last run. A
  /// text without a character before that has no runs.
  ///
  /// *Cost*: linear.
  bool SetupDecomp(const std::wstring& text);
  /// True if the last `SetupDecomp` succeeded.
  [[nodiscard]] bool DecompValid() const noexcept { return valid_; }

  /// Gives the pieces of the text to `sink`, between `BeginDecomp` and `EndDecomp`: each run in
  /// `face`, or taken apart further. `flags` is a sum of `DecompFlags`.
  ///
  /// Only outline faces are checked. A run of which the face lacks a glyph is cut: what the face of
  /// that name of normal weight has comes in it, all else in a face that has it, of normal weight,
  /// and what no face has comes in "Arial Unicode MS", else "Tahoma", if one is installed, else in
  /// `face`. If no other face has a part in the run, `face` keeps what it has. Marks and joiners
  /// stay with their letters. Line ends and invisible characters need no glyph. A run in a face
  /// that is not installed comes in one piece, as what no face has.
  ///
  /// Reversal keeps pairs of surrogates in order; two halves that would meet as a pair come as
  /// U+FFFD. A reversed run is cut in its reversed form, with marks and joiners at the letters that
  /// they follow in the text.
  ///
  /// *Errors*: from "UCS2Decomp", `ERR_INTERNAL` if no text was taken or a null face is to be
  /// checked, and `ERR_CREATE_OBJECT` with "IMLangFontLink2" if glyphs are missing and no outline
  /// face is installed; those of the sink.
  ///
  /// *Cost*: linear.
  void Decompose(UCS2DecompIF& sink, std::shared_ptr<const CFaceInfo> face, unsigned int flags);

 private:
  [[gnu::visibility("hidden")]] void DecomposeRun(unsigned first, unsigned last,
                                                  const SCRIPT_ANALYSIS& analysis,
                                                  UCS2DecompIF& sink,
                                                  std::shared_ptr<const CFaceInfo> face,
                                                  unsigned flags);
  [[gnu::visibility("hidden")]] void DecomposeRunUsingFontFallback(
      unsigned first, unsigned last, UCS2DecompIF& sink, std::shared_ptr<const CFaceInfo> face,
      HDC dc, const SCRIPT_ANALYSIS& analysis, unsigned flags);
  [[gnu::visibility("hidden")]] void PassSubText(UCS2DecompIF& sink, const wchar_t* text,
                                                 long count, std::shared_ptr<const CFaceInfo> face,
                                                 bool rtl);
  [[gnu::visibility("hidden")]] void PassSubText(UCS2DecompIF& sink, const wchar_t* text,
                                                 long count, const GString& faceName, bool rtl);
  [[gnu::visibility("hidden")]] std::shared_ptr<const CFaceInfo> LastResort(
      const std::shared_ptr<const CFaceInfo>& face) const;
  [[gnu::visibility("hidden")]] bool GlyphsMissing(void** cache,
                                                   const std::vector<unsigned short>& glyphs) const;
  [[gnu::visibility("hidden")]] std::shared_ptr<const CFaceInfo> MatchFaceName(
      const GString& name) const;

  bool valid_ = false;
  std::wstring text_;
  std::vector<SCRIPT_ITEM> items_;
};

}  // namespace vlm
