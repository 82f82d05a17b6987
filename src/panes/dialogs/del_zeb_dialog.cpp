#include "panes/dialogs/del_zeb_dialog.h"

#include <algorithm>
#include <cstdint>

#include "panes/dialogs/selection_text.h"
#include "store/filter.h"

namespace velmora::panes {
namespace {

using Object = store::Selection::Object;

// The bracket at the end has no opening one, and so users know it.
constexpr std::string_view LinkedArchivesQuestion =
    "Die Option \"Verknüpfte Archive einbeziehen\" ist aktiviert.\r\n"
    "Sollen die verknüpften Archive wirklich mit gelöscht werden?\r\n"
    "Ja=Löschen inklusive verknüpfter Archive\r\n"
    "Nein=Löschen ohne verknüpfte Archive\r\n"
    "Abbrechen=Abbruch)";

}  // namespace

DelZEBDialog::DelZEBDialog(const Parts& parts) : parts_(parts) {
  choices_.EnDelArchives = parts.options.DeleteArchive && parts.MayDeleteArchives;
}

std::string DelZEBDialog::NothingMarked() const {
  const bool mayDeleteAny = std::ranges::any_of(parts_.Selection.Objects, [&](const Object& object) {
    return object.kind == Object::Kind::Message || parts_.MayDeleteArchives;
  });
  return mayDeleteAny ? "" : std::string(NothingToDelete);
}

std::string DelZEBDialog::SourceText() const {
  return DeletionText(CountText(parts_.Selection), parts_.Selection.CurrentArchive->FullPath());
}

bool DelZEBDialog::HasFilter() const {
  return store::IsFilterActive(static_cast<std::uint32_t>(parts_.options.DvItemFilter),
                               parts_.options.DvInhibitItems);
}

bool DelZEBDialog::IsEnabled(DelZEBBox box) const {
  switch (box) {
    case DelZEBBox::EnDelArchives:
      return parts_.MayDeleteArchives;
    case DelZEBBox::EnPhysErase:
      return choices_.EnDelArchives && !HasFilter();
    case DelZEBBox::EnLinkedArcs:
      break;
  }
  return true;
}

void DelZEBDialog::SetBox(DelZEBBox box, bool checked) {
  if (IsEnabled(box)) choices_.*OptionOf(box) = checked;
}

std::optional<DelZEBRequest> DelZEBDialog::Ok(run::Prompts& prompts) {
  if (const std::string reason = NothingMarked(); !reason.empty()) {
    prompts.Message("Fehler", reason, run::Icon::Exclamation);
    return std::nullopt;
  }
  operations::StoreDeleteOptions options = choices_;
  options.EnPhysErase = choices_.EnPhysErase && IsEnabled(DelZEBBox::EnPhysErase);
  if (options.EnLinkedArcs) {
    const run::Answer answer =
        prompts.Question("Warnung", LinkedArchivesQuestion, run::Buttons::YesNoCancel, run::Answer::No);
    if (answer != run::Answer::Yes && answer != run::Answer::No) return std::nullopt;
    options.EnLinkedArcs = answer == run::Answer::Yes;
  }
  return DelZEBRequest{options, parts_.Selection};
}

}  // namespace velmora::panes
