#include "tables/sheet_writing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string_view>

#include "base/text.h"
#include "tables/cell_text.h"
#include "tables/record_writing.h"
#include "tables/serial_date.h"

namespace velmora::tables {
namespace {

using biff::Id;

constexpr std::size_t RowsPerBlock = 32;  // row records stand ahead of the cells of their block (2.1.7.20.5)
constexpr std::uint16_t DefaultHeight = 255;    // twentieths of a point
constexpr std::uint32_t RowFlags = 0x000F0100;  // a bit that is always set, and the format General (2.4.221)
constexpr std::size_t RowsMeasured = 1000, NarrowestColumn = 8, WidestColumn = 50, Margin = 2;
constexpr std::uint16_t WidthUnit = 256;  // widths count 1/256 of a digit (2.4.53 ColInfo)

constexpr std::uint16_t IndexOf(CellFormat format) { return static_cast<std::uint16_t>(format); }

std::size_t ColumnCount(const Sheet& sheet) {
  std::size_t count = 0;
  for (const Row& row : sheet.Rows) count = std::max(count, row.size());
  return count;
}

// A4, upright, in its own size (2.4.257 Setup), without header and footer.
void AppendPageSetup(std::string& stream) {
  constexpr std::uint16_t a4 = 9, percent = 100, dotsPerInch = 600, upright = 0x0002, one = 1;
  constexpr double margin = 0.5;
  AppendRecord(stream, Id::Header);
  AppendRecord(stream, Id::Footer);
  AppendRecord(stream, Id::HCenter, std::uint16_t{0});
  AppendRecord(stream, Id::VCenter, std::uint16_t{0});
  AppendRecord(stream, Id::Setup, a4, percent, one, one, one, upright, dotsPerInch, dotsPerInch, margin,
               margin, one);
}

// How the sheet calculates and prints, all as Excel has it by default (2.1.7.20.5).
void AppendSettings(std::string& stream) {
  constexpr double maxChange = 0.001;
  AppendRecord(stream, Id::CalcMode, std::uint16_t{1});
  AppendRecord(stream, Id::CalcCount, std::uint16_t{100});
  AppendRecord(stream, Id::CalcRefMode, std::uint16_t{1});
  AppendRecord(stream, Id::CalcIter, std::uint16_t{0});
  AppendRecord(stream, Id::CalcDelta, maxChange);
  AppendRecord(stream, Id::CalcSaveRecalc, std::uint16_t{1});
  AppendRecord(stream, Id::PrintRowCol, std::uint16_t{0});
  AppendRecord(stream, Id::PrintGrid, std::uint16_t{0});
  AppendRecord(stream, Id::GridSet, std::uint16_t{1});
  AppendRecord(stream, Id::Guts, std::uint64_t{0});
  AppendRecord(stream, Id::DefaultRowHeight, std::uint16_t{0}, DefaultHeight);
  AppendRecord(stream, Id::WsBool, std::uint16_t{0x04C1});
  AppendPageSetup(stream);
  AppendRecord(stream, Id::DefColWidth, std::uint16_t{8});
}

std::size_t LongestLine(std::string_view text) {
  std::size_t longest = 0;
  for (std::size_t at = 0; at <= text.size() && longest < WidestColumn;) {
    const std::string_view line = text.substr(at, text.find('\n', at) - at);
    longest = std::max(longest, CountCharacters(line));
    at += line.size() + 1;
  }
  return longest;
}

void AppendColumnWidths(std::string& stream, const Sheet& sheet, std::size_t columns) {
  std::array<std::size_t, MaxColumns> widths{};
  for (const Row& row : std::span(sheet.Rows).first(std::min(sheet.Rows.size(), RowsMeasured))) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      const auto* text = std::get_if<std::string>(&row[column]);
      const std::size_t length = text != nullptr ? LongestLine(*text) : ShowCell(row[column]).size();
      widths[column] = std::max(widths[column], length);
    }
  }
  for (std::size_t column = 0; column < columns; ++column) {
    const std::size_t width = std::clamp(widths[column] + Margin, NarrowestColumn, WidestColumn);
    const auto number = static_cast<std::uint16_t>(column);
    AppendRecord(stream, Id::ColInfo, number, number, static_cast<std::uint16_t>(width * WidthUnit),
                 IndexOf(CellFormat::General), std::uint16_t{0}, std::uint16_t{0});
  }
}

// Appends single cells, each by its type.
class CellWriter {
 public:
  CellWriter(std::string& stream, SharedStrings& strings) : stream_(stream), strings_(strings) {}

  void MoveTo(std::size_t row, std::size_t column, bool isHeader) {
    row_ = static_cast<std::uint16_t>(row);
    column_ = static_cast<std::uint16_t>(column);
    format_ = IndexOf(isHeader ? CellFormat::Header : CellFormat::General);
  }

  void operator()(std::monostate) const {}
  void operator()(bool value) const {
    AppendRecord(stream_, Id::BoolErr, row_, column_, format_, std::uint8_t{value}, std::uint8_t{0});
  }
  void operator()(const std::string& text) const {
    if (!text.empty()) AppendText(strings_.IndexOf(text));
  }
  // What is no number for Excel is shown as it shows it.
  void operator()(double number) const {
    if (std::isfinite(number)) {
      AppendRecord(stream_, Id::Number, row_, column_, format_, number);
    } else {
      AppendText(strings_.IndexOf("#NUM!"));
    }
  }
  // A day that Excel cannot count is a text.
  void operator()(DateTime date) const {
    const std::optional<double> serial = ToSerial(date);
    if (!serial) return AppendText(strings_.IndexOfCopy(ShowCell(date)));
    const CellFormat format = *serial < 1                      ? CellFormat::Time
                              : *serial == std::trunc(*serial) ? CellFormat::Date
                                                               : CellFormat::DateAndTime;
    AppendRecord(stream_, Id::Number, row_, column_, IndexOf(format), *serial);
  }

 private:
  void AppendText(std::uint32_t index) const {
    AppendRecord(stream_, Id::LabelSst, row_, column_, format_, index);
  }

  std::string& stream_;
  SharedStrings& strings_;
  std::uint16_t row_ = 0, column_ = 0, format_ = 0;
};

void AppendCells(std::string& stream, const Sheet& sheet, SharedStrings& strings) {
  CellWriter cells(stream, strings);
  for (std::size_t block = 0; block < sheet.Rows.size(); block += RowsPerBlock) {
    const std::size_t end = std::min(block + RowsPerBlock, sheet.Rows.size());
    for (std::size_t row = block; row < end; ++row) {
      if (sheet.Rows[row].empty()) continue;
      AppendRecord(stream, Id::Row, static_cast<std::uint16_t>(row), std::uint16_t{0},
                   static_cast<std::uint16_t>(sheet.Rows[row].size()), DefaultHeight, std::uint32_t{0},
                   RowFlags);
    }
    for (std::size_t row = block; row < end; ++row) {
      for (std::size_t column = 0; column < sheet.Rows[row].size(); ++column) {
        cells.MoveTo(row, column, row < sheet.HeaderRows);
        std::visit(cells, sheet.Rows[row][column]);
      }
    }
  }
}

void AppendView(std::string& stream, const Sheet& sheet, bool isShown) {
  constexpr std::uint8_t topLeft = 3, bottomLeft = 2;
  constexpr std::uint16_t headerColor = 0x40;  // the system's (2.5.161 Icv)
  const bool isFrozen = sheet.HeaderRows > 0 && sheet.HeaderRows < MaxRows;
  unsigned flags = biff::WindowGrid | biff::WindowHeadings | biff::WindowZeros | biff::WindowDefaultColor |
                   biff::WindowGuts;
  if (isShown) flags |= unsigned{biff::WindowSelected} | biff::WindowActive;
  if (isFrozen) flags |= unsigned{biff::WindowFrozen} | biff::WindowFrozenNoSplit;
  AppendRecord(stream, Id::Window2, static_cast<std::uint16_t>(flags), std::uint16_t{0}, std::uint16_t{0},
               headerColor, std::uint16_t{0}, std::uint16_t{0}, std::uint16_t{0}, std::uint32_t{0});
  const auto select = [&stream](std::uint8_t pane, std::uint16_t row) {
    AppendRecord(stream, Id::Selection, pane, row, std::uint16_t{0}, std::uint16_t{0}, std::uint16_t{1}, row,
                 row, std::uint16_t{0});
  };
  if (isFrozen) {
    const auto rows = static_cast<std::uint16_t>(sheet.HeaderRows);
    AppendRecord(stream, Id::Pane, std::uint16_t{0}, rows, rows, std::uint16_t{0}, bottomLeft,
                 std::uint8_t{0});
    select(bottomLeft, rows);
  } else {
    select(topLeft, 0);
  }
}

}  // namespace

void AppendSheet(std::string& stream, const Sheet& sheet, bool isShown, SharedStrings& strings) {
  const std::size_t columns = ColumnCount(sheet);
  AppendRecord(stream, Id::Bof, biff::VersionBiff8, biff::SubstreamSheet, biff::BuildOfExcel97,
               biff::YearOfExcel97, biff::BofFlags, biff::LowestVersion);
  AppendSettings(stream);
  AppendColumnWidths(stream, sheet, columns);
  AppendRecord(stream, Id::Dimensions, std::uint32_t{0}, static_cast<std::uint32_t>(sheet.Rows.size()),
               std::uint16_t{0}, static_cast<std::uint16_t>(columns), std::uint16_t{0});
  AppendCells(stream, sheet, strings);
  AppendView(stream, sheet, isShown);
  AppendRecord(stream, Id::Eof);
}

}  // namespace velmora::tables
