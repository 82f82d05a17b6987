#include "store/filter.h"

#include <gtest/gtest.h>

#include <set>

#include "store/vocabulary.h"

namespace velmora::store {
namespace {

constexpr std::uint32_t TypeBits = filter_bit::FaxItems | filter_bit::VoiceItems | filter_bit::EMailItems |
                                   filter_bit::TMailItems | filter_bit::AddressItems | filter_bit::SMSItems |
                                   filter_bit::LinkItems | filter_bit::DocumentItems;
constexpr std::uint32_t InertBits = 0x08 | 0x10 | 0x80 | 0x100;

std::set<int> TypesThatPass(std::uint32_t mask) {
  std::set<int> types;
  for (const ItemTypeRow& row : ItemTypes)
    if (PassesFilter(mask, {.DisplayType = row.Type})) types.insert(row.Type);
  return types;
}

TEST(FilterTest, NoFilteringLetsEverythingPass) {
  for (const ItemTypeRow& row : ItemTypes)
    for (const bool viewed : {false, true})
      for (const bool attachments : {false, true})
        for (std::int64_t status = -1; status < 101; ++status)
          EXPECT_TRUE(PassesFilter(filter_preset::None, {row.Type, viewed, attachments, status}));
}

TEST(FilterTest, AllMailTypesAreKeptOutTogether) {
  const std::uint32_t mask = filter_preset::None | filter_bit::EMailItems;
  for (const int type :
       {item_type::EMail, display_type::DFML, display_type::Note, display_type::SystemMessage,
        display_type::SystemInfo, display_type::ModuleStart, display_type::ModuleEnd})
    EXPECT_FALSE(PassesFilter(mask, {.DisplayType = type})) << type;
}

TEST(FilterTest, TypesWithoutABitAlwaysPass) {
  const std::uint32_t mask = filter_preset::None | TypeBits;
  EXPECT_EQ(TypesThatPass(mask), (std::set<int>{item_type::Calendar, item_type::Video, item_type::Audio,
                                                item_type::TVProgram, item_type::Task}));
  EXPECT_TRUE(PassesFilter(mask, {.DisplayType = 4711}));
}

TEST(FilterTest, EachTypeBitKeepsOutItsType) {
  constexpr std::pair<std::uint32_t, int> rows[] = {
      {filter_bit::FaxItems, item_type::Fax},
      {filter_bit::VoiceItems, item_type::Voice},
      {filter_bit::EMailItems, item_type::EMail},
      {filter_bit::TMailItems, item_type::TMail},
      {filter_bit::AddressItems, item_type::Address},
      {filter_bit::SMSItems, item_type::SMS},
      {filter_bit::LinkItems, item_type::Link},
      {filter_bit::DocumentItems, display_type::Document},
      {filter_bit::DocumentItems, display_type::ExternalDocument}};
  for (const auto& [bit, type] : rows) {
    EXPECT_FALSE(PassesFilter(filter_preset::None | bit, {.DisplayType = type})) << type;
    EXPECT_TRUE(PassesFilter((filter_preset::None | TypeBits) & ~bit, {.DisplayType = type})) << type;
  }
}

TEST(FilterTest, DocumentsObeyTheirOwnBitAlone) {
  for (const int type : {display_type::Document, display_type::ExternalDocument}) {
    EXPECT_TRUE(PassesFilter(0, {.DisplayType = type}));
    EXPECT_TRUE(PassesFilter(filter_bit::EMailItems, {type, true, true, 21}));
    EXPECT_FALSE(PassesFilter(filter_preset::None | filter_bit::DocumentItems, {.DisplayType = type}));
  }
}

TEST(FilterTest, ErrorAndCorrectFollowTheSendStatus) {
  const std::uint32_t onlyErrors = filter_preset::None & ~filter_bit::Correct;
  const std::uint32_t onlyCorrect = filter_preset::None & ~filter_bit::Error;
  for (std::int64_t status = 0; status < 100; ++status) {
    const EntryTraits mail{.DisplayType = item_type::EMail, .SendStatus = status};
    EXPECT_EQ(PassesFilter(onlyErrors, mail), SendStatus(status).IsFailure) << status;
    EXPECT_EQ(PassesFilter(onlyCorrect, mail), !SendStatus(status).IsFailure) << status;
  }
}

TEST(FilterTest, WhatWasNeverSentIsCorrectAndFinal) {
  const EntryTraits address{.DisplayType = item_type::Address};
  EXPECT_TRUE(PassesFilter(filter_preset::Default & ~filter_bit::Error, address));
  EXPECT_FALSE(PassesFilter(filter_preset::None & ~filter_bit::Correct, address));
}

TEST(FilterTest, AWaitingJobIsNotFinal) {
  const EntryTraits job{.DisplayType = item_type::EMail, .SendStatus = 76};
  EXPECT_TRUE(PassesFilter(filter_preset::None, job));
  EXPECT_FALSE(PassesFilter(filter_preset::Default, job));
  EXPECT_TRUE(PassesFilter(filter_preset::Default, {.DisplayType = item_type::EMail, .SendStatus = 0}));
}

TEST(FilterTest, ViewedAndAttachmentsHaveTwoBitsEach) {
  const EntryTraits plain{.DisplayType = item_type::EMail};
  const EntryTraits viewed{.DisplayType = item_type::EMail, .Viewed = true};
  const EntryTraits heavy{.DisplayType = item_type::EMail, .HasAttachments = true};
  EXPECT_FALSE(PassesFilter(filter_preset::None & ~filter_bit::UnViewed, plain));
  EXPECT_TRUE(PassesFilter(filter_preset::None & ~filter_bit::UnViewed, viewed));
  EXPECT_FALSE(PassesFilter(filter_preset::None & ~filter_bit::Viewed, viewed));
  EXPECT_FALSE(PassesFilter(filter_preset::None & ~filter_bit::WithoutAtt, plain));
  EXPECT_TRUE(PassesFilter(filter_preset::None & ~filter_bit::WithoutAtt, heavy));
  EXPECT_FALSE(PassesFilter(filter_preset::None & ~filter_bit::WithAtt, heavy));
}

TEST(FilterTest, TheServersOwnBitsHaveNoEffect) {
  for (const ItemTypeRow& row : ItemTypes)
    for (const FilterPreset& preset : FilterPresets)
      EXPECT_EQ(PassesFilter(preset.Mask, {.DisplayType = row.Type}),
                PassesFilter(preset.Mask & ~InertBits, {.DisplayType = row.Type}));
}

TEST(FilterPresetTest, AllKeepTheServersBits) {
  for (const FilterPreset& preset : FilterPresets)
    EXPECT_TRUE(TestBit(preset.Mask, InertBits)) << preset.Caption;
}

TEST(FilterPresetTest, NormalDiffersFromAllInTheFinalStatusOnly) {
  EXPECT_EQ(filter_preset::Default ^ filter_preset::None, filter_bit::Conclusion);
}

TEST(FilterPresetTest, LinksAndDocumentsStayUnderTheSingleTypePresets) {
  // A gap that users know: only the preset of three types shuts links and documents out.
  for (const std::uint32_t mask :
       {filter_preset::OnlyAddress, filter_preset::OnlyFax, filter_preset::OnlyEMails}) {
    EXPECT_TRUE(PassesFilter(mask, {.DisplayType = item_type::Link}));
    EXPECT_TRUE(PassesFilter(mask, {.DisplayType = display_type::Document}));
  }
  EXPECT_FALSE(PassesFilter(filter_preset::OnlyMFA, {.DisplayType = item_type::Link}));
  EXPECT_FALSE(PassesFilter(filter_preset::OnlyMFA, {.DisplayType = display_type::Document}));
}

TEST(FilterPresetTest, EachLetsItsTypesPass) {
  const std::set<int> always = {item_type::Calendar, item_type::Video, item_type::Audio, item_type::TVProgram,
                                item_type::Task};
  const std::set<int> gap = {item_type::Link, display_type::Document, display_type::ExternalDocument};
  const auto with = [](std::set<int> types, const std::set<int>& more) {
    types.insert(more.begin(), more.end());
    return types;
  };
  const std::set<int> mails = {item_type::EMail,         display_type::DFML,
                               display_type::Note,       display_type::SystemMessage,
                               display_type::SystemInfo, display_type::ModuleStart,
                               display_type::ModuleEnd};
  EXPECT_EQ(TypesThatPass(filter_preset::OnlyFax), with(with(always, gap), {item_type::Fax}));
  EXPECT_EQ(TypesThatPass(filter_preset::OnlyAddress), with(with(always, gap), {item_type::Address}));
  EXPECT_EQ(TypesThatPass(filter_preset::OnlyEMails), with(with(always, gap), mails));
  EXPECT_EQ(TypesThatPass(filter_preset::OnlyMFA),
            with(with(always, mails), {item_type::Fax, item_type::Address}));
}

TEST(FilterBoxTest, TypesExcludeAndStatusesInclude) {
  std::uint32_t excluding = 0, all = 0;
  for (const FilterBox& box : FilterBoxes) {
    EXPECT_EQ(all & box.Bit, 0U);
    all |= box.Bit;
    if (box.Excludes) excluding |= box.Bit;
  }
  EXPECT_EQ(excluding, TypeBits);
  EXPECT_EQ(all & InertBits, 0U);
}

TEST(InhibitionTest, HiddenByAUserAloneDoesNotPass) {
  EXPECT_TRUE(PassesInhibition(0, false));
  EXPECT_FALSE(PassesInhibition(item_flag::UserInhibited, false));
  EXPECT_TRUE(PassesInhibition(item_flag::UserInhibited, true));
  EXPECT_TRUE(PassesInhibition(item_flag::UserInhibited | item_flag::Inhibited, false));
  EXPECT_TRUE(PassesInhibition(item_flag::Inhibited, false));
}

TEST(FilterActiveTest, TheHiddenEntriesCountAsAFilter) {
  EXPECT_FALSE(IsFilterActive(0x301FB, true));
  EXPECT_TRUE(IsFilterActive(0x301FB, false));
  EXPECT_TRUE(IsFilterActive(0x301FF, true));
  EXPECT_TRUE(IsFilterActive(0, true));
}

}  // namespace
}  // namespace velmora::store
