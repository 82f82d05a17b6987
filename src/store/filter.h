// The message filter: a mask that the store applies and a second stage that the program applies, alike in
// every operation: what a user does not see is not touched.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace velmora::store {

// Bits of the mask DvItemFilter. Those of document types keep a type out; all others let entries in. The
// bits 0x08, 0x10, 0x80 and 0x100 are the server's own: kept as they are, without effect here.
namespace filter_bit {
inline constexpr std::uint32_t Error = 0x00000001, Correct = 0x00000002, Conclusion = 0x00000004,
                               Viewed = 0x00000020, UnViewed = 0x00000040, FaxItems = 0x00000200,
                               VoiceItems = 0x00000400, EMailItems = 0x00000800, TMailItems = 0x00001000,
                               AddressItems = 0x00002000, SMSItems = 0x00004000, LinkItems = 0x00008000,
                               WithAtt = 0x00010000, WithoutAtt = 0x00020000, DocumentItems = 0x08000000;
}  // namespace filter_bit

namespace filter_preset {
inline constexpr std::uint32_t OnlyMFA = 0x0803D5FF;
inline constexpr std::uint32_t None = 0x000301FB;  // no filtering at all: neither zero nor all ones
inline constexpr std::uint32_t OnlyAddress = 0x00035FFF;
inline constexpr std::uint32_t OnlyFax = 0x00037DFF;
inline constexpr std::uint32_t OnlyEMails = 0x000377FF;
inline constexpr std::uint32_t Default = 0x000301FF;
}  // namespace filter_preset

// A check box of the filter form.
struct FilterBox {
  std::uint32_t Bit;
  std::string_view Control;
  std::string_view Caption;
  bool Excludes;  // a set bit keeps the type out: the box is checked when the bit is clear
};

inline constexpr auto FilterBoxes = std::to_array<FilterBox>({
    {filter_bit::Error, "FltError", "Fehlerhafte Einträge", false},
    {filter_bit::Correct, "FltCorrect", "Korrekte Einträge", false},
    {filter_bit::Conclusion, "FltConclusion", "Nur Einträge mit Abschlußstatus", false},
    {filter_bit::Viewed, "FltViewed", "Gesehen", false},
    {filter_bit::UnViewed, "FltUnViewed", "Ungesehen", false},
    {filter_bit::FaxItems, "FltFaxItems", "Faxe", true},
    {filter_bit::VoiceItems, "FLTVoiceItems", "Sprachdateien", true},
    {filter_bit::EMailItems, "FltEMailItems", "EMails", true},
    {filter_bit::TMailItems, "FltTMailItems", "TMail", true},
    {filter_bit::AddressItems, "FltAddressItems", "Adressen", true},
    {filter_bit::SMSItems, "FltSMSItems", "SMS", true},
    {filter_bit::LinkItems, "FltLinkItems", "Links", true},
    {filter_bit::WithAtt, "FltWithAtt", "Mit Dateinanhang", false},
    {filter_bit::WithoutAtt, "FltWithoutAtt", "Ohne Dateianhang", false},
    {filter_bit::DocumentItems, "FltDocumentItems", "Dokumente", true},
});

// An option button of the filter form, in the form's order.
struct FilterPreset {
  std::uint32_t Mask;
  std::string_view Control;
  std::string_view Caption;
};

inline constexpr auto FilterPresets = std::to_array<FilterPreset>({
    {filter_preset::OnlyMFA, "FltOnlyMFA", "Nur EMails ,Faxe, Adressen"},
    {filter_preset::None, "FltNone", "Alle"},
    {filter_preset::OnlyAddress, "FltOnlyAddress", "Nur Adressen"},
    {filter_preset::OnlyFax, "FltOnlyFax", "Nur Faxe"},
    {filter_preset::OnlyEMails, "FltOnlyEMails", "Nur EMails"},
    {filter_preset::Default, "FltDefault", "Normal"},
});

// What the mask looks at in an entry.
struct EntryTraits {
  int DisplayType = 0;  // see display_type.h
  bool Viewed = false;
  bool HasAttachments = false;
  std::optional<std::int64_t> SendStatus = std::nullopt;  // nothing for an entry that was never sent
};

// The bit that keeps entries of a display type out, 0 for types that no bit keeps out. Every display type of
// an e-mail but the documents goes with the e-mails.
std::uint32_t ExclusionBit(int displayType);
// The first stage. Documents obey their own bit and no other; an entry that was never sent counts as correct
// and as final; a job that still waits for delivery is not final.
bool PassesFilter(std::uint32_t mask, const EntryTraits& entry);
// The second stage: entries hidden by a user pass only if the system hides them too, or with
// `inhibitItems` (DvInhibitItems) on.
bool PassesInhibition(std::uint32_t flags, bool inhibitItems);
// Whether a filter is in force at all.
constexpr bool IsFilterActive(std::uint32_t mask, bool inhibitItems) {
  return mask != filter_preset::None || !inhibitItems;
}

}  // namespace velmora::store
