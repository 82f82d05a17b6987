#include "panes/dialogs/options_table.h"

#include <algorithm>
#include <array>

#include "panes/dialogs/form_user_info_dialog.h"

namespace velmora::panes {
namespace {

using settings::Options;
using Kind = OptionKind;
using Page = OptionPage;

constexpr auto Pages = std::to_array<OptionPageText>({
    {Page::General, "PgGeneral", "Allgemein"},
    {Page::View, "PgView", "Ansicht"},
    {Page::MailArchive, "PgMailArc", "Mail-Archiv"},
    {Page::Addresses, "PgAddresses", "Adressen"},
    {Page::TempDir, "PgTempDir", "Temporäres Verzeichnis"},
    {Page::Rights, "PgRights", "Rechte"},
});

constexpr auto CommandLineModes = std::to_array<OptionChoice>({
    {0, "nicht speichern"},
    {1, "beim nächsten Programmstart einmalig speichern"},
    {2, "bei jedem Programmstart speichern"},
});
constexpr auto AddressFormats = std::to_array<OptionChoice>({
    {1, "CSV-Format"},
    {2, "Excel-Tabelle"},
    {3, "GroupWise-Adressformat"},
    {4, "VCard (nur Export)"},
});

constexpr std::string_view Client = "David-Client", Start = "Programmstart und -ende", Log = "Läufe",
                           Lists = "Listen", Headings = "Überschriften der Fenster",
                           Folders = "Ordner im Mail-Archiv", Defaults = "Vorgaben für den Export",
                           Forms = "Formulare", Files = "Dateien", Directories = "Verzeichnisse",
                           AddressDefaults = "Vorgaben für den Export von Adressen";
constexpr std::int32_t LargestSizeCheck = 10'000'000;

constexpr auto Fields = std::to_array<OptionField>({
    // --- Allgemein. ---
    {Page::General, "EnAutoSaveSettings", "Einstellungen beim Beenden speichern", Kind::Switch,
     &Options::AutoSaveSettings, "", Start},
    {.Page = Page::General,
     .Control = "InpSaveCmdLine",
     .Caption = "Kommandozeile :",
     .Kind = Kind::Choice,
     .Member = &Options::SaveCmdLineMode,
     .Tip = "Ob und wann die Kommandozeile in einer Datei gespeichert wird",
     .Frame = Start,
     .Choices = CommandLineModes},
    {Page::General, "EnTICIntegration", "Integration in den David-Client", Kind::Switch,
     &Options::TICIntegration, "Trägt das Programm in die Kontextmenüs des David-Clients ein", Client},
    {Page::General, "EnTICDisplayFile", "Beim Aufruf aus dem Client die Datei der Nachricht anzeigen",
     Kind::Switch, &Options::TICDisplayFile, "", Client},
    {Page::General, "EnClearErrorLog", "Fehlerprotokoll bei jedem Lauf löschen", Kind::Switch,
     &Options::ClearErrorLog, "", Log},
    {Page::General, "EnDeleteFolder", "Verzeichnisstruktur löschen", Kind::Switch, &Options::DeleteFolder,
     "Inhalt und Unterverzeichnisse löschen", Log},
    {Page::General, "EnCopyAsViewed", "Beim Kopieren den Filter der Ansicht anwenden", Kind::Switch,
     &Options::CopyAsViewed, "", Log},
    {Page::General, "InpExternalApplication", "Externes Programm :", Kind::Program,
     &Options::ExternalApplication,
     "Kommandozeile des externen Programms. %l steht für den Pfad der linken, %r für den der rechten "
     "Ansicht."},
    // --- Ansicht. ---
    {Page::View, "EnDisplayLZEBArchiveFullPath", "Links den vollständigen Archivpfad anzeigen", Kind::Switch,
     &Options::DisplayLZEBArchiveFullPath, "", Headings},
    {Page::View, "EnDisplayRZEBArchiveFullPath", "Rechts den vollständigen Archivpfad anzeigen", Kind::Switch,
     &Options::DisplayRZEBArchiveFullPath, "", Headings},
    {Page::View, "EnDisplayFolderShareName", "In der Dateiansicht den Freigabenamen anzeigen", Kind::Switch,
     &Options::DisplayFolderShareName, "", Headings},
    {Page::View, "EnDisplayFileIcons", "Symbole der Dateien anzeigen", Kind::Switch,
     &Options::DisplayFileIcons, "", Lists},
    {Page::View, "EnDisplayArcSize", "Archivgröße anzeigen (langsam)", Kind::Switch, &Options::DisplayArcSize,
     "", Lists},
    {Page::View, "EnDisplayCircularReferences", "Zirkulare Archivreferenzen kennzeichnen", Kind::Switch,
     &Options::DisplayCircularReferences, "", Lists},
    {Page::View, "EnDisplayHiddenChar", "Versteckte Archive kennzeichnen", Kind::Switch,
     &Options::DisplayHiddenChar, "", Lists},
    {Page::View, "EnHideMailArcHelperFiles", "Hilfsdateien von Mailarchiven ausblenden", Kind::Switch,
     &Options::HideMailArcHelperFiles, "", Lists},
    {Page::View, "EnRefreshArchiveSyncToTreeView", "Archivansicht aktualisieren", Kind::Switch,
     &Options::RefreshArchiveSyncToTreeView,
     "Bei der Auswahl im Archivbaum wird die Archivansicht gleich mit aktualisiert", Lists},
    {.Page = Page::View,
     .Control = "InpSizeCheck",
     .Caption = "Nachrichten ausblenden ab :",
     .Kind = Kind::Number,
     .Member = &Options::SizeCheck,
     .Tip = "Archive mit so vielen oder mehr Nachrichten zeigen zunächst nur ihre Subarchive. 0 schaltet die "
            "Nachrichtenausblendung ab.",
     .Frame = Lists,
     .Maximum = LargestSizeCheck},
    {Page::View, "EnEnableBalloonTips", "Hinweise als Sprechblasen anzeigen", Kind::Switch,
     &Options::EnableBalloonTips},
    {Page::View, "EnViewTabs", "Archiv-/Verzeichnis-Tabs", Kind::Switch, &Options::ViewTabs},
    // --- Mail-Archiv. ---
    {Page::MailArchive, "EnSeparateAttachmentsFolder", "Bestandteile in eigenen Ordnern speichern",
     Kind::Switch, &Options::SeparateAttachmentsFolder,
     "Attachments, Originale, Faxe und andere Bestandteile liegen in je einem Ordner neben den Seiten",
     Folders},
    {Page::MailArchive, "InpAttachmentFolder", "Attachments :", Kind::FolderName, &Options::AttachmentFolder,
     "", Folders},
    {Page::MailArchive, "InpHTMLMailFolder", "HTML-Mails :", Kind::FolderName, &Options::HTMLMailFolder, "",
     Folders},
    {Page::MailArchive, "InpFaxFolder", "Faxe :", Kind::FolderName, &Options::FaxFolder, "", Folders},
    {Page::MailArchive, "InpEMLFolder", "Original-EMails :", Kind::FolderName, &Options::EMLFolder, "",
     Folders},
    {Page::MailArchive, "InpVCFFolder", "VCards :", Kind::FolderName, &Options::VCFFolder, "", Folders},
    {Page::MailArchive, "InpVoiceMailFolder", "VoiceMails :", Kind::FolderName, &Options::VoiceMailFolder, "",
     Folders},
    {Page::MailArchive, "InpCommentFolder", "Kommentare :", Kind::FolderName, &Options::CommentFolder, "",
     Folders},
    {Page::MailArchive, "EnNoDuplicateFiles", "Doppelte Dateinamen verhindern", Kind::Switch,
     &Options::NoDuplicateFiles,
     "Doppelte Dateinamen auf grund gleichen Betreffs werden durch Nummerierung ausgeschlossen", Defaults},
    {Page::MailArchive, "EnMakeIndex", "Inhaltsverzeichnis anlegen", Kind::Switch, &Options::MakeIndex,
     "Inhaltsverzeichnis in jedem Mail-Archiv anlegen bzw. aktualisieren", Defaults},
    {Page::MailArchive, "EnDateIndexSortedUp", "Inhaltsverzeichnis nach Datum aufsteigend", Kind::Switch,
     &Options::DateIndexSortedUp, "Die ältesten Nachrichten stehen zuerst", Defaults},
    {Page::MailArchive, "EnCreateAutorunInf", "Autorun-Datei anlegen", Kind::Switch,
     &Options::CreateAutorunInf, "Ein Datenträger mit dem Mail-Archiv öffnet dessen Inhaltsverzeichnis",
     Defaults},
    {Page::MailArchive, "EnDeleteArchive", "Archivstruktur löschen", Kind::Switch, &Options::DeleteArchive,
     "Beim Verschieben wird die Quellarchiv-Struktur gelöscht. Bei deaktivierter Option werden nur die "
     "Nachrichten verschoben.",
     Defaults},
    {Page::MailArchive, "InpDesignPath", "Verzeichnis :", Kind::Folder, &Options::DesignPath,
     "Verzeichnis der Formularsätze", Forms},
    {Page::MailArchive, "InpArchiveDesign", "Formularsatz :", Kind::Design, &Options::ArchiveDesign, "",
     Forms},
    {Page::MailArchive, "ArcFormCopyRight", form_user_info_text::ArcFormCopyRight, Kind::Text,
     &Options::ArchiveFormCopyRight, form_user_info_text::ArcFormCopyRightTip, Forms},
    {Page::MailArchive, "ArcFormComment", form_user_info_text::ArcFormComment, Kind::MultiLine,
     &Options::ArchiveFormComment, form_user_info_text::ArcFormCommentTip, Forms},
    // --- Adressen. ---
    {.Page = Page::Addresses,
     .Control = "InpAddressExportFormat",
     .Caption = "Format :",
     .Kind = Kind::Choice,
     .Member = &Options::AddressExportFormat,
     .Frame = AddressDefaults,
     .Choices = AddressFormats},
    {Page::Addresses, "EnAddressOverwrite", "Vorhandene Adressdateien überschreiben", Kind::Switch,
     &Options::AddressOverwrite, "Vorhandene Adressdateien überschreiben oder neue Adressen anhängen",
     AddressDefaults},
    {Page::Addresses, "EnAddressEnableSubarchive", "Subarchive mit exportieren", Kind::Switch,
     &Options::AddressEnableSubarchive,
     "Subarchivstruktur als Verzeichnisstruktur exportieren und in jedem Verzeichnis eine Adressdatei "
     "anlegen",
     AddressDefaults},
    {Page::Addresses, "InpCSVSeparator", "Trennzeichen CSV :", Kind::Separator, &Options::CSVSeparator, "",
     Files},
    {Page::Addresses, "InpNABSeparator", "Trennzeichen GroupWise :", Kind::Separator, &Options::NABSeparator,
     "", Files},
    {Page::Addresses, "InpCSVAddressForm", "CSV-Datei :", Kind::FileName, &Options::CSVAddressForm, "",
     Files},
    {Page::Addresses, "InpExcelAddressForm", "Excel-Datei :", Kind::FileName, &Options::ExcelAddressForm, "",
     Files},
    {Page::Addresses, "InpGWAddressForm", "GroupWise-Datei :", Kind::FileName, &Options::GWAddressForm, "",
     Files},
    {Page::Addresses, "InpDefaultAddressbookName", "Adressbuch im Mail-Archiv :", Kind::FileName,
     &Options::DefaultAddressbookName, "Name der Adressdatei eines exportierten Archivs, ohne Erweiterung",
     Files},
    {Page::Addresses, "InpCSVAddressPath", "CSV :", Kind::Folder, &Options::CSVAddressPath, "", Directories},
    {Page::Addresses, "InpExcelAddressPath", "Excel :", Kind::Folder, &Options::ExcelAddressPath, "",
     Directories},
    {Page::Addresses, "InpGWAddressPath", "GroupWise :", Kind::Folder, &Options::GWAddressPath, "",
     Directories},
    {Page::Addresses, "InpVCFAddressPath", "VCards :", Kind::Folder, &Options::VCFAddressPath, "",
     Directories},
    // --- Temporäres Verzeichnis. ---
    {Page::TempDir, "InpTempDirPath", "Verzeichnis :", Kind::Folder, &Options::TempDirPath,
     "Verzeichnis für temporäre Dateien dieses Servers. Ohne Angabe gilt das des Systems. Eine Änderung "
     "wirkt ab dem nächsten Programmstart."},
    // --- Rechte. ---
    {Page::Rights, "EnForceStandardRights", "Rechte auf Standard-Benutzer begrenzen", Kind::Forced,
     std::monostate(),
     "Die Rechte des Benutzers werden, unabhängig von den David-Rechten, immer auf Standard-Benutzer "
     "begrenzt. Die Beschränkung kann nur geändert werden, wenn der Benutzer der Arbeitsstation "
     "Administratorrechte und David-Konsolenberechtigung hat."},
});

}  // namespace

std::span<const OptionPageText> OptionPages() { return Pages; }

std::span<const OptionField> OptionFields() { return Fields; }

std::span<const OptionField> FieldsOf(OptionPage page) {
  const auto begin = std::ranges::find(Fields, page, &OptionField::Page);
  const auto end =
      std::find_if(begin, Fields.end(), [&](const OptionField& field) { return field.Page != page; });
  return {begin, end};
}

const OptionField* FindOptionField(std::string_view control) {
  const auto found = std::ranges::find(Fields, control, &OptionField::Control);
  return found == Fields.end() ? nullptr : &*found;
}

}  // namespace velmora::panes
