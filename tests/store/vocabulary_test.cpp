#include "store/vocabulary.h"

#include <gtest/gtest.h>

#include <set>

#include "store/icon_keys.h"

namespace velmora::store {
namespace {

TEST(TestBitTest, NeedsAllBitsOfTheMask) {
  EXPECT_TRUE(TestBit(0x30, 0x10));
  EXPECT_FALSE(TestBit(0x10, 0x30));
  EXPECT_TRUE(TestBit(0, 0));
}

TEST(ItemTypeTest, NamesOfStoreTypesAndDisplayTypes) {
  EXPECT_EQ(ItemTypeName(1), "DvAddressItem");
  EXPECT_EQ(ItemTypeName(2), "DvEMailItem");
  EXPECT_EQ(ItemTypeName(3), "DvFaxItem");
  EXPECT_EQ(ItemTypeName(4), "DvSMSItem");
  EXPECT_EQ(ItemTypeName(5), "DvVoiceItem");
  EXPECT_EQ(ItemTypeName(6), "DvTMailItem");
  EXPECT_EQ(ItemTypeName(7), "DvCalendarItem");
  EXPECT_EQ(ItemTypeName(8), "DvLinkItem");
  EXPECT_EQ(ItemTypeName(9), "DvVideoItem");
  EXPECT_EQ(ItemTypeName(10), "DvAudioItem");
  EXPECT_EQ(ItemTypeName(11), "DvTVProgramItem");
  EXPECT_EQ(ItemTypeName(12), "DvTaskItem");
  EXPECT_EQ(ItemTypeName(0x430), "DvDocument");
  EXPECT_EQ(ItemTypeName(0x42C), "DvNote");
  EXPECT_EQ(ItemTypeName(0x42D), "DvExtDoc");
  EXPECT_EQ(ItemTypeName(0x818), "DvDFML");
  for (const int unknown : {13, 0, -1, 0x41C, 0x41E, 0x3EF, 0x3F0})
    EXPECT_EQ(ItemTypeName(unknown), "DvUnknownItem");
}

TEST(ItemTypeTest, IconsStandAtTheirPositions) {
  EXPECT_EQ(ItemIconKey(2, false), "IMail");
  EXPECT_EQ(ItemIconKey(2, true), "IMailAtt");
  EXPECT_EQ(ItemIconIndex(2, true), 49);
  EXPECT_EQ(ItemIconIndex(12, false), 48);
  EXPECT_EQ(ItemIconIndex(0x818, true), 56);
  EXPECT_EQ(ItemIconKey(13, true), "IUnknown");
  for (const ItemTypeRow& row : ItemTypes) EXPECT_EQ(ItemIconKey(row.Type, false), row.IconKey) << row.Type;
}

TEST(IconKeyTest, NoKeyStandsTwice) {
  const std::set<std::string_view> keys(ListImageKeys.begin(), ListImageKeys.end());
  EXPECT_EQ(keys.size(), ListImageKeys.size());
  EXPECT_EQ(ListImageKeys.size(), 67U);
  EXPECT_EQ(ToolbarImageKeys.size(), 31U);
}

TEST(ItemFlagsTest, HighBitsFirstAndOnlyEnglishHasTheTail) {
  EXPECT_EQ(ItemFlagsEnglish(0), " (0x0)");
  EXPECT_EQ(ItemFlagsGerman(0), "");
  EXPECT_EQ(ItemFlagsEnglish(0x101), ", Viewed, Free (0x101)");
  EXPECT_EQ(ItemFlagsGerman(0x101), ", Gelesen, Frei");
  EXPECT_EQ(ItemFlagsEnglish(0xFFFFFFFF),
            ", UserInhibited, Deleted, Viewed, Changed, Inhibited, Printed, Received, Free (0xFFFFFFFF)");
  EXPECT_EQ(ItemFlagsGerman(0xDB9),
            ", Vom Benutzer ausgeblendet, Gelöscht, Gelesen, Geändert, Vom System ausblendet, Gedruckt, "
            "Empfangen, Frei");
  EXPECT_EQ(ItemFlagsGerman(0x246), "");
}

TEST(RightsTest, LowBitsFirst) {
  EXPECT_EQ(RightsText(0xFB), ", Read, Write, Create, Delete, SetOwner, Scan, Modify (0xFB)");
  EXPECT_EQ(RightsText(4), " (0x4)");
}

TEST(AttachmentFlagsTest, LosesTheLastSeparator) {
  EXPECT_EQ(AttachmentFlagsText(0), "");
  EXPECT_EQ(AttachmentFlagsText(1), "Crypted");
  EXPECT_EQ(AttachmentFlagsText(0x1F),
            "Crypted; Not crypted; Crypted, self extracting; Inline HTML image; Message RFC822 attachment");
}

TEST(PriorityTest, AnUnknownOneHasTheTailAlone) {
  EXPECT_EQ(PriorityEnglish(0), "Normal (0x0)");
  EXPECT_EQ(PriorityEnglish(1), "Low (0x1)");
  EXPECT_EQ(PriorityEnglish(2), "High (0x2)");
  EXPECT_EQ(PriorityEnglish(3), " (0x3)");
  EXPECT_EQ(PriorityGerman(1), "Niedrig");
  EXPECT_EQ(PriorityGerman(2), "Hoch");
  EXPECT_EQ(PriorityGerman(3), "");
  EXPECT_EQ(PriorityGerman(-1), "");
}

TEST(CategoryTest, AnEmptyElementStandsAhead) {
  EXPECT_EQ(CategoryNames(0x8001), (std::vector<std::string>{"", "Presse", "PLZ Bereich 9"}));
  EXPECT_EQ(CategoryNames(0), (std::vector<std::string>{""}));
  EXPECT_EQ(CategoryNames(0xFFFF).size(), 17U);
  EXPECT_EQ(CategoryNames(0x10000), (std::vector<std::string>{""}));
  EXPECT_EQ(CategoryNames(0x003C), (std::vector<std::string>{"", "Vertrieb Inland", "Vertrieb Ausland",
                                                             "Einkauf Inland", "Einkauf Ausland"}));
}

TEST(WeekDayTest, AllWorkingDaysHaveAWordOfTheirOwn) {
  EXPECT_EQ(WeekDayText(0x3E), "   Alle Arbeitstage");
  EXPECT_EQ(WeekDayText(0x3F), ", So, Mo, Di, Mi, Do, Fr");
  EXPECT_EQ(WeekDayText(0x7F), ", So, Mo, Di, Mi, Do, Fr, Sa");
  EXPECT_EQ(WeekDayText(0x40), ", Sa");
  EXPECT_EQ(WeekDayText(0), "");
}

TEST(ValueTest, TaskAndBusyState) {
  EXPECT_EQ(TaskStatusText(0), "Nicht begonnen");
  EXPECT_EQ(TaskStatusText(4), "Zurückgestellt");
  EXPECT_EQ(TaskStatusText(5), "");
  EXPECT_EQ(BusyStateEnglish(3), "Out Of Office");
  EXPECT_EQ(BusyStateGerman(2), "Unter Vorbehalt");
  EXPECT_EQ(BusyStateGerman(4), "");
}

TEST(ValueTest, RawRecurrenceMixesItsLanguages) {
  // The raw property lists were always printed so, and whoever reads them by machine relies on it.
  const std::vector<std::string> raw = {"Nie", "Daily", "Wöchentlich", "Monthly", "Jährlich", "Minutely", ""};
  const std::vector<std::string> german = {"Nie",       "Täglich", "Wöchentlich", "Monatlich", "Jährlich",
                                           "Minütlich", ""};
  for (int value = 0; value < 7; ++value) {
    EXPECT_EQ(RecurrenceRaw(value), raw[static_cast<std::size_t>(value)]);
    EXPECT_EQ(RecurrenceGerman(value), german[static_cast<std::size_t>(value)]);
  }
  EXPECT_EQ(RecurrenceKindEnglish(0), "Variable");
  EXPECT_EQ(RecurrenceKindGerman(1), "Fest");
  EXPECT_EQ(RecurrenceEndText(1), "Ende nach Anzahl von Wiederholungen");
  EXPECT_EQ(RecurrenceEndText(3), "");
}

TEST(ValueTest, DisplayAsKeepsItsSpelling) {
  EXPECT_EQ(DisplayAsText(0), "Vorgabe (DvDisplayAsDefault)");
  EXPECT_EQ(DisplayAsText(display_as::Link), "Verknüpung im Archivbaum (DvDisplayAsLink)");
  EXPECT_EQ(DisplayAsText(display_as::News), "Newsgoups (DvDisplayAsNews)");
  EXPECT_EQ(DisplayAsText(display_as::Picture), "Bild (DvDisplayAsPicture)");
  EXPECT_EQ(DisplayAsText(17), "");
}

TEST(SendStatusTest, EightStatusesAreGoodEnds) {
  const std::set<std::int64_t> good = {0, 60, 61, 63, 66, 71, 72, 76};
  for (std::int64_t status = 0; status < 100; ++status)
    EXPECT_EQ(SendStatus(status).IsFailure, good.count(status) == 0) << status;
}

TEST(SendStatusTest, EveryRowHasBothTexts) {
  for (std::int64_t status = 0; status < 100; ++status) {
    EXPECT_FALSE(SendStatus(status).English.empty()) << status;
    EXPECT_FALSE(SendStatus(status).German.empty()) << status;
  }
}

TEST(SendStatusTest, RowsWithoutATextOfTheirOwnAreUnknownErrors) {
  const std::set<std::int64_t> unknown = {1,  4,  5,  6,  7,  8,  9,  13, 17, 18, 19,
                                          38, 40, 47, 48, 49, 55, 56, 57, 58, 69, 82};
  for (std::int64_t status = 0; status < 100; ++status)
    EXPECT_EQ(SendStatus(status).German == "unbekannter Fehler", unknown.count(status) == 1) << status;
}

TEST(SendStatusTest, OddTextsStayAsTheServerHasThem) {
  EXPECT_EQ(SendStatus(68).English, "invalid command lenght");
  EXPECT_EQ(SendStatus(64).English, "number of Robinsonliste");
  EXPECT_EQ(SendStatus(70).German, " Rundsendedatei fehlt");
  EXPECT_EQ(SendStatus(50).English, "error at end of fax ");
  EXPECT_EQ(SendStatus(99).English, "Bestätigung");
  EXPECT_EQ(SendStatus(99).German, "Bestätigung");
  EXPECT_EQ(SendStatus(21).English, "busy");
  EXPECT_EQ(SendStatus(21).German, "belegt");
}

TEST(SendStatusTest, BeyondTheTableIsNoFailure) {
  for (const std::int64_t status : {std::int64_t{-1}, std::int64_t{100}, std::int64_t{1} << 40}) {
    EXPECT_FALSE(SendStatus(status).IsFailure);
    EXPECT_EQ(SendStatus(status).German, "");
  }
}

}  // namespace
}  // namespace velmora::store
