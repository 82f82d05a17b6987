#include "embedded_program.h"

#include <utility>

#include "platform/clock.h"
#include "platform/host.h"
#include "store/embedded/embedded_store.h"

namespace velmora {
namespace {

namespace embedded = store::embedded;

using StoreLocations = Result<std::vector<embedded::StoreLocation>>;

std::vector<platform::PathMapping> AllMappings(const platform::HostDirectories& directories,
                                               const StoreLocations& stores) {
  std::vector<platform::PathMapping> mappings = startup::ReadPathMappings(directories);
  if (stores) {
    const std::vector<platform::PathMapping> shares = embedded::MappingsOf(*stores);
    mappings.insert(mappings.end(), shares.begin(), shares.end());
  }
  return mappings;
}

}  // namespace

EmbeddedProgram::EmbeddedProgram(const std::string& storeOption, const std::string& commandLine,
                                 run::FrontEnd frontEnd, startup::WindowFactory* windows) {
  platform::Clock& clock = platform::SystemClock();
  const platform::HostDirectories directories = platform::FindHostDirectories();
  const embedded::StoreRequest request = embedded::RequestOfProcess(storeOption);
  stores_ = embedded::ResolveStores(request, clock);
  fileSystem_ = platform::MakeHostFileSystem(AllMappings(directories, stores_));
  const auto makeApi = [this, &clock,
                        loginName = request.LoginName]() -> Result<std::shared_ptr<store::DvISEAPI>> {
    if (!stores_) {
      return Fail(stores_.error());
    }
    return embedded::OpenEmbeddedApi(*fileSystem_, clock, *stores_, loginName);
  };
  const bool isStoreNamed = stores_ && !request.Directory.empty();
  program_ = std::make_unique<startup::Program>(
      startup::ProgramParts{.Directories = directories,
                            .fileSystem = *fileSystem_,
                            .clock = clock,
                            .frontEnd = frontEnd,
                            .makeApi = makeApi,
                            .CommandLine = commandLine,
                            .NamedServer = isStoreNamed ? stores_->front().ServerName : "",
                            .windows = windows});
}

}  // namespace velmora
