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
#include <deque>
#include <memory>
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
///
/// A stream spends 8 bytes at least on each object. A row of numbers takes the pointers alone here,
/// and grows by blocks, so that a stream can't make the table larger than 4 times itself.
template <class Pointer>
class LoadedObjects {
 public:
  LoadedObjects() { Reset(); }

  /// Forgets all but null.
  void Reset() {
    row_.assign(1, Pointer());
    strays_.clear();
    slots_.assign(kFewestSlots, Slot{});
  }

  /// The entry of a number; null if there is none.
  ///
  /// *Lifetime*: until `Remove` or `Reset`.
  [[nodiscard]] const Pointer* Find(std::uint32_t number) const {
    if (number < row_.size()) return &row_[number];
    const Slot& slot = slots_[SlotOf(number)];
    return slot.number ? &strays_[slot.stray] : nullptr;
  }

  /// Enters an object under a number that is not there, and gives its entry.
  ///
  /// *Lifetime*: as above.
  const Pointer& Enter(std::uint32_t number, Pointer object) {
    if (number == row_.size()) return row_.emplace_back(std::move(object));
    if ((strays_.size() + 1) * 4 > slots_.size() * 3) Grow();
    const Pointer& entry = strays_.emplace_back(std::move(object));
    slots_[SlotOf(number)] = {number, static_cast<std::uint32_t>(strays_.size() - 1)};
    return entry;
  }

  /// Takes out what was entered last, under `number`.
  void Remove(std::uint32_t number) {
    if (number + std::size_t{1} == row_.size()) {
      row_.pop_back();
    } else {
      slots_[SlotOf(number)] = Slot{};  // no later entry was placed behind it
      strays_.pop_back();
    }
  }

 private:
  static constexpr std::size_t kFewestSlots = 16;

  struct Slot {
    std::uint32_t number = 0;  // 0 where there is none
    std::uint32_t stray = 0;
  };

  // The slot of a stray number, or the free one where it would go.
  [[nodiscard]] std::size_t SlotOf(std::uint32_t number) const noexcept {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = static_cast<std::size_t>(number * 0x9E3779B97F4A7C15u >> 32) & mask;
    while (slots_[at].number != 0 && slots_[at].number != number) at = (at + 1) & mask;
    return at;
  }

  void Grow() {
    std::vector<Slot> slots(slots_.size() * 2);
    slots.swap(slots_);
    for (const Slot& slot : slots) {
      if (slot.number) slots_[SlotOf(slot.number)] = slot;
    }
  }

  std::deque<Pointer> row_;     // by their numbers, which are in a row in sound streams
  std::deque<Pointer> strays_;  // all others
  std::vector<Slot> slots_;     // where the strays are
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
