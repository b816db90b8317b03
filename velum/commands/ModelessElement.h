#pragma once

/// \file
/// An element of a user interface that stays while work goes on.
///
///     const auto panel = vlm::ModelessElementFactory::Construct("Layers");
///     panel->Parent(mainWindow);
///     panel->Create(true);

#include <velum/commands/BaseElement.h>
#include <velum/commands/StatusCode.h>
#include <velum/core/Api.h>

namespace vlm {

/// An element that is created and destroyed, shown and hidden. Whether it is created, the derived
/// class knows. Applications derive theirs and register a `ModelessElementFactory` for each.
class VELUM_API ModelessElement : public BaseElement {
 public:
  ~ModelessElement() override;

  /// Creates the element unless it is created; then shows it if `show` is set and it is created.
  void Create(bool show);
  /// Destroys the element and gives what that gave; `STATUS_FAILURE` if it is not created.
  StatusCode Destroy();
  /// Shows the element; nothing if it is not created.
  void Show();
  /// Hides the element; nothing if it is not created.
  void Hide();

 protected:
  /// An element without options, not created.
  ModelessElement();

 private:
  /// Whether the element is created; asked before each of the others.
  virtual bool IsCreatedImpl() const = 0;
  /// Creates the element, which is not created; if that fails, `IsCreatedImpl` stays false.
  virtual void CreateImpl() = 0;
  /// Destroys the element, which is created.
  virtual StatusCode DestroyImpl() = 0;
  /// Hides the element, which is created.
  virtual void HideImpl() = 0;
  /// Shows the element, which is created.
  virtual void ShowImpl() = 0;

  bool AssertCreated() const;
};

}  // namespace vlm
