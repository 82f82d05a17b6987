// Addresses of an archive: one address book per directory, or a vCard for each.
#include "mailarchive/export_fixture.h"
#include "store/vocabulary.h"
#include "tables/sheet_table.h"

namespace velmora::mailarchive {
namespace {

using addresses::AddressFormat;
using store::AddressProperty;

class AddressExportTest : public ExportTest {
 protected:
  AddressExportTest() { options.AddressFormat = AddressFormat::Delimited; }

  test::FakeMail& AddAddress(const std::string& name) {
    test::FakeMail& entry = store.AddEntry(*archive, store::item_type::Address, name);
    entry.Address[AddressProperty::DisplayName] = name;
    entry.Address[AddressProperty::City] = std::string("Lüneburg");
    return entry;
  }
  std::vector<std::string> Lines(std::string_view file) {
    std::vector<std::string> lines = Split(ReadTarget(file), "\r\n");
    if (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
  }
  static std::string CsvLine(const std::string& name) {
    return "\"" + name + "\";;;;;;;;;;;\"L\xFCneburg\";;;;;;;;;;;;\"0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\";;";
  }
};

TEST_F(AddressExportTest, DelimitedFileOfTheDirectory) {
  RunMails({AddAddress("Berta").Key, AddAddress("Anton").Key});
  EXPECT_EQ(Names(), Strings{"Adressbuch.csv"});
  const auto lines = Lines("Adressbuch.csv");
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_TRUE(lines[0].starts_with("\"Anzeigename\";\"Fax\";"));
  EXPECT_EQ(lines[1], CsvLine("Berta"));
  EXPECT_EQ(lines[2], CsvLine("Anton"));
  EXPECT_EQ(run.counters.Addresses, 2);
  EXPECT_EQ(run.counters.Entries, 2);
  EXPECT_EQ(StatusLine(), "Mail:0/Att:0/Fax:0/Voice:0/Addr:2/Err:0");
}

TEST_F(AddressExportTest, SecondRunAppendsUnderTheSameHeader) {
  const store::EntryKey key = AddAddress("Anton").Key;
  RunMails({key});
  RunMails({key});
  const auto lines = Lines("Adressbuch.csv");
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[1], lines[2]);
}

TEST_F(AddressExportTest, NameAndSeparatorComeFromTheOptions) {
  options.AddressBookName = "Kontakte";
  options.AddressFiles.CsvSeparator = "\t";
  RunMails({AddAddress("Anton").Key});
  EXPECT_TRUE(Lines("Kontakte.csv").at(1).starts_with("\"Anton\"\t\t"));
}

TEST_F(AddressExportTest, EachDirectoryHasABookOfItsOwn) {
  AddAddress("Oben");
  test::FakeMail& below = store.AddEntry(*inbox, store::item_type::Address, "Unten");
  below.Address[AddressProperty::DisplayName] = std::string("Unten");
  RunArchive(*archive);
  EXPECT_EQ(Lines("Archive\\Adressbuch.csv").size(), 2u);
  EXPECT_EQ(Lines("Archive\\Eingang\\Adressbuch.csv").size(), 2u);
}

TEST_F(AddressExportTest, GroupWiseFile) {
  options.AddressFormat = AddressFormat::GroupWise;
  RunMails({AddAddress("Anton").Key});
  EXPECT_EQ(Names(), Strings{"Adressbuch.nab"});
  EXPECT_TRUE(Lines("Adressbuch.nab").at(0).starts_with(":::TAGMAP:::"));
  EXPECT_TRUE(Lines("Adressbuch.nab").at(1).starts_with("\"U\",\"Anton\","));
}

TEST_F(AddressExportTest, WorkbookOfTheDirectoryIsWrittenWhenTheDirectoryIsDone) {
  options.AddressFormat = AddressFormat::Excel;
  RunMails({AddAddress("Anton").Key, AddAddress("Łukasz 😊").Key});
  EXPECT_EQ(Names(), Strings{"Adressbuch.xls"});
  const auto table = tables::OpenAddressSheet(files, Target("Adressbuch.xls"), "Adressen");
  ASSERT_TRUE(table) << table.error().Text;
  ASSERT_EQ(table->RowCount(), 2u);
  EXPECT_EQ(table->ReadRow(0).at(0), "Anton");
  EXPECT_EQ(table->ReadRow(1).at(0), "Łukasz 😊");
  EXPECT_EQ(table->ReadRow(1).at(11), "Lüneburg");
}

// The workbook is made although there is no template, and the log says that there is none.
TEST_F(AddressExportTest, MissingTemplateIsLogged) {
  options.AddressFormat = AddressFormat::Excel;
  RunMails({AddAddress("Anton").Key});
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_EQ(Log(), " Fehler: 53 - Datei nicht gefunden -> " + dir.Path("designs\\Adressen.xls") + "\r\n");
}

TEST_F(AddressExportTest, TemplateOfTheDesignSetIsTheWorkbook) {
  options.AddressFormat = AddressFormat::Excel;
  tables::Workbook workbook;
  workbook.Sheets.push_back({"Hinweis", {{std::string("Vorlage der Firma")}}, 0});
  tables::Row header;
  for (const auto name : addresses::ColumnNames) header.emplace_back(std::string(name));
  workbook.Sheets.push_back({"Adressen", {header}, 1});
  ASSERT_TRUE(tables::WriteWorkbook(files, dir.Path("designs\\Adressen.xls"), workbook));
  RunMails({AddAddress("Anton").Key});
  EXPECT_EQ(Log(), "");
  const auto written = tables::ReadWorkbook(files, Target("Adressbuch.xls"));
  ASSERT_TRUE(written) << written.error().Text;
  ASSERT_EQ(written->Sheets.size(), 2u);
  EXPECT_EQ(written->Sheets[0].Rows.at(0).at(0), tables::Cell("Vorlage der Firma"));
  EXPECT_EQ(written->Sheets[1].Rows.at(1).at(0), tables::Cell("Anton"));
}

TEST_F(AddressExportTest, VCards) {
  options.AddressFormat = AddressFormat::VCard;
  RunMails({AddAddress("Dr. A/B").Key, AddAddress("Dr. A/B").Key});
  EXPECT_EQ(Names(), Strings{"VCards"});
  EXPECT_EQ(Names("VCards"), (Strings{"Dr_ A-B.vcf", "Dr_ A-B1.vcf"}));
  EXPECT_TRUE(HasTarget("VCards\\VelmoraDataArc.vla"));
  EXPECT_TRUE(ReadTarget("VCards\\Dr_ A-B.vcf").starts_with("BEGIN:VCard\r\nVERSION:2.1\r\nFN:Dr. A/B\r\n"));
  EXPECT_TRUE(ReadTarget("VCards\\Dr_ A-B.vcf").ends_with("\r\nEnd:VCard\r\n"));
  EXPECT_EQ(run.counters.Addresses, 2);
}

// Their names come from the numbering alone: without it a card has none, fails and is counted all the same.
TEST_F(AddressExportTest, WithoutNumbersEachVCardFailsAndIsCounted) {
  options.AddressFormat = AddressFormat::VCard;
  options.NoDuplicates = false;
  RunMails({AddAddress("Anton").Key, AddAddress("Berta").Key});
  EXPECT_EQ(Names("VCards"), Strings{});
  EXPECT_EQ(run.counters.Addresses, 2);
  EXPECT_EQ(run.counters.Errors, 2);
}

TEST_F(AddressExportTest, LongNamesAreCutBeforeTheExtension) {
  options.AddressFormat = AddressFormat::VCard;
  RunMails({AddAddress(std::string(80, 'x')).Key});
  EXPECT_EQ(Names("VCards"), Strings{std::string(59, 'x') + ".vcf"});
}

TEST_F(AddressExportTest, OnlyAttachmentsPassAddressesOver) {
  options.OnlyAttachments = true;
  RunMails({AddAddress("Anton").Key});
  EXPECT_EQ(Names(), Strings{});
  EXPECT_EQ(run.counters.Addresses, 0);
}

TEST_F(AddressExportTest, OtherOnlyOptionsDoNotConcernAddresses) {
  options.OnlyOriginals = options.OnlyComments = true;
  RunMails({AddAddress("Anton").Key});
  EXPECT_EQ(Lines("Adressbuch.csv").size(), 2u);
}

TEST_F(AddressExportTest, UnreadableAddressIsLoggedForAdministratorsOnly) {
  test::FakeMail& entry = AddAddress("Anton");
  entry.FailingField = 1;
  RunMails({entry.Key});
  EXPECT_EQ(Log(), " Fehler: " + std::to_string(store::store_error::Damaged) +
                       " - DvISE-Error Adresse nicht lesbar -> /Archive vID falsch\r\n");
  session.Trustees = 0;
  RunMails({entry.Key});
  EXPECT_EQ(run.counters.Errors, 0);
  EXPECT_EQ(run.counters.Addresses, 0);
}

TEST_F(AddressExportTest, BookThatCannotBeOpenedIsLoggedOnceAndTheLossCounted) {
  ASSERT_TRUE(files.CreateFolder(Target("Adressbuch.csv")));
  RunMails({AddAddress("Anton").Key, AddAddress("Berta").Key, AddAddress("Cäsar").Key});
  EXPECT_EQ(run.counters.Addresses, 3);
  EXPECT_EQ(run.counters.Errors, 2);
  EXPECT_NE(Log().find("3 Adresse(n) wurden nicht gespeichert"), std::string::npos) << Log();
}

TEST_F(AddressExportTest, MoveDeletesAddressesOnceTheBookStands) {
  for (const auto format :
       {AddressFormat::Delimited, AddressFormat::Excel, AddressFormat::GroupWise, AddressFormat::VCard}) {
    options.Mode = CopyMode::Move;
    options.AddressFormat = format;
    store.Deletions.clear();
    const store::EntryKey key = AddAddress("Anton").Key;
    RunMails({key});
    EXPECT_EQ(store.Deletions, Strings{"mail " + std::to_string(key)});
  }
}

// A "?" would be all that is left of the name.
TEST_F(AddressExportTest, MoveKeepsAddressesThatTheFileCannotHoldWhole) {
  options.Mode = CopyMode::Move;
  for (const auto format : {AddressFormat::Delimited, AddressFormat::GroupWise, AddressFormat::VCard}) {
    options.AddressFormat = format;
    store.Deletions.clear();
    const store::EntryKey lossy = AddAddress("Łukasz").Key;
    const store::EntryKey whole = AddAddress("Anton").Key;
    RunMails({lossy, whole});
    EXPECT_EQ(store.Deletions, Strings{"mail " + std::to_string(whole)});
    EXPECT_EQ(run.counters.Errors, 1);
    EXPECT_NE(Log().find("bleiben im Archiv"), std::string::npos) << Log();
  }
}

TEST_F(AddressExportTest, MoveKeepsAddressesOfABookThatCannotBeWritten) {
  options.Mode = CopyMode::Move;
  for (const auto format : {AddressFormat::Delimited, AddressFormat::Excel, AddressFormat::GroupWise}) {
    options.AddressFormat = format;
    options.AddressBookName = "fehlt\\Adressen";
    RunMails({AddAddress("Anton").Key});
  }
  EXPECT_EQ(store.Deletions, Strings{});
}

TEST_F(AddressExportTest, CancelledRunKeepsWhatItHadWritten) {
  options.Mode = CopyMode::Move;
  for (int i = 0; i < 20; ++i) AddAddress("Person " + std::to_string(i));
  frontEnd.CancelAtPump = 12;
  RunArchive(*archive);
  const std::size_t lines = Lines("Archive\\Adressbuch.csv").size();
  EXPECT_GT(lines, 1u);
  EXPECT_LT(lines, 21u);
  EXPECT_EQ(store.Deletions, Strings{});
}

}  // namespace
}  // namespace velmora::mailarchive
