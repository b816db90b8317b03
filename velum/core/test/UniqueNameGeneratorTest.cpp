#include <velum/core/UniqueNameGenerator.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace vlm {
namespace {

TEST(UniqueNameGenerator, NumbersANameThatComesAgain) {
  UniqueNameGenerator names;
  EXPECT_EQ(names.Get("Fig", false), "Fig");
  EXPECT_EQ(names.size(), 0u);
  EXPECT_EQ(names.Get("Fig", true), "Fig");
  EXPECT_EQ(names.Get("Fig", true), "Fig_2");
  EXPECT_EQ(names.Get("Fig_2", true), "Fig_3");
  EXPECT_EQ(names.Get("Fig_10", false), "Fig_11");
  EXPECT_EQ(names.Get("Fig", false), "Fig_4") << "the table was not changed";
  EXPECT_EQ(names.Get("Fig_010", true), "Fig_11");
  EXPECT_EQ(names.Get("Fig", true), "Fig_12");
  EXPECT_TRUE(names.Has("Fig"));
  EXPECT_FALSE(names.Has("Fig_2"));
  EXPECT_EQ(names.size(), 1u);
  names.Clear();
  EXPECT_EQ(names.Get("Fig", true), "Fig");
}

TEST(UniqueNameGenerator, AnUnknownStemKeepsItsNumberOnce) {
  UniqueNameGenerator names;
  EXPECT_EQ(names.Get("Other_7", true), "Other_7");
  EXPECT_TRUE(names.Has("Other"));
  EXPECT_EQ(names.Get("Other", true), "Other_2");
}

TEST(UniqueNameGenerator, GoesOnBehindANumberThatWasAdded) {
  UniqueNameGenerator names;
  names.Add("Fig");
  names.Add("Fig_9");
  EXPECT_EQ(names.Get("Fig", true), "Fig_10");
  names.Add("Fig_3");
  EXPECT_EQ(names.Get("Fig", true), "Fig_11");
}

TEST(UniqueNameGenerator, OnlyDigitsAtTheVeryEndAreANumber) {
  for (const char* const name : {"a_1b", "a1", "a_", "_", "a_1\n", "a_99999999999", ""}) {
    UniqueNameGenerator names;
    EXPECT_EQ(names.Get(name, true), name);
    EXPECT_TRUE(names.Has(name)) << name;
    EXPECT_EQ(names.Get(name, true), std::string(name) + "_2");
  }
  UniqueNameGenerator names;
  names.Add("a_5_6");
  EXPECT_TRUE(names.Has("a_5"));
}

TEST(UniqueNameGenerator, RefusesANumberThatIsNone) {
  UniqueNameGenerator names;
  names.Add("_0");
  try {
    names.Add("_0");
    ADD_FAILURE() << "taken";
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), "Invalid flyweight argument.");
  }
  names.Add("Fig_4294967295");
  names.Add("Fig_4294967295");
  EXPECT_THROW(names.Get("Fig", true), std::exception) << "the numbers are used up";
  EXPECT_THROW(names.Get("Fig", false), std::exception);
  EXPECT_EQ(names.size(), 2u);
}

}  // namespace
}  // namespace vlm
