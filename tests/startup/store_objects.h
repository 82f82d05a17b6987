// Links, rules and damaged lists for tests of commands over a whole program.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "startup/program_fixture.h"
#include "store/archive_record.h"
#include "store/archive_records.h"
#include "store/embedded/archive_tree.h"
#include "store/embedded/store_layout.h"

namespace velmora::test {

inline void AddLink(platform::FileSystem& files, std::string_view server, const store::DvArchive& list,
                    std::string_view name, const store::DvArchive& target) {
  store::embedded::ArchiveTree tree(files, store::embedded::StoreLayout(std::string(server)).ArchiveRoot());
  ASSERT_TRUE(tree.AddLink(list.ID(), name, target.ID()).has_value());
}

// A record as no sound tree has it.
inline void AddRecord(platform::FileSystem& files, const store::DvArchive& list,
                      const store::DvArchive& entry, std::string_view name) {
  const auto record = store::DirRecord::Make(entry.ID(), name);
  ASSERT_TRUE(record.has_value());
  ASSERT_TRUE(store::AppendArchiveRecord(files, list.ID(), *record).has_value());
}

// A rule that forwards, and so needs no archive.
inline void AddRule(store::DvArchive& archive, std::string_view name) {
  const auto rule = archive.Rules().Add(name);
  ASSERT_TRUE(rule.has_value());
  (*rule)->Data().Forward = true;
  (*rule)->Data().ForwardTo = "max@example.org";
  ASSERT_TRUE((*rule)->Update().has_value());
}

inline std::vector<std::string> RuleNames(store::DvArchive& archive) {
  std::vector<std::string> names;
  for (int i = 0; i < archive.Rules().Count().value_or(0); ++i) {
    names.push_back(archive.Rules().Item(i).value()->Data().Name);
  }
  return names;
}

}  // namespace velmora::test
