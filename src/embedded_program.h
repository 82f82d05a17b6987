// The program on the built-in stores of this machine. With store commands of velmoractl the one place that
// names a backend.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/host_file_system.h"
#include "startup/program.h"
#include "store/embedded/store_location.h"

namespace velmora {

class EmbeddedProgram {
 public:
  // `storeOption`: the host directory of the store that the command line names, "" for none. Whether a store
  // was found shows when the program signs on. `windows`: null without a window.
  EmbeddedProgram(const std::string& storeOption, const std::string& commandLine, run::FrontEnd frontEnd,
                  startup::WindowFactory* windows = nullptr);
  EmbeddedProgram(const EmbeddedProgram&) = delete;
  EmbeddedProgram& operator=(const EmbeddedProgram&) = delete;

  startup::Context& GetContext() { return program_->GetContext(); }

 private:
  Result<std::vector<store::embedded::StoreLocation>> stores_;
  std::unique_ptr<platform::FileSystem> fileSystem_;
  std::unique_ptr<startup::Program> program_;
};

}  // namespace velmora
