// Address files of the three formats that hold many addresses.
#include "addresses/address_file.h"

#include <sys/stat.h>

#include "addresses/address_fixture.h"
#include "addresses/delimited_text.h"
#include "addresses/groupwise.h"
#include "addresses/sheet_address_file.h"
#include "base/text.h"
#include "tables/sheet_table.h"
#include "tables/workbook.h"

namespace velmora::addresses {
namespace {

using test::Fault;

class AddressFileTest : public AddressFilesTest {
 protected:
  Result<OpenedAddressFile> Open(AddressFormat format, std::string_view name, bool overwrite = false) {
    return OpenAddressFile(files, format, dir.Path(name), overwrite, options);
  }
  // One whole run with addresses of these names.
  void Write(AddressFormat format, std::string_view name, const Strings& addresses, bool overwrite = false) {
    auto opened = Open(format, name, overwrite);
    ASSERT_TRUE(opened) << opened.error().Text;
    for (const std::string& address : addresses) ASSERT_TRUE(opened->File->Add(RecordNamed(address)));
    ASSERT_TRUE(opened->File->Flush());
    EXPECT_EQ(opened->File->Unwritten(), 0);
  }
  static std::string Lines(const Strings& addresses) {
    std::string lines = DelimitedHeader(";") + "\r\n";
    for (const std::string& address : addresses) lines += DelimitedLine(RecordNamed(address), ";") + "\r\n";
    return lines;
  }
  // The display names in the sheet, or what went wrong.
  Strings SheetNames(std::string_view name) {
    const auto table = tables::OpenAddressSheet(*host, dir.Path(name), AddressSheet);
    if (!table) return {table.error().Text};
    Strings names;
    for (std::size_t row = 0; row < table->RowCount(); ++row) names.push_back(table->ReadRow(row).at(0));
    return names;
  }
  Strings ColumnsOf(std::string_view name) {
    const auto table = tables::OpenAddressSheet(*host, dir.Path(name), AddressSheet);
    return table ? table->Columns() : Strings{table.error().Text};
  }
  static Strings AllColumns() { return {ColumnNames.begin(), ColumnNames.end()}; }

  AddressFileOptions options;
};

TEST_F(AddressFileTest, ANewFileBeginsWithTheHeader) {
  Write(AddressFormat::Delimited, "a.csv", {"Müller", "Weiß"});
  EXPECT_EQ(Read("a.csv"), Lines({"Müller", "Weiß"}));
  Write(AddressFormat::GroupWise, "a.nab", {"Müller"});
  EXPECT_EQ(Read("a.nab"),
            GroupWiseTagMap(",") + "\r\n" + GroupWiseLine(RecordNamed("Müller"), ",") + "\r\n");
}

TEST_F(AddressFileTest, TheSeparatorsComeFromTheOptions) {
  options.CsvSeparator = "\t";
  options.NabSeparator = ";";
  Write(AddressFormat::Delimited, "a.csv", {"A"});
  Write(AddressFormat::GroupWise, "a.nab", {"A"});
  EXPECT_TRUE(Read("a.csv").starts_with("\"Anzeigename\"\t\"Fax\"\t"));
  EXPECT_TRUE(Read("a.nab").starts_with(":::TAGMAP:::0FFE0003:***;3001001E:Name;"));
}

TEST_F(AddressFileTest, ASecondRunAppendsWithoutASecondHeader) {
  Write(AddressFormat::Delimited, "a.csv", {"A"});
  Write(AddressFormat::Delimited, "a.csv", {"B"});
  EXPECT_EQ(Read("a.csv"), Lines({"A", "B"}));
}

TEST_F(AddressFileTest, OverwritingBeginsAnew) {
  Write(AddressFormat::Delimited, "a.csv", {"A"});
  Write(AddressFormat::Delimited, "a.csv", {"B"}, true);
  EXPECT_EQ(Read("a.csv"), Lines({"B"}));
  Write(AddressFormat::Delimited, "new.csv", {"C"}, true);
  EXPECT_EQ(Read("new.csv"), Lines({"C"}));
}

TEST_F(AddressFileTest, ARunWithoutAddressesOverwritesNothing) {
  dir.WriteHostFile("a.csv", "alt\r\n");
  Write(AddressFormat::Delimited, "a.csv", {}, true);
  EXPECT_EQ(Read("a.csv"), "alt\r\n");
}

TEST_F(AddressFileTest, ALastLineWithoutAnEndIsNotGluedToTheFirstRecord) {
  const std::string record = DelimitedLine(RecordNamed("B"), ";") + "\r\n";
  dir.WriteHostFile("a.csv", "Kopf\r\n\"A\"");
  Write(AddressFormat::Delimited, "a.csv", {"B"});
  EXPECT_EQ(Read("a.csv"), "Kopf\r\n\"A\"\r\n" + record);
  dir.WriteHostFile("b.csv", "Kopf\n");
  Write(AddressFormat::Delimited, "b.csv", {"B"});
  EXPECT_EQ(Read("b.csv"), "Kopf\n" + record);
}

// Readers take the first line for the header: in a file without one the first address would be lost.
TEST_F(AddressFileTest, AnEmptyFileGetsAHeader) {
  dir.WriteHostFile("a.csv", "");
  Write(AddressFormat::Delimited, "a.csv", {"A"});
  EXPECT_EQ(Read("a.csv"), Lines({"A"}));
}

TEST_F(AddressFileTest, TextIsInTheCodePageAndTellsWhatItCouldNotHold) {
  auto opened = Open(AddressFormat::Delimited, "a.csv");
  ASSERT_TRUE(opened);
  ASSERT_TRUE(opened->File->Add(RecordNamed("Größe € „x“")));
  EXPECT_EQ(opened->File->Losses(), "");
  ASSERT_TRUE(opened->File->Add(RecordNamed("Привет 🙂")));
  ASSERT_TRUE(opened->File->Flush());
  EXPECT_EQ(Read("a.csv"), Lines({"Größe € „x“", "?????? ?"}));
  EXPECT_NE(dir.ReadHostFile("a.csv").find("Gr\xF6\xDF"
                                           "e \x80"),
            std::string::npos);
  EXPECT_EQ(opened->File->Losses(),
            "1 Adresse(n) mit Zeichen, die es in Textdateien nicht gibt: dort steht \"?\"");
}

TEST_F(AddressFileTest, FlushMayBeCalledAgain) {
  auto opened = Open(AddressFormat::Delimited, "a.csv", true);
  ASSERT_TRUE(opened);
  ASSERT_TRUE(opened->File->Add(RecordNamed("A")));
  EXPECT_EQ(opened->File->Unwritten(), 1);
  ASSERT_TRUE(opened->File->Flush());
  EXPECT_EQ(opened->File->Unwritten(), 0);
  ASSERT_TRUE(opened->File->Flush());
  ASSERT_TRUE(opened->File->Add(RecordNamed("B")));
  ASSERT_TRUE(opened->File->Flush());
  EXPECT_EQ(Read("a.csv"), Lines({"A", "B"}));
}

TEST_F(AddressFileTest, AFullDiskLeavesTheOldFileAndFlushMayBeTriedAgain) {
  for (const bool overwrite : {false, true}) {
    const std::string old = Lines({"alt"});
    dir.WriteHostFile("a.csv", ToCodePage(old));
    auto opened = Open(AddressFormat::Delimited, "a.csv", overwrite);
    ASSERT_TRUE(opened);
    ASSERT_TRUE(opened->File->Add(RecordNamed("neu")));
    files.FailOn(Fault::ShortWrite, 1, platform::file_error::DiskFull);
    EXPECT_EQ(ErrorOf(opened->File->Flush()), platform::file_error::DiskFull);
    EXPECT_EQ(Read("a.csv"), old);
    EXPECT_EQ(opened->File->Unwritten(), 1);
    ASSERT_TRUE(opened->File->Flush());
    EXPECT_EQ(Read("a.csv"), overwrite ? Lines({"neu"}) : Lines({"alt", "neu"}));
    files.Heal();
  }
}

TEST_F(AddressFileTest, ManyRecordsGoToTheDiskInPieces) {
  auto opened = Open(AddressFormat::Delimited, "a.csv");
  ASSERT_TRUE(opened);
  const std::string name(1000, 'x');
  for (int i = 0; i < 3000; ++i) ASSERT_TRUE(opened->File->Add(RecordNamed(name)));
  EXPECT_LT(opened->File->Unwritten(), 3000);
  EXPECT_GT(dir.ReadHostFile("a.csv").size(), 1'000'000u);
  // A record that met a full disk is not part of the file; those before it wait for the next try.
  files.FailOn(Fault::Write, 1, platform::file_error::DiskFull, 1000);
  int added = 3000;
  while (opened->File->Add(RecordNamed(name))) ++added;
  files.Heal();
  ASSERT_TRUE(opened->File->Flush());
  EXPECT_EQ(dir.ReadHostFile("a.csv"), ToCodePage(Lines(Strings(static_cast<std::size_t>(added), name))));
}

TEST_F(AddressFileTest, TargetsThatCannotBeWrittenAreToldWhenTheyAreOpened) {
  ASSERT_TRUE(host->CreateFolder(dir.Path("folder.x")));
  dir.WriteHostFile("fixed.x", "alt");
  ASSERT_TRUE(host->SetReadOnly(dir.Path("fixed.x"), true));
  for (const auto format : {AddressFormat::Delimited, AddressFormat::GroupWise, AddressFormat::Excel}) {
    for (const bool overwrite : {false, true}) {
      EXPECT_EQ(ErrorOf(Open(format, "folder.x", overwrite)), platform::file_error::AccessDenied);
      EXPECT_EQ(ErrorOf(Open(format, "fixed.x", overwrite)), platform::file_error::AccessDenied);
      EXPECT_EQ(ErrorOf(Open(format, "fehlt\\a.x", overwrite)), platform::file_error::PathNotFound);
    }
  }
  EXPECT_EQ(Read("fixed.x"), "alt");
  EXPECT_EQ(ErrorOf(Open(AddressFormat::VCard, "a.vcf")), platform::file_error::BadName);
}

TEST_F(AddressFileTest, AWorkbookHasTheSheetWithItsColumnsInOrder) {
  Write(AddressFormat::Excel, "a.xls", {"Größe € 🙂", "B"});
  EXPECT_EQ(ColumnsOf("a.xls"), AllColumns());
  EXPECT_EQ(SheetNames("a.xls"), (Strings{"Größe € 🙂", "B"}));
}

TEST_F(AddressFileTest, AWorkbookHoldsEveryFieldAsText) {
  auto opened = Open(AddressFormat::Excel, "a.xls");
  ASSERT_TRUE(opened);
  AddressRecord record = FullRecord();
  record.Fields[field::PostalCode] = "01067";
  record.Fields[field::Fax] = "=1+1";
  ASSERT_TRUE(opened->File->Add(record));
  ASSERT_TRUE(opened->File->Flush());
  const auto table = tables::OpenAddressSheet(*host, dir.Path("a.xls"), AddressSheet);
  ASSERT_TRUE(table);
  EXPECT_EQ(table->ReadRow(0), Strings(record.Fields.begin(), record.Fields.end()));
}

TEST_F(AddressFileTest, AnExistingWorkbookIsAppendedToOrBegunAnew) {
  Write(AddressFormat::Excel, "a.xls", {"A"});
  Write(AddressFormat::Excel, "a.xls", {"B"});
  EXPECT_EQ(SheetNames("a.xls"), (Strings{"A", "B"}));
  Write(AddressFormat::Excel, "a.xls", {"C"}, true);
  EXPECT_EQ(SheetNames("a.xls"), Strings{"C"});
}

class AddressTemplateTest : public AddressFileTest {
 protected:
  // A template with a sheet of its own before that of the addresses, and a row of text above no record.
  void MakeTemplate(const Strings& columns, std::string_view sheet = "ADRESSEN") {
    tables::Workbook workbook;
    workbook.Sheets.push_back({"Hinweise", {{tables::Cell("Vorlage des Hauses")}}, 0});
    workbook.Sheets.push_back({std::string(sheet), {tables::Row(columns.begin(), columns.end())}, 1});
    options.WorkbookTemplate = dir.Path("vorlage.xls");
    ASSERT_TRUE(tables::WriteWorkbook(*host, options.WorkbookTemplate, workbook));
  }
  // The error number of the note of opening a new workbook, which is usable in any case.
  int NoteOfNewWorkbook() {
    auto opened = Open(AddressFormat::Excel, "neu.xls", true);
    if (!opened) return -1;
    EXPECT_TRUE(opened->File->Add(RecordNamed("A")));
    EXPECT_TRUE(opened->File->Flush());
    EXPECT_EQ(SheetNames("neu.xls"), Strings{"A"});
    return ErrorOf(opened->Note);
  }
};

TEST_F(AddressTemplateTest, ANewWorkbookIsACopyOfTheTemplate) {
  MakeTemplate(AllColumns());
  ASSERT_TRUE(host->SetReadOnly(options.WorkbookTemplate, true));
  const std::string before = dir.ReadHostFile("vorlage.xls");
  EXPECT_EQ(NoteOfNewWorkbook(), 0);
  const auto workbook = tables::ReadWorkbook(*host, dir.Path("neu.xls"));
  ASSERT_TRUE(workbook);
  ASSERT_EQ(workbook->Sheets.size(), 2u);
  EXPECT_EQ(workbook->Sheets[0].Rows.at(0).at(0), tables::Cell("Vorlage des Hauses"));
  EXPECT_EQ(workbook->Sheets[1].Name, "ADRESSEN");
  // An installed template is read-only; its copy has to take the addresses of the next run.
  Write(AddressFormat::Excel, "neu.xls", {"B"});
  EXPECT_EQ(SheetNames("neu.xls"), (Strings{"A", "B"}));
  EXPECT_EQ(dir.ReadHostFile("vorlage.xls"), before);
}

TEST_F(AddressTemplateTest, ATemplateThatCannotServeIsNotedAndTheWorkbookMadeWithoutIt) {
  options.WorkbookTemplate = dir.Path("fehlt.xls");
  EXPECT_EQ(NoteOfNewWorkbook(), platform::file_error::FileNotFound);
  dir.WriteHostFile("text.xls", "keine Arbeitsmappe");
  options.WorkbookTemplate = dir.Path("text.xls");
  EXPECT_EQ(NoteOfNewWorkbook(), tables::table_error::NotAWorkbook);
  MakeTemplate(AllColumns(), "Tabelle1");
  EXPECT_EQ(NoteOfNewWorkbook(), tables::table_error::SheetMissing);
  MakeTemplate({"Anzeigename"});
  EXPECT_EQ(NoteOfNewWorkbook(), tables::table_error::ColumnMissing);
}

TEST_F(AddressFileTest, AFileThatIsNoWorkbookStays) {
  dir.WriteHostFile("a.xls", "keine Arbeitsmappe");
  EXPECT_EQ(ErrorOf(Open(AddressFormat::Excel, "a.xls")), tables::table_error::NotAWorkbook);
  EXPECT_EQ(Read("a.xls"), "keine Arbeitsmappe");
}

TEST_F(AddressFileTest, AWorkbookThatCannotBeSavedKeepsItsOldContent) {
  for (const bool overwrite : {false, true}) {
    Write(AddressFormat::Excel, "a.xls", {"alt"}, true);
    const std::string old = dir.ReadHostFile("a.xls");
    auto opened = Open(AddressFormat::Excel, "a.xls", overwrite);
    ASSERT_TRUE(opened);
    ASSERT_TRUE(opened->File->Add(RecordNamed("neu")));
    files.FailOn(Fault::Write, 1, platform::file_error::DiskFull);
    EXPECT_EQ(ErrorOf(opened->File->Flush()), platform::file_error::DiskFull);
    EXPECT_EQ(dir.ReadHostFile("a.xls"), old);
    EXPECT_EQ(opened->File->Unwritten(), 1);
    ASSERT_TRUE(opened->File->Flush());
    EXPECT_EQ(SheetNames("a.xls"), overwrite ? Strings{"neu"} : (Strings{"alt", "neu"}));
    files.Heal();
  }
}

TEST_F(AddressFileTest, ATextThatACellCannotHoldIsCutAndTold) {
  auto opened = Open(AddressFormat::Excel, "a.xls");
  ASSERT_TRUE(opened);
  AddressRecord record = RecordNamed("A");
  record.Fields[field::Notes] = std::string(tables::MaxCellText, 'x');
  ASSERT_TRUE(opened->File->Add(record));
  EXPECT_EQ(opened->File->Losses(), "");
  record.Fields[field::Notes] += 'x';
  ASSERT_TRUE(opened->File->Add(record));
  EXPECT_EQ(opened->File->Losses(), "1 Adresse(n) gekürzt: eine Zelle faßt 32767 Zeichen");
}

}  // namespace
}  // namespace velmora::addresses
