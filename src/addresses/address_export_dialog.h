// The dialog "Adressen exportieren" without its view: what its controls show, which are enabled, what OK asks
// for. Each member is named for its control.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "addresses/address_export.h"
#include "run/front_ends.h"

namespace velmora::addresses {

// Captions and tool tips, for the view.
namespace export_text {
inline constexpr std::string_view Title = "Adressen exportieren";
inline constexpr std::string_view AddrFileName = "Export-Datei";
inline constexpr std::string_view FrmtCSV = "CSV-Format", FrmtXL = "Excel-Tabelle",
                                  FrmtGW = "GroupWise-Adressformat", FrmtVCF = "VCard (nur Export)";
inline constexpr std::string_view ExpCurArc = "Aktuelles Archiv exportieren",
                                  ExpGlobalAddr = "Allgemeines Adressbuch exportieren",
                                  ExpPersAddr = "Persönliches Adressbuch exportieren";
inline constexpr std::string_view ExpSubArcs = "Subarchive mit exportieren",
                                  AddrBooksOvw = "Vorhandene Adressdateien überschreiben",
                                  GetButton = "Übernehmen";
inline constexpr std::string_view ExpCurArcTip = "Adresseinträge aus dem aktuellen Archiv exportieren",
                                  ExpGlobalAddrTip =
                                      "Adresseinträge aus dem öffentlichen Adressbuch exportieren",
                                  ExpPersAddrTip =
                                      "Adresseinträge aus dem persönlichen Adressbuch exportieren",
                                  AddrBooksOvwTip =
                                      "Vorhandene Adressdateien überschreiben oder neue Adressen anhängen",
                                  ExpSubArcsTip =
                                      "Subarchivstruktur als Verzeichnisstruktur exportieren und in jedem "
                                      "Verzeichnis eine Adressdatei anlegen",
                                  AddrFileNameTip =
                                      "Dateiname der Adressbuchdatei ohne Extension oder Quellverzeichnis. "
                                      "Doppelclick trägt das aktuelle Verzeichnis der Dateiansicht ein.";
inline constexpr std::string_view BrowseHeading = "Adressen-Export";
}  // namespace export_text

// The separators that have a button.
inline constexpr std::string_view CSVSemiColon = ";", CSVComma = ",", CSVTab = "\t";

// What the browse button opens.
struct AddressFileChooser {
  bool ForFolder = false;  // where a directory is the target; no filter then
  std::string Heading, Start;
  run::FileFilter Filter;
};

// What OK comes to: a message and the dialog stays, or a run for the caller.
struct AddressExportAnswer {
  std::string Message;  // "" for none; shown with the title "Hinweis"
  std::optional<AddressExportRequest> Request;
};

class AddressExportDialog {
 public:
  // Opens with what the settings remember; the settings are changed by StoreTarget and Ok alone.
  AddressExportDialog(platform::FileSystem& fileSystem, settings::Options& settings);

  // --- What the controls hold. ---
  AddressFormat Format() const { return format_; }
  const std::string& Separator() const { return separator_; }  // may be one without a button
  AddressSource Source() const { return source_; }
  bool ExpSubArcs() const { return withSubArchives_; }
  bool AddrBooksOvw() const { return overwrite_; }
  const std::string& AddrFileName() const { return fileName_; }
  bool SeparatorsEnabled() const { return format_ == AddressFormat::Delimited; }
  bool TargetIsDirectory() const { return withSubArchives_ || format_ == AddressFormat::VCard; }

  // --- What the user does. ---
  void SetFormat(AddressFormat format);  // fills the file box anew
  void SetSeparator(std::string_view separator) { separator_ = separator; }
  void SetSource(AddressSource source) { source_ = source; }
  void SetExpSubArcs(bool on);  // fills the file box anew
  void SetAddrBooksOvw(bool on) { overwrite_ = on; }
  void SetAddrFileName(std::string_view text) { fileName_ = text; }
  // The double click on the file box: the current directory of the file view.
  void TakeDirectory(std::string_view directory);
  AddressFileChooser SrcAddrFile() const;

  // GetButton: the file and the directory of the format become those of the settings.
  void StoreTarget();
  // `currentArchive`: the path of the active pane's archive, "" without one; `workbookTemplate` as in
  // OptionsFromSettings.
  AddressExportAnswer Ok(std::string_view currentArchive, std::string_view workbookTemplate);

 private:
  AddressTarget Target() const;
  void FillFileName();

  platform::FileSystem& fileSystem_;
  settings::Options& settings_;
  AddressFormat format_;
  std::string separator_;
  AddressSource source_ = AddressSource::CurrentArchive;
  bool withSubArchives_, overwrite_;
  std::string fileName_;
};

}  // namespace velmora::addresses
