#include "panes/dialogs/program_texts.h"

#include <fmt/format.h>

#include "platform/host.h"
#include "settings/product.h"

namespace velmora::panes {
namespace {

std::string VersionText(const settings::ProductVersion& version) {
  return fmt::format("{}.{}.{}", version.Major, version.Minor, version.Revision);
}

}  // namespace

std::string AboutText(const settings::ProductVersion& version) {
  return fmt::format("{}\r\nVersion {}\r\n© {}", settings::ProductName, VersionText(version),
                     settings::LegalCopyright);
}

std::vector<InformationRow> SystemInformation(store::Session& session,
                                              const settings::ProductVersion& version,
                                              const InformationPlaces& places) {
  std::vector<InformationRow> rows = {
      {"Programm", fmt::format("{} {}", settings::ProductName, VersionText(version))},
      {"Arbeitsstation", platform::ComputerName()},
      {"Angemeldet am System", platform::UserFullName()},
  };
  if (session.Account != nullptr) {
    store::DvAccount& account = *session.Account;
    rows.push_back({"Server", account.Description()});
    rows.push_back({"Produkt", account.ProductName()});
    rows.push_back({"Backend", account.BackendDescription()});
    rows.push_back({"David-Verzeichnis", account.DavidRoot()});
    rows.push_back({"Benutzer", fmt::format("{} ({})", account.User().Name(), account.User().Mailaddress())});
    rows.push_back({"Rechte", fmt::format("0x{:X}", session.Trustees)});
  }
  if (session.Api != nullptr) {
    rows.push_back(
        {"DvISE API", fmt::format("{} {}.{}.{}", session.Api->Description(), session.Api->MajorVersion(),
                                  session.Api->MinorVersion(), session.Api->Revision())});
  }
  rows.push_back({"Fehlerprotokoll", std::string(places.ErrorLog)});
  rows.push_back({"Temporäres Verzeichnis", std::string(places.TempDir)});
  rows.push_back({"Formulare", std::string(places.DesignPath)});
  rows.push_back({"Konfiguration", std::string(places.ConfigDirectory)});
  return rows;
}

}  // namespace velmora::panes
