#include "store/embedded/embedded_archive.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/paths.h"
#include "store/archive_files.h"
#include "store/embedded/list_cache.h"
#include "store/errors.h"

namespace velmora::store::embedded {

EmbeddedArchive::EmbeddedArchive(std::shared_ptr<StoreSession> session, ArchiveRecord record,
                                 std::uint32_t rights, std::optional<std::string> fullPath)
    : session_(std::move(session)),
      record_(std::move(record)),
      rights_(rights),
      fullPath_(std::move(fullPath)),
      rules_(RuleFile(session_->FileSystem, record_.Directory), [this] { return RequireAccess(); }) {}

std::string EmbeddedArchive::FullPath() const {
  if (!fullPath_) {
    const auto path = FullPathOf(session_->Tree, record_);
    if (!path) return {};
    fullPath_ = *path;
  }
  return *fullPath_;
}

Result<std::string> EmbeddedArchive::DisplayName() {
  return ShownName(pendingName_ ? *pendingName_ : record_.Name, record_.Directory);
}

Status EmbeddedArchive::SetDisplayName(std::string_view name) {
  if (const auto access = RequireRecordAccess(); !access) return access;
  if (name == record_.Name) {
    pendingName_.reset();
    return {};
  }
  if (const auto ordinary = RequireOrdinary("umbenannt"); !ordinary) return ordinary;
  pendingName_ = std::string(name);
  return {};
}

Status EmbeddedArchive::SetDisplayType(int type) {
  if (const auto access = RequireRecordAccess(); !access) return access;
  Pending().DisplayType = type;
  return {};
}

Status EmbeddedArchive::SetHidden(bool hidden) {
  if (const auto access = RequireRecordAccess(); !access) return access;
  Pending().Hidden = hidden;
  return {};
}

Result<bool> EmbeddedArchive::AdminOnly() { return IsRoot() || Present().AdminOnly; }

Result<DateTime> EmbeddedArchive::LastModification() {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  static constexpr std::array<std::string_view, 2> ContentFiles{archive_file::Messages, archive_file::List};
  DateTime latest;
  for (const auto file : ContentFiles) {
    const auto entry = session_->FileSystem.GetEntry(JoinPath(record_.Directory, file));
    if (entry) latest = std::max(latest, entry->Modified);
  }
  return latest;
}

Status EmbeddedArchive::Update() {
  if (!pendingName_ && !pending_) return {};
  auto fresh = FreshRecord();
  if (!fresh) return Fail(fresh.error());
  if (pending_) {
    if (const auto set = session_->Tree.SetProperties(*fresh, *pending_); !set) return set;
    fresh->Properties = *pending_;
    pending_.reset();
    record_ = *fresh;
  }
  if (!pendingName_) return {};
  auto written = session_->Tree.Rename(*fresh, *pendingName_);
  if (!written) return Fail(written.error());
  fresh->Name = std::move(*written);
  record_ = *fresh;
  pendingName_.reset();
  fullPath_.reset();
  return {};
}

Result<std::vector<std::shared_ptr<DvArchive>>> EmbeddedArchive::SubArchives() {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  auto children = session_->Tree.Children(record_.Directory);
  if (!children) return Fail(children.error());
  const std::string path = FullPath();
  std::vector<std::shared_ptr<DvArchive>> archives;
  archives.reserve(children->size());
  for (auto& child : *children) {
    const auto rights = session_->Access.RightsOnChild(child, rights_);
    auto childPath = ChildPath(path, child);
    archives.push_back(
        std::make_shared<EmbeddedArchive>(session_, std::move(child), rights, std::move(childPath)));
  }
  return archives;
}

Result<int> EmbeddedArchive::SubArchiveCount() {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  return session_->Tree.ChildCount(record_.Directory);
}

Result<int> EmbeddedArchive::MessageCount() {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  return session_->Messages.Count(record_.Directory);
}

Result<std::unique_ptr<DvEntries>> EmbeddedArchive::GetEntries(std::uint32_t filter, EntryOrder order) {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  return session_->Messages.GetEntries(record_.Directory, filter, order);
}

Result<std::unique_ptr<DvItem>> EmbeddedArchive::GetEntry(EntryKey key) {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  return session_->Messages.GetEntry(record_.Directory, key);
}

Result<std::unique_ptr<DvItemView>> EmbeddedArchive::ItemView(EntryKey key) {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  return session_->Messages.ItemView(record_.Directory, key);
}

Result<std::shared_ptr<DvArchive>> EmbeddedArchive::CreateSubArchive(std::string_view name) {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  ArchiveProperties properties;
  properties.Owner = record_.Properties.Owner;
  auto made = session_->Tree.Create(record_.Directory, name, properties);
  if (!made) return Fail(made.error());
  auto path = ChildPath(FullPath(), *made);
  return std::make_shared<EmbeddedArchive>(session_, std::move(*made), rights_, std::move(path));
}

Result<std::unique_ptr<DvItemView>> EmbeddedArchive::CreateItem(int type) {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  auto item = session_->Messages.CreateItem(record_.Directory, type);
  // A mail whose writer names no sender is the user's.
  if (auto* mail = item ? (*item)->AsMail() : nullptr) {
    if (const auto set = mail->SetSender(session_->User.MailAddress); !set) return Fail(set.error());
  }
  return item;
}

Result<std::unique_ptr<DvItem>> EmbeddedArchive::CreateEntry(int type) {
  if (const auto access = RequireAccess(); !access) return Fail(access.error());
  return session_->Messages.CreateEntry(record_.Directory, type);
}

Status EmbeddedArchive::Delete() {
  if (const auto access = RequireRecordAccess(); !access) return access;
  const auto fresh = FreshRecord();
  if (!fresh) return Fail(fresh.error());
  if (record_.IsLink) return session_->Tree.RemoveRecord(*fresh);
  if (const auto ordinary = RequireOrdinary("gelöscht"); !ordinary) return ordinary;
  const auto empty = IsEmpty();
  if (!empty) return Fail(empty.error());
  if (!*empty) return Fail(store_error::NotEmpty, fmt::format("Das Archiv {} ist nicht leer", FullPath()));
  if (const auto removed = session_->Messages.RemoveEmpty(record_.Directory); !removed) return removed;
  if (const auto removed = session_->Tree.RemoveRecord(*fresh); !removed) return removed;
  DeleteDirectory();
  return {};
}

Status EmbeddedArchive::Move(DvArchive& target) {
  if (const auto access = RequireRecordAccess(); !access) return access;
  if (const auto ordinary = RequireOrdinary("verschoben"); !ordinary) return ordinary;
  const auto targetRights = target.AccessRights();
  if (!targetRights) return Fail(targetRights.error());
  if (*targetRights == 0) {
    return Fail(store_error::NoAccess,
                fmt::format("Keine Zugriffsrechte auf das Archiv {}", target.FullPath()));
  }
  const auto fresh = FreshRecord();
  if (!fresh) return Fail(fresh.error());
  auto moved = session_->Tree.MoveRecord(*fresh, target.ID());
  if (!moved) return Fail(moved.error());
  record_ = std::move(*moved);
  fullPath_ = ChildPath(target.FullPath(), record_);
  return {};
}

ArchiveProperties& EmbeddedArchive::Pending() {
  if (!pending_) pending_ = record_.Properties;
  return *pending_;
}

Status EmbeddedArchive::RequireAccess() const {
  if (rights_ != 0) return {};
  return Fail(store_error::NoAccess, fmt::format("Keine Zugriffsrechte auf das Archiv {}", FullPath()));
}

Status EmbeddedArchive::RequireRecordAccess() {
  if (!record_.IsLink) return RequireAccess();
  const auto parent = session_->Tree.FindByDirectory(record_.ParentDirectory);
  if (!parent) return Fail(parent.error());
  if (session_->Access.RightsOn(*parent) != 0) return {};
  return Fail(store_error::NoAccess, fmt::format("Keine Zugriffsrechte auf die Verknüpfung {}", FullPath()));
}

Result<ArchiveRecord> EmbeddedArchive::FreshRecord() {
  auto fresh = session_->Tree.Refresh(record_);
  if (fresh || fresh.error().Number != store_error::NotFound) return fresh;
  return Fail(store_error::NotFound, fmt::format("Das Archiv {} ist nicht mehr vorhanden", FullPath()));
}

Status EmbeddedArchive::RequireOrdinary(std::string_view action) {
  if (!IsSpecial()) return {};
  return Fail(store_error::Protected, fmt::format("Das Archiv {} kann nicht {} werden", FullPath(), action));
}

Result<bool> EmbeddedArchive::IsEmpty() {
  const auto children = session_->Tree.ChildCount(record_.Directory);
  if (!children) return Fail(children.error());
  if (*children > 0) return false;
  const auto messages = session_->Messages.Count(record_.Directory);
  if (!messages) return Fail(messages.error());
  return *messages == 0;
}

// What is left behind costs nothing but space, so no failure here is one of the deletion. A folder within may
// belong to an archive that has moved elsewhere in the tree, and an entry may have come since: both stay.
void EmbeddedArchive::DeleteDirectory() {
  auto& fileSystem = session_->FileSystem;
  std::string directory = StripBackslash(NormalizePath(record_.Directory));
  const auto folders = fileSystem.List(directory, "*", platform::ListWhat::Folders);
  if (!folders) return;
  if (const auto messages = session_->Messages.Count(directory); !messages || *messages != 0) return;
  if (!session_->Messages.CommitAndClose(directory)) return;
  if (!folders->empty()) {
    (void)fileSystem.DeleteFile(JoinPath(directory, "*"), true);
    return;
  }
  // The directories of archives deleted before may have stayed for the sake of this one.
  while (fileSystem.DeleteFolder(directory, true)) {
    directory = StripBackslash(DirectoryOf(directory));
    if (fileSystem.FileExists(JoinPath(directory, archive_file::Self))) return;
    const auto left = fileSystem.List(directory, "*", platform::ListWhat::All);
    if (!left || !left->empty() || !IsSameOrBelow(directory, session_->Layout.ArchiveRoot())) return;
  }
}

}  // namespace velmora::store::embedded
