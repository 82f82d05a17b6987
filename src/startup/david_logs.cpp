#include "startup/david_logs.h"

#include <fmt/format.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "base/paths.h"
#include "base/text.h"
#include "store/errors.h"

namespace velmora::startup {
namespace {

struct LogForm {
  std::string_view Title;
  std::string_view Tag;  // names the directory of the archive
  std::string_view SourceName;
};

// In the order of DavidLog.
constexpr std::array LogForms = {
    LogForm{"Eingangsprotokoll", "{LogRx}", "code\\david.rec"},
    LogForm{"Ausgangsprotokoll", "{LogTx}", "code\\david.log"},
};

constexpr std::string_view DataFileName = "Archive.dat";
constexpr std::string_view ListFileName = "archive.dir";

Result<std::shared_ptr<store::DvArchive>> FindOrMake(store::Session& session, store::DvArchive& parent,
                                                     const LogForm& form) {
  Result<std::shared_ptr<store::DvArchive>> archive =
      session.Account->GetArchive(fmt::format("{}/{}", parent.FullPath(), form.Title));
  // One that is there and cannot be had must not get a second one beside it.
  if (archive || archive.error().Number != store::store_error::NotFound) {
    return archive;
  }
  archive = parent.CreateSubArchive(fmt::format("{}{}", form.Tag, form.Title));
  if (archive) {
    if (Status updated = (*archive)->Update(); !updated) {
      return Fail(updated.error());
    }
  }
  return archive;
}

Status EmptyDirectory(platform::FileSystem& fileSystem, std::string_view directory) {
  const Result<std::vector<platform::FileEntry>> files =
      fileSystem.List(directory, "*.*", platform::ListWhat::Files);
  if (!files) {
    return Fail(files.error());
  }
  for (const platform::FileEntry& file : *files) {
    // The list says which sub-archives there are: without it they would be lost.
    if (EqualsFold(file.Name, ListFileName)) {
      continue;
    }
    if (Status deleted = fileSystem.DeleteFile(JoinPath(directory, file.Name), false); !deleted) {
      return deleted;
    }
  }
  return {};
}

}  // namespace

Status CopyDavidLog(platform::FileSystem& fileSystem, store::Session& session, store::DvArchive& parent,
                    DavidLog kind) {
  const LogForm& form = LogForms.at(static_cast<std::size_t>(kind));
  const std::string source =
      JoinPath(StripBackslash(NormalizePath(session.Account->DavidRoot())), form.SourceName);
  if (!fileSystem.FileExists(source)) {
    return Fail(platform::file_error::FileNotFound,
                fmt::format("{}: {}", platform::FileErrorText(platform::file_error::FileNotFound), source));
  }
  const Result<std::shared_ptr<store::DvArchive>> archive = FindOrMake(session, parent, form);
  if (!archive) {
    return Fail(archive.error());
  }
  const std::string directory = StripBackslash(NormalizePath((*archive)->ID()));
  if (Status emptied = EmptyDirectory(fileSystem, directory); !emptied) {
    return emptied;
  }
  return fileSystem.CopyFile(source, JoinPath(directory, DataFileName));
}

}  // namespace velmora::startup
