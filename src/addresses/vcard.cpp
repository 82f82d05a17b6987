#include "addresses/vcard.h"

#include <fmt/format.h>

#include <string_view>

#include "addresses/birthday.h"
#include "base/text.h"

namespace velmora::addresses {
namespace {

constexpr std::string_view QuotedLineBreak = "=0D=0A";
// What stands for a birthday that is no date.
constexpr std::string_view NoBirthday = "19000000";

std::string CompactDate(DateTime date) {
  const CivilTime civil = date.Civil();
  return fmt::format("{:04}{:02}{:02}", civil.Year, civil.Month, civil.Day);
}

std::string CompactTime(DateTime date) {
  const CivilTime civil = date.Civil();
  return fmt::format("{:02}{:02}{:02}", civil.Hour, civil.Minute, civil.Second);
}

std::string BirthdayText(std::string_view text) {
  const auto date = ParseBirthday(text);
  return date ? CompactDate(*date) : std::string(NoBirthday);
}

// The only value with line breaks; a break of any form must not end the line.
std::string NotesText(std::string_view notes) {
  std::string text = ReplaceAll(notes, "\r\n", QuotedLineBreak);
  text = ReplaceAll(text, "\r", QuotedLineBreak);
  return BlankControlCharacters(ReplaceAll(text, "\n", QuotedLineBreak));
}

}  // namespace

std::string FormatVCard(const AddressRecord& address, DateTime now) {
  const auto value = [&](std::size_t column) -> std::string_view { return address.Fields[column]; };
  std::string card;
  const auto line = [&](std::string_view name, auto... values) {
    card += name;
    (card.append(std::string_view(values)), ...);
    card += "\r\n";
  };
  // Names in this case and values as they are, although two lines promise an encoding: the readers of these
  // cards have known them so for many years.
  line("BEGIN:VCard");
  line("VERSION:2.1");
  line("FN:", value(field::DisplayName));
  line("N:", value(field::LastName), ";", value(field::FirstName), ";", value(field::Initials), ";",
       value(field::Salutation));
  line("ORG:", value(field::Company));
  line("TITLE:", value(field::Title));
  line("TEL;WORK;VOICE:", value(field::BusinessPhone));
  line("TEL;HOME;VOICE:", value(field::HomePhone));
  line("TEL;CELL;VOICE:", value(field::MobilePhone));
  line("TEL;PAGER;VOICE:", value(field::Pager));
  line("TEL;WORK;FAX:", value(field::Fax));
  line("TEL;HOME;FAX:", value(field::SecondFax));
  line("X-DAVID-VoiceBox:", value(field::VoiceBox));
  line("X-DAVID-CATEGORY:", fmt::format("{}", address.Categories));
  line("X-DAVID-2EMAIL:", value(field::SecondEMail));
  line("X-DAVID-DEFAULTADDR:", fmt::format("{}", address.DefaultAddress));
  line("X-DAVID-PDACategory:", value(field::PdaCategory));
  line("EMAIL;PREF;INTERNET:", value(field::EMail));
  line("URL;WORK:", value(field::WebSite));
  line("ADR;WORK;ENCODING=QUOTED-PRINTABLE:;;", value(field::Street), ";", value(field::City), ";",
       value(field::State), ";", value(field::PostalCode), ";", value(field::Country));
  line("LABEL;WORK;ENCODING=QUOTED-PRINTABLE:", value(field::Street), QuotedLineBreak, ", ",
       value(field::City), " ", value(field::PostalCode), QuotedLineBreak, value(field::Country));
  line("BDAY:", BirthdayText(value(field::Birthday)));
  line("X-DAVID-BDAY:", value(field::Birthday));
  line("NOTE;ENCODING=QUOTED-PRINTABLE:", NotesText(address.Notes));
  line("REV:", CompactDate(now), "T", CompactTime(now), "Z");
  line("End:VCard");
  return card;
}

}  // namespace velmora::addresses
