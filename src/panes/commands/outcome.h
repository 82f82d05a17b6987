// What a command leaves to the window.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "panes/dialogs/copy_move_dialog.h"
#include "panes/dialogs/del_circ_arc_entries_dialog.h"
#include "panes/dialogs/del_dbl_arc_entries_dialog.h"
#include "panes/dialogs/del_fs_dialog.h"
#include "panes/dialogs/del_rout_dialog.h"
#include "panes/dialogs/del_zeb_dialog.h"
#include "panes/dialogs/rout_copy_move_dialog.h"
#include "panes/dialogs/zeb_copy_move_dialog.h"
#include "panes/selection.h"
#include "store/archive.h"

namespace velmora::panes {

// The dialogs that a command may ask the window to show. Their models: panes/dialogs/, for the addresses
// addresses/address_export_dialog.h, for the tree panes/archive_nodes.h.
enum class DialogKind {
  None,
  Filter,
  Options,
  ChangeServer,
  CopyMove,  // Outcome::Export holds what it opens with
  Prepared,  // Outcome::Prepared holds its model
  SetMarker,
  NewArchive,
  Pattern,
  AddressExport,
  ArchiveTree,
  About,
  SystemInformation,
};

// The model of a dialog that works on what is marked, ready to be shown.
using PreparedDialog =
    std::variant<std::monostate, std::shared_ptr<ZEBCopyMoveDialog>, std::shared_ptr<RoutCopyMoveDialog>,
                 std::shared_ptr<DelZEBDialog>, std::shared_ptr<DelRoutDialog>, std::shared_ptr<DelFSDialog>,
                 std::shared_ptr<DelDblArcEntriesDialog>, std::shared_ptr<DelCircArcEntriesDialog>>;

// A message to be shown by the message viewer.
struct MessageRequest {
  std::shared_ptr<store::DvArchive> Archive;
  store::EntryKey Key = 0;
};

// The session is gone or another one: a window that finds this set shows nothing of the old one any more.
enum class SessionChange { None, Reloaded, Ended };

struct Outcome {
  // Lists are listed already; these say what the views show anew.
  bool LeftChanged = false, RightChanged = false, FilesChanged = false;
  bool LayoutChanged = false;  // which views stand where
  bool ActiveViewChanged = false;
  bool FilterChanged = false;  // the filter warning is set anew
  bool ErrorLogChanged = false;
  bool OptionsChanged = false;  // texts and icons that the settings say
  bool ResetFormSize = false, RestoreFormSize = false;
  bool EditLabel = false;                      // of the row under the cursor: RenameRow follows
  bool EditPath = false, ChooseDrive = false;  // the cursor goes into the path field, into DrvBox

  DialogKind Dialog = DialogKind::None;
  std::shared_ptr<const CopyMoveDialog::Parts> Export{};  // for DialogKind::CopyMove
  PreparedDialog Prepared{};                              // for DialogKind::Prepared
  std::optional<SelectionAction> PatternAction{};         // for DialogKind::Pattern
  std::optional<MessageRequest> Message{};                // for the viewer
  std::optional<int> ExitStatus{};                        // the process ends
  SessionChange Session = SessionChange::None;

  // Of the active view.
  std::optional<std::size_t> CurrentRow{};  // the cursor goes there, scrolled to
  std::optional<SelectionSet> Selection{};

  // What two commands leave, one after the other.
  void Add(Outcome later);
};

}  // namespace velmora::panes
