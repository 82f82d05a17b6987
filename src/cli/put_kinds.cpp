#include "cli/put_kinds.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "cli/option_names.h"
#include "store/fields.h"
#include "store/item_properties.h"
#include "store/vocabulary.h"

namespace velmora::cli {
namespace {

using store::PropertyKind;
namespace field_name = store::field_name;
namespace item_type = store::item_type;

std::vector<FieldOption> CommonFields() {
  return {{"--date", "StatusTime", PropertyKind::Date, "Datum des Eintrags (sonst jetzt)"},
          {"--comment", "Comment", PropertyKind::Text, "Kommentar zum Eintrag"}};
}

std::vector<FieldOption> MessageFields() {
  auto fields = CommonFields();
  const std::array<FieldOption, 11> own{{
      {"--subject", "Subject", PropertyKind::Text, "Betreff"},
      {"--from", "SenderAddress", PropertyKind::Text, "Absender"},
      {"--from-name", field_name::SenderDisplayName, PropertyKind::Text, "Angezeigter Name des Absenders"},
      {std::string(RecipientOption), "RecipientAddress", PropertyKind::Text, "Empfänger"},
      {"--text", "PlainText", PropertyKind::Text, "Text der Nachricht"},
      {"--status", "Status", PropertyKind::Number, "Versandstatus, 0 bis 99"},
      {"--priority", "Priority", PropertyKind::Number, "Priorität: 0 normal, 1 niedrig, 2 hoch"},
      {"--pages", field_name::Pages, PropertyKind::Number, "Seiten"},
      {"--distribution-id", field_name::DistributionID, PropertyKind::Text, "Verteilerkennung"},
      {"--creator", "Creator", PropertyKind::Number, "Erzeuger (Nummer des Benutzers)"},
      {"--owner", "Owner", PropertyKind::Number, "Besitzer (Nummer des Benutzers)"},
  }};
  fields.insert(fields.begin(), own.begin(), own.end());
  return fields;
}

// An option for each property of a table.
template <const auto& Table>
std::vector<FieldOption> PropertyFields() {
  std::vector<FieldOption> fields;
  for (const auto& info : Table) {
    fields.push_back({"--" + KebabCase(info.Name), info.Name, info.Kind, info.Label});
  }
  std::ranges::move(CommonFields(), std::back_inserter(fields));
  return fields;
}

}  // namespace

const std::vector<PutKind>& PutKinds() {
  static const std::vector<PutKind> kinds{
      {"put-fax", "Faxe ablegen, je TIFF-Datei eines", item_type::Fax, "Fax", PutFiles::Content,
       MessageFields},
      {"put-voice", "Sprachnachrichten ablegen, je Wave-Datei eine", item_type::Voice, "Voice",
       PutFiles::Content, MessageFields},
      {"put-sms", "Eine SMS ablegen", item_type::SMS, "SMS", PutFiles::None, MessageFields},
      {"put-address", "Adressen ablegen, aus vCards oder einzeln", item_type::Address, "", PutFiles::Cards,
       PropertyFields<store::AddressProperties>},
      {"put-event", "Einen Termin ablegen", item_type::Calendar, "", PutFiles::None,
       PropertyFields<store::CalendarProperties>},
      {"put-task", "Eine Aufgabe ablegen", item_type::Task, "", PutFiles::None,
       PropertyFields<store::TaskProperties>},
      {"put-link", "Eine Verknüpfung ablegen", item_type::Link, "", PutFiles::None,
       PropertyFields<store::LinkProperties>},
      {"put-tv-program", "Eine Fernsehsendung ablegen", item_type::TVProgram, "", PutFiles::None,
       PropertyFields<store::TvProgramProperties>},
  };
  return kinds;
}

const std::vector<FlagOption>& FlagOptions() {
  namespace item_flag = store::item_flag;
  static const std::vector<FlagOption> options{
      {"--viewed", item_flag::Viewed, "Als gelesen kennzeichnen"},
      {"--received", item_flag::Received, "Als empfangen kennzeichnen"},
      {"--printed", item_flag::Printed, "Als gedruckt kennzeichnen"},
      {"--changed", item_flag::Changed, "Als geändert kennzeichnen"},
      {"--inhibited", item_flag::Inhibited, "Vom System ausblenden"},
      {"--user-inhibited", item_flag::UserInhibited, "Vom Benutzer ausblenden"},
      {"--deleted", item_flag::Deleted, "Als gelöscht kennzeichnen"},
  };
  return options;
}

}  // namespace velmora::cli
