#include "addresses/address_export.h"

#include <utility>

#include "addresses/address_tree.h"
#include "run/summary.h"

namespace velmora::addresses {
namespace {

// The path of the archive that the request names.
Result<std::string> SourcePath(store::Session& session, const AddressExportRequest& request) {
  if (request.Source == AddressSource::CurrentArchive) return request.ArchivePath;
  const int kind = request.Source == AddressSource::PublicAddresses ? store::special::PublicAddresses
                                                                    : store::special::PersonalAddresses;
  const auto archive = session.Account->GetSpecialArchive(kind);
  if (!archive) return Fail(archive.error());
  return (*archive)->FullPath();
}

std::string OrDefault(const std::string& separator, std::string_view defaultSeparator) {
  return separator.empty() ? std::string(defaultSeparator) : separator;
}

}  // namespace

AddressExportOptions OptionsFromSettings(const settings::Options& settings, AddressFormat format,
                                         std::string_view workbookTemplate) {
  AddressExportOptions options;
  options.Format = format;
  options.Overwrite = settings.AddressOverwrite;
  options.WithSubArchives = settings.AddressEnableSubarchive;
  options.Target = TargetOfSettings(settings, format);
  options.Files.CsvSeparator = OrDefault(settings.CSVSeparator, options.Files.CsvSeparator);
  options.Files.NabSeparator = OrDefault(settings.NABSeparator, options.Files.NabSeparator);
  options.Files.WorkbookTemplate = workbookTemplate;
  options.InhibitItems = settings.DvInhibitItems;
  options.ClearErrorLog = settings.ClearErrorLog;
  options.CopyRight = settings.ArchiveFormCopyRight;
  options.Comment = settings.ArchiveFormComment;
  return options;
}

void RunAddressExport(run::Run& run, store::Session& session, const AddressExportRequest& request) {
  run.ResetCancel();
  if (request.Options.ClearErrorLog) run.DeleteErrorLog();
  run.ResetRunCounters();
  run::Progress& progress = run.frontEnd().progress;
  progress.Show("Adressen exportieren");
  if (const auto path = SourcePath(session, request)) {
    ExportAddressTree(run, session, *path, request.Options);
  } else {
    ReportStoreFailure(run, session.ServerName, path.error());
  }
  progress.Close();
  if (request.Options.ShowSummary) run::ShowRunSummary(run, run::RunKind::MailArchiveExport);
}

void ExportAddressTree(run::Run& run, store::Session& session, std::string_view archivePath,
                       const AddressExportOptions& options) {
  const auto archive = session.Account->GetArchive(archivePath);
  if (!archive) return ReportStoreFailure(run, archivePath, archive.error());
  AddressTree(run, options).Export(**archive);
}

}  // namespace velmora::addresses
