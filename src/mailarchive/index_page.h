// One page of the content index.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "mailarchive/content_index.h"

namespace velmora::mailarchive {

// A message of the indexed directory.
struct IndexRow {
  std::string Subject, PageFile, Sortaddr;
  DateTime Date;
};

// A sub archive of the indexed directory.
struct IndexFolder {
  std::string DirName, DisplayName;
};

// What the three pages of a directory share.
struct IndexContent {
  std::string Directory;
  bool IsRoot = false;
  std::vector<IndexRow> Rows;
  std::vector<IndexFolder> Folders;
};

// Writes index.html, index2.html or index3.html, the rows in the order given. A page that cannot be written
// ends silently; without its form it is empty.
void WriteIndexFile(IndexContext& context, Form form, std::string_view fileName, const IndexContent& content,
                    const std::vector<std::uint32_t>& order, bool showProgress);

}  // namespace velmora::mailarchive
