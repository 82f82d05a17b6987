// The text of cells: as it goes in, and as a person reads it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tables/workbook.h"

namespace velmora::tables {

// A text as a cell may show it: CR LF and a lone CR become LF, tabs stay, other control characters become
// blanks, and invalid bytes U+FFFD. A text that begins with "=" stays a text; a cell of text is no formula.
struct CellText {
  std::string Text;
  bool IsCut = false;  // to MaxCellText; a surrogate pair is never split
};
CellText MakeCellText(std::string_view text);

// A cell in German form: "1234,5", "WAHR", "31.12.2026 23:59:00", a date without a time, a time without a
// day. Numbers have at most 15 digits that count, as Excel shows them.
std::string ShowCell(const Cell& cell);
// An empty text is no value.
bool HoldsValue(const Cell& cell);

}  // namespace velmora::tables
