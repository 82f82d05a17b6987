// The export of one address: a record of the directory's address book, or a vCard of its own.
#pragma once

#include <string_view>

#include "addresses/address_record.h"
#include "mailarchive/address_book.h"
#include "mailarchive/entry_export.h"

namespace velmora::mailarchive {

class AddressExport final : public EntryExport {
 public:
  AddressExport(const ExportContext& context, const FormUserTexts& userTexts, ExportPlace& place,
                store::DvAddressItem& address)
      : EntryExport(context, userTexts, place, address.Item()), address_(address) {}

  void ReadValues() override;

 private:
  void WriteEntry(bool failed, std::string_view statusText) override;
  bool LeavesDescriptor() const override { return false; }
  void WriteVCard(const addresses::AddressRecord& record);

  store::DvAddressItem& address_;
};

}  // namespace velmora::mailarchive
