// All that one process of the program consists of, put together once by main.
#pragma once

#include <string>
#include <vector>

#include "platform/host_file_system.h"
#include "startup/process.h"

namespace velmora::startup {

// The drives and shares of the settings. Whatever they say, one of the drives leads to every host path: when
// "Z:" was mapped elsewhere, the last free letter before it takes its place.
std::vector<platform::PathMapping> ReadPathMappings(const platform::HostDirectories& directories);

// The arguments of a process as its command line.
std::string JoinArguments(int count, const char* const* arguments);

struct ProgramParts {
  platform::HostDirectories Directories;
  platform::FileSystem& fileSystem;
  platform::Clock& clock;
  run::FrontEnd frontEnd;
  ApiMaker makeApi;
  std::string CommandLine;
  std::string NamedServer;
  WindowFactory* windows = nullptr;
};

class Program {
 public:
  // Makes the directories of the program that are missing.
  explicit Program(const ProgramParts& parts);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  Context& GetContext() { return context_; }

 private:
  ProcessFields process_;
  settings::Store settingsStore_;
  run::Run run_;
  store::Session session_;
  settings::Options options_, loadedOptions_;
  Context context_;
};

}  // namespace velmora::startup
