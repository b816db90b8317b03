#include <examples/common/LabelFault.h>

#include <examples/common/CairoTextDevice.h>
#include <examples/common/Handles.h>
#include <examples/common/LabelLayout.h>

#include <gtest/gtest.h>

#include <iterator>
#include <random>

namespace vlm::examples {
namespace {

TEST(LabelFault, SaysWhereAndWhy) {
  const struct {
    const char* text;
    const char* words;  // "" for no fault
  } rows[] = {
      {"", ""},
      {"plain } text", ""},  // without a directive braces are text
      {"{\\b x}", ""},
      {"{\\b left open at the end", ""},
      {"\\ssbeg(0,0,left,top) {\\b x\\ssend ", ""},  // a substring takes its braces with it
      {"abc\\zzz", "line 1, column 4: cannot read '\\zzz'"},
      {"a\r\nb\nc\\up5x", "line 3, column 2: cannot read '\\up5x'"},
      {"\\", "line 1, column 1: cannot read '\\'"},
      {"\\color(1,2,3)\nx", "line 1, column 1: cannot read '\\color(1,2,3)'"},
      {"\\q23456789012345678901234567",
       "line 1, column 1: cannot read '\\q2345678901234567890123...'"},
      {"\\q234567890123456789012é", "line 1, column 1: cannot read '\\q234567890123456789012...'"},
      {"\\b x\ny}{\\zzz", "line 2: '}' without '{'"},
      {"{a\n}", "line 1: the line ends before the closing brace"},
      {"{\\ssbeg(0,0,left,top) a}\\ssend }", "line 1: '}' without '{'"},
      {"x\\ssend ", "line 1: '\\ssend' without '\\ssbeg'"},
      {"x\\ssbeg(0,0,left,top) a", "line 1: '\\ssbeg' without '\\ssend'"},
  };
  for (const auto& row : rows) {
    const auto fault = FindFault(row.text);
    EXPECT_EQ(fault ? fault->InWords() : "", row.words) << row.text;
  }
}

// Whatever the layout refuses has a fault, and nothing else has.
TEST(LabelFault, AgreesWithTheLayoutOnRandomTexts) {
  const char* const pieces[] = {"a",        "{",       "}",   "\n",
                                "\\b ",     "\\up20 ", "\\q", "\\ssbeg(10,-20,left,top) ",
                                "\\ssend ", "\t",      "\\{", "\\line(0,0,left) ",
                                "\\"};
  const SurfacePtr surface(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr));
  const ContextPtr context(cairo_create(surface.get()));
  CairoTextDevice device(context.get(), 10.0);
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  int wrong = 0;
  for (int round = 0; round < 1000; ++round) {
    std::string text;
    for (auto count = random() % 12; count > 0; --count)
      text += pieces[random() % std::size(pieces)];
    const LabelLayout layout(device, text);
    const auto fault = FindFault(text);
    ASSERT_EQ(layout.Fault().has_value(), fault.has_value()) << text;
    wrong += fault.has_value();
  }
  EXPECT_GT(wrong, 100);
  EXPECT_LT(wrong, 950);
}

TEST(LabelFault, WhatOnlyTheLayoutRefusesHasAReasonToo) {
  const SurfacePtr surface(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr));
  const ContextPtr context(cairo_create(surface.get()));
  CairoTextDevice device(context.get(), 10.0);
  const LabelLayout layout(device, "\\ssbeg(nan,0,left,top) a\\ssend ");
  ASSERT_TRUE(layout.Fault());
  EXPECT_EQ(layout.Fault()->InWords(),
            "line 1: a number is too large, or substrings are nested too deeply");
}

}  // namespace
}  // namespace vlm::examples
