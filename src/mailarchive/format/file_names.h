// Names of the files of a mail archive.
#pragma once

#include <string>
#include <string_view>

namespace velmora::mailarchive {

// The limit of a base name in characters, whatever the directory's depth.
inline constexpr int BaseNameLength = 59;

// A text made file-safe: the fixed list of replacements, then control characters as blanks, then characters
// beyond Windows-1252 as "_". `replaceHash` is true for message names, false for directory names of archives.
std::string SanitizeFileName(std::string_view text, bool replaceHash);
// Characters below U+0020 as blanks.
std::string StripControlChars(std::string_view text);
// SanitizeFileName with `replaceHash`, cut to BaseNameLength. Names of devices stay: archives written before
// have them, too.
std::string EntryBaseName(std::string_view subject);
// The directory of an archive: its display name through SanitizeFileName, that of its physical directory when
// nothing is left. Names of devices and blanks at the end stay.
std::string ArchiveDirectoryName(std::string_view displayName, std::string_view archiveId);
// Whether the file-system pane leaves the file out while HideMailArcHelperFiles is on.
bool IsMailArcHelperFile(std::string_view fileName);

}  // namespace velmora::mailarchive
