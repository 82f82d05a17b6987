// The walk of an export through the store's tree: every archive gets a directory of its own in the mail
// archive, its messages go there.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "mailarchive/export_run.h"
#include "mailarchive/format/marker.h"
#include "mailarchive/message_export.h"
#include "store/tree_walk.h"

namespace velmora::mailarchive {

class ExportWalk {
 public:
  explicit ExportWalk(const ExportContext& context);

  // One archive and what lies below it, into a sub-directory of the target. On a move that deletes archives
  // the one that was current before, if any, is asked last; the store refuses while anything is left in it.
  void ExportTree(std::string_view archivePath, std::string_view targetDirectory, bool isLink,
                  store::DvArchive* currentArchive);
  // Messages, into the directory of the place.
  void ExportMessage(ExportPlace& place, store::EntryKey key);
  // With the last message of a place.
  void Complete(ExportPlace& place);
  // Commits what is pending in the store, which must stand before the index is built and when the run ends.
  // Once it does, the notes of a move have done their service.
  void Commit();

 private:
  enum class Order { Forward, Backward };

  void ExportSubArchives(std::string_view archiveId, std::string_view targetDirectory, store::WalkPath& path);
  // Counts and shows the archive, makes its directory, exports its messages; the directory.
  std::string ExportArchive(store::DvArchive& archive, std::string_view targetDirectory, Order order);
  void ExportEntries(ExportPlace& place, store::DvEntries& entries, Order order);
  std::string MakeDirectory(store::DvArchive& archive, std::string_view displayName,
                            std::string_view targetDirectory);
  void DeleteIfMoved(store::DvArchive& archive);
  bool CommitStore();  // a failure has been logged
  void LogStoreFailure(std::string_view path, const Error& error);

  const ExportContext& context_;
  MessageExport messages_;
  int sinceCommit_ = 0;          // entries of a move
  std::set<std::string> noted_;  // the directories that may hold notes of a move
};

// Marks a directory as a root or a sub of a mail archive, with the names of a store archive. An existing
// marker stays.
void MarkDirectory(const ExportContext& context, std::string_view directory, MailArcKind kind,
                   store::DvArchive& archive);

}  // namespace velmora::mailarchive
