#pragma once

/// \file
/// Records of classes, by which a class is found and made by its name at run time.
///
///     const vlm::CTypeInfo shapeType("Shape", nullptr, vlm::CTypedObject::GetClassTypeId());
///     const bool known = vlm::CTypeInfo::FromName("Shape") == &shapeType;  // true
///
/// TypedObject.h has the root of the classes that use them.

#include <velum/core/Api.h>

namespace vlm {

/// The record of one class: its name, how an object is made, and its base class.
///
/// A record has identity and is usually a static object. Records with a name enter one set for the
/// whole process and leave it when they are destroyed. No lock guards the set: fill it before a
/// second thread runs, then any thread may read.
class VELUM_API CTypeInfo {
 public:
  /// A record that enters the set, unless `name` is null or stands in it already: then the record
  /// that came first stays. Names are compared by their bytes.
  ///
  /// `creator` makes an object and is null for an abstract class; for a class derived from
  /// `CTypedObject` it gives the address of that base. `parent` is the record of the base class, or
  /// null.
  ///
  /// *Lifetime*: keeps the pointers `name` and `parent`, not what they lead to.
  CTypeInfo(const char* name, void* (*creator)(), const CTypeInfo* parent);
  CTypeInfo(const CTypeInfo&) = delete;
  CTypeInfo& operator=(const CTypeInfo&) = delete;
  /// Removes the entry with this name from the set, also one that another record of the same name
  /// made.
  ~CTypeInfo();

  /// The record in the set with exactly this name, or null.
  ///
  /// *Cost*: the logarithm of the number of records.
  [[nodiscard]] static const CTypeInfo* FromName(const char* name);

  /// The name as it was given; may be null.
  [[nodiscard]] const char* GetName() const noexcept { return name_; }
  /// The record of the base class, or null.
  [[nodiscard]] const CTypeInfo* GetParent() const noexcept { return parent_; }
  /// True if there is a creator.
  [[nodiscard]] bool CanCreateInstance() const noexcept { return creator_ != nullptr; }
  /// The object that the creator makes, or null without one.
  ///
  /// *Lifetime*: the caller owns the result.
  [[nodiscard]] void* CreateInstance() const;
  /// True if `other` is this record or one that the parents lead to; false for null.
  [[nodiscard]] bool IsKindOf(const CTypeInfo* other) const noexcept;

 protected:
  /// A record with a name alone, which does not enter the set.
  explicit CTypeInfo(const char* name) noexcept;

 private:
  const char* name_;
  void* (*creator_)();
  const CTypeInfo* parent_;
};

}  // namespace vlm
