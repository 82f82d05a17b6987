// The export of one entry of a store archive into a directory of the mail archive.
#pragma once

#include "mailarchive/export_place.h"
#include "mailarchive/mail_export.h"
#include "store/item.h"

namespace velmora::mailarchive {

// One per run: holds what all messages of the run share.
class MessageExport {
 public:
  explicit MessageExport(const ExportContext& context);

  // Writes the files of one entry, and on a move deletes it once they all stand. Results go to the files, the
  // counters and the error log. Kinds of entries that a mail archive does not hold are passed over.
  void ExportMessage(ExportPlace& place, store::EntryKey key);

 private:
  void ExportMail(ExportPlace& place, store::DvMailItem& mail);
  void ShowCounters();

  const ExportContext& context_;
  FormUserTexts userTexts_;
};

}  // namespace velmora::mailarchive
