// The properties of an archive in the head of its record. The layout is this store's own and stands in
// docs/store-format.md; a head without its mark was written by somebody else and holds no properties for us.
#pragma once

#include "store/archive_record.h"
#include "store/embedded/archive_tree.h"

namespace velmora::store::embedded {

struct HeadContent {
  ArchiveProperties Properties;
  bool IsLink = false;  // the record was made as a link

  bool operator==(const HeadContent&) const = default;
};

HeadContent ReadHead(const DirRecord& record);
// Bytes of a marked head that the layout leaves free stay as they are.
void WriteHead(DirRecord& record, const HeadContent& content);

}  // namespace velmora::store::embedded
