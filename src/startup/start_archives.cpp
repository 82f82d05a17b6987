#include "startup/start_archives.h"

#include <algorithm>
#include <memory>
#include <string>

#include "base/paths.h"
#include "base/text.h"

namespace velmora::startup {
namespace {

using ArchivePointer = std::shared_ptr<store::DvArchive>;

ArchivePointer ArchiveOrDefault(store::Session& session, std::string_view path) {
  Result<ArchivePointer> archive = session.Account->GetArchive(path);
  return archive ? *std::move(archive) : session.DefaultArchive;
}

// As ArchiveOrDefault, but an archive for administrators is not restored for others.
ArchivePointer RestoredArchive(store::Session& session, std::string_view path) {
  ArchivePointer archive = ArchiveOrDefault(session, path);
  if (archive != nullptr && !session.IsAdministrator() && archive->AdminOnly().value_or(false)) {
    return session.DefaultArchive;
  }
  return archive;
}

void SetBoth(store::Session& session, const ArchivePointer& archive) {
  session.LeftArchive = archive;
  session.RightArchive = archive;
}

// Each pane gets an object of its own.
void OpenInBoth(store::Session& session, std::string_view path) {
  session.LeftArchive = ArchiveOrDefault(session, path);
  session.RightArchive = ArchiveOrDefault(session, path);
}

bool IsScannedDrive(const platform::Drive& drive) {
  return drive.IsReady && !drive.ShareName.empty() && !drive.Name.empty() &&
         ToUpper(drive.Name.substr(0, 1)) >= "C";
}

}  // namespace

void ApplyStartArchives(Context& context) {
  ProcessFields& process = context.process;
  store::Session& session = context.session;
  switch (process.StartArgKind) {
    case start_arg::Archive:
      OpenInBoth(session, process.StartArchiveArg);
      process.CurrentPath = AddBackslash(process.StartArchiveArg);
      break;
    case start_arg::Message: {
      const std::string path(DirectoryOf(process.StartArchiveArg));
      if (context.options.TICDisplayFile) {
        process.CurrentPath = path;
      }
      OpenInBoth(session, path);
      break;
    }
    case start_arg::Path:
      process.CurrentPath = DirectoryOf(process.StartPathArg);
      break;
    default:
      SetBoth(session, session.DefaultArchive);
      break;
  }
}

void RestoreLastArchives(Context& context) {
  store::Session& session = context.session;
  const bool sameRights = session.Trustees == static_cast<std::uint32_t>(context.options.LastUserRights);
  if (!sameRights || context.process.IgnoreLastArchives) {
    SetBoth(session, session.DefaultArchive);
    return;
  }
  session.LeftArchive = RestoredArchive(session, context.options.LastUsedCArchive);
  session.RightArchive = RestoredArchive(session, context.options.LastUsedDArchive);
}

void ScanDavidShare(Context& context) {
  store::Session& session = context.session;
  session.DavidDrive.clear();
  session.DavidShare.clear();
  const std::string id = session.DefaultArchive->ID();
  if (id.size() > 1 && id[1] == ':') {
    session.DavidDrive = session.DavidShare = ToUpper(id.substr(0, 2));
    return;
  }
  std::string uncPath = ReplaceAll(id, ":", "\\");
  if (!uncPath.starts_with("\\\\")) {
    uncPath = "\\\\" + uncPath;
  }
  std::vector<platform::Drive> drives = context.fileSystem.Drives();
  std::sort(drives.begin(), drives.end(), [](const platform::Drive& a, const platform::Drive& b) {
    return FoldCase(a.Name) < FoldCase(b.Name);
  });
  for (const platform::Drive& drive : drives) {
    if (IsScannedDrive(drive) && IsSameOrBelow(uncPath, drive.ShareName)) {
      session.DavidDrive = drive.Name;
      session.DavidShare = drive.ShareName;
      return;
    }
  }
}

}  // namespace velmora::startup
