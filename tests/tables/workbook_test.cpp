#include "tables/workbook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/host_file_system.h"
#include "support/faulty_file_system.h"
#include "support/temp_dir.h"
#include "workbook_helpers.h"

namespace velmora::tables {
namespace {

Workbook OneSheet(std::string name) { return Workbook{{Sheet{std::move(name), {{1.0}}}}}; }

int ErrorOf(const Workbook& workbook) {
  const Result<std::string> file = FormatWorkbook(workbook);
  return file ? 0 : file.error().Number;
}

TEST(Workbook, KeepsCellsOfEveryType) {
  const std::vector<Row> rows = {
      {Text("Größe"), Text("€ 5"), Text("🙂"), Text("a\nb \"c\" 'd'"), Text(" "), Text("Привет")},
      {},
      {Cell(), 1.0, -1.5, 0.1, 1e300, 5e-324, 123456789012345.0},
      {true, false, Cell(), At(2026, 12, 31, 23, 59, 58), At(1900, 2, 28), At(1900, 3, 1), At(9999, 12, 31),
       DateTime(), DateTime::FromSeconds(3661)},
  };
  EXPECT_EQ(RoundTrip(rows), rows);
}

TEST(Workbook, KeepsSheetsWithTheirNamesOrderVisibilityAndHeaders) {
  const Workbook workbook{{Sheet{"Übersicht €", {{1.0}}, 0, true},
                           Sheet{"Adressen", {{Text("A")}, {Text("b")}}, 1}, Sheet{"Leer", {}},
                           Sheet{std::string(31, 'x'), {{Cell(), true}}, 3}}};
  const Workbook read = RoundTrip(workbook);
  ASSERT_EQ(read.Sheets.size(), workbook.Sheets.size());
  for (std::size_t i = 0; i < read.Sheets.size(); ++i) {
    EXPECT_EQ(read.Sheets[i].Name, workbook.Sheets[i].Name);
    EXPECT_EQ(read.Sheets[i].Rows, workbook.Sheets[i].Rows) << i;
    EXPECT_EQ(read.Sheets[i].HeaderRows, workbook.Sheets[i].HeaderRows) << i;
    EXPECT_EQ(read.Sheets[i].IsHidden, workbook.Sheets[i].IsHidden) << i;
  }
}

TEST(Workbook, IsNeverWrittenWithAllSheetsHidden) {
  const Workbook workbook{{Sheet{"A", {}, 0, true}, Sheet{"B", {}, 0, true}}};
  const Workbook read = RoundTrip(workbook);
  EXPECT_FALSE(read.Sheets[0].IsHidden);
  EXPECT_TRUE(read.Sheets[1].IsHidden);
}

TEST(Workbook, TextsThatLookLikeFormulasStayTexts) {
  const std::vector<Row> rows = {
      {Text("=1+1"), Text("+49 30"), Text("@SUM(A1)"), Text("-5"), Text("=cmd|' /C calc'!A0")}};
  EXPECT_EQ(RoundTrip(rows), rows);
  const std::string stream = *ReadCompoundStream(Bytes({{Sheet{"Blatt", rows}}}), "Workbook", "");
  for (std::size_t at = 0; at < stream.size();) {
    EXPECT_NE(ReadLittle<std::uint16_t>(stream, at), static_cast<std::uint16_t>(biff::Id::Formula));
    at += biff::RecordHeaderSize + ReadLittle<std::uint16_t>(stream, at + 2);
  }
}

TEST(Workbook, EmptyTextsAndTrailingEmptyCellsAreLeftOut) {
  EXPECT_EQ(RoundTrip({{Text(""), 1.0, Text(""), Cell()}, {Cell()}}), (std::vector<Row>{{Cell(), 1.0}}));
}

TEST(Workbook, DaysThatExcelCannotCountAreTexts) {
  EXPECT_EQ(RoundTrip({{At(1880, 5, 6), At(1899, 12, 31, 1)}}),
            (std::vector<Row>{{Text("06.05.1880"), Text("31.12.1899 01:00:00")}}));
}

TEST(Workbook, WhatIsNoNumberIsWrittenAsExcelShowsIt) {
  const double nan = std::nan(""), infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(RoundTrip({{nan, -infinite}}), (std::vector<Row>{{Text("#NUM!"), Text("#NUM!")}}));
}

TEST(Workbook, KeepsTextsOfTheGreatestLength) {
  std::string wide, pairs;
  for (std::size_t i = 0; i < MaxCellText; ++i) wide += "€";
  for (std::size_t i = 0; i < MaxCellText / 2; ++i) pairs += "🙂";
  const std::vector<Row> rows = {
      {Text(std::string(MaxCellText, 'x')), Text(wide), Text(pairs), Text("Ende")}};
  EXPECT_EQ(RoundTrip(rows), rows);
  EXPECT_EQ(ErrorOf({{Sheet{"Blatt", {{Text(wide + "€")}}}}}), table_error::TextTooLong);
}

// The table of texts is cut into records of 8,224 bytes: a text begins, ends and is cut at every offset
// there.
TEST(Workbook, TextsMayLieAcrossTheEndOfARecordAtEveryOffset) {
  for (const std::string_view straddling :
       {"schmal, mit Umläuten: äöü", "breit: €uro und 🙂🙂 Paare", "x", "€"}) {
    for (std::size_t distance = 0; distance < 80; ++distance) {
      const std::string filler(biff::MaxRecordData - 8 - 3 - distance, 'f');
      const std::vector<Row> rows = {{Text(filler), Text(straddling), Text("Ende €")}, {Text("a"), Text("")}};
      ASSERT_EQ(RoundTrip(rows)[0], rows[0]) << distance << straddling;
    }
  }
}

TEST(Workbook, NoRecordIsLongerThanTheFormatAllows) {
  std::vector<Row> rows;
  for (std::size_t i = 0; i < 3000; ++i) {
    rows.push_back(
        {Text(std::string(i % 257, 'x') + std::to_string(i)), Text("€" + std::string(i % 101, 'y'))});
  }
  const std::string stream = *ReadCompoundStream(Bytes({{Sheet{"Blatt", rows}}}), "Workbook", "");
  std::size_t continuations = 0;
  for (std::size_t at = 0; at < stream.size();) {
    const std::size_t size = ReadLittle<std::uint16_t>(stream, at + 2);
    ASSERT_LE(size, biff::MaxRecordData);
    continuations +=
        ReadLittle<std::uint16_t>(stream, at) == static_cast<std::uint16_t>(biff::Id::Continue) ? 1 : 0;
    at += biff::RecordHeaderSize + size;
  }
  EXPECT_GT(continuations, 40U);
  EXPECT_EQ(RoundTrip(rows), rows);
}

TEST(Workbook, EqualTextsStandInTheFileOnce) {
  const std::string text(10'000, 'x');
  const std::string once = Bytes({{Sheet{"Blatt", {{Text(text)}}}}});
  const std::string often = Bytes({{Sheet{"Blatt", std::vector<Row>(50, {Text(text)})}}});
  EXPECT_LT(often.size(), once.size() + 10'000);
}

TEST(Workbook, IsTheSameFileEveryTime) { EXPECT_EQ(Bytes(OneSheet("A")), Bytes(OneSheet("A"))); }

TEST(Workbook, TakesEveryRowAndColumnOfASheetAndNoMore) {
  std::vector<Row> rows(MaxRows);
  rows.front() = {Text("oben")};
  rows.back() = {Text("unten"), 1.0};
  rows[7].resize(MaxColumns);
  rows[7].back() = Text("rechts");
  const Workbook full{{Sheet{"Blatt", rows}}};
  const std::vector<Row> read = RoundTrip(rows);
  ASSERT_EQ(read.size(), MaxRows);
  EXPECT_EQ(read.back(), rows.back());
  EXPECT_EQ(read[7], rows[7]);
  rows.emplace_back();
  EXPECT_EQ(ErrorOf({{Sheet{"Blatt", rows}}}), table_error::SheetFull);
  EXPECT_EQ(ErrorOf({{Sheet{"Blatt", {Row(MaxColumns + 1)}}}}), table_error::SheetFull);
}

TEST(Workbook, TellsWhenThereIsMoreThanItWouldReadAgain) {
  Workbook workbook;
  std::vector<Row>& rows = workbook.Sheets.emplace_back(Sheet{"Blatt", {}}).Rows;
  rows.resize(MaxRows);
  for (Row& row : rows) row.resize(MaxCells / MaxRows);
  EXPECT_EQ(ErrorOf(workbook), table_error::SheetFull);
  rows.clear();
  rows.resize(MaxTextBytes / MaxCellText + 1);
  for (Row& row : rows) row.push_back(Text(std::string(MaxCellText, 'x')));
  EXPECT_EQ(ErrorOf(workbook), table_error::SheetFull);
}

TEST(Workbook, RefusesNamesThatExcelDoesNotTake) {
  for (const char* name : {"", "a[b", "a]b", "a:b", "a*b", "a?b", "a/b", "a\\b", "'a", "a'", "a\nb",
                           "12345678901234567890123456789012"}) {
    EXPECT_EQ(ErrorOf(OneSheet(name)), table_error::BadSheetName) << name;
  }
  for (const char* name :
       {"a'b", "1234567890123456789012345678901", " ", "Ä", "123456789012345678901234567890€"}) {
    EXPECT_EQ(ErrorOf(OneSheet(name)), 0) << name;
  }
  EXPECT_EQ(ErrorOf({{Sheet{"Äpfel", {}}, Sheet{"äPFEL", {}}}}), table_error::BadSheetName);
  EXPECT_EQ(ErrorOf({}), table_error::SheetMissing);
}

TEST(Workbook, ReadsAndWritesThroughTheFileSystem) {
  const test::TempDir directory;
  const auto files = platform::MakeHostFileSystem({});
  ASSERT_TRUE(WriteWorkbook(*files, directory.Path("Adressen.xls"), OneSheet("Adressen")));
  const Result<Workbook> read = ReadWorkbook(*files, directory.Path("ADRESSEN.XLS"));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->Sheets.front().Name, "Adressen");
}

TEST(Workbook, AMissingFileHasTheErrorOfFiles) {
  const test::TempDir directory;
  const auto files = platform::MakeHostFileSystem({});
  EXPECT_EQ(ReadWorkbook(*files, directory.Path("fehlt.xls")).error().Number,
            platform::file_error::FileNotFound);
  EXPECT_EQ(ReadWorkbook(*files, directory.Path("fehlt\\a.xls")).error().Number,
            platform::file_error::PathNotFound);
  EXPECT_EQ(WriteWorkbook(*files, directory.Path("fehlt\\a.xls"), OneSheet("A")).error().Number,
            platform::file_error::PathNotFound);
}

TEST(Workbook, AFailedWriteLeavesTheOldFile) {
  const test::TempDir directory;
  const auto host = platform::MakeHostFileSystem({});
  test::FaultyFileSystem files(*host);
  const std::string path = directory.Path("a.xls");
  ASSERT_TRUE(WriteWorkbook(files, path, OneSheet("Alt")));
  const std::string old = directory.ReadHostFile("a.xls");
  for (const test::Fault fault : {test::Fault::Write, test::Fault::ShortWrite, test::Fault::Rename}) {
    files.FailOn(fault, 1, platform::file_error::DiskFull);
    EXPECT_EQ(WriteWorkbook(files, path, OneSheet("Neu")).error().Number, platform::file_error::DiskFull);
    EXPECT_EQ(directory.ReadHostFile("a.xls"), old);
    files.Heal();
  }
  EXPECT_FALSE(WriteWorkbook(files, path, OneSheet("a/b")));
  EXPECT_EQ(directory.ReadHostFile("a.xls"), old);
}

}  // namespace
}  // namespace velmora::tables
