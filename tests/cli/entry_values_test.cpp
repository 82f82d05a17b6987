// Values and names as the command line has them.
#include "cli/entry_values.h"

#include <gtest/gtest.h>

#include "cli/option_names.h"

namespace velmora::cli {
namespace {

using store::PropertyKind;

std::string Shown(std::string_view text) {
  const auto date = ParseDateOption(text);
  return date ? FormatDateTime(*date) : "";
}

TEST(EntryValuesTest, DatesAreReadInBothForms) {
  for (const auto* const text : {"31.12.2026 23:59", "31.12.2026 23:59:00", "2026-12-31 23:59",
                                 "2026-12-31T23:59", "2026-12-31T23:59:00", " 2026-12-31T23:59 "}) {
    EXPECT_EQ(Shown(text), "31.12.2026 23:59:00") << text;
  }
  EXPECT_EQ(Shown("31.12.2026"), "31.12.2026 00:00:00");
  EXPECT_EQ(Shown("2026-12-31"), "31.12.2026 00:00:00");
}

TEST(EntryValuesTest, WhatIsNoDateIsRefused) {
  for (const auto* const text :
       {"", "31.2.2026", "2026-02-31", "2026-12-31X23:59", "2026-12-31T", "2026-12-31T24:00", "2026-12",
        "morgen", "2026.12.31", "31-12-2026", "2026-12-31T23:59:00Z"}) {
    EXPECT_EQ(Shown(text), "") << text;
  }
}

TEST(EntryValuesTest, ValuesAreOfTheirKindOrSayWhatTheyAreNot) {
  EXPECT_EQ(ParseValue(" 12 ", PropertyKind::Number).value_or(true), store::FieldValue(std::int64_t{12}));
  EXPECT_EQ(ParseValue("12x", PropertyKind::Number).error().Text, "\"12x\" ist keine Zahl");
  EXPECT_EQ(ParseValue("99999999999999999999", PropertyKind::Number).error().Text,
            "\"99999999999999999999\" ist keine Zahl");
  EXPECT_EQ(ParseValue("gestern", PropertyKind::Date).error().Text, "\"gestern\" ist kein Datum");
  EXPECT_EQ(ParseValue("a\nb\x1B\xFF", PropertyKind::Text).value_or(true),
            store::FieldValue(std::string("a\r\nb \xEF\xBF\xBD")));
}

TEST(EntryValuesTest, NamesOfPropertiesBecomeOptionsAndKeys) {
  EXPECT_EQ(KebabCase("AllDayEventNoWorkDay"), "all-day-event-no-work-day");
  EXPECT_EQ(KebabCase("EMail"), "e-mail");
  EXPECT_EQ(CamelCase("AllDayEvent"), "allDayEvent");
  EXPECT_EQ(CamelCase("EMail"), "eMail");
  EXPECT_EQ(KebabCase(""), "");
  EXPECT_EQ(CamelCase(""), "");
}

}  // namespace
}  // namespace velmora::cli
