#include "tables/sheet_table.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "tables/cell_text.h"

namespace velmora::tables {
namespace {

constexpr std::size_t NoColumn = MaxColumns;

bool IsEmptyRow(const Row& row) { return std::ranges::none_of(row, HoldsValue); }

}  // namespace

SheetTable::SheetTable(platform::FileSystem& fileSystem, std::string path, Workbook workbook,
                       std::size_t sheet)
    : fileSystem_(fileSystem), path_(std::move(path)), workbook_(std::move(workbook)), sheet_(sheet) {
  std::vector<Row>& rows = Target().Rows;
  while (!rows.empty() && IsEmptyRow(rows.back())) rows.pop_back();
  if (!rows.empty()) std::ranges::transform(rows.front(), std::back_inserter(columns_), ShowCell);
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (!columns_[column].empty()) columnOf_.try_emplace(FoldCase(columns_[column]), column);
  }
  if (const auto entry = fileSystem_.GetEntry(path_)) opened_ = *entry;
}

std::size_t SheetTable::RowCount() const { return std::max<std::size_t>(Target().Rows.size(), 1) - 1; }

std::vector<std::string> SheetTable::ReadRow(std::size_t index) const {
  const Row& row = Target().Rows[index + 1];
  std::vector<std::string> texts(columns_.size());
  std::ranges::transform(row.begin(),
                         row.begin() + static_cast<std::ptrdiff_t>(std::min(row.size(), texts.size())),
                         texts.begin(), ShowCell);
  return texts;
}

// Records mostly name the columns in their order, which spares the search.
std::size_t SheetTable::FindColumn(std::string_view name, std::size_t expected) const {
  if (expected < columns_.size() && columns_[expected] == name && !name.empty()) return expected;
  const auto found = columnOf_.find(FoldCase(name));
  return found == columnOf_.end() ? NoColumn : found->second;
}

Result<int> SheetTable::AddRow(const std::vector<std::string_view>& columns,
                               const std::vector<std::string>& values) {
  if (Target().Rows.size() >= MaxRows) {
    return Fail(table_error::SheetFull, "Das Tabellenblatt ist voll: " + Target().Name);
  }
  Row row(columns_.size());
  int cut = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const std::size_t column = FindColumn(columns[i], i);
    if (column == NoColumn) {
      return Fail(table_error::ColumnMissing,
                  "Das Tabellenblatt " + Target().Name + " hat keine Spalte " + std::string(columns[i]));
    }
    if (i >= values.size() || values[i].empty()) continue;
    CellText text = MakeCellText(values[i]);
    cut += text.IsCut ? 1 : 0;
    row[column] = std::move(text.Text);
  }
  Target().Rows.push_back(std::move(row));
  isChanged_ = true;
  return cut;
}

Status SheetTable::CheckUnchanged() const {
  const Result<platform::FileEntry> now = fileSystem_.GetEntry(path_);
  if (!now) return Fail(now.error());
  const bool isSame = opened_ && now->Size == opened_->Size && now->Modified == opened_->Modified;
  if (isSame) return {};
  return Fail(platform::file_error::AccessDenied, "Die Arbeitsmappe wurde inzwischen geändert: " + path_);
}

Status SheetTable::Save() {
  if (!isChanged_) return {};
  if (Status unchanged = CheckUnchanged(); !unchanged) return unchanged;
  if (Status written = WriteWorkbook(fileSystem_, path_, workbook_); !written) return written;
  opened_.reset();
  if (const auto entry = fileSystem_.GetEntry(path_)) opened_ = *entry;
  isChanged_ = false;
  return {};
}

Result<std::size_t> FindSheet(const Workbook& workbook, std::string_view sheet) {
  const auto found = std::ranges::find_if(
      workbook.Sheets, [sheet](const Sheet& candidate) { return EqualsFold(candidate.Name, sheet); });
  if (found == workbook.Sheets.end()) {
    return Fail(table_error::SheetMissing, "Die Arbeitsmappe hat kein Tabellenblatt " + std::string(sheet));
  }
  return static_cast<std::size_t>(found - workbook.Sheets.begin());
}

Result<SheetTable> OpenAddressSheet(platform::FileSystem& fileSystem, std::string_view path,
                                    std::string_view sheet) {
  Result<Workbook> workbook = ReadWorkbook(fileSystem, path);
  if (!workbook) return Fail(workbook.error());
  const Result<std::size_t> index = FindSheet(*workbook, sheet);
  if (!index) return Fail(index.error());
  return SheetTable(fileSystem, std::string(path), std::move(*workbook), *index);
}

Status CreateSheetWorkbook(platform::FileSystem& fileSystem, std::string_view path, std::string_view sheet,
                           const std::vector<std::string_view>& columns) {
  Row header;
  for (const std::string_view column : columns) header.emplace_back(MakeCellText(column).Text);
  return WriteWorkbook(fileSystem, path, Workbook{{Sheet{std::string(sheet), {std::move(header)}, 1}}});
}

}  // namespace velmora::tables
