// The typed view of an address.
#pragma once

#include <array>
#include <map>
#include <string>

#include "store/property_view.h"

namespace velmora::store {

enum class AddressProperty {
  DisplayName,
  FaxNumber,
  LastName,
  FirstName,
  MiddleInitial,
  Salutation,
  Title,
  Birthday,
  Company,
  Street,
  PostalCode,
  City,
  Country,
  State,
  WebAddress,
  BusinessPhone,
  HomePhone,
  MobilePhone,
  SecondFax,
  EMail,
  VoiceBox,
  Pager,
  Notes,
  Categories,
  SecondEMail,
  PdaCategory,
  DefaultAddress,
  AddressCategories,
  Photo,
};

// In the order of AddressProperty.
inline constexpr auto AddressProperties = std::to_array<PropertyInfo<AddressProperty>>({
    {AddressProperty::DisplayName, "DisplayName", PropertyKind::Text, "Anzeigename"},
    {AddressProperty::FaxNumber, "FaxNumber", PropertyKind::Text, "Fax"},
    {AddressProperty::LastName, "LastName", PropertyKind::Text, "Nachname"},
    {AddressProperty::FirstName, "FirstName", PropertyKind::Text, "Vorname"},
    {AddressProperty::MiddleInitial, "MiddleInitial", PropertyKind::Text, "2. Vorname"},
    {AddressProperty::Salutation, "Salutation", PropertyKind::Text, "Anrede"},
    {AddressProperty::Title, "Title", PropertyKind::Text, "Titel"},
    {AddressProperty::Birthday, "Birthday", PropertyKind::Text, "Geburtstag"},  // as a person wrote it
    {AddressProperty::Company, "Company", PropertyKind::Text, "Firma"},
    {AddressProperty::Street, "Street", PropertyKind::Text, "Straße"},
    {AddressProperty::PostalCode, "PostalCode", PropertyKind::Text, "PLZ"},
    {AddressProperty::City, "City", PropertyKind::Text, "Ort"},
    {AddressProperty::Country, "Country", PropertyKind::Text, "Land"},
    {AddressProperty::State, "State", PropertyKind::Text, "Bundesland"},
    {AddressProperty::WebAddress, "WebAddress", PropertyKind::Text, "Web-Site"},
    {AddressProperty::BusinessPhone, "BusinessPhone", PropertyKind::Text, "Geschäftlich"},
    {AddressProperty::HomePhone, "HomePhone", PropertyKind::Text, "Privat"},
    {AddressProperty::MobilePhone, "MobilePhone", PropertyKind::Text, "Mobile"},
    {AddressProperty::SecondFax, "SecondFax", PropertyKind::Text, "2.Fax"},
    {AddressProperty::EMail, "EMail", PropertyKind::Text, "eMail"},
    {AddressProperty::VoiceBox, "VoiceBox", PropertyKind::Text, "Voice-Box"},
    {AddressProperty::Pager, "Pager", PropertyKind::Text, "SMS/Pager"},
    {AddressProperty::Notes, "Notes", PropertyKind::Text, "Kommentar"},  // lines ended by CR LF
    {AddressProperty::Categories, "Categories", PropertyKind::Number,
     "Kategorien"},  // 16 bits, see CategoryNames
    {AddressProperty::SecondEMail, "SecondEMail", PropertyKind::Text, "2.eMail"},
    {AddressProperty::PdaCategory, "PdaCategory", PropertyKind::Text, "PDA-Kategorie"},
    {AddressProperty::DefaultAddress, "DefaultAddress", PropertyKind::Number, "Vorzugs-Nachrichtentyp"},
    {AddressProperty::AddressCategories, "AddressCategories", PropertyKind::Text, "Adress-Kategorien"},
    {AddressProperty::Photo, "Photo", PropertyKind::Text, "Foto"},  // name of a picture file
});

// The values of an address as texts; a property that is not there is empty.
using AddressValues = std::map<AddressProperty, std::string>;

class DvAddressItem : public DvPropertyView<AddressProperty> {
 public:
  DvAddressItem* AsAddress() override { return this; }
};

}  // namespace velmora::store
