// The one table that tells where a field of an entry stands: its tags and names, and the column, flag bit,
// text or computation behind them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "store/embedded/entry_record.h"
#include "store/fields.h"

namespace velmora::store::embedded {

enum class FieldPlace {
  Column,
  FlagBit,          // a bit of the flags column, as a boolean
  Text,             // a big text in a table of its own, read only when asked for
  Key,              // the entry's key; read-only
  Location,         // made of the archive's present directory and the key; read-only
  HtmlRendition,    // made of the HTML text; read-only
  Recipients,       // the recipients of one role
  AttachmentCount,  // read-only
};

struct FieldInfo {
  FieldTag Tag = 0;  // 0: it has a name only
  std::string_view Name;
  std::string_view OtherName;  // a second name under which it is found, "" for none
  FieldPlace Place = FieldPlace::Column;
  Column Where = Column::Flags;            // of a column
  std::uint32_t Bit = 0;                   // of a flag bit
  RecipientRole Role = RecipientRole::To;  // of recipients

  bool IsReadOnly() const {
    return Place == FieldPlace::Key || Place == FieldPlace::Location || Place == FieldPlace::HtmlRendition ||
           Place == FieldPlace::AttachmentCount;
  }
};

// In the order of the tags, those without a tag first.
std::span<const FieldInfo> KnownFields();
// Null for a tag or name that is not known; names without regard to case.
const FieldInfo* FindField(FieldTag tag);
const FieldInfo* FindField(std::string_view name);

}  // namespace velmora::store::embedded
