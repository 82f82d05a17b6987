#include <fmt/core.h>

#include <csignal>
#include <set>
#include <vector>

#include "base/date_time.h"
#include "base/text.h"
#include "cli/entry_json.h"
#include "cli/entry_row.h"
#include "cli/exit_status.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/store_commands.h"
#include "store/filter.h"

namespace velmora::cli {
namespace {

using store::DvArchive;

// One line for a person; what would steer the terminal is blanked.
std::string EntryLine(const EntryRow& row) {
  return BlankControlCharacters(
      fmt::format("{:>8}  {}  {}  {}  {}", row.Key,
                  row.Date.IsNull() ? std::string(19, ' ') : FormatDateTime(row.Date), row.From, row.Subject,
                  row.Attachments.empty() ? "" : fmt::format("[{} Anhang/Anhänge]", row.Attachments.size())));
}

std::string ArchiveJson(DvArchive& archive, int messages) {
  const auto displayType = archive.DisplayType();
  return fmt::format("{{\"path\": {}, \"id\": {}, \"link\": {}, \"displayType\": {}, \"messages\": {}}}",
                     JsonText(archive.FullPath()), JsonText(archive.ID()), archive.IsShortCut(),
                     displayType.value_or(0), messages);
}

std::string ArchiveLine(DvArchive& archive, int messages) {
  return BlankControlCharacters(fmt::format("{:>8}  {}{}", messages, archive.FullPath(),
                                            archive.IsShortCut() ? "  (Verknüpfung)" : ""));
}

// The rows of a list, as lines or as one JSON array.
class ListWriter {
 public:
  explicit ListWriter(bool json) : json_(json) {
    if (json_) PrintText("[");
  }
  void Add(const std::string& row) {
    if (json_) {
      PrintText(fmt::format("{}\n  {}", isFirst_ ? "" : ",", row));
    } else {
      PrintLine(row);
    }
    isFirst_ = false;
  }
  void Fail(std::string_view subject, const Error& error) {
    ++errors_;
    PrintError(subject, error);
  }
  int Finish() {
    if (json_) PrintText(isFirst_ ? "]\n" : "\n]\n");
    if (!FlushOutput()) {
      ++errors_;
      PrintError("Die Liste konnte nicht vollständig ausgegeben werden");
    }
    return errors_ == 0 ? exit_status::Done : exit_status::DoneWithErrors;
  }

 private:
  bool json_;
  bool isFirst_ = true;
  int errors_ = 0;
};

Result<std::string> ShowEntry(store::DvItemView& view, platform::FileSystem& fileSystem, bool json) {
  if (json) return EntryJson(view, fileSystem);
  const auto row = ReadEntryRow(view.Item());
  if (!row) return Fail(row.error());
  return EntryLine(*row);
}

int ListEntries(DvArchive& archive, platform::FileSystem& fileSystem, bool json) {
  ListWriter writer(json);
  const auto entries = archive.GetEntries(store::filter_preset::None);
  if (!entries) {
    writer.Fail(archive.FullPath(), entries.error());
    return writer.Finish();
  }
  for (int index = 0; index < (*entries)->Count() && !IsOutputLost(); ++index) {
    const auto view = archive.ItemView((*entries)->Key(index));
    const auto row = view ? ShowEntry(**view, fileSystem, json) : velmora::Fail(view.error());
    if (row) {
      writer.Add(*row);
    } else {
      writer.Fail(fmt::format("{}, Eintrag {}", archive.FullPath(), (*entries)->Key(index)), row.error());
    }
  }
  return writer.Finish();
}

// Depth first, links shown and not entered; a directory is entered once, so that a circle ends.
int ListTree(std::shared_ptr<DvArchive> root, bool json) {
  ListWriter writer(json);
  std::vector<std::shared_ptr<DvArchive>> waiting{std::move(root)};
  std::set<std::string> entered;
  while (!waiting.empty() && !IsOutputLost()) {
    const auto archive = std::move(waiting.back());
    waiting.pop_back();
    const auto rights = archive->AccessRights();
    if (!rights || *rights == 0) continue;
    const auto messages = archive->MessageCount();
    if (!messages) writer.Fail(archive->FullPath(), messages.error());
    writer.Add(json ? ArchiveJson(*archive, messages.value_or(0))
                    : ArchiveLine(*archive, messages.value_or(0)));
    if (archive->IsShortCut() || !entered.insert(FoldCase(archive->ID())).second) continue;
    const auto children = archive->SubArchives();
    if (!children) {
      writer.Fail(archive->FullPath(), children.error());
      continue;
    }
    waiting.insert(waiting.end(), children->rbegin(), children->rend());
  }
  return writer.Finish();
}

}  // namespace

int RunStoreList(const ListOptions& options) {
  std::signal(SIGPIPE, SIG_DFL);  // there is no work but the list: who reads no further wants no more
  const auto access = SignOn(options.Store);
  if (!access) {
    PrintError("Anmeldung fehlgeschlagen", access.error());
    return exit_status::NoSignOn;
  }
  auto& account = *access->Account;
  if (!options.Archive.empty()) {
    const auto archive = account.GetArchive(options.Archive);
    if (archive) return ListEntries(**archive, *access->FileSystem, options.Json);
    PrintError(options.Archive, archive.error());
    return exit_status::DoneWithErrors;
  }
  const int kind = access->IsAdministrator() ? store::special::ArchiveRoot : store::special::OwnRoot;
  auto root = account.GetSpecialArchive(kind);
  if (root) return ListTree(std::move(*root), options.Json);
  PrintError("Archivbaum", root.error());
  return exit_status::DoneWithErrors;
}

}  // namespace velmora::cli
