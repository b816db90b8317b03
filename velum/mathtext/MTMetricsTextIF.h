#pragma once

/// \file
/// A device that measures math text without drawing it, and the plain text of a math text:
///
///     vlm::CMTMetricsTextIF device;
///     device.SetFace("DejaVu Sans");
///     vlm::Vec2d extent;
///     device.GetExtent("Depth (m)", extent);  // in units of the em square
///
///     vlm::MathTextToSimpleText("km{\\up40 2}");  // "km2"

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/fonts/Forward.h>
#include <velum/mathtext/MTAlignment.h>
#include <velum/mathtext/MTTextAttributes.h>
#include <velum/mathtext/TextIF.h>

#include <memory>
#include <vector>

namespace vlm {

/// A text device without output: it measures with the faces of `CSystemFaceInfo` and draws nothing.
///
/// Lengths are in units of the em square of the face that answers the attributes best, whatever the
/// height is. The face is matched by name, weight and italic, among the types that
/// `GetFontMatcherFaceTypeFlags` accepts; where these are types that no face has, it is the default
/// face of variable pitch. Text is 8-bit, as `CFaceInfo` tells.
///
/// It keeps a stack of its attributes, for `CMTDirectTextIF`; `RestoreState` with nothing pushed
/// does nothing. An object with identity that one thread uses at a time.
class VELUM_API CMTMetricsTextIF : public KQTextIF {
 public:
  /// The attributes that `KQTextIF` lists, and as height the em square of the face that they match.
  ///
  /// *Errors*: those of the first call of `CSystemFaceInfo::Instance`, here and in all measures.
  CMTMetricsTextIF();
  CMTMetricsTextIF(const CMTMetricsTextIF&) = delete;
  CMTMetricsTextIF& operator=(const CMTMetricsTextIF&) = delete;
  ~CMTMetricsTextIF();

  void SetColor(Color4b color) override;
  Color4b GetColor() const override;
  void SetFace(const GString& face) override;
  GString GetFace() const override;
  void SetWeight(unsigned int weight) override;
  unsigned int GetWeight() const override;
  void SetStyle(unsigned int style) override;
  unsigned int GetStyle() const override;
  void SetCharset(unsigned int charset) override;
  unsigned int GetCharset() const override;
  void SetPitch(unsigned int pitch) override;
  unsigned int GetPitch() const override;
  void SetFamily(unsigned int family) override;
  unsigned int GetFamily() const override;
  void SetHorizAlignment(unsigned int alignment) override;
  unsigned int GetHorizAlignment() const override;
  void SetVertAlignment(unsigned int alignment) override;
  unsigned int GetVertAlignment() const override;
  void SetHeight(double height) override;
  double GetHeight() const override;
  void SetHorizJustify(unsigned int justify) override;
  unsigned int GetHorizJustify() const override;
  void PreserveState() override;
  void RestoreState() override;
  /// The face's `CalcEmBounds`: y grows downwards.
  void GetBounds(const GString& text, Box2d& box) override;
  /// The face's `CalcEmExtent` as x, and the height of its cell as y.
  void GetExtent(const GString& text, Vec2d& extent) override;
  /// The face's measures. The simulated italic angle is -15 degrees.
  void GetMetrics(KQTextIF::_TXTMETRICS& metrics) override;
  /// Draws nothing; true.
  bool Draw(const Vec2d& position, const GString& text) override;
  /// Draws nothing; true.
  bool DrawLine(const Vec2d& from, const Vec2d& to) override;

 private:
  struct Attributes {
    MTTextAttributes text;
    unsigned int horizAlignment = HALIGN_LEFT;
    unsigned int vertAlignment = VALIGN_BASELINE;
    unsigned int horizJustify = HORIZ_JUSTIFY_LEFT;
  };

  [[gnu::visibility("hidden")]] std::shared_ptr<const CFaceInfo> MatchToFace() const;

  Attributes now_;
  std::vector<Attributes> stack_;
};

/// The text of a math text, without its markup.
///
/// - Text that needs no scanner (see `ContainsMathText`) is given back.
/// - Lines are joined by line feeds, substrings stand behind their base, tabs are gone.
/// - A text with a syntax error gives "*** Math Text Error ***".
///
/// *Errors*: those of `CMTMetricsTextIF`, for text that needs the scanner.
[[nodiscard]] VELUM_API GString MathTextToSimpleText(const GString& text);

}  // namespace vlm
