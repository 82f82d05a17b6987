#include "mailarchive/address_export.h"

#include "addresses/vcard.h"
#include "base/code_page.h"
#include "base/text.h"
#include "mailarchive/format/file_names.h"

namespace velmora::mailarchive {

void AddressExport::ReadValues() {
  subject_ = Trim(TextField(store::tag::Subject));
  sendStatus_ = static_cast<int>(NumberField(store::tag::SendStatus));
}

void AddressExport::WriteEntry(bool, std::string_view) {
  const auto record = addresses::ReadAddressRecord(address_);
  if (!record) {
    files_.SetIncomplete();
    if (IsAdministrator()) {
      context_.run.LogError(place_.ArchivePath() + " vID falsch", record.error().Number,
                            "DvISE-Error " + record.error().Text, run::Severity::Error);
    }
    return;
  }
  if (options_.AddressFormat == addresses::AddressFormat::VCard) {
    WriteVCard(*record);
  } else {
    place_.Addresses().Add(*record, item_.Key());
  }
  ++context_.run.counters.Addresses;  // whether it could be written or not
}

void AddressExport::WriteVCard(const addresses::AddressRecord& record) {
  const std::string prefix = place_.FolderPrefix(Component::VCards);
  if (!options_.NumbersNames()) {
    // Without numbering a vCard has never had a name, so none is written and each failure is told.
    files_.LogFailure(
        prefix, {platform::file_error::BadName, platform::FileErrorText(platform::file_error::BadName) +
                                                    ": VCards werden nur mit der Option dstnum gespeichert"});
    return;
  }
  const std::string fileName = EntryBaseName(record.Fields[addresses::field::DisplayName]) + ".vcf";
  const std::string card = addresses::FormatVCard(record, context_.run.clock().Now());
  const auto path =
      files_.Write(Component::VCards, files_.FreeName(prefix, fileName),
                   [&](const std::string& target, platform::Create mode) {
                     platform::WriteOptions undated;
                     undated.Mode = mode;
                     return context_.run.fileSystem().WriteFile(target, ToCodePage(card), undated);
                   });
  if (!path) return;
  if (FitsCodePage(card)) return AskForDeletion();
  place_.Addresses().NoteLossyCard();  // what it could not hold is still in the store only
}

}  // namespace velmora::mailarchive
