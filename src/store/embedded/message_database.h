// The database of one archive, archive.dat: its tables and the statements on them. Statements are prepared
// once per open database. Errors name the file: Damaged, Busy, Failed; NotFound for an entry that is not
// there.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/result.h"
#include "store/archive.h"
#include "store/embedded/content_files.h"
#include "store/embedded/entry_record.h"
#include "store/embedded/sqlite.h"

namespace velmora::store::embedded {

class MessageDatabase {
 public:
  // `hostPath` must exist; an empty file gets its tables at the first BeginWrite. `path`: for error texts.
  static Result<std::unique_ptr<MessageDatabase>> Open(const std::string& hostPath, std::string path,
                                                       Sqlite::Mode mode = Sqlite::Mode::ReadWrite);

  void SetPatience(Patience patience) { sqlite_.SetPatience(patience); }

  // Whether another process or this one has made the tables; without them there is nothing to read.
  Result<bool> HasTables();

  // --- Transactions. Every write stands in one. ---
  Status BeginWrite();
  // Busy leaves the transaction as it is; after any other error it is gone.
  Status Commit();
  void Rollback();
  bool IsWriting() const { return isWriting_; }
  // One operation of several statements: all of it or nothing.
  Status BeginStep();
  Status EndStep(bool isDone);

  // --- Reading. ---
  Result<int> Count();
  Result<std::vector<EntryKey>> Keys(std::uint32_t filter, EntryOrder order);
  Result<std::vector<EntryKey>> AllKeys();
  // The content files that entries have, with the bytes that they need to hold at least.
  struct ContentNeed {
    EntryKey Key = 0;
    int File = 0;
    std::int64_t Size = 0;
  };
  Result<std::vector<ContentNeed>> ContentNeeds();
  Result<EntryKey> HighestKeyEver();
  Result<EntryRow> ReadRow(EntryKey key);
  Result<std::vector<AttachmentRecord>> ReadAttachments(EntryKey key);
  Result<std::map<FieldTag, std::string>> ReadTexts(EntryKey key);
  // Each of these reads its pieces under one lock, as they stand at one moment.
  Result<EntryParts> ReadParts(EntryKey key);
  Result<std::pair<EntryRow, EntryParts>> ReadEntry(EntryKey key);
  Result<EntryRecord> ReadRecord(EntryKey key);
  // What a list shows of these entries, in this order; appended. Cheapest where the keys rise and lie close
  // together. Those that are not there are left out.
  Status ReadListRows(std::span<const EntryKey> keys, std::vector<DvEntryRow>& rows);
  Result<std::string> FindDamage() { return sqlite_.FindDamage(hostPath_); }

  // --- Writing. ---
  Status Insert(const EntryRecord& record);
  Status UpdateRow(const EntryRow& row);
  Status WriteText(EntryKey key, FieldTag tag, std::string_view text);  // an empty text removes it
  Status WriteRecipients(EntryKey key, const std::vector<RecipientRecord>& recipients);
  Status AddAttachment(EntryKey key, int position, const AttachmentRecord& attachment);
  Status WriteOther(EntryKey key, const OtherField& field);  // monostate removes it
  Status Remove(EntryKey key);

  // --- Entries that were moved here and may still stand where they came from (move_journal.h). ---
  struct Arrival {
    EntryKey Key = 0;           // here
    std::string Source;         // directory of the archive from which it came
    std::int64_t Identity = 0;  // of that archive's database
    EntryKey SourceKey = 0;
  };
  // A number of this database's own, which a database made anew in its place does not have.
  Result<std::int64_t> Identity();
  Status AddArrival(std::string_view process, const Arrival& arrival);
  Result<std::vector<Arrival>> Arrivals(std::string_view process);
  Result<std::vector<std::string>> ArrivalProcesses();
  Status ForgetArrivals(std::string_view process);
  Status ForgetArrivals(std::string_view process, std::string_view source);
  Result<bool> HasEntry(EntryKey key);

  // --- Content files without an entry. The doomed ones are removed after the commit that deletes their
  // entries; what a process left that was killed between the two, the next transaction removes. ---
  Status AddStrayFile(const StrayFile& file);
  Result<std::vector<StrayFile>> StrayFiles();
  Status ForgetDoomedFiles();

 private:
  class Query;

  MessageDatabase(Sqlite sqlite, std::string hostPath, std::string path)
      : sqlite_(std::move(sqlite)), hostPath_(std::move(hostPath)), path_(std::move(path)) {}
  Error NotADatabase() const;
  tl::unexpected<Error> Describe(const Error& error) const;
  // `sql` is a constant: the statement is known by its address.
  Result<Query> Prepare(const char* sql);
  Status Execute(const char* sql);
  Result<std::int64_t> Number(const char* sql);
  Result<std::vector<EntryKey>> ReadKeys(const char* sql);
  Result<std::vector<RecipientRecord>> ReadRecipients(EntryKey key);
  Result<std::vector<OtherField>> ReadOthers(EntryKey key);
  Result<std::vector<FieldTag>> ReadTextTags(EntryKey key);
  Status ReadRun(std::span<const EntryKey> keys, std::vector<DvEntryRow>& rows);
  Status ReadColumns(std::span<const EntryKey> keys, std::vector<DvEntryRow>& rows);
  Status ReadParts(std::span<DvEntryRow> rows);
  template <typename Take>
  Status JoinParts(const char* sql, std::span<DvEntryRow> rows, Take take);
  template <typename Read>
  auto InOneReading(Read read) -> decltype(read());
  Status MakeTables();
  Status WriteRow(const char* sql, const EntryRow& row);
  Status InsertRecipients(EntryKey key, const std::vector<RecipientRecord>& recipients);

  Sqlite sqlite_;
  std::string hostPath_, path_;
  std::unordered_map<const char*, Statement> statements_;
  bool isWriting_ = false;
  bool hasTables_ = false;
};

// The class of an entry that the filter and the lists' icons go by: its display type.
int DisplayClass(const EntryRow& row);

}  // namespace velmora::store::embedded
