#include "panes/commands/session_commands.h"

#include <string>

#include "panes/commands/dispatch.h"
#include "panes/commands/pane_changes.h"
#include "startup/main_sequence.h"
#include "startup/settings_session.h"
#include "startup/sign_on.h"
#include "store/filter.h"

namespace velmora::panes {
namespace {

bool Asks(CommandContext& context, std::string_view title, std::string_view text) {
  return context.prompts().Question(title, text, run::Buttons::YesNo, run::Answer::Yes) == run::Answer::Yes;
}

Outcome EndOfSession() {
  Outcome outcome;
  outcome.Session = SessionChange::Ended;
  outcome.ExitStatus = startup::exit_status::NothingRan;
  return outcome;
}

// The session is another one: what was read of the old one is read anew.
Outcome TakeNewSession(CommandContext& context) {
  context.Panes.SignedOn();
  context.FormTexts = FormUserTexts::Of(context.App.options);
  context.Designs.Choose(context.App.options.DesignPath, context.App.options.ArchiveDesign);
  (void)context.Designs.LoadDesignSet();  // without a readable design file its forms have default names
  Outcome outcome = ListVisiblePanes(context);
  outcome.Session = SessionChange::Reloaded;
  outcome.LayoutChanged = outcome.FilterChanged = outcome.OptionsChanged = outcome.ErrorLogChanged = true;
  return outcome;
}

std::shared_ptr<store::DvArchive> Reopen(store::Session& session, const std::string& path) {
  const auto archive = session.Account->GetArchive(path);
  return archive ? *archive : session.DefaultArchive;
}

std::string PathOf(const std::shared_ptr<store::DvArchive>& archive) {
  return archive == nullptr ? "" : archive->FullPath();
}

// What the archive panes show, under another filter.
Outcome ListArchivePanes(CommandContext& context) {
  Outcome outcome;
  ListAnew(context.Panes.Left());
  outcome.LeftChanged = true;
  if (!context.Panes.ShowsFiles()) {
    ListAnew(context.Panes.Right());
    outcome.RightChanged = true;
  }
  if (context.Panes.ActiveView() != PaneView::RFSView) outcome.CurrentRow = 0;
  return outcome;
}

}  // namespace

Outcome SaveAllSettings(CommandContext& context) {
  if (Asks(context, "Speichern", "Aktuelle Einstellungen speichern ?")) {
    startup::SaveSettings(context.App, true);
  }
  return {};
}

Outcome ExitProgram(CommandContext& context, bool ask) {
  Outcome outcome;
  if (startup::ConfirmExit(context.App, ask)) outcome.ExitStatus = startup::exit_status::Done;
  return outcome;
}

Outcome RefreshAccount(CommandContext& context) {
  if (!Asks(context, "Account", "Account aktualisieren nach Änderung der Benutzerkonfiguration ?")) return {};
  store::Session& session = context.App.session;
  const std::string left = PathOf(session.LeftArchive);
  const std::string right = PathOf(session.RightArchive);
  if (!startup::SignOn(context.App)) return EndOfSession();
  session.LeftArchive = Reopen(session, left);
  session.RightArchive = Reopen(session, right);
  return TakeNewSession(context);
}

Outcome RunChangeServer(CommandContext& context, const std::string& server) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  switch (startup::ChangeServer(context.App, server)) {
    case startup::ServerChange::None:
      return {};
    case startup::ServerChange::Ended:
      return EndOfSession();
    case startup::ServerChange::Changed:
    case startup::ServerChange::Failed:
      break;
  }
  return TakeNewSession(context);
}

Outcome ResetFilter(CommandContext& context) {
  context.App.options.DvItemFilter = static_cast<std::int32_t>(store::filter_preset::None);
  context.prompts().Message("Filterstatus", "Alle Message Filter wurden deaktiviert", run::Icon::Information);
  Outcome outcome = ListArchivePanes(context);
  outcome.FilterChanged = true;
  return outcome;
}

Outcome RunFilterOk(CommandContext& context, bool changed) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered()) return {};
  Outcome outcome;
  if (changed) outcome = ListArchivePanes(context);
  outcome.FilterChanged = true;
  return outcome;
}

Outcome RunOptionsOk(CommandContext& context, const OptionsAnswer& answer) {
  const BusyScope busy(context.Busy);
  if (!busy.Entered() || !answer.Closes) return {};
  if (answer.DesignChanged) {
    context.Designs.Choose(context.App.options.DesignPath, context.App.options.ArchiveDesign);
    (void)context.Designs.LoadDesignSet();  // without a readable design file its forms have default names
  }
  if (answer.TextsChanged) context.FormTexts = FormUserTexts::Of(context.App.options);
  startup::LimitRights(context.App.session);
  if (answer.Saves) startup::SaveSettings(context.App, true);
  Outcome outcome;
  if (answer.AnyChanged) outcome = ListVisiblePanes(context);
  outcome.OptionsChanged = true;
  outcome.LayoutChanged = answer.AnyChanged;
  return outcome;
}

}  // namespace velmora::panes
