// The numbers of the store and their names: English ones for the raw property lists, German ones for the
// readable lists. All decoders are pure. Where a text begins with ", " or a list of week days, the caller
// cuts what it does not want: two characters, three of the week days.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::store {

// True when all bits of `mask` are set.
constexpr bool TestBit(std::uint32_t value, std::uint32_t mask) { return (value & mask) == mask; }

// --- Item types. ---

namespace item_type {
inline constexpr int Address = 1, EMail = 2, Fax = 3, SMS = 4, Voice = 5, TMail = 6, Calendar = 7, Link = 8,
                     Video = 9, Audio = 10, TVProgram = 11, Task = 12;
}  // namespace item_type

// Derived from the fields of an e-mail, see display_type.h; the store knows them not.
namespace display_type {
inline constexpr int ModuleStart = 0x3EF, ModuleEnd = 0x3F0, SystemMessage = 0x41C, SystemInfo = 0x41E,
                     Note = 0x42C, ExternalDocument = 0x42D, Document = 0x430, DFML = 0x818;
}  // namespace display_type

struct ItemTypeRow {
  int Type;
  std::string_view Name;
  std::string_view IconKey;
  int IconVariant;  // 0: the icon of the item type
};

// Item types and display types.
inline constexpr auto ItemTypes = std::to_array<ItemTypeRow>({
    {item_type::Address, "DvAddressItem", "IAddress", 0},
    {item_type::EMail, "DvEMailItem", "IMail", 0},
    {item_type::Fax, "DvFaxItem", "IFax", 0},
    {item_type::SMS, "DvSMSItem", "ISMS", 0},
    {item_type::Voice, "DvVoiceItem", "IVoiceMail", 0},
    {item_type::TMail, "DvTMailItem", "ITMail", 0},
    {item_type::Calendar, "DvCalendarItem", "ITermin", 0},
    {item_type::Link, "DvLinkItem", "ILink", 0},
    {item_type::Video, "DvVideoItem", "IVideo", 0},
    {item_type::Audio, "DvAudioItem", "IAudio", 0},
    {item_type::TVProgram, "DvTVProgramItem", "ITvProg", 0},
    {item_type::Task, "DvTaskItem", "ITask", 0},
    {display_type::Document, "DvDocument", "IDocument", 2},
    {display_type::Note, "DvNote", "INote", 3},
    {display_type::ExternalDocument, "DvExtDoc", "IDocument", 2},
    {display_type::DFML, "DvDFML", "IDFML", 8},
    {display_type::SystemMessage, "DvUnknownItem", "ISysMsg", 4},
    {display_type::SystemInfo, "DvUnknownItem", "ISysInfo", 5},
    {display_type::ModuleStart, "DvUnknownItem", "IModStart", 6},
    {display_type::ModuleEnd, "DvUnknownItem", "IModTerm", 7},
});

std::string_view ItemTypeName(int type);  // "DvUnknownItem" for any other
// The key of the type's icon: "IUnknown" for any other, "IMailAtt" for an e-mail with attachments.
std::string_view ItemIconKey(int displayType, bool hasAttachments);
// The same as a position in ListImageKeys.
int ItemIconIndex(int displayType, bool hasAttachments);

// --- Bit fields. ---

namespace item_flag {
inline constexpr std::uint32_t UserInhibited = 0x800, Deleted = 0x400, Viewed = 0x100, Changed = 0x80,
                               Inhibited = 0x20, Printed = 0x10, Received = 0x08, Free = 0x01;
}  // namespace item_flag
std::string ItemFlagsEnglish(std::uint32_t flags);  // ", Viewed, Free (0x101)"
std::string ItemFlagsGerman(std::uint32_t flags);   // ", Gelesen, Frei"

namespace access_right {
inline constexpr std::uint32_t Read = 0x01, Write = 0x02, Create = 0x08, Delete = 0x10, SetOwner = 0x20,
                               Scan = 0x40, Modify = 0x80;
}  // namespace access_right
std::string RightsText(std::uint32_t accessRights);  // ", Read, Write (0x3)"

namespace attachment_flag {
inline constexpr std::uint32_t Crypted = 0x01, NotCrypted = 0x02, SelfExtracting = 0x04, InlineImage = 0x08,
                               MessageRfc822 = 0x10;
}  // namespace attachment_flag
std::string AttachmentFlagsText(std::uint32_t flags);  // "Crypted; Inline HTML image"

// An empty element, then the names of the set bits in rising order.
std::vector<std::string> CategoryNames(std::uint32_t categories);
// The names as a list of bits: ", So, Mo"; all working days and no other day: "   Alle Arbeitstage".
std::string WeekDayText(std::uint32_t days);

// --- Plain values; an empty text for any other. ---

std::string PriorityEnglish(int priority);  // "Low (0x1)"; any other value has the bracket alone
std::string PriorityGerman(int priority);
std::string TaskStatusText(int status);
std::string BusyStateEnglish(int state);
std::string BusyStateGerman(int state);
std::string RecurrenceRaw(int recurrence);  // German and English mixed, as the raw lists always had it
std::string RecurrenceGerman(int recurrence);
std::string RecurrenceKindEnglish(int kind);
std::string RecurrenceKindGerman(int kind);
std::string RecurrenceEndText(int end);

namespace display_as {
inline constexpr int Default = 0, InBox = 1, OutBox = 2, Jobs = 3, Address = 4, UserDefined = 5, Calendar = 6,
                     Link = 7, News = 8, HtmlLayout = 9, Task = 10, Media = 11, PBXpense = 12, Audio = 13,
                     SqlAddresses = 14, SqlVariable = 15, Picture = 16;
}  // namespace display_as
std::string DisplayAsText(int displayAs);

// --- Send status: the final status of a sent item. ---

namespace send_status {
inline constexpr int Sent = 0, Document = 72, Job = 76;
}  // namespace send_status

inline constexpr std::size_t SendStatusCount = 100;

struct SendStatusText {
  bool IsFailure = false;
  std::string_view English;
  std::string_view German;
};
// A status beyond the table is no failure and has no text.
SendStatusText SendStatus(std::int64_t status);

}  // namespace velmora::store
