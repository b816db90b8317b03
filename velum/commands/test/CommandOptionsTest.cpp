#include <velum/commands/CommandOptions.h>

#include <velum/core/Exception.h>

#include <gmock/gmock.h>

namespace vlm {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

TEST(CommandOptions, KeepsItsOptionsInTheirOrder) {
  CommandOptions add("Add");
  EXPECT_TRUE(add.empty());
  add.options.emplace_back("shape", "circle");
  add.options.emplace_back("shape", "square");
  CommandOptions copy(add);
  add.clear();
  EXPECT_EQ(add.size(), 0u);
  EXPECT_EQ(add.key, "Add");
  EXPECT_EQ(copy.key, "Add");
  EXPECT_EQ(copy.size(), 2u);
  EXPECT_THAT(copy, ElementsAre(Pair("shape", "circle"), Pair("shape", "square")));
  EXPECT_EQ(copy.rbegin()->second, "square");
  EXPECT_EQ(*copy.cbegin(), *copy.begin());
}

TEST(CommandOptions, NeedsAKey) {
  try {
    CommandOptions("");
    ADD_FAILURE() << "taken";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetModule(), "Velum");
    EXPECT_EQ(error.GetSrcFile(), "CommandOptions");
    EXPECT_EQ(error.GetErrCode(), 0);
    EXPECT_EQ(error.GetDescription(), "Command key must be non-empty.");
  }
}

}  // namespace
}  // namespace vlm
