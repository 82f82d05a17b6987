#include "mailarchive/format/page_text.h"

#include <gtest/gtest.h>

namespace velmora::mailarchive {
namespace {

TEST(NeutralizeHeadTags, TakesTheMeaningOfTagsThatEscapeThePolicy) {
  EXPECT_EQ(NeutralizeHeadTags("a<meta http-equiv=refresh>b"), "a&lt;meta http-equiv=refresh>b");
  EXPECT_EQ(NeutralizeHeadTags("<LINK rel=preconnect><Base href=x>"),
            "&lt;LINK rel=preconnect>&lt;Base href=x>");
  EXPECT_EQ(NeutralizeHeadTags("<iframe srcdoc=x><FrameSet><frame src=x>"),
            "&lt;iframe srcdoc=x>&lt;FrameSet>&lt;frame src=x>");
  EXPECT_EQ(NeutralizeHeadTags("<meta/http-equiv=refresh>"), "&lt;meta/http-equiv=refresh>");
  EXPECT_EQ(NeutralizeHeadTags("<<meta>"), "<&lt;meta>");
}

TEST(NeutralizeHeadTags, LeavesEverythingElse) {
  for (const std::string_view text : {"", "text", "<", "<b>fett</b>", "a < meta", "</meta>", "<met", "<bas",
                                      "Frank <frank@x.example>", "&lt;meta>"}) {
    EXPECT_EQ(NeutralizeHeadTags(text), text);
  }
}

}  // namespace
}  // namespace velmora::mailarchive
