#include "addresses/address_export_dialog.h"

#include "base/paths.h"
#include "base/text.h"

namespace velmora::addresses {

AddressExportDialog::AddressExportDialog(platform::FileSystem& fileSystem, settings::Options& settings)
    : fileSystem_(fileSystem),
      settings_(settings),
      format_(FormatOfSetting(settings.AddressExportFormat)),
      separator_(settings.CSVSeparator),
      withSubArchives_(settings.AddressEnableSubarchive),
      overwrite_(settings.AddressOverwrite) {
  FillFileName();
}

void AddressExportDialog::SetFormat(AddressFormat format) {
  format_ = format;
  FillFileName();
}

void AddressExportDialog::SetExpSubArcs(bool on) {
  withSubArchives_ = on;
  FillFileName();
}

void AddressExportDialog::FillFileName() {
  const AddressTarget target = TargetOfSettings(settings_, format_);
  fileName_ = TargetIsDirectory() ? target.Directory : target.Directory + target.FileName;
}

void AddressExportDialog::TakeDirectory(std::string_view directory) {
  fileName_ = AddBackslash(directory);
  if (!TargetIsDirectory()) fileName_ += TargetOfSettings(settings_, format_).FileName;
}

AddressFileChooser AddressExportDialog::SrcAddrFile() const {
  AddressFileChooser chooser;
  chooser.ForFolder = TargetIsDirectory();
  chooser.Heading = export_text::BrowseHeading;
  chooser.Start = fileName_;
  const std::string mask = "*" + std::string(PlaceOf(format_).Extension);
  chooser.Filter = {"Adressen-Export Files (" + mask + ")", mask};
  return chooser;
}

AddressTarget AddressExportDialog::Target() const {
  return ParseTarget(fileSystem_, settings_, format_, fileName_, TargetIsDirectory());
}

void AddressExportDialog::StoreTarget() {
  const FormatPlace& place = PlaceOf(format_);
  const AddressTarget target = Target();
  settings_.*place.Directory = target.Directory;
  if (place.FileName != nullptr) settings_.*place.FileName = target.FileName;
}

AddressExportAnswer AddressExportDialog::Ok(std::string_view currentArchive,
                                            std::string_view workbookTemplate) {
  if (Trim(fileName_).empty()) return {"Bitte eine Export-Datei oder ein Verzeichnis angeben.", {}};
  if (source_ == AddressSource::CurrentArchive && currentArchive.empty()) {
    return {"Es ist kein Archiv ausgewählt.", {}};
  }
  settings_.AddressExportFormat = static_cast<std::int32_t>(format_);
  settings_.CSVSeparator = separator_;
  settings_.AddressEnableSubarchive = withSubArchives_;
  settings_.AddressOverwrite = overwrite_;

  AddressExportRequest request;
  request.Source = source_;
  request.ArchivePath = currentArchive;
  request.Options = OptionsFromSettings(settings_, format_, workbookTemplate);
  request.Options.Target = Target();
  return {"", std::move(request)};
}

}  // namespace velmora::addresses
