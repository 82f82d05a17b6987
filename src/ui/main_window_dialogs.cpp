// The dialogs that a command asks for, and what follows their OK.

#include "mailarchive/format/forms.h"
#include "ui/archive_tree_dialog.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/message_viewer.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

using panes::DialogKind;

// The path of the active pane's archive: "" while it shows files.
std::string ArchiveOf(panes::TwoPanes& panes) {
  if (panes.ActiveView() == panes::PaneView::RFSView) return {};
  const auto archive = panes.Archives(panes.ActiveView()).CurrentArchive();
  return archive == nullptr ? std::string() : archive->FullPath();
}

}  // namespace

void MainWindow::ShowMessage(const panes::MessageRequest& request) {
  const MessageViewer::Parts parts = {context_.fileSystem, context_.run.frontEnd(), context_.process.TempDir};
  const std::unique_ptr<MessageViewer> viewer = MessageViewer::Open(parts, request, this);
  if (viewer != nullptr) viewer->exec();
}

void MainWindow::ShowDialog(const panes::Outcome& outcome) {
  switch (outcome.Dialog) {
    case DialogKind::None:
      return;
    case DialogKind::Filter:
      return OpenFilter();
    case DialogKind::Options:
      return OpenOptions();
    case DialogKind::ChangeServer:
      return OpenChangeServer();
    case DialogKind::CopyMove:
      return OpenCopyMove(*outcome.Export);
    case DialogKind::Prepared:
      return ShowPrepared(outcome.Prepared);
    case DialogKind::SetMarker:
      return OpenMarker();
    case DialogKind::NewArchive:
      return OpenNewArchive();
    case DialogKind::Pattern:
      return OpenPattern(*outcome.PatternAction);
    case DialogKind::AddressExport:
      return OpenAddressExport();
    case DialogKind::ArchiveTree:
      return OpenArchiveTree();
    case DialogKind::About:
      return ShowAboutBox(context_.process.Version, this);
    case DialogKind::SystemInformation:
      return OpenSystemInformation();
  }
}

void MainWindow::OpenFilter() {
  panes::FilterDialog model(context_.options, context_.session.IsAdministrator());
  const FilterAnswer answer = ShowFilterDialog(model, context_.prompts(), this);
  if (answer.IsOk) return Apply(panes::RunFilterOk(commands_, answer.Changed));
  // The box for hidden entries has taken effect all the same.
  panes::Outcome warning;
  warning.FilterChanged = true;
  Apply(std::move(warning));
}

void MainWindow::OpenOptions() {
  panes::OptionsDialog model(context_.fileSystem, context_.options, context_.session,
                             context_.process.IsOsAdministrator);
  if (const auto answer = ShowOptionsDialog(model, context_.run.frontEnd(), this)) {
    Apply(panes::RunOptionsOk(commands_, *answer));
  }
}

void MainWindow::OpenChangeServer() {
  panes::ChangeServerDialog model(context_.options.DvServer, context_.session.ServerName);
  if (const auto server = ShowChangeServerDialog(model, this)) {
    Apply(panes::RunChangeServer(commands_, *server));
  }
}

void MainWindow::OpenUserInfo(QWidget* parent) {
  panes::FormUserInfoDialog model(context_.options, formTexts_);
  (void)ShowFormUserInfoDialog(model, parent);  // OK has stored the texts
}

void MainWindow::OpenCopyMove(const panes::CopyMoveDialog::Parts& parts) {
  panes::CopyMoveDialog model(parts);
  const auto showUserInfo = [this](QWidget* parent) { OpenUserInfo(parent); };
  if (const auto request = ShowCopyMoveDialog(model, context_.run.frontEnd(), showUserInfo, this)) {
    Apply(panes::RunCopyMove(commands_, *request));
  }
}

void MainWindow::OpenMarker() {
  panes::MailArcMarkerDialog model(context_.fileSystem, context_.options, formTexts_,
                                   context_.process.CurrentPath);
  const auto showUserInfo = [this](QWidget* parent) { OpenUserInfo(parent); };
  if (ShowMarkerDialog(model, context_.prompts(), showUserInfo, this)) Apply(panes::RunMarkerSet(commands_));
}

void MainWindow::OpenNewArchive() {
  panes::NewArchiveDialog model;
  if (const auto request = ShowNewArchiveDialog(model, this)) {
    Apply(panes::RunNewArchive(commands_, *request));
  }
}

void MainWindow::OpenPattern(panes::SelectionAction action) {
  panes::PatternDialog model(action, patterns_);
  if (const auto pattern = ShowPatternDialog(model, this)) {
    Apply(panes::RunPattern(commands_, action, *pattern, Marks()));
  }
}

void MainWindow::OpenAddressExport() {
  addresses::AddressExportDialog model(context_.fileSystem, context_.options);
  const AddressDialogPlace place = {ArchiveOf(twoPanes_), context_.process.CurrentPath,
                                    designs_.FormPath(mailarchive::Form::ExcelAddressSheet)};
  if (const auto request = ShowAddressExportDialog(model, place, context_.run.frontEnd(), this)) {
    Apply(panes::RunAddressExport(commands_, *request));
  }
}

void MainWindow::OpenArchiveTree() {
  ArchiveTreeDialog dialog(context_.session, this);
  const panes::PaneView view = twoPanes_.ActiveView() == panes::PaneView::RZEBView
                                   ? panes::PaneView::RZEBView
                                   : panes::PaneView::LZEBView;
  dialog.SelectArchive(twoPanes_.Archives(view).CurrentArchive()->ID());
  dialog.ShowSync(context_.options.RefreshArchiveSyncToTreeView,
                  [this, view](const std::string& id) { EnterPath(view, ToQt(id)); });
  const bool isOk = dialog.exec() == QDialog::Accepted;
  context_.options.RefreshArchiveSyncToTreeView = dialog.IsSyncOn();
  if (isOk) EnterPath(view, ToQt(dialog.SelectedId()));
}

void MainWindow::OpenSystemInformation() {
  const std::string log = context_.run.ErrorLogPath();
  const std::string config = context_.fileSystem.FromHostPath(context_.process.Directories.Config);
  const panes::InformationPlaces places = {log, context_.process.TempDir, context_.options.DesignPath,
                                           config};
  ShowSystemInformation(panes::SystemInformation(context_.session, context_.process.Version, places), this);
}

}  // namespace velmora::ui
