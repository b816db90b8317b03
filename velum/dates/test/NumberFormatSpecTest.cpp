#include <velum/dates/NumberFormatSpec.h>

#include <velum/core/StringFormat.h>

#include <gtest/gtest.h>

namespace vlm {
namespace {

using Spec = NumberFormatSpec;

TEST(NumberFormatSpec, FormatFollowsFromFormAndDigits) {
  EXPECT_EQ(Spec().GetFormat(), "%.4g");
  const struct {
    Spec spec;
    const char* format;
    const char* text;  // of 1234.5
  } rows[] = {
      {{Spec::Exponential, 2}, "%.2e", "1.23e+03"},     {{Spec::Fixed, 3}, "%.3f", "1234.500"},
      {{Spec::General, 10}, "%.10g", "1234.5"},         {{Spec::Fixed, 0}, "%.0f", "1234"},
      {{Spec::General, 4294967295u}, "%.-1g", nullptr},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.spec.GetFormat(), row.format);
    if (row.text != nullptr) {
      GString text;
      FormatString(text, row.spec.GetFormat().c_str(), 1234.5);
      EXPECT_EQ(text, row.text);
    }
  }
}

TEST(NumberFormatSpec, UnknownFormChangesNothing) {
  Spec spec;
  spec.SetType(Spec::Fixed);
  spec.SetNumDigits(7);
  spec.SetType(static_cast<Spec::Type>(3));
  EXPECT_EQ(spec.GetType(), Spec::Fixed);
  EXPECT_EQ(spec.GetNumDigits(), 7u);
}

}  // namespace
}  // namespace vlm
