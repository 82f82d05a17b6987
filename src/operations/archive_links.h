// Links as they stand in the list of an archive: what is marked there is the link, not the archive that it
// leads to.
#pragma once

#include <memory>
#include <string_view>

#include "operations/operation.h"
#include "store/selection.h"

namespace velmora::operations {

// The link in the list of `parent` that leads to the directory `targetId` and has that name; with "" the
// first that leads there. NotFound when it is there no more.
Result<std::shared_ptr<store::DvArchive>> FindLink(store::DvArchive& parent, std::string_view targetId,
                                                   std::string_view name);

// The archive that a marked object stands for; of a link the link as its parent lists it, so that deleting it
// removes no more than its record. NotFound when it is there no more.
Result<std::shared_ptr<store::DvArchive>> OpenMarkedArchive(const Operation& operation,
                                                            const store::Selection& selection,
                                                            const store::Selection::Object& object);

}  // namespace velmora::operations
