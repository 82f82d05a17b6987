#include <fmt/core.h>

#include <cstdio>

#include "base/text.h"
#include "cli/archive_path.h"
#include "cli/exit_status.h"
#include "cli/mail_source.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/store_commands.h"
#include "platform/clock.h"
#include "run/console_front_end.h"
#include "store/embedded/embedded_store.h"

namespace velmora::cli {
namespace {

// One call of the command: the target, what has been done so far, and whoever watches.
struct Delivery {
  store::DvAccount& Account;
  store::DvArchive& Target;
  run::Progress& Progress;
  std::int64_t Delivered = 0;
  std::int64_t Errors = 0;
  bool Cancelled = false;

  void Report(std::string_view origin, const Error& error) {
    ++Errors;
    PrintError(origin, error);
  }
};

void DeliverOne(Delivery& delivery, const SourceMessage& message) {
  store::embedded::DeliverOptions options;
  options.Viewed = message.Viewed;
  options.Mailbox = message.Origin;
  const auto key = store::embedded::DeliverMessage(delivery.Account, delivery.Target, message.Bytes, options);
  if (key) {
    ++delivery.Delivered;
  } else {
    delivery.Report(message.Origin, key.error());
  }
}

void DeliverSource(Delivery& delivery, platform::FileSystem& fileSystem, const std::string& hostPath) {
  const auto source = OpenMailSource(fileSystem, WindowsPath(fileSystem, hostPath));
  if (!source) return delivery.Report(hostPath, source.error());
  delivery.Progress.SetArchiveText(hostPath);
  while (true) {
    delivery.Progress.SetBar((*source)->Done(), (*source)->Total());
    delivery.Cancelled = delivery.Progress.Pump();
    if (delivery.Cancelled) return;
    const auto message = (*source)->Next();
    if (!message) {
      delivery.Report(message.error().Origin, message.error().Cause);
    } else if (*message) {
      DeliverOne(delivery, **message);
    } else {
      return;
    }
  }
}

int Finish(Delivery& delivery) {
  if (const auto committed = delivery.Account.Commit(); !committed) {
    delivery.Report("Speichern", committed.error());
  }
  if (const auto warning = delivery.Account.TakeWarning()) PrintError("Warnung", *warning);
  if (delivery.Cancelled) PrintError("Abgebrochen");
  PrintLine(fmt::format("{} Nachricht(en) zugestellt, {} Fehler", delivery.Delivered, delivery.Errors));
  return delivery.Errors == 0 && !delivery.Cancelled ? exit_status::Done : exit_status::DoneWithErrors;
}

}  // namespace

int RunStoreDeliver(const DeliverCommandOptions& options) {
  if (Trim(options.Archive).empty()) {
    PrintError("Der Pfad des Zielarchivs ist leer");
    return exit_status::WrongUsage;
  }
  const auto access = SignOn(options.Store);
  if (!access) {
    PrintError("Anmeldung fehlgeschlagen", access.error());
    return exit_status::NoSignOn;
  }
  const auto target = GetOrCreateArchive(*access->Account, options.Archive);
  if (!target) {
    PrintError(options.Archive, target.error());
    return exit_status::DoneWithErrors;
  }
  run::ConsoleFrontEnd console(platform::SystemClock(), stdin, stderr,
                               run::ConsoleFrontEnd::IsTerminal(stdin, stderr));
  Delivery delivery{*access->Account, **target, console.Set().progress};
  delivery.Progress.Show("Zustellung");
  for (const auto& source : options.Sources) {
    DeliverSource(delivery, *access->FileSystem, source);
    if (delivery.Cancelled) break;
  }
  delivery.Progress.Close();
  return Finish(delivery);
}

}  // namespace velmora::cli
