// Where messages go while one archive is exported: a directory of the mail archive, and what all messages of
// the archive have in common.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "mailarchive/address_book.h"
#include "mailarchive/export_run.h"
#include "mailarchive/format/forms.h"
#include "mailarchive/move_notes.h"
#include "store/archive.h"

namespace velmora::mailarchive {

// The parts of a message that lie in a folder of their own.
enum class Component { Attachments, HtmlMails, Originals, Comments, Faxes, VoiceMails, VCards };
inline constexpr std::size_t ComponentCount = 7;

// The name of the directory that an export gives an archive. Folders of components lie between these
// directories: an archive of such a name would put its messages where no index looks for them, so it gets
// another one. `archiveId`: for an archive without a display name.
std::string ExportDirectoryName(const ExportOptions& options, std::string_view displayName,
                                std::string_view archiveId);

class ExportPlace {
 public:
  // `directory`: of the mail archive, with or without "\" at its end; need not exist.
  ExportPlace(const ExportContext& context, store::DvArchive& archive, std::string_view directory);

  store::DvArchive& Archive() { return archive_; }
  const std::string& ArchivePath() const { return archivePath_; }  // FullPath
  bool IsOutBox() const { return isOutBox_; }
  const std::string& Directory() const { return directory_; }  // with "\" at its end

  // The name of a component's folder by the settings, whether it exists or not.
  const std::string& FolderName(Component component) const;
  // The relative path before the names of a component's files, `Eml\`; the folder is made and marked as a
  // data archive on its first use. "" when components lie beside the pages, or when the folder cannot be
  // made.
  std::string FolderPrefix(Component component);
  // The folder has vanished: the next FolderPrefix makes it anew.
  void ForgetFolder(Component component);

  // Copies the pictures of a form of messages into the directory, once; a failure is repeated for the next
  // message.
  void LoadForm(Form form);

  // Null where nothing is moved, or no descriptor will tell what was.
  MoveNotes* Notes() { return context_.options.KeepsNotes() ? &notes_ : nullptr; }
  // Before a file is made without a note: should a killed move have noted the name, the file is not its.
  void Disown(std::string_view relativePath);

  AddressBook& Addresses() { return addresses_; }
  // Completes what stands only with the last entry of the directory, however the run ends.
  void Finish() { addresses_.Finish(); }

 private:
  const ExportContext& context_;
  store::DvArchive& archive_;
  std::string archivePath_;
  bool isOutBox_;
  std::string directory_;
  std::array<bool, ComponentCount> folderReady_{};
  std::array<bool, FormCount> formLoaded_{};
  MoveNotes notes_;
  bool hasOldNotes_;
  AddressBook addresses_;
};

}  // namespace velmora::mailarchive
