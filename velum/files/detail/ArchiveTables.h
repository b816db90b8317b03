#pragma once

/// \file
/// The numbers that an archive gives to objects and classes.
///
///     ObjectNumbers numbers;
///     bool isNew;
///     const std::uint32_t index = numbers.NumberOf(circle, isNew);  // 1, new

#include <velum/core/GString.h>
#include <velum/core/TypedObject.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vlm::detail {

/// From addresses to numbers, for storing. Null has the number 0.
class ObjectNumbers {
 public:
  ObjectNumbers() { Reset(); }

  /// Forgets all but null.
  void Reset() {
    slots_.assign(kFewestSlots, 0);
    addresses_.assign(1, nullptr);
  }

  /// The number of an object; a new one is the number of entries up to now.
  ///
  /// *Cost*: constant, on the average.
  std::uint32_t NumberOf(const void* address, bool& isNew) {
    isNew = false;
    if (!address) return 0;
    std::size_t at = SlotOf(address);
    for (; slots_[at] != 0; at = Next(at)) {
      if (addresses_[slots_[at]] == address) return slots_[at];
    }
    isNew = true;
    const auto number = static_cast<std::uint32_t>(addresses_.size());
    addresses_.push_back(address);
    slots_[at] = number;
    if (addresses_.size() * 2 > slots_.size()) Grow();
    return number;
  }

 private:
  static constexpr std::size_t kFewestSlots = 64;

  // Objects of one page, which are often stored one after the other, stay close to one another;
  // pages are scattered.
  [[nodiscard]] std::size_t SlotOf(const void* address) const noexcept {
    const auto bits = reinterpret_cast<std::uintptr_t>(address);
    const std::uint64_t page = (bits >> 12) * 0x9E3779B97F4A7C15u;
    return static_cast<std::size_t>((page >> 20) + (bits >> 4 & 0xFF)) & (slots_.size() - 1);
  }
  [[nodiscard]] std::size_t Next(std::size_t at) const noexcept {
    return (at + 1) & (slots_.size() - 1);
  }

  void Grow() {
    slots_.assign(slots_.size() * 2, 0);
    for (std::size_t number = 1; number < addresses_.size(); ++number) {
      std::size_t at = SlotOf(addresses_[number]);
      while (slots_[at] != 0) at = Next(at);
      slots_[at] = static_cast<std::uint32_t>(number);
    }
  }

  std::vector<std::uint32_t> slots_;  // a power of two of numbers, 0 where there is none, half full
  std::vector<const void*> addresses_;  // by their numbers
};

/// From numbers to objects, for loading. 0 leads to null. `Pointer` is `T*` or
/// `std::shared_ptr<T>`.
template <class Pointer>
class LoadedObjects {
 public:
  /// Forgets all but null.
  void Reset() {
    objects_.assign(1, Pointer());
    strays_.clear();
  }

  /// The entry of a number; null if there is none.
  ///
  /// *Lifetime*: until the next `Enter`.
  [[nodiscard]] const Pointer* Find(std::uint32_t number) const {
    if (number < objects_.size()) return &objects_[number];
    const auto found = strays_.find(number);
    return found == strays_.end() ? nullptr : &found->second;
  }

  /// Enters an object under a number that is not there, and gives its entry.
  ///
  /// *Lifetime*: as above.
  const Pointer& Enter(std::uint32_t number, Pointer object) {
    if (number != objects_.size()) return strays_.emplace(number, std::move(object)).first->second;
    objects_.push_back(std::move(object));
    return objects_.back();
  }

  /// Takes out what was entered last, under `number`.
  void Remove(std::uint32_t number) {
    if (number + std::size_t{1} == objects_.size()) {
      objects_.pop_back();
    } else {
      strays_.erase(number);
    }
  }

 private:
  std::vector<Pointer> objects_{Pointer()};  // numbers in a row, as sound streams have them
  std::unordered_map<std::uint32_t, Pointer> strays_;  // all others
};

/// A class that came up in a stream.
struct NamedClass {
  GString name;
  const CTypeInfo* type;  ///< the record, null if there is none of this name
};

/// What an archive knows of a stream. Objects under plain pointers and shared ones have numbers of
/// their own.
struct ArchiveTables {
  ObjectNumbers stored;
  ObjectNumbers storedShared;
  /// All that `storedShared` knows, so that no other object comes to lie at the same address.
  std::vector<std::shared_ptr<CTypedObject>> kept;
  LoadedObjects<CTypedObject*> loaded;
  LoadedObjects<std::shared_ptr<CTypedObject>> loadedShared;
  std::vector<NamedClass> classes;

  /// Forgets everything.
  void Reset() {
    stored.Reset();
    storedShared.Reset();
    kept.clear();
    loaded.Reset();
    loadedShared.Reset();
    classes.clear();
  }
};

}  // namespace vlm::detail
