// A sheet of a workbook as a table: its first row names the columns, each further row is a record. Records
// gather in memory and reach the file with Save: a run adds as many as it likes and the file is written once.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/result.h"
#include "platform/file_system.h"
#include "tables/workbook.h"

namespace velmora::tables {

class SheetTable {
 public:
  SheetTable(platform::FileSystem& fileSystem, std::string path, Workbook workbook, std::size_t sheet);

  const std::vector<std::string>& Columns() const { return columns_; }
  std::size_t RowCount() const;  // without the header
  // The texts of a record in the order of Columns: numbers and dates as a person would read them in German.
  std::vector<std::string> ReadRow(std::size_t index) const;

  // A record behind the last one that holds a value: for each name its text; a column without a name here
  // stays empty. Names are found without regard to case, the first of equal ones. Texts go in as MakeCellText
  // has them; an overlong one is cut, and the answer is how many were. ColumnMissing; SheetFull.
  Result<int> AddRow(const std::vector<std::string_view>& columns, const std::vector<std::string>& values);
  // Replaces the file atomically when records were added; the old file stands untouched on a failure, and
  // Save may be tried again. FileNotFound when the file has vanished, AccessDenied when another program has
  // written it since it was opened here: its changes would be lost.
  Status Save();

 private:
  Sheet& Target() { return workbook_.Sheets[sheet_]; }
  const Sheet& Target() const { return workbook_.Sheets[sheet_]; }
  std::size_t FindColumn(std::string_view name, std::size_t expected) const;
  Status CheckUnchanged() const;

  platform::FileSystem& fileSystem_;
  std::string path_;
  Workbook workbook_;
  std::size_t sheet_;
  std::vector<std::string> columns_;
  std::unordered_map<std::string, std::size_t> columnOf_;  // by the folded name
  std::optional<platform::FileEntry> opened_;              // the file as it was read or written last
  bool isChanged_ = false;
};

// The position of a sheet in its workbook; its name is found without regard to case. SheetMissing.
Result<std::size_t> FindSheet(const Workbook& workbook, std::string_view sheet);
// Opens a sheet for reading and adding; its name is found without regard to case. The file errors,
// NotAWorkbook, SheetMissing.
Result<SheetTable> OpenAddressSheet(platform::FileSystem& fileSystem, std::string_view path,
                                    std::string_view sheet);
// A workbook with one empty sheet of these columns; an existing file is replaced. BadSheetName, SheetFull.
Status CreateSheetWorkbook(platform::FileSystem& fileSystem, std::string_view path, std::string_view sheet,
                           const std::vector<std::string_view>& columns);

}  // namespace velmora::tables
