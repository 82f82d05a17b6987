// GroupWise address books (.nab): a line that names the columns by tag and label, then a record per address.
// A record begins with its type and holds a value for each of 34 tags.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "addresses/address_record.h"

namespace velmora::addresses {

inline constexpr std::size_t NoField = static_cast<std::size_t>(-1);

// A column: what a reader puts it into, and what a writer joins to that field with ",".
struct TagField {
  std::string_view Tag, Label;
  std::size_t Field = NoField;   // of AddressRecord; NoField: left empty, and passed over by a reader
  std::size_t Joined = NoField;  // a second field in the same column
};

// In the order of the tag map. 8000001E stands twice: the format gives "Inhalt" and "URL" one tag, and a
// reader tells them apart by their order.
inline constexpr auto TagFieldTable = std::to_array<TagField>({
    {"3001001E", "Name", field::DisplayName},
    {"3A08001E", "Telefonnummer (Büro)", field::BusinessPhone},
    {"3A18001E", "Abteilung"},
    {"3A23001E", "Faxnummer", field::Fax, field::SecondFax},
    {"3003001E", "Email-Adresse", field::EMail, field::SecondEMail},
    {"3A06001E", "Vorname", field::FirstName, field::Initials},
    {"3A11001E", "Nachname", field::LastName},
    {"3A17001E", "Titel", field::Title},
    {"3A29001E", "Adresse", field::Street},
    {"3A27001E", "Ort", field::City},
    {"3A28001E", "Bundesland", field::State},
    {"3A26001E", "Land", field::Country},
    {"3A2A001E", "Postleitzahl", field::PostalCode},
    {"3002001E", "Email-Typ"},
    {"3A19001E", "Postverteiler"},
    {"3A09001E", "Telefonnummer (Privat)", field::HomePhone},
    {"3A1C001E", "Mobiltelefonnummer", field::MobilePhone},
    {"3A21001E", "Pager-Nummer", field::Pager},
    {"3A1A001E", "Telefonnummer"},
    {"600B001E", "Anrede", field::Salutation},
    {"600F001E", "Eigentümer"},
    {"3A16001E", "Organisation", field::Company},
    {"3004001E", "Kommentar", field::Notes},  // birthday and voice box on lines of their own behind it
    {"3A00001E", "Benutzer-ID"},
    {"6604001E", "Domäne"},
    {"6609001E", "Zusatzleitweg"},
    {"6605001E", "Post-Office"},
    {"6603001E", "GUID"},
    {"6607001E", "Eindeutiger NDS-Name"},
    {"6608001E", "Netzwerk-ID"},
    {"660D001E", "Internet-Domäne"},
    {"660E001E", "AIM/IM-Benutzername"},
    {"8000001E", "Inhalt"},
    {"8000001E", "URL", field::WebSite},
});

// The first line, which names the columns, and a record, without their ends, as UTF-8. The comment column of
// a record holds real line ends inside its quotes.
std::string GroupWiseTagMap(std::string_view separator);
std::string GroupWiseLine(const AddressRecord& address, std::string_view separator);

}  // namespace velmora::addresses
