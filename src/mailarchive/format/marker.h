// Marker files (.vla): what a directory of a mail archive is. Windows-1252, CR LF, hidden; characters beyond
// the code page stand as decimal references, control characters in values as blanks.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::mailarchive {

enum class MailArcKind {
  None = 0,
  Root = 1,     // the directory in which an export started
  Sub = 2,      // mirrors one archive of the store
  Data = 3,     // a component folder (attachments, HTML mails, ...)
  Address = 4,  // exported vCards only
};

struct MarkerProbe {
  MailArcKind Kind = MailArcKind::None;
  bool CanHoldContent = false;  // root and sub archives
  std::string MarkerFile;       // name of the marker found, "" without one
};

// Probes root, sub, data, address, then the legacy names of root, sub, data.
MarkerProbe ProbeMailArc(platform::FileSystem& fileSystem, std::string_view directory);
MailArcKind GetMailArcKind(platform::FileSystem& fileSystem, std::string_view directory);

struct MarkerTexts {
  std::string DisplayName{};  // a single blank is written when empty
  std::string FullPath{};     // store path of the archive, or its ID
  std::string DirName{};      // physical directory; only what follows its last "\" is written
  std::string Comment{};      // plain text; written escaped, line breaks as <BR>
  std::string CopyRight{};    // likewise
};

// Without `force` an existing marker stays as it is unless it is the same kind's and has no byte. With
// `force` the new one takes the place of all others, which go once it stands. Kind None removes all and
// writes none. A failed write is returned and leaves the directory as marked as it was; the caller goes on.
Status WriteArchiveMarker(platform::FileSystem& fileSystem, std::string_view directory, MailArcKind kind,
                          const MarkerTexts& texts, bool force);
// Deletes all seven marker names, ignoring each failure.
void ClearArchiveMarkers(platform::FileSystem& fileSystem, std::string_view directory);

// What a marker says, comment and copyright still escaped as HTML.
struct ArcDescriptor {
  std::string ArchiveDisplayName, ArchiveFullPath, ArchiveComment, ArchiveCopyRight, ArchiveDirName;
};
// Looks for sub, root, address, legacy sub, legacy root. Nothing when none can be opened; a data marker gives
// nothing.
std::optional<ArcDescriptor> ReadArcDescriptor(platform::FileSystem& fileSystem, std::string_view directory);

}  // namespace velmora::mailarchive
