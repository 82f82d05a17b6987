#include "store/embedded/entry_store.h"

#include <fmt/core.h>

#include <algorithm>
#include <set>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "store/embedded/content_files.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

namespace file_error = platform::file_error;

tl::unexpected<Error> NoEntry(std::string_view directory, EntryKey key) {
  return Fail(store_error::NotFound,
              fmt::format("Der Eintrag {:08X} ist nicht vorhanden: {}", key, directory));
}

// Number 1 is kept for the source of a mail or the file that belongs to a fax or voice mail.
constexpr int FirstAttachmentFile = 2;

// A database from elsewhere may name any number; no entry has as many files.
constexpr int MostFiles = 1'000'000;

Result<int> NextFile(const std::vector<AttachmentRecord>& attachments) {
  int next = FirstAttachmentFile;
  for (const auto& attachment : attachments)
    next = std::max(next, std::min(attachment.Content.File, MostFiles) + 1);
  if (next <= MostFiles) return next;
  return Fail(store_error::Damaged, "Der Eintrag nennt eine Inhaltsdatei mit einer unmöglichen Nummer");
}

// The numbers of the entry's content files that are there. Beside the registered ones also those that were
// put beside the entry as files (the picture of a fax, the sound of a voice mail), which follow one another
// from 1 on or behind a registered one.
std::vector<int> PresentFiles(const OpenArchive& archive, EntryKey key,
                              const std::vector<AttachmentRecord>& attachments) {
  std::set<int> registered{1};
  for (const auto& attachment : attachments) registered.insert(attachment.Content.File);
  std::vector<int> numbers;
  int number = 1;
  for (const int first : registered) {
    if (first < number || first > MostFiles) continue;
    for (number = first;; ++number) {
      const bool isThere = IsContentFile(archive.ContentPath(key, number));
      if (isThere) numbers.push_back(number);
      if (!isThere && number > first) break;  // the registered one itself may be missing
    }
  }
  return numbers;
}

}  // namespace

template <typename Read>
auto EntryStore::ReadFrom(std::string_view directory, EntryKey key, Read read)
    -> decltype(read(std::declval<MessageDatabase&>())) {
  auto archive = pool_.ForReading(directory);
  if (!archive) return Fail(archive.error());
  if (*archive == nullptr) return NoEntry(directory, key);
  return read((*archive)->Database());
}

Result<int> EntryStore::Count(std::string_view directory) {
  auto archive = pool_.ForReading(directory);
  if (!archive) return Fail(archive.error());
  return *archive == nullptr ? Result<int>(0) : (*archive)->Database().Count();
}

Result<std::vector<EntryKey>> EntryStore::Keys(std::string_view directory, std::uint32_t filter,
                                               EntryOrder order) {
  auto archive = pool_.ForReading(directory);
  if (!archive) return Fail(archive.error());
  if (*archive == nullptr) return std::vector<EntryKey>{};
  return (*archive)->Database().Keys(filter, order);
}

Result<EntryRow> EntryStore::ReadRow(std::string_view directory, EntryKey key) {
  return ReadFrom(directory, key, [key](MessageDatabase& database) { return database.ReadRow(key); });
}

Result<EntryParts> EntryStore::ReadParts(std::string_view directory, EntryKey key) {
  return ReadFrom(directory, key, [key](MessageDatabase& database) { return database.ReadParts(key); });
}

Result<std::pair<EntryRow, EntryParts>> EntryStore::ReadEntry(std::string_view directory, EntryKey key) {
  return ReadFrom(directory, key, [key](MessageDatabase& database) { return database.ReadEntry(key); });
}

Result<std::map<FieldTag, std::string>> EntryStore::ReadTexts(std::string_view directory, EntryKey key) {
  return ReadFrom(directory, key, [key](MessageDatabase& database) { return database.ReadTexts(key); });
}

Status EntryStore::ReadListRows(std::string_view directory, std::span<const EntryKey> keys,
                                std::vector<DvEntryRow>& rows) {
  auto archive = pool_.ForReading(directory);
  if (!archive) return Fail(archive.error());
  if (*archive == nullptr) return {};
  const std::size_t before = rows.size();
  const Status read = (*archive)->Database().ReadListRows(keys, rows);
  for (DvEntryRow& row : std::span(rows).subspan(before)) row.Location = Location(directory, row.Key);
  return read;
}

template <typename Write>
Status EntryStore::InOneStep(OpenArchive& archive, Write write) {
  auto& database = archive.Database();
  if (const auto begun = database.BeginStep(); !begun) return begun;
  const Status written = write(database);
  const auto ended = database.EndStep(written.has_value());
  return written ? ended : written;
}

Result<EntryKey> EntryStore::Insert(std::string_view directory, EntryRecord record,
                                    std::optional<std::string_view> content) {
  auto archive = pool_.ForWriting(directory);
  if (!archive) return Fail(archive.error());
  while (true) {
    const auto key = (*archive)->NextKey();
    if (!key) return Fail(key.error());
    record.Row.Key = *key;
    if (!content) break;
    const auto path = (*archive)->ContentPath(*key, 1);
    const auto written = WriteContentFile(path, *content, (*archive)->FileMode());
    if (!written && written.error().Number == file_error::AlreadyExists) continue;
    if (!written) return Fail(written.error());
    record.Row[Column::HasSource] = std::int64_t{1};
    break;
  }
  record.Row.AttachmentCount = static_cast<int>(record.Attachments.size());
  const auto contentPath = (*archive)->ContentPath(record.Row.Key, 1);
  const auto inserted =
      InOneStep(**archive, [&](MessageDatabase& database) { return database.Insert(record); });
  if (!inserted) {
    if (content) (void)RemoveContentFile(contentPath);  // the caller still has the bytes
    return Fail(inserted.error());
  }
  if (content) (*archive)->NoteWrittenFile(contentPath);
  return record.Row.Key;
}

Status EntryStore::Update(std::string_view directory, EntryKey key, const EntryChanges& changes) {
  if (changes.IsEmpty()) return {};
  auto archive = pool_.ForWriting(directory);
  if (!archive) return Fail(archive.error());
  return InOneStep(**archive, [&](MessageDatabase& database) -> Status {
    auto row = database.ReadRow(key);
    if (!row) return Fail(row.error());
    for (const auto& [column, value] : changes.Columns) (*row)[column] = value;
    if (const auto done = database.UpdateRow(*row); !done) return done;
    for (const auto& [textTag, text] : changes.Texts) {
      if (const auto done = database.WriteText(key, textTag, text); !done) return done;
    }
    for (const auto& field : changes.Others) {
      if (const auto done = database.WriteOther(key, field); !done) return done;
    }
    return changes.Recipients ? database.WriteRecipients(key, *changes.Recipients) : Status{};
  });
}

Status EntryStore::AddAttachment(std::string_view directory, EntryKey key, AttachmentRecord attachment,
                                 std::string_view bytes) {
  auto archive = pool_.ForWriting(directory);
  if (!archive) return Fail(archive.error());
  auto& database = (*archive)->Database();
  auto row = database.ReadRow(key);
  if (!row) return Fail(row.error());
  const auto present = database.ReadAttachments(key);
  if (!present) return Fail(present.error());
  const auto next = NextFile(*present);
  if (!next) return Fail(next.error());
  int number = *next;
  auto path = (*archive)->ContentPath(key, number);
  auto written = WriteContentFile(path, bytes, (*archive)->FileMode());
  while (!written && written.error().Number == file_error::AlreadyExists) {
    path = (*archive)->ContentPath(key, ++number);
    written = WriteContentFile(path, bytes, (*archive)->FileMode());
  }
  if (!written) return written;
  const auto size = static_cast<std::int64_t>(bytes.size());
  attachment.Size = size;
  attachment.Content = {number, 0, size, {}};
  ++row->AttachmentCount;
  const auto added = InOneStep(**archive, [&](MessageDatabase& steps) -> Status {
    const auto position = static_cast<int>(present->size());
    if (const auto done = steps.AddAttachment(key, position, attachment); !done) return done;
    return steps.UpdateRow(*row);
  });
  if (!added) {
    (void)RemoveContentFile(path);  // the caller still has the bytes
    return added;
  }
  (*archive)->NoteWrittenFile(path);
  return {};
}

Status EntryStore::Remove(std::string_view directory, EntryKey key) {
  auto archive = pool_.ForWriting(directory);
  if (!archive) return Fail(archive.error());
  return RemoveFrom(**archive, key);
}

Status EntryStore::RemoveFrom(OpenArchive& archive, EntryKey key) {
  auto& database = archive.Database();
  if (const auto row = database.ReadRow(key); !row) return Fail(row.error());
  const auto attachments = database.ReadAttachments(key);
  if (!attachments) return Fail(attachments.error());
  const auto numbers = PresentFiles(archive, key, *attachments);
  const auto removed = InOneStep(archive, [&](MessageDatabase& steps) -> Status {
    for (const int number : numbers) {
      const auto file = DescribeStrayFile(archive.ContentPath(key, number), true);
      if (!file) continue;
      if (const auto done = steps.AddStrayFile(*file); !done) return done;
    }
    return steps.Remove(key);
  });
  if (!removed) return removed;
  archive.NoteDeletion();
  for (const int number : numbers) archive.NoteRemovedFile(archive.ContentPath(key, number));
  return {};
}

Result<EntryKey> EntryStore::Copy(std::string_view directory, EntryKey key,
                                  std::string_view targetDirectory) {
  auto source = pool_.ForReading(directory);
  if (!source) return Fail(source.error());
  if (*source == nullptr) return NoEntry(directory, key);
  auto target = pool_.ForWriting(targetDirectory);
  if (!target) return Fail(target.error());
  return CopyBetween(**source, key, **target, nullptr);
}

Result<EntryKey> EntryStore::Move(std::string_view directory, EntryKey key,
                                  std::string_view targetDirectory) {
  const auto archives = pool_.ForMoving(directory, targetDirectory);
  if (!archives) return Fail(archives.error());
  MessageDatabase::Arrival arrival{0, FoldCase(directory), 0, key};
  const auto identity = archives->Source->Database().Identity();
  if (!identity) return Fail(identity.error());
  arrival.Identity = *identity;
  auto copied = CopyBetween(*archives->Source, key, *archives->Target, &arrival);
  if (!copied) return copied;
  if (const auto removed = RemoveFrom(*archives->Source, key); !removed) return Fail(removed.error());
  return copied;
}

// `arrival`: of a move, which may share the files of the entry and notes where it comes from.
Result<EntryKey> EntryStore::CopyBetween(OpenArchive& source, EntryKey key, OpenArchive& target,
                                         const MessageDatabase::Arrival* arrival) {
  auto record = source.Database().ReadRecord(key);
  if (!record) return Fail(record.error());
  const auto newKey = target.NextKey();
  if (!newKey) return newKey;
  record->Row.Key = *newKey;
  std::vector<std::string> copies;
  const auto copyAll = [&]() -> Status {
    for (const int number : PresentFiles(source, key, record->Attachments)) {
      const auto path = target.ContentPath(*newKey, number);
      const auto copied =
          CopyContentFile(source.ContentPath(key, number), path, target.FileMode(), arrival != nullptr);
      if (!copied) return copied;
      copies.push_back(path);
    }
    return InOneStep(target, [&](MessageDatabase& database) -> Status {
      if (const auto inserted = database.Insert(*record); !inserted) return inserted;
      const std::string& process = pool_.MoveProcess();
      if (arrival == nullptr || &source == &target || process.empty()) return {};
      return database.AddArrival(process, {*newKey, arrival->Source, arrival->Identity, arrival->SourceKey});
    });
  };
  if (const auto copied = copyAll(); !copied) {
    for (const auto& path : copies) (void)RemoveContentFile(path);  // the source still has them
    return Fail(copied.error());
  }
  for (auto& path : copies) target.NoteWrittenFile(std::move(path));
  return newKey;
}

std::string EntryStore::Location(std::string_view directory, EntryKey key) {
  return JoinPath(directory, ContentFileBase(key));
}

Result<std::string> EntryStore::ContentPath(std::string_view directory, EntryKey key, int number) {
  const auto name = ContentFileName(key, number);
  // Resolves case: the file may have come here over a file system that changed it.
  auto path = fileSystem_.HostPath(JoinPath(directory, name));
  if (!path) return path;
  if (!IsContentFile(*path)) {
    return Fail(
        file_error::FileNotFound,
        fmt::format("{}: {}", platform::FileErrorText(file_error::FileNotFound), JoinPath(directory, name)));
  }
  return path;
}

}  // namespace velmora::store::embedded
