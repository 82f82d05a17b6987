// What rows tell of themselves: slots, keys, tags, and what a key tells of its row.
#include "panes/rows.h"

#include <gtest/gtest.h>

namespace velmora::panes {
namespace {

const DateTime Date = *DateTime::FromCivil({2026, 11, 2, 10, 0, 0});

std::string TextOf(const SlotValue& value) { return std::get<std::string>(value); }
std::int64_t NumberOf(const SlotValue& value) { return std::get<std::int64_t>(value); }
bool IsEmpty(const SlotValue& value) { return std::holds_alternative<std::monostate>(value); }

ListRow ArchiveAt(std::uint32_t index, bool isShortCut) {
  return {index,
          ArchiveRow{.DisplayName = "Eingang", .ID = R"(\\S\D\IN)", .Icon = 18, .IsShortCut = isShortCut}};
}

ListRow MessageAt(std::uint32_t index, int displayType = 2) {
  MessageRow row{
      .RecNo = 77, .ItemType = 2, .DisplayType = displayType, .AttachmentCount = 2, .StatusTime = Date};
  row.Subject = "Angebot";
  row.From = "carl@example.net";
  row.To = "anna@example.org";
  row.Attachments = "a.pdf;b.doc";
  return {index, row};
}

ListRow RuleAt(std::uint32_t index) {
  return {index, RoutingRow{.Name = "Fax an Anna",
                            .Number = 4,
                            .Mode = 3,
                            .FirstCondition = "Fax",
                            .FirstDestination = "/Archive/In",
                            .IsEnabled = true}};
}

TEST(Rows, ControlEntryFillsItsSlots) {
  const ListRow row{0, ControlRow{}};
  EXPECT_EQ(TextOf(SlotOf(row, 0)), "[..]");
  EXPECT_EQ(TextOf(SlotOf(row, 1)), "..");
  EXPECT_TRUE(IsEmpty(SlotOf(row, 2)));
  EXPECT_EQ(NumberOf(SlotOf(row, 3)), 1);
  for (const int slot : {4, 5, 6}) EXPECT_TRUE(IsEmpty(SlotOf(row, slot))) << slot;
  EXPECT_EQ(TextOf(SlotOf(row, 7)), "I0");
}

TEST(Rows, ArchiveEntryFillsItsSlots) {
  const auto row = ArchiveAt(5, true);
  EXPECT_EQ(TextOf(SlotOf(row, 0)), "Eingang");
  EXPECT_EQ(TextOf(SlotOf(row, 1)), R"(\\S\D\IN)");
  EXPECT_TRUE(IsEmpty(SlotOf(row, 2)));
  EXPECT_EQ(NumberOf(SlotOf(row, 3)), 2);
  EXPECT_EQ(NumberOf(SlotOf(row, 4)), 18);
  EXPECT_TRUE(std::get<bool>(SlotOf(row, 5)));
  EXPECT_TRUE(IsEmpty(SlotOf(row, 6)));
  EXPECT_EQ(TextOf(SlotOf(row, 7)), "I5");
}

TEST(Rows, MessageEntryFillsItsSlots) {
  const auto row = MessageAt(3);
  EXPECT_EQ(TextOf(SlotOf(row, 0)), "Angebot");
  EXPECT_EQ(TextOf(SlotOf(row, 1)), "R77");
  EXPECT_EQ(std::get<DateTime>(SlotOf(row, 2)), Date);
  EXPECT_EQ(NumberOf(SlotOf(row, 3)), 3);
  EXPECT_EQ(TextOf(SlotOf(row, 4)), "carl@example.net");
  EXPECT_EQ(TextOf(SlotOf(row, 5)), "anna@example.org");
  EXPECT_EQ(TextOf(SlotOf(row, 6)), "a.pdf;b.doc");
  EXPECT_EQ(TextOf(SlotOf(row, 7)), "T2I3");
}

TEST(Rows, DescriptorHoldsTheDisplayTypeAlsoWhereTheStoreHasNone) {
  EXPECT_EQ(DescriptorOf(MessageAt(9, 0x430)), "T1072I9");
}

TEST(Rows, RoutingEntryFillsItsSlots) {
  const auto row = RuleAt(6);
  EXPECT_EQ(TextOf(SlotOf(row, 0)), "Fax an Anna");
  EXPECT_EQ(TextOf(SlotOf(row, 1)), "R4");
  EXPECT_EQ(NumberOf(SlotOf(row, 2)), 3);
  EXPECT_EQ(NumberOf(SlotOf(row, 3)), 4);
  EXPECT_EQ(TextOf(SlotOf(row, 4)), "Fax");
  EXPECT_EQ(TextOf(SlotOf(row, 5)), "/Archive/In");
  EXPECT_EQ(TextOf(SlotOf(row, 6)), "1");
  EXPECT_EQ(TextOf(SlotOf(row, 7)), "T0R6");
  auto disabled = RuleAt(6);
  std::get<RoutingRow>(disabled.Content).IsEnabled = false;
  EXPECT_EQ(TextOf(SlotOf(disabled, 6)), "0");
}

TEST(Rows, NoSlotBeyondTheEight) {
  EXPECT_TRUE(IsEmpty(SlotOf(MessageAt(1), -1)));
  EXPECT_TRUE(IsEmpty(SlotOf(MessageAt(1), 8)));
}

TEST(Rows, KeysHoldThePlaceInTheListAndNotThatOfTheAppending) {
  EXPECT_EQ(KeyOf({9, ControlRow{}}, 0), "T1I0");
  EXPECT_EQ(KeyOf(ArchiveAt(9, false), 5), "T2AI5");
  EXPECT_EQ(KeyOf(ArchiveAt(9, true), 5), "T2SI5");
  EXPECT_EQ(KeyOf(MessageAt(9), 7), "T3I7");
  EXPECT_EQ(KeyOf(RuleAt(9), 2), "T4I2");
}

TEST(Rows, TagsLeadToWhatTheRowStandsFor) {
  EXPECT_EQ(TagOf({0, ControlRow{}}), "..");
  EXPECT_EQ(TagOf(ArchiveAt(1, false)), R"(\\S\D\IN)");
  EXPECT_EQ(TagOf(MessageAt(1)), "R77");
  EXPECT_EQ(TagOf(RuleAt(1)), "R4");
}

TEST(Rows, AKeyTellsTypeAndPlace) {
  EXPECT_EQ(RowEntryType("T1I0"), entry_type::ControlEntry);
  EXPECT_EQ(RowEntryType("T2AI5"), entry_type::ArchiveEntry);
  EXPECT_EQ(RowEntryType("T3I7"), entry_type::MessageEntry);
  EXPECT_EQ(RowEntryType("T4I2"), entry_type::RoutingEntry);
  EXPECT_EQ(RowIndex("T2AI5"), 5);
  EXPECT_EQ(RowIndex("T3I100000"), 100000);
  EXPECT_TRUE(IsShortCutKey("T2SI5"));
  EXPECT_FALSE(IsShortCutKey("T2AI5"));
}

TEST(Rows, WhatIsNoKeyTellsNothing) {
  for (const auto* text : {"", "T", "T0R1", "T9I1", "X2AI5", "2"}) {
    EXPECT_EQ(RowEntryType(text), entry_type::None) << text;
    EXPECT_FALSE(IsShortCutKey(text)) << text;
  }
  EXPECT_EQ(RowIndex("T2"), -1);
  EXPECT_EQ(RowIndex("T2I"), -1);
  EXPECT_EQ(RowIndex("T2I-4"), -1);
}

TEST(Rows, DirBackEntryFillsItsSlots) {
  const FileRow row{
      .UnsortedIndex = 0, .EntryType = entry_type::DirBackEntry, .Name = " [..]", .FullPath = ""};
  EXPECT_EQ(TextOf(SlotOf(row, 0)), " [..]");
  EXPECT_EQ(TextOf(SlotOf(row, 1)), "..");
  EXPECT_TRUE(IsEmpty(SlotOf(row, 2)));
  EXPECT_EQ(TextOf(SlotOf(row, 3)), "T1I0");
  EXPECT_EQ(KeyOf(row), "..");
}

TEST(Rows, DirEntryFillsItsSlots) {
  const FileRow row{.UnsortedIndex = 3,
                    .EntryType = entry_type::DirEntry,
                    .Name = "Mails",
                    .FullPath = R"(Z:\a\Mails)",
                    .Modified = Date};
  EXPECT_EQ(TextOf(SlotOf(row, 0)), "Mails");
  EXPECT_EQ(TextOf(SlotOf(row, 1)), "02.11.2026 10:00:00");
  EXPECT_EQ(TextOf(SlotOf(row, 2)), R"(Z:\a\Mails)");
  EXPECT_EQ(DescriptorOf(row), "T2I3");
  EXPECT_EQ(KeyOf(row), R"(Z:\a\Mails)");
}

TEST(Rows, FileEntryFillsItsSlots) {
  const FileRow row{.UnsortedIndex = 3,
                    .EntryType = entry_type::FileEntry,
                    .Name = "a.txt",
                    .FullPath = R"(Z:\a\a.txt)",
                    .Modified = Date,
                    .Size = 1234567};
  EXPECT_EQ(TextOf(SlotOf(row, 0)), "a.txt");
  EXPECT_EQ(TextOf(SlotOf(row, 2)), "1.234.567");
  EXPECT_EQ(DescriptorOf(row), "T3I3");
  EXPECT_EQ(KeyOf(row), "a.txt");
  EXPECT_TRUE(IsEmpty(SlotOf(row, 4)));
}

}  // namespace
}  // namespace velmora::panes
