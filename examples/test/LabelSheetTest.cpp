#include <examples/labels/LabelSheet.h>

#include <examples/common/Handles.h>
#include <examples/common/Picture.h>
#include <testing/PictureComparison.h>

#include <gtest/gtest.h>
#include <pango/pangocairo.h>

namespace vlm::examples {
namespace {

// The family that stands in for a name on this machine.
std::string FamilyOf(const char* name) {
  const PangoPtr<PangoContext> context(
      pango_font_map_create_context(pango_cairo_font_map_get_default()));
  const FontDescriptionPtr asked(pango_font_description_from_string(name));
  const PangoPtr<PangoFont> font(pango_context_load_font(context.get(), asked.get()));
  const FontDescriptionPtr found(pango_font_describe(font.get()));
  return pango_font_description_get_family(found.get());
}

TEST(LabelSheet, OfTheExampleIsWrongWhereItIsMeantToBe) {
  const std::vector<Label> labels = ReadLabelFile(VELUM_EXAMPLES_FOLDER "/data/labels.txt");
  EXPECT_GE(labels.size(), 40u);
  for (const Label& label : labels) {
    EXPECT_EQ(!LabelSheet({label}).Faults().empty(), label.group == "Wrong on purpose")
        << label.name;
  }
}

TEST(LabelSheet, OfNothingIsAPageAllTheSame) {
  const LabelSheet sheet({});
  EXPECT_GT(sheet.Height(), 0.0);
  EXPECT_GT(sheet.Width(), 0.0);
}

// Antialiasing differs by a few steps of gray between versions of the libraries below.
TEST(LabelSheet, LooksLikeTheStoredPicture) {
  if (FamilyOf("Arial") != "Liberation Sans" ||
      FamilyOf("DejaVu Sans Mono") != "DejaVu Sans Mono") {
    GTEST_SKIP() << "the stored picture was drawn with other fonts than those installed here";
  }
  const LabelSheet sheet(ReadLabelFile(VELUM_EXAMPLES_FOLDER "/test/labels.txt"));
  const std::string drawn = VELUM_EXAMPLES_DRAWN "/labels.png";
  WritePicture(drawn, sheet.Width(), sheet.Height(),
               [&](cairo_t* context) { sheet.Draw(context); });
  EXPECT_TRUE(
      vlm::testing::MatchesStoredPicture(drawn, VELUM_EXAMPLES_FOLDER "/test/labels.png", {8, 20}));
}

}  // namespace
}  // namespace vlm::examples
