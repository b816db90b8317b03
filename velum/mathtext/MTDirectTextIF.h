#pragma once

/// \file
/// The layer between math text and a device that keeps its own state:
///
///     vlm::CMTDirectTextIF textIF(device);
///     textIF.PreserveState();  // device.PreserveState()

#include <velum/core/Api.h>
#include <velum/mathtext/MTTextIF.h>

namespace vlm {

/// Passes every operation on to the device, `PreserveState` and `RestoreState` included, whether it
/// changes anything or not.
///
/// For a device that has a stack of attributes of its own. Ownership, threads and units are those
/// of `CMTTextIF`, whose stack stays unused.
class VELUM_API CMTDirectTextIF : public CMTTextIF {
 public:
  /// Reads the device's attributes once, as the base does.
  ///
  /// *Lifetime*: keeps a reference to `device`.
  explicit CMTDirectTextIF(KQTextIF& device);
  /// Refers to the other's device.
  CMTDirectTextIF(const CMTDirectTextIF& other);
  /// Refers to the other's device.
  CMTDirectTextIF& operator=(const CMTDirectTextIF& other);
  ~CMTDirectTextIF() override;

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
  void SetHorizJustify(unsigned int justify) override;
  unsigned int GetHorizJustify() const override;
  void SetHeight(double height) override;
  double GetHeight() const override;
  void PreserveState() override;
  void RestoreState() override;
};

}  // namespace vlm
