// Paths as text, in the Windows form that every layer above platform/ speaks. Nothing here touches a disk.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace velmora {

// Each looks at the last character only and adds or removes one.
std::string AddBackslash(std::string_view path);
std::string StripBackslash(std::string_view path);
std::string AddSlash(std::string_view path);
std::string StripSlash(std::string_view path);

// What follows the last backslash; the whole text without one.
std::string_view FileNameOf(std::string_view path);
// Up to and including the last backslash; "" without one.
std::string_view DirectoryOf(std::string_view path);
// `directory` + "\" + `name`, with exactly one backslash between.
std::string JoinPath(std::string_view directory, std::string_view name);
// Every "\" becomes "/".
std::string PathToUrl(std::string_view path);

// To the UNC form: `SERVER\SYS:DAVID` becomes `\\SERVER\SYS\DAVID`. A text whose second character is ":", or
// which has neither ":" nor "\", stays as it is.
std::string NormalizePath(std::string_view path);
// To the NetWare form: `\\SERVER\SYS\DAVID` becomes `SERVER\SYS:DAVID`. `shareOfDrive` gives the share name
// (`\\SERVER\SHARE`) of a drive such as "Z:", "" when it has none; then, and for a UNC path without a folder
// behind the share, the path is kept.
std::string ToNetWareForm(std::string_view path,
                          const std::function<std::string(std::string_view drive)>& shareOfDrive);
// The path in lower case, with everything up to its first "david" taken from `davidRoot` (in lower case too)
// and "DAVID" in capitals: makes paths comparable that were spelled through different shares. A text without
// "david" is kept.
std::string MapToDavidRoot(std::string_view path, std::string_view davidRoot);
// Whether `path` is `directory` or lies below it: compared without regard to case, up to a "\".
bool IsSameOrBelow(std::string_view path, std::string_view directory);
// Whether a relative path from outside may be followed: not empty, not absolute, no drive or stream colon, no
// ".." component, no control character.
bool IsSafeRelativePath(std::string_view path);

}  // namespace velmora
