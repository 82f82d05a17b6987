#include "mailarchive/export_place.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/marker.h"

namespace velmora::mailarchive {

namespace {

// DvDisplayAsOutBox: entries of such an archive are outgoing.
constexpr int OutBox = 2;

constexpr std::array<std::string ExportOptions::*, ComponentCount> FolderNames = {
    &ExportOptions::AttachmentFolder, &ExportOptions::HtmlMailFolder, &ExportOptions::EmlFolder,
    &ExportOptions::CommentFolder,    &ExportOptions::FaxFolder,      &ExportOptions::VoiceMailFolder,
    &ExportOptions::VcfFolder,
};

constexpr std::size_t Index(Component component) { return static_cast<std::size_t>(component); }

bool IsComponentFolder(const ExportOptions& options, std::string_view name) {
  return options.SeparateAttachmentsFolder &&
         std::ranges::any_of(FolderNames, [&](auto folder) { return EqualsFold(options.*folder, name); });
}

}  // namespace

std::string ExportDirectoryName(const ExportOptions& options, std::string_view displayName,
                                std::string_view archiveId) {
  std::string name = ArchiveDirectoryName(displayName, archiveId);
  while (IsComponentFolder(options, name)) name += '1';
  return name;
}

ExportPlace::ExportPlace(const ExportContext& context, store::DvArchive& archive, std::string_view directory)
    : context_(context),
      archive_(archive),
      archivePath_(archive.FullPath()),
      isOutBox_(archive.DisplayType().value_or(0) == OutBox),
      directory_(AddBackslash(directory)),
      notes_(context.run.fileSystem(), directory_, archive.ID()),
      hasOldNotes_(context.run.fileSystem().FileExists(MoveNotes::PathIn(directory_))),
      addresses_(context, archive, directory_) {}

const std::string& ExportPlace::FolderName(Component component) const {
  return context_.options.*FolderNames[Index(component)];
}

std::string ExportPlace::FolderPrefix(Component component) {
  if (!context_.options.SeparateAttachmentsFolder) return "";
  const std::string& name = FolderName(component);
  bool& ready = folderReady_[Index(component)];
  if (!ready) {
    platform::FileSystem& fileSystem = context_.run.fileSystem();
    const std::string folder = JoinPath(directory_, name);
    const Status created = fileSystem.CreateFolder(folder);
    ready = created || created.error().Number == platform::file_error::AlreadyExists;
    // The marker only serves browsing; whether the folder serves shows at the files that go into it.
    (void)WriteArchiveMarker(fileSystem, folder, MailArcKind::Data, {}, false);
  }
  return ready ? AddBackslash(name) : "";
}

void ExportPlace::Disown(std::string_view relativePath) {
  if (hasOldNotes_) notes_.Withdraw(relativePath);
}

void ExportPlace::ForgetFolder(Component component) { folderReady_[Index(component)] = false; }

void ExportPlace::LoadForm(Form form) {
  bool& loaded = formLoaded_[static_cast<std::size_t>(form)];
  if (!loaded) loaded = context_.designs.LoadDesignForm(form, directory_);
}

}  // namespace velmora::mailarchive
