#include "store/embedded/sqlite.h"

#include <fmt/core.h>
#include <sys/stat.h>

#include <utility>

#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

constexpr int BusyMilliseconds = 5000;

tl::unexpected<Error> Failure(int code, const char* text) {
  if (code == SQLITE_READONLY_ROLLBACK) {
    return Fail(store_error::Unfinished,
                "Ein abgebrochener Schreibvorgang ist noch nicht zurückgenommen; das geschieht beim nächsten "
                "Zugriff");
  }
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Fail(store_error::Busy, "Die Datenbank wird von einem anderen Prozess benutzt");
    case SQLITE_CANTOPEN:
      return Fail(store_error::Failed, "Die Datenbank lässt sich nicht öffnen");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return Fail(store_error::Damaged, fmt::format("Die Datenbank ist beschädigt ({})", text));
    default:
      return Fail(store_error::Failed, fmt::format("Fehler der Datenbank: {}", text));
  }
}

tl::unexpected<Error> Failure(sqlite3* handle, int code) { return Failure(code, sqlite3_errmsg(handle)); }

}  // namespace

// A parameter that does not exist, and a value beyond SQLite's limits, show as a failure of Step: bound
// values of this program's own statements are always in range.
Statement& Statement::Bind(int parameter, std::int64_t value) {
  sqlite3_bind_int64(statement_.get(), parameter, value);
  return *this;
}

Statement& Statement::Bind(int parameter, std::string_view value) {
  sqlite3_bind_text64(statement_.get(), parameter, value.data() == nullptr ? "" : value.data(), value.size(),
                      SQLITE_TRANSIENT, SQLITE_UTF8);
  return *this;
}

Statement& Statement::BindNull(int parameter) {
  sqlite3_bind_null(statement_.get(), parameter);
  return *this;
}

Result<bool> Statement::Step() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  return Failure(sqlite3_db_handle(statement_.get()), code);
}

Status Statement::Run() {
  while (true) {
    const auto row = Step();
    if (!row) return Fail(row.error());
    if (!*row) return {};
  }
}

void Statement::Reset() {
  sqlite3_reset(statement_.get());
  sqlite3_clear_bindings(statement_.get());
}

std::int64_t Statement::Number(int column) const { return sqlite3_column_int64(statement_.get(), column); }

std::string Statement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

bool Statement::IsNull(int column) const {
  return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

Result<Sqlite> Sqlite::Open(const std::string& hostPath, Mode mode) {
  int flags = SQLITE_OPEN_READWRITE;
  if (mode == Mode::ReadOnly) flags = SQLITE_OPEN_READONLY;
  if (mode == Mode::Create) flags |= SQLITE_OPEN_CREATE;
  flags |= SQLITE_OPEN_NOMUTEX;  // a store is used by one thread; each value read would cost a lock
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(hostPath.c_str(), &handle, flags, nullptr);
  Sqlite database(handle);
  if (code != SQLITE_OK) return Failure(code, sqlite3_errstr(code));
  sqlite3_extended_result_codes(handle, 1);
  database.SetPatience(Patience::Usual);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  return database;
}

void Sqlite::SetPatience(Patience patience) {
  sqlite3_busy_timeout(handle_.get(), patience == Patience::Usual ? BusyMilliseconds : 0);
}

Status Sqlite::Execute(const char* sql) {
  const int code = sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) return Failure(handle_.get(), code);
  return {};
}

Result<Statement> Sqlite::Prepare(std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  const int code =
      sqlite3_prepare_v2(handle_.get(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
  if (code != SQLITE_OK) return Failure(handle_.get(), code);
  return Statement(statement);
}

Result<std::string> Sqlite::FindDamage(const std::string& hostPath) {
  std::int64_t expected = 1;
  for (const auto* const pragma : {"PRAGMA page_size", "PRAGMA page_count"}) {
    auto query = Prepare(pragma);
    if (!query) return Fail(query.error());
    if (const auto row = query->Step(); !row) return Fail(row.error());
    expected *= query->Number(0);
  }
  struct stat status {};
  if (stat(hostPath.c_str(), &status) == 0 && status.st_size < expected) {
    return fmt::format("Der Datei fehlen {} Bytes", expected - status.st_size);
  }
  auto query = Prepare("PRAGMA integrity_check(1)");
  if (!query) return Fail(query.error());
  const auto row = query->Step();
  if (!row) return Fail(row.error());
  auto text = *row ? query->Text(0) : std::string();
  return text == "ok" ? std::string() : text;
}

bool Sqlite::IsInTransaction() const { return sqlite3_get_autocommit(handle_.get()) == 0; }

std::int64_t Sqlite::LastRowId() const { return sqlite3_last_insert_rowid(handle_.get()); }

Result<SqliteTransaction> SqliteTransaction::Begin(Sqlite& database) {
  if (const auto begun = database.Execute("BEGIN IMMEDIATE"); !begun) return Fail(begun.error());
  return SqliteTransaction(database);
}

SqliteTransaction::SqliteTransaction(SqliteTransaction&& other) noexcept
    : database_(std::exchange(other.database_, nullptr)) {}

SqliteTransaction::~SqliteTransaction() {
  // A failed roll-back leaves the journal, which the next opening rolls back.
  if (database_ != nullptr) (void)database_->Execute("ROLLBACK");
}

Status SqliteTransaction::Commit() {
  if (const auto committed = database_->Execute("COMMIT"); !committed) return committed;
  database_ = nullptr;
  return {};
}

}  // namespace velmora::store::embedded
