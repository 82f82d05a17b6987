// Makes the workbooks that exports of addresses and of users start from, in the directory that the command
// line names: make_templates DIRECTORY.

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "addresses/address_record.h"
#include "platform/host_file_system.h"
#include "tables/sheet_table.h"

namespace {

struct Template {
  std::string_view FileName, Sheet;
  std::vector<std::string_view> Columns;
};

std::array<Template, 2> Templates() {
  const auto& addresses = velmora::addresses::ColumnNames;
  return {{{"StdVelmoraAddressSheet.xls", "Adressen", {addresses.begin(), addresses.end()}},
           {"StdVelmoraUserListSheet.xls", "Benutzer", {"Name", "UserID", "EMail", "UserDir"}}}};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("make_templates DIRECTORY\n", stderr);
    return 2;
  }
  const auto files = velmora::platform::MakeHostFileSystem({});
  const std::string directory = files->FromUserPath(argv[1]);
  for (const Template& wanted : Templates()) {
    const std::string path = directory + "\\" + std::string(wanted.FileName);
    const auto made = velmora::tables::CreateSheetWorkbook(*files, path, wanted.Sheet, wanted.Columns);
    if (!made) {
      std::fprintf(stderr, "%s: %s\n", path.c_str(), made.error().Text.c_str());
      return 1;
    }
  }
  return 0;
}
