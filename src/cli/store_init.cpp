#include <fmt/core.h>

#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/store_commands.h"
#include "platform/clock.h"
#include "platform/host.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_setup.h"

namespace velmora::cli {

namespace embedded = store::embedded;

namespace {

Status SetSendmail(const std::string& directory, const std::string& program) {
  if (program.empty()) return {};
  auto site = embedded::SiteDatabase::Open(embedded::SiteDatabasePath(directory));
  if (!site) return Fail(site.error());
  return site->SetValue(embedded::site_value::Sendmail, program);
}

}  // namespace

int RunStoreInit(const InitOptions& options) {
  if (!embedded::IsServerName(options.Server)) {
    PrintError("Der Servername besteht aus 1 bis 15 Buchstaben, Ziffern, \"-\" und \"_\"");
    return exit_status::WrongUsage;
  }
  embedded::NewStore store;
  store.HostDirectory = embedded::AbsoluteHostPath(options.Directory);
  store.ServerName = options.Server;
  store.Administrator.LoginName = platform::UserLoginName();
  store.Administrator.Name = platform::UserFullName();
  store.Administrator.MailAddress =
      options.Mail.empty() ? store.Administrator.LoginName + "@localhost" : options.Mail;
  if (const auto made = embedded::InitStore(store, platform::SystemClock()); !made) {
    PrintError(options.Directory, made.error());
    return exit_status::DoneWithErrors;
  }
  PrintLine(fmt::format("Speicher des Servers {} in {} angelegt", store.ServerName, store.HostDirectory));
  PrintLine(
      fmt::format("Administrator ist {} <{}>", store.Administrator.Name, store.Administrator.MailAddress));

  const auto registered = embedded::RegisterServer(platform::FindHostDirectories().Config,
                                                   {store.ServerName, store.HostDirectory});
  if (!registered) {
    PrintError("Der Server konnte nicht als Standardserver eingetragen werden", registered.error());
    return exit_status::DoneWithErrors;
  }
  PrintLine(fmt::format("{} ist jetzt der Standardserver", store.ServerName));
  if (const auto set = SetSendmail(store.HostDirectory, options.Sendmail); !set) {
    PrintError("sendmail", set.error());
    return exit_status::DoneWithErrors;
  }
  return exit_status::Done;
}

}  // namespace velmora::cli
