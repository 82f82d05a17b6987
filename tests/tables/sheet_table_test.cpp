#include "tables/sheet_table.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/host_file_system.h"
#include "support/faulty_file_system.h"
#include "support/temp_dir.h"
#include "workbook_helpers.h"

namespace velmora::tables {
namespace {

using Names = std::vector<std::string_view>;
using Texts = std::vector<std::string>;

class SheetTableTest : public testing::Test {
 protected:
  std::string Path() const { return Directory.Path("Adressen.xls"); }
  std::string FileBytes() const { return Directory.ReadHostFile("Adressen.xls"); }
  void Write(const Workbook& workbook) { ASSERT_TRUE(WriteWorkbook(Files, Path(), workbook)); }
  void WriteRows(std::vector<Row> rows) { Write({{Sheet{"Adressen", std::move(rows), 1}}}); }
  SheetTable Open() {
    Result<SheetTable> table = OpenAddressSheet(Files, Path(), "Adressen");
    if (!table) throw std::runtime_error(table.error().Text);
    return std::move(*table);
  }
  Workbook Read() { return ReadWorkbook(Files, Path()).value(); }

  test::TempDir Directory;
  std::unique_ptr<platform::FileSystem> Host = platform::MakeHostFileSystem({});
  test::FaultyFileSystem Files{*Host};
};

TEST_F(SheetTableTest, ANewWorkbookHasItsColumnsAndNoRecord) {
  ASSERT_TRUE(CreateSheetWorkbook(Files, Path(), "Adressen", {"Name", "Straße", "EMail"}));
  const SheetTable table = Open();
  EXPECT_EQ(table.Columns(), (Texts{"Name", "Straße", "EMail"}));
  EXPECT_EQ(table.RowCount(), 0U);
  EXPECT_EQ(Read().Sheets.front().HeaderRows, 1U);
}

TEST_F(SheetTableTest, ANewWorkbookReplacesAnExistingFileOfAnyKind) {
  Directory.WriteHostFile("Adressen.xls", "keine Arbeitsmappe");
  ASSERT_TRUE(CreateSheetWorkbook(Files, Path(), "Adressen", {"Name"}));
  EXPECT_EQ(Open().Columns(), Texts{"Name"});
}

TEST_F(SheetTableTest, RecordsReachTheFileWithSaveAndStayReadable) {
  ASSERT_TRUE(CreateSheetWorkbook(Files, Path(), "Adressen", {"Name", "Ort"}));
  SheetTable table = Open();
  EXPECT_EQ(table.AddRow({"Name", "Ort"}, {"Müller", "Köln"}), 0);
  EXPECT_EQ(Open().RowCount(), 0U);
  ASSERT_TRUE(table.Save());
  EXPECT_EQ(table.AddRow({"Ort", "Name"}, {"Ulm", "=1+1"}), 0);
  ASSERT_TRUE(table.Save());
  const SheetTable read = Open();
  ASSERT_EQ(read.RowCount(), 2U);
  EXPECT_EQ(read.ReadRow(0), (Texts{"Müller", "Köln"}));
  EXPECT_EQ(read.ReadRow(1), (Texts{"=1+1", "Ulm"}));
  EXPECT_EQ(Read().Sheets.front().HeaderRows, 1U);
}

TEST_F(SheetTableTest, TheSheetIsFoundWithoutRegardToCase) {
  Write({{Sheet{"Liste", {}}, Sheet{"ADRESSEN", {{Text("Name")}}}}});
  EXPECT_TRUE(OpenAddressSheet(Files, Path(), "adressen"));
  const auto missing = OpenAddressSheet(Files, Path(), "Benutzer");
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.error().Number, table_error::SheetMissing);
}

TEST_F(SheetTableTest, OtherSheetsAndColumnsKeepTheirValues) {
  const std::vector<Row> other = {{1.5, true}, {}, {At(2026, 1, 2), Cell(), Text("Text")}};
  Write({{Sheet{"Vorn", other, 2}, Sheet{"Adressen", {{Text("Name"), Text("Eigenes")}, {Text("a"), 5.0}}, 1},
          Sheet{"Hinten", other, 0, true}}});
  SheetTable table = Open();
  ASSERT_TRUE(table.AddRow({"Name"}, {"b"}));
  ASSERT_TRUE(table.Save());
  const Workbook read = Read();
  ASSERT_EQ(read.Sheets.size(), 3U);
  EXPECT_EQ(read.Sheets[0].Rows, other);
  EXPECT_EQ(read.Sheets[0].HeaderRows, 2U);
  EXPECT_EQ(read.Sheets[1].Rows,
            (std::vector<Row>{{Text("Name"), Text("Eigenes")}, {Text("a"), 5.0}, {Text("b")}}));
  EXPECT_EQ(read.Sheets[2].Rows, other);
  EXPECT_TRUE(read.Sheets[2].IsHidden);
}

TEST_F(SheetTableTest, ARecordGoesBehindTheLastRowThatHoldsAValue) {
  std::vector<Row> rows = {{Text("Name"), Text("Ort")}, {Text("a")}, {}, {Cell(), Text("b")}, {Text("")}, {}};
  SheetTable table(Files, Path(), Workbook{{Sheet{"Adressen", rows}}}, 0);
  EXPECT_EQ(table.RowCount(), 3U);
  ASSERT_TRUE(table.AddRow({"Name"}, {"c"}));
  EXPECT_EQ(table.RowCount(), 4U);
  EXPECT_EQ(table.ReadRow(1), (Texts{"", ""}));
  EXPECT_EQ(table.ReadRow(3), (Texts{"c", ""}));
}

TEST_F(SheetTableTest, ValuesAreReadAsAPersonReadsThem) {
  WriteRows({{Text("A"), Text("B"), Text("C"), Text("D"), Text("E")},
             {1234.5, true, At(2026, 12, 31), At(2026, 12, 31, 23, 59), Text("x\ny"), Text("ohne Spalte")}});
  EXPECT_EQ(Open().ReadRow(0), (Texts{"1234,5", "WAHR", "31.12.2026", "31.12.2026 23:59:00", "x\ny"}));
}

TEST_F(SheetTableTest, AForeignHeaderMayHaveEqualEmptyAndOddNames) {
  WriteRows({{Text("Name"), Cell(), Text("name"), 5.0, Text("Name")}, {Text("a")}});
  SheetTable table = Open();
  EXPECT_EQ(table.Columns(), (Texts{"Name", "", "name", "5", "Name"}));
  ASSERT_TRUE(table.AddRow({"NAME", "5"}, {"b", "fünf"}));
  EXPECT_EQ(table.ReadRow(1), (Texts{"b", "", "", "fünf", ""}));
  EXPECT_EQ(table.AddRow({""}, {"c"}).error().Number, table_error::ColumnMissing);
}

TEST_F(SheetTableTest, AMissingColumnIsAnErrorAndNothingIsAdded) {
  WriteRows({{Text("Name")}});
  SheetTable table = Open();
  EXPECT_EQ(table.AddRow({"Name", "Fax"}, {"a", "1"}).error().Number, table_error::ColumnMissing);
  EXPECT_EQ(table.RowCount(), 0U);
  Write({{Sheet{"Adressen", {}}}});
  EXPECT_EQ(Open().Columns(), Texts{});
  EXPECT_EQ(Open().RowCount(), 0U);
  SheetTable empty = Open();
  EXPECT_EQ(empty.AddRow({"Name"}, {"a"}).error().Number, table_error::ColumnMissing);
}

TEST_F(SheetTableTest, OverlongTextsAreCutAndCounted) {
  WriteRows({{Text("A"), Text("B"), Text("C")}});
  SheetTable table = Open();
  const std::string full(MaxCellText, 'x');
  EXPECT_EQ(table.AddRow({"A", "B", "C"}, {full, full + "y", full + "🙂"}), 2);
  ASSERT_TRUE(table.Save());
  EXPECT_EQ(Open().ReadRow(0), (Texts{full, full, full}));
}

TEST_F(SheetTableTest, AFullSheetTakesNoRecord) {
  std::vector<Row> rows(MaxRows, {1.0});
  rows.front() = {Text("Name")};
  SheetTable table(Files, Path(), Workbook{{Sheet{"Adressen", std::move(rows)}}}, 0);
  EXPECT_EQ(table.AddRow({"Name"}, {"a"}).error().Number, table_error::SheetFull);
}

TEST_F(SheetTableTest, SaveWithoutARecordWritesNothing) {
  WriteRows({{Text("Name")}});
  SheetTable table = Open();
  Files.FailOn(test::Fault::Write, 1, platform::file_error::DiskFull);
  EXPECT_TRUE(table.Save());
}

TEST_F(SheetTableTest, AFailedSaveLeavesTheFileAndMayBeTriedAgain) {
  WriteRows({{Text("Name")}, {Text("alt")}});
  SheetTable table = Open();
  ASSERT_TRUE(table.AddRow({"Name"}, {"neu"}));
  const std::string old = FileBytes();
  for (const test::Fault fault : {test::Fault::Write, test::Fault::ShortWrite, test::Fault::Rename}) {
    for (const int error : {platform::file_error::DiskFull, platform::file_error::AccessDenied}) {  // locked
      Files.FailOn(fault, 1, error);
      EXPECT_EQ(table.Save().error().Number, error);
      EXPECT_EQ(FileBytes(), old);
      Files.Heal();
    }
  }
  ASSERT_TRUE(table.Save());
  EXPECT_EQ(Open().RowCount(), 2U);
}

TEST_F(SheetTableTest, AReadOnlyFileStaysAsItIs) {
  WriteRows({{Text("Name")}});
  SheetTable table = Open();
  ASSERT_TRUE(table.AddRow({"Name"}, {"neu"}));
  const std::string old = FileBytes();
  ASSERT_TRUE(Files.SetReadOnly(Path(), true));
  EXPECT_EQ(table.Save().error().Number, platform::file_error::AccessDenied);
  EXPECT_EQ(FileBytes(), old);
  ASSERT_TRUE(Files.SetReadOnly(Path(), false));
  EXPECT_TRUE(table.Save());
}

TEST_F(SheetTableTest, AFileThatVanishedIsNotMadeAnew) {
  WriteRows({{Text("Name")}});
  SheetTable table = Open();
  ASSERT_TRUE(table.AddRow({"Name"}, {"neu"}));
  ASSERT_TRUE(Files.DeleteFile(Path(), false));
  EXPECT_EQ(table.Save().error().Number, platform::file_error::FileNotFound);
  EXPECT_FALSE(Files.FileExists(Path()));
}

TEST_F(SheetTableTest, WhatAnotherProgramWroteMeanwhileIsNotOverwritten) {
  WriteRows({{Text("Name")}});
  SheetTable table = Open();
  ASSERT_TRUE(table.AddRow({"Name"}, {"neu"}));
  WriteRows({{Text("Name")},
             {Text("von Hand eingetragen, und zwar so viel, dass die Datei größer wird")},
             {Text(std::string(2000, 'x'))}});
  const std::string edited = FileBytes();
  EXPECT_EQ(table.Save().error().Number, platform::file_error::AccessDenied);
  EXPECT_EQ(FileBytes(), edited);
}

TEST_F(SheetTableTest, TheFileKeepsItsMode) {
  WriteRows({{Text("Name")}});
  const std::string host = Directory.HostPath("Adressen.xls");
  ASSERT_EQ(chmod(host.c_str(), 0640), 0);
  SheetTable table = Open();
  ASSERT_TRUE(table.AddRow({"Name"}, {"neu"}));
  ASSERT_TRUE(table.Save());
  struct stat status {};
  ASSERT_EQ(stat(host.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(SheetTableTest, WhatIsNoWorkbookIsNotOpened) {
  for (const std::string_view content : {"", "Text", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"}) {
    Directory.WriteHostFile("Adressen.xls", content);
    EXPECT_EQ(OpenAddressSheet(Files, Path(), "Adressen").error().Number, table_error::NotAWorkbook);
    EXPECT_EQ(FileBytes(), content);
  }
  EXPECT_EQ(OpenAddressSheet(Files, Directory.Path("fehlt.xls"), "Adressen").error().Number,
            platform::file_error::FileNotFound);
}

TEST_F(SheetTableTest, TakesAsManyRecordsAsASheetHasRows) {
  const Names columns = {"A", "B"};
  ASSERT_TRUE(CreateSheetWorkbook(Files, Path(), "Adressen", columns));
  SheetTable table = Open();
  for (std::size_t i = 1; i < MaxRows; ++i) ASSERT_TRUE(table.AddRow(columns, {std::to_string(i), "gleich"}));
  EXPECT_EQ(table.AddRow(columns, {"einer", "mehr"}).error().Number, table_error::SheetFull);
  ASSERT_TRUE(table.Save());
  const SheetTable read = Open();
  ASSERT_EQ(read.RowCount(), MaxRows - 1);
  for (std::size_t i = 1; i < MaxRows; ++i)
    ASSERT_EQ(read.ReadRow(i - 1), (Texts{std::to_string(i), "gleich"}));
}

}  // namespace
}  // namespace velmora::tables
