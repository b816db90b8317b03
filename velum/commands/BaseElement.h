#pragma once

/// \file
/// The root of the elements of a user interface, with their named options.
///
///     element->Parent(mainWindow);                  // whatever the toolkit has for a window
///     element->Option("title", "Grid");
///     boost::any rows = element->Option("Rows");    // empty if there is no such option

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/core/NonComparable.h>

#include <boost/any.hpp>

namespace vlm {

/// An element of a user interface, of which the library knows the options alone. `ModalElement` and
/// `ModelessElement` derive from it, and applications from these.
///
/// An element has identity, and belongs to the thread that the application's toolkit demands.
class VELUM_API BaseElement : private NonComparable {
 public:
  BaseElement(const BaseElement&) = delete;
  BaseElement& operator=(const BaseElement&) = delete;

  /// Sets the option `key`, whatever the case of its letters, from text: the element gets the key
  /// in small letters and the value as it is, and its answer is the result. The empty key and a
  /// null pointer give false.
  bool Option(const GString& key, const GString& value);
  /// The same with text from a literal.
  bool Option(const GString& key, const char* value);
  /// The same with any value; a `GString` is taken as text is.
  bool Option(const GString& key, const boost::any& value);
  /// The value of the option `key`; empty if the key is, or if the element has no such option.
  [[nodiscard]] boost::any Option(const GString& key) const;
  /// Says what the element belongs to, in the terms of the application's toolkit.
  void Parent(const boost::any& parent);

 protected:
  /// An element without options.
  BaseElement();
  virtual ~BaseElement();

 private:
  /// The value of the option `key`, which is in small letters and not empty; empty unless
  /// overridden.
  virtual boost::any OptionImpl(const GString& key) const;
  /// Takes a value that is not text for the option `key`, which is in small letters and not empty;
  /// tells whether it did. Takes nothing unless overridden.
  virtual bool OptionImpl(const GString& key, const boost::any& value);
  /// The same for text.
  virtual bool OptionImpl(const GString& key, const GString& value);
  /// Takes what the element belongs to; does nothing unless overridden.
  virtual void ParentImpl(const boost::any& parent);
};

}  // namespace vlm
