#include "mailarchive/message_export.h"

#include <fmt/format.h>

#include "html/converters.h"
#include "mailarchive/address_export.h"
#include "mailarchive/fax_export.h"
#include "mailarchive/mail_export.h"
#include "mailarchive/voice_export.h"
#include "store/filter.h"
#include "store/vocabulary.h"

namespace velmora::mailarchive {

MessageExport::MessageExport(const ExportContext& context)
    : context_(context),
      userTexts_{html::TextToHtml(context.options.CopyRight, false),
                 html::TextToHtml(context.options.Comment, true)},
      userNames_(*context.session.Account) {}

void MessageExport::ExportMessage(ExportPlace& place, store::EntryKey key) {
  run::Run& run = context_.run;
  if (run.CheckCancel()) return;
  const auto view = place.Archive().ItemView(key);
  if (!view) {
    run.LogError(place.ArchivePath() + " vID falsch", view.error().Number, "DvISE-Error " + view.error().Text,
                 run::Severity::Error);
  } else if (const auto entry = MakeExport(place, **view)) {
    const auto flags = (*view)->Item().Fields().Get(store::tag::Flags);
    const auto bits = static_cast<std::uint32_t>(flags ? store::FieldNumber(*flags) : 0);
    if (store::PassesInhibition(bits, context_.options.InhibitItems)) ExportEntry(*entry);
  }
  ShowCounters();
}

std::unique_ptr<EntryExport> MessageExport::MakeExport(ExportPlace& place, store::DvItemView& view) {
  const bool onlyAttachments = context_.options.OnlyAttachments;
  switch (view.Type()) {
    case store::item_type::EMail:
    case store::item_type::SMS:
    case store::item_type::Video:
    case store::item_type::Audio:
      if (auto* mail = view.AsMail()) {
        return std::make_unique<MailExport>(context_, userTexts_, place, *mail);
      }
      return nullptr;
    case store::item_type::Fax:
      if (auto* fax = view.AsFax(); fax != nullptr && !onlyAttachments) {
        return std::make_unique<FaxExport>(context_, userTexts_, place, *fax, userNames_);
      }
      return nullptr;
    case store::item_type::Voice:
      if (auto* voice = view.AsVoice()) {
        return std::make_unique<VoiceExport>(context_, userTexts_, place, *voice);
      }
      return nullptr;
    case store::item_type::Address:
      if (auto* address = view.AsAddress(); address != nullptr && !onlyAttachments) {
        return std::make_unique<AddressExport>(context_, userTexts_, place, *address);
      }
      return nullptr;
    default:
      return nullptr;
  }
}

void MessageExport::ExportEntry(EntryExport& entry) {
  run::Run& run = context_.run;
  entry.ReadValues();
  const auto status = store::SendStatus(entry.SendStatus());
  if (status.IsFailure && entry.ObeysSendStatus() && !context_.options.WithErrors) {
    run.LogError(entry.LogName(), std::string(status.German), "DvISE Mailstatus Error (nicht archiviert)",
                 run::Severity::Error);
  } else {
    entry.Export(status.IsFailure, status.German);
    if (status.IsFailure && context_.session.IsAdministrator()) {
      run.LogError(entry.LogName(), std::string(status.German),
                   "DvISE Mailstatus Error (trotzdem archiviert)", run::Severity::Warning);
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
