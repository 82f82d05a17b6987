// The messages of the built-in store: one SQLite database (archive.dat) per archive directory, content files
// beside it. Directories are UNC paths without "\" at the end.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "store/address_item.h"
#include "store/archive.h"
#include "store/item.h"
#include "store/patience.h"

namespace velmora::store::embedded {

struct DeliverOptions {
  bool Viewed = false;
  DateTime Received;    // for a message without a readable Date field; the null date: now
  std::string Mailbox;  // for the log: where the bytes come from
};

// What Submit does with a mail once it stands in its archive. Given by the account.
using SubmitHandler = std::function<Status(DvMailItem& mail, EntryKey key)>;

class MessageStore {
 public:
  // `moveJournals`: see EntryStore. Moves that a dead process left unfinished are finished.
  MessageStore(platform::FileSystem& fileSystem, platform::Clock& clock, std::string moveJournals = {});
  ~MessageStore();  // commits

  void SetSubmitHandler(SubmitHandler handler);

  void SetPatience(Patience patience);  // of reading; usual at first

  // --- Reading; a directory without archive.dat is empty. Damaged, Busy. ---
  Result<int> Count(std::string_view directory);
  Result<std::unique_ptr<DvEntries>> GetEntries(std::string_view directory, std::uint32_t filter,
                                                EntryOrder order);
  Result<std::unique_ptr<DvItem>> GetEntry(std::string_view directory, EntryKey key);
  Result<std::unique_ptr<DvItemView>> ItemView(std::string_view directory, EntryKey key);

  // --- Writing. ---
  Result<std::unique_ptr<DvItemView>> CreateItem(std::string_view directory, int type);
  Result<std::unique_ptr<DvItem>> CreateEntry(std::string_view directory, int type);
  // A new mail entry of the bytes of a message: header fields, bodies and attachment list parsed, the bytes
  // kept as the content file. No message is refused for its structure.
  Result<EntryKey> Deliver(std::string_view directory, std::string_view message,
                           const DeliverOptions& options);
  // An address that belongs to no archive and cannot be stored.
  std::unique_ptr<DvAddressItem> MakeAddress(const AddressValues& values);
  // The path of the entry's source of a mail, "" when it has none (not delivered, or its file vanished).
  std::string SourcePath(std::string_view directory, EntryKey key);
  // The bytes of a mail file made of the entry's fields, bodies and attachments, for an entry without a
  // source.
  Result<std::string> ComposeSource(std::string_view directory, EntryKey key);
  // Removes database and content files of an archive directory that holds no entry.
  Status RemoveEmpty(std::string_view directory);

  // --- Transactions: bounded (200 ms); every pending change is committed by these. ---
  Status Commit();
  Status CommitAndClose(std::string_view directoryOrBelow);

  // --- Checking (changes nothing). ---
  struct Finding {
    std::string Directory;
    EntryKey Key = 0;     // 0: the archive
    std::string Text;     // German
    bool IsNote = false;  // worth knowing, no damage
  };
  // Database integrity, content files without an entry, entries without their content file.
  std::vector<Finding> Check(std::string_view directory);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace velmora::store::embedded
