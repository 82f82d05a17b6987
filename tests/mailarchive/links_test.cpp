// Names that reach links and disks: of attachments, of inline parts, of files.
#include "mailarchive/links.h"

#include <gtest/gtest.h>

#include "mailarchive/attachment_names.h"
#include "mailarchive/inline_references.h"

namespace velmora::mailarchive {
namespace {

TEST(HrefPathTest, EscapesWhatABrowserWouldRead) {
  EXPECT_EQ(HrefPath("Eml\\a b's ä.eml"), "Eml/a b's ä.eml");
  EXPECT_EQ(HrefPath("100%41#1&x.htm"), "100%2541%231&amp;x.htm");
  EXPECT_EQ(HrefPath("a\"b<c>d?e"), "a%22b%3Cc%3Ed%3Fe");
}

TEST(FileLinkTest, KeepsItsTwoBlanks) {
  EXPECT_EQ(FileLink("a\\b", "t"), "<a  target=\"_blank\" href=\"a/b\">t</a><br>");
  EXPECT_EQ(PlainLink("a\\b", "t"), "<a href=\"a/b\">t</a><br>");
}

TEST(AttachmentFileNameTest, MakesThePartBeforeTheLastPointSafe) {
  EXPECT_EQ(AttachmentFileName("a.b#c.PDF", ""), "a_b_c.PDF");
  EXPECT_EQ(AttachmentFileName("Größe.m#ä", ""), "Groesse.m#ä");  // the extension stays as it stands
  EXPECT_EQ(AttachmentFileName("x.t\"x?t", ""), "x.t'x t");       // unless no file name can hold it
  EXPECT_EQ(AttachmentFileName("x.тхт", ""), "x.___");
  EXPECT_EQ(AttachmentFileName("..\\..\\etc.conf", ""), "__-__-etc.conf");
}

TEST(AttachmentFileNameTest, NameWithoutAPointTakesThePreviousOne) {
  EXPECT_EQ(AttachmentFileName("README", "a.txt"), "a.txt");
  EXPECT_EQ(AttachmentFileName("READ:ME", ""), "READ-ME");
}

TEST(AttachmentFileNameTest, NeverEmpty) {
  for (const char* name : {"", ".", " ", " . "}) EXPECT_EQ(AttachmentFileName(name, ""), "Anhang") << name;
  EXPECT_EQ(AttachmentFileName(".profile", ""), ".profile");
}

TEST(PlainAttachmentFileNameTest, KeepsWhatAFileCanBear) {
  EXPECT_EQ(PlainAttachmentFileName("Größe #1.tar.gz"), "Größe #1.tar.gz");
  EXPECT_EQ(PlainAttachmentFileName("..\\a.txt"), "__-a.txt");
  EXPECT_EQ(PlainAttachmentFileName("C:a.txt"), "C-a.txt");
  EXPECT_EQ(PlainAttachmentFileName(".."), "__");
  EXPECT_EQ(PlainAttachmentFileName("отчёт.pdf"), "_____.pdf");
}

TEST(AvoidReservedNameTest, MarkersAnywhereIndexesBesidePages) {
  EXPECT_EQ(AvoidReservedName("VELMORASUBARC.VLA", false), "VELMORASUBARC1.VLA");
  EXPECT_EQ(AvoidReservedName("VelmoraRootArc", false), "VelmoraRootArc1");
  EXPECT_EQ(AvoidReservedName("index2.html", false), "index2.html");
  EXPECT_EQ(AvoidReservedName("index2.html", true), "index21.html");
  EXPECT_EQ(AvoidReservedName("a.txt", true), "a.txt");
  EXPECT_EQ(AvoidReservedName("a.ADD", true), "a.ADD_");
  EXPECT_EQ(AvoidReservedName("a.add", false), "a.add");
}

TEST(InlineReferencesTest, EveryOccurrenceOfEveryPart) {
  EXPECT_EQ(ReplaceInlineReferences("L.$01 L.$02 L.$01", "L", {"A\\x.gif", "y%.gif"}),
            "../A/x.gif ../y%25.gif ../A/x.gif");
}

TEST(InlineReferencesTest, WhatIsNoReferenceStays) {
  for (const char* html : {"L.$00", "L.$03", "L.$1", "L.$", "L.$x1", "M.$01", ""}) {
    EXPECT_EQ(ReplaceInlineReferences(html, "L", {"x", ""}), html);
  }
  EXPECT_EQ(ReplaceInlineReferences("L.$02", "L", {"x", ""}), "L.$02");  // could not be saved
  EXPECT_EQ(ReplaceInlineReferences(".$01", "", {"x"}), ".$01");
  EXPECT_EQ(ReplaceInlineReferences("L.$01", "L", {}), "L.$01");
}

TEST(InlineReferencesTest, PartsAreTwoDigitsAndNoMore) {
  const std::vector<std::string> paths(120, "x");
  EXPECT_EQ(ReplaceInlineReferences("L.$100 L.$99", "L", paths), "../x0 ../x");
}

TEST(InlineReferencesTest, ApostropheCannotEndTheAttribute) {
  EXPECT_EQ(ReplaceInlineReferences("<img src='L.$01'>", "L", {"a'b.gif"}), "<img src='../a%27b.gif'>");
}

}  // namespace
}  // namespace velmora::mailarchive
