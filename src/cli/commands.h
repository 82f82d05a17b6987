// The commands of velmoractl. Each group adds its own to the program's command line; the one that the user
// names becomes the action that is run, and its result the exit status.
#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace velmora::cli {

// Runs the command that main was called with; returns the exit status. Help goes to standard output, what is
// wrong with the call to standard error.
int RunCommandLine(int argc, char** argv);

using Action = std::function<int()>;

// The command `name` of a group, which owns it. A file that makes one itself compiles CLI11 whole once more.
CLI::App* AddSubcommand(CLI::App& group, const char* name, const char* description);

// The option --store, which every command on an existing store has.
void AddStoreOption(CLI::App& command, std::string& directory);

// `velmoractl store ...`: care for the built-in store.
void AddStoreCommands(CLI::App& app, Action& action);
// The commands `put-...` of `velmoractl store`.
void AddPutCommands(CLI::App& group, Action& action);
// `velmoractl tree ...`: what is wrong with the entries of the tree of archives.
void AddTreeCommands(CLI::App& app, Action& action);
// `velmoractl copy`, `move` and `delete`: archives and messages within the store.
void AddArchiveCommands(CLI::App& app, Action& action);
// `velmoractl rules ...`: the routing rules of archives.
void AddRuleCommands(CLI::App& app, Action& action);
// `velmoractl run FILE|KEY=VALUE...`: an unattended run.
void AddRunCommand(CLI::App& app, Action& action);
// `velmoractl addresses ...`: addresses to and from files.
void AddAddressCommands(CLI::App& app, Action& action);

}  // namespace velmora::cli
