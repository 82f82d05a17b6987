#include "run/summary.h"

#include <fmt/format.h>

#include <array>
#include <span>
#include <string_view>

#include "base/date_time.h"

namespace velmora::run {
namespace {

using Counter = std::int64_t Counters::*;

// One line: text, number, text. A line without a counter is only its text.
struct CountLine {
  std::string_view Before;
  Counter Number;
  std::string_view Label;
};

constexpr std::array MailArchiveLines = {
    CountLine{"", &Counters::Mails, " Mail(s)"},
    CountLine{"", &Counters::Attachments, " Attachment(s)"},
    CountLine{"", &Counters::Faxes, " Fax(e)"},
    CountLine{"", &Counters::VoiceMails, " VoiceMail(s)"},
    CountLine{"", &Counters::Addresses, " Adresse(n)"},
    CountLine{"", &Counters::Links, " Link(s)"},
    CountLine{"", &Counters::EmlFiles, " EML-File(s)"},
};
constexpr std::array ImportLines = {
    CountLine{"", &Counters::Mails, " Mail(s)"},
    CountLine{"", &Counters::Faxes, " Fax(e)"},
    CountLine{"", &Counters::VoiceMails, " VoiceMail(s)"},
};
constexpr std::array RuleLines = {CountLine{"", &Counters::Rules, " Regel(n)"}};
constexpr std::array ArchiveLines = {
    CountLine{"", &Counters::Archives, " Archiv(e)"},
    CountLine{"", &Counters::Messages, " Message(s)"},
};
// "Messages(s)" is deliberate: users know the text so.
constexpr std::array ChangedMessageLines = {
    CountLine{"", &Counters::Messages, " Messages(s)"},
    CountLine{"in", nullptr, ""},
    CountLine{"", &Counters::ChangedArchives, " Archiv(en)"},
};
constexpr std::array FileLines = {
    CountLine{"", &Counters::Directories, " Verzeichniss(e)"},
    CountLine{"", &Counters::Files, " Datei(en)"},
};
constexpr std::array RemoteAccessLines = {
    CountLine{"Remote Access von ", &Counters::ChangedArchives, " Archiv(en)"},
};

struct SummaryForm {
  RunKind Kind;
  std::span<const CountLine> Lines;
  std::string_view ClosingWord;
};

// In the order of RunKind.
constexpr std::array SummaryForms = {
    SummaryForm{RunKind::MailArchiveExport, MailArchiveLines, " s archiviert"},
    SummaryForm{RunKind::Import, ImportLines, " s importiert"},
    SummaryForm{RunKind::RuleCopy, RuleLines, " s kopiert/verschoben"},
    SummaryForm{RunKind::ArchiveCopy, ArchiveLines, " s kopiert/verschoben"},
    SummaryForm{RunKind::PropertyChange, ChangedMessageLines, " s geändert"},
    SummaryForm{RunKind::Cleaning, ChangedMessageLines, " s bereinigt"},
    SummaryForm{RunKind::FileSystemCopy, FileLines, " s kopiert/verschoben"},
    SummaryForm{RunKind::RemoteAccessChange, RemoteAccessLines, " s geändert"},
};

const SummaryForm& FormOf(RunKind kind) { return SummaryForms.at(static_cast<std::size_t>(kind)); }

}  // namespace

std::string SummaryCounts(RunKind kind, const Counters& counters) {
  std::string text;
  for (const CountLine& line : FormOf(kind).Lines) {
    text += line.Before;
    if (line.Number != nullptr) {
      text += fmt::format("{}", counters.*line.Number);
    }
    text += line.Label;
    text += "\r\n";
  }
  return text;
}

std::string RunSummaryText(RunKind kind, const Counters& counters, std::int64_t elapsedSeconds) {
  return fmt::format("{}mit {} Fehler(n){}\r\nin {}{}", SummaryCounts(kind, counters), counters.Errors,
                     counters.Errors > 0 ? " (siehe Fehlerprotokoll)" : "", FormatDuration(elapsedSeconds),
                     FormOf(kind).ClosingWord);
}

void ShowRunSummary(Run& run, RunKind kind) {
  if (run.BatchMode) {
    return;
  }
  run.frontEnd().prompts.Message("Beendet", RunSummaryText(kind, run.counters, run.ElapsedSeconds()),
                                 Icon::Information);
}

}  // namespace velmora::run
