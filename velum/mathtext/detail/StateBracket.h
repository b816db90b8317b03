#pragma once

/// \file
/// Keeps what is done between `PreserveState` and `RestoreState` from leaving a trace, also when
/// the device throws.
///
///     StateBracket bracket(textIF);
///     textIF.SetHeight(9.0);
///     bracket.Close();

#include <velum/mathtext/MTElement.h>
#include <velum/mathtext/MTTextIF.h>

#include <optional>

namespace vlm::detail {

/// Preserves the attributes of an interface, and restores them once.
///
/// A local object of one thread; it refers to the interface.
class StateBracket {
 public:
  /// Preserves the attributes.
  explicit StateBracket(CMTTextIF& textIF) : textIF_(textIF) { textIF.PreserveState(); }
  StateBracket(const StateBracket&) = delete;
  StateBracket& operator=(const StateBracket&) = delete;

  /// Restores the attributes on the way out of a failure, which is what the caller hears about: a
  /// second one from the device is dropped.
  ~StateBracket() {
    if (!open_) return;
    try {
      textIF_.RestoreState();
    } catch (...) {
    }
  }

  /// Restores the attributes.
  ///
  /// *Errors*: what the interface throws.
  void Close() {
    open_ = false;
    textIF_.RestoreState();
  }

 private:
  CMTTextIF& textIF_;
  bool open_ = true;
};

/// A `StateBracket` in which an interface has the attributes of an element, for measuring: nothing
/// else is changed in it, so it has nothing to do where the interface has these attributes already.
class AttributeBracket {
 public:
  /// Preserves the attributes and sets those of the element.
  AttributeBracket(CMTTextIF& textIF, const CMTElement& element) {
    if (element.HasAttributesOf(textIF)) return;
    bracket_.emplace(textIF);
    element.GetAttributes(textIF);
  }

  /// Restores the attributes.
  ///
  /// *Errors*: what the interface throws.
  void Close() {
    if (bracket_) bracket_->Close();
  }

 private:
  std::optional<StateBracket> bracket_;
};

}  // namespace vlm::detail
