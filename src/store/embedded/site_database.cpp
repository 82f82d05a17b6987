#include "store/embedded/site_database.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "store/embedded/sqlite.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

// "VlmS" as a number, the application id in the file's header.
constexpr int ApplicationId = 0x566C6D53;
constexpr int SchemaVersion = 1;

constexpr const char* SiteSchema =
    "CREATE TABLE users (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL,"
    " login TEXT NOT NULL UNIQUE, mail TEXT NOT NULL, rights INTEGER NOT NULL) STRICT;"
    "CREATE TABLE site (name TEXT PRIMARY KEY, value TEXT NOT NULL) STRICT, WITHOUT ROWID;";

// Made with the first card: site data without it are as good.
constexpr const char* CardSchema =
    "CREATE TABLE IF NOT EXISTS cards (user INTEGER NOT NULL, property TEXT NOT NULL, value TEXT NOT NULL,"
    " PRIMARY KEY (user, property)) STRICT, WITHOUT ROWID;";

constexpr const char* UserColumns = "id, name, login, mail, rights";

UserRecord ReadUser(const Statement& row) {
  UserRecord user;
  user.Id = static_cast<int>(row.Number(0));
  user.Name = row.Text(1);
  user.LoginName = row.Text(2);
  user.MailAddress = row.Text(3);
  user.Rights = static_cast<std::uint32_t>(row.Number(4));
  return user;
}

Result<std::int64_t> QueryNumber(Sqlite& database, std::string_view sql) {
  auto statement = database.Prepare(sql);
  if (!statement) return Fail(statement.error());
  const auto row = statement->Step();
  if (!row) return Fail(row.error());
  return *row ? statement->Number(0) : 0;
}

Result<UserRecord> InsertUser(Sqlite& database, UserRecord user) {
  auto insert = database.Prepare("INSERT INTO users (name, login, mail, rights) VALUES (?, ?, ?, ?)");
  if (!insert) return Fail(insert.error());
  insert->Bind(1, user.Name).Bind(2, user.LoginName).Bind(3, user.MailAddress);
  insert->Bind(4, std::int64_t{user.Rights});
  if (const auto done = insert->Run(); !done) return Fail(done.error());
  user.Id = static_cast<int>(database.LastRowId());
  return user;
}

Status WriteValue(Sqlite& database, std::string_view name, std::string_view value) {
  auto write =
      database.Prepare("INSERT INTO site VALUES (?, ?) ON CONFLICT DO UPDATE SET value = excluded.value");
  if (!write) return Fail(write.error());
  return write->Bind(1, name).Bind(2, value).Run();
}

}  // namespace

struct SiteDatabase::State {
  Sqlite Database;
};

SiteDatabase::SiteDatabase(std::unique_ptr<State> state) : state_(std::move(state)) {}
SiteDatabase::SiteDatabase(SiteDatabase&&) noexcept = default;
SiteDatabase& SiteDatabase::operator=(SiteDatabase&&) noexcept = default;
SiteDatabase::~SiteDatabase() = default;

Result<SiteDatabase> SiteDatabase::Create(const std::string& hostPath, std::string_view serverName,
                                          const UserRecord& administrator) {
  auto database = Sqlite::Open(hostPath, Sqlite::Mode::Create);
  if (!database) return Fail(database.error());
  auto transaction = SqliteTransaction::Begin(*database);
  if (!transaction) return Fail(transaction.error());
  const auto present = QueryNumber(*database, "PRAGMA application_id");
  if (!present) return Fail(present.error());
  if (*present != 0) return Fail(store_error::Failed, "Das Verzeichnis enthält bereits einen Speicher");

  const auto marks =
      fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {};", ApplicationId, SchemaVersion);
  if (const auto made = database->Execute(marks.c_str()); !made) return Fail(made.error());
  if (const auto made = database->Execute(SiteSchema); !made) return Fail(made.error());
  if (const auto made = WriteValue(*database, site_value::Server, serverName); !made)
    return Fail(made.error());
  if (const auto made = InsertUser(*database, administrator); !made) return Fail(made.error());
  if (const auto done = transaction->Commit(); !done) return Fail(done.error());
  return SiteDatabase(std::make_unique<State>(State{std::move(*database)}));
}

Result<SiteDatabase> SiteDatabase::Open(const std::string& hostPath) {
  auto database = Sqlite::Open(hostPath, Sqlite::Mode::ReadWrite);
  if (!database) return Fail(store_error::NotFound, fmt::format("Kein Speicher: {}", hostPath));
  const auto id = QueryNumber(*database, "PRAGMA application_id");
  if (!id) return Fail(id.error());
  if (*id != ApplicationId) return Fail(store_error::NotFound, fmt::format("Kein Speicher: {}", hostPath));
  const auto version = QueryNumber(*database, "PRAGMA user_version");
  if (!version) return Fail(version.error());
  if (*version != SchemaVersion) {
    return Fail(store_error::Damaged, fmt::format("Unbekannte Version {} der Standortdaten", *version));
  }
  return SiteDatabase(std::make_unique<State>(State{std::move(*database)}));
}

Result<std::vector<UserRecord>> SiteDatabase::Users() {
  auto query = state_->Database.Prepare(fmt::format("SELECT {} FROM users ORDER BY id", UserColumns));
  if (!query) return Fail(query.error());
  std::vector<UserRecord> users;
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return users;
    users.push_back(ReadUser(*query));
  }
}

Result<std::optional<UserRecord>> SiteDatabase::FindUserByLogin(std::string_view loginName) {
  auto query = state_->Database.Prepare(fmt::format("SELECT {} FROM users WHERE login = ?", UserColumns));
  if (!query) return Fail(query.error());
  const auto row = query->Bind(1, loginName).Step();
  if (!row) return Fail(row.error());
  if (!*row) return std::nullopt;
  return ReadUser(*query);
}

Result<UserRecord> SiteDatabase::AddUser(UserRecord user) {
  auto transaction = SqliteTransaction::Begin(state_->Database);
  if (!transaction) return Fail(transaction.error());
  const auto present = FindUserByLogin(user.LoginName);
  if (!present) return Fail(present.error());
  if (*present) {
    return Fail(store_error::Failed, fmt::format("Der Anmeldename {} ist bereits vergeben", user.LoginName));
  }
  auto added = InsertUser(state_->Database, std::move(user));
  if (!added) return added;
  if (const auto done = transaction->Commit(); !done) return Fail(done.error());
  return added;
}

Result<AddressValues> SiteDatabase::Card(int userId) {
  AddressValues values;
  const auto hasCards =
      QueryNumber(state_->Database, "SELECT count(*) FROM sqlite_master WHERE name = 'cards'");
  if (!hasCards) return Fail(hasCards.error());
  if (*hasCards == 0) return values;
  auto query = state_->Database.Prepare("SELECT property, value FROM cards WHERE user = ?");
  if (!query) return Fail(query.error());
  query->Bind(1, std::int64_t{userId});
  while (true) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) return values;
    const auto* const info = std::ranges::find(AddressProperties, query->Text(0),
                                               [](const auto& property) { return property.Name; });
    if (info != AddressProperties.end()) values[info->Which] = query->Text(1);
  }
}

Status SiteDatabase::SetCard(int userId, const AddressValues& values) {
  auto& database = state_->Database;
  auto transaction = SqliteTransaction::Begin(database);
  if (!transaction) return Fail(transaction.error());
  if (const auto made = database.Execute(CardSchema); !made) return made;
  auto remove = database.Prepare("DELETE FROM cards WHERE user = ?");
  if (!remove) return Fail(remove.error());
  if (const auto done = remove->Bind(1, std::int64_t{userId}).Run(); !done) return done;
  for (const auto& [property, value] : values) {
    auto insert = database.Prepare("INSERT INTO cards (user, property, value) VALUES (?, ?, ?)");
    if (!insert) return Fail(insert.error());
    insert->Bind(1, std::int64_t{userId}).Bind(2, InfoOf(AddressProperties, property).Name).Bind(3, value);
    if (const auto done = insert->Run(); !done) return done;
  }
  return transaction->Commit();
}

Result<std::string> SiteDatabase::Value(std::string_view name) {
  auto query = state_->Database.Prepare("SELECT value FROM site WHERE name = ?");
  if (!query) return Fail(query.error());
  const auto row = query->Bind(1, name).Step();
  if (!row) return Fail(row.error());
  return *row ? query->Text(0) : std::string();
}

Status SiteDatabase::SetValue(std::string_view name, std::string_view value) {
  return WriteValue(state_->Database, name, value);
}

}  // namespace velmora::store::embedded
