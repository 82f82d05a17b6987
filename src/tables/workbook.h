// Workbooks of Excel 97 to 2003 (.xls, BIFF8, [MS-XLS]) as values: what a workbook holds is read whole,
// changed in memory and written anew. Kept are the sheets, their names and order, and the values of all
// cells; dates stay dates. Formulas become their values; formatting, charts and macros are not kept.
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

using Cell = std::variant<std::monostate, double, bool, std::string, DateTime>;
using Row = std::vector<Cell>;  // a shorter row ends in empty cells

struct Sheet {
  std::string Name;
  std::vector<Row> Rows;
  std::size_t HeaderRows = 0;  // rows at the top that are shown bold and stay in view
};

struct Workbook {
  std::vector<Sheet> Sheets;
};

// FileNotFound and the other file errors; a file that is no such workbook, is damaged or encrypted gives
// table_error::NotAWorkbook with a German text.
Result<Workbook> ReadWorkbook(platform::FileSystem& fileSystem, std::string_view path);
// Replaces the file atomically: the old one stands untouched until the new one is whole.
Status WriteWorkbook(platform::FileSystem& fileSystem, std::string_view path, const Workbook& workbook);

namespace table_error {
inline constexpr int NotAWorkbook = 3274;  // as database drivers number an unexpected format of a file
inline constexpr int SheetMissing = 3011;  // the sheet is not in the workbook
inline constexpr int ColumnMissing = 3265;
inline constexpr int SheetFull = 3434;
}  // namespace table_error

}  // namespace velmora::tables
