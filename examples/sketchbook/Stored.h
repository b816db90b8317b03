#pragma once

/// \file
/// What the classes of a sketch need to be stored, beyond what an archive transfers itself.
///
///     void Outline::Serialize(vlm::Archive& archive) {
///       TransferList(archive, points_, [&](vlm::Vec2d& point) { TransferPoint(archive, point); });
///     }

#include <velum/core/TypedObject.h>
#include <velum/files/Archive.h>
#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Vec2.h>
#include <examples/sketchbook/Arrow.h>

#include <memory>

namespace vlm::sketchbook {

/// Makes a `T` for its `CTypeInfo`, which wants the address of the base.
template <class T>
void* CreateStored() {
  return static_cast<CTypedObject*>(new T);
}

/// Transfers x and y.
void TransferPoint(Archive& archive, Vec2d& point);

/// Transfers nine numbers, row by row.
void TransferPlacement(Archive& archive, Mat3d& placement);

/// Transfers the number of an arrow; any number may come in.
void TransferArrow(Archive& archive, Arrow& arrow);

/// Transfers the number of items and each of them by `transferItem(item)`.
///
/// A list that is read grows item by item. So a number that damage made huge ends at the end of the
/// stream, and not in a huge allocation.
template <class List, class TransferItem>
void TransferList(Archive& archive, List& list, TransferItem transferItem) {
  auto count = static_cast<unsigned int>(list.size());
  archive.Transfer(count);
  if (archive.IsLoading()) list.clear();
  for (unsigned int i = 0; i < count; ++i) {
    if (archive.IsLoading()) list.emplace_back();
    transferItem(list[i]);
  }
}

/// Transfers a pointer that does not own, as the owning pointer it stands for.
///
/// While an archive reads, it holds a share in every object, so one that nobody owns yet lives on.
template <class T>
void TransferWeak(Archive& archive, std::weak_ptr<T>& pointer) {
  std::shared_ptr<T> shared = pointer.lock();
  archive.TransferObject(shared);
  pointer = shared;
}

}  // namespace vlm::sketchbook
