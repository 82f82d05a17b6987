// The container of a workbook: a compound file ([MS-CFB]), in which the records are one stream.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"

namespace velmora::tables {

// The first of the named streams (ASCII, found without regard to case) that lies at the top of the container.
// Every table of the container is hostile: no number in it makes the work or the answer larger than the
// file. Fails with NotAWorkbook when the container is damaged, is none, or has none of the streams.
Result<std::string> ReadCompoundStream(std::string_view file, std::string_view name,
                                       std::string_view otherName);

// A container with the stream "Workbook". Fails with the file error DeviceError when it cannot be made.
Result<std::string> MakeCompoundFile(std::string_view workbookStream);

}  // namespace velmora::tables
