// The cells of a sheet out of the record stream.
#pragma once

#include <cstddef>
#include <string_view>

#include "base/result.h"
#include "tables/globals_reading.h"
#include "tables/workbook.h"

namespace velmora::tables {

// What all sheets of a workbook may take together.
struct ReadingBudget {
  std::size_t Cells = MaxCells;  // places in rows, and one for each row
  std::size_t TextBytes = MaxTextBytes;
  std::size_t StreamBytes = 0;  // sheets that share their records would read them again and again
};

// The sheet of the entry, without trailing empty rows. NotAWorkbook when it is damaged or too big.
Result<Sheet> ReadSheet(std::string_view stream, const Globals& globals, const SheetEntry& entry,
                        ReadingBudget& budget);

}  // namespace velmora::tables
