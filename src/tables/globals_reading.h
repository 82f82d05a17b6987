// What the record stream of a workbook says ahead of its sheets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "tables/record_reading.h"
#include "tables/serial_date.h"

namespace velmora::tables {

struct SheetEntry {
  std::string Name;
  std::size_t Start = 0;  // in the stream
  bool IsWorksheet = false, IsHidden = false;
};

struct Globals {
  TextForm Texts = TextForm::Biff8;
  bool Is1904 = false;                // dates count from 1904
  std::vector<DateKind> CellFormats;  // by the index that cells name
  std::vector<std::string> Strings;   // the shared string table
  std::vector<SheetEntry> Sheets;
  std::size_t End = 0;  // where the first substream ends
};

// NotAWorkbook when the stream is damaged, encrypted, too big or older than Excel 5.
Result<Globals> ReadGlobals(std::string_view stream);

}  // namespace velmora::tables
