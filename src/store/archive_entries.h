// Entries of the tree of archives, where the object layer has no operation for what is to be done to them:
// moved to another parent, copied as a link, taken out of a list, their properties copied. Failures are
// logged here, with the origin "Velmora Error"; the result tells the caller.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "run/run.h"
#include "store/account.h"
#include "store/archive.h"
#include "store/archive_records.h"

namespace velmora::store {

// The sub-archive that stands for a record until the real one is written over it.
inline constexpr std::string_view TemporaryArchiveName = "$$VELMORA$$";

// An entry as a list shows it.
struct EntryPlace {
  std::string ParentDirectory;  // the ID of the archive in whose list it stands
  std::string Directory;        // its own ID; of a link the target's
  std::string Name;             // under which the parent lists it; "" for the first of any name
};

// The record of an entry; not logged. Where the name is the directory's own, a record with an empty name
// matches, too. NotFound.
Result<NumberedRecord> FindEntryRecord(platform::FileSystem& fileSystem, const EntryPlace& entry);

// --- Taking entries out of a list; the archive's own directory stays as it is. ---

// Logs what failed: "Record für ... in archive.dir nicht gefunden", or "Fehler beim Löschen der Verknüpfung
// ..." and "Fehler beim Löschen des Archiveintrages ...".
Status RemoveLinkEntry(run::Run& run, const EntryPlace& link);
Status RemoveArchiveEntry(run::Run& run, const EntryPlace& entry);

// --- New entries made of others. ---

enum class EntryForm {
  Move,      // the entry leaves the list in which it stands
  ShortCut,  // the entry stays, and the new one leads to the same archive
};
enum class FixedParts {
  OfEntry,      // head and tail of the entry's record, with all its properties
  OfTemporary,  // those that the store gave to a fresh sub-archive
};

struct EntryMove {
  EntryPlace Entry;
  bool IsShortCut = false;    // the entry is a link
  std::string FullPath = {};  // of the entry in the tree, where known: keeps it from moving below itself
  std::string Name = {};      // of the new entry; "" keeps the entry's
  EntryForm Form = EntryForm::Move;
  FixedParts Parts = FixedParts::OfEntry;
};
// Makes an entry of the target archive that stands for the moved one's directory: a temporary sub-archive
// gets the store to write a sound record, over which the entry's goes. The directory itself stays where it
// is. The new entry stands before the old one goes, so that a process killed in between leaves it twice. On
// every failure the temporary sub-archive is removed again. Counts one archive, calls the target's Update.
// store_error::Failed when the entry would stand in itself.
Status MoveArchiveEntry(run::Run& run, DvArchive& target, const EntryMove& move);

// A link arrives in the target's list as a link: its record with its head, under its name.
Status CopyLinkEntry(run::Run& run, const EntryPlace& link, DvArchive& target);

// Gives an archive just copied the properties of its source: head and tail of the source's record, with the
// text area that the new archive's record has. The source's record is that of its parent's list; with an
// empty parent the copy in its own archive.add: for the root, which no list names, and for a source reached
// over a link, whose record would make a link of the new archive. The new archive's archive.add follows.
Status RepairArchiveDirRecord(run::Run& run, const EntryPlace& source, const EntryPlace& made);

// --- Entries that stand for one archive. ---

// The archive in whose list `archive` stands: the one that its path names, where its list has it, else the
// one whose directory lies around it. NotFound for the root and for what no list names.
Result<std::shared_ptr<DvArchive>> FindParentArchive(DvAccount& account, DvArchive& archive);

// An entry of a list with its record.
struct ListedEntry {
  NumberedRecord Record;
  std::shared_ptr<DvArchive> Archive;
};
// All entries of `parent` that the store lists, in record order. Only the store knows which records are
// short-cuts. Reads the list once. store_error::Busy when the store sees another list than the file holds.
Result<std::vector<ListedEntry>> ReadListedEntries(platform::FileSystem& fileSystem, DvArchive& parent);

// The records in the list of `parent` that stand for the archive with this ID, in record order; short-cuts
// to it are none of them.
Result<std::vector<NumberedRecord>> FindChildRecords(platform::FileSystem& fileSystem, DvArchive& parent,
                                                     std::string_view childId);
// The records that stand for an archive in its parent's list: one in a sound tree.
Result<std::vector<NumberedRecord>> FindArchiveRecords(platform::FileSystem& fileSystem, DvAccount& account,
                                                       DvArchive& archive);

}  // namespace velmora::store
