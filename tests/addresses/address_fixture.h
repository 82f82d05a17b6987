// An address with a value in every field, and a directory for the files of a test.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "addresses/address_record.h"
#include "base/code_page.h"
#include "platform/host_file_system.h"
#include "support/faulty_file_system.h"
#include "support/temp_dir.h"

namespace velmora::addresses {

// Field n holds "vn", the birthday a date, the categories a mask.
inline AddressRecord FullRecord() {
  AddressRecord record;
  for (std::size_t column = 0; column < FieldCount; ++column) {
    record.Fields[column] = "v" + std::to_string(column);
  }
  record.Fields[field::Birthday] = "05.08.1970";
  record.Categories = 0x8001;
  record.Fields[field::Categories] = CategoryMaskToText(record.Categories);
  record.Subject = "Betreff";
  record.Notes = record.Fields[field::Notes];
  record.DefaultAddress = 3;
  return record;
}

inline AddressRecord RecordNamed(std::string_view name) {
  AddressRecord record;
  record.Subject = record.Fields[field::DisplayName] = name;
  return record;
}

class AddressFilesTest : public testing::Test {
 protected:
  std::string Read(std::string_view relative) const { return FromCodePage(dir.ReadHostFile(relative)); }
  std::vector<std::string> Names(std::string_view relative = "") {
    std::vector<std::string> names;
    const std::string path = relative.empty() ? dir.Path() : dir.Path(relative);
    const auto entries = host->List(path, "*", platform::ListWhat::All);
    if (!entries) return {"no folder"};
    for (const auto& entry : *entries) names.push_back(entry.Name);
    return names;
  }
  template <typename R>
  static int ErrorOf(const R& result) {
    return result ? 0 : result.error().Number;
  }

  test::TempDir dir;
  std::unique_ptr<platform::FileSystem> host = platform::MakeHostFileSystem({{"Z:", "/"}});
  test::FaultyFileSystem files{*host};
};

using Strings = std::vector<std::string>;

}  // namespace velmora::addresses
