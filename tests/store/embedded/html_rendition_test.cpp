#include "store/embedded/html_rendition.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

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
        "<a href='mailto:a@b'>cid:bild@1</a>", "<!-- <img src=\"cid:bild@1\"> -->", "a < b <3 <",
        "<textarea><base></textarea>"}) {
    EXPECT_EQ(Render(html), html);
  }
}

TEST(HtmlRenditionTest, WhatCouldRedirectOrRunIsDropped) {
  EXPECT_EQ(Render("a<meta http-equiv=\"Refresh\" content=\"0;url=x\">b"), "ab");
  EXPECT_EQ(Render("a<meta charset=utf-16>b<META HTTP-EQUIV=content-type content=x>c"), "abc");
  EXPECT_EQ(Render("a<base href=\"http://x/\">b<link rel=stylesheet href=x>c"), "abc");
  EXPECT_EQ(Render("a<script src=x>if (a<b) { '</scripts>' }</script >b"), "ab");
  EXPECT_EQ(Render("a<script>endet nie"), "a");
  EXPECT_EQ(Render("<meta name=viewport content=x>"), "<meta name=viewport content=x>");
}

TEST(HtmlRenditionTest, QuotesAndCommentsEndAsInABrowser) {
  EXPECT_EQ(Render("<p title=\"><base href=x>\">y"), "<p title=\"><base href=x>\">y");
  EXPECT_EQ(Render("<!--><base href=x>y"), "<!-->y");
  EXPECT_EQ(Render("<!-- --!><base href=x>y"), "<!-- --!>y");
  EXPECT_EQ(Render("<base/href=x>y<p <base>z"), "y<p <base>z");
  EXPECT_EQ(Render("x<base href=\"endet nie"), "x");
}

TEST(HtmlRenditionTest, HostileTextsAreLinear) {
  const auto begin = std::clock();
  for (const std::string_view piece :
       {"<", "<!--", "<a ", "</", "<style>", "<p style=\"url(cid:", "--", "<p a='", "cid:", "<title>"}) {
    std::string html;
    while (html.size() < 1'000'000) html += piece;
    (void)Render(html);
  }
  EXPECT_LT(std::clock() - begin, 20 * CLOCKS_PER_SEC);
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
