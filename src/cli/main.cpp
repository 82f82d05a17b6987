// velmoractl: the command line of Velmora.

#include <clocale>
#include <csignal>

#include "cli/commands.h"

int main(int argc, char** argv) {
  // Names of files are UTF-8 whatever the locale says; numbers and dates have a form of their own.
  std::setlocale(LC_CTYPE, "C.UTF-8");
  std::signal(SIGPIPE, SIG_IGN);  // a reader that has gone away ends no work
  return velmora::cli::RunCommandLine(argc, argv);
}
