// What a list shows of an entry, whatever its kind.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"
#include "store/item.h"

namespace velmora::cli {

struct AttachmentRow {
  std::string Name;
  std::int64_t Size;
  std::uint32_t Flags;
};

struct EntryRow {
  store::EntryKey Key = 0;
  int Type = 0;
  std::string Subject, From, To;
  DateTime Date;
  std::int64_t Flags = 0, Status = 0;
  std::vector<AttachmentRow> Attachments;
};

Result<EntryRow> ReadEntryRow(store::DvItem& item);

}  // namespace velmora::cli
