// Links among the objects of a selection: what is marked is the link, not the archive that it leads to.
#pragma once

#include <memory>

#include "operations/operation.h"
#include "store/selection.h"

namespace velmora::operations {

// The archive that a marked object stands for; of a link the link as its parent lists it, so that deleting it
// removes no more than its record. NotFound when it is there no more.
Result<std::shared_ptr<store::DvArchive>> OpenMarkedArchive(const Operation& operation,
                                                            const store::Selection& selection,
                                                            const store::Selection::Object& object);

}  // namespace velmora::operations
