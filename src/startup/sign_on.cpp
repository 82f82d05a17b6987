#include "startup/sign_on.h"

#include <fmt/format.h>

#include <string>

#include "startup/main_sequence.h"
#include "startup/settings_session.h"
#include "store/errors.h"

namespace velmora::startup {
namespace {

constexpr std::string_view LogPrefix = "DvISE-Error ";

Status LogOn(Context& context, std::string_view server) {
  Result<std::unique_ptr<store::DvAccount>> account = context.session.Api->Logon(server);
  if (!account) {
    return Fail(account.error().Number, std::string(LogPrefix) + account.error().Text);
  }
  context.session.Account = *std::move(account);
  return {};
}

// False for a user without any rights.
bool TakeRights(Context& context) {
  store::Session& session = context.session;
  session.Trustees = session.ServerTrustees = session.Account->User().Trustees();
  if (session.Trustees == 0) {
    ReportFailure(
        context, "Velmora - Abbruch", "Der aktuelle Benutzer ist nicht als DvISE-Benutzer eingetragen!",
        {store::store_error::NoAccess, std::string(LogPrefix) + session.Account->User().LoginName()});
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
    ReportFailure(context, "Velmora - Anmeldung", "Die Anmeldung am DvISE ist fehlgeschlagen!",
                  {root.error().Number, std::string(LogPrefix) + root.error().Text});
    return false;
  }
  session.DefaultArchive = *std::move(root);
  return true;
}

}  // namespace

bool SignOn(Context& context) {
  store::Session& session = context.session;
  SignOff(context);
  Result<std::shared_ptr<store::DvISEAPI>> api = context.makeApi();
  Status signedOn = api ? Status{} : Fail(api.error());
  if (signedOn) {
    session.Api = *std::move(api);
    signedOn = LogOn(context, session.ServerName);
  }
  if (!signedOn) {
    ReportFailure(context, "Velmora - Anmeldung", "Die Anmeldung am DvISE ist fehlgeschlagen!",
                  signedOn.error());
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
