#include "store/embedded/database_pool.h"

#include <fmt/core.h>
#include <sys/stat.h>

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "store/archive_files.h"
#include "store/embedded/content_files.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view JournalPrefix = "archive.dat-";
// Keys stay positive as signed 32-bit numbers. A file with a higher number is nobody's content file.
constexpr EntryKey HighestKey = 0x7FFFFFFF;
constexpr EntryKey HighestFileKey = 0x7FFF0000;

// `\\SERVER\SHARE` of a UNC path, "Z:" of any other.
std::string_view RootOf(std::string_view path) {
  if (!path.starts_with("\\\\")) return path.substr(0, path.find('\\'));
  const auto server = path.find('\\', 2);
  return server == std::string_view::npos ? path : path.substr(0, path.find('\\', server + 1));
}

std::string HostDirectoryOf(const std::string& hostPath) { return hostPath.substr(0, hostPath.rfind('/')); }

}  // namespace

bool IsDatabaseFile(std::string_view fileName) {
  return EqualsFold(fileName, archive_file::Messages) || StartsWithFold(fileName, JournalPrefix);
}

std::string OpenArchive::ContentPath(EntryKey key, int number) const {
  return hostDirectory_ + "/" + ContentFileName(key, number);
}

Result<EntryKey> OpenArchive::NextKey() {
  if (!highestKey_) {
    const auto highest = database_->HighestKeyEver();
    if (!highest) return Fail(highest.error());
    if (!highestFile_) {
      if (const auto found = FindHighestFile(*highest); !found) return Fail(found.error());
    }
    highestKey_ = std::max(*highest, *highestFile_);
  }
  while (true) {
    if (*highestKey_ >= HighestKey) {
      return Fail(store_error::Failed, fmt::format("Das Archiv hat keine freie Nummer mehr: {}", directory_));
    }
    // Another process may have left a file since the directory was read.
    const auto stray = DescribeStrayFile(ContentPath(++*highestKey_, 1), false);
    if (!stray) return *highestKey_;
    if (const auto noted = database_->AddStrayFile(*stray); !noted) return Fail(noted.error());
  }
}

Status OpenArchive::FindHighestFile(EntryKey highestEntry) {
  const auto files = ListContentFiles(hostDirectory_);
  if (!files) return Fail(files.error());
  highestFile_ = 0;
  for (const auto& file : *files) {
    if (file.Key >= HighestFileKey) continue;
    highestFile_ = std::max(*highestFile_, file.Key);
    if (file.Key <= highestEntry) continue;
    // Whoever wrote it did not come to commit it: nobody else is writing now.
    const auto stray = DescribeStrayFile(hostDirectory_ + "/" + file.Name, false);
    if (!stray) continue;
    if (const auto noted = database_->AddStrayFile(*stray); !noted) return noted;
  }
  return {};
}

void OpenArchive::EndTransaction() {
  writtenFiles_.clear();
  removedFiles_.clear();
  hasDeletions_ = false;
  commitAfter_.clear();
}

DatabasePool::DatabasePool(platform::FileSystem& fileSystem, platform::Clock& clock, std::string moveJournals)
    : fileSystem_(fileSystem),
      clock_(clock),
      moveJournals_(std::move(moveJournals)),
      journal_(fileSystem, moveJournals_) {}

DatabasePool::~DatabasePool() {
  watched_.clear();
  // Nobody is left to be told; callers that must know commit before.
  if (Commit() && !hasAbandoned_) journal_.Finish();
}

void DatabasePool::SetPatience(Patience patience) {
  patience_ = patience;
  for (const auto& [directory, archive] : archives_) {
    if (!archive->Database().IsWriting()) archive->Database().SetPatience(patience);
  }
}

Result<OpenArchive*> DatabasePool::ForReading(std::string_view directory) {
  if (const auto done = CommitOverdue(); !done) return Fail(done.error());
  return Find(directory, false);
}

Result<OpenArchive*> DatabasePool::ForWriting(std::string_view directory) {
  if (const auto done = CommitOverdue(); !done) return Fail(done.error());
  auto archive = Find(directory, true);
  if (!archive) return archive;
  if (const auto begun = Begin(**archive); !begun) return Fail(begun.error());
  return archive;
}

Status DatabasePool::Begin(OpenArchive& archive) {
  if (archive.Database().IsWriting()) return {};
  archive.Database().SetPatience(Patience::Usual);
  if (const auto begun = archive.Database().BeginWrite(); !begun) return begun;
  archive.begun_ = clock_.SteadyMilliseconds();
  archive.highestKey_.reset();
  if (const auto forgotten = ForgetArrivals(archive); !forgotten) return forgotten;
  return RemoveDoomedFiles(archive);
}

Status DatabasePool::ForgetArrivals(OpenArchive& archive) {
  auto& database = archive.Database();
  for (const auto& source : archive.settledSources_) {
    if (const auto done = database.ForgetArrivals(journal_.Name(), source); !done) return done;
  }
  if (archive.isTidied_ || moveJournals_.empty()) return {};
  archive.isTidied_ = true;
  const auto processes = database.ArrivalProcesses();
  if (!processes) return Fail(processes.error());
  for (const auto& process : *processes) {
    if (process == journal_.Name() || fileSystem_.FileExists(JoinPath(moveJournals_, process))) continue;
    if (const auto done = database.ForgetArrivals(process); !done) return done;
  }
  return {};
}

// The targets of its moves were committed just before it.
void DatabasePool::NoteSettled(const OpenArchive& source) {
  for (const auto& directory : source.commitAfter_) {
    const auto target = archives_.find(directory);
    if (target != archives_.end()) target->second->settledSources_.insert(source.folded_);
  }
}

Status DatabasePool::RemoveDoomedFiles(OpenArchive& archive) {
  const auto files = archive.Database().StrayFiles();
  if (!files) return Fail(files.error());
  if (std::ranges::none_of(*files, &StrayFile::IsDoomed)) return {};
  for (const auto& file : *files) {
    // Mostly gone since the commit that doomed them. One that cannot be removed hinders no writing.
    if (!file.IsDoomed || !IsStillThere(archive.hostDirectory_, file)) continue;
    if (!RemoveContentFile(archive.hostDirectory_ + "/" + file.Name)) return {};
  }
  return archive.Database().ForgetDoomedFiles();
}

Result<DatabasePool::Moving> DatabasePool::ForMoving(std::string_view source, std::string_view target) {
  if (const auto done = CommitOverdue(); !done) return Fail(done.error());
  const auto from = Find(source, true);
  if (!from) return Fail(from.error());
  const auto to = Find(target, true);
  if (!to) return Fail(to.error());
  if (*from != *to && !moveJournals_.empty()) {
    if (const auto noted = journal_.NoteTarget(target); !noted) return Fail(noted.error());
  }
  // The target is about to be waited for: it must not wait itself.
  if (!(*to)->commitAfter_.empty()) {
    if (const auto done = CommitArchive(**to); !done) return Fail(done.error());
  }
  for (auto* const archive : {*to, *from}) {
    if (const auto begun = Begin(*archive); !begun) return Fail(begun.error());
  }
  if (*from != *to) (*from)->commitAfter_.insert((*to)->folded_);
  return Moving{*from, *to};
}

Result<OpenArchive*> DatabasePool::Find(std::string_view directory, bool create) {
  auto folded = FoldCase(directory);
  if (const auto found = archives_.find(folded); found != archives_.end()) {
    auto& archive = *found->second;
    struct stat status {};
    const bool isSame = stat(archive.hostPath_.c_str(), &status) == 0 &&
                        archive.identity_ == OpenArchive::Identity{status.st_dev, status.st_ino};
    archive.lastUse_ = ++uses_;
    if (isSame) return &archive;
    if (const auto closed = Close(found); !closed) return Fail(closed.error());
  }
  auto opened = Open(directory, create);
  if (!opened) return Fail(opened.error());
  if (!*opened) return nullptr;
  MakeRoom();
  (*opened)->folded_ = folded;
  (*opened)->lastUse_ = ++uses_;
  auto* const archive = opened->get();
  archives_.emplace(std::move(folded), std::move(*opened));
  return archive;
}

Result<std::unique_ptr<OpenArchive>> DatabasePool::Open(std::string_view directory, bool create) {
  Watch(directory);
  const auto path = JoinPath(directory, archive_file::Messages);
  const auto hostPath = fileSystem_.HostPath(path);
  if (!hostPath) return Fail(hostPath.error());
  const auto fileMode = MailFileMode(HostDirectoryOf(*hostPath));
  // SQLite would make the file for everybody that the process's mask lets in. It may be there already, and
  // what else hinders shows below.
  if (create) (void)WriteContentFile(*hostPath, "", fileMode);
  struct stat status {};
  if (stat(hostPath->c_str(), &status) != 0) {
    if (!create) return nullptr;
    return Fail(store_error::Failed, fmt::format("Die Datenbank kann nicht angelegt werden: {}", path));
  }
  auto database = MessageDatabase::Open(*hostPath, path);
  if (!database) return Fail(database.error());
  (*database)->SetPatience(patience_);
  if (!create) {
    const auto hasTables = (*database)->HasTables();
    if (!hasTables) return Fail(hasTables.error());
    if (!*hasTables) return nullptr;
  }
  auto archive = std::make_unique<OpenArchive>();
  archive->directory_ = directory;
  archive->hostPath_ = *hostPath;
  archive->hostDirectory_ = HostDirectoryOf(*hostPath);
  archive->fileMode_ = fileMode;
  archive->identity_ = {status.st_dev, status.st_ino};
  archive->database_ = std::move(*database);
  return archive;
}

void DatabasePool::MakeRoom() {
  if (archives_.size() < MaxOpenDatabases) return;
  const auto oldest = std::ranges::min_element(
      archives_, {}, [](const Archives::value_type& entry) { return entry.second->lastUse_; });
  if (const auto closed = Close(oldest); !closed) failure_ = closed.error();
}

Status DatabasePool::CommitOverdue() {
  // Whoever reads without patience may tell nobody what became of a commit.
  if (patience_ == Patience::None) return {};
  if (failure_) return Fail(*std::exchange(failure_, std::nullopt));
  const auto now = clock_.SteadyMilliseconds();
  for (const auto& [directory, archive] : archives_) {
    if (!archive->Database().IsWriting() || now - archive->begun_ < LongestTransaction) continue;
    if (const auto done = CommitArchive(*archive); !done) return done;
  }
  return {};
}

Status DatabasePool::CommitArchive(OpenArchive& archive) {
  auto& database = archive.Database();
  if (!database.IsWriting()) return {};
  const auto commit = [&]() -> Status {
    for (const auto& directory : archive.commitAfter_) {
      const auto target = archives_.find(directory);
      if (target == archives_.end()) continue;
      if (const auto done = CommitArchive(*target->second); !done) return done;
    }
    if (archive.hasDeletions_) {
      if (const auto done = fileSystem_.SyncWritten(); !done) return done;
    }
    if (const auto done = SyncContentFiles(archive.hostDirectory_, archive.writtenFiles_); !done) return done;
    return database.Commit();
  };
  const auto committed = commit();
  if (!committed && committed.error().Number == store_error::Busy) return committed;  // tried again later
  if (!committed) {
    Abandon(archive);
    return committed;
  }
  for (const auto& path : archive.removedFiles_) {
    // A file that stays is doomed: the next transaction removes it.
    (void)RemoveContentFile(path);
  }
  NoteSettled(archive);
  archive.EndTransaction();
  archive.settledSources_.clear();
  return {};
}

void DatabasePool::Abandon(OpenArchive& archive) {
  // The content files of entries that did not come to stand are left: their bytes may be all that there is.
  archive.Database().Rollback();
  archive.EndTransaction();
  hasAbandoned_ = true;
  // What was to be removed once it stood here stays where it is.
  for (const auto& [directory, other] : archives_) {
    if (other->commitAfter_.contains(archive.folded_)) Abandon(*other);
  }
}

Status DatabasePool::Commit() {
  Status result;
  if (failure_) result = Fail(*std::exchange(failure_, std::nullopt));
  for (const auto& [directory, archive] : archives_) {
    const auto done = CommitArchive(*archive);
    if (!done && result) result = done;
  }
  return result;
}

Status DatabasePool::Close(Archives::iterator archive) {
  const auto committed = CommitArchive(*archive->second);
  if (!committed) Abandon(*archive->second);
  archives_.erase(archive);
  return committed;
}

Status DatabasePool::CommitAndClose(std::string_view directoryOrBelow) {
  Status result;
  for (auto archive = archives_.begin(); archive != archives_.end();) {
    const auto next = std::next(archive);
    if (IsSameOrBelow(archive->second->directory_, directoryOrBelow)) {
      const auto closed = Close(archive);
      if (!closed && result) result = closed;
    }
    archive = next;
  }
  return result;
}

void DatabasePool::Watch(std::string_view directory) {
  const auto root = RootOf(directory);
  auto folded = FoldCase(root);
  if (watched_.contains(folded)) return;
  watched_.emplace(std::move(folded), fileSystem_.RegisterSubtree(root, [this](std::string_view path) {
    BeforeFileOperation(path);
  }));
}

void DatabasePool::BeforeFileOperation(std::string_view path) {
  // Content files come and go beside the database without touching its locks.
  const auto name = FileNameOf(path);
  if (archives_.empty() || KeyOfContentFile(name)) return;
  const auto folder = StripBackslash(DirectoryOf(path));
  const bool isDatabase = IsDatabaseFile(name);
  for (auto archive = archives_.begin(); archive != archives_.end();) {
    const auto next = std::next(archive);
    const auto& directory = archive->second->directory_;
    if ((isDatabase && EqualsFold(directory, folder)) || IsSameOrBelow(directory, path)) {
      if (const auto closed = Close(archive); !closed) failure_ = closed.error();
    }
    archive = next;
  }
}

}  // namespace velmora::store::embedded
