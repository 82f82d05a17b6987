// The routing rules of one archive: `archive.urt` in its directory, a small SQLite database.
//
// The file is opened for one operation and closed at once, so that it can be copied, renamed and replaced as
// a whole. An archive without the file has no rules. Rules stand in the order in which they were added.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"
#include "store/rules.h"

namespace velmora::store::embedded {

class RuleFile {
 public:
  static constexpr std::size_t MaxNameCharacters = 30;  // a longer name is cut

  // `directory`: the archive's directory, UNC without "\" at the end.
  RuleFile(platform::FileSystem& fileSystem, std::string directory);

  // A stored rule: its data and the id that finds it again.
  struct Entry {
    std::int64_t Id = 0;
    DvRuleData Data;
  };

  Result<int> Count();
  Result<Entry> Read(int index);  // from 0; NotFound
  // Stores the rule: with id 0 as a new one, the last of the list. Gives the id. NotFound when the rule has
  // been deleted meanwhile.
  Result<std::int64_t> Write(std::int64_t id, const DvRuleData& data);
  Status Delete(std::int64_t id);

 private:
  std::string Path() const;
  bool Exists() const;

  platform::FileSystem& fileSystem_;
  std::string directory_;
};

}  // namespace velmora::store::embedded
