#include <examples/labels/LabelFile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace vlm::examples {
namespace {

TEST(LabelFile, RecordsBecomeLabelsWithTheirGroups) {
  std::istringstream file(
      "# A comment,\n# of two lines.\n\n# Alone\na\n\n## Titles\n\n\n"
      "# Two lines [center]\r\n\\b x\r\n\ty \r\n\n# Last [right]\n# begins with a hash\n \n\n# Odd "
      "[middle]\nz");
  const std::vector<Label> labels = ReadLabels(file);
  const struct {
    const char* group;
    const char* name;
    const char* text;
    unsigned int justify;
  } rows[] = {
      {"", "Alone", "a", 1},
      {"Titles", "Two lines", "\\b x\n\ty ", 2},
      {"Titles", "Last", "# begins with a hash\n ", 3},
      {"Titles", "Odd [middle]", "z", 1},
  };
  ASSERT_EQ(labels.size(), std::size(rows));
  for (std::size_t i = 0; i < labels.size(); ++i) {
    EXPECT_EQ(labels[i].group, rows[i].group) << i;
    EXPECT_EQ(labels[i].name, rows[i].name) << i;
    EXPECT_EQ(labels[i].text, rows[i].text) << i;
    EXPECT_EQ(labels[i].justify, rows[i].justify) << i;
  }
}

TEST(LabelFile, TextWithoutANameIsRefusedWithItsLine) {
  std::istringstream file("# Name\na\n\nno name\nb\n");
  try {
    static_cast<void>(ReadLabels(file));
    FAIL() << "was read";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "line 4: a label begins with a line '# name'");
  }
}

}  // namespace
}  // namespace vlm::examples
