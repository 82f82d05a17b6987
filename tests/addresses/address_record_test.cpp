// Reading an address into the fields of the files.
#include "addresses/address_record.h"

#include "addresses/address_fixture.h"
#include "store/vocabulary.h"
#include "support/fake_store.h"

namespace velmora::addresses {
namespace {

using store::AddressProperty;

class AddressRecordTest : public AddressFilesTest {
 protected:
  Result<AddressRecord> ReadEntry() {
    const auto view = store.Open(archive.FullPath)->ItemView(entry.Key);
    return ReadAddressRecord(*(*view)->AsAddress());
  }

  test::FakeStore store{files};
  test::FakeArchiveData& archive = store.AddArchive(nullptr, "Adressen", R"(\\SERVER\DAVID\ADDRESS)");
  test::FakeMail& entry = store.AddEntry(archive, store::item_type::Address, "Betreff");
};

TEST_F(AddressRecordTest, EachColumnHoldsItsProperty) {
  constexpr std::pair<std::size_t, AddressProperty> Columns[] = {
      {0, AddressProperty::DisplayName},   {1, AddressProperty::FaxNumber},
      {2, AddressProperty::LastName},      {3, AddressProperty::FirstName},
      {4, AddressProperty::MiddleInitial}, {5, AddressProperty::Salutation},
      {6, AddressProperty::Title},         {7, AddressProperty::Birthday},
      {8, AddressProperty::Company},       {9, AddressProperty::Street},
      {10, AddressProperty::PostalCode},   {11, AddressProperty::City},
      {12, AddressProperty::Country},      {13, AddressProperty::State},
      {14, AddressProperty::WebAddress},   {15, AddressProperty::BusinessPhone},
      {16, AddressProperty::HomePhone},    {17, AddressProperty::MobilePhone},
      {18, AddressProperty::SecondFax},    {19, AddressProperty::EMail},
      {20, AddressProperty::VoiceBox},     {21, AddressProperty::Pager},
      {22, AddressProperty::Notes},        {24, AddressProperty::SecondEMail},
      {25, AddressProperty::PdaCategory},
  };
  for (const auto& [column, property] : Columns) entry.Address[property] = "v" + std::to_string(column);
  entry.Address[AddressProperty::Categories] = std::int64_t{0x8001};
  entry.Address[AddressProperty::DefaultAddress] = std::int64_t{3};
  const auto record = ReadEntry();
  ASSERT_TRUE(record);
  for (const auto& [column, property] : Columns) {
    EXPECT_EQ(record->Fields[column], "v" + std::to_string(column));
  }
  EXPECT_EQ(record->Fields[23], "1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1");
  EXPECT_EQ(record->Categories, 0x8001u);
  EXPECT_EQ(record->DefaultAddress, 3);
  EXPECT_EQ(record->Subject, "Betreff");
}

TEST_F(AddressRecordTest, PropertiesWithoutAValueAreEmpty) {
  const auto record = ReadEntry();
  ASSERT_TRUE(record);
  for (std::size_t column = 0; column < FieldCount; ++column) {
    EXPECT_EQ(record->Fields[column], column == field::Categories ? CategoryMaskToText(0) : "") << column;
  }
}

TEST_F(AddressRecordTest, ALineBreakIsOneBlankAndAnyOtherControlCharacterToo) {
  entry.Address[AddressProperty::Street] =
      "a\r\nb\rc\nd\te\x01"
      "f\x7fg\r\n\r\nh";
  entry.Address[AddressProperty::City] = std::string("nul\0end", 7);
  entry.Fields[store::tag::Subject] = "x\r\ny";
  const auto record = ReadEntry();
  ASSERT_TRUE(record);
  EXPECT_EQ(record->Fields[field::Street], "a b c d e f g  h");
  EXPECT_EQ(record->Fields[field::City], "nul end");
  EXPECT_EQ(record->Subject, "x y");
}

TEST_F(AddressRecordTest, TheNotesAreKeptWithTheirLineBreaksBesideTheField) {
  entry.Address[AddressProperty::Notes] = "eins\r\nzwei";
  const auto record = ReadEntry();
  ASSERT_TRUE(record);
  EXPECT_EQ(record->Fields[field::Notes], "eins zwei");
  EXPECT_EQ(record->Notes, "eins\r\nzwei");
}

TEST_F(AddressRecordTest, AnAddressThatCannotBeReadFails) {
  entry.FailingField = store::tag::Subject;
  EXPECT_EQ(ErrorOf(ReadEntry()), store::store_error::Damaged);
}

TEST(CategoryMask, SixteenDigitsBitZeroFirst) {
  EXPECT_EQ(CategoryMaskToText(0), "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0");
  EXPECT_EQ(CategoryMaskToText(1), "1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0");
  EXPECT_EQ(CategoryMaskToText(0x8000), "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1");
  EXPECT_EQ(CategoryMaskToText(0xFFFF0000), CategoryMaskToText(0));  // higher bits have no digit
}

}  // namespace
}  // namespace velmora::addresses
