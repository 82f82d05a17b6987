// Workbooks of Excel 97 to 2003 (.xls, BIFF8, [MS-XLS]) as values: what a workbook holds is read whole,
// changed in memory and written anew. Kept are the sheets, their names, order and visibility, the rows that
// stay in view, and the values of all cells; dates stay dates, to the second. Formulas become their values
// and errors texts ("#DIV/0!"); formatting, charts and macros are not kept. Workbooks of Excel 5 and 95
// (BIFF5) are read, too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::tables {

// The bounds of a BIFF8 sheet.
inline constexpr std::size_t MaxRows = 65536, MaxColumns = 256;
// The longest text of a cell, in UTF-16 units.
inline constexpr std::size_t MaxCellText = 32767;
// Bounds of our own, for reading and writing alike, so that a hostile file cannot ask for more memory than a
// machine has: cells of all sheets (a row counts up to its last one), bytes of their texts, bytes of the
// file.
inline constexpr std::size_t MaxSheets = 4096, MaxCells = 8'000'000;
inline constexpr std::size_t MaxTextBytes = std::size_t{256} << 20, MaxFileSize = std::size_t{512} << 20;

using Cell = std::variant<std::monostate, double, bool, std::string, DateTime>;
using Row = std::vector<Cell>;  // a shorter row ends in empty cells

struct Sheet {
  std::string Name;
  std::vector<Row> Rows;
  std::size_t HeaderRows = 0;  // rows at the top that are shown bold and stay in view
  bool IsHidden = false;       // a workbook whose sheets are all hidden is written with its first one shown
};

struct Workbook {
  std::vector<Sheet> Sheets;
};

// FileNotFound and the other file errors; a file that is no such workbook, is damaged or encrypted gives
// table_error::NotAWorkbook with a German text.
Result<Workbook> ReadWorkbook(platform::FileSystem& fileSystem, std::string_view path);
// Replaces the file atomically: the old one stands untouched until the new one is whole. Besides the file
// errors: SheetMissing when there is no sheet, BadSheetName (a name has 1 to 31 UTF-16 units without
// []:*?/\ and control characters, no apostrophe at either end, and stands once), SheetFull beyond the
// bounds, TextTooLong.
Status WriteWorkbook(platform::FileSystem& fileSystem, std::string_view path, const Workbook& workbook);

// The same without a file: what ReadWorkbook reads from one, and WriteWorkbook writes into one.
Result<Workbook> ParseWorkbook(std::string_view file);
Result<std::string> FormatWorkbook(const Workbook& workbook);

namespace table_error {
inline constexpr int NotAWorkbook = 3274;  // as database drivers number an unexpected format of a file
inline constexpr int SheetMissing = 3011;  // the sheet is not in the workbook
inline constexpr int ColumnMissing = 3265;
inline constexpr int SheetFull = 3434;
inline constexpr int BadSheetName = 3125;
inline constexpr int TextTooLong = 3163;
}  // namespace table_error

}  // namespace velmora::tables
