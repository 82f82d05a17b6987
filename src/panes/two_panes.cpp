#include "panes/two_panes.h"

#include <fmt/core.h>

#include "base/paths.h"

namespace velmora::panes {

TwoPanes::TwoPanes(const PaneContext& context)
    : context_(context),
      left_(PaneView::LZEBView, context_, icons_),
      right_(PaneView::RZEBView, context_, icons_),
      files_(context_) {}

Pane& TwoPanes::Of(PaneView view) {
  if (view == PaneView::RFSView) return files_;
  return Archives(view);
}

void TwoPanes::SignedOn() {
  icons_ = ArchiveIcons(context_.session);
  left_.ForgetPlaces();
  right_.ForgetPlaces();
}

bool TwoPanes::RefreshAll() {
  const bool left = left_.Refresh();
  const bool right = ShowsFiles() ? files_.Refresh() : right_.Refresh();
  return left && right;
}

bool TwoPanes::ShowsFiles() const { return context_.options.ViewMode == view_mode::FileSystem; }

void TwoPanes::ToggleViewMode() { SetViewMode(ShowsFiles() ? view_mode::Archive : view_mode::FileSystem); }

void TwoPanes::SetViewMode(int mode) {
  if (mode == context_.options.ViewMode) return;
  context_.options.ViewMode = mode;
  if (ShowsFiles()) context_.options.RZEBViewMode = 0;
  SetActiveView(active_);
  (void)(ShowsFiles() ? files_.Refresh() : right_.RefreshNearest());  // a failure has been reported
}

void TwoPanes::SetActiveView(PaneView view) {
  if (view != PaneView::LZEBView) view = ShowsFiles() ? PaneView::RFSView : PaneView::RZEBView;
  active_ = view;
}

void TwoPanes::ActivateOther() {
  SetActiveView(active_ == PaneView::LZEBView ? PaneView::RZEBView : PaneView::LZEBView);
}

void TwoPanes::TogglePropertyView(PaneView view) {
  if (view == PaneView::RFSView) return;
  const bool isLeft = view == PaneView::LZEBView;
  auto& mode = isLeft ? context_.options.LZEBViewMode : context_.options.RZEBViewMode;
  auto& other = isLeft ? context_.options.RZEBViewMode : context_.options.LZEBViewMode;
  mode = mode == 0 ? 1 : 0;
  if (mode != 0) other = 0;
}

bool TwoPanes::ArcDirSync() {
  const auto archive = left_.CurrentArchive();
  if (archive == nullptr || !files_.ShowDirectory(NormalizePath(archive->ID()))) return false;
  if (ShowsFiles()) return true;
  context_.options.ViewMode = view_mode::FileSystem;
  context_.options.RZEBViewMode = 0;
  SetActiveView(active_);
  return true;
}

bool TwoPanes::DirArcSync() {
  const auto directory = StripBackslash(context_.CurrentPath);
  if (context_.session.Account == nullptr) return false;
  auto archive = context_.session.Account->GetArchive(directory);
  if (archive) return left_.ShowArchive(*std::move(archive));
  context_.run.frontEnd().prompts.Message(
      "Unbekanntes Verzeichnis",
      fmt::format("Das Verzeichnis {} ist kein ZEB-Archiv oder es besteht kein Zugriffsrecht.", directory),
      run::Icon::Exclamation);
  return false;
}

bool TwoPanes::Swap() {
  if (ShowsFiles()) return false;
  left_.Swap(right_);
  return true;
}

bool TwoPanes::TakeOver(PaneView into) {
  if (ShowsFiles() || into == PaneView::RFSView) return false;
  const auto archive =
      Archives(into == PaneView::LZEBView ? PaneView::RZEBView : PaneView::LZEBView).CurrentArchive();
  // Each pane has an object of its own.
  return archive != nullptr && Archives(into).ShowArchive(std::string_view(archive->ID()));
}

}  // namespace velmora::panes
