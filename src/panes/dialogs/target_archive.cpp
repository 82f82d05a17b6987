#include "panes/dialogs/target_archive.h"

#include <utility>

#include "base/text.h"

namespace velmora::panes {

TargetArchive::TargetArchive(store::DvAccount& account, std::shared_ptr<store::DvArchive> archive)
    : account_(account), archive_(std::move(archive)), text_(archive_ ? archive_->FullPath() : "") {}

void TargetArchive::Choose(run::Choosers& choosers, std::string_view title) {
  if (const auto path = choosers.ChooseArchive(title, text_)) text_ = *path;
}

std::shared_ptr<store::DvArchive> TargetArchive::Find(run::Prompts& prompts) const {
  const std::string path(Trim(text_));
  // A path finds the first archive of that name: the one of the pane is meant as long as its path stands.
  std::shared_ptr<store::DvArchive> target = archive_ && path == archive_->FullPath() ? archive_ : nullptr;
  if (!target && !path.empty()) target = account_.GetArchive(path).value_or(nullptr);
  if (target && target->IsShortCut()) target = account_.GetArchive(target->ID()).value_or(nullptr);
  if (!target) {
    prompts.Message("Falsches Zielarchiv",
                    "Das ausgewählte Zielarchiv existiert nicht oder es bestehen keine Zugriffsrechte.",
                    run::Icon::Stop);
  }
  return target;
}

}  // namespace velmora::panes
