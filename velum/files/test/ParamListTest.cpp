#include <velum/files/ParamList.h>

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <string>

namespace vlm {
namespace {

TEST(ParamList, EveryTypeHasItsText) {
  CParamList list;
  list.Set("text", "true");
  list.Set("null", static_cast<const char*>(nullptr));
  list.Set("int", -12);
  list.Set("unsigned", 4294967295u);
  list.Set("third", 1.0 / 3);
  list.Set("large", -1e300);
  list.Set("yes", true);
  list.Set("no", false);
  list.SetN("Item", 3, "three");
  list.SetN("Item", -1, 2.5);
  list.Set("name", GString("a"));
  list.SetN("Name", 0, GString("b"));
  list.SetN("Name", 1, -7);
  list.SetN("Name", 2, true);
  const std::map<GString, GString> expected = {{"Item-1", "2.5"},
                                               {"Item3", "three"},
                                               {"Name0", "b"},
                                               {"Name1", "-7"},
                                               {"Name2", "1"},
                                               {"int", "-12"},
                                               {"large", "-1.0000000000000001E+300"},
                                               {"name", "a"},
                                               {"no", "0"},
                                               {"null", ""},
                                               {"text", "true"},
                                               {"third", "0.33333333333333331"},
                                               {"unsigned", "4294967295"},
                                               {"yes", "1"}};
  EXPECT_EQ(list, expected);
  GString text = "kept";
  EXPECT_TRUE(list.Get("Item3", text) && text == "three");
  EXPECT_TRUE(list.GetN("Name", 0, text) && text == "b");
  EXPECT_TRUE(list.Get("null", text) && text.empty()) << "an empty text is a value here";
  text = "kept";
  EXPECT_FALSE(list.Get("item3", text)) << "names differ in case";
  EXPECT_EQ(text, "kept");
  double number = 0;
  EXPECT_TRUE(list.GetN("Item", -1, number) && number == 2.5);
}

TEST(ParamList, NumbersAreReadLenientlyWithThePoint) {
  const struct {
    const char* text;
    int i;  ///< 7 for what can't be read.
    unsigned u;
    double d;
    bool b;
  } rows[] = {
      {"12abc", 12, 12, 12, true},
      {" \t\n-3 ", -3, 4294967293u, -3, true},
      {"+0x1p4", 0, 0, 16, false},
      {"2.5", 2, 2, 2.5, true},
      {"2,5", 2, 2, 2, true},
      {".5", 7, 7, .5, true},
      {"00", 0, 0, 0, false},
      {"x", 7, 7, 7, true},
      {"", 7, 7, 7, true},
      {"- 1", 7, 7, 7, true},
      {"2147483648", 2147483647, 2147483648u, 2147483648.0, true},
      {"-99999999999999999999", -2147483647 - 1, 4294967295u, -1e20, true},
      {"0x", 0, 0, 7, false},
      {"0xg", 0, 0, 7, false},
      {"infix", 7, 7, 7, true},
      {"infinite", 7, 7, 7, true},
      {"1ex", 1, 1, 1, true},
      {"-INF", 7, 7, -std::numeric_limits<double>::infinity(), true},
  };
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"C", "de_DE.UTF-8"}) {
    ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
    for (const auto& row : rows) {
      CParamList list;
      list.SetN("k", 0, row.text);
      int i = 7;
      unsigned u = 7;
      double d = 7;
      bool b = true;
      EXPECT_EQ(list.GetN("k", 0, i), row.i != 7) << row.text;
      EXPECT_EQ(list.GetN("k", 0, u), row.u != 7) << row.text;
      EXPECT_EQ(list.GetN("k", 0, d), row.d != 7) << row.text;
      EXPECT_EQ(list.GetN("k", 0, b), row.i != 7) << row.text;
      EXPECT_EQ(i, row.i) << row.text;
      EXPECT_EQ(u, row.u) << row.text;
      EXPECT_EQ(d, row.d) << row.text;
      EXPECT_EQ(b, row.b) << row.text;
    }
    CParamList list;
    const double exact = 0.1 + 0.2;
    list.Set("d", exact);
    EXPECT_EQ(list["d"], "0.30000000000000004");
    double back = 0;
    EXPECT_TRUE(list.Get("d", back) && back == exact);
    list.Set("d", -std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(list["d"], "NAN");
  }
  std::setlocale(LC_ALL, before.c_str());
}

TEST(ParamList, DerivedListsSayWhereTextsAre) {
  class Upper : public CParamList {
   public:
    using CParamList::Concat;

   protected:
    void DoSet(const GString& key, const GString& value) override {
      CParamList::DoSet(key.ToUpper(), value);
    }
    bool DoGet(const GString& key, GString& value) const override {
      return CParamList::DoGet(key.ToUpper(), value);
    }
  };
  Upper list;
  list.SetN("item", 2, 5u);
  EXPECT_EQ(list.count("ITEM2"), 1u);
  int value = 0;
  EXPECT_TRUE(Upper(list).Get("Item2", value) && value == 5);
  EXPECT_EQ(Upper::Concat("a", -7), "a-7");
}

}  // namespace
}  // namespace vlm
