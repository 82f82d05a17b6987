#include "mailarchive/move_notes.h"

#include <fmt/format.h>

#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/format/file_names.h"

namespace velmora::mailarchive {
namespace {

constexpr std::string_view NotesName = "VelmoraMove.tmp";
constexpr char EntryMark = '*', WithdrawalMark = '?';  // no Windows name begins so

}  // namespace

MoveNotes::MoveNotes(platform::FileSystem& fileSystem, std::string directory, std::string_view archiveId)
    : fileSystem_(fileSystem),
      directory_(std::move(directory)),
      archiveId_(FoldCase(NormalizePath(archiveId))) {}

std::string MoveNotes::PathIn(std::string_view directory) { return JoinPath(directory, NotesName); }

void MoveNotes::BeginEntry(store::EntryKey key, const IndexFields& entry) {
  if (!old_) ReadOld();
  const std::string line = fmt::format("{}{} {}", EntryMark, key, archiveId_);
  TakeBack(line, entry);
  Append(line);
}

void MoveNotes::NoteFile(std::string_view relativePath) {
  if (old_) old_->erase(std::string(relativePath));
  Append(relativePath);
}

void MoveNotes::Withdraw(std::string_view relativePath) {
  if (old_) old_->erase(std::string(relativePath));
  Append(fmt::format("{}{}", WithdrawalMark, relativePath));
}

void MoveNotes::Settle() {
  if (!old_) return;
  std::string unmet;
  for (const auto& [entryLine, paths] : oldPaths_) {
    std::string kept;
    for (const std::string& path : paths) {
      if (old_->contains(path)) kept += path + "\n";
    }
    if (!kept.empty()) unmet += entryLine + "\n" + kept;
  }
  // Notes that stay tell of entries that are gone, which nothing follows from.
  if (unmet.empty()) {
    (void)fileSystem_.DeleteFile(PathIn(directory_), true);
  } else {
    (void)fileSystem_.ReplaceFile(PathIn(directory_), unmet);
  }
}

void MoveNotes::ReadOld() {
  old_.emplace();
  const auto bytes = fileSystem_.ReadFile(PathIn(directory_));
  if (!bytes) return;
  // A last line without its end may be the beginning of another path.
  std::string_view rest(*bytes);
  std::string entryLine;
  for (auto end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
    const std::string line(rest.substr(0, end));
    rest.remove_prefix(end + 1);
    if (line.empty()) continue;
    if (line.front() == EntryMark) {
      entryLine = line;
    } else if (line.front() == WithdrawalMark) {
      old_->erase(line.substr(1));
    } else if (LeadsToOneFile(line)) {
      old_->insert_or_assign(line, entryLine);
    }
  }
  for (const auto& [path, line] : *old_) oldPaths_[line].push_back(path);
}

// The descriptor goes first: what is left without one is known for the rest of an entry.
void MoveNotes::TakeBack(const std::string& entryLine, const IndexFields& entry) {
  const auto noted = oldPaths_.find(entryLine);
  if (noted == oldPaths_.end()) return;
  std::vector<std::string> descriptors, others;
  for (const std::string& path : noted->second) {
    if (old_->contains(path)) (path.ends_with(DescriptorExtension) ? descriptors : others).push_back(path);
  }
  for (const std::string& descriptor : descriptors) {
    if (IsOther(descriptor, entry)) return;
  }
  for (const auto& paths : {descriptors, others}) {
    for (const std::string& path : paths) {
      // What stays is there twice, which loses nothing.
      (void)fileSystem_.DeleteFile(directory_ + path, true);
      old_->erase(path);
    }
  }
}

bool MoveNotes::IsOther(const std::string& descriptor, const IndexFields& entry) {
  const std::string path = directory_ + descriptor;
  if (!fileSystem_.FileExists(path)) return false;
  const auto bytes = fileSystem_.ReadFile(path);
  if (!bytes) return true;
  if (bytes->empty()) return false;  // killed before its first byte
  const IndexFields found = ParseIndexFields(*bytes);
  return found.Subject != entry.Subject || found.Date != entry.Date || found.From != entry.From ||
         found.To != entry.To || found.Sortaddr != entry.Sortaddr;
}

void MoveNotes::Append(std::string_view line) {
  (void)fileSystem_.AppendFile(PathIn(directory_), std::string(line) + "\n");
}

}  // namespace velmora::mailarchive
