#include <memory>

#include "tables/compound_file.h"
#include "tables/sheet_reading.h"
#include "tables/table_errors.h"
#include "tables/workbook.h"

namespace velmora::tables {
namespace {

Result<std::string> ReadWhole(platform::FileSystem& fileSystem, std::string_view path) {
  const Result<std::unique_ptr<platform::FileReader>> reader = fileSystem.OpenReader(path);
  if (!reader) return Fail(reader.error());
  const Result<std::int64_t> size = (*reader)->Size();
  if (!size) return Fail(size.error());
  if (*size > static_cast<std::int64_t>(MaxFileSize)) return FailTooBig();
  std::string bytes;
  for (;;) {
    const Result<std::string> part = (*reader)->Read(MaxFileSize + 1 - bytes.size());
    if (!part) return Fail(part.error());
    if (part->empty()) return bytes;
    bytes += *part;
    if (bytes.size() > MaxFileSize) return FailTooBig();  // it grows while it is read
  }
}

}  // namespace

Result<Workbook> ParseWorkbook(std::string_view file) {
  // A workbook saved for Excel 95 and 97 alike has both streams.
  const Result<std::string> stream = ReadCompoundStream(file, "Workbook", "Book");
  if (!stream) return Fail(stream.error());
  const Result<Globals> globals = ReadGlobals(*stream);
  if (!globals) return Fail(globals.error());
  ReadingBudget budget;
  budget.StreamBytes = stream->size();
  Workbook workbook;
  for (const SheetEntry& entry : globals->Sheets) {
    if (!entry.IsWorksheet) continue;
    Result<Sheet> sheet = ReadSheet(*stream, *globals, entry, budget);
    if (!sheet) return Fail(sheet.error());
    workbook.Sheets.push_back(std::move(*sheet));
  }
  return workbook;
}

Result<Workbook> ReadWorkbook(platform::FileSystem& fileSystem, std::string_view path) {
  const Result<std::string> bytes = ReadWhole(fileSystem, path);
  if (!bytes) return Fail(bytes.error());
  return ParseWorkbook(*bytes);
}

}  // namespace velmora::tables
