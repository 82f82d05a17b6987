// Record streams as other programs write them.
#include <gtest/gtest.h>

#include <cmath>

#include "workbook_helpers.h"

namespace velmora::tables {
namespace {

using biff::Id;
using std::uint16_t, std::uint32_t, std::uint64_t, std::uint8_t;

constexpr uint16_t Formatless = 0;

StreamBuilder Globals() {
  StreamBuilder stream;
  stream.Start(biff::SubstreamGlobals);
  return stream;
}

// The rows of a workbook of one sheet with these records.
template <typename AddRecords>
std::vector<Row> RowsOf(StreamBuilder stream, AddRecords addRecords) {
  stream.Entry("Blatt").End().ThenSheet();
  addRecords(stream);
  stream.End();
  const Workbook workbook = Parsed(stream.File());
  return workbook.Sheets.empty() ? std::vector<Row>{} : workbook.Sheets.front().Rows;
}

struct At16 {
  uint16_t Row, Column;
};

StreamBuilder& AddFormula(StreamBuilder& stream, At16 at, uint64_t value) {
  return stream.Add(Id::Formula, at.Row, at.Column, Formatless, value, uint16_t{0}, uint32_t{0}, uint16_t{0});
}

constexpr uint64_t NoNumber = 0xFFFF000000000000;

TEST(ForeignWorkbook, FormulasBecomeTheirValues) {
  const auto rows = RowsOf(Globals(), [](StreamBuilder& stream) {
    AddFormula(stream, {0, 0}, std::bit_cast<uint64_t>(1.5));
    AddFormula(stream, {0, 1}, NoNumber | 1 | (1 << 16));
    AddFormula(stream, {0, 2}, NoNumber | 1);
    AddFormula(stream, {0, 3}, NoNumber | 2 | (0x07 << 16));
    AddFormula(stream, {0, 4}, NoNumber | 3);
    AddFormula(stream, {0, 5}, NoNumber);
    stream.Add(Id{0x04BC}, uint64_t{0});  // a shared formula stands between a formula and its text
    stream.Add(Id::String, std::string_view(EncodedText("Größe €").Whole<uint16_t>()));
  });
  EXPECT_EQ(rows, (std::vector<Row>{{1.5, true, false, Text("#DIV/0!"), Cell(), Text("Größe €")}}));
}

TEST(ForeignWorkbook, TheTextOfAFormulaMayGoOnInTheNextRecord) {
  const auto rows = RowsOf(Globals(), [](StreamBuilder& stream) {
    AddFormula(stream, {0, 0}, NoNumber);
    stream.Add(Id::String, uint16_t{5}, uint8_t{0}, std::string_view("abc"));
    stream.Add(Id::Continue, biff::HighByte, uint16_t{0x20AC}, uint16_t{'z'});
  });
  EXPECT_EQ(rows, (std::vector<Row>{{Text("abc€z")}}));
}

TEST(ForeignWorkbook, ATextWithoutAFormulaIsPassedOver) {
  const auto rows = RowsOf(Globals(), [](StreamBuilder& stream) {
    stream.Add(Id::String, std::string_view(EncodedText("allein").Whole<uint16_t>()));
    AddFormula(stream, {0, 0}, NoNumber);
    stream.Add(Id::Number, uint16_t{0}, uint16_t{1}, Formatless, 2.0);
    stream.Add(Id::String, std::string_view(EncodedText("zu spät").Whole<uint16_t>()));
  });
  EXPECT_EQ(rows, (std::vector<Row>{{Cell(), 2.0}}));
}

TEST(ForeignWorkbook, DecodesPackedNumbers) {
  const auto integer = [](std::int32_t value) { return (static_cast<uint32_t>(value) << 2) | 2; };
  const auto upper = [](double value) { return static_cast<uint32_t>(std::bit_cast<uint64_t>(value) >> 32); };
  const auto rows = RowsOf(Globals(), [&](StreamBuilder& stream) {
    stream.Add(Id::Rk, uint16_t{0}, uint16_t{0}, Formatless, integer(-5));
    stream.Add(Id::Rk, uint16_t{0}, uint16_t{1}, Formatless, integer(1234) | 1);
    stream.Add(Id::Rk, uint16_t{0}, uint16_t{2}, Formatless, upper(0.5));
    stream.Add(Id::Rk, uint16_t{0}, uint16_t{3}, Formatless, upper(150.0) | 1);
    stream.Add(Id::MulRk, uint16_t{1}, uint16_t{2}, Formatless, integer(1), Formatless, integer(536870911),
               uint16_t{3});
  });
  EXPECT_EQ(rows, (std::vector<Row>{{-5.0, 12.34, 0.5, 1.5}, {Cell(), Cell(), 1.0, 536870911.0}}));
}

TEST(ForeignWorkbook, ReadsTextsThatStandInTheSheet) {
  const auto rows = RowsOf(Globals(), [](StreamBuilder& stream) {
    stream.Add(Id::Label, uint16_t{0}, uint16_t{0}, Formatless,
               std::string_view(EncodedText("Größe €").Whole<uint16_t>()));
    // Rich: one formatting run behind the text.
    stream.Add(Id::RString, uint16_t{0}, uint16_t{1}, Formatless,
               std::string_view(EncodedText("fett").Whole<uint16_t>()), uint16_t{1}, uint32_t{0});
    stream.Add(Id::BoolErr, uint16_t{0}, uint16_t{2}, Formatless, uint8_t{1}, uint8_t{0});
    stream.Add(Id::BoolErr, uint16_t{0}, uint16_t{3}, Formatless, uint8_t{0x2A}, uint8_t{1});
  });
  EXPECT_EQ(rows, (std::vector<Row>{{Text("Größe €"), Text("fett"), true, Text("#N/A")}}));
}

TEST(ForeignWorkbook, SkipsFormattingRunsAndPhoneticsOfTexts) {
  StreamBuilder stream = Globals();
  const auto flags = static_cast<uint8_t>(biff::RichString | biff::ExtString);
  stream.Add(Id::Sst, uint32_t{2}, uint32_t{2}, uint16_t{4}, flags, uint16_t{2}, uint32_t{6},
             std::string_view("rich"), uint64_t{0}, uint32_t{0});  // two runs, four of six bytes of phonetics
  stream.Add(Id::Continue, uint16_t{0}, uint16_t{4}, uint8_t{0}, std::string_view("next"));
  const auto rows = RowsOf(std::move(stream), [](StreamBuilder& sheet) {
    sheet.Add(Id::LabelSst, uint16_t{0}, uint16_t{0}, Formatless, uint32_t{0});
    sheet.Add(Id::LabelSst, uint16_t{0}, uint16_t{1}, Formatless, uint32_t{1});
  });
  EXPECT_EQ(rows, (std::vector<Row>{{Text("rich"), Text("next")}}));
}

TEST(ForeignWorkbook, ATextMayBeginBehindTheEndOfARecord) {
  StreamBuilder stream = Globals();
  stream.Add(Id::Sst, uint32_t{1}, uint32_t{1}, uint16_t{2}, uint8_t{0});
  stream.Add(Id::Continue, biff::HighByte, uint16_t{0x20AC}, uint16_t{'z'});
  const auto rows = RowsOf(std::move(stream), [](StreamBuilder& sheet) {
    sheet.Add(Id::LabelSst, uint16_t{0}, uint16_t{0}, Formatless, uint32_t{0});
  });
  EXPECT_EQ(rows, (std::vector<Row>{{Text("€z")}}));
}

TEST(ForeignWorkbook, NumbersOfChartsAreNoCells) {
  constexpr uint16_t chart = 0x0020;
  const auto rows = RowsOf(Globals(), [](StreamBuilder& stream) {
    stream.Add(Id::Number, uint16_t{0}, uint16_t{0}, Formatless, 1.0);
    stream.Start(chart).Add(Id::Number, uint16_t{0}, uint16_t{0}, Formatless, 99.0).End();
    stream.Add(Id::Number, uint16_t{0}, uint16_t{1}, Formatless, 2.0);
  });
  EXPECT_EQ(rows, (std::vector<Row>{{1.0, 2.0}}));
}

// A cell format of a number format: the font, the format, and what does not matter here.
void AddCellFormat(StreamBuilder& stream, uint16_t numberFormat) {
  stream.Add(Id::Xf, uint16_t{0}, numberFormat, uint64_t{0}, uint64_t{0});
}

template <typename Number>
Row DatesOf(uint16_t is1904, Number first, Number second) {
  StreamBuilder stream = Globals();
  stream.Add(Id::Date1904, is1904);
  AddCellFormat(stream, 14);
  AddCellFormat(stream, 170);
  stream.Add(Id::Format, uint16_t{170}, std::string_view(EncodedText("hh:mm").Whole<uint16_t>()));
  const auto rows = RowsOf(std::move(stream), [&](StreamBuilder& sheet) {
    sheet.Add(Id::Number, uint16_t{0}, uint16_t{0}, uint16_t{0}, first);
    sheet.Add(Id::Number, uint16_t{0}, uint16_t{1}, uint16_t{1}, second);
    sheet.Add(Id::Number, uint16_t{0}, uint16_t{2}, uint16_t{99}, first);  // a format that is not there
  });
  return rows.at(0);
}

TEST(ForeignWorkbook, NumbersWithTheFormatOfADateAreDates) {
  EXPECT_EQ(DatesOf(0, 46387.0, 0.5), (Row{At(2026, 12, 31), DateTime::FromSeconds(43200), 46387.0}));
  EXPECT_EQ(DatesOf(0, 60.0, -1.0), (Row{60.0, -1.0, 60.0}));  // no days: the values stay
}

TEST(ForeignWorkbook, DatesMayCountFrom1904) {
  EXPECT_EQ(DatesOf(1, 44925.0, 0.5), (Row{At(2026, 12, 31), DateTime::FromSeconds(43200), 44925.0}));
  EXPECT_EQ(DatesOf(1, 0.0, 1.5), (Row{At(1904, 1, 1), At(1904, 1, 2, 12), 0.0}));
}

TEST(ForeignWorkbook, WorkbooksOfExcel95AreRead) {
  StreamBuilder stream;
  stream.Start(biff::SubstreamGlobals, biff::VersionBiff5).Add(Id::CodePage, uint16_t{1252});
  stream.Add(Id::Format, uint16_t{164}, uint8_t{10}, std::string_view("dd.mm.yyyy"));
  AddCellFormat(stream, 164);
  const std::size_t place = stream.Stream().size() + biff::RecordHeaderSize;
  stream.Add(Id::BoundSheet, uint32_t{0}, uint16_t{0}, uint8_t{5}, std::string_view("Bl\xE4tt")).End();
  PutLittle(stream.Stream(), place, static_cast<uint32_t>(stream.Stream().size()));
  stream.Start(biff::SubstreamSheet, biff::VersionBiff5);
  stream.Add(Id::Label, uint16_t{0}, uint16_t{0}, uint16_t{9}, uint16_t{4}, std::string_view("\x80 \xFC!"));
  stream.Add(Id::Number, uint16_t{0}, uint16_t{1}, uint16_t{0}, 46387.0);
  AddFormula(stream, {0, 2}, NoNumber).Add(Id::String, uint16_t{2}, std::string_view("\xDF?")).End();
  const Workbook workbook = Parsed(stream.File());
  ASSERT_EQ(workbook.Sheets.size(), 1U);
  EXPECT_EQ(workbook.Sheets[0].Name, "Blätt");
  EXPECT_EQ(workbook.Sheets[0].Rows, (std::vector<Row>{{Text("€ ü!"), At(2026, 12, 31), Text("ß?")}}));
}

TEST(ForeignWorkbook, ChartAndMacroSheetsAreLeftOut) {
  constexpr uint8_t chartSheet = 2;
  StreamBuilder stream = Globals();
  stream.Add(Id::BoundSheet, uint32_t{0}, biff::SheetVisible, chartSheet,
             std::string_view(EncodedText("Diagramm").Whole<uint8_t>()));
  const auto rows = RowsOf(std::move(stream), [](StreamBuilder& sheet) {
    sheet.Add(Id::Number, uint16_t{0}, uint16_t{0}, Formatless, 1.0);
  });
  EXPECT_EQ(rows, (std::vector<Row>{{1.0}}));
}

}  // namespace
}  // namespace velmora::tables
