// ExtAppButton: an external program, started with the paths of the panes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmora::panes {

struct PanePaths {
  std::string Left;   // physical directory of the left archive
  std::string Right;  // the current directory in ViewMode 1, else the physical directory of the right archive
  std::string Active;  // of the active view
};

// The command line with "%l" and "%r" (in any case) replaced by the quoted paths; one with neither gets the
// quoted path of the active view behind it.
std::string ExternalCommandLine(std::string_view setting, const PanePaths& paths);
// The same as an argument list, which is what is started: text in double quotes is one argument, and no
// character of a path can end one.
std::vector<std::string> ExternalArguments(std::string_view setting, const PanePaths& paths);
// The program file of a command line, from which the button's icon comes.
std::string ProgramOf(std::string_view setting);

}  // namespace velmora::panes
