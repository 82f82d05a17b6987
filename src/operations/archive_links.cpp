#include "operations/archive_links.h"

#include <fmt/core.h>

#include "base/paths.h"
#include "base/text.h"
#include "store/errors.h"

namespace velmora::operations {

Result<std::shared_ptr<store::DvArchive>> FindLink(store::DvArchive& parent, std::string_view targetId,
                                                   std::string_view name) {
  const auto subArchives = parent.SubArchives();
  if (!subArchives) return Fail(subArchives.error());
  const std::string wanted = NormalizePath(targetId);
  for (const auto& sub : *subArchives) {
    if (!sub->IsShortCut() || !EqualsFold(NormalizePath(sub->ID()), wanted)) continue;
    if (name.empty() || sub->DisplayName().value_or("") == name) return sub;
  }
  return Fail(store::store_error::NotFound,
              fmt::format("Die Verknüpfung \"{}\" ist nicht mehr vorhanden", name));
}

Result<std::shared_ptr<store::DvArchive>> OpenMarkedArchive(const Operation& operation,
                                                            const store::Selection& selection,
                                                            const store::Selection::Object& object) {
  if (!object.IsLink) return operation.session.Account->GetArchive(object.ArchivePath);
  // Without the list in which it stands a link is never taken for what it leads to.
  if (!selection.CurrentArchive) {
    return Fail(store::store_error::NotFound,
                fmt::format("Die Liste der Verknüpfung \"{}\" ist nicht bekannt", object.Name));
  }
  return FindLink(*selection.CurrentArchive, object.ArchivePath, object.Name);
}

}  // namespace velmora::operations
