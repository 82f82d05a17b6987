#include "store/embedded/message_database.h"

#include <fmt/core.h>
#include <sys/stat.h>

#include "store/embedded/message_query.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

// "VLMA": tells an archive's database from other databases.
constexpr std::int64_t ApplicationId = 0x564C4D41;
constexpr std::int64_t SchemaVersion = 2;

// The index holds all that the filter asks, so that a listing never reads the entries themselves. Keys are
// never given twice (AUTOINCREMENT): a key that a caller remembers names its entry or none.
constexpr const char* MessageSchema = R"sql(
CREATE TABLE entries(
  key INTEGER PRIMARY KEY AUTOINCREMENT,
  type INTEGER NOT NULL,
  class INTEGER NOT NULL,
  attachment_count INTEGER NOT NULL,
  flags INTEGER, item_type INTEGER, mail_flags INTEGER, mail_options INTEGER, owner INTEGER, creator INTEGER,
  priority INTEGER, status_time INTEGER, recipient_address TEXT, sender_address TEXT, sender_name TEXT,
  subject TEXT, recipient_text TEXT, display_variant INTEGER, copy_marker INTEGER, send_status INTEGER,
  document_flags INTEGER, pages INTEGER, has_source INTEGER);
CREATE INDEX entries_listing ON entries(class, flags, send_status, attachment_count, status_time);
CREATE TABLE texts(
  entry INTEGER NOT NULL, tag INTEGER NOT NULL, value TEXT NOT NULL,
  PRIMARY KEY(entry, tag)) WITHOUT ROWID;
CREATE TABLE recipients(
  entry INTEGER NOT NULL, position INTEGER NOT NULL, role INTEGER NOT NULL,
  name TEXT NOT NULL, address TEXT NOT NULL, kind TEXT NOT NULL,
  PRIMARY KEY(entry, position)) WITHOUT ROWID;
CREATE TABLE attachments(
  entry INTEGER NOT NULL, position INTEGER NOT NULL, name TEXT NOT NULL, size INTEGER NOT NULL,
  date INTEGER NOT NULL, flags INTEGER NOT NULL, content_id TEXT NOT NULL,
  file INTEGER NOT NULL, offset INTEGER NOT NULL, length INTEGER NOT NULL, encoding TEXT NOT NULL,
  PRIMARY KEY(entry, position)) WITHOUT ROWID;
CREATE TABLE other_fields(
  entry INTEGER NOT NULL, is_user_field INTEGER NOT NULL, tag INTEGER NOT NULL, name TEXT NOT NULL COLLATE NOCASE,
  kind INTEGER NOT NULL, value NOT NULL,
  PRIMARY KEY(entry, is_user_field, tag, name)) WITHOUT ROWID;
CREATE TABLE stray_files(
  name TEXT PRIMARY KEY, inode INTEGER NOT NULL, modified INTEGER NOT NULL, doomed INTEGER NOT NULL) WITHOUT ROWID;
CREATE TABLE identity(value INTEGER NOT NULL);
INSERT INTO identity VALUES(random());
CREATE TABLE arrivals(
  process TEXT NOT NULL, key INTEGER NOT NULL, source TEXT NOT NULL, identity INTEGER NOT NULL,
  source_key INTEGER NOT NULL, PRIMARY KEY(process, key)) WITHOUT ROWID;
)sql";

}  // namespace

tl::unexpected<Error> MessageDatabase::Describe(const Error& error) const {
  return Fail(error.Number, fmt::format("{}: {}", error.Text, path_));
}

Error MessageDatabase::NotADatabase() const {
  return {store_error::Damaged, fmt::format("Die Datei ist keine Nachrichten-Datenbank: {}", path_)};
}

Result<std::unique_ptr<MessageDatabase>> MessageDatabase::Open(const std::string& hostPath, std::string path,
                                                               Sqlite::Mode mode) {
  auto sqlite = Sqlite::Open(hostPath, mode);
  if (!sqlite) return Fail(sqlite.error().Number, fmt::format("{}: {}", sqlite.error().Text, path));
  return std::unique_ptr<MessageDatabase>(new MessageDatabase(std::move(*sqlite), hostPath, std::move(path)));
}

Result<MessageDatabase::Query> MessageDatabase::Prepare(const char* sql) {
  auto found = statements_.find(sql);
  if (found == statements_.end()) {
    auto statement = sqlite_.Prepare(sql);
    if (!statement) return Describe(statement.error());
    found = statements_.emplace(sql, std::move(*statement)).first;
  }
  return Query(*this, found->second);
}

Status MessageDatabase::Execute(const char* sql) {
  if (const auto done = sqlite_.Execute(sql); !done) return Describe(done.error());
  return {};
}

Result<std::int64_t> MessageDatabase::Number(const char* sql) {
  auto query = Prepare(sql);
  if (!query) return Fail(query.error());
  const auto row = query->Step();
  if (!row) return Fail(row.error());
  return *row ? query->Number(0) : 0;
}

Result<bool> MessageDatabase::HasTables() {
  if (hasTables_) return true;
  const auto application = Number("PRAGMA application_id");
  if (!application) return Fail(application.error());
  const auto version = Number("PRAGMA user_version");
  if (!version) return Fail(version.error());
  const auto tables = Number("SELECT count(*) FROM sqlite_master");
  if (!tables) return Fail(tables.error());
  if (*tables == 0) {
    // SQLite takes a file that is shorter than its header for an empty database.
    struct stat status {};
    if (stat(hostPath_.c_str(), &status) == 0 && status.st_size > 0) return tl::unexpected(NotADatabase());
    return false;
  }
  if (*application != ApplicationId || *version != SchemaVersion) return tl::unexpected(NotADatabase());
  hasTables_ = true;
  return true;
}

Status MessageDatabase::MakeTables() {
  const auto identity =
      fmt::format("PRAGMA application_id={}; PRAGMA user_version={};", ApplicationId, SchemaVersion);
  if (const auto named = Execute(identity.c_str()); !named) return named;
  return Execute(MessageSchema);
}

Status MessageDatabase::BeginWrite() {
  if (isWriting_) return {};
  if (const auto begun = Execute("BEGIN IMMEDIATE"); !begun) return begun;
  isWriting_ = true;
  const auto hasTables = HasTables();
  auto made = hasTables ? Status{} : Status(Fail(hasTables.error()));
  if (hasTables && !*hasTables) made = MakeTables();
  // The tables stand before the first content file: files beside a database without tables have lost theirs.
  if (made && !*hasTables) made = Commit();
  if (!made) {
    Rollback();
    return made;
  }
  return isWriting_ ? Status{} : BeginWrite();
}

Status MessageDatabase::Commit() {
  if (!isWriting_) return {};
  const auto committed = Execute("COMMIT");
  if (committed) {
    isWriting_ = false;
  } else if (committed.error().Number != store_error::Busy) {
    Rollback();
  }
  return committed;
}

void MessageDatabase::Rollback() {
  if (!isWriting_) return;
  // SQLite has rolled back by itself after some errors; then there is nothing left to do.
  (void)Execute("ROLLBACK");
  isWriting_ = false;
  hasTables_ = false;  // they may have been made in this transaction
}

Status MessageDatabase::BeginStep() {
  // Nothing may be written behind a transaction that is gone: its loss is told by the commit that follows.
  if (!sqlite_.IsInTransaction()) {
    return Fail(store_error::Failed, fmt::format("Die Änderungen sind nicht zu speichern: {}", path_));
  }
  auto query = Prepare("SAVEPOINT step");
  return query ? query->Run() : Fail(query.error());
}

Status MessageDatabase::EndStep(bool isDone) {
  if (!isDone) {
    auto query = Prepare("ROLLBACK TO step");
    if (!query) return Fail(query.error());
    if (const auto undone = query->Run(); !undone) return undone;
  }
  auto query = Prepare("RELEASE step");
  return query ? query->Run() : Fail(query.error());
}

}  // namespace velmora::store::embedded
