// The program `velmora`. The one place beside velmoractl that names a backend.

#include <cstdio>
#include <memory>
#include <vector>

#include "platform/clock.h"
#include "platform/host.h"
#include "platform/host_file_system.h"
#include "run/console_front_end.h"
#include "run/silent_front_end.h"
#include "startup/command_line.h"
#include "startup/main_sequence.h"
#include "startup/program.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/store_location.h"

int main(int argumentCount, char** arguments) {
  using namespace velmora;
  const std::string commandLine = startup::JoinArguments(argumentCount, arguments);
  const platform::HostDirectories directories = platform::FindHostDirectories();
  platform::Clock& clock = platform::SystemClock();

  const store::embedded::StoreRequest request = store::embedded::RequestOfProcess("");
  const Result<std::vector<store::embedded::StoreLocation>> stores =
      store::embedded::ResolveStores(request, clock);
  std::vector<platform::PathMapping> mappings = startup::ReadPathMappings(directories);
  if (stores) {
    const std::vector<platform::PathMapping> shares = store::embedded::MappingsOf(*stores);
    mappings.insert(mappings.end(), shares.begin(), shares.end());
  }
  const std::unique_ptr<platform::FileSystem> fileSystem = platform::MakeHostFileSystem(std::move(mappings));

  run::SilentFrontEnd silent;
  run::ConsoleFrontEnd console(clock, stdin, stderr, run::ConsoleFrontEnd::IsTerminal(stdin, stderr));
  const bool isUnattended = startup::IsUnattended(commandLine);
  const auto makeApi = [&]() -> Result<std::shared_ptr<store::DvISEAPI>> {
    if (!stores) {
      return Fail(stores.error());
    }
    return store::embedded::OpenEmbeddedApi(*fileSystem, clock, *stores, platform::UserLoginName());
  };
  const bool isStoreNamed = stores && !request.Directory.empty();
  startup::Program program({.Directories = directories,
                            .fileSystem = *fileSystem,
                            .clock = clock,
                            .frontEnd = isUnattended ? silent.Set() : console.Set(),
                            .makeApi = makeApi,
                            .CommandLine = commandLine,
                            .NamedServer = isStoreNamed ? stores->front().ServerName : ""});
  return startup::Main(program.GetContext());
}
