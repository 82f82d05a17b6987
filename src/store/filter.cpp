#include "store/filter.h"

#include "store/vocabulary.h"

namespace velmora::store {
namespace {

struct TypeBit {
  int DisplayType;
  std::uint32_t Bit;
};

constexpr auto TypeBits = std::to_array<TypeBit>({
    {item_type::Address, filter_bit::AddressItems},
    {item_type::EMail, filter_bit::EMailItems},
    {item_type::Fax, filter_bit::FaxItems},
    {item_type::SMS, filter_bit::SMSItems},
    {item_type::Voice, filter_bit::VoiceItems},
    {item_type::TMail, filter_bit::TMailItems},
    {item_type::Link, filter_bit::LinkItems},
    {display_type::Document, filter_bit::DocumentItems},
    {display_type::ExternalDocument, filter_bit::DocumentItems},
    {display_type::Note, filter_bit::EMailItems},
    {display_type::DFML, filter_bit::EMailItems},
    {display_type::SystemMessage, filter_bit::EMailItems},
    {display_type::SystemInfo, filter_bit::EMailItems},
    {display_type::ModuleStart, filter_bit::EMailItems},
    {display_type::ModuleEnd, filter_bit::EMailItems},
});

}  // namespace

std::uint32_t ExclusionBit(int displayType) {
  for (const TypeBit& row : TypeBits)
    if (row.DisplayType == displayType) return row.Bit;
  return 0;
}

bool PassesFilter(std::uint32_t mask, const EntryTraits& entry) {
  const std::uint32_t exclusionBit = ExclusionBit(entry.DisplayType);
  if ((mask & exclusionBit) != 0) return false;
  if (exclusionBit == filter_bit::DocumentItems) return true;

  const bool failed = entry.SendStatus && SendStatus(*entry.SendStatus).IsFailure;
  const bool waits = entry.SendStatus == std::int64_t{send_status::Job};
  if (waits && TestBit(mask, filter_bit::Conclusion)) return false;
  return TestBit(mask, failed ? filter_bit::Error : filter_bit::Correct) &&
         TestBit(mask, entry.Viewed ? filter_bit::Viewed : filter_bit::UnViewed) &&
         TestBit(mask, entry.HasAttachments ? filter_bit::WithAtt : filter_bit::WithoutAtt);
}

bool PassesInhibition(std::uint32_t flags, bool inhibitItems) {
  return inhibitItems || !TestBit(flags, item_flag::UserInhibited) || TestBit(flags, item_flag::Inhibited);
}

}  // namespace velmora::store
