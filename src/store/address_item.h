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
    {AddressProperty::DisplayName, "DisplayName", PropertyKind::Text},
    {AddressProperty::FaxNumber, "FaxNumber", PropertyKind::Text},
    {AddressProperty::LastName, "LastName", PropertyKind::Text},
    {AddressProperty::FirstName, "FirstName", PropertyKind::Text},
    {AddressProperty::MiddleInitial, "MiddleInitial", PropertyKind::Text},
    {AddressProperty::Salutation, "Salutation", PropertyKind::Text},
    {AddressProperty::Title, "Title", PropertyKind::Text},
    {AddressProperty::Birthday, "Birthday", PropertyKind::Text},  // as a person wrote it
    {AddressProperty::Company, "Company", PropertyKind::Text},
    {AddressProperty::Street, "Street", PropertyKind::Text},
    {AddressProperty::PostalCode, "PostalCode", PropertyKind::Text},
    {AddressProperty::City, "City", PropertyKind::Text},
    {AddressProperty::Country, "Country", PropertyKind::Text},
    {AddressProperty::State, "State", PropertyKind::Text},
    {AddressProperty::WebAddress, "WebAddress", PropertyKind::Text},
    {AddressProperty::BusinessPhone, "BusinessPhone", PropertyKind::Text},
    {AddressProperty::HomePhone, "HomePhone", PropertyKind::Text},
    {AddressProperty::MobilePhone, "MobilePhone", PropertyKind::Text},
    {AddressProperty::SecondFax, "SecondFax", PropertyKind::Text},
    {AddressProperty::EMail, "EMail", PropertyKind::Text},
    {AddressProperty::VoiceBox, "VoiceBox", PropertyKind::Text},
    {AddressProperty::Pager, "Pager", PropertyKind::Text},
    {AddressProperty::Notes, "Notes", PropertyKind::Text},              // lines ended by CR LF
    {AddressProperty::Categories, "Categories", PropertyKind::Number},  // 16 bits, see CategoryNames
    {AddressProperty::SecondEMail, "SecondEMail", PropertyKind::Text},
    {AddressProperty::PdaCategory, "PdaCategory", PropertyKind::Text},
    {AddressProperty::DefaultAddress, "DefaultAddress", PropertyKind::Number},
    {AddressProperty::AddressCategories, "AddressCategories", PropertyKind::Text},
    {AddressProperty::Photo, "Photo", PropertyKind::Text},  // name of a picture file
});

// The values of an address as texts; a property that is not there is empty.
using AddressValues = std::map<AddressProperty, std::string>;

class DvAddressItem : public DvPropertyView<AddressProperty> {
 public:
  DvAddressItem* AsAddress() override { return this; }
};

}  // namespace velmora::store
