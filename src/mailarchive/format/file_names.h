// Names of the files of a mail archive.
#pragma once

#include <string>
#include <string_view>

namespace velmora::mailarchive {

// The files that a directory of a mail archive has beside its pages and their descriptors.
namespace directory_file {
inline constexpr std::string_view DateIndex = "index.html", SubjectIndex = "index2.html",
                                  AddressIndex = "index3.html";
inline constexpr std::string_view Autorun = "autorun.inf", Launcher = "shellexec.exe";
}  // namespace directory_file
inline constexpr std::string_view DescriptorExtension = ".add";

// The limit of a base name in characters, whatever the directory's depth.
inline constexpr int BaseNameLength = 59;

// A text made file-safe: the fixed list of replacements, then control characters as blanks, then characters
// beyond Windows-1252 as "_". `replaceHash` is true for message names, false for directory names of archives.
std::string SanitizeFileName(std::string_view text, bool replaceHash);
// SanitizeFileName with `replaceHash`, cut to BaseNameLength. Names of devices stay: archives written before
// have them, too.
std::string EntryBaseName(std::string_view subject);
// The directory of an archive: its display name through SanitizeFileName, that of its physical directory when
// nothing is left. Names of devices and blanks at the end stay.
std::string ArchiveDirectoryName(std::string_view displayName, std::string_view archiveId);
// Whether the file-system pane leaves the file out while HideMailArcHelperFiles is on.
bool IsMailArcHelperFile(std::string_view fileName);

}  // namespace velmora::mailarchive
