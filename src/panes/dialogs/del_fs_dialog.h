// The dialog DelFSDialogBox: what is marked in the file pane is deleted.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "operations/file_deletion.h"
#include "run/front_ends.h"
#include "settings/options.h"

namespace velmora::panes {

// The check boxes, in the dialog's order.
enum class DelFSBox { EnDelDirs, EnMakeIdx };
inline constexpr std::size_t DelFSBoxCount = 2;

struct DelFSBoxText {
  bool operations::FileDeleteOptions::*Option;
  std::string_view Control, Caption, Tip;
};
inline constexpr std::array<DelFSBoxText, DelFSBoxCount> DelFSBoxes = {{
    {&operations::FileDeleteOptions::EnDelDirs, "EnDelDirs", "Verzeichnisstruktur löschen",
     "Inhalt und Unterverzeichnisse löschen"},
    {&operations::FileDeleteOptions::EnMakeIdx, "EnMakeIdx", "Inhaltsverzeichnis aktualisieren",
     "Mail-Archiv Inhaltsverzeichnis nach dem Löschen aktualisieren. Der Inhaltsverzeichnisbaum muss manuell "
     "aktualisiert werden."},
}};

// What OK asks for: arguments of operations::RunDeleteFiles.
struct DelFSRequest {
  operations::FileDeleteOptions Options;
  operations::FileSelection Selection;
};

class DelFSDialog {
 public:
  struct Parts {
    platform::FileSystem& fileSystem;
    const settings::Options& options;
    operations::FileSelection Selection;
    bool HideHelperFiles = true;  // as the pane shows the directory
  };
  explicit DelFSDialog(const Parts& parts);

  // The text under "Fehler" when nothing is marked; "" otherwise.
  std::string NothingMarked() const;

  // --- What the controls hold. ---
  std::string SourceText() const;  // "1 Verzeichniss(e), 2 Datei(en) löschen aus", the directory
  bool IsChecked(DelFSBox box) const { return choices_.*OptionOf(box); }
  bool IsEnabled(DelFSBox box) const;

  // --- What the user does. ---
  void SetBox(DelFSBox box, bool checked);  // of a disabled box: nothing happens

  // The run for the caller; nothing, after a message, when nothing is marked.
  std::optional<DelFSRequest> Ok(run::Prompts& prompts);

 private:
  static constexpr bool operations::FileDeleteOptions::*OptionOf(DelFSBox box) {
    return DelFSBoxes[static_cast<std::size_t>(box)].Option;
  }

  Parts parts_;
  operations::FileDeleteOptions choices_;
  bool canHoldContent_;  // the directory is one of a mail archive that has an index
};

}  // namespace velmora::panes
