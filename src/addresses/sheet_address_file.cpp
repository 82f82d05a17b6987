#include "addresses/sheet_address_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"
#include "tables/cell_text.h"
#include "tables/sheet_table.h"

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

// A workbook and its sheet of addresses.
struct AddressBook {
  tables::Workbook Workbook;
  std::size_t Sheet = 0;
};

// The empty sheet alone.
AddressBook CreateAddressWorkbook() {
  tables::Row header(ColumnNames.size());
  std::ranges::transform(ColumnNames, header.begin(),
                         [](std::string_view name) { return tables::Cell(std::string(name)); });
  AddressBook book;
  book.Workbook.Sheets.push_back({std::string(AddressSheet), {std::move(header)}, 1});
  return book;
}

Result<AddressBook> ReadTemplate(platform::FileSystem& fileSystem, std::string_view path) {
  auto workbook = tables::ReadWorkbook(fileSystem, path);
  if (!workbook) return Fail(workbook.error());
  const auto sheet = tables::FindSheet(*workbook, AddressSheet);
  if (!sheet) return Fail(sheet.error());
  const std::vector<tables::Row>& rows = workbook->Sheets[*sheet].Rows;
  const auto isColumn = [&](std::string_view name) {
    return std::ranges::any_of(
        rows.front(), [&](const tables::Cell& cell) { return EqualsFold(tables::ShowCell(cell), name); });
  };
  if (rows.empty() || !std::ranges::all_of(ColumnNames, isColumn)) {
    return Fail(tables::table_error::ColumnMissing, "Der Vorlage fehlen Spalten");
  }
  return AddressBook{std::move(*workbook), *sheet};
}

OpenedAddressFile Opened(tables::SheetTable table, Status note) {
  return {std::make_unique<SheetAddressFile>(std::move(table)), std::move(note)};
}

}  // namespace

Result<OpenedAddressFile> OpenSheetAddressFile(platform::FileSystem& fileSystem, std::string_view path,
                                               bool overwrite, std::string_view workbookTemplate) {
  const auto existing = fileSystem.GetEntry(path);
  if (!existing && existing.error().Number != platform::file_error::FileNotFound) {
    return Fail(existing.error());
  }
  if (existing && (existing->IsFolder || existing->ReadOnly)) {
    return Fail(platform::file_error::AccessDenied,
                platform::FileErrorText(platform::file_error::AccessDenied));
  }
  if (existing && !overwrite) {
    auto table = tables::OpenAddressSheet(fileSystem, path, AddressSheet);
    if (!table) return Fail(table.error());
    return Opened(std::move(*table), {});
  }
  // The copy of a template is its workbook and not its file: no attribute of the template can spoil it, and
  // what is to be overwritten stays until the new workbook is whole.
  AddressBook book = CreateAddressWorkbook();
  Status note;
  if (!workbookTemplate.empty()) {
    if (auto copy = ReadTemplate(fileSystem, workbookTemplate)) {
      book = std::move(*copy);
    } else {
      note = Fail(copy.error());
    }
  }
  // Whether the file can be made shows before the addresses are read.
  if (!existing) {
    if (Status made = tables::WriteWorkbook(fileSystem, path, book.Workbook); !made)
      return Fail(made.error());
  }
  return Opened(tables::SheetTable(fileSystem, std::string(path), std::move(book.Workbook), book.Sheet),
                std::move(note));
}

}  // namespace velmora::addresses
