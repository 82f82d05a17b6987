// Runs on the store world, made ready while nothing fails yet.
#pragma once

#include <functional>
#include <numeric>
#include <string_view>

#include "operations/archive_copy.h"
#include "operations/archive_deletion.h"
#include "store_world.h"

namespace velmora::faults {

inline constexpr std::string_view Source = "/Archive/Quelle", Target = "/Archive/Ziel",
                                  Shelf = "/Archive/Ablage";

// What is opened before the faults begin, and the run itself.
using Job = std::function<void()>;

inline int Total(const Messages& messages) {
  return std::accumulate(messages.begin(), messages.end(), 0,
                         [](int sum, const auto& message) { return sum + message.second; });
}

inline store::Selection MarkSource(StoreWorld& world) {
  const auto source = world.Open(Source);
  return {world.Open("/Archive"),
          {{store::Selection::Object::Kind::Archive, 0, source->ID(), false, "Quelle"}}};
}

inline Job Copying(StoreWorld& world, const operations::StoreCopyOptions& options) {
  return [&world, options, selection = MarkSource(world), target = world.Open(Target)] {
    operations::RunStoreCopy(world.Context(), options, selection, target);
  };
}

inline Job Deleting(StoreWorld& world, const operations::StoreDeleteOptions& options) {
  return [&world, options, selection = MarkSource(world)] {
    operations::RunStoreDelete(world.Context(), options, selection);
  };
}

}  // namespace velmora::faults
