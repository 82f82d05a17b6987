// Workbooks from and to a text that scripts write and read:
//   workbook_tool write FILE < TEXT    a new workbook
//   workbook_tool dump FILE > TEXT     what a workbook holds
//   workbook_tool append FILE SHEET < TEXT    the rows of the text's only sheet as records, behind a first
//   row that names the columns
// A text has one item a line: "sheet HEADER-ROWS HIDDEN HEX" begins a sheet, "row" a row, and a cell is
// "empty", "number X", "bool 0|1", "date SECONDS" (since 30.12.1899) or "text HEX", where HEX is UTF-8.
#include <fmt/format.h>

#include <iostream>
#include <sstream>
#include <string>
#include <string_view>

#include "platform/host_file_system.h"
#include "tables/sheet_table.h"

namespace velmora::tables {
namespace {

std::string FromHex(std::string_view hex) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < hex.size(); at += 2) {
    bytes += static_cast<char>(std::stoi(std::string(hex.substr(at, 2)), nullptr, 16));
  }
  return bytes;
}

std::string ToHex(std::string_view bytes) {
  std::string hex;
  for (const char byte : bytes) hex += fmt::format("{:02x}", static_cast<unsigned char>(byte));
  return hex;
}

Cell ParseCell(const std::string& kind, const std::string& value) {
  if (kind == "number") return std::stod(value);
  if (kind == "bool") return value == "1";
  if (kind == "date") return DateTime::FromSeconds(std::stoll(value));
  if (kind == "text") return FromHex(value);
  return {};
}

Workbook ParseText(std::istream& text) {
  Workbook workbook;
  for (std::string line; std::getline(text, line);) {
    std::istringstream words(line);
    std::string kind, value;
    words >> kind;
    if (kind == "sheet") {
      Sheet sheet;
      words >> sheet.HeaderRows >> sheet.IsHidden >> value;
      sheet.Name = FromHex(value);
      workbook.Sheets.push_back(std::move(sheet));
    } else if (kind == "row") {
      workbook.Sheets.back().Rows.emplace_back();
    } else {
      words >> value;
      workbook.Sheets.back().Rows.back().push_back(ParseCell(kind, value));
    }
  }
  return workbook;
}

struct Describe {
  std::string operator()(std::monostate) const { return "empty"; }
  std::string operator()(double value) const { return fmt::format("number {}", value); }
  std::string operator()(bool value) const { return fmt::format("bool {:d}", value); }
  std::string operator()(DateTime value) const { return fmt::format("date {}", value.Seconds()); }
  std::string operator()(const std::string& value) const { return "text " + ToHex(value); }
};

void Dump(const Workbook& workbook) {
  for (const Sheet& sheet : workbook.Sheets) {
    std::cout << "sheet " << sheet.HeaderRows << " " << sheet.IsHidden << " " << ToHex(sheet.Name) << "\n";
    for (const Row& row : sheet.Rows) {
      std::cout << "row\n";
      for (const Cell& cell : row) std::cout << std::visit(Describe{}, cell) << "\n";
    }
  }
}

Status Append(platform::FileSystem& files, std::string_view path, std::string_view sheet,
              const Workbook& records) {
  Result<SheetTable> table = OpenAddressSheet(files, path, sheet);
  if (!table) return Fail(table.error());
  std::vector<std::vector<std::string>> rows;
  for (const Row& row : records.Sheets.at(0).Rows) {
    std::vector<std::string>& texts = rows.emplace_back();
    for (const Cell& cell : row) texts.push_back(std::get<std::string>(cell));
  }
  const std::vector<std::string_view> columns(rows.at(0).begin(), rows.at(0).end());
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (const Result<int> added = table->AddRow(columns, rows[i]); !added) return Fail(added.error());
  }
  return table->Save();
}

Status Run(const std::vector<std::string>& words) {
  const auto files = platform::MakeHostFileSystem({});
  const std::string path = files->FromUserPath(words.at(2));
  if (words[1] == "write") return WriteWorkbook(*files, path, ParseText(std::cin));
  if (words[1] == "append") return Append(*files, path, words.at(3), ParseText(std::cin));
  const Result<Workbook> workbook = ReadWorkbook(*files, path);
  if (!workbook) return Fail(workbook.error());
  Dump(*workbook);
  return {};
}

}  // namespace
}  // namespace velmora::tables

int main(int argc, char** argv) {
  const velmora::Status done = velmora::tables::Run({argv, argv + argc});
  if (!done) std::cerr << done.error().Number << " " << done.error().Text << "\n";
  return done ? 0 : 1;
}
