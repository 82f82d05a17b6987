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

// The help is for whoever typed the line: it stands where he typed it.
bool IsForConsole(const std::string& commandLine) {
  return velmora::startup::DecodeStartOption(commandLine) == velmora::startup::LineOption::Help;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  using namespace velmora;
  const std::string commandLine = startup::JoinArguments(argumentCount, arguments);
  run::SilentFrontEnd silent;
  run::ConsoleFrontEnd console(platform::SystemClock(), stdin, stderr,
                               run::ConsoleFrontEnd::IsTerminal(stdin, stderr));
  const bool isUnattended = startup::IsUnattended(commandLine);
  std::unique_ptr<WindowProgram> window;
  if (!isUnattended && !IsForConsole(commandLine)) {
    window = MakeWindowProgram(argumentCount, arguments);
  }
  const run::FrontEnd frontEnd = isUnattended ? silent.Set() : window ? window->Set() : console.Set();
  EmbeddedProgram program("", commandLine, frontEnd, window ? &window->Factory() : nullptr);
  return startup::Main(program.GetContext());
}
