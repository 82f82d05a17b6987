// The rows that lists read at once, against the items read one by one.
#include <gtest/gtest.h>

#include <fmt/core.h>

#include "message_fixture.h"
#include "store/errors.h"
#include "store/link_item.h"
#include "store/vocabulary.h"
#include "support/entry_rows.h"

namespace velmora::store::embedded {
namespace {

class ListReadingTest : public MessageFixture {
 protected:
  std::unique_ptr<DvEntries> Entries(EntryOrder order = EntryOrder::Store,
                                     std::uint32_t filter = filter_preset::None) {
    auto entries = store->GetEntries(In, filter, order);
    EXPECT_TRUE(entries.has_value());
    return std::move(*entries);
  }
  std::vector<DvEntryRow> Rows(DvEntries& entries, int first, int count) {
    std::vector<DvEntryRow> rows;
    const auto read = entries.ReadRows(first, count, rows);
    EXPECT_TRUE(read) << read.error().Text;
    return rows;
  }
  DvEntryRow RowOfItem(DvEntries& entries, int index) {
    const auto item = entries.Item(index);
    EXPECT_TRUE(item.has_value());
    auto row = test::ReadEntryRow(**item);
    EXPECT_TRUE(row.has_value());
    if ((*item)->Type() == item_type::Link) {
      const auto view = store->ItemView(In, (*item)->Key());
      row->Link = FieldText(*(*view)->AsLink()->Get(LinkProperty::Link));
    }
    return *row;
  }
  void ExpectEqualToItems(DvEntries& entries) {
    const auto rows = Rows(entries, 0, entries.Count());
    ASSERT_EQ(static_cast<int>(rows.size()), entries.Count());
    for (int i = 0; i < entries.Count(); ++i) {
      EXPECT_EQ(rows[static_cast<std::size_t>(i)], RowOfItem(entries, i)) << i;
    }
  }
  EntryKey DeliverNumber(int number, int attachments = 0) {
    std::string message = fmt::format(
        "From: Absender {0} <a{0}@example.net>\r\nTo: Anna <anna@example.org>, b{0}@example.org\r\n"
        "Cc: c@example.org\r\nSubject: Mail {1:05}\r\nDate: Mon, {2} Nov 2026 10:00:00 +0100\r\n",
        number, (number * 7919) % 1000, 1 + (number * 13) % 28);
    if (attachments == 0) return Deliver(message + "\r\nText\r\n");
    message += "Content-Type: multipart/mixed; boundary=b\r\n\r\n";
    for (int i = 0; i < attachments; ++i) {
      message +=
          fmt::format("--b\r\nContent-Disposition: attachment; filename=datei{}.txt\r\n\r\nx\r\n", 9 - i);
    }
    return Deliver(message + "--b--\r\n");
  }
  void AddLink(const FieldValue& destination) {
    auto link = store->CreateItem(In, item_type::Link);
    ASSERT_TRUE(link);
    ASSERT_TRUE((*link)->AsLink()->Set(LinkProperty::Name, std::string("Verweis")));
    ASSERT_TRUE((*link)->Item().Fields().Set("Link", destination));
    ASSERT_TRUE((*link)->Item().Update());
  }
  void SetFields(EntryKey key, const std::vector<std::pair<FieldTag, FieldValue>>& values) {
    auto item = store->GetEntry(In, key);
    ASSERT_TRUE(item);
    for (const auto& [field, value] : values) ASSERT_TRUE((*item)->Fields().Set(field, value));
    ASSERT_TRUE((*item)->Update());
  }
};

TEST_F(ListReadingTest, EqualsTheItemsOfEveryKind) {
  DeliverNumber(1);
  DeliverNumber(2, 3);
  Deliver("Subject: ohne alles\n\n");
  Deliver("To: Nur ein Name:;\nFrom: x@y\n\n");
  AddLink(std::string(R"(Z:\handbuch.pdf)"));
  AddLink(std::int64_t{42});
  AddLink(FieldValue{});
  for (int type = item_type::Address; type <= item_type::Task; ++type)
    ASSERT_TRUE(store->CreateEntry(In, type));
  SetFields(DeliverNumber(3, 1), {{tag::Flags, std::int64_t{0x821}},
                                  {tag::MailFlags, std::int64_t{0x100000}},
                                  {tag::SendStatus, std::int64_t{72}},
                                  {tag::DocumentFlags, std::int64_t{0x40}},
                                  {tag::DisplayVariant, std::int64_t{-52}},
                                  {tag::RecipientAddress, std::string("+49 40 1")},
                                  {tag::RecipientText, std::string("Verteiler")},
                                  {tag::Recipients, std::vector<std::string>{"", "zweiter@example.org"}}});
  SetFields(DeliverNumber(4), {{tag::Recipients, FieldValue{}}, {tag::StatusTime, FieldValue{}}});
  for (const auto order : {EntryOrder::Store, EntryOrder::ByDate, EntryOrder::BySubject}) {
    ExpectEqualToItems(*Entries(order));
  }
}

TEST_F(ListReadingTest, AUserFieldOfThatNameIsNoDestination) {
  AddLink(std::string("echt"));
  auto entries = Entries();
  auto item = entries->Item(0);
  ASSERT_TRUE((*item)->UserFields().Set("Link", std::string("falsch")));
  ASSERT_TRUE((*item)->Update());
  EXPECT_EQ(Rows(*entries, 0, 1)[0].Link, "echt");
}

TEST_F(ListReadingTest, OnlyALinkHasADestination) {
  AddLink(std::string("echt"));
  auto mail = store->GetEntry(In, DeliverNumber(1));
  ASSERT_TRUE((*mail)->Fields().Set("Link", std::string("das Feld einer Mail")));
  ASSERT_TRUE((*mail)->Update());
  ExpectEqualToItems(*Entries());
}

TEST_F(ListReadingTest, GapsOfEveryWidthAreStepped) {
  std::vector<EntryKey> keys;
  for (int i = 0; i < 120; ++i) keys.push_back(DeliverNumber(i, i % 3));
  // Leaves runs, gaps of less and of more than a run allows, and single entries.
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const bool stays = i < 20 || (i < 60 && i % 7 == 0) || i == 85 || i == 86 || i == 119;
    if (stays) continue;
    auto item = store->GetEntry(In, keys[i]);
    ASSERT_TRUE((*item)->Delete());
  }
  auto entries = Entries();
  EXPECT_EQ(entries->Count(), 29);
  ExpectEqualToItems(*entries);
  ExpectEqualToItems(*Entries(EntryOrder::BySubject));
}

TEST_F(ListReadingTest, EntriesThatTheFilterKeepsOutAreNotRead) {
  for (int i = 0; i < 30; ++i) {
    DeliverNumber(i);
    if (i % 4 != 0) continue;
    ASSERT_TRUE(store->CreateEntry(In, item_type::Fax));
  }
  auto entries = Entries(EntryOrder::Store, filter_preset::OnlyFax);
  EXPECT_EQ(entries->Count(), 8);
  ExpectEqualToItems(*entries);
}

TEST_F(ListReadingTest, ReadsAnyRangeAndNothingBeyondTheEnd) {
  for (int i = 0; i < 10; ++i) DeliverNumber(i, i % 2);
  auto entries = Entries();
  const auto all = Rows(*entries, 0, 10);
  for (int first = 0; first < 10; ++first) {
    const auto rest = Rows(*entries, first, 3);
    const std::vector<DvEntryRow> expected(all.begin() + first, all.begin() + std::min(first + 3, 10));
    EXPECT_EQ(rest, expected) << first;
  }
  EXPECT_TRUE(Rows(*entries, 10, 3).empty());
  EXPECT_TRUE(Rows(*entries, -1, 3).empty());
  EXPECT_TRUE(Rows(*entries, 0, 0).empty());
  EXPECT_TRUE(Rows(*entries, 0, -5).empty());
}

TEST_F(ListReadingTest, RowsAreAppended) {
  DeliverNumber(1);
  std::vector<DvEntryRow> rows(1);
  ASSERT_TRUE(Entries()->ReadRows(0, 1, rows));
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0], DvEntryRow{});
}

TEST_F(ListReadingTest, AnEntryThatVanishedIsLeftOut) {
  const auto first = DeliverNumber(1);
  DeliverNumber(2, 2);
  const auto last = DeliverNumber(3);
  auto entries = Entries();
  const auto all = Rows(*entries, 0, 3);
  auto item = store->GetEntry(In, first);
  ASSERT_TRUE((*item)->Delete());
  EXPECT_EQ(Rows(*entries, 0, 3), (std::vector<DvEntryRow>{all[1], all[2]}));
  item = store->GetEntry(In, last);
  ASSERT_TRUE((*item)->Delete());
  EXPECT_EQ(Rows(*entries, 0, 3), std::vector<DvEntryRow>{all[1]});
}

TEST_F(ListReadingTest, WhatIsNotCommittedYetIsRead) {
  DeliverNumber(1);
  auto entries = Entries();
  SetFields(entries->Key(0), {{tag::Subject, std::string("neu")}});
  EXPECT_EQ(Rows(*entries, 0, 1)[0].Subject, "neu");
}

TEST_F(ListReadingTest, ADamagedDatabaseIsAFailure) {
  for (int i = 0; i < 200; ++i) DeliverNumber(i);
  ASSERT_TRUE(store->Commit());
  auto entries = Entries();
  ASSERT_TRUE(store->CommitAndClose(In));
  directory.WriteHostFile("archive/in/archive.dat", std::string(8192, 'x'));
  std::vector<DvEntryRow> rows;
  const auto read = entries->ReadRows(0, 200, rows);
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error().Number, store_error::Damaged);
  EXPECT_TRUE(rows.empty());
}

}  // namespace
}  // namespace velmora::store::embedded
