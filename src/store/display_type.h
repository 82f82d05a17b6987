// What an entry is shown as: its item type, or for an e-mail the display type that its fields make of it.
#pragma once

#include <cstdint>

#include "store/vocabulary.h"

namespace velmora::store {

// The fields that decide, as numbers; 0 for one that the entry does not have.
struct DisplayTypeFields {
  int ItemType = 0;
  std::uint32_t Flags = 0;          // tag::Flags
  std::uint32_t MailFlags = 0;      // tag::MailFlags
  std::uint32_t SendStatus = 0;     // tag::SendStatus
  std::int64_t DisplayVariant = 0;  // tag::DisplayVariant
  std::uint32_t DocumentFlags = 0;  // tag::DocumentFlags
};

constexpr int DisplayTypeOf(const DisplayTypeFields& fields) {
  constexpr std::uint32_t dfmlBit = 0x100000, documentBit = 0x40, externalDocumentBit = 0x40;
  if (fields.ItemType != item_type::EMail) return fields.ItemType;
  if (TestBit(fields.MailFlags, dfmlBit)) return display_type::DFML;
  if (TestBit(fields.SendStatus, documentBit) && TestBit(fields.Flags, item_flag::Free))
    return display_type::Document;
  if (TestBit(fields.DocumentFlags, externalDocumentBit)) return display_type::ExternalDocument;

  struct Variant {
    std::int64_t Value;
    int DisplayType;
  };
  constexpr Variant variants[] = {{-52, display_type::SystemMessage},
                                  {0x44, display_type::Note},
                                  {-54, display_type::SystemInfo},
                                  {7, display_type::ModuleStart},
                                  {8, display_type::ModuleEnd}};
  for (const Variant& variant : variants)
    if (variant.Value == fields.DisplayVariant) return variant.DisplayType;
  return fields.ItemType;
}

}  // namespace velmora::store
