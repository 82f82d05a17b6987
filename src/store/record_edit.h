// Changes to the text area of a record that keep everything else of it, byte for byte.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/result.h"
#include "store/archive_record.h"

namespace velmora::store {

// The entry's record under another name: the text area of `source` with the new name in the place of the old
// one, head and tail of `fixedParts` (often `source` itself). The area is not extended: the name is cut to
// fit, and what it pushes out of the area is lost. An item that is cut keeps a NUL at its end.
// store_error::BadName when the path leaves no room for a name.
Result<DirRecord> RebuildRecord(const DirRecord& source, const DirRecord& fixedParts, std::string_view name);

struct PathReplacement {
  std::string Old, New;
};

// Puts new paths in the place of old ones in the record's directory, one pair after the other, wherever they
// occur, without regard to case; an occurrence ends where the path does or at a "\", so that `A\B` is not
// found in `A\BC`. Items behind the directory move, and what falls outside the area is cut. True when a pair
// occurred. Nothing happens to a record without a directory; store_error::BadName, and the record is as it
// was, when the new directory does not fit.
Result<bool> ReplaceRecordPath(DirRecord& record, std::span<const PathReplacement> replacements);

}  // namespace velmora::store
