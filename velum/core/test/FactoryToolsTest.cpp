#include <velum/core/Factory.h>
#include <velum/core/Flyweight.h>
#include <velum/core/GString.h>
#include <velum/core/Singleton.h>

#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <stdexcept>
#include <string>

namespace vlm {
namespace {

/// What a standard exception says that `work` throws, and nothing but a `std::exception` at that.
template <class Work>
std::string Says(Work work) {
  try {
    work();
  } catch (const std::runtime_error&) {
    return "of another kind";
  } catch (const std::exception& error) {
    return error.what();
  }
  return "nothing";
}

TEST(Flyweight, StoresOnceUnlessItMayReplace) {
  Flyweight<std::string, int> table(-1);
  EXPECT_EQ(table.Get("a"), -1);
  EXPECT_TRUE(table.Store("a", 1, false));
  EXPECT_FALSE(table.Store("a", 2, false));
  EXPECT_EQ(table.Get("a"), 1);
  EXPECT_TRUE(table.Store("a", 2, true));
  EXPECT_EQ(table.Get("a"), 2);
  EXPECT_EQ(table.size(), 1u);
  EXPECT_EQ(Says([&table] { table.Store("a", -1, true); }), "Invalid flyweight argument.");
  EXPECT_EQ(table.Get("a"), 2);
  table.Clear();
  EXPECT_FALSE(table.Has("a"));
}

/// Products of a family of the program's own tell which factory made them.
struct Product {
  int maker;
};

class Family : public DefaultProductFactory<Family, Product, GString> {
 public:
  Family(const GString& key, Family* self, int number)
      : DefaultProductFactory(key, self), number_(number) {}
  std::unique_ptr<Product> ConstructProduct() const override {
    return std::make_unique<Product>(Product{number_});
  }
  using DefaultProductFactory::size;

 private:
  int number_;
};

TEST(DefaultProductFactory, TheFirstStaysTheDefaultForGood) {
  EXPECT_EQ(Says([] { static_cast<void>(Family::Construct()); }),
            "Invalid default factory constructor requested.");
  EXPECT_EQ(Says([] { static_cast<void>(Family::Construct("a")); }),
            "Invalid factory key requested.");

  static Family first("a", &first, 1);
  EXPECT_EQ(Family::Construct()->maker, 1);
  static Family inItsPlace("a", &inItsPlace, 2);
  EXPECT_EQ(first.size(), 1u);
  static Family other("b", &other, 3);
  static Family again("a", &again, 4);
  EXPECT_EQ(first.size(), 2u);

  EXPECT_EQ(Family::Construct()->maker, 1) << "also after others under its own key";
  EXPECT_EQ(Family::Construct("a")->maker, 4) << "the last under a key";
  EXPECT_EQ(Family::Construct("b")->maker, 3);
}

TEST(Factory, RefusesAnEmptyKeyAndNoFactory) {
  const char* const kText = "Invalid factory initialization.";
  static Family kept("kept", &kept, 5);
  EXPECT_EQ(Says([] { Family("", &kept, 6); }), kText);
  EXPECT_EQ(Says([] { Family("none", nullptr, 6); }), kText);
  EXPECT_FALSE(Family::CanConstruct("none"));
}

class Counted : public Singleton<Counted> {
 public:
  static int made;
  static bool fails;

 private:
  friend class Singleton<Counted>;
  Counted() {
    if (fails) throw std::runtime_error("not yet");
    ++made;
  }
};

int Counted::made = 0;
bool Counted::fails = true;

TEST(Singleton, IsMadeOnceWhenItIsFirstAskedFor) {
  EXPECT_THROW(Counted::Instance(), std::runtime_error);
  EXPECT_EQ(Counted::made, 0);
  Counted::fails = false;
  Counted& instance = Counted::GetInstance();
  EXPECT_EQ(&instance, &Counted::Instance());
  EXPECT_EQ(&instance, &Singleton<Counted>::Instance());
  EXPECT_EQ(Counted::made, 1);
}

}  // namespace
}  // namespace vlm
