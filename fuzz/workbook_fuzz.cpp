// Workbooks from anywhere, as files and as the record streams within.
#include <cstdint>
#include <cstdlib>

#include "base/text.h"
#include "require.h"
#include "single_file.h"
#include "tables/cell_text.h"
#include "tables/compound_file.h"
#include "tables/workbook.h"

namespace {

using velmora::tables::Workbook;

using velmora::fuzz::Require;

// What was read lies within the bounds, and comes back from a workbook that is written of it.
void RequireSound(const Workbook& workbook) {
  for (const auto& sheet : workbook.Sheets) {
    Require(sheet.Rows.size() <= velmora::tables::MaxRows && velmora::IsValidUtf8(sheet.Name));
    for (const auto& row : sheet.Rows) {
      Require(row.size() <= velmora::tables::MaxColumns);
      for (const auto& cell : row) Require(velmora::IsValidUtf8(velmora::tables::ShowCell(cell)));
    }
  }
  const auto written = velmora::tables::FormatWorkbook(workbook);
  if (!written) return;  // a name that Excel does not take, or too long a text
  const auto again = velmora::tables::ParseWorkbook(*written);
  Require(again && again->Sheets.size() == workbook.Sheets.size());
  for (std::size_t i = 0; i < workbook.Sheets.size(); ++i) {
    Require(again->Sheets[i].Rows == workbook.Sheets[i].Rows);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  static const auto host = velmora::platform::MakeHostFileSystem({});
  velmora::fuzz::SingleFile file(*host, bytes);
  if (const auto workbook = velmora::tables::ReadWorkbook(file, "Z:\\a.xls")) RequireSound(*workbook);
  const auto container = velmora::tables::MakeCompoundFile(bytes);
  Require(container.has_value());
  if (const auto workbook = velmora::tables::ParseWorkbook(*container)) RequireSound(*workbook);
  return 0;
}
