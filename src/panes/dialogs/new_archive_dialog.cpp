#include "panes/dialogs/new_archive_dialog.h"

#include "base/text.h"

namespace velmora::panes {

bool NewArchiveDialog::OkEnabled() const {
  return !Trim(request_.Name).empty() || !Trim(request_.Directory).empty();
}

std::optional<NewArchiveRequest> NewArchiveDialog::Ok() const {
  if (!OkEnabled()) return std::nullopt;
  return NewArchiveRequest{std::string(Trim(request_.Name)), std::string(Trim(request_.Directory))};
}

}  // namespace velmora::panes
