#include "store/embedded/server_logs.h"

#include <string>

#include "base/paths.h"
#include "platform/make_folders.h"
#include "store/embedded/message_store.h"

namespace velmora::store::embedded {
namespace {

constexpr int MailEntry = 2;

// An empty message database in `directory`: the store makes one when an entry is written, and keeps it when
// the entry goes.
Status MakeEmptyDatabase(platform::FileSystem& fileSystem, platform::Clock& clock,
                         const std::string& directory) {
  MessageStore messages(fileSystem, clock);
  const auto entry = messages.CreateEntry(directory, MailEntry);
  if (!entry) return Fail(entry.error());
  if (const auto deleted = (*entry)->Delete(); !deleted) return deleted;
  return messages.CommitAndClose(directory);
}

}  // namespace

Status MakeServerLogs(platform::FileSystem& fileSystem, platform::Clock& clock, const StoreLayout& layout) {
  for (const auto name : {ReceiveLogName, SendLogName}) {
    const std::string log = JoinPath(layout.Code(), name);
    if (fileSystem.FileExists(log)) continue;
    const std::string work = JoinPath(layout.Code(), "newlog");
    if (const auto made = platform::MakeFolders(fileSystem, work, true); !made) return made;
    if (const auto made = MakeEmptyDatabase(fileSystem, clock, work); !made) return made;
    if (const auto moved = fileSystem.MoveFile(JoinPath(work, "archive.dat"), log); !moved) return moved;
    if (const auto deleted = fileSystem.DeleteFolder(work, true); !deleted) return deleted;
  }
  return {};
}

}  // namespace velmora::store::embedded
