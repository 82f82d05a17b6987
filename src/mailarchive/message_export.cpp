#include "mailarchive/message_export.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "html/converters.h"
#include "store/filter.h"
#include "store/vocabulary.h"

namespace velmora::mailarchive {

namespace {

// The kinds of entries that are exported as mails.
constexpr std::array MailTypes = {store::item_type::EMail, store::item_type::SMS, store::item_type::Video,
                                  store::item_type::Audio};

bool IsMailType(int type) { return std::ranges::find(MailTypes, type) != MailTypes.end(); }

}  // namespace

MessageExport::MessageExport(const ExportContext& context)
    : context_(context),
      userTexts_{html::TextToHtml(context.options.CopyRight, false),
                 html::TextToHtml(context.options.Comment, true)} {}

void MessageExport::ExportMessage(ExportPlace& place, store::EntryKey key) {
  run::Run& run = context_.run;
  if (run.CheckCancel()) return;
  const auto view = place.Archive().ItemView(key);
  if (!view) {
    run.LogError(place.ArchivePath() + " vID falsch", view.error().Number, "DvISE-Error " + view.error().Text,
                 run::Severity::Error);
  } else if (store::DvMailItem* mail = (*view)->AsMail(); mail != nullptr && IsMailType((*view)->Type())) {
    ExportMail(place, *mail);
  }
  ShowCounters();
}

void MessageExport::ExportMail(ExportPlace& place, store::DvMailItem& mail) {
  run::Run& run = context_.run;
  const auto flags = mail.Item().Fields().Get(store::tag::Flags);
  const auto bits = static_cast<std::uint32_t>(flags ? store::FieldNumber(*flags) : 0);
  if (!store::PassesInhibition(bits, context_.options.InhibitItems)) return;
  MailExport entry(context_, userTexts_, place, mail);
  entry.ReadValues();
  const auto status = store::SendStatus(entry.SendStatus());
  const std::string logName = place.ArchivePath() + "/" + entry.Subject();
  if (status.IsFailure && !context_.options.WithErrors) {
    run.LogError(logName, std::string(status.German), "DvISE Mailstatus Error (nicht archiviert)",
                 run::Severity::Error);
  } else {
    entry.Export(status.IsFailure, status.German);
    if (status.IsFailure && context_.session.IsAdministrator()) {
      run.LogError(logName, std::string(status.German), "DvISE Mailstatus Error (trotzdem archiviert)",
                   run::Severity::Warning);
    }
  }
  ++run.counters.Entries;
  run.frontEnd().progress.SetItemText(entry.Subject());
}

void MessageExport::ShowCounters() {
  const run::Counters& counters = context_.run.counters;
  context_.run.frontEnd().status.SetStatusText(
      fmt::format("Mail:{}/Att:{}/Fax:{}/Voice:{}/Addr:{}/Err:{}", counters.Mails, counters.Attachments,
                  counters.Faxes, counters.VoiceMails, counters.Addresses, counters.Errors));
}

}  // namespace velmora::mailarchive
