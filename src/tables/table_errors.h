// The errors of a file that cannot be read as a workbook.
#pragma once

#include "base/result.h"
#include "tables/workbook.h"

namespace velmora::tables {

inline tl::unexpected<Error> FailDamaged() {
  return Fail(table_error::NotAWorkbook, "Die Datei ist keine Excel-Arbeitsmappe oder beschädigt");
}
inline tl::unexpected<Error> FailTooBig() {
  return Fail(table_error::NotAWorkbook, "Die Arbeitsmappe ist zu groß");
}

}  // namespace velmora::tables
