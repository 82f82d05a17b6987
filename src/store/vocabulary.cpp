#include "store/vocabulary.h"

#include <algorithm>
#include <optional>
#include <span>

#include "base/numbers.h"
#include "store/icon_keys.h"

namespace velmora::store {
namespace {

struct BitName {
  std::uint32_t Bit;
  std::string_view English;
  std::string_view German;
};

// The names are those of the server's own lists, their slips included: people search for them as they stand.

constexpr auto ItemFlagNames = std::to_array<BitName>({
    {item_flag::UserInhibited, ", UserInhibited", ", Vom Benutzer ausgeblendet"},
    {item_flag::Deleted, ", Deleted", ", Gelöscht"},
    {item_flag::Viewed, ", Viewed", ", Gelesen"},
    {item_flag::Changed, ", Changed", ", Geändert"},
    {item_flag::Inhibited, ", Inhibited", ", Vom System ausblendet"},
    {item_flag::Printed, ", Printed", ", Gedruckt"},
    {item_flag::Received, ", Received", ", Empfangen"},
    {item_flag::Free, ", Free", ", Frei"},
});

constexpr auto RightNames = std::to_array<BitName>({
    {access_right::Read, ", Read", ""},
    {access_right::Write, ", Write", ""},
    {access_right::Create, ", Create", ""},
    {access_right::Delete, ", Delete", ""},
    {access_right::SetOwner, ", SetOwner", ""},
    {access_right::Scan, ", Scan", ""},
    {access_right::Modify, ", Modify", ""},
});

constexpr auto AttachmentFlagNames = std::to_array<BitName>({
    {attachment_flag::Crypted, "Crypted; ", ""},
    {attachment_flag::NotCrypted, "Not crypted; ", ""},
    {attachment_flag::SelfExtracting, "Crypted, self extracting; ", ""},
    {attachment_flag::InlineImage, "Inline HTML image; ", ""},
    {attachment_flag::MessageRfc822, "Message RFC822 attachment; ", ""},
});

constexpr std::uint32_t WorkingDays = 0x3E;
constexpr auto WeekDayNames = std::to_array<BitName>({
    {0x01, "", ", So"},
    {0x02, "", ", Mo"},
    {0x04, "", ", Di"},
    {0x08, "", ", Mi"},
    {0x10, "", ", Do"},
    {0x20, "", ", Fr"},
    {0x40, "", ", Sa"},
});

// The position is the bit.
constexpr auto Categories = std::to_array<std::string_view>(
    {"Presse", "Marketing", "Vertrieb Inland", "Vertrieb Ausland", "Einkauf Inland", "Einkauf Ausland",
     "PLZ Bereich 0", "PLZ Bereich 1", "PLZ Bereich 2", "PLZ Bereich 3", "PLZ Bereich 4", "PLZ Bereich 5",
     "PLZ Bereich 6", "PLZ Bereich 7", "PLZ Bereich 8", "PLZ Bereich 9"});

// The position is the value.
struct ValueName {
  std::string_view English;
  std::string_view German;
};

constexpr auto PriorityNames =
    std::to_array<ValueName>({{"Normal", "Normal"}, {"Low", "Niedrig"}, {"High", "Hoch"}});
constexpr auto TaskStatusNames = std::to_array<ValueName>({{"", "Nicht begonnen"},
                                                           {"", "In Bearbeitung"},
                                                           {"", "Vollständig"},
                                                           {"", "Auf jemand anderen warten"},
                                                           {"", "Zurückgestellt"}});
constexpr auto BusyStateNames = std::to_array<ValueName>(
    {{"Busy", "Gebucht"}, {"Free", "Frei"}, {"Tentative", "Unter Vorbehalt"}, {"Out Of Office", "Abwesend"}});
constexpr auto RecurrenceNames = std::to_array<ValueName>({{"Nie", "Nie"},
                                                           {"Daily", "Täglich"},
                                                           {"Wöchentlich", "Wöchentlich"},
                                                           {"Monthly", "Monatlich"},
                                                           {"Jährlich", "Jährlich"},
                                                           {"Minutely", "Minütlich"}});
constexpr auto RecurrenceKindNames = std::to_array<ValueName>({{"Variable", "Variabel"}, {"Fixed", "Fest"}});
constexpr auto RecurrenceEndNames = std::to_array<ValueName>(
    {{"", "Ohne Enddatum"}, {"", "Ende nach Anzahl von Wiederholungen"}, {"", "Mit Enddatum"}});
constexpr auto DisplayAsNames = std::to_array<ValueName>({{"", "Vorgabe (DvDisplayAsDefault)"},
                                                          {"", "Eingang (DvDisplayAsInBox)"},
                                                          {"", "Ausgang (DvDisplayAsOutBox)"},
                                                          {"", "Versand (DvDisplayAsJobs)"},
                                                          {"", "Adresse (DvDisplayAsAddress)"},
                                                          {"", "Benutzerdefiniert (DvDisplayAsUserDefined)"},
                                                          {"", "Kalender (DvDisplayAsCalendar)"},
                                                          {"", "Verknüpung im Archivbaum (DvDisplayAsLink)"},
                                                          {"", "Newsgoups (DvDisplayAsNews)"},
                                                          {"", "HTML-Layout (DvDisplayAsHTMLLayout)"},
                                                          {"", "Aufgabe (DvDisplayAsTask)"},
                                                          {"", "Media (DvDisplayAsMedia)"},
                                                          {"", "PBXpense-Auswertung (DvDisplayAsPBXpense)"},
                                                          {"", "Audio (DvDisplayAsAudio)"},
                                                          {"", "SQL Adressen (DvDisplayAsSQLAddresses)"},
                                                          {"", "SQL Variabel (DvDisplayAsSQLVariable)"},
                                                          {"", "Bild (DvDisplayAsPicture)"}});

enum class Language { English, German };

template <typename Name>
std::string_view In(Language language, const Name& name) {
  return language == Language::English ? name.English : name.German;
}

std::string JoinBits(std::span<const BitName> names, std::uint32_t value, Language language) {
  std::string joined;
  for (const BitName& name : names)
    if (TestBit(value, name.Bit)) joined += In(language, name);
  return joined;
}

std::string HexTail(std::uint32_t value) { return " (0x" + FormatHex(value) + ")"; }

std::string NameOf(std::span<const ValueName> names, int value, Language language) {
  const bool known = value >= 0 && static_cast<std::size_t>(value) < names.size();
  return known ? std::string(In(language, names[static_cast<std::size_t>(value)])) : std::string();
}

const ItemTypeRow* FindItemType(int type) {
  const auto* const row = std::find_if(ItemTypes.begin(), ItemTypes.end(),
                                       [&](const ItemTypeRow& candidate) { return candidate.Type == type; });
  return row == ItemTypes.end() ? nullptr : row;
}

}  // namespace

std::string_view ItemTypeName(int type) {
  const ItemTypeRow* row = FindItemType(type);
  return row != nullptr ? row->Name : "DvUnknownItem";
}

std::string_view ItemIconKey(int displayType, bool hasAttachments) {
  return ListImageKeys[static_cast<std::size_t>(ItemIconIndex(displayType, hasAttachments))];
}

int ItemIconIndex(int displayType, bool hasAttachments) {
  constexpr int mailWithAttachments = 1;
  if (displayType == item_type::EMail && hasAttachments) return ItemVariantOffset + mailWithAttachments;
  const ItemTypeRow* row = FindItemType(displayType);
  if (row == nullptr) return ItemIconOffset;
  return row->IconVariant > 0 ? ItemVariantOffset + row->IconVariant : ItemIconOffset + row->Type;
}

std::string ItemFlagsEnglish(std::uint32_t flags) {
  return JoinBits(ItemFlagNames, flags, Language::English) + HexTail(flags);
}

std::string ItemFlagsGerman(std::uint32_t flags) { return JoinBits(ItemFlagNames, flags, Language::German); }

std::string RightsText(std::uint32_t accessRights) {
  return JoinBits(RightNames, accessRights, Language::English) + HexTail(accessRights);
}

std::string AttachmentFlagsText(std::uint32_t flags) {
  constexpr std::size_t separatorSize = 2;
  std::string text = JoinBits(AttachmentFlagNames, flags, Language::English);
  text.resize(text.size() - std::min(text.size(), separatorSize));
  return text;
}

std::vector<std::string> CategoryNames(std::uint32_t categories) {
  std::vector<std::string> names(1);
  for (std::size_t bit = 0; bit < Categories.size(); ++bit)
    if (TestBit(categories, 1U << bit)) names.emplace_back(Categories[bit]);
  return names;
}

std::string WeekDayText(std::uint32_t days) {
  return days == WorkingDays ? "   Alle Arbeitstage" : JoinBits(WeekDayNames, days, Language::German);
}

std::string PriorityEnglish(int priority) {
  return NameOf(PriorityNames, priority, Language::English) + HexTail(static_cast<std::uint32_t>(priority));
}

std::string PriorityGerman(int priority) { return NameOf(PriorityNames, priority, Language::German); }
std::string TaskStatusText(int status) { return NameOf(TaskStatusNames, status, Language::German); }
std::string BusyStateEnglish(int state) { return NameOf(BusyStateNames, state, Language::English); }
std::string BusyStateGerman(int state) { return NameOf(BusyStateNames, state, Language::German); }
std::string RecurrenceRaw(int recurrence) { return NameOf(RecurrenceNames, recurrence, Language::English); }
std::string RecurrenceGerman(int recurrence) { return NameOf(RecurrenceNames, recurrence, Language::German); }
std::string RecurrenceKindEnglish(int kind) { return NameOf(RecurrenceKindNames, kind, Language::English); }
std::string RecurrenceKindGerman(int kind) { return NameOf(RecurrenceKindNames, kind, Language::German); }
std::string RecurrenceEndText(int end) { return NameOf(RecurrenceEndNames, end, Language::German); }
std::string DisplayAsText(int displayAs) { return NameOf(DisplayAsNames, displayAs, Language::German); }

}  // namespace velmora::store
