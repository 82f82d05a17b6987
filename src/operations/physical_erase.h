// Deleting an archive by deleting its files, for what the object layer would take entry by entry.
#pragma once

#include "operations/operation.h"

namespace velmora::operations {

// Deletes the directories of the archive and of all archives that the tree shows below it, wherever they lie,
// and then the archive's record in its parent's list, so that nothing names what is gone. Links below go with
// the lists that hold them; what they lead to stays.
//
// Refused before anything is touched, with store_error::Protected, when one of these archives was made by the
// store itself; with store_error::NotEmpty when one of the directories holds that of an archive that belongs
// elsewhere in the tree; with store_error::Damaged when a list below cannot be read.
Status EraseArchiveDirectories(const Operation& operation, store::DvArchive& archive,
                               const store::DvArchive* parent);

}  // namespace velmora::operations
