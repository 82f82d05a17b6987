#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <vector>

#include "base/date_time.h"
#include "base/text.h"
#include "cli/exit_status.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/store_access.h"
#include "cli/store_commands.h"
#include "store/filter.h"

namespace velmora::cli {
namespace {

using store::DvArchive;
using store::DvItem;
namespace tag = store::tag;

// "2026-12-31T23:59:00", local time; null without a date.
std::string JsonDate(DateTime date) {
  if (date.IsNull()) return "null";
  const auto civil = date.Civil();
  return fmt::format("\"{:04}-{:02}-{:02}T{:02}:{:02}:{:02}\"", civil.Year, civil.Month, civil.Day,
                     civil.Hour, civil.Minute, civil.Second);
}

struct AttachmentRow {
  std::string Name;
  std::int64_t Size;
  std::uint32_t Flags;
};

struct EntryRow {
  store::EntryKey Key = 0;
  int Type = 0;
  std::string Subject, From, To;
  DateTime Date;
  std::int64_t Flags = 0, Status = 0;
  std::vector<AttachmentRow> Attachments;
};

Result<std::vector<AttachmentRow>> ReadAttachments(DvItem& item) {
  std::vector<AttachmentRow> rows;
  const auto count = item.Attachments().Count();
  if (!count) return Fail(count.error());
  for (int index = 0; index < *count; ++index) {
    const auto attachment = item.Attachments().Item(index);
    if (!attachment) return Fail(attachment.error());
    rows.push_back({(*attachment)->Name(), (*attachment)->Size(), (*attachment)->Flags()});
  }
  return rows;
}

// The first of the fields that is not empty.
Result<std::string> FirstText(store::DvFields& fields, std::initializer_list<store::FieldTag> tags) {
  for (const auto fieldTag : tags) {
    const auto value = fields.Get(fieldTag);
    if (!value) return Fail(value.error());
    if (auto text = store::FieldText(*value); !text.empty()) return text;
  }
  return std::string();
}

Result<EntryRow> ReadEntry(DvItem& item) {
  EntryRow row;
  row.Key = item.Key();
  row.Type = item.Type();
  auto& fields = item.Fields();
  auto subject = FirstText(fields, {tag::Subject});
  if (!subject) return Fail(subject.error());
  auto from = FirstText(fields, {tag::SenderAddress});
  if (!from) return Fail(from.error());
  auto to = FirstText(fields, {tag::Recipients, tag::RecipientText, tag::RecipientAddress});
  if (!to) return Fail(to.error());
  row.Subject = std::move(*subject);
  row.From = std::move(*from);
  row.To = std::move(*to);
  const auto date = fields.Get(tag::StatusTime);
  if (!date) return Fail(date.error());
  row.Date = store::FieldDate(*date);
  const auto flags = fields.Get(tag::Flags);
  if (!flags) return Fail(flags.error());
  row.Flags = store::FieldNumber(*flags);
  const auto status = fields.Get(tag::SendStatus);
  if (!status) return Fail(status.error());
  row.Status = store::FieldNumber(*status);
  auto attachments = ReadAttachments(item);
  if (!attachments) return Fail(attachments.error());
  row.Attachments = std::move(*attachments);
  return row;
}

std::string EntryJson(const EntryRow& row) {
  std::string attachments;
  for (const auto& attachment : row.Attachments) {
    attachments +=
        fmt::format("{}{{\"name\": {}, \"size\": {}, \"flags\": {}}}", attachments.empty() ? "" : ", ",
                    JsonText(attachment.Name), attachment.Size, attachment.Flags);
  }
  return fmt::format(
      "{{\"key\": {}, \"type\": {}, \"subject\": {}, \"from\": {}, \"to\": {}, \"date\": {}, \"flags\": {}, "
      "\"status\": {}, \"attachments\": [{}]}}",
      row.Key, row.Type, JsonText(row.Subject), JsonText(row.From), JsonText(row.To), JsonDate(row.Date),
      row.Flags, row.Status, attachments);
}

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
    if (json_) std::fputs("[", stdout);
  }
  void Add(const std::string& row) {
    if (json_) {
      fmt::print("{}\n  {}", isFirst_ ? "" : ",", row);
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
    if (json_) std::fputs(isFirst_ ? "]\n" : "\n]\n", stdout);
    const bool written = std::fflush(stdout) == 0;
    return errors_ == 0 && written ? exit_status::Done : exit_status::DoneWithErrors;
  }

 private:
  bool json_;
  bool isFirst_ = true;
  int errors_ = 0;
};

int ListEntries(DvArchive& archive, bool json) {
  ListWriter writer(json);
  const auto entries = archive.GetEntries(store::filter_preset::None);
  if (!entries) {
    writer.Fail(archive.FullPath(), entries.error());
    return writer.Finish();
  }
  for (int index = 0; index < (*entries)->Count(); ++index) {
    const auto item = (*entries)->Item(index);
    const auto row = item ? ReadEntry(**item) : Result<EntryRow>(velmora::Fail(item.error()));
    if (row) {
      writer.Add(json ? EntryJson(*row) : EntryLine(*row));
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
  while (!waiting.empty()) {
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
  const auto access = SignOn(options.Store);
  if (!access) {
    PrintError("Anmeldung fehlgeschlagen", access.error());
    return exit_status::NoSignOn;
  }
  auto& account = *access->Account;
  if (!options.Archive.empty()) {
    const auto archive = account.GetArchive(options.Archive);
    if (archive) return ListEntries(**archive, options.Json);
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
