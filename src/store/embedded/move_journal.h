// What makes moves of entries between two databases whole. The target commits before the source, and a
// process killed in between would leave the moved entries of that transaction in both. So the target's
// transaction notes where each entry came from (the table arrivals), and the process notes beside the store
// which archives it moves into. Whoever opens the store next finds the notes of a dead process and takes the
// entries that have arrived out of their sources.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::store::embedded {

// The notes of this process: a file with a line per archive, locked while its writer lives.
class MoveJournal {
 public:
  // `directory`: Windows path of the folder of all such files; made with the first note.
  MoveJournal(platform::FileSystem& fileSystem, std::string directory);
  ~MoveJournal();  // the notes stay, for whoever settles them
  MoveJournal(const MoveJournal&) = delete;
  MoveJournal& operator=(const MoveJournal&) = delete;

  // Stands on the disk when this returns. Costs nothing for an archive that was noted before.
  Status NoteTarget(std::string_view archiveDirectory);
  // The name by which the rows in `arrivals` name this process; "" before the first note.
  const std::string& Name() const { return name_; }
  // Every move is committed: the notes go.
  void Finish();

 private:
  Status MakeFile();

  platform::FileSystem& fileSystem_;
  std::string directory_, name_, hostPath_;
  int descriptor_ = -1;
  std::unordered_set<std::string> noted_;
};

// The notes of a process that is dead, locked against others that would settle them.
class AbandonedMoves {
 public:
  // Files that cannot be read stay for a later call.
  static std::vector<AbandonedMoves> Find(platform::FileSystem& fileSystem, std::string_view directory);
  AbandonedMoves(AbandonedMoves&& other) noexcept;
  AbandonedMoves& operator=(AbandonedMoves&& other) noexcept;
  AbandonedMoves(const AbandonedMoves&) = delete;
  AbandonedMoves& operator=(const AbandonedMoves&) = delete;
  ~AbandonedMoves();

  const std::string& Name() const { return name_; }
  const std::vector<std::string>& Targets() const { return targets_; }
  void Remove();  // they are settled

 private:
  AbandonedMoves(std::string name, std::string hostPath, int descriptor);

  std::string name_, hostPath_;
  int descriptor_;
  std::vector<std::string> targets_;
};

}  // namespace velmora::store::embedded
