#include <gtest/gtest.h>

#include <random>

#include "base/text.h"
#include "mailarchive/format/forms.h"

namespace velmora::mailarchive {
namespace {

std::string FillOneByOne(std::string_view form, const std::vector<FormValue>& values) {
  std::string text(form);
  for (const auto& [variable, value] : values) text = ReplaceAll(text, variable, value);
  return text;
}

TEST(FillForm, ReplacesEveryOccurrence) {
  EXPECT_EQ(FillForm("<title>%VELMORA_TITLE%</title><h1>%VELMORA_TITLE%</h1>", {{"%VELMORA_TITLE%", "x"}}),
            "<title>x</title><h1>x</h1>");
}

// Forms of users name variables that no release has ever filled; their pages show them as they stand.
TEST(FillForm, LeavesVariablesThatNobodyFills) {
  EXPECT_EQ(FillForm("%VELMORA_VERSION% %VELMORA_TO% %VELMORA_", {{"%VELMORA_TO%", "b"}}),
            "%VELMORA_VERSION% b %VELMORA_");
}

TEST(FillForm, RegardsCase) { EXPECT_EQ(FillForm("%velmora_to%", {{"%VELMORA_TO%", "b"}}), "%velmora_to%"); }

TEST(FillForm, FillsALaterVariableInsideAValue) {
  EXPECT_EQ(FillForm("%VELMORA_SUBJECT%|%VELMORA_TO%",
                     {{"%VELMORA_SUBJECT%", "an %VELMORA_TO%"}, {"%VELMORA_TO%", "b@c"}}),
            "an b@c|b@c");
}

TEST(FillForm, LeavesAnEarlierVariableInsideAValue) {
  EXPECT_EQ(FillForm("%VELMORA_SUBJECT%|%VELMORA_TO%",
                     {{"%VELMORA_SUBJECT%", "s"}, {"%VELMORA_TO%", "%VELMORA_SUBJECT%"}}),
            "s|%VELMORA_SUBJECT%");
}

TEST(FillForm, FillsAVariableThatAValueCompletes) {
  EXPECT_EQ(FillForm("%VELMORA_%VELMORA_A%TO%", {{"%VELMORA_A%", ""}, {"%VELMORA_TO%", "b"}}), "b");
  EXPECT_EQ(FillForm("%VELMORA_A%VELMORA_TO%", {{"%VELMORA_A%", "50%"}, {"%VELMORA_TO%", "b"}}), "50b");
  EXPECT_EQ(FillForm("%VELMORA_A% VELMORA_TO%", {{"%VELMORA_A%", "50%"}, {"%VELMORA_TO%", "b"}}),
            "50% VELMORA_TO%");
}

TEST(FillForm, LetsTheOrderDecideBetweenVariablesThatShareAPercentSign) {
  const std::string_view form = "%VELMORA_A%VELMORA_B%";
  EXPECT_EQ(FillForm(form, {{"%VELMORA_A%", "a"}, {"%VELMORA_B%", "b"}}), "aVELMORA_B%");
  EXPECT_EQ(FillForm(form, {{"%VELMORA_B%", "b"}, {"%VELMORA_A%", "a"}}), "%VELMORA_Ab");
}

// Forms and values put together at random from pieces of variables, so that they meet in every way.
TEST(FillForm, GivesWhatReplacingOneAfterTheOtherGives) {
  constexpr std::string_view Pieces[] = {
      "%", "%VELMORA_",   "VELMORA_", "VEL",     "MORA_",       "A%",          "B",
      "C", "50%",         "",         " ",       "%VELMORA_A%", "%VELMORA_B%", "%VELMORA_C%",
      "x", "%VELMORA_X%", "\r\n<p>",  "%VELMOR",
  };
  std::mt19937 random(20261121);
  const auto text = [&](std::size_t longest) {
    std::string made;
    for (auto count = random() % (longest + 1); count > 0; --count)
      made += Pieces[random() % std::size(Pieces)];
    return made;
  };
  for (int round = 0; round < 100'000; ++round) {
    const auto form = text(9);
    const std::string a = text(2), b = text(2), c = text(2);
    std::vector<FormValue> values = {{"%VELMORA_A%", a}, {"%VELMORA_B%", b}, {"%VELMORA_C%", c}};
    std::shuffle(values.begin(), values.end(), random);
    ASSERT_EQ(FillForm(form, values), FillOneByOne(form, values))
        << "form " << form << "\nA " << a << "\nB " << b << "\nC " << c << "\nfirst " << values[0].first;
  }
}

TEST(FillForm, TakesAnyTextAsAVariable) {
  EXPECT_EQ(FillForm("a-b", {{"a", "b"}, {"b", "c"}, {"", "x"}}), "c-c");
}

}  // namespace
}  // namespace velmora::mailarchive
