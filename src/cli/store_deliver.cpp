#include <fmt/core.h>

#include "cli/mail_source.h"
#include "cli/store_commands.h"
#include "cli/store_writing.h"
#include "store/embedded/embedded_store.h"

namespace velmora::cli {
namespace {

void DeliverOne(StoreWriting& delivery, const SourceMessage& message) {
  store::embedded::DeliverOptions options;
  options.Viewed = message.Viewed;
  options.Mailbox = message.Origin;
  const auto key =
      store::embedded::DeliverMessage(delivery.Account(), delivery.Target(), message.Bytes, options);
  if (key) {
    delivery.NoteDone();
  } else {
    delivery.Report(message.Origin, key.error());
  }
}

// False once the user has cancelled.
bool DeliverSource(StoreWriting& delivery, const std::string& hostPath) {
  const auto source = OpenMailSource(delivery.Files(), WindowsPath(delivery.Files(), hostPath));
  if (!source) {
    delivery.Report(hostPath, source.error());
    return true;
  }
  delivery.Progress().SetArchiveText(hostPath);
  while (!delivery.IsCancelled((*source)->Done(), (*source)->Total())) {
    const auto message = (*source)->Next();
    if (!message) {
      delivery.Report(message.error().Origin, message.error().Cause);
    } else if (*message) {
      DeliverOne(delivery, **message);
    } else {
      return true;
    }
  }
  return false;
}

}  // namespace

int RunStoreDeliver(const DeliverCommandOptions& options) {
  auto delivery = StoreWriting::Open(options.Store, options.Archive, "Zustellung");
  if (!delivery) return delivery.error();
  for (const auto& source : options.Sources) {
    if (!DeliverSource(*delivery, source)) break;
  }
  return delivery->Finish(
      [](std::int64_t count) { return fmt::format("{} Nachricht(en) zugestellt", count); });
}

}  // namespace velmora::cli
