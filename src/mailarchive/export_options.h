// What an export is told: by the dialog or by a control file.
#pragma once

#include <cstdint>
#include <string>

#include "addresses/address_file.h"
#include "store/selection.h"

namespace velmora::mailarchive {

using store::CopyMode;

struct ExportOptions {
  // What is written. Unattended runs start with all of these off.
  bool SaveAttachments = false, OnlyAttachments = false;
  bool SaveOriginals = false, OnlyOriginals = false;
  bool SaveComments = false, OnlyComments = false;
  bool SaveSmtpHeader = false;
  bool WithErrors = false;
  bool NoDuplicates = true;  // numbered names instead of overwriting; a move numbers always: NumbersNames
  // The run.
  CopyMode Mode = CopyMode::Copy;
  bool MakeIndex = true;
  bool DeleteArchives = false;  // on a move, also delete the emptied archives
  bool LinkedArchives = false;
  bool DateIndexSortedUp = true;
  bool CreateAutorunInf = true;
  bool ClearErrorLog = false;  // at the start of a run of the window; unattended runs clear it themselves
  std::uint32_t ItemFilter = 0x301FB;  // the filter mask handed to the store
  bool InhibitItems = true;            // entries hidden by a user are seen too
  // The layout.
  bool SeparateAttachmentsFolder = true;
  std::string AttachmentFolder = "Attachments", HtmlMailFolder = "HTMLMails", FaxFolder = "FaxImages",
              EmlFolder = "Eml", VcfFolder = "VCards", VoiceMailFolder = "VoiceMails",
              CommentFolder = "Comments";
  // Addresses.
  addresses::AddressFormat AddressFormat = addresses::AddressFormat::Excel;
  std::string AddressBookName = "Adressbuch";  // of a directory's file, without extension
  addresses::AddressFileOptions AddressFiles;  // the template of the workbook comes from the design set
  // Texts of the forms.
  std::string CopyRight, Comment;

  // A move deletes what it has written: a file that the next message of the same name overwrites would be
  // lost, and no error would tell.
  bool NumbersNames() const { return NoDuplicates || Mode == CopyMode::Move; }
  bool AnyOnly() const { return OnlyAttachments || OnlyOriginals || OnlyComments; }
  // Whether what is written is noted until it is gone from the store (move_notes.h).
  bool KeepsNotes() const { return Mode == CopyMode::Move && !AnyOnly(); }
};

}  // namespace velmora::mailarchive
