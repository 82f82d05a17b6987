#include "store/embedded/server_logs.h"

#include "store/filter.h"
#include "store/vocabulary.h"
#include "store_fixture.h"
#include "support/manual_clock.h"

namespace velmora::store::embedded {
namespace {

class ServerLogsTest : public StoreFixture {
 protected:
  std::string PathOf(std::string_view log) const { return layout_.Code() + "\\" + std::string(log); }
  // The entries of a log, read as a person reads them: copied into an archive of their own.
  std::vector<std::unique_ptr<DvItem>> Entries(std::string_view log) {
    shown_ = Create(*Archive("Gemeinsam"), "Protokoll");
    const auto copied = fileSystem_->CopyFile(PathOf(log), shown_->ID() + "\\archive.dat");
    EXPECT_TRUE(copied) << copied.error().Text;
    std::vector<std::unique_ptr<DvItem>> items;
    const auto entries = shown_->GetEntries(filter_preset::None);
    EXPECT_TRUE(entries) << entries.error().Text;
    for (int i = 0; entries && i < (*entries)->Count(); ++i) items.push_back(std::move(*(*entries)->Item(i)));
    return items;
  }
  static std::string TextOf(DvItem& item, FieldTag tag) { return FieldText(*item.Fields().Get(tag)); }
  EntryKey Deliver(std::string_view message = PlainMessage) {
    DeliverOptions options;
    options.Mailbox = "/var/mail/anna";
    const auto key = DeliverMessage(*anna_, *Archive("Gemeinsam"), message, options);
    EXPECT_TRUE(key) << key.error().Text;
    return key.value_or(0);
  }
  void Damage(std::string_view log) {
    ASSERT_TRUE(fileSystem_->WriteFile(PathOf(log), std::string(5000, 'x')));
  }
  static LogEntry Entry(std::string subject) {
    LogEntry entry;
    entry.Subject = std::move(subject);
    return entry;
  }

  std::shared_ptr<DvArchive> shown_;
};

TEST_F(ServerLogsTest, ADeliveryIsAnEntryOfTheReceiveLog) {
  const auto before = platform::SystemClock().Now();
  const auto key = Deliver();
  ASSERT_TRUE(anna_->Commit());
  const auto entries = Entries(ReceiveLogName);
  ASSERT_EQ(entries.size(), 1u);
  auto& entry = *entries.front();
  EXPECT_EQ(entry.Type(), item_type::EMail);
  EXPECT_EQ(TextOf(entry, tag::Subject), "Angebot");
  EXPECT_EQ(TextOf(entry, tag::SenderAddress), "carl@example.net");
  EXPECT_EQ(TextOf(entry, tag::RecipientText), "anna@example.org");
  EXPECT_EQ(FieldNumber(*entry.Fields().Get(tag::Flags)), item_flag::Received);
  EXPECT_GE(FieldDate(*entry.Fields().Get(tag::StatusTime)), before) << "of the delivery, not of the mail";
  EXPECT_EQ(TextOf(entry, tag::Comment),
            "Quelle: /var/mail/anna\r\nArchiv: \\\\BUERO\\DAVID\\ARCHIVE\\common\r\nEintrag: " +
                std::to_string(key) + "\r\n");
  EXPECT_TRUE(Entries(SendLogName).empty());
  EXPECT_FALSE(anna_->TakeWarning());
}

TEST_F(ServerLogsTest, ManyDeliveriesAreManyEntriesInTheirOrder) {
  for (int i = 0; i < 1005; ++i) {
    Deliver("From: a@example.net\r\nSubject: Nr. " + std::to_string(i) + "\r\n\r\nText\r\n");
  }
  ASSERT_TRUE(anna_->Commit());
  Deliver();
  anna_.reset();  // what has been collected is written at the end
  anna_ = SignOn("anna");
  const auto entries = Entries(ReceiveLogName);
  ASSERT_EQ(entries.size(), 1006u);
  EXPECT_EQ(TextOf(*entries[0], tag::Subject), "Nr. 0");
  EXPECT_EQ(TextOf(*entries[1004], tag::Subject), "Nr. 1004");
  EXPECT_EQ(TextOf(*entries[1005], tag::Subject), "Angebot");
}

TEST_F(ServerLogsTest, AnImportedMailFileIsNoDelivery) {
  directory_.WriteHostFile("a.eml", PlainMessage);
  ASSERT_TRUE(anna_->DVMailItemFromEml(directory_.Path("a.eml"), *Archive("Gemeinsam")));
  ASSERT_TRUE(anna_->Commit());
  EXPECT_TRUE(Entries(ReceiveLogName).empty());
}

TEST_F(ServerLogsTest, ASubmittedMailStandsInTheSendLogAndWithItsReceivers) {
  const auto item = (*anna_->GetSpecialArchive(special::Outgoing))->CreateItem(item_type::EMail);
  ASSERT_TRUE(item);
  auto& mail = *(*item)->AsMail();
  ASSERT_TRUE(mail.SetSubject("Grüße"));
  ASSERT_TRUE(mail.AddTo({"Bert", "bert@example.org", "Mail"}));
  ASSERT_TRUE(mail.Submit(1));
  const auto sent = Entries(SendLogName);
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(TextOf(*sent[0], tag::Subject), "Grüße");
  EXPECT_EQ(TextOf(*sent[0], tag::SenderAddress), "anna@example.org");
  EXPECT_EQ(TextOf(*sent[0], tag::RecipientText), "bert@example.org");
  EXPECT_EQ(FieldNumber(*sent[0]->Fields().Get(tag::SendStatus)), 0);
  EXPECT_NE(TextOf(*sent[0], tag::Comment).find("Benutzer: anna\r\n"), std::string::npos);
  const auto received = Entries(ReceiveLogName);
  ASSERT_EQ(received.size(), 1u);
  EXPECT_EQ(TextOf(*received[0], tag::Subject), "Grüße");
  EXPECT_NE(TextOf(*received[0], tag::Comment).find("\\in\r\n"), std::string::npos);
}

TEST_F(ServerLogsTest, AMailThatNobodyTookHasItsStatusInTheSendLog) {
  const auto item = (*anna_->GetSpecialArchive(special::Outgoing))->CreateItem(item_type::EMail);
  ASSERT_TRUE(item);
  ASSERT_TRUE((*item)->AsMail()->AddTo({"", "carl@example.net", "Mail"}));
  ASSERT_TRUE((*item)->AsMail()->Submit(1));
  const auto sent = Entries(SendLogName);
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(FieldNumber(*sent[0]->Fields().Get(tag::SendStatus)), 43);
  EXPECT_TRUE(Entries(ReceiveLogName).empty());
}

TEST_F(ServerLogsTest, ADamagedLogCostsAWarningAndNoMail) {
  Damage(ReceiveLogName);
  Deliver();
  EXPECT_TRUE(anna_->Commit());
  const auto warning = anna_->TakeWarning();
  ASSERT_TRUE(warning);
  EXPECT_EQ(warning->Number, store_error::Damaged);
  EXPECT_NE(warning->Text.find("david.rec"), std::string::npos) << warning->Text;
  EXPECT_FALSE(anna_->TakeWarning()) << "told once";
  EXPECT_EQ(*Archive("Gemeinsam")->MessageCount(), 1);
  EXPECT_EQ(fileSystem_->ReadFile(PathOf(ReceiveLogName)).value_or(""), std::string(5000, 'x'));
}

TEST_F(ServerLogsTest, ALogThatWasTakenAwayIsMadeAnew) {
  ASSERT_TRUE(fileSystem_->DeleteFile(PathOf(ReceiveLogName), true));
  Deliver();
  ASSERT_TRUE(anna_->Commit());
  EXPECT_EQ(Entries(ReceiveLogName).size(), 1u);
  EXPECT_FALSE(anna_->TakeWarning());
}

TEST_F(ServerLogsTest, EntriesAreCollectedForASecondOrAThousand) {
  test::ManualClock clock;
  ServerLogs logs(*fileSystem_, clock, layout_);
  EXPECT_FALSE(logs.IsDue());
  logs.NoteReceived(Entry("eins"));
  EXPECT_FALSE(logs.IsDue());
  clock.Milliseconds += 1000;
  EXPECT_TRUE(logs.IsDue());
  logs.Write();
  EXPECT_FALSE(logs.IsDue());
  for (int i = 0; i < 1000; ++i) logs.NoteSent(Entry("viele"));
  EXPECT_TRUE(logs.IsDue());
}

TEST_F(ServerLogsTest, WhatCouldNotBeWrittenIsWrittenLater) {
  const auto sound = fileSystem_->ReadFile(PathOf(ReceiveLogName));
  ASSERT_TRUE(sound);
  Damage(ReceiveLogName);
  test::ManualClock clock;
  ServerLogs logs(*fileSystem_, clock, layout_);
  logs.NoteReceived(Entry("eins"));
  logs.Write();
  EXPECT_TRUE(logs.TakeWarning());
  for (int i = 0; i < 2000; ++i) logs.NoteReceived(Entry("viele"));
  EXPECT_FALSE(logs.IsDue()) << "not at every mail again";
  ASSERT_TRUE(fileSystem_->WriteFile(PathOf(ReceiveLogName), *sound));
  clock.Milliseconds += 10'000;
  EXPECT_TRUE(logs.IsDue());
  logs.Write();
  EXPECT_FALSE(logs.TakeWarning());
  const auto entries = Entries(ReceiveLogName);
  ASSERT_EQ(entries.size(), 2001u);
  EXPECT_EQ(TextOf(*entries[0], tag::Subject), "eins");
}

}  // namespace
}  // namespace velmora::store::embedded
