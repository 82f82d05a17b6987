// The entries of all archives of a store: reading and changing them by directory and key. The item objects
// and MessageStore stand on it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/archive.h"
#include "store/embedded/database_pool.h"
#include "store/embedded/entry_record.h"

namespace velmora::store::embedded {

// What an update changes of an entry; the rest stays as it is in the database.
struct EntryChanges {
  std::map<Column, FieldValue> Columns;
  std::map<FieldTag, std::string> Texts;
  std::vector<OtherField> Others;
  std::optional<std::vector<RecipientRecord>> Recipients;

  bool IsEmpty() const { return Columns.empty() && Texts.empty() && Others.empty() && !Recipients; }
};

class EntryStore {
 public:
  // `moveJournals`: the folder of the notes that make moves whole (move_journal.h), "" for none.
  EntryStore(platform::FileSystem& fileSystem, platform::Clock& clock, std::string moveJournals = {})
      : fileSystem_(fileSystem), clock_(clock), pool_(fileSystem, clock, std::move(moveJournals)) {}

  platform::FileSystem& Files() { return fileSystem_; }
  platform::Clock& Clock() { return clock_; }
  DatabasePool& Pool() { return pool_; }

  // --- Reading. NotFound for an entry that is not there. ---
  Result<int> Count(std::string_view directory);
  Result<std::vector<EntryKey>> Keys(std::string_view directory, std::uint32_t filter, EntryOrder order);
  Result<EntryRow> ReadRow(std::string_view directory, EntryKey key);
  Result<EntryParts> ReadParts(std::string_view directory, EntryKey key);
  // Both at once, which costs little more than the row alone.
  Result<std::pair<EntryRow, EntryParts>> ReadEntry(std::string_view directory, EntryKey key);
  Result<std::map<FieldTag, std::string>> ReadTexts(std::string_view directory, EntryKey key);
  // What a list shows of these entries, appended; those that are not there are left out.
  Status ReadListRows(std::string_view directory, std::span<const EntryKey> keys,
                      std::vector<DvEntryRow>& rows);

  // --- Writing. ---
  // Gives the record its key. `content`: content file 1, the source of a mail, the image of a fax, the sound
  // of a voice message.
  Result<EntryKey> Insert(std::string_view directory, EntryRecord record,
                          std::optional<std::string_view> content);
  Status Update(std::string_view directory, EntryKey key, const EntryChanges& changes);
  // Bytes become a content file of their own and the last attachment of the entry.
  Status AddAttachment(std::string_view directory, EntryKey key, AttachmentRecord attachment,
                       std::string_view bytes);
  Status Remove(std::string_view directory, EntryKey key);
  // The key in the target directory. A move removes the source; that is committed after the copy.
  Result<EntryKey> Copy(std::string_view directory, EntryKey key, std::string_view targetDirectory);
  Result<EntryKey> Move(std::string_view directory, EntryKey key, std::string_view targetDirectory);

  // Finishes the moves of processes that died between the commits of target and source: entries that have
  // arrived go from where they came from. What cannot be finished now is left for the next call.
  Status SettleAbandonedMoves(std::string_view moveJournals);

  // --- Checking (changes nothing). ---
  struct Finding {
    EntryKey Key = 0;     // 0: the archive
    std::string Text;     // German
    bool IsNote = false;  // worth knowing, no damage
  };
  std::vector<Finding> Check(std::string_view directory);

  // --- Content. ---
  // `directory\0000001A`: what the field Location says.
  static std::string Location(std::string_view directory, EntryKey key);
  // The host path of a content file in the archive's present directory; FileNotFound when it is gone.
  Result<std::string> ContentPath(std::string_view directory, EntryKey key, int number);

 private:
  template <typename Read>
  auto ReadFrom(std::string_view directory, EntryKey key, Read read)
      -> decltype(read(std::declval<MessageDatabase&>()));
  Status RemoveFrom(OpenArchive& archive, EntryKey key);
  Result<EntryKey> CopyBetween(OpenArchive& source, EntryKey key, OpenArchive& target,
                               const MessageDatabase::Arrival* arrival);
  Status TakeFromSources(std::string_view target, const std::string& process);
  Status TakeFromSource(const MessageDatabase::Arrival& arrival);
  template <typename Write>
  Status InOneStep(OpenArchive& archive, Write write);

  platform::FileSystem& fileSystem_;
  platform::Clock& clock_;
  DatabasePool pool_;
};

}  // namespace velmora::store::embedded
