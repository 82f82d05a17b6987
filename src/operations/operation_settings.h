// What an operation takes from the settings.
#pragma once

#include <cstdint>

#include "operations/operation.h"
#include "settings/options.h"

namespace velmora::operations {

// With the filter of the settings: what is not listed is not touched.
inline Operation OperationOf(run::Run& run, store::Session& session, const settings::Options& options) {
  return {run,
          session,
          {static_cast<std::uint32_t>(options.DvItemFilter), options.DvInhibitItems},
          options.ClearErrorLog};
}

}  // namespace velmora::operations
