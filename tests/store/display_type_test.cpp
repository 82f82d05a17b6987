#include "store/display_type.h"

#include <gtest/gtest.h>

namespace velmora::store {
namespace {

DisplayTypeFields Mail() { return {.ItemType = item_type::EMail}; }

TEST(DisplayTypeTest, OnlyEMailsHaveOne) {
  DisplayTypeFields fax{.ItemType = item_type::Fax,
                        .Flags = 1,
                        .MailFlags = 0x100000,
                        .SendStatus = 0x40,
                        .DisplayVariant = 7,
                        .DocumentFlags = 0x40};
  EXPECT_EQ(DisplayTypeOf(fax), item_type::Fax);
  EXPECT_EQ(DisplayTypeOf(Mail()), item_type::EMail);
}

TEST(DisplayTypeTest, DfmlGoesBeforeAllOthers) {
  DisplayTypeFields mail = Mail();
  mail.MailFlags = 0x100000;
  mail.SendStatus = 0x40;
  mail.Flags = 1;
  mail.DocumentFlags = 0x40;
  EXPECT_EQ(DisplayTypeOf(mail), display_type::DFML);
}

TEST(DisplayTypeTest, ADocumentHasTheStatusBitAndOddFlags) {
  DisplayTypeFields mail = Mail();
  mail.SendStatus = 72;
  EXPECT_EQ(DisplayTypeOf(mail), item_type::EMail);
  mail.Flags = 0x101;
  EXPECT_EQ(DisplayTypeOf(mail), display_type::Document);
  mail.DocumentFlags = 0x40;
  mail.DisplayVariant = 7;
  EXPECT_EQ(DisplayTypeOf(mail), display_type::Document);
}

TEST(DisplayTypeTest, TheVariantDecidesUnlessTheDocumentIsExternal) {
  constexpr std::pair<std::int64_t, int> variants[] = {{-52, 0x41C}, {0x44, 0x42C}, {-54, 0x41E}, {7, 0x3EF},
                                                       {8, 0x3F0},   {9, 2},        {0, 2}};
  for (const auto& [variant, expected] : variants) {
    DisplayTypeFields mail = Mail();
    mail.DisplayVariant = variant;
    EXPECT_EQ(DisplayTypeOf(mail), expected) << variant;
    mail.DocumentFlags = 0x40;
    EXPECT_EQ(DisplayTypeOf(mail), display_type::ExternalDocument) << variant;
  }
}

}  // namespace
}  // namespace velmora::store
