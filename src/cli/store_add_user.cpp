#include <fmt/core.h>

#include "base/text.h"
#include "cli/card_file.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/store_commands.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_setup.h"
#include "store/user_directory.h"

namespace velmora::cli {

namespace embedded = store::embedded;

int RunStoreAddUser(const AddUserOptions& options) {
  if (Trim(options.Name).empty() || Trim(options.Login).empty()) {
    PrintError("Name und Anmeldename dürfen nicht leer sein");
    return exit_status::WrongUsage;
  }
  const auto access = SignOnAsAdministrator(options.Store, "Benutzer trägt nur ein Administrator ein");
  if (!access) return access.error();
  const auto card = options.VCard.empty()
                        ? Result<store::AddressValues>()
                        : ReadFirstCard(*access->FileSystem, WindowsPath(*access->FileSystem, options.VCard));
  if (!card) {
    PrintError(options.VCard, card.error());
    return exit_status::DoneWithErrors;
  }
  auto site = embedded::SiteDatabase::Open(embedded::SiteDatabasePath(access->Location.HostDirectory));
  if (!site) {
    PrintError("Standortdaten", site.error());
    return exit_status::DoneWithErrors;
  }
  const embedded::StoreLayout layout(access->Location.ServerName);
  embedded::ArchiveTree tree(*access->FileSystem, layout.ArchiveRoot());
  embedded::UserRecord user{0, options.Name, options.Login, options.Mail, embedded::StandardRights};
  if (options.Administrator) user.Rights = embedded::AdministratorRights;
  if (options.WithoutRights) user.Rights = 0;
  const auto added = embedded::AddUser(*access->FileSystem, tree, layout, *site, user);
  if (!added) {
    PrintError(options.Name, added.error());
    return exit_status::DoneWithErrors;
  }
  const auto kept = card->empty() ? Status{} : site->SetCard(added->Id, *card);
  PrintLine(
      fmt::format("Benutzer {} eingetragen, Verzeichnis {}", added->Name, store::UserDirName(added->Id)));
  if (kept) return exit_status::Done;
  PrintError("Seine Adresse", kept.error());
  return exit_status::DoneWithErrors;
}

}  // namespace velmora::cli
