#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "base/text.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/store_commands.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_setup.h"

namespace velmora::cli {
namespace {

namespace embedded = store::embedded;
namespace site_value = embedded::site_value;

// What an administrator may change; the server's name is part of every path and stays.
constexpr std::array<std::string_view, 11> Names{
    site_value::Company,      site_value::SiteID,   site_value::SiteEnvironment, site_value::SiteIDChg,
    site_value::SiteReg,      site_value::Account,  site_value::Sendmail,        site_value::CoverPages,
    site_value::FaxTemplates, site_value::Graphics, site_value::BroadcastLists};

int Show(embedded::SiteDatabase& site) {
  for (const auto name : Names) {
    const auto value = site.Value(name);
    if (!value) {
      PrintError(name, value.error());
      return exit_status::DoneWithErrors;
    }
    PrintLine(fmt::format("{}={}", name, BlankControlCharacters(*value)));
  }
  return FlushOutput() ? exit_status::Done : exit_status::DoneWithErrors;
}

int Change(embedded::SiteDatabase& site, const std::vector<std::string>& changes) {
  for (const auto& change : changes) {
    const auto parts = Split(change, "=", 2);
    if (const auto set = site.SetValue(parts[0], parts[1]); !set) {
      PrintError(parts[0], set.error());
      return exit_status::DoneWithErrors;
    }
  }
  return exit_status::Done;
}

bool IsChange(const std::string& change) {
  const auto parts = Split(change, "=", 2);
  return parts.size() == 2 && std::ranges::find(Names, parts[0]) != Names.end();
}

}  // namespace

int RunStoreSite(const SiteOptions& options) {
  const auto wrong = std::ranges::find_if_not(options.Changes, IsChange);
  if (wrong != options.Changes.end()) {
    PrintError(fmt::format("{} ist kein NAME=WERT der Standortdaten", *wrong));
    return exit_status::WrongUsage;
  }
  const auto access =
      SignOnAsAdministrator(options.Store, "Standortdaten zeigt und ändert nur ein Administrator");
  if (!access) return access.error();
  auto site = embedded::SiteDatabase::Open(embedded::SiteDatabasePath(access->Location.HostDirectory));
  if (!site) {
    PrintError("Standortdaten", site.error());
    return exit_status::DoneWithErrors;
  }
  return options.Changes.empty() ? Show(*site) : Change(*site, options.Changes);
}

}  // namespace velmora::cli
