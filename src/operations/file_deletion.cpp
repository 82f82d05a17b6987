#include "operations/file_deletion.h"

#include <fmt/core.h>

#include <filesystem>
#include <ranges>

#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/entry_operations.h"
#include "mailarchive/format/descriptor.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/marker.h"
#include "operations/operation.h"
#include "platform/host_folders.h"

namespace velmora::operations {
namespace {

namespace file_error = platform::file_error;
namespace fs = std::filesystem;
namespace directory_file = mailarchive::directory_file;
using mailarchive::MailArcKind;
using platform::FileSystem;
using platform::ListWhat;

constexpr std::string_view AllFiles = "*.*";

bool IsGone(const Error& error) {
  return error.Number == file_error::FileNotFound || error.Number == file_error::PathNotFound;
}

// A name of the directory itself, without a mask: "*" in it would delete what nobody marked.
bool IsPlainName(std::string_view name) {
  return IsSafeRelativePath(name) && name != "." && name.find_first_of("\\/*?") == std::string_view::npos;
}

// --- One folder. ---

std::vector<platform::FileEntry> ListAll(FileSystem& fileSystem, std::string_view folder, ListWhat what) {
  return fileSystem.List(folder, AllFiles, what).value_or(std::vector<platform::FileEntry>());
}

// All that is in the folder; the first failure, the rest goes nevertheless.
Status DeleteContent(FileSystem& fileSystem, std::string_view folder, bool force) {
  const auto entries = fileSystem.List(folder, AllFiles, ListWhat::All);
  if (!entries) return Fail(entries.error());
  Status result;
  for (const platform::FileEntry& entry : *entries) {
    const std::string path = JoinPath(folder, entry.Name);
    const Status deleted =
        entry.IsFolder ? fileSystem.DeleteFolder(path, force) : fileSystem.DeleteFile(path, force);
    if (!deleted && !IsGone(deleted.error()) && result) result = deleted;
  }
  return result;
}

Status Delete(FileSystem& fileSystem, std::string_view folder, bool deleteFolder, bool force) {
  return deleteFolder ? fileSystem.DeleteFolder(folder, force) : DeleteContent(fileSystem, folder, force);
}

void TellDenied(run::Run& run, std::string_view folder) {
  run.LogError(folder, std::int64_t{file_error::AccessDenied}, "Zugriff verweigert", run::Severity::Error);
  run.frontEnd().prompts.Message("Fehler beim Löschen", fmt::format("Zugriff auf {} verweigert.", folder),
                                 run::Icon::Exclamation);
}

// --- What is marked. ---

class MarkedFiles {
 public:
  MarkedFiles(run::Run& run, const FileDeleteOptions& options, const std::string& directory,
              std::string_view davidRoot, bool asEntries)
      : run_(run), options_(options), directory_(directory), davidRoot_(davidRoot), asEntries_(asEntries) {}

  void Delete(const FileSelection::Item& item) {
    const std::string path = JoinPath(directory_, item.Name);
    if (!IsPlainName(item.Name)) {
      run_.LogError(path, {file_error::BadName, platform::FileErrorText(file_error::BadName)});
    } else if (!item.IsFolder) {
      DeleteFile(item.Name);
    } else if (const std::string reason = ReasonNotToDelete(run_.fileSystem(), path, davidRoot_);
               !reason.empty()) {
      run_.LogError(path, {file_error::AccessDenied, reason});
    } else {
      DeleteFolderTree(run_, path, options_.EnDelDirs);
    }
  }

 private:
  void DeleteFile(const std::string& name) {
    if (asEntries_) {
      if (mailarchive::DeleteMailArcEntry(run_.fileSystem(), directory_, name)) return;
      // An entry of which a component resists keeps its page and descriptor, so that it is not lost halfway;
      // so does one whose descriptor cannot be read: nothing else tells which files are its components.
      if (run_.fileSystem().FileExists(JoinPath(directory_, mailarchive::DescriptorName(name)))) {
        const bool isReadable = mailarchive::ReadEntryFields(run_.fileSystem(), directory_, name).has_value();
        run_.LogError(JoinPath(directory_, name),
                      {file_error::AccessDenied,
                       isReadable ? "Ein Bestandteil des Eintrags kann nicht gelöscht werden"
                                  : "Der Descriptor des Eintrags ist nicht lesbar, der Eintrag bleibt"});
        return;
      }
    }
    DeletePlainFile(name);
    // Without the autorun file nothing starts what it launches.
    if (EqualsFold(name, directory_file::Autorun)) DeletePlainFile(directory_file::Launcher);
  }

  // What another entry of the selection took with it is as good as deleted.
  void DeletePlainFile(std::string_view name) {
    const std::string path = JoinPath(directory_, name);
    const Status deleted = run_.fileSystem().DeleteFile(path, true);
    if (!deleted && !IsGone(deleted.error())) run_.LogError(path, deleted.error());
  }

  run::Run& run_;
  const FileDeleteOptions& options_;
  const std::string& directory_;
  std::string_view davidRoot_;
  bool asEntries_;
};

}  // namespace

std::string ReasonNotToDelete(FileSystem& fileSystem, std::string_view folder, std::string_view davidRoot) {
  constexpr std::string_view IsRoot = "Die Wurzel eines Laufwerks oder einer Freigabe wird nicht gelöscht";
  if (platform::IsRootPath(folder)) return std::string(IsRoot);
  const auto entry = fileSystem.GetEntry(StripBackslash(folder));
  if (entry && entry->IsLink) return "";  // the link goes, what it leads to stays
  const fs::path doomed = platform::CanonicalPath(fileSystem, folder);
  if (doomed.empty()) return "";
  for (const platform::Drive& drive : fileSystem.Drives()) {
    const fs::path root = platform::CanonicalPath(fileSystem, drive.Name + "\\");
    if (!root.empty() && platform::IsSameOrAbove(doomed, root)) return std::string(IsRoot);
  }
  const fs::path archives = davidRoot.empty() ? fs::path() : platform::CanonicalPath(fileSystem, davidRoot);
  if (!archives.empty() && platform::IsSameOrAbove(doomed, archives))
    return "Das Verzeichnis enthält den Archivbestand";
  return "";
}

void ClearAttributes(FileSystem& fileSystem, std::string_view folder) {
  for (const platform::FileEntry& file : ListAll(fileSystem, folder, ListWhat::Files)) {
    const std::string path = JoinPath(folder, file.Name);
    // The attributes of a link are those of what it leads to. What resists tells so when the folder goes.
    if (!file.IsLink && file.ReadOnly) (void)fileSystem.SetReadOnly(path, false);
    if (!file.IsLink && file.Hidden) (void)fileSystem.SetHidden(path, false);
  }
  (void)fileSystem.DeleteFile(JoinPath(folder, AllFiles), false);
  for (const platform::FileEntry& sub : ListAll(fileSystem, folder, ListWhat::Folders)) {
    if (!sub.IsLink) ClearAttributes(fileSystem, JoinPath(folder, sub.Name));
  }
}

void DeleteFolderTree(run::Run& run, std::string_view folder, bool deleteFolder) {
  FileSystem& fileSystem = run.fileSystem();
  if (platform::IsRootPath(folder))
    return run.LogError(folder, {file_error::AccessDenied, ReasonNotToDelete(fileSystem, folder, "")});
  const auto entry = fileSystem.GetEntry(StripBackslash(folder));
  if (!entry && IsGone(entry.error())) return;
  if (entry && entry->IsLink && !deleteFolder) {
    return run.LogError(folder,
                        {file_error::AccessDenied, "Der Inhalt einer Verknüpfung wird nicht gelöscht"},
                        run::Severity::Warning);
  }
  Status deleted = Delete(fileSystem, folder, deleteFolder, true);
  if (deleted || IsGone(deleted.error())) return;
  if (deleted.error().Number == file_error::AccessDenied) return TellDenied(run, folder);
  ClearAttributes(fileSystem, folder);
  deleted = Delete(fileSystem, folder, deleteFolder, false);
  if (!deleted && !IsGone(deleted.error())) run.LogError(folder, deleted.error());
}

void RunDeleteFiles(mailarchive::IndexContext& context, const FileDeleteOptions& options,
                    const FileSelection& selection, std::string_view davidRoot) {
  run::Run& run = context.run;
  if (run.CancelRequested()) return;
  if (options.ClearErrorLog) run.DeleteErrorLog();
  run.ResetRunCounters();
  run.frontEnd().status.SetStatusText("Bitte Warten");
  run.frontEnd().status.ShowWait("Dateien werden gelöscht");
  const MailArcKind kind = mailarchive::GetMailArcKind(run.fileSystem(), selection.Directory);
  const bool holdsEntries = kind == MailArcKind::Root || kind == MailArcKind::Sub;
  MarkedFiles files(run, options, selection.Directory, davidRoot,
                    holdsEntries && options.HideMailArcHelperFiles);
  for (const FileSelection::Item& item : std::views::reverse(selection.Items)) {
    if (run.CheckCancel()) break;
    files.Delete(item);
  }
  // After a cancel, too: the index must not name what is gone.
  if (options.EnMakeIdx && holdsEntries)
    mailarchive::BuildContentIndex(context, selection.Directory, false, false, options.DateIndexSortedUp);
  run.frontEnd().status.EndWait();
  run.frontEnd().status.SetStatusText("Bereit");
  TellDeletionErrors(run);
}

}  // namespace velmora::operations
