#include <gtest/gtest.h>

#include "message_fixture.h"
#include "store/errors.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view PlainMail =
    "From: =?utf-8?q?J=C3=B6rg?= <joerg@example.org>\r\n"
    "To: Anna <anna@example.org>, bert@example.org\r\n"
    "Subject: =?iso-8859-1?q?Gr=FC=DFe?=\r\n"
    "Date: Mon, 2 Mar 2026 10:11:12 +0000\r\n"
    "\r\n"
    "Hallo\nWelt\r\n";

constexpr std::string_view MixedMail =
    "From: a@example.org\n"
    "To: b@example.org\n"
    "Subject: Bild\n"
    "MIME-Version: 1.0\n"
    "Content-Type: multipart/related; boundary=\"x\"\n"
    "\n"
    "--x\n"
    "Content-Type: text/html; charset=utf-8\n"
    "\n"
    "<html><body><img src=\"cid:bild@1\"></body></html>\n"
    "--x\n"
    "Content-Type: image/gif; name=\"../bild.gif\"\n"
    "Content-ID: <bild@1>\n"
    "Content-Transfer-Encoding: base64\n"
    "\n"
    "R0lGODlh\n"
    "--x--\n";

using MessageStoreTest = MessageFixture;

TEST_F(MessageStoreTest, DirectoryWithoutDatabaseIsEmpty) {
  EXPECT_EQ(Count(), 0);
  const auto entries = store->GetEntries(In, filter_preset::None, EntryOrder::Store);
  ASSERT_TRUE(entries);
  EXPECT_EQ((*entries)->Count(), 0);
  EXPECT_EQ(store->GetEntry(In, 1).error().Number, store_error::NotFound);
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("archive/in/archive.dat")));
}

TEST_F(MessageStoreTest, DeliveredMailShowsItsFields) {
  const auto key = Deliver(PlainMail);
  EXPECT_EQ(FieldText(Field(key, tag::Subject)), "Grüße");
  EXPECT_EQ(FieldText(Field(key, tag::SenderAddress)), "joerg@example.org");
  EXPECT_EQ(FieldText(Field(key, tag::RecipientText)), "anna@example.org; bert@example.org");
  EXPECT_EQ(FieldText(Field(key, tag::Recipients)), "anna@example.org; bert@example.org");
  EXPECT_EQ(FieldText(Field(key, tag::PlainText)), "Hallo\r\nWelt\r\n");
  EXPECT_EQ(FieldText(Field(key, tag::Location)), In + "\\00000001");
  EXPECT_EQ(FieldNumber(Field(key, tag::RecNo)), key);
  EXPECT_EQ(FieldDate(Field(key, tag::StatusTime)), platform::FromUnixTime(1772446272));
  EXPECT_TRUE(std::holds_alternative<std::monostate>(Field(key, tag::HtmlText)));
  EXPECT_EQ(directory.ReadHostFile("archive/in/00000001.001"), PlainMail);
}

TEST_F(MessageStoreTest, InlinePartsStandInTheRenditionByLocation) {
  const auto key = Deliver(MixedMail);
  const auto html = FieldText(Field(key, tag::HtmlRendition));
  EXPECT_TRUE(html.starts_with("<meta http-equiv=\"Content-Security-Policy\""));
  EXPECT_NE(html.find("<img src=\"" + In + "\\00000001.$01\">"), std::string::npos) << html;
  const auto item = store->GetEntry(In, key);
  ASSERT_EQ((*item)->Attachments().Count().value_or(-1), 1);
  const auto attachment = (*item)->Attachments().Item(0);
  ASSERT_TRUE(attachment);
  EXPECT_EQ((*attachment)->Name(), "bild.gif");
  EXPECT_EQ((*attachment)->Flags(), attachment_flag::InlineImage);
  EXPECT_EQ((*attachment)->Size(), 6);
  ASSERT_TRUE((*attachment)->SaveAs(directory.Path("bild.gif"), true));
  EXPECT_EQ(directory.ReadHostFile("bild.gif"), "GIF89a");
  EXPECT_EQ((*attachment)->SaveAs(directory.Path("bild.gif"), true).error().Number, 58);
}

TEST_F(MessageStoreTest, MoveCommitsAndDeletes) {
  const auto key = Deliver(MixedMail);
  ASSERT_TRUE(store->Commit());
  const auto item = store->GetEntry(In, key);
  ASSERT_TRUE((*item)->Delete());
  ASSERT_TRUE(store->Commit());
  EXPECT_EQ(Count(), 0);
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("archive/in/00000001.001")));
  Reopen();
  EXPECT_EQ(Deliver(MixedMail), key + 1) << "a key is never given twice";
}

}  // namespace
}  // namespace velmora::store::embedded
