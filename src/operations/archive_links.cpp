#include "operations/archive_links.h"

#include <fmt/core.h>

#include "base/paths.h"
#include "base/text.h"
#include "store/errors.h"

namespace velmora::operations {

Result<std::shared_ptr<store::DvArchive>> OpenMarkedArchive(const Operation& operation,
                                                            const store::Selection& selection,
                                                            const store::Selection::Object& object) {
  if (!object.IsLink) return operation.session.Account->GetArchive(object.ArchivePath);
  // Without the list in which it stands a link is never taken for what it leads to.
  if (!selection.CurrentArchive) {
    return Fail(store::store_error::NotFound,
                fmt::format("Die Liste der Verknüpfung \"{}\" ist nicht bekannt", object.Name));
  }
  const auto subArchives = selection.CurrentArchive->SubArchives();
  if (!subArchives) return Fail(subArchives.error());
  const std::string wanted = NormalizePath(object.ArchivePath);
  for (const auto& sub : *subArchives) {
    if (!sub->IsShortCut() || !EqualsFold(NormalizePath(sub->ID()), wanted)) continue;
    if (object.Name.empty() || sub->DisplayName().value_or("") == object.Name) return sub;
  }
  return Fail(store::store_error::NotFound,
              fmt::format("Die Verknüpfung \"{}\" ist nicht mehr vorhanden", object.Name));
}

}  // namespace velmora::operations
