// An archive directory with a list made by hand, as a server would have written it: heads and tails of bytes
// that nobody knows the meaning of.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host_file_system.h"
#include "store/archive_files.h"
#include "store/archive_record.h"
#include "store/archive_records.h"
#include "support/temp_dir.h"

namespace velmora::store {

class RecordFilesTest : public testing::Test {
 protected:
  static constexpr std::string_view Directory = R"(\\SERVER\DAVID\ARCHIVE)";

  RecordFilesTest() {
    std::filesystem::create_directory(Temp.HostPath("ARCHIVE"));
    Files = MakeFiles();
  }
  std::unique_ptr<platform::FileSystem> MakeFiles() const {
    return platform::MakeHostFileSystem({{R"(\\SERVER\DAVID)", Temp.HostPath()}});
  }

  static std::string Opaque(std::size_t size, unsigned char seed) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>((i * 7 + seed) & 0xFF);
    return bytes;
  }
  static std::string PathOf(std::string_view name) {
    return std::string(Directory) + "\\" + std::string(name);
  }
  static DirRecord Record(std::string_view path, std::string_view name, unsigned char seed = 1) {
    DirRecord record = DirRecord::Make(path, name).value();
    record.SetHead(Opaque(DirRecord::HeadSize, seed));
    record.SetTail(Opaque(DirRecord::TailSize, static_cast<unsigned char>(seed + 100)));
    return record;
  }
  static DirRecord WithArea(std::string_view area) {
    DirRecord record = Record(PathOf("X"), "X");
    record.SetTextArea(area);
    return record;
  }

  void WriteList(const std::vector<DirRecord>& records) {
    std::string content;
    for (const DirRecord& record : records) content += record.Bytes();
    Temp.WriteHostFile("ARCHIVE/archive.dir", content);
  }
  std::string List() const { return Temp.ReadHostFile("ARCHIVE/archive.dir"); }
  std::vector<std::string> Names() const { return NamesIn(List()); }
  static std::vector<std::string> NamesIn(const std::string& content) {
    std::vector<std::string> names;
    for (std::size_t number = 1; number <= CountRecords(content); ++number)
      names.push_back(RecordAt(content, number)->Name().value_or("-"));
    return names;
  }
  bool Exists(std::string_view name) const {
    return std::filesystem::exists(Temp.HostPath("ARCHIVE/" + std::string(name)));
  }
  NumberedRecord Find(std::string_view name) {
    auto found = FindArchiveRecord(*Files, Directory, {.Path = PathOf(name)});
    if (!found) {
      ADD_FAILURE() << name << ": " << found.error().Text;
      return {};
    }
    return *found;
  }
  template <typename R>
  static int ErrorOf(const R& result) {
    return result ? 0 : result.error().Number;
  }

  test::TempDir Temp;
  std::unique_ptr<platform::FileSystem> Files;
};

using Texts = std::vector<std::string>;

}  // namespace velmora::store
