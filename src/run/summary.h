// The summary box that ends each long run.
#pragma once

#include <cstdint>
#include <string>

#include "run/run.h"

namespace velmora::run {

enum class RunKind {
  MailArchiveExport,
  Import,
  RuleCopy,
  ArchiveCopy,
  PropertyChange,
  Cleaning,
  FileSystemCopy,
  RemoteAccessChange,
};

// The counts of a kind of run, each on a line ended by CR LF.
std::string SummaryCounts(RunKind kind, const Counters& counters);
// The whole text: the counts, "mit N Fehler(n)" with a hint on the log if there were any, and the time.
std::string RunSummaryText(RunKind kind, const Counters& counters, std::int64_t elapsedSeconds);
// Shows the box "Beendet" with the counters and the time of the run. An unattended run shows none.
void ShowRunSummary(Run& run, RunKind kind);

}  // namespace velmora::run
