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
  EXPECT_EQ(NeutralizeHeadTags("<Form action=x><font>"), "&lt;Form action=x><font>");
  EXPECT_EQ(NeutralizeHeadTags("<meta/http-equiv=refresh>"), "&lt;meta/http-equiv=refresh>");
  EXPECT_EQ(NeutralizeHeadTags("<<meta>"), "<&lt;meta>");
}

// The form's variables are filled in one after the other: what one value begins, another one could end.
TEST(NeutralizeHeadTags, TakesWhatVariablesCouldMakeWhole) {
  for (const char* rest :
       {"me%VELMORA_EML%ta http-equiv=refresh>", "%VELMORA_TO%", "me", "", "IFRAM", "met%VELM%ORA%"}) {
    EXPECT_EQ(NeutralizeHeadTags("a <" + std::string(rest)), "a &lt;" + std::string(rest));
  }
}

TEST(NeutralizeHeadTags, LeavesEverythingElse) {
  for (const std::string_view text : {"", "text", "< ", "<b>fett</b>", "a < meta", "</meta>", "<met>", "<%0(",
                                      "<me% x", "<bas ", "Frank <frank@x.example>", "&lt;meta>"}) {
    EXPECT_EQ(NeutralizeHeadTags(text), text);
  }
}

}  // namespace
}  // namespace velmora::mailarchive
