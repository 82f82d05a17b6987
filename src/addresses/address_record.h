// An address as the address formats write it: 26 text fields, and what the vCard takes from the item itself.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"
#include "store/address_item.h"

namespace velmora::addresses {

inline constexpr std::size_t FieldCount = 26;

// The fields in the order of the delimited file's columns.
namespace field {
inline constexpr std::size_t DisplayName = 0, Fax = 1, LastName = 2, FirstName = 3, Initials = 4,
                             Salutation = 5, Title = 6, Birthday = 7, Company = 8, Street = 9,
                             PostalCode = 10, City = 11, Country = 12, State = 13, WebSite = 14,
                             BusinessPhone = 15, HomePhone = 16, MobilePhone = 17, SecondFax = 18, EMail = 19,
                             VoiceBox = 20, Pager = 21, Notes = 22, Categories = 23, SecondEMail = 24,
                             PdaCategory = 25;
}  // namespace field

// The names of the columns, in their order; also the columns of the Excel sheet.
inline constexpr std::array<std::string_view, FieldCount> ColumnNames = {
    "Anzeigename", "Fax",          "Nachname",   "Vorname",  "Initialen",    "Anrede", "Titel",
    "Geburtstag",  "Firma",        "Straße",     "PLZ",      "Ort",          "Land",   "Bundesland",
    "WebSite",     "Geschäftlich", "Privat",     "Mobil",    "AltFax",       "EMail",  "VoiceBox",
    "SMS_Pager",   "Kommentar",    "Kategorien", "AltEMail", "PDA_Kategorie"};

struct AddressRecord {
  std::array<std::string, FieldCount> Fields;  // without line breaks
  std::string Subject;                         // of the entry
  std::string Notes;                           // as the item has them, with line breaks
  std::uint32_t Categories = 0;                // the mask
  int DefaultAddress = 0;
};

// Reads every property; fails with the store's error.
Result<AddressRecord> ReadAddressRecord(store::DvAddressItem& address);

// Bits 0 to 15 as "1" or "0", joined by ",": bit 0 first.
std::string CategoryMaskToText(std::uint32_t categories);

}  // namespace velmora::addresses
