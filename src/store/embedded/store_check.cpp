#include "store/embedded/store_check.h"

#include <fmt/core.h>

#include <string>
#include <vector>

#include "base/paths.h"
#include "store/archive_files.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/message_store.h"
#include "store/embedded/rule_file.h"
#include "store/embedded/server_logs.h"
#include "store/embedded/site_database.h"
#include "store/embedded/sqlite.h"
#include "store/embedded/store_layout.h"
#include "store/embedded/store_setup.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

using Report = std::function<void(const StoreFinding&)>;

// Whether a database is sound and has the table that makes it what it should be. A missing or empty file is
// for others to judge.
void CheckDatabase(platform::FileSystem& fileSystem, const std::string& path, std::string_view table,
                   const Report& report) {
  const auto entry = fileSystem.GetEntry(path);
  if (!entry || entry->IsFolder || entry->Size == 0) return;
  const auto check = [&]() -> Result<std::string> {
    const auto hostPath = fileSystem.HostPath(path);
    if (!hostPath) return Fail(hostPath.error());
    auto database = Sqlite::Open(*hostPath, Sqlite::Mode::ReadOnly);
    if (!database) return Fail(database.error());
    const auto damage = database->FindDamage(*hostPath);
    if (!damage) return Fail(damage.error());
    if (!damage->empty()) return fmt::format("Die Datenbank ist beschädigt: {}", *damage);
    auto query = database->Prepare("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?");
    if (!query) return Fail(query.error());
    const auto hasTable = query->Bind(1, table).Step();
    if (!hasTable) return Fail(hasTable.error());
    return *hasTable ? std::string() : fmt::format("In der Datenbank fehlt die Tabelle {}", table);
  }();
  if (!check) {
    report({path, check.error().Text, check.error().Number == store_error::Unfinished});
  } else if (!check->empty()) {
    report({path, *check});
  }
}

int CheckArchives(platform::FileSystem& fileSystem, platform::Clock& clock,
                  const std::vector<std::string>& directories, const Report& report) {
  MessageStore messages(fileSystem, clock);
  int checked = 0;
  for (const std::string& directory : directories) {
    if (!fileSystem.FolderExists(directory)) continue;  // the tree's own check tells of it
    ++checked;
    for (const auto& finding : messages.Check(directory)) {
      report({finding.Key == 0 ? finding.Directory
                               : fmt::format("{}, Eintrag {}", finding.Directory, finding.Key),
              finding.Text, finding.IsNote});
    }
    CheckDatabase(fileSystem, JoinPath(directory, archive_file::Rules), "rules", report);
  }
  return checked;
}

void CheckUsers(ArchiveTree& tree, const StoreLayout& layout, const StoreLocation& store,
                const Report& report) {
  auto site = SiteDatabase::Open(SiteDatabasePath(store.HostDirectory));
  const auto users = site ? site->Users() : Result<std::vector<UserRecord>>(Fail(site.error()));
  if (!users) return report({JoinPath(layout.Code(), "site.db"), users.error().Text});
  for (const auto& user : *users) {
    if (tree.FindByDirectory(layout.UserRoot(user.Id))) continue;
    report({layout.UserRoot(user.Id), fmt::format("Das Archiv des Benutzers {} fehlt", user.Name)});
  }
}

}  // namespace

int CheckStore(platform::FileSystem& fileSystem, platform::Clock& clock, const StoreLocation& store,
               const std::function<void(const StoreFinding&)>& report) {
  const StoreLayout layout(store.ServerName);
  ArchiveTree tree(fileSystem, layout.ArchiveRoot());
  const auto [findings, directories] = tree.Check();
  for (const auto& finding : findings) report({finding.Directory, finding.Text, finding.IsNote});
  const int archives = CheckArchives(fileSystem, clock, directories, report);
  CheckDatabase(fileSystem, JoinPath(layout.Code(), "site.db"), "users", report);
  for (const auto log : {ReceiveLogName, SendLogName}) {
    CheckDatabase(fileSystem, JoinPath(layout.Code(), log), "entries", report);
  }
  CheckUsers(tree, layout, store, report);
  return archives;
}

}  // namespace velmora::store::embedded
