// The dialog of the address export, and what a typed target means.
#include "addresses/address_export_dialog.h"

#include "addresses/address_fixture.h"

namespace velmora::addresses {
namespace {

class AddressDialogTest : public AddressFilesTest {
 protected:
  AddressDialogTest() {
    settings.CSVAddressPath = dir.Path("csv");
    settings.ExcelAddressPath = dir.Path("xls\\");
    settings.GWAddressPath = dir.Path("nab\\");
    settings.VCFAddressPath = dir.Path("vcf");
    EXPECT_TRUE(host->CreateFolder(dir.Path("ordner")));
  }
  AddressExportDialog Dialog() { return {*host, settings}; }
  AddressTarget Parse(AddressFormat format, std::string_view text, bool isDirectory = false) {
    return ParseTarget(*host, settings, format, text, isDirectory);
  }

  settings::Options settings;
};

TEST_F(AddressDialogTest, OpensWithTheLastChoices) {
  settings.AddressExportFormat = 3;
  settings.CSVSeparator = "\t";
  settings.AddressOverwrite = settings.AddressEnableSubarchive = true;
  const auto dialog = Dialog();
  EXPECT_EQ(dialog.Format(), AddressFormat::GroupWise);
  EXPECT_EQ(dialog.Separator(), CSVTab);
  EXPECT_TRUE(dialog.AddrBooksOvw());
  EXPECT_TRUE(dialog.ExpSubArcs());
  EXPECT_EQ(dialog.Source(), AddressSource::CurrentArchive);
}

TEST_F(AddressDialogTest, ANumberThatNamesNoFormatIsExcel) {
  for (const int number : {-1, 0, 5, 6}) {
    settings.AddressExportFormat = number;
    EXPECT_EQ(Dialog().Format(), AddressFormat::Excel);
  }
}

TEST_F(AddressDialogTest, TheFileBoxFollowsTheFormat) {
  auto dialog = Dialog();
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("xls\\Adressbuch.xls"));
  dialog.SetFormat(AddressFormat::Delimited);
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("csv\\Adressbuch.csv"));
  dialog.SetFormat(AddressFormat::GroupWise);
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("nab\\Adressbuch.nab"));
  dialog.SetFormat(AddressFormat::VCard);
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("vcf\\"));
}

TEST_F(AddressDialogTest, WithSubArchivesTheFileBoxShowsTheDirectoryAlone) {
  auto dialog = Dialog();
  dialog.SetExpSubArcs(true);
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("xls\\"));
  dialog.SetFormat(AddressFormat::Delimited);
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("csv\\"));
  dialog.SetExpSubArcs(false);
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("csv\\Adressbuch.csv"));
}

TEST_F(AddressDialogTest, SeparatorsAreForDelimitedTextAlone) {
  auto dialog = Dialog();
  for (const auto format :
       {AddressFormat::Delimited, AddressFormat::Excel, AddressFormat::GroupWise, AddressFormat::VCard}) {
    dialog.SetFormat(format);
    EXPECT_EQ(dialog.SeparatorsEnabled(), format == AddressFormat::Delimited);
  }
}

TEST_F(AddressDialogTest, BrowsingAsksForAFileOfTheFormatOrForADirectory) {
  auto dialog = Dialog();
  auto chooser = dialog.SrcAddrFile();
  EXPECT_FALSE(chooser.ForFolder);
  EXPECT_EQ(chooser.Heading, "Adressen-Export");
  EXPECT_EQ(chooser.Start, dir.Path("xls\\Adressbuch.xls"));
  EXPECT_EQ(chooser.Filter.Caption, "Adressen-Export Files (*.xls)");
  EXPECT_EQ(chooser.Filter.Mask, "*.xls");
  dialog.SetFormat(AddressFormat::VCard);
  EXPECT_TRUE(dialog.SrcAddrFile().ForFolder);
  dialog.SetFormat(AddressFormat::Delimited);
  dialog.SetExpSubArcs(true);
  EXPECT_TRUE(dialog.SrcAddrFile().ForFolder);
}

TEST_F(AddressDialogTest, ADoubleClickTakesTheCurrentDirectory) {
  auto dialog = Dialog();
  dialog.TakeDirectory(dir.Path("ordner"));
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("ordner\\Adressbuch.xls"));
  dialog.SetFormat(AddressFormat::VCard);
  dialog.TakeDirectory(dir.Path("ordner"));
  EXPECT_EQ(dialog.AddrFileName(), dir.Path("ordner\\"));
}

TEST_F(AddressDialogTest, GetButtonStoresFileAndPathOfTheFormatAlone) {
  auto dialog = Dialog();
  dialog.SetFormat(AddressFormat::Delimited);
  dialog.SetAddrFileName(dir.Path("ordner\\Kunden.csv"));
  const settings::Options before = settings;
  dialog.StoreTarget();
  EXPECT_EQ(settings.CSVAddressPath, dir.Path("ordner\\"));
  EXPECT_EQ(settings.CSVAddressForm, "Kunden.csv");
  settings.CSVAddressPath = before.CSVAddressPath;
  settings.CSVAddressForm = before.CSVAddressForm;
  EXPECT_EQ(settings, before);
}

TEST_F(AddressDialogTest, GetButtonStoresOnlyTheDirectoryWhereOneIsTheTarget) {
  auto dialog = Dialog();
  dialog.SetFormat(AddressFormat::VCard);
  dialog.SetAddrFileName(dir.Path("karten"));
  dialog.StoreTarget();
  EXPECT_EQ(settings.VCFAddressPath, dir.Path("karten\\"));
  dialog.SetFormat(AddressFormat::Excel);
  dialog.SetExpSubArcs(true);
  dialog.SetAddrFileName(dir.Path("baum.xls"));
  dialog.StoreTarget();
  EXPECT_EQ(settings.ExcelAddressPath, dir.Path("baum.xls\\"));
  EXPECT_EQ(settings.ExcelAddressForm, "Adressbuch.xls");
}

TEST_F(AddressDialogTest, OkAsksForARunAndRemembersTheChoices) {
  settings.DvInhibitItems = false;
  settings.ArchiveFormComment = "Anmerkung";
  auto dialog = Dialog();
  dialog.SetFormat(AddressFormat::Delimited);
  dialog.SetSeparator(CSVComma);
  dialog.SetAddrBooksOvw(true);
  dialog.SetAddrFileName(dir.Path("ordner\\Kunden"));
  const auto answer = dialog.Ok("/Archive/Kontakte", "z:\\vorlage.xls");
  EXPECT_EQ(answer.Message, "");
  ASSERT_TRUE(answer.Request);
  EXPECT_EQ(answer.Request->Source, AddressSource::CurrentArchive);
  EXPECT_EQ(answer.Request->ArchivePath, "/Archive/Kontakte");
  const AddressExportOptions& options = answer.Request->Options;
  EXPECT_EQ(options.Format, AddressFormat::Delimited);
  EXPECT_TRUE(options.Overwrite);
  EXPECT_FALSE(options.WithSubArchives);
  EXPECT_EQ(options.Target, (AddressTarget{dir.Path("ordner\\"), "Kunden.csv"}));
  EXPECT_EQ(options.Files.CsvSeparator, ",");
  EXPECT_EQ(options.Files.NabSeparator, ",");
  EXPECT_EQ(options.Files.WorkbookTemplate, "z:\\vorlage.xls");
  EXPECT_FALSE(options.InhibitItems);
  EXPECT_TRUE(options.ShowSummary);
  EXPECT_EQ(options.Comment, "Anmerkung");
  EXPECT_EQ(settings.AddressExportFormat, 1);
  EXPECT_EQ(settings.CSVSeparator, ",");
  EXPECT_TRUE(settings.AddressOverwrite);
  EXPECT_FALSE(settings.AddressEnableSubarchive);
  EXPECT_EQ(settings.CSVAddressForm, "Adressbuch.csv");  // that is for GetButton
}

TEST_F(AddressDialogTest, AnAddressBookNeedsNoCurrentArchive) {
  auto dialog = Dialog();
  EXPECT_FALSE(dialog.Ok("", "").Request);
  EXPECT_EQ(dialog.Ok("", "").Message, "Es ist kein Archiv ausgewählt.");
  dialog.SetSource(AddressSource::PersonalAddresses);
  ASSERT_TRUE(dialog.Ok("", "").Request);
  EXPECT_EQ(dialog.Ok("", "").Request->Source, AddressSource::PersonalAddresses);
}

TEST_F(AddressDialogTest, AnEmptyFileBoxKeepsTheDialogOpenAndChangesNothing) {
  auto dialog = Dialog();
  const settings::Options before = settings;
  dialog.SetFormat(AddressFormat::Delimited);
  dialog.SetAddrBooksOvw(true);
  dialog.SetAddrFileName("  ");
  const auto answer = dialog.Ok("/Archive", "");
  EXPECT_FALSE(answer.Request);
  EXPECT_EQ(answer.Message, "Bitte eine Export-Datei oder ein Verzeichnis angeben.");
  EXPECT_EQ(settings, before);
}

TEST_F(AddressDialogTest, ASettingWithoutASeparatorMeansTheDefaultOne) {
  settings.CSVSeparator = settings.NABSeparator = "";
  const auto options = OptionsFromSettings(settings, AddressFormat::Delimited, "");
  EXPECT_EQ(options.Files.CsvSeparator, ";");
  EXPECT_EQ(options.Files.NabSeparator, ",");
}

TEST_F(AddressDialogTest, ATypedTargetIsADirectoryOrAFile) {
  const auto csv = AddressFormat::Delimited;
  const std::string folder = dir.Path("ordner");
  EXPECT_EQ(Parse(csv, ""), (AddressTarget{dir.Path("csv\\"), "Adressbuch.csv"}));
  EXPECT_EQ(Parse(csv, folder), (AddressTarget{folder + "\\", "Adressbuch.csv"}));
  EXPECT_EQ(Parse(csv, dir.Path("neu\\")), (AddressTarget{dir.Path("neu\\"), "Adressbuch.csv"}));
  EXPECT_EQ(Parse(csv, folder + "\\a.txt"), (AddressTarget{folder + "\\", "a.txt"}));
  EXPECT_EQ(Parse(csv, folder + "\\a"), (AddressTarget{folder + "\\", "a.csv"}));
  EXPECT_EQ(Parse(csv, "a"), (AddressTarget{dir.Path("csv\\"), "a.csv"}));
  EXPECT_EQ(Parse(csv, folder + "\\a", true), (AddressTarget{folder + "\\a\\", "Adressbuch.csv"}));
  EXPECT_EQ(Parse(AddressFormat::VCard, folder + "\\a"), (AddressTarget{folder + "\\a\\", ""}));
}

}  // namespace
}  // namespace velmora::addresses
