// The dialogs that a command asks for, and what follows their OK.

#include "mailarchive/format/forms.h"
#include "panes/archive_nodes.h"
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
  run::FrontEnd front = context_.run.frontEnd();
  const auto showUserInfo = [this](QWidget* parent) {
    panes::FormUserInfoDialog model(context_.options, formTexts_);
    (void)ShowFormUserInfoDialog(model, parent);  // OK has stored the texts
  };
  switch (outcome.Dialog) {
    case DialogKind::None:
      return;
    case DialogKind::Filter: {
      panes::FilterDialog model(context_.options, context_.session.IsAdministrator());
      const FilterAnswer answer = ShowFilterDialog(model, front.prompts, this);
      if (answer.IsOk) {
        Apply(panes::RunFilterOk(commands_, answer.Changed));
      } else {
        // The box for hidden entries has taken effect all the same.
        panes::Outcome warning;
        warning.FilterChanged = true;
        Apply(std::move(warning));
      }
      return;
    }
    case DialogKind::Options: {
      panes::OptionsDialog model(context_.fileSystem, context_.options, context_.session,
                                 context_.process.IsOsAdministrator);
      if (const auto answer = ShowOptionsDialog(model, front, this)) {
        Apply(panes::RunOptionsOk(commands_, *answer));
      }
      return;
    }
    case DialogKind::ChangeServer: {
      panes::ChangeServerDialog model(context_.options.DvServer, context_.session.ServerName);
      if (const auto server = ShowChangeServerDialog(model, this)) {
        Apply(panes::RunChangeServer(commands_, *server));
      }
      return;
    }
    case DialogKind::CopyMove: {
      panes::CopyMoveDialog model(*outcome.Export);
      if (const auto request = ShowCopyMoveDialog(model, front, showUserInfo, this)) {
        Apply(panes::RunCopyMove(commands_, *request));
      }
      return;
    }
    case DialogKind::Prepared:
      ShowPrepared(outcome.Prepared);
      return;
    case DialogKind::SetMarker: {
      panes::MailArcMarkerDialog model(context_.fileSystem, context_.options, formTexts_,
                                       context_.process.CurrentPath);
      if (ShowMarkerDialog(model, front.prompts, showUserInfo, this)) Apply(panes::RunMarkerSet(commands_));
      return;
    }
    case DialogKind::NewArchive: {
      panes::NewArchiveDialog model;
      if (const auto request = ShowNewArchiveDialog(model, this)) {
        Apply(panes::RunNewArchive(commands_, *request));
      }
      return;
    }
    case DialogKind::Pattern: {
      panes::PatternDialog model(*outcome.PatternAction, patterns_);
      if (const auto pattern = ShowPatternDialog(model, this)) {
        Apply(panes::RunPattern(commands_, *outcome.PatternAction, *pattern, Marks()));
      }
      return;
    }
    case DialogKind::AddressExport: {
      addresses::AddressExportDialog model(context_.fileSystem, context_.options);
      const AddressDialogPlace place = {ArchiveOf(twoPanes_), context_.process.CurrentPath,
                                        designs_.FormPath(mailarchive::Form::ExcelAddressSheet)};
      if (const auto request = ShowAddressExportDialog(model, place, front, this)) {
        Apply(panes::RunAddressExport(commands_, *request));
      }
      return;
    }
    case DialogKind::ArchiveTree: {
      ArchiveTreeDialog dialog(context_.session, this);
      const panes::PaneView view = twoPanes_.ActiveView() == panes::PaneView::RZEBView
                                       ? panes::PaneView::RZEBView
                                       : panes::PaneView::LZEBView;
      dialog.SelectArchive(twoPanes_.Archives(view).CurrentArchive()->ID());
      dialog.ShowSync(context_.options.RefreshArchiveSyncToTreeView,
                      [this, view](const std::string& id) { EnterPath(view, ToQt(id)); });
      const bool isOk = dialog.exec() == QDialog::Accepted;
      context_.options.RefreshArchiveSyncToTreeView = dialog.IsSyncOn();
      if (isOk) EnterPath(view, ToQt(dialog.SelectedPath()));
      return;
    }
    case DialogKind::About:
      ShowAboutBox(context_.process.Version, this);
      return;
    case DialogKind::SystemInformation: {
      const std::string log = context_.run.ErrorLogPath();
      const std::string config = context_.fileSystem.FromHostPath(context_.process.Directories.Config);
      const panes::InformationPlaces places = {log, context_.process.TempDir, context_.options.DesignPath,
                                               config};
      ShowSystemInformation(panes::SystemInformation(context_.session, context_.process.Version, places),
                            this);
      return;
    }
  }
}

}  // namespace velmora::ui
