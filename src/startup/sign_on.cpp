#include "startup/sign_on.h"

#include <fmt/format.h>

#include <string>

#include "base/text.h"
#include "settings/options_table.h"
#include "startup/main_sequence.h"
#include "startup/settings_session.h"
#include "store/errors.h"

namespace velmora::startup {
namespace {

constexpr std::string_view LogPrefix = "DvISE-Error ";

// Who watches sees a box; an unattended run has its log.
void ReportFailure(Context& context, std::string_view title, std::string_view text, const Error& error,
                   std::string_view boxText) {
  if (context.process.BatchMode) {
    context.run.LogError(text, {error.Number, std::string(LogPrefix) + error.Text});
  } else {
    context.prompts().Message(title, boxText, run::Icon::Stop);
  }
}

void ReportNoSession(Context& context, const Error& error) {
  constexpr std::string_view Text = "Die Anmeldung am DvISE ist fehlgeschlagen!";
  ReportFailure(context, "Velmora - Anmeldung", Text, error, fmt::format("{}\r\n{}", Text, error.Text));
}

// Each start without a named server goes to the last used one: as long as that cannot be reached, no start
// succeeds, and nobody who looks at the message alone would know where its name comes from.
std::string HintOnLastUsedServer(Context& context) {
  const std::string& server = context.session.ServerName;
  if (server.empty() || !EqualsFold(server, LastUsedServer(context))) {
    return "";
  }
  const std::string path = context.settingsStore.FilePath(settings::Scope::User);
  return fmt::format(". Den Server nennt {} in {}: dort ändern oder entfernen",
                     settings::name::LastUsedServer, context.fileSystem.HostPath(path).value_or(path));
}

Status LogOn(Context& context, std::string_view server) {
  Result<std::unique_ptr<store::DvAccount>> account = context.session.Api->Logon(server);
  if (!account) {
    return Fail(account.error());
  }
  context.session.Account = *std::move(account);
  return {};
}

// False for a user without any rights.
bool TakeRights(Context& context) {
  store::Session& session = context.session;
  session.Trustees = session.ServerTrustees = session.Account->User().Trustees();
  if (session.Trustees == 0) {
    constexpr std::string_view Text = "Der aktuelle Benutzer ist nicht als DvISE-Benutzer eingetragen!";
    ReportFailure(context, "Velmora - Abbruch", Text,
                  {store::store_error::NoAccess, session.Account->User().LoginName()}, Text);
    return false;
  }
  ApplyForcedRights(context);
  return true;
}

bool TakeDefaultArchive(Context& context) {
  store::Session& session = context.session;
  Result<std::shared_ptr<store::DvArchive>> root = session.Account->GetSpecialArchive(
      session.IsAdministrator() ? store::special::ArchiveRoot : store::special::OwnRoot);
  if (!root && session.IsAdministrator()) {
    root = session.Account->GetSpecialArchive(store::special::OwnRoot);
  }
  if (!root) {
    ReportNoSession(context, root.error());
    return false;
  }
  session.DefaultArchive = *std::move(root);
  return true;
}

}  // namespace

std::string LastUsedServer(Context& context) {
  return settings::ToText(context.settingsStore.GetUserSetting(
      settings::section::Options, settings::name::LastUsedServer, std::string()));
}

void ChooseServer(Context& context) {
  const std::string& named = context.process.NamedServer;
  context.session.ServerName = named.empty() ? LastUsedServer(context) : named;
}

bool SignOn(Context& context) {
  store::Session& session = context.session;
  SignOff(context);
  Result<std::shared_ptr<store::DvISEAPI>> api = context.makeApi();
  if (!api) {
    ReportNoSession(context, api.error());
    return false;
  }
  session.Api = *std::move(api);
  if (const Status signedOn = LogOn(context, session.ServerName); !signedOn) {
    ReportNoSession(context,
                    {signedOn.error().Number, signedOn.error().Text + HintOnLastUsedServer(context)});
    return false;
  }
  session.ServerName = session.Account->Description();
  SaveServerList(context);
  session.BackendType = session.Account->BackendType();
  return TakeRights(context) && TakeDefaultArchive(context);
}

void SignOff(Context& context) {
  store::Session& session = context.session;
  session.LeftArchive.reset();
  session.RightArchive.reset();
  session.DefaultArchive.reset();
  if (session.Account != nullptr) {
    session.Account->Logoff();
    session.Account.reset();
  }
}

ServerChange ChangeServer(Context& context, std::string_view name) {
  if (name.empty()) {
    return ServerChange::None;
  }
  store::Session& session = context.session;
  const std::string oldServer = session.Account->Description();
  session.ServerName = name;
  context.run.frontEnd().status.SetStatusText("Warten auf Serveranmeldung");
  SignOff(context);
  if (LogOn(context, session.ServerName)) {
    context.process.ServerChanging = true;
    return RestartSession(context).CanGoOn ? ServerChange::Changed : ServerChange::Ended;
  }
  context.prompts().Message(
      "Logon", fmt::format("Die Anmeldung an {} ist fehlgeschlagen !", session.ServerName), run::Icon::Stop);
  // The session falls back to the default server, while the name shown stays the old one's.
  session.ServerName = oldServer;
  const bool standing = LogOn(context, "") && TakeRights(context) && TakeDefaultArchive(context);
  if (!standing) {
    return ServerChange::Ended;
  }
  session.LeftArchive = session.RightArchive = session.DefaultArchive;
  return ServerChange::Failed;
}

}  // namespace velmora::startup
