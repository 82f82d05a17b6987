#include "store/fields.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmora::store {
namespace {

const DateTime SomeDate = DateTime::FromCivil({2026, 12, 31, 23, 59, 0}).value();

TEST(FieldTextTest, ReadsAsAPersonWould) {
  EXPECT_EQ(FieldText({}), "");
  EXPECT_EQ(FieldText(true), "1");
  EXPECT_EQ(FieldText(false), "0");
  EXPECT_EQ(FieldText(std::int64_t{-52}), "-52");
  EXPECT_EQ(FieldText(1.5), "1.5");
  EXPECT_EQ(FieldText(std::string("Grüße")), "Grüße");
  EXPECT_EQ(FieldText(SomeDate), "31.12.2026 23:59:00");
  EXPECT_EQ(FieldText(std::vector<std::string>{"a", "b"}), "a; b");
}

TEST(FieldNumberTest, WhatIsNoNumberIsZero) {
  EXPECT_EQ(FieldNumber({}), 0);
  EXPECT_EQ(FieldNumber(true), 1);
  EXPECT_EQ(FieldNumber(std::int64_t{-52}), -52);
  EXPECT_EQ(FieldNumber(1.9), 1);
  EXPECT_EQ(FieldNumber(-1.9), -1);
  EXPECT_EQ(FieldNumber(std::string(" 42 ")), 42);
  EXPECT_EQ(FieldNumber(std::string("42a")), 0);
  EXPECT_EQ(FieldNumber(SomeDate), 0);
  EXPECT_EQ(FieldNumber(std::vector<std::string>{"1"}), 0);
  for (const double huge : {1e30, -1e30, 9223372036854775808.0, std::numeric_limits<double>::quiet_NaN(),
                            std::numeric_limits<double>::infinity()})
    EXPECT_EQ(FieldNumber(huge), 0);
}

TEST(FieldDateTest, WhatIsNoDateIsTheNullDate) {
  EXPECT_EQ(FieldDate(SomeDate), SomeDate);
  EXPECT_TRUE(FieldDate({}).IsNull());
  EXPECT_TRUE(FieldDate(std::string("31.12.2026")).IsNull());
  EXPECT_TRUE(FieldDate(std::int64_t{1}).IsNull());
}

TEST(FieldBoolTest, NumbersAndWords) {
  for (const FieldValue& yes : {FieldValue(true), FieldValue(std::int64_t{-1}), FieldValue(0.5),
                                FieldValue(std::string("1")), FieldValue(std::string("True"))})
    EXPECT_TRUE(FieldBool(yes));
  for (const FieldValue& no :
       {FieldValue(), FieldValue(false), FieldValue(std::int64_t{0}), FieldValue(0.0),
        FieldValue(std::string("0")), FieldValue(std::string("")), FieldValue(std::string("nein"))})
    EXPECT_FALSE(FieldBool(no));
}

}  // namespace
}  // namespace velmora::store
