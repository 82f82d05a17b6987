// What the tagged text area of a record can hold (archive_record.h).
#pragma once

#include <algorithm>
#include <string_view>

#include "base/code_page.h"
#include "base/result.h"
#include "base/text.h"
#include "store/errors.h"

namespace velmora::store {

// Without the free space behind the last item, whose NUL is kept; all of an area without items is free.
inline std::string_view UsedPart(std::string_view area) {
  const std::size_t last = area.find_last_not_of('\0');
  return last == std::string_view::npos ? std::string_view()
                                        : area.substr(0, std::min(last + 2, area.size()));
}

// BadName for a path with a character that the code page lacks, or that would end or begin an item.
inline Status CheckPathCharacters(std::string_view path) {
  if (FitsCodePage(path) && BlankControlCharacters(path) == path) return {};
  return Fail(store_error::BadName, "Der Pfad enthält Zeichen, die ein Archiveintrag nicht aufnehmen kann");
}

inline tl::unexpected<Error> FailPathTooLong() {
  return Fail(store_error::BadName, "Der Pfad ist zu lang für einen Archiveintrag");
}
inline tl::unexpected<Error> FailNoRoomForName() {
  return Fail(store_error::BadName, "Im Archiveintrag ist kein Platz für einen Namen");
}

}  // namespace velmora::store
