#include "base/code_page.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace velmora {
namespace {

std::string AllBytes() {
  std::string bytes;
  for (int code = 0; code < 256; ++code) bytes += static_cast<char>(code);
  return bytes;
}

TEST(CodePageTest, AllBytesComeBack) {
  for (const Unmappable unmappable :
       {Unmappable::QuestionMark, Unmappable::Reference, Unmappable::Underscore})
    EXPECT_EQ(ToCodePage(FromCodePage(AllBytes()), unmappable), AllBytes());
  EXPECT_TRUE(FitsCodePage(FromCodePage(AllBytes())));
  EXPECT_EQ(CountCharacters(FromCodePage(AllBytes())), 256U);
}

TEST(CodePageTest, KnowsTheCharactersThatLatin1Lacks) {
  EXPECT_EQ(FromCodePage("\x80\x84\x85\x8A\x93\x94\x96\x99\x9F"), "€„…Š“”–™Ÿ");
  EXPECT_EQ(ToCodePage("Größe €"),
            "Gr\xF6\xDF"
            "e \x80");
}

TEST(CodePageTest, UndefinedCodesAreTheControlCharactersOfTheirValue) {
  EXPECT_EQ(FromCodePage("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(CodePageTest, OtherControlCharactersOfThatRangeAreNotInIt) {
  // U+0080 would otherwise come back as the euro sign.
  EXPECT_FALSE(FitsCodePage("\u0080"));
  EXPECT_EQ(ToCodePage("\u0080"), "?");
}

TEST(CodePageTest, WhatItLacksIsReplacedAsAsked) {
  EXPECT_EQ(ToCodePage("aПb"), "a?b");
  EXPECT_EQ(ToCodePage("aПb", Unmappable::Reference), "a&#1055;b");
  EXPECT_EQ(ToCodePage("a\U0001F600b", Unmappable::Reference), "a&#128512;b");
  EXPECT_EQ(ToCodePage("aПb", Unmappable::Underscore), "a_b");
  EXPECT_EQ(ToCodePage("a\xFF"
                       "b"),
            "a?b");
  EXPECT_FALSE(FitsCodePage("П"));
  EXPECT_FALSE(FitsCodePage("\xFF"));
  EXPECT_TRUE(FitsCodePage("Grüße €"));
}

TEST(ReferenceTest, ReadsBackWhatWasWritten) {
  for (const std::string_view text : {"Привет, Welt €", "\U0001F600", "łŁ", "a&b", ""})
    EXPECT_EQ(DecodeReferences(FromCodePage(ToCodePage(text, Unmappable::Reference))), text);
}

TEST(ReferenceTest, OnlyDecimalOnesAbove255) {
  EXPECT_EQ(DecodeReferences("&#256;"), "Ā");
  for (const std::string_view kept :
       {"&#255;", "&#65;", "&#x41F;", "&#;", "&#1055", "& #1055;", "&#1055 ;", "&#-1055;", "&amp;",
        "&#55296;", "&#57343;", "&#1114112;", "&#99999999999999999999;", "&", "&#"})
    EXPECT_EQ(DecodeReferences(kept), kept);
  EXPECT_EQ(DecodeReferences("&&#1055;&#"), "&П&#");
}

}  // namespace
}  // namespace velmora
