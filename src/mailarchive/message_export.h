// The export of one entry of a store archive into a directory of the mail archive.
#pragma once

#include <memory>

#include "mailarchive/entry_export.h"
#include "mailarchive/export_place.h"
#include "mailarchive/user_names.h"
#include "store/item.h"

namespace velmora::mailarchive {

// One per run: holds what all messages of the run share.
class MessageExport {
 public:
  explicit MessageExport(const ExportContext& context);

  // Writes the files of one entry, and on a move deletes it once they all stand. Results go to the files, the
  // counters and the error log. Kinds of entries that a mail archive does not hold are passed over. Addresses
  // stand only when the place is finished.
  void ExportMessage(ExportPlace& place, store::EntryKey key);

 private:
  // The export of the entry's kind; null for a kind that the options pass over.
  std::unique_ptr<EntryExport> MakeExport(ExportPlace& place, store::DvItemView& view);
  void ExportEntry(EntryExport& entry);
  void ShowCounters();

  const ExportContext& context_;
  FormUserTexts userTexts_;
  UserNames userNames_;
};

}  // namespace velmora::mailarchive
