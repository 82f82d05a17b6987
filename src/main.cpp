// The program `velmora`.

#include <cstdio>

#include "embedded_program.h"
#include "platform/clock.h"
#include "run/console_front_end.h"
#include "run/silent_front_end.h"
#include "startup/command_line.h"
#include "startup/main_sequence.h"

int main(int argumentCount, char** arguments) {
  using namespace velmora;
  const std::string commandLine = startup::JoinArguments(argumentCount, arguments);
  run::SilentFrontEnd silent;
  run::ConsoleFrontEnd console(platform::SystemClock(), stdin, stderr,
                               run::ConsoleFrontEnd::IsTerminal(stdin, stderr));
  const bool isUnattended = startup::IsUnattended(commandLine);
  EmbeddedProgram program("", commandLine, isUnattended ? silent.Set() : console.Set());
  return startup::Main(program.GetContext());
}
