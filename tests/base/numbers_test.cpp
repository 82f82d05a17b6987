#include "base/numbers.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmora {
namespace {

TEST(FormatNumberTest, GermanSeparators) {
  EXPECT_EQ(FormatNumber(1234.5, 3), "1.234,500");
  EXPECT_EQ(FormatNumber(1234567.0, 0), "1.234.567");
  EXPECT_EQ(FormatNumber(999.0, 0), "999");
  EXPECT_EQ(FormatNumber(0.0, 2), "0,00");
  EXPECT_EQ(FormatNumber(-1234.5, 1), "-1.234,5");
  EXPECT_EQ(FormatNumber(1.0, -1), "1");
}

TEST(FormatNumberTest, RoundsHalfAwayFromZeroAsAPersonReadsTheNumber) {
  EXPECT_EQ(FormatNumber(0.5, 0), "1");
  EXPECT_EQ(FormatNumber(1.5, 0), "2");
  EXPECT_EQ(FormatNumber(2.5, 0), "3");
  EXPECT_EQ(FormatNumber(-2.5, 0), "-3");
  EXPECT_EQ(FormatNumber(2.675, 2), "2,68");
  EXPECT_EQ(FormatNumber(0.4999, 0), "0");
  EXPECT_EQ(FormatNumber(999.9996, 3), "1.000,000");
  EXPECT_EQ(FormatNumber(0.0004, 3), "0,000");
  EXPECT_EQ(FormatNumber(0.00051, 3), "0,001");
}

TEST(FormatNumberTest, NoSignBeforeAZero) { EXPECT_EQ(FormatNumber(-0.0001, 2), "0,00"); }

TEST(FormatNumberTest, ExtremesHaveAllTheirDigits) {
  EXPECT_EQ(FormatNumber(1e21, 0), "1.000.000.000.000.000.000.000");
  EXPECT_EQ(FormatNumber(5e-324, 2), "0,00");
  EXPECT_EQ(FormatNumber(std::numeric_limits<double>::infinity(), 0), "0");
  EXPECT_EQ(FormatNumber(std::numeric_limits<double>::quiet_NaN(), 1), "0,0");
}

TEST(FormatNumberTest, FormatTexts) {
  EXPECT_EQ(FormatNumber(1234.0, "0"), "1234");
  EXPECT_EQ(FormatNumber(0.0, "0"), "0");
  EXPECT_EQ(FormatNumber(1234567.0, "###0"), "1234567");
  EXPECT_EQ(FormatNumber(1234567.0, "###,###0"), "1.234.567");
  EXPECT_EQ(FormatNumber(0.0, "#,#0"), "0");
  EXPECT_EQ(FormatNumber(1234567.0, "#,#0"), "1.234.567");
  EXPECT_EQ(FormatNumber(1.5, "#,#0.000"), "1,500");
}

TEST(FormatNumberTest, AFormatWithoutZeroShowsNoZero) {
  EXPECT_EQ(FormatNumber(0.0, "###,###"), "");
  EXPECT_EQ(FormatNumber(1234.0, "###,###"), "1.234");
}

TEST(FormatSizeTest, ChangesTheUnitAtEachPowerOf1024) {
  EXPECT_EQ(FormatSize(0), "0");
  EXPECT_EQ(FormatSize(1023), "1023");
  EXPECT_EQ(FormatSize(1024), "1,000 KB");
  EXPECT_EQ(FormatSize(1264128), "1,206 MB");
  EXPECT_EQ(FormatSize(1048575), "1.023,999 KB");
  EXPECT_EQ(FormatSize(1048576), "1,000 MB");
  EXPECT_EQ(FormatSize(1073741823), "1.024,000 MB");
  EXPECT_EQ(FormatSize(1073741824), "1,000 GB");
  EXPECT_EQ(FormatSize(std::int64_t{5} << 40), "5.120,000 GB");
  EXPECT_EQ(FormatSize(10240, "###0"), "10 KB");
}

TEST(FormatHexTest, UpperCaseWithoutPrefix) {
  EXPECT_EQ(FormatHex(0), "0");
  EXPECT_EQ(FormatHex(0x301FB), "301FB");
}

TEST(ParseIntegerTest, TakesWholeNumbersOnly) {
  EXPECT_EQ(ParseInteger(" 42 "), 42);
  EXPECT_EQ(ParseInteger("+42"), 42);
  EXPECT_EQ(ParseInteger("-42"), -42);
  EXPECT_EQ(ParseInteger("0007"), 7);
  EXPECT_EQ(ParseInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(ParseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  for (const std::string_view bad :
       {"", " ", "+", "-", "+-1", "--1", "1 2", "1.0", "0x10", "9223372036854775808", "1a", "a"})
    EXPECT_FALSE(ParseInteger(bad)) << bad;
}

}  // namespace
}  // namespace velmora
