// The program `velmora`.

#include <cstdio>
#include <memory>

#include "embedded_program.h"
#include "platform/clock.h"
#include "run/console_front_end.h"
#include "run/silent_front_end.h"
#include "startup/command_line.h"
#include "startup/main_sequence.h"
#include "window_program.h"

namespace {

bool AsksForHelp(const std::string& commandLine) {
  return velmora::startup::DecodeStartOption(commandLine) == velmora::startup::LineOption::Help;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  using namespace velmora;
  const std::string commandLine = startup::JoinArguments(argumentCount, arguments);
  run::SilentFrontEnd silent;
  const bool isTerminal = run::ConsoleFrontEnd::IsTerminal(stdin, stderr);
  run::ConsoleFrontEnd console(platform::SystemClock(), stdin, stderr, isTerminal);
  const bool isUnattended = startup::IsUnattended(commandLine);
  std::unique_ptr<WindowProgram> window;
  // Who asks for help at a terminal reads it there.
  const bool isForConsole = isTerminal && AsksForHelp(commandLine);
  if (!isUnattended && !isForConsole) {
    window = MakeWindowProgram(argumentCount, arguments);
  }
  const run::FrontEnd frontEnd = isUnattended ? silent.Set() : window ? window->Set() : console.Set();
  EmbeddedProgram program("", commandLine, frontEnd, window ? &window->Factory() : nullptr);
  return startup::Main(program.GetContext());
}
