// One sheet of a workbook as its part of the record stream.
#pragma once

#include <cstdint>
#include <string>

#include "tables/shared_strings.h"
#include "tables/workbook.h"

namespace velmora::tables {

// The cell formats that the workbook's globals list, in their order: the first one of cells stands behind 15
// formats of styles, as Excel has them (2.4.353 XF).
enum class CellFormat : std::uint16_t { General = 15, Header, DateAndTime, Date, Time };

// Appends the sheet from its BOF to its EOF and adds its texts to `strings`, which refers to them: the sheet
// must outlive it. The sheet lies within the bounds. `isShown`: it is the one that a viewer opens with.
void AppendSheet(std::string& stream, const Sheet& sheet, bool isShown, SharedStrings& strings);

}  // namespace velmora::tables
