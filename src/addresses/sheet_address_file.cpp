#include "addresses/sheet_address_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"

namespace velmora::addresses {
namespace {

class SheetAddressFile final : public AddressFile {
 public:
  explicit SheetAddressFile(tables::SheetTable table) : table_(std::move(table)) {}

  Status Add(const AddressRecord& address) override {
    static const std::vector<std::string_view> columns(ColumnNames.begin(), ColumnNames.end());
    const std::vector<std::string> values(address.Fields.begin(), address.Fields.end());
    const auto cut = table_.AddRow(columns, values);
    if (!cut) return Fail(cut.error());
    if (*cut > 0) ++altered_;
    ++unwritten_;
    return {};
  }

  Status Flush() override {
    Status saved = table_.Save();
    if (saved) unwritten_ = 0;
    return saved;
  }

  std::int64_t Unwritten() const override { return unwritten_; }
  std::string Losses() const override {
    if (altered_ == 0) return "";
    return fmt::format("{} Adresse(n) gekürzt: eine Zelle faßt {} Zeichen", altered_, tables::MaxCellText);
  }

 private:
  tables::SheetTable table_;
  std::int64_t unwritten_ = 0, altered_ = 0;
};

OpenedAddressFile Opened(tables::SheetTable table, Status note = {}) {
  return {std::make_unique<SheetAddressFile>(std::move(table)), std::move(note)};
}

// The template's workbook, to be saved at `path`: a copy that no attribute of the template can spoil, and
// before which what stands at the path stays.
Result<tables::SheetTable> FromTemplate(platform::FileSystem& fileSystem, std::string_view path,
                                        std::string_view workbookTemplate) {
  auto workbook = tables::ReadWorkbook(fileSystem, workbookTemplate);
  if (!workbook) return Fail(workbook.error());
  const auto& sheets = workbook->Sheets;
  const auto sheet = std::ranges::find_if(
      sheets, [](const tables::Sheet& candidate) { return EqualsFold(candidate.Name, AddressSheet); });
  if (sheet == sheets.end()) {
    return Fail(tables::table_error::SheetMissing,
                "Der Vorlage fehlt das Blatt " + std::string(AddressSheet));
  }
  const auto index = static_cast<std::size_t>(sheet - sheets.begin());
  tables::SheetTable table(fileSystem, std::string(path), std::move(*workbook), index);
  const bool hasColumns = std::ranges::all_of(ColumnNames, [&](std::string_view name) {
    return std::ranges::any_of(table.Columns(),
                               [&](const std::string& column) { return EqualsFold(column, name); });
  });
  if (!hasColumns) return Fail(tables::table_error::ColumnMissing, "Der Vorlage fehlen Spalten");
  return table;
}

tl::unexpected<Error> AccessDenied() {
  return Fail(platform::file_error::AccessDenied,
              platform::FileErrorText(platform::file_error::AccessDenied));
}

}  // namespace

tables::SheetTable CreateAddressWorkbook(platform::FileSystem& fileSystem, std::string_view path) {
  tables::Row header(ColumnNames.size());
  std::ranges::transform(ColumnNames, header.begin(),
                         [](std::string_view name) { return tables::Cell(std::string(name)); });
  tables::Workbook workbook;
  workbook.Sheets.push_back({std::string(AddressSheet), {std::move(header)}, 1});
  return {fileSystem, std::string(path), std::move(workbook), 0};
}

Result<OpenedAddressFile> OpenSheetAddressFile(platform::FileSystem& fileSystem, std::string_view path,
                                               bool overwrite, std::string_view workbookTemplate) {
  const auto existing = fileSystem.GetEntry(path);
  if (!existing && existing.error().Number != platform::file_error::FileNotFound) {
    return Fail(existing.error());
  }
  if (existing && (existing->IsFolder || existing->ReadOnly)) return AccessDenied();
  if (existing && !overwrite) {
    auto table = tables::OpenAddressSheet(fileSystem, path, AddressSheet);
    if (!table) return Fail(table.error());
    return Opened(std::move(*table));
  }
  if (workbookTemplate.empty()) return Opened(CreateAddressWorkbook(fileSystem, path));
  auto table = FromTemplate(fileSystem, path, workbookTemplate);
  if (table) return Opened(std::move(*table));
  return Opened(CreateAddressWorkbook(fileSystem, path), Fail(table.error()));
}

}  // namespace velmora::addresses
