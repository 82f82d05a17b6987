#include <CLI/CLI.hpp>

#include "cli/commands.h"

namespace velmora::cli {

CLI::App* AddSubcommand(CLI::App& group, const char* name, const char* description) {
  return group.add_subcommand(name, description)->group("Befehle");
}

}  // namespace velmora::cli
