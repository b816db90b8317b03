#pragma once

/// \file
/// Objects made by name: one registry of factories for each family of products.
///
///     class LineFactory : public vlm::CommandFactory {
///      public:
///       LineFactory() : CommandFactory("Line", *this) {}
///       std::unique_ptr<vlm::Command> ConstructProduct() const override {
///         return std::make_unique<LineCommand>();
///       }
///     };
///     const LineFactory lineFactory;  // being built registers it
///     const std::unique_ptr<vlm::Command> command = vlm::CommandFactory::Construct("line");
///
/// The library's families stand with their products, such as CommandFactory.h.

#include <velum/core/Api.h>
#include <velum/core/Flyweight.h>
#include <velum/core/NonComparable.h>
#include <velum/core/StandardErrors.h>

#include <cstddef>
#include <functional>
#include <memory>

namespace vlm {

/// The base of a family of factories. `Derived` is the family's own class, `Product` what they
/// make, `Key` the text they are known by, and `Compare` the order of the keys.
///
/// A factory has identity and is usually a static object: the registry does not own it and keeps it
/// for good, so it lives as long as anyone may ask for its key. No lock guards the registry: fill
/// it before a second thread runs, then any thread may make products.
///
/// A family that a shared library exports declares its `TheRegistry` specialized beside the
/// family's class and defines it in one source, as the library's own do: then all modules share it.
template <class Derived, class Product, class Key, class Compare>
class VELUM_API Factory : private NonComparable {
 public:
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;
  /// Leaves the registry as it is.
  virtual ~Factory();

  /// A new product of this factory.
  [[nodiscard]] virtual std::unique_ptr<Product> ConstructProduct() const = 0;

  /// True if a factory is registered under `key`.
  ///
  /// *Errors*: `StandardError` "Invalid factory key requested." for the empty key.
  [[nodiscard]] static bool CanConstruct(const Key& key);
  /// A new product of the factory that is registered under `key`.
  ///
  /// *Errors*: `StandardError` "Invalid factory key requested." if there is none; what the factory
  /// throws.
  [[nodiscard]] static std::unique_ptr<Product> Construct(const Key& key);

 protected:
  /// Registers `self` under `key`, in the place of a factory that was registered under it before.
  ///
  /// *Errors*: `StandardError` "Invalid factory initialization." if `key` is empty or `self` null.
  Factory(const Key& key, Derived* const self);

  /// The number of registered keys.
  [[nodiscard]] std::size_t size() const;

 private:
  static Flyweight<Key, Derived*, Compare>& TheRegistry();

  bool operator==(const Factory&) const;
};

/// A family of which the first factory makes the products that are asked for without a key.
template <class Derived, class Product, class Key>
class VELUM_API DefaultProductFactory : public Factory<Derived, Product, Key, std::less<Key>> {
 public:
  /// Leaves the registry and the default as they are.
  ~DefaultProductFactory() override;

  using Factory<Derived, Product, Key, std::less<Key>>::Construct;
  /// A new product of the factory that was registered first.
  ///
  /// *Errors*: `StandardError` "Invalid default factory constructor requested." if there is none;
  /// what the factory throws.
  [[nodiscard]] static std::unique_ptr<Product> Construct();

 protected:
  /// Registers `self` as `Factory` does; the first becomes the default for good.
  DefaultProductFactory(const Key& key, Derived* const self);

 private:
  static Derived* m_defaultConstructor;
};

// Out of the classes, so that `extern template` keeps them out of every other module.

template <class Derived, class Product, class Key, class Compare>
Factory<Derived, Product, Key, Compare>::Factory(const Key& key, Derived* const self) {
  if (key.empty() || !self) throw StandardError("Invalid factory initialization.");
  TheRegistry().Store(key, self, true);
}

template <class Derived, class Product, class Key, class Compare>
Factory<Derived, Product, Key, Compare>::~Factory() {}

template <class Derived, class Product, class Key, class Compare>
bool Factory<Derived, Product, Key, Compare>::CanConstruct(const Key& key) {
  if (key.empty()) throw StandardError("Invalid factory key requested.");
  return TheRegistry().Has(key);
}

template <class Derived, class Product, class Key, class Compare>
std::unique_ptr<Product> Factory<Derived, Product, Key, Compare>::Construct(const Key& key) {
  const Factory* const factory = TheRegistry().Get(key);
  if (!factory) throw StandardError("Invalid factory key requested.");
  return factory->ConstructProduct();
}

template <class Derived, class Product, class Key, class Compare>
std::size_t Factory<Derived, Product, Key, Compare>::size() const {
  return TheRegistry().size();
}

template <class Derived, class Product, class Key, class Compare>
Flyweight<Key, Derived*, Compare>& Factory<Derived, Product, Key, Compare>::TheRegistry() {
  static Flyweight<Key, Derived*, Compare> registry;
  return registry;
}

template <class Derived, class Product, class Key, class Compare>
bool Factory<Derived, Product, Key, Compare>::operator==(const Factory&) const {
  throw StandardError("Factory::operator==() cannot be called.");
}

template <class Derived, class Product, class Key>
constinit Derived* DefaultProductFactory<Derived, Product, Key>::m_defaultConstructor = nullptr;

template <class Derived, class Product, class Key>
DefaultProductFactory<Derived, Product, Key>::DefaultProductFactory(const Key& key,
                                                                    Derived* const self)
    : Factory<Derived, Product, Key, std::less<Key>>(key, self) {
  const std::size_t keys = this->size();
  if (keys == 0) throw StandardError("Invalid factory initialization.");
  if (keys == 1 && !m_defaultConstructor) m_defaultConstructor = self;
}

template <class Derived, class Product, class Key>
DefaultProductFactory<Derived, Product, Key>::~DefaultProductFactory() {}

template <class Derived, class Product, class Key>
std::unique_ptr<Product> DefaultProductFactory<Derived, Product, Key>::Construct() {
  if (!m_defaultConstructor) {
    throw StandardError("Invalid default factory constructor requested.");
  }
  const Factory<Derived, Product, Key, std::less<Key>>* const factory = m_defaultConstructor;
  return factory->ConstructProduct();
}

}  // namespace vlm
