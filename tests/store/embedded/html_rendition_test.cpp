#include "store/embedded/html_rendition.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <string>

#include "base/text.h"

namespace velmora::store::embedded {
namespace {

// The rendition behind its head; part 3 has the id "bild@1", part 100 the id "hundert".
std::string Render(std::string_view html) {
  const auto rendition = MakeHtmlRendition(html, "L", [](std::string_view id) -> std::optional<int> {
    if (id == "bild@1") return 3;
    if (id == "hundert") return 100;
    return std::nullopt;
  });
  EXPECT_TRUE(rendition.starts_with(RenditionHead));
  return rendition.substr(RenditionHead.size());
}

TEST(HtmlRenditionTest, BeginsWithThePolicy) {
  EXPECT_TRUE(RenditionHead.starts_with(
      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none';"));
  EXPECT_EQ(Render(""), "");
}

TEST(HtmlRenditionTest, ReferencesToPartsBecomeLocations) {
  EXPECT_EQ(Render("<img src=\"cid:bild@1\">"), "<img src=\"L.$03\">");
  EXPECT_EQ(Render("<IMG alt='x' SRC = 'CID:bild%401' width=1>"), "<IMG alt='x' SRC = 'L.$03' width=1>");
  EXPECT_EQ(Render("<td background=cid:bild@1>"), "<td background=\"L.$03\">");
  EXPECT_EQ(Render("<p style=\"background:url(cid:bild@1)\">"), "<p style=\"background:url(L.$03)\">");
  EXPECT_EQ(Render("<style>a{background:url('cid:bild@1')}</style>"),
            "<style>a{background:url('L.$03')}</style>");
}

TEST(HtmlRenditionTest, OtherReferencesStayAsSent) {
  for (const std::string_view html :
       {"<img src=\"cid:fehlt\">", "<img src=\"cid:hundert\">", "<img src=\"https://example.org/a.gif\">",
        "<a href='mailto:a@b'>cid:bild@1</a>", "<!-- cid:bild@1 -->", "a < b <3 <",
        "<style><!-- a > b {} --></style>", "<a href='//host/x' title='// x'>x</a>",
        "<img src='data:image/png;base64,ab//cd'>", "<p style='background:url(https://x//y)'>"}) {
    EXPECT_EQ(Render(html), html);
  }
}

TEST(HtmlRenditionTest, WhatCouldRedirectOrRunIsDropped) {
  EXPECT_EQ(Render("a<meta http-equiv=\"Refresh\" content=\"0;url=x\">b"), "ab");
  EXPECT_EQ(Render("a<meta charset=utf-16>b<META HTTP-EQUIV=content-type content=x>c"), "abc");
  EXPECT_EQ(
      Render("a<meta http-equiv=\"re&#102;resh\">b<meta http-equiv=x-dns-prefetch-control content=on>c"),
      "abc");
  EXPECT_EQ(Render("a<iframe src=x>Text</iframe>b<frameset><frame src=x></frameset>c"),
            "ab<frameset></frameset>c");
  EXPECT_EQ(Render("a<form action=x><input name=y></form>b"), "a<input name=y>b");
  EXPECT_EQ(Render("a<base href=\"http://x/\">b<link rel=stylesheet href=x>c"), "abc");
  EXPECT_EQ(Render("a<script src=x>if (a<b) { '</scripts>' }</script >b"), "ab");
  EXPECT_EQ(Render("a<script>endet nie"), "a");
  EXPECT_EQ(Render("<meta name=viewport content=x>"), "<meta name=viewport content=x>");
}

TEST(HtmlRenditionTest, QuotesAndCommentsEndAsInABrowser) {
  EXPECT_EQ(Render("<p title=\"><base href=x>\">y"), "<p title=\">&lt;base href=x>\">y");
  EXPECT_EQ(Render("<!--><base href=x>y"), "<!-->y");
  EXPECT_EQ(Render("<!-- --!><base href=x>y"), "<!-- --!>y");
  EXPECT_EQ(Render("<base/href=x>y<p <base>z"), "y<p &lt;base>z");
  EXPECT_EQ(Render("x<base href=\"endet nie"), "x");
}

// A browser may be of another mind about what is a comment, raw text or an attribute: in SVG `style` is none,
// `noscript` is raw text where scripts can run, "]]>" ends a text. A redirect that was passed over there as
// text was live once.
TEST(HtmlRenditionTest, NoTagStandsWhereItWasNotLookedAt) {
  for (const std::string_view html :
       {"<svg><style><meta http-equiv=refresh></style></svg>",
        "<svg><title><meta http-equiv=refresh></title>", "<math><style><meta http-equiv=refresh></style>",
        "<svg><textarea><meta http-equiv=refresh></textarea>",
        "<noscript><!--</noscript><meta http-equiv=refresh>-->",
        "<svg><![CDATA[><!-- ]]><meta http-equiv=refresh> -->",
        "<select><xmp></select><meta http-equiv=refresh></xmp>", "<p title='<meta http-equiv=refresh>'>",
        "<p <meta http-equiv=refresh>", "</p '><meta http-equiv=refresh>'>", "<?x <meta http-equiv=refresh>>",
        "<noembed><META http-equiv=refresh></noembed>",
        "<p style=\"<meta http-equiv=refresh>cid:bild@1\">"}) {
    EXPECT_EQ(ToLower(Render(html)).find("<meta"), std::string::npos) << html;
  }
  EXPECT_EQ(Render("<style>a{b:'</p><i>'}</style>"), "<style>a{b:'&lt;/p>&lt;i>'}</style>");
}

// What is dropped must not leave a tag of what stood around it.
TEST(HtmlRenditionTest, DroppingComposesNoTag) {
  EXPECT_EQ(Render("<<base>meta http-equiv=refresh>"), "&lt;meta http-equiv=refresh>");
  EXPECT_EQ(Render("<<script></script>iframe src=x>"), "&lt;iframe src=x>");
  EXPECT_EQ(Render("</<base>p>"), "</&lt;base>p>");
}

// A value without quotes may hold some; those that it is given must not end within.
TEST(HtmlRenditionTest, AValueIsNotBrokenByItsNewQuotes) {
  EXPECT_EQ(Render("<p style=a\"b=cid:bild@1>"), "<p style=\"a&quot;b=L.$03\">");
  EXPECT_EQ(Render("<img src=//x\"y=z>"), "<img src=\"/_x&quot;y=z\">");
}

// On Windows a picture on a share tells its server who looks.
TEST(HtmlRenditionTest, ReferencesToSharesAreBroken) {
  const std::array<std::array<std::string_view, 2>, 15> cases = {{
      {R"_(<img src="\\host\a\b.png">)_", R"_(<img src="\_host\a\b.png">)_"},
      {R"_(<img src="//host/a">)_", R"_(<img src="/_host/a">)_"},
      {R"_(<img src="file://host/a">)_", R"_(<img src="file:/_host/a">)_"},
      {R"_(<img src=" &#x2f;&sol;host/a">)_", R"_(<img src=" &#x2f;_host/a">)_"},
      {"<img src='/\t\n\\host'>", "<img src='/\t\n_host'>"},
      {R"_(<img srcset="a 1x, //host/b 2x">)_", R"_(<img srcset="a 1x, /_host/b 2x">)_"},
      {R"_(<td background="////host/a">)_", R"_(<td background="/___host/a">)_"},
      {R"_(<rect fill="url('//host/a')">)_", R"_(<rect fill="url('/_host/a')">)_"},
      {R"_(<p style="background:url(//host/a)">)_", R"_(<p style="background:url(/_host/a)">)_"},
      {R"_(<style>a{b:url("\\\\host/a")}</style>)_", R"_(<style>a{b:url("\___host/a")}</style>)_"},
      {R"_(<style>a{b:url(\2f\2f host)}</style>)_", R"_(<style>a{b:url(\2f_host)}</style>)_"},
      {R"_(<style>a{b:url('\2f /host')}</style>)_", R"_(<style>a{b:url('\2f _host')}</style>)_"},
      {R"_(<style>a{b:url(\66ile://host)}</style>)_", R"_(<style>a{b:url(\66ile:/_host)}</style>)_"},
      {R"_(<style>a{b:image-set("//host" 1x)}</style>)_", R"_(<style>a{b:image-set("/_host" 1x)}</style>)_"},
      {R"_(<style>/* a */ //b</style>)_", R"_(<style>/* a */ /_b</style>)_"},
  }};
  for (const auto& [sent, made] : cases) EXPECT_EQ(Render(sent), made);
}

TEST(HtmlRenditionTest, HostileTextsAreLinear) {
  const auto begin = std::clock();
  for (const std::string_view piece : {"<", "<!--", "<a ", "</", "<style>", "<p style=\"url(cid:", "--",
                                       "<p a='", "cid:", "<title>", "<p a=//", "<p a='&#47;\\\\2f "}) {
    std::string html;
    while (html.size() < 1'000'000) html += piece;
    (void)Render(html);
  }
  EXPECT_LT(std::clock() - begin, 20 * CLOCKS_PER_SEC);
}

TEST(HtmlRenditionTest, AReferenceWithoutAnEndIsLookedUpOnce) {
  for (std::string html : {"<style>", "<p style=\"url("}) {
    for (int i = 0; i < 1'000; ++i) html += "cid:";
    int lookUps = 0;
    (void)MakeHtmlRendition(html + "\">", "L", [&](std::string_view) -> std::optional<int> {
      ++lookUps;
      return std::nullopt;
    });
    EXPECT_EQ(lookUps, 1) << html.substr(0, 20);
  }
}

TEST(HtmlRenditionTest, DeclaredCharsetIsFound) {
  EXPECT_EQ(FindHtmlCharset("<html><meta charset=\"KOI8-R\">"), "KOI8-R");
  EXPECT_EQ(FindHtmlCharset("<META http-equiv=Content-Type content=\"text/html; charset=iso-8859-2\">"),
            "iso-8859-2");
  EXPECT_EQ(FindHtmlCharset("<meta charset=utf-16>"), "utf-8");
  EXPECT_EQ(FindHtmlCharset("charset=x"), "");
}

}  // namespace
}  // namespace velmora::store::embedded
