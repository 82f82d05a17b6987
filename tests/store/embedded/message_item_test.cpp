// Item objects: fields, user fields, attachments, drafts, copies.
#include <gtest/gtest.h>

#include <filesystem>

#include "message_fixture.h"
#include "store/embedded/content_files.h"
#include "store/embedded/sqlite.h"
#include "store/errors.h"
#include "store/vocabulary.h"
#include "support/small_disk.h"
#include "target_archive.h"

namespace velmora::store::embedded {
namespace {

class MessageItemTest : public MessageFixture {
 protected:
  std::unique_ptr<DvItem> Get(EntryKey key, const std::string& archive = In) {
    auto item = store->GetEntry(archive, key);
    EXPECT_TRUE(item) << item.error().Text;
    return item ? std::move(*item) : nullptr;
  }
  template <typename R>
  static int ErrorOf(const R& result) {
    return result ? 0 : result.error().Number;
  }
  std::string Text(DvItem& item, FieldTag tag) {
    return FieldText(item.Fields().Get(tag).value_or(FieldValue{}));
  }

  TargetArchive target{Out};
};

TEST_F(MessageItemTest, ViewedIsOneFactUnderTagNameAndFlagBit) {
  const auto key = Deliver("Subject: x\n\n");
  auto item = Get(key);
  EXPECT_FALSE(FieldBool(*item->Fields().Get(tag::Viewed)));
  ASSERT_TRUE(item->Fields().Set("Viewed", true));
  EXPECT_EQ(FieldNumber(*item->Fields().Get(tag::Flags)), item_flag::Viewed | item_flag::Received);
  ASSERT_TRUE(item->Update());
  EXPECT_TRUE(FieldBool(Field(key, tag::Viewed)));
  item = Get(key);
  ASSERT_TRUE(item->Fields().Set(tag::Flags, std::int64_t{item_flag::Received}));
  EXPECT_FALSE(FieldBool(*item->Fields().Get("viewed")));
}

TEST_F(MessageItemTest, ChangesStandInMemoryUntilUpdate) {
  const auto key = Deliver("Subject: alt\n\nText\n");
  auto item = Get(key);
  ASSERT_TRUE(item->Fields().Set(tag::Subject, std::string("neu\r\nBcc: x")));
  ASSERT_TRUE(item->Fields().Set(tag::Comment, std::string("Zeile 1\r\nZeile 2")));
  EXPECT_EQ(FieldText(Field(key, tag::Subject)), "alt");
  ASSERT_TRUE(item->UpdateField(tag::Comment));
  EXPECT_EQ(FieldText(Field(key, tag::Comment)), "Zeile 1\r\nZeile 2");
  EXPECT_EQ(FieldText(Field(key, tag::Subject)), "alt");
  ASSERT_TRUE(item->Update());
  EXPECT_EQ(FieldText(Field(key, tag::Subject)), "neu  Bcc: x") << "a header field is one line";
  ASSERT_TRUE(item->Fields().Set(tag::Comment, FieldValue{}));
  ASSERT_TRUE(item->Update());
  EXPECT_TRUE(std::holds_alternative<std::monostate>(Field(key, tag::Comment)));
}

TEST_F(MessageItemTest, UpdateFieldWritesThatFieldAlone) {
  const auto key = Deliver("Subject: alt\n\nText\n");
  const FieldTag unknown = 0x80001234;
  auto item = Get(key);
  auto& fields = item->Fields();
  ASSERT_TRUE(fields.Set(tag::Viewed, true));
  ASSERT_TRUE(fields.Set(tag::Recipients, std::string("a@example.org")));
  ASSERT_TRUE(fields.Set(unknown, std::int64_t{5}));
  ASSERT_TRUE(fields.Set("Kostenstelle", std::int64_t{7}));
  for (const auto readOnly : {tag::RecNo, tag::Location, tag::HtmlRendition}) {
    ASSERT_TRUE(item->UpdateField(readOnly));
    EXPECT_FALSE(FieldBool(Field(key, tag::Viewed))) << readOnly;
  }
  ASSERT_TRUE(item->UpdateField(unknown));
  EXPECT_EQ(FieldNumber(Field(key, unknown)), 5);
  EXPECT_EQ(FieldText(Field(key, tag::Recipients)), "");
  ASSERT_TRUE(item->UpdateField(tag::Recipients));
  EXPECT_EQ(FieldText(Field(key, tag::Recipients)), "a@example.org");
  EXPECT_FALSE(FieldBool(Field(key, tag::Viewed)));
  ASSERT_TRUE(item->UpdateField(tag::Viewed));
  EXPECT_TRUE(FieldBool(Field(key, tag::Viewed)));
  EXPECT_EQ(FieldNumber(*Get(key)->Fields().Get("Kostenstelle")), 0);
  ASSERT_TRUE(item->Update());
  EXPECT_EQ(FieldNumber(*Get(key)->Fields().Get("Kostenstelle")), 7);
}

TEST_F(MessageItemTest, AFieldThatCouldNotBeWrittenIsWrittenLater) {
  const auto key = Deliver("Subject: alt\n\nText\n");
  ASSERT_TRUE(store->CommitAndClose(In));
  auto item = Get(key);
  ASSERT_TRUE(item->Fields().Set(tag::Subject, std::string("neu")));
  ASSERT_TRUE(item->Fields().Set(tag::Comment, std::string("dazu")));
  const auto path = directory.HostPath("archive/in/archive.dat");
  ASSERT_TRUE(store->CommitAndClose(In));
  std::filesystem::rename(path, path + ".weg");
  std::filesystem::create_directory(path);
  EXPECT_FALSE(item->UpdateField(tag::Subject));
  EXPECT_FALSE(item->UpdateField(tag::Comment));
  std::filesystem::remove(path);
  std::filesystem::rename(path + ".weg", path);
  ASSERT_TRUE(item->UpdateField(tag::Subject));
  ASSERT_TRUE(item->Update());
  EXPECT_EQ(FieldText(Field(key, tag::Subject)), "neu");
  EXPECT_EQ(FieldText(Field(key, tag::Comment)), "dazu");
}

TEST_F(MessageItemTest, AViewShowsTheTextsThatItWrote) {
  const auto key = Deliver("Subject: x\n\nText\n");
  const auto view = store->ItemView(In, key);
  ASSERT_TRUE(view);
  auto& fields = (*view)->Item().Fields();
  EXPECT_EQ(Text((*view)->Item(), tag::Comment), "");
  EXPECT_EQ((*view)->AsMail()->HtmlIndicator().value_or("?"), "");
  ASSERT_TRUE(fields.Set(tag::Comment, std::string("dazu")));
  ASSERT_TRUE(fields.Set(tag::HtmlText, std::string("<p>Text</p>")));
  ASSERT_TRUE(fields.Set(tag::PlainText, FieldValue{}));
  ASSERT_TRUE((*view)->Item().Update());
  EXPECT_EQ(Text((*view)->Item(), tag::Comment), "dazu");
  EXPECT_NE((*view)->AsMail()->HtmlIndicator().value_or(""), "");
  EXPECT_EQ((*view)->AsMail()->Text().value_or("?"), "");
}

TEST_F(MessageItemTest, UpdateLeavesWhatOthersChanged) {
  const auto key = Deliver("Subject: x\n\n");
  auto first = Get(key), second = Get(key);
  ASSERT_TRUE(first->Fields().Set(tag::Owner, std::int64_t{7}));
  ASSERT_TRUE(second->Fields().Set(tag::Priority, std::int64_t{2}));
  ASSERT_TRUE(first->Update());
  ASSERT_TRUE(second->Update());
  EXPECT_EQ(FieldNumber(Field(key, tag::Owner)), 7);
  EXPECT_EQ(FieldNumber(Field(key, tag::Priority)), 2);
}

TEST_F(MessageItemTest, ReadOnlyFieldsAreRefused) {
  auto item = Get(Deliver("Subject: x\n\n"));
  for (const auto tag : {tag::RecNo, tag::Location, tag::HtmlRendition}) {
    EXPECT_EQ(item->Fields().Set(tag, std::string("x")).error().Number, store_error::ReadOnlyField);
  }
}

TEST_F(MessageItemTest, UnknownTagsNamesAndUserFieldsAreKept) {
  const auto key = Deliver("Subject: x\n\n");
  auto item = Get(key);
  const std::vector<std::string> texts = {"eins", "", "zwei; drei"};
  ASSERT_TRUE(item->Fields().Set(0x8000ABCD, 1.5));
  ASSERT_TRUE(item->Fields().Set("CharsetHTML", std::string("utf-8")));
  ASSERT_TRUE(item->UserFields().Set("Kunde", texts));
  ASSERT_TRUE(item->UserFields().Set("Frist", clock.now));
  ASSERT_TRUE(item->Update());
  item = Get(key);
  EXPECT_EQ(*item->Fields().Get(0x8000ABCD), FieldValue(1.5));
  EXPECT_EQ(*item->Fields().Get("charsethtml"), FieldValue(std::string("utf-8")));
  EXPECT_EQ(*item->UserFields().Get("kunde"), FieldValue(texts));
  EXPECT_EQ(*item->UserFields().Get("Frist"), FieldValue(clock.now));
  EXPECT_EQ(*item->UserFields().Count(), 2);
  EXPECT_EQ((*item->UserFields().Item(0))->Name(), "Frist");
  EXPECT_TRUE(std::holds_alternative<std::monostate>(*item->Fields().Get("Kunde"))) << "a name of its own";
}

TEST_F(MessageItemTest, FieldsStandInTheOrderOfTheirTags) {
  auto item = Get(Deliver("Subject: x\nFrom: a@b.c\nTo: d@e.f\n\nText\n"));
  const int count = *item->Fields().Count();
  FieldTag last = 0;  // those without a number come first
  for (int i = 0; i < count; ++i) {
    const auto field = item->Fields().Item(i);
    ASSERT_TRUE(field);
    EXPECT_TRUE((*field)->Tag() > last || (last == 0 && (*field)->Tag() == 0)) << (*field)->Name();
    last = (*field)->Tag();
    EXPECT_FALSE(std::holds_alternative<std::monostate>(*(*field)->Value())) << (*field)->Name();
  }
  EXPECT_EQ(last, tag::Recipients);
  EXPECT_EQ(item->Fields().Item(count).error().Number, store_error::NotFound);
  EXPECT_EQ(item->Fields().Item(-1).error().Number, store_error::NotFound);
}

TEST_F(MessageItemTest, TypeStaysWhenTheTypeFieldIsWritten) {
  auto item = Get(Deliver("Subject: x\n\n"));
  EXPECT_EQ(FieldNumber(*item->Fields().Get(tag::ItemType)), item_type::EMail);
  ASSERT_TRUE(item->Fields().Set(tag::ItemType, std::int64_t{8192}));
  ASSERT_TRUE(item->Update());
  EXPECT_EQ(item->Type(), item_type::EMail);
  EXPECT_EQ(FieldNumber(Field(item->Key(), tag::ItemType)), 8192);
}

TEST_F(MessageItemTest, FilterFollowsTheDisplayTypeOfEachWrite) {
  const auto key = Deliver("Subject: x\n\n");
  const auto listed = [&](std::uint32_t mask) {
    return (*store->GetEntries(In, mask, EntryOrder::Store))->Count();
  };
  EXPECT_EQ(listed(filter_preset::OnlyMFA), 1);
  auto item = Get(key);
  ASSERT_TRUE(item->Fields().Set(tag::DocumentFlags, std::int64_t{0x40}));
  ASSERT_TRUE(item->Update());
  EXPECT_EQ(listed(filter_preset::OnlyMFA), 0) << "an external document is kept out by its own bit";
  EXPECT_EQ(listed(filter_preset::OnlyFax), 1);
}

TEST_F(MessageItemTest, ListingIsFixedAtItsCallAndSortedByDate) {
  const auto late = Deliver("Date: Tue, 3 Mar 2026 10:00:00 +0000\n\n");
  const auto early = Deliver("Date: Mon, 2 Mar 2026 10:00:00 +0000\n\n");
  const auto byKey = store->GetEntries(In, filter_preset::None, EntryOrder::Store);
  const auto byDate = store->GetEntries(In, filter_preset::None, EntryOrder::ByDate);
  EXPECT_EQ((*byKey)->Key(0), late);
  EXPECT_EQ((*byDate)->Key(0), early);
  ASSERT_TRUE(Get(early)->Delete());
  Deliver("Subject: neu\n\n");
  EXPECT_EQ((*byKey)->Count(), 2);
  EXPECT_TRUE((*byKey)->Item(0));
  EXPECT_EQ((*byKey)->Item(1).error().Number, store_error::NotFound);
  EXPECT_EQ((*byKey)->Item(2).error().Number, store_error::NotFound);
}

TEST_F(MessageItemTest, CreatedEntryIsStoredAtOnceAndTakesFilesBesideIt) {
  const auto voice = store->CreateEntry(In, item_type::Voice);
  ASSERT_TRUE(voice);
  EXPECT_EQ(Count(), 1);
  const auto location = Text(**voice, tag::Location);
  ASSERT_TRUE(files->WriteFile(location + ".001", "RIFF"));
  directory.WriteHostFile("notiz.txt", "Notiz");
  ASSERT_TRUE((*voice)->Attachments().Add(directory.Path("notiz.txt"), attachment_flag::NotCrypted));
  ASSERT_TRUE((*voice)->SetPages(3));
  ASSERT_TRUE((*voice)->Update());
  ASSERT_TRUE((*voice)->CopyTo(target, false));
  EXPECT_EQ(directory.ReadHostFile("archive/out/00000001.001"), "RIFF");
  const auto copy = Get(1, Out);
  EXPECT_EQ(copy->Pages().value_or(0), 3);
  ASSERT_EQ(copy->Attachments().Count().value_or(0), 1);
  const auto note = copy->Attachments().Item(0);
  EXPECT_EQ((*note)->Name(), "notiz.txt");
  EXPECT_EQ((*note)->Flags(), attachment_flag::NotCrypted);
  ASSERT_TRUE((*note)->SaveAs(directory.Path("kopie.txt"), false));
  EXPECT_EQ(directory.ReadHostFile("kopie.txt"), "Notiz");
  EXPECT_EQ(store->SourcePath(In, (*voice)->Key()), "");
  ASSERT_TRUE((*voice)->Delete());
  ASSERT_TRUE(store->Commit());
  EXPECT_TRUE(store->Check(In).empty()) << "no content file is left behind";
}

TEST_F(MessageItemTest, CopyCarriesEverythingAndUnsavedChanges) {
  const auto key = Deliver("Subject: x\nTo: a@b.c\nContent-Type: image/gif; name=a.gif\n\nGIF");
  auto item = Get(key);
  ASSERT_TRUE(item->UserFields().Set("Kunde", std::string("4711")));
  ASSERT_TRUE(item->Update());
  ASSERT_TRUE(item->Fields().Set(tag::CopyMarker, std::int64_t{1}));
  ASSERT_TRUE(item->CopyTo(target, false));
  const auto copy = Get(1, Out);
  EXPECT_EQ(Text(*copy, tag::Subject), "x");
  EXPECT_EQ(Text(*copy, tag::Recipients), "a@b.c");
  EXPECT_EQ(Text(*copy, tag::CopyMarker), "1");
  EXPECT_EQ(FieldText(*copy->UserFields().Get("Kunde")), "4711");
  EXPECT_EQ((*copy->Attachments().Item(0))->Name(), "a.gif");
  EXPECT_EQ(directory.ReadHostFile("archive/out/00000001.001"),
            directory.ReadHostFile("archive/in/00000001.001"));
  EXPECT_TRUE(std::holds_alternative<std::monostate>(Field(key, tag::CopyMarker)));
}

TEST_F(MessageItemTest, MoveLeavesTheEntryOnceAndTheOldObjectHarmless) {
  const auto key = Deliver("Subject: x\n\n");
  const auto item = Get(key);
  ASSERT_TRUE(item->CopyTo(target, true));
  EXPECT_EQ(Count(In), 0);
  EXPECT_EQ(Count(Out), 1);
  EXPECT_EQ(item->Delete().error().Number, store_error::NotFound);
  ASSERT_TRUE(store->Commit());
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("archive/in/00000001.001")));
  EXPECT_TRUE(std::filesystem::exists(directory.HostPath("archive/out/00000001.001")));
}

TEST_F(MessageItemTest, EntryWithoutItsContentFileStaysReadable) {
  const auto key = Deliver(
      "Subject: x\nContent-Type: multipart/mixed; boundary=b\n\n--b\n\nText\n--b\nContent-Type: image/gif; "
      "name=a.gif\n\nGIF\n--b--\n");
  ASSERT_TRUE(store->Commit());
  std::filesystem::remove(directory.HostPath("archive/in/00000001.001"));
  const auto item = Get(key);
  EXPECT_EQ(Text(*item, tag::PlainText), "Text");
  EXPECT_NE(Text(*item, tag::SmtpHeader).find("Subject: x\r\n"), std::string::npos);
  const auto attachment = item->Attachments().Item(0);
  EXPECT_EQ((*attachment)->Name(), "a.gif");
  EXPECT_EQ((*attachment)->Size(), 3);
  directory.WriteHostFile("da.gif", "alt");
  EXPECT_EQ((*attachment)->SaveAs(directory.Path("da.gif"), false).error().Number,
            platform::file_error::FileNotFound);
  EXPECT_EQ(directory.ReadHostFile("da.gif"), "alt") << "nothing was there to replace it";
  EXPECT_EQ(store->SourcePath(In, key), "");
  ASSERT_TRUE(item->CopyTo(target, true));
  EXPECT_EQ(Count(Out), 1);
}

TEST_F(MessageItemTest, ShortenedContentFileIsReportedAndLeavesNoHalfAttachment) {
  const auto key = Deliver("Content-Type: image/gif; name=a.gif\n\n0123456789");
  ASSERT_TRUE(store->Commit());
  std::filesystem::resize_file(directory.HostPath("archive/in/00000001.001"), 40);
  const auto attachment = Get(key)->Attachments().Item(0);
  EXPECT_EQ((*attachment)->SaveAs(directory.Path("a.gif"), false).error().Number, store_error::Damaged);
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("a.gif")));
}

TEST_F(MessageItemTest, DraftIsStoredByUpdateAsAMailWithItsSource) {
  auto view = store->CreateItem(Out, item_type::EMail);
  auto* const mail = (*view)->AsMail();
  ASSERT_NE(mail, nullptr);
  directory.WriteHostFile("Übersicht.txt", std::string("\0\xFF\r\n", 4));
  ASSERT_TRUE(mail->SetSender("Jörg <joerg@example.org>"));
  ASSERT_TRUE(mail->SetSubject("Grüße"));
  ASSERT_TRUE(mail->SetText("Guten Tag\näöü €\n.\nFrom hier\n"));
  ASSERT_TRUE(mail->SetTextFormat(0));
  ASSERT_TRUE(mail->AddTo({"Anna Ähre", "anna@example.org"}));
  ASSERT_TRUE(mail->AddCc({"", "cc@example.org"}));
  ASSERT_TRUE(mail->AddBcc({"", "geheim@example.org"}));
  ASSERT_TRUE(mail->Item().Attachments().Add(directory.Path("Übersicht.txt"), 0));
  std::filesystem::remove(directory.HostPath("Übersicht.txt"));
  EXPECT_EQ(Count(Out), 0);
  EXPECT_EQ(mail->Item().Delete().error().Number, store_error::NotFound);
  ASSERT_TRUE(mail->Item().Update());
  EXPECT_EQ(Count(Out), 1);

  const auto source = directory.ReadHostFile("archive/out/00000001.001");
  EXPECT_EQ(source.find("geheim"), std::string::npos) << "a blind copy does not stand in the message";
  const auto stored = store->ItemView(Out, 1);
  auto* const read = (*stored)->AsMail();
  EXPECT_EQ(*read->Bcc(), (std::vector<DvRecipient>{{"", "geheim@example.org"}}));
  EXPECT_EQ(*read->RecipientText(), "anna@example.org");
  EXPECT_EQ(*read->Text(), "Guten Tag\r\näöü €\r\n.\r\nFrom hier\r\n");
  EXPECT_EQ(*read->HtmlIndicator(), "");
  ASSERT_TRUE((*read->Item().Attachments().Item(0))->SaveAs(directory.Path("gelesen"), false));
  EXPECT_EQ(directory.ReadHostFile("gelesen"), std::string("\0\xFF\r\n", 4));

  const auto delivered = store->ItemView(In, Deliver(source));
  EXPECT_EQ(*(*delivered)->AsMail()->Subject(), "Grüße");
  EXPECT_EQ(*(*delivered)->AsMail()->Text(), *read->Text());
  EXPECT_EQ(*(*delivered)->AsMail()->To(), *read->To());
  EXPECT_EQ((*(*delivered)->Item().Attachments().Item(0))->Name(), "Übersicht.txt");
}

TEST_F(MessageItemTest, SubmitStoresAndHandsOver) {
  EntryKey submitted = 0;
  store->SetSubmitHandler([&](DvMailItem& mail, EntryKey key) -> Status {
    submitted = key;
    return mail.Subject().value_or("") == "x" ? Status{} : Fail(1, "wrong mail");
  });
  auto view = store->CreateItem(Out, item_type::EMail);
  ASSERT_TRUE((*view)->AsMail()->SetSubject("x"));
  ASSERT_TRUE((*view)->AsMail()->Submit(1));
  EXPECT_EQ(submitted, 1U);
  EXPECT_EQ(Count(Out), 1);
}

TEST_F(MessageItemTest, ViewsFitTheType) {
  EXPECT_NE((*store->CreateItem(In, item_type::SMS))->AsMail(), nullptr);
  EXPECT_EQ((*store->CreateItem(In, item_type::Fax))->AsMail(), nullptr);
  EXPECT_EQ((*store->CreateItem(In, item_type::Fax))->Type(), item_type::Fax);
}

TEST_F(MessageItemTest, ComposedSourceReadsBackAsTheEntry) {
  auto entry = store->CreateEntry(In, item_type::EMail);
  directory.WriteHostFile("a.bin", "Inhalt");
  ASSERT_TRUE((*entry)->Fields().Set(tag::Subject, std::string("Importiert")));
  ASSERT_TRUE((*entry)->Fields().Set(tag::HtmlText, std::string("<p>ü</p>")));
  ASSERT_TRUE((*entry)->Attachments().Add(directory.Path("a.bin"), 0));
  ASSERT_TRUE((*entry)->Update());
  const auto source = store->ComposeSource(In, (*entry)->Key());
  ASSERT_TRUE(source);
  const auto item = Get(Deliver(*source));
  EXPECT_EQ(Text(*item, tag::Subject), "Importiert");
  EXPECT_EQ(Text(*item, tag::HtmlText), "<p>ü</p>");
  EXPECT_EQ((*item->Attachments().Item(0))->Size(), 6);
}

// Half an entry is none: the draft stands whole or not at all, and can be stored when there is room again.
TEST_F(MessageItemTest, ADraftWhoseAttachmentFindsNoRoomStaysADraft) {
  directory.WriteHostFile("klein.bin", "x");
  directory.WriteHostFile("gross.bin", std::string(300'000, 'y'));
  const auto fax = store->CreateItem(In, item_type::Fax);
  auto& item = (*fax)->Item();
  ASSERT_TRUE((*fax)->AsFax()->SetImage(directory.Path("klein.bin")));
  ASSERT_TRUE(item.Attachments().Add(directory.Path("klein.bin"), 0));
  ASSERT_TRUE(item.Attachments().Add(directory.Path("gross.bin"), 0));
  {
    const test::SmallDisk disk(200'000);
    EXPECT_FALSE(item.Update());
    EXPECT_TRUE(store->Commit());
  }
  EXPECT_EQ(Count(), 0);
  ASSERT_TRUE(item.Update());
  ASSERT_TRUE(store->Commit());
  EXPECT_EQ(Count(), 1);
  const auto stored = Get(item.Key());
  ASSERT_EQ(*stored->Attachments().Count(), 2);
  EXPECT_EQ((*stored->Attachments().Item(1))->Size(), 300'000);
  EXPECT_EQ(ErrorOf((*stored->Attachments().Item(1))->SaveAs(directory.Path("heraus.bin"), true)), 0);
  EXPECT_EQ(directory.ReadHostFile("heraus.bin"), std::string(300'000, 'y'));
  for (const auto& finding : store->Check(In)) EXPECT_TRUE(finding.IsNote) << finding.Text;
}

// Numbers of content files are believed only as far as there are such files.
TEST_F(MessageItemTest, ADatabaseThatNamesAnImpossibleContentFileCostsNoSearchForIt) {
  const auto key = Deliver("Content-Type: text/html\n\n<p>\n");
  directory.WriteHostFile("notiz.txt", "x");
  ASSERT_TRUE(Get(key)->Attachments().Add(directory.Path("notiz.txt"), 0));
  store.reset();
  const auto database = directory.HostPath("archive/in/archive.dat");
  ASSERT_TRUE(
      Sqlite::Open(database, Sqlite::Mode::ReadWrite)->Execute("UPDATE attachments SET file = 2000000000"));
  Reopen();
  EXPECT_EQ(ErrorOf(Get(key)->Attachments().Add(directory.Path("notiz.txt"), 0)), store_error::Damaged);
  EXPECT_TRUE(Get(key)->CopyTo(target, false));
  EXPECT_EQ(Count(Out), 1);
  EXPECT_TRUE(Get(key)->Delete());
  ASSERT_TRUE(store->Commit());
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("archive/in/" + ContentFileName(key, 1))));
}

}  // namespace
}  // namespace velmora::store::embedded
