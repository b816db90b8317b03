#pragma once

/// \file
/// An element of a user interface that runs to its end, as a dialog does.
///
///     const auto dialog = vlm::ModalElementFactory::Construct("GridOptions");
///     dialog->Option("title", "Grid");
///     if (dialog->Execute() == vlm::STATUS_SUCCESS) Regrid(dialog->Option("rows"));

#include <velum/commands/BaseElement.h>
#include <velum/commands/StatusCode.h>
#include <velum/core/Api.h>

namespace vlm {

/// An element that is run. Applications derive theirs and register a `ModalElementFactory` for
/// each.
class VELUM_API ModalElement : public BaseElement {
 public:
  ~ModalElement() override;

  /// Runs the element, and comes back when it has ended.
  StatusCode Execute();

 protected:
  /// An element without options.
  ModalElement();

 private:
  /// Runs the element to its end, and tells how the user left it.
  virtual StatusCode ExecuteImpl() = 0;
};

}  // namespace vlm
