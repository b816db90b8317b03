#pragma once

/// \file
/// The layer between math text and a device, which spares the device what doesn't change anything:
///
///     vlm::CMTTextIF textIF(device);
///     textIF.PreserveState();
///     textIF.SetColor(vlm::Color4b::Red);  // one call to the device
///     textIF.SetColor(vlm::Color4b::Red);  // none
///     textIF.RestoreState();               // one call: the old colour

#include <velum/core/Api.h>
#include <velum/mathtext/MTTextAttributes.h>
#include <velum/mathtext/TextIF.h>

#include <cstddef>
#include <typeinfo>
#include <vector>

namespace vlm {

/// Wraps a device, keeps the stack of text attributes itself, and touches the device only on a real
/// change.
///
/// It has identity and refers to the device, which it doesn't own and which must outlive it; while
/// it lives, nobody else changes the device's attributes. A copy has a stack of its own and refers
/// to the same device. One thread uses it at a time. Units are the device's.
///
/// All operations are virtual: `CMTDirectTextIF` (MTDirectTextIF.h) passes them on to a device that
/// keeps its own stack. What the device throws passes through; the stack then stands as if the call
/// had succeeded.
class VELUM_API CMTTextIF {
 public:
  /// Reads the device's attributes into the first record, each getter once: colour, face, weight,
  /// style, character set, pitch, family, height, alignments, justify.
  ///
  /// *Lifetime*: keeps a reference to `device`.
  explicit CMTTextIF(KQTextIF& device);
  /// Copies the whole stack; the device isn't told.
  CMTTextIF(const CMTTextIF& other);
  /// Copies the whole stack and refers to the other's device.
  CMTTextIF& operator=(const CMTTextIF& other);
  /// Leaves the device as it is.
  virtual ~CMTTextIF();

  /// Sets the colour. Like all setters: nothing happens if the value is the present one.
  virtual void SetColor(Color4b color);
  /// Gives the colour. Like all getters: the device isn't asked.
  virtual Color4b GetColor() const;
  /// Sets the name of the face, compared byte by byte.
  virtual void SetFace(const GString& face);
  /// Gives the name of the face.
  virtual GString GetFace() const;
  /// Sets the weight code, a `TextWeight`.
  virtual void SetWeight(unsigned int weight);
  /// Gives the weight code.
  virtual unsigned int GetWeight() const;
  /// Sets the style bits, a sum of `TextStyle`.
  virtual void SetStyle(unsigned int style);
  /// Gives the style bits.
  virtual unsigned int GetStyle() const;
  /// Sets the character set code.
  virtual void SetCharset(unsigned int charset);
  /// Gives the character set code.
  virtual unsigned int GetCharset() const;
  /// Sets the pitch code.
  virtual void SetPitch(unsigned int pitch);
  /// Gives the pitch code.
  virtual unsigned int GetPitch() const;
  /// Sets the family code.
  virtual void SetFamily(unsigned int family);
  /// Gives the family code.
  virtual unsigned int GetFamily() const;
  /// Sets the horizontal alignment, an `HAlignment`.
  virtual void SetHorizAlignment(unsigned int alignment);
  /// Gives the horizontal alignment.
  virtual unsigned int GetHorizAlignment() const;
  /// Sets the vertical alignment, a `VAlignment`.
  virtual void SetVertAlignment(unsigned int alignment);
  /// Gives the vertical alignment.
  virtual unsigned int GetVertAlignment() const;
  /// Sets the justification of lines, a `HorizJustify`.
  virtual void SetHorizJustify(unsigned int justify);
  /// Gives the justification of lines.
  virtual unsigned int GetHorizJustify() const;
  /// Sets the text height; equal means exactly equal.
  virtual void SetHeight(double height);
  /// Gives the text height.
  virtual double GetHeight() const;

  /// Remembers all attributes; the device isn't told.
  ///
  /// *Cost*: a count. A record is stored only once an attribute changes.
  virtual void PreserveState();
  /// Takes the attributes back that the last `PreserveState` remembered, and sets on the device
  /// those that differ: colour, face, weight, style, character set, pitch, family, horizontal
  /// alignment, vertical alignment, justify, height, in this order. With nothing remembered it does
  /// nothing.
  ///
  /// *Errors*: what the device throws, once all attributes have been handed to it.
  virtual void RestoreState();

  /// Gives the box around the ink of a text that begins at (0, 0).
  virtual void GetBounds(const GString& text, Box2d& box);
  /// Gives the advance of a text as x and the cell height as y.
  virtual void GetExtent(const GString& text, Vec2d& extent);
  /// Fills the measures of the face.
  virtual void GetMetrics(KQTextIF::_TXTMETRICS& metrics);
  /// Draws a text from the left end of its baseline; the device's result.
  virtual bool Draw(const Vec2d& position, const GString& text);
  /// Draws a straight line in the present colour; the device's result.
  virtual bool DrawLine(const Vec2d& from, const Vec2d& to);

 protected:
  /// Gives the device that this interface stands on.
  KQTextIF& GetDevice() const { return *device_; }

 private:
  friend class CMTElement;

  /// One set of attributes, remembered `times` times in a row.
  struct Record {
    MTTextAttributes text;
    unsigned int horizAlignment;
    unsigned int vertAlignment;
    unsigned int horizJustify;
    std::size_t times;
  };

  // The present attributes, for an element that would else go through all getters or setters, of
  // which nobody hears here; null for a derived class, whose operations are its own.
  const MTTextAttributes* KeptAttributes() const {
    return typeid(*this) == typeid(CMTTextIF) ? &records_.back().text : nullptr;
  }
  Record& RecordToChange();

  KQTextIF* device_;
  std::vector<Record> records_;
};

}  // namespace vlm
