#include <velum/core/TypedObject.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace vlm {
namespace {

class Shape : public CTypedObject {
 public:
  static const CTypeInfo kType;
  const CTypeInfo* GetTypeId() const override { return &kType; }
};

class Circle : public Shape {
 public:
  static const CTypeInfo kType;
  const CTypeInfo* GetTypeId() const override { return &kType; }
};

const CTypeInfo Shape::kType("test.Shape", nullptr, CTypedObject::GetClassTypeId());
const CTypeInfo Circle::kType(
    "test.Circle", []() -> void* { return static_cast<CTypedObject*>(new Circle); }, &Shape::kType);

TEST(CTypeInfo, IsFoundByItsExactName) {
  struct Row {
    const char* name;
    const CTypeInfo* record;
    const char* why;
  };
  const Row rows[] = {
      {"test.Circle", &Circle::kType, "as it was given"},
      {"CTypedObject", CTypedObject::GetClassTypeId(), "the library's own"},
      {"test.circle", nullptr, "case matters"},
      {"test.Circ", nullptr, "a part of a name"},
      {"", nullptr, "the empty name"},
      {nullptr, nullptr, "no name"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(CTypeInfo::FromName(row.name), row.record) << row.why;
    EXPECT_EQ(CTypeInfo::FromName(row.name), row.record) << row.why << ", looked for again";
  }
}

TEST(CTypeInfo, AbstractClassesMakeNothing) {
  EXPECT_FALSE(Shape::kType.CanCreateInstance());
  EXPECT_EQ(Shape::kType.CreateInstance(), nullptr);
  ASSERT_TRUE(Circle::kType.CanCreateInstance());
  const std::unique_ptr<CTypedObject> made(
      static_cast<CTypedObject*>(Circle::kType.CreateInstance()));
  EXPECT_EQ(made->GetTypeId(), &Circle::kType);
}

TEST(CTypeInfo, AClassIsAKindOfItselfAndItsBases) {
  const Circle circle;
  EXPECT_TRUE(circle.IsKindOf(&Circle::kType));
  EXPECT_TRUE(circle.IsKindOf(&Shape::kType));
  EXPECT_TRUE(circle.IsKindOf(CTypedObject::GetClassTypeId()));
  EXPECT_FALSE(Shape().IsKindOf(&Circle::kType));
  EXPECT_FALSE(circle.IsKindOf(nullptr));
  EXPECT_EQ(Circle::kType.GetParent(), &Shape::kType);
  EXPECT_EQ(CTypedObject::GetClassTypeId()->GetParent(), nullptr);
  EXPECT_STREQ(CTypedObject().GetTypeId()->GetName(), "CTypedObject");
}

TEST(CTypeInfo, TheFirstOfTwoWithOneNameIsFoundUntilEitherIsGone) {
  std::optional<CTypeInfo> first, second;
  first.emplace("test.Twice", nullptr, nullptr);
  second.emplace("test.Twice", nullptr, &Shape::kType);
  EXPECT_EQ(CTypeInfo::FromName("test.Twice"), &*first);
  second.reset();
  EXPECT_EQ(CTypeInfo::FromName("test.Twice"), nullptr);
  first.reset();
  EXPECT_EQ(CTypeInfo::FromName("test.Twice"), nullptr);
}

TEST(CTypeInfo, ANameAloneDoesNotEnterTheSet) {
  struct Key : CTypeInfo {
    explicit Key(const char* name) : CTypeInfo(name) {}
  };
  const Key key("test.Key");
  EXPECT_EQ(CTypeInfo::FromName("test.Key"), nullptr);
  EXPECT_FALSE(key.CanCreateInstance());
  const CTypeInfo nameless(nullptr, nullptr, nullptr);
  EXPECT_EQ(nameless.GetName(), nullptr);
}

}  // namespace
}  // namespace vlm
