#include "cli/json.h"

#include <gtest/gtest.h>

#include <string_view>

namespace velmora::cli {
namespace {

TEST(JsonTest, EscapesWhatJsonDoesNotAllow) {
  EXPECT_EQ(JsonText(""), "\"\"");
  EXPECT_EQ(JsonText("Grüße"), "\"Grüße\"");
  EXPECT_EQ(JsonText("a\"b\\c/d"), "\"a\\\"b\\\\c/d\"");
  EXPECT_EQ(JsonText("a\r\n\tb"), "\"a\\u000d\\u000a\\u0009b\"");
  EXPECT_EQ(JsonText(std::string_view("\0\x1b\x7f", 3)), "\"\\u0000\\u001b\\u007f\"");
}

TEST(JsonTest, BytesThatAreNoTextBecomeReplacementCharacters) {
  EXPECT_EQ(JsonText("a\xFF"
                     "b"),
            "\"a\xEF\xBF\xBD"
            "b\"");
}

}  // namespace
}  // namespace velmora::cli
