// The address export: the addresses of an archive, with or without its sub-archives, into files of one of
// four formats.
#pragma once

#include <string>
#include <string_view>

#include "addresses/address_file.h"
#include "addresses/address_target.h"
#include "run/run.h"
#include "store/session.h"

namespace velmora::addresses {

struct AddressExportOptions {
  AddressFormat Format = AddressFormat::Excel;
  bool Overwrite = false;        // else files are appended to, and folders get names of their own
  bool WithSubArchives = false;  // each archive with addresses gets a folder
  AddressTarget Target;
  AddressFileOptions Files;
  bool InhibitItems = true;    // entries hidden by a user are exported too
  bool ClearErrorLog = false;  // at the start of a run
  bool ShowSummary = true;
  std::string CopyRight, Comment;  // of the markers of the folders
};

// What the settings say; `workbookTemplate`: the path of the design set's form for addresses.
AddressExportOptions OptionsFromSettings(const settings::Options& settings, AddressFormat format,
                                         std::string_view workbookTemplate);

// Where the addresses come from.
enum class AddressSource { CurrentArchive, PublicAddresses, PersonalAddresses };

struct AddressExportRequest {
  AddressSource Source = AddressSource::CurrentArchive;
  std::string ArchivePath;  // of the current archive
  AddressExportOptions Options;
};

// The whole run: log, counters, progress, export, summary. Failures are logged, and a box tells of each
// archive that they kept from being exported.
void RunAddressExport(run::Run& run, store::Session& session, const AddressExportRequest& request);

// The export of one archive and, with WithSubArchives, what lies below it, within a run of the caller.
void ExportAddressTree(run::Run& run, store::Session& session, std::string_view archivePath,
                       const AddressExportOptions& options);

}  // namespace velmora::addresses
