// The dialogs as views: each shows its model until it is closed, and gives what OK came to.
#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "addresses/address_export_dialog.h"
#include "panes/dialogs/change_server_dialog.h"
#include "panes/dialogs/copy_move_dialog.h"
#include "panes/dialogs/del_circ_arc_entries_dialog.h"
#include "panes/dialogs/del_dbl_arc_entries_dialog.h"
#include "panes/dialogs/del_fs_dialog.h"
#include "panes/dialogs/del_rout_dialog.h"
#include "panes/dialogs/del_zeb_dialog.h"
#include "panes/dialogs/filter_dialog.h"
#include "panes/dialogs/mail_arc_marker_dialog.h"
#include "panes/dialogs/new_archive_dialog.h"
#include "panes/dialogs/options_dialog.h"
#include "panes/dialogs/pattern_dialog.h"
#include "panes/dialogs/program_texts.h"
#include "panes/dialogs/rout_copy_move_dialog.h"
#include "panes/dialogs/zeb_copy_move_dialog.h"
#include "run/front_ends.h"

namespace velmora::ui {

// Whether OK was pressed; `changed` as FilterDialog::Ok gives it.
struct FilterAnswer {
  bool IsOk = false, Changed = false;
};
FilterAnswer ShowFilterDialog(panes::FilterDialog& model, run::Prompts& prompts, QWidget* parent);

std::optional<panes::OptionsAnswer> ShowOptionsDialog(panes::OptionsDialog& model, run::FrontEnd frontEnd,
                                                      QWidget* parent);

// `showUserInfo` opens the dialog of the form texts.
std::optional<panes::CopyMoveRequest> ShowCopyMoveDialog(panes::CopyMoveDialog& model, run::FrontEnd frontEnd,
                                                         const std::function<void(QWidget*)>& showUserInfo,
                                                         QWidget* parent);

// --- What is marked goes elsewhere, or away. ---
std::optional<panes::ZEBCopyMoveRequest> ShowStoreTransferDialog(panes::ZEBCopyMoveDialog& model,
                                                                 run::FrontEnd frontEnd, QWidget* parent);
std::optional<panes::RoutCopyMoveRequest> ShowRuleTransferDialog(panes::RoutCopyMoveDialog& model,
                                                                 run::FrontEnd frontEnd, QWidget* parent);
std::optional<panes::DelZEBRequest> ShowStoreDeletionDialog(panes::DelZEBDialog& model, run::Prompts& prompts,
                                                            QWidget* parent);
std::optional<operations::RuleSelection> ShowRuleDeletionDialog(panes::DelRoutDialog& model,
                                                                run::Prompts& prompts, QWidget* parent);
std::optional<panes::DelFSRequest> ShowFileDeletionDialog(panes::DelFSDialog& model, run::Prompts& prompts,
                                                          QWidget* parent);
// True after OK.
bool ShowDoubleEntriesDialog(const panes::DelDblArcEntriesDialog& model, QWidget* parent);
// `ok` is run by OK and says whether the dialog closes.
void ShowCircularEntriesDialog(const panes::DelCircArcEntriesDialog& model, const std::function<bool()>& ok,
                               QWidget* parent);

// True after OK.
bool ShowFormUserInfoDialog(panes::FormUserInfoDialog& model, QWidget* parent);
bool ShowMarkerDialog(panes::MailArcMarkerDialog& model, run::Prompts& prompts,
                      const std::function<void(QWidget*)>& showUserInfo, QWidget* parent);

// The server; nothing after a cancel or for an empty name.
std::optional<std::string> ShowChangeServerDialog(panes::ChangeServerDialog& model, QWidget* parent);
std::optional<std::string> ShowPatternDialog(panes::PatternDialog& model, QWidget* parent);
std::optional<panes::NewArchiveRequest> ShowNewArchiveDialog(panes::NewArchiveDialog& model, QWidget* parent);

// What the address dialog needs of the window.
struct AddressDialogPlace {
  std::string CurrentArchive, CurrentDirectory, WorkbookTemplate;
};
std::optional<addresses::AddressExportRequest> ShowAddressExportDialog(addresses::AddressExportDialog& model,
                                                                       const AddressDialogPlace& place,
                                                                       run::FrontEnd frontEnd,
                                                                       QWidget* parent);

void ShowAboutBox(const settings::ProductVersion& version, QWidget* parent);
void ShowSystemInformation(const std::vector<panes::InformationRow>& rows, QWidget* parent);

}  // namespace velmora::ui
