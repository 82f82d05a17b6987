// The icons of messages, rules and files.
#pragma once

#include <string>
#include <string_view>

#include "panes/pane.h"
#include "panes/rows.h"

namespace velmora::panes {

inline constexpr std::string_view SimpleFileKey = "SimpleFile", FolderKey = "FolderClosed",
                                  FolderBackKey = "FolderBack", StandardExecutableKey = "IStdEXE",
                                  RuleEnabledKey = "IRoutEn", RuleDisabledKey = "IRoutDi";

RowIcon MessageIcon(const MessageRow& row, bool displayFileIcons);
std::string_view RoutingModeIcon(int mode);
RowIcon FileIcon(const FileRow& row, bool displayFileIcons);
// In capitals, without the dot; "" of a name without one, or with one that names no type (too long, or with
// characters that no extension has).
std::string IconExtension(std::string_view fileName);

}  // namespace velmora::panes
