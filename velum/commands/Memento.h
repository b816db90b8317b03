#pragma once

/// \file
/// What a command keeps so that it can be undone.
///
///     struct OldColour : vlm::Memento {
///       std::unique_ptr<Memento> Clone() const override {
///         return std::make_unique<OldColour>(*this);
///       }
///       vlm::Color4b colour;
///     };

#include <velum/core/Api.h>
#include <velum/core/NonComparable.h>

#include <memory>

namespace vlm {

/// The undo state of one command. Each command that has one derives a class of its own.
class VELUM_API Memento : private NonComparable {
 public:
  virtual ~Memento();

  /// A copy of the state.
  [[nodiscard]] virtual std::unique_ptr<Memento> Clone() const = 0;

 protected:
  Memento();
  /// Copies the base, which holds nothing.
  Memento(const Memento&);

 private:
  Memento& operator=(const Memento&) = delete;
};

}  // namespace vlm
