#pragma once

/// \file
/// The root of the classes that know their record and can be written to an archive.
///
///     class Circle : public vlm::CTypedObject {
///      public:
///       const vlm::CTypeInfo* GetTypeId() const override { return &kType; }
///
///      private:
///       static const vlm::CTypeInfo kType;
///     };
///     const vlm::CTypeInfo Circle::kType(
///         "Circle", []() -> void* { return static_cast<vlm::CTypedObject*>(new Circle); },
///         vlm::CTypedObject::GetClassTypeId());

#include <velum/core/Api.h>
#include <velum/core/TypeInfo.h>

namespace vlm {

class Archive;

/// An object with a record of its class. It has no members; copies copy nothing.
///
/// A derived class declares a static `CTypeInfo`, gives it by `GetTypeId`, and passes its members
/// through the archive in `Serialize`. One object belongs to one thread at a time.
class VELUM_API CTypedObject {
 public:
  /// An object without members.
  CTypedObject() noexcept;
  /// Copies nothing.
  CTypedObject(const CTypedObject&) noexcept;
  virtual ~CTypedObject();

  /// The record of the object's own class.
  [[nodiscard]] virtual const CTypeInfo* GetTypeId() const;
  /// Passes the members through `archive`, which writes or reads them. Here there are none.
  virtual void Serialize(Archive& archive);

  /// The record of this class, "CTypedObject", which has no creator and no parent.
  [[nodiscard]] static const CTypeInfo* GetClassTypeId() noexcept;
  /// True if the object's class is that of `type` or derived from it; false for null.
  [[nodiscard]] bool IsKindOf(const CTypeInfo* type) const;

  /// Copies nothing.
  CTypedObject& operator=(const CTypedObject&) noexcept;

 private:
  static const CTypeInfo ClassTypeId;
};

}  // namespace vlm
