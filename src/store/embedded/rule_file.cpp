#include "store/embedded/rule_file.h"

#include <array>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "store/archive_files.h"
#include "store/embedded/sqlite.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

// A rule of a file from elsewhere may claim any number of targets and conditions.
constexpr std::size_t MaxParts = 10'000;

constexpr const char* RuleSchema =
    "CREATE TABLE IF NOT EXISTS rules (id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " name TEXT NOT NULL, forward_to TEXT NOT NULL, replaced_sender TEXT NOT NULL,"
    " include_before TEXT NOT NULL, include_after TEXT NOT NULL,"
    " valid_from INTEGER NOT NULL, valid_until INTEGER NOT NULL, last_used INTEGER NOT NULL,"
    " forward_as INTEGER NOT NULL, used_count INTEGER NOT NULL, symbol INTEGER NOT NULL,"
    " color_mark INTEGER NOT NULL, switches INTEGER NOT NULL);"
    "CREATE TABLE IF NOT EXISTS destinations (rule INTEGER NOT NULL, position INTEGER NOT NULL,"
    " path TEXT NOT NULL, PRIMARY KEY (rule, position)) WITHOUT ROWID;"
    "CREATE TABLE IF NOT EXISTS conditions (rule INTEGER NOT NULL, position INTEGER NOT NULL,"
    " object INTEGER NOT NULL, comparision INTEGER NOT NULL, value TEXT NOT NULL, operator INTEGER NOT NULL,"
    " PRIMARY KEY (rule, position)) WITHOUT ROWID;";

// The columns behind `id`; the order in which they are bound and read below.
constexpr std::array<std::string DvRuleData::*, 5> Texts{
    &DvRuleData::Name, &DvRuleData::ForwardTo, &DvRuleData::ReplacedSender, &DvRuleData::IncludeBefore,
    &DvRuleData::IncludeAfter};
constexpr std::array<DateTime DvRuleData::*, 3> Dates{&DvRuleData::ValidFrom, &DvRuleData::ValidUntil,
                                                      &DvRuleData::LastUsed};
constexpr std::array<int DvRuleData::*, 4> Numbers{&DvRuleData::ForwardAs, &DvRuleData::UsedCount,
                                                   &DvRuleData::Symbol, &DvRuleData::ColorMark};
// Bit i of the column `switches`.
constexpr std::array<bool DvRuleData::*, 11> Switches{
    &DvRuleData::Enabled,       &DvRuleData::RouteAlways,
    &DvRuleData::RouteAsCopy,   &DvRuleData::RouteOnlySubject,
    &DvRuleData::Forward,       &DvRuleData::AutoReply,
    &DvRuleData::NewMessage,    &DvRuleData::Miscellaneous,
    &DvRuleData::DeleteMessage, &DvRuleData::ExcludeAttachments,
    &DvRuleData::OnlySubject};

constexpr const char* Columns =
    "name, forward_to, replaced_sender, include_before, include_after, valid_from, valid_until, last_used,"
    " forward_as, used_count, symbol, color_mark, switches";

std::int64_t PackSwitches(const DvRuleData& data) {
  std::int64_t bits = 0;
  for (std::size_t i = 0; i < Switches.size(); ++i) bits |= std::int64_t{data.*Switches[i]} << i;
  return bits;
}

DvRuleData ReadColumns(const Statement& row, int column) {
  DvRuleData data;
  for (const auto text : Texts) data.*text = MakeValidUtf8(row.Text(column++));
  for (const auto date : Dates) data.*date = DateTime::FromSeconds(row.Number(column++));
  for (const auto number : Numbers) data.*number = static_cast<int>(row.Number(column++));
  const std::int64_t bits = row.Number(column);
  for (std::size_t i = 0; i < Switches.size(); ++i) data.*Switches[i] = ((bits >> i) & 1) != 0;
  return data;
}

// `first`: the parameter of the first column.
void BindColumns(Statement& statement, int first, const DvRuleData& data) {
  int parameter = first;
  statement.Bind(parameter++, LeftCharacters(data.Name, RuleFile::MaxNameCharacters));
  for (std::size_t i = 1; i < Texts.size(); ++i) statement.Bind(parameter++, data.*Texts[i]);
  for (const auto date : Dates) statement.Bind(parameter++, (data.*date).Seconds());
  for (const auto number : Numbers) statement.Bind(parameter++, std::int64_t{data.*number});
  statement.Bind(parameter, PackSwitches(data));
}

// Runs `sql`, whose one parameter is the rule, and calls `read` for each row.
template <typename Read>
Status ForEachPart(Sqlite& database, std::string_view sql, std::int64_t rule, Read read) {
  auto query = database.Prepare(sql);
  if (!query) return Fail(query.error());
  query->Bind(1, rule);
  for (std::size_t count = 0; count < MaxParts; ++count) {
    const auto row = query->Step();
    if (!row) return Fail(row.error());
    if (!*row) break;
    read(*query);
  }
  return {};
}

Status ReadParts(Sqlite& database, std::int64_t rule, DvRuleData& data) {
  const auto destinations =
      ForEachPart(database, "SELECT path FROM destinations WHERE rule = ? ORDER BY position", rule,
                  [&](const Statement& row) { data.Destinations.push_back(MakeValidUtf8(row.Text(0))); });
  if (!destinations) return destinations;
  return ForEachPart(
      database,
      "SELECT object, comparision, value, operator FROM conditions WHERE rule = ? ORDER BY position", rule,
      [&](const Statement& row) {
        data.Conditions.push_back({static_cast<FieldTag>(row.Number(0)), static_cast<int>(row.Number(1)),
                                   MakeValidUtf8(row.Text(2)), static_cast<int>(row.Number(3))});
      });
}

Status DeleteParts(Sqlite& database, std::int64_t rule) {
  for (const auto* sql :
       {"DELETE FROM destinations WHERE rule = ?", "DELETE FROM conditions WHERE rule = ?"}) {
    auto statement = database.Prepare(sql);
    if (!statement) return Fail(statement.error());
    if (const auto done = statement->Bind(1, rule).Run(); !done) return done;
  }
  return {};
}

Status WriteParts(Sqlite& database, std::int64_t rule, const DvRuleData& data) {
  if (const auto cleared = DeleteParts(database, rule); !cleared) return cleared;
  auto destination = database.Prepare("INSERT INTO destinations VALUES (?, ?, ?)");
  if (!destination) return Fail(destination.error());
  std::int64_t position = 0;
  for (const auto& path : data.Destinations) {
    if (const auto done = destination->Bind(1, rule).Bind(2, position++).Bind(3, path).Run(); !done)
      return done;
    destination->Reset();
  }
  auto condition = database.Prepare("INSERT INTO conditions VALUES (?, ?, ?, ?, ?, ?)");
  if (!condition) return Fail(condition.error());
  position = 0;
  for (const auto& part : data.Conditions) {
    condition->Bind(1, rule).Bind(2, position++).Bind(3, std::int64_t{part.object});
    condition->Bind(4, std::int64_t{part.Comparision})
        .Bind(5, part.Value)
        .Bind(6, std::int64_t{part.Operator});
    if (const auto done = condition->Run(); !done) return done;
    condition->Reset();
  }
  return {};
}

Result<bool> RuleExists(Sqlite& database, std::int64_t id) {
  auto query = database.Prepare("SELECT 1 FROM rules WHERE id = ?");
  if (!query) return Fail(query.error());
  return query->Bind(1, id).Step();
}

Result<Sqlite> OpenRules(platform::FileSystem& fileSystem, const std::string& path, Sqlite::Mode mode) {
  const auto hostPath = fileSystem.HostPath(path);
  if (!hostPath) return Fail(hostPath.error());
  auto database = Sqlite::Open(*hostPath, mode);
  if (!database || mode == Sqlite::Mode::ReadOnly) return database;
  if (const auto made = database->Execute(RuleSchema); !made) return Fail(made.error());
  return database;
}

tl::unexpected<Error> NoSuchRule() { return Fail(store_error::NotFound, "Die Regel ist nicht vorhanden"); }

}  // namespace

RuleFile::RuleFile(platform::FileSystem& fileSystem, std::string directory)
    : fileSystem_(fileSystem), directory_(std::move(directory)) {}

std::string RuleFile::Path() const { return JoinPath(directory_, archive_file::Rules); }

// An empty file is what a process left that was killed before it wrote its first rule.
bool RuleFile::Exists() const {
  const auto entry = fileSystem_.GetEntry(Path());
  return entry && !entry->IsFolder && entry->Size > 0;
}

Result<int> RuleFile::Count() {
  if (!Exists()) return 0;
  auto database = OpenRules(fileSystem_, Path(), Sqlite::Mode::ReadOnly);
  if (!database) return Fail(database.error());
  auto query = database->Prepare("SELECT count(*) FROM rules");
  if (!query) return Fail(query.error());
  if (const auto row = query->Step(); !row) return Fail(row.error());
  return static_cast<int>(query->Number(0));
}

Result<RuleFile::Entry> RuleFile::Read(int index) {
  if (index < 0 || !Exists()) return NoSuchRule();
  auto database = OpenRules(fileSystem_, Path(), Sqlite::Mode::ReadOnly);
  if (!database) return Fail(database.error());
  auto query =
      database->Prepare(std::string("SELECT id, ") + Columns + " FROM rules ORDER BY id LIMIT 1 OFFSET ?");
  if (!query) return Fail(query.error());
  const auto row = query->Bind(1, std::int64_t{index}).Step();
  if (!row) return Fail(row.error());
  if (!*row) return NoSuchRule();
  Entry entry{query->Number(0), ReadColumns(*query, 1)};
  if (const auto read = ReadParts(*database, entry.Id, entry.Data); !read) return Fail(read.error());
  return entry;
}

Result<std::int64_t> RuleFile::Write(std::int64_t id, const DvRuleData& data) {
  if (!Exists()) {
    // Made here first, so that it is the owner's alone. Another process may be quicker: then its file serves.
    (void)fileSystem_.WriteFile(Path(), "", {platform::Create::Exclusive, std::nullopt, true});
  }
  auto database = OpenRules(fileSystem_, Path(), Sqlite::Mode::ReadWrite);
  if (!database) return Fail(database.error());
  auto transaction = SqliteTransaction::Begin(*database);
  if (!transaction) return Fail(transaction.error());
  if (id != 0) {
    const auto exists = RuleExists(*database, id);
    if (!exists) return Fail(exists.error());
    if (!*exists) return NoSuchRule();
  }
  auto write = database->Prepare(std::string("INSERT OR REPLACE INTO rules (id, ") + Columns +
                                 ") VALUES (nullif(?, 0), ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
  if (!write) return Fail(write.error());
  write->Bind(1, id);
  BindColumns(*write, 2, data);
  if (const auto done = write->Run(); !done) return Fail(done.error());
  const std::int64_t written = id != 0 ? id : database->LastRowId();
  if (const auto done = WriteParts(*database, written, data); !done) return Fail(done.error());
  if (const auto done = transaction->Commit(); !done) return Fail(done.error());
  return written;
}

Status RuleFile::Delete(std::int64_t id) {
  if (!Exists()) return NoSuchRule();
  auto database = OpenRules(fileSystem_, Path(), Sqlite::Mode::ReadWrite);
  if (!database) return Fail(database.error());
  auto transaction = SqliteTransaction::Begin(*database);
  if (!transaction) return Fail(transaction.error());
  const auto exists = RuleExists(*database, id);
  if (!exists) return Fail(exists.error());
  if (!*exists) return NoSuchRule();
  auto statement = database->Prepare("DELETE FROM rules WHERE id = ?");
  if (!statement) return Fail(statement.error());
  if (const auto done = statement->Bind(1, id).Run(); !done) return done;
  if (const auto done = DeleteParts(*database, id); !done) return done;
  return transaction->Commit();
}

}  // namespace velmora::store::embedded
