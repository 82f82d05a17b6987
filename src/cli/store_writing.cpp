#include "cli/store_writing.h"

#include <fmt/core.h>

#include <cstdio>
#include <utility>

#include "base/text.h"
#include "cli/archive_path.h"
#include "cli/exit_status.h"
#include "cli/output.h"
#include "platform/clock.h"

namespace velmora::cli {

tl::expected<StoreWriting, int> StoreWriting::Open(const std::string& storeOption,
                                                   std::string_view archivePath, std::string_view title) {
  if (Trim(archivePath).empty()) {
    PrintError("Der Pfad des Zielarchivs ist leer");
    return tl::unexpected(exit_status::WrongUsage);
  }
  auto access = SignOn(storeOption);
  if (!access) {
    PrintError("Anmeldung fehlgeschlagen", access.error());
    return tl::unexpected(exit_status::NoSignOn);
  }
  auto target = GetOrCreateArchive(*access->Account, archivePath);
  if (!target) {
    PrintError(archivePath, target.error());
    return tl::unexpected(exit_status::DoneWithErrors);
  }
  StoreWriting writing(std::move(*access));
  writing.target_ = std::move(*target);
  writing.console_ = std::make_unique<run::ConsoleFrontEnd>(platform::SystemClock(), stdin, stderr,
                                                            run::ConsoleFrontEnd::IsTerminal(stdin, stderr));
  writing.Progress().Show(title);
  return writing;
}

void StoreWriting::Report(std::string_view origin, const Error& error) {
  ++errors_;
  PrintError(origin, error);
}

bool StoreWriting::IsCancelled(std::int64_t position, std::int64_t total) {
  Progress().SetBar(position, total);
  isCancelled_ = isCancelled_ || Progress().Pump();
  return isCancelled_;
}

int StoreWriting::Finish(const std::function<std::string(std::int64_t)>& counted) {
  Progress().Close();
  if (const auto committed = Account().Commit(); !committed) Report("Speichern", committed.error());
  if (const auto warning = Account().TakeWarning()) PrintError("Warnung", *warning);
  if (isCancelled_) PrintError("Abgebrochen");
  PrintLine(fmt::format("{}, {} Fehler", counted(done_), errors_));
  return errors_ == 0 && !isCancelled_ ? exit_status::Done : exit_status::DoneWithErrors;
}

}  // namespace velmora::cli
