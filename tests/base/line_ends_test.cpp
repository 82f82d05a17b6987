#include "base/line_ends.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(LineEndsTest, EveryLineEndBecomesCrLf) {
  EXPECT_EQ(WithCrLf("a\nb\rc\r\nd\n\r\r\n"), "a\r\nb\r\nc\r\nd\r\n\r\n\r\n");
  EXPECT_EQ(WithCrLf(""), "");
}

TEST(LineEndsTest, OtherControlCharactersBecomeBlanks) {
  EXPECT_EQ(CleanLines("a\tb\n\x1B[2J\xC2\x85\x7F"), "a b\r\n [2J  ");
}

}  // namespace
}  // namespace velmora
