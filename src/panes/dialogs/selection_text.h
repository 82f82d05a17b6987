// The sentences of the dialogs that copy, move and delete what is marked.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "operations/archive_copy.h"
#include "operations/file_deletion.h"
#include "operations/rule_copy.h"
#include "store/selection.h"

namespace velmora::panes {

// What there is none of is left out.
std::string CountText(const store::Selection& selection);           // "2 Archiv(e), 1 Link(s), 3 Message(s)"
std::string CountText(const operations::RuleSelection& selection);  // "2 Regel(n)"
std::string CountText(const operations::FileSelection& selection);  // "1 Verzeichniss(e), 2 Datei(en)"

// "Kopieren" or "Verschieben".
std::string_view TitleOf(operations::CopyMode mode);
// "2 Archiv(e) kopieren von", the path, " nach".
std::string TransferText(std::string_view counts, operations::CopyMode mode, std::string_view path);
// "2 Archiv(e) löschen aus", the path.
std::string DeletionText(std::string_view counts, std::string_view path);

inline constexpr std::string_view DeletionTitle = "Löschen";
// Under "Fehler", when nothing is marked that the user may copy, move or delete.
std::string NothingToTransfer(operations::CopyMode mode);
inline constexpr std::string_view NothingToDelete =
    "Es sind keine Objekte zum Löschen markiert oder \r\n"
    "der Benutzer hat keine Berechtigung zum Löschen.";

}  // namespace velmora::panes
