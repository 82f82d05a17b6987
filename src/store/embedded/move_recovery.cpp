// Finishing the moves of processes that died (move_journal.h).
#include "store/embedded/entry_store.h"
#include "store/embedded/move_journal.h"

namespace velmora::store::embedded {

Status EntryStore::SettleAbandonedMoves(std::string_view moveJournals) {
  Status result;
  for (AbandonedMoves& moves : AbandonedMoves::Find(fileSystem_, moveJournals)) {
    Status settled;
    for (const std::string& target : moves.Targets()) {
      const Status taken = TakeFromSources(target, moves.Name());
      if (!taken && settled) settled = taken;
    }
    if (settled) {
      moves.Remove();
    } else if (result) {
      result = settled;
    }
  }
  return result;
}

Status EntryStore::TakeFromSources(std::string_view target, const std::string& process) {
  auto archive = pool_.ForReading(target);
  if (!archive) return Fail(archive.error());
  if (*archive == nullptr) return {};
  const auto arrivals = (*archive)->Database().Arrivals(process);
  if (!arrivals) return Fail(arrivals.error());
  if (arrivals->empty()) return {};
  for (const auto& arrival : *arrivals) {
    // What has left the target since is not known to stand anywhere but in its source.
    const auto present = pool_.ForReading(target);
    if (!present) return Fail(present.error());
    if (*present == nullptr) return {};
    const auto stands = (*present)->Database().HasEntry(arrival.Key);
    if (!stands) return Fail(stands.error());
    if (!*stands) continue;
    if (const Status taken = TakeFromSource(arrival); !taken) return taken;
  }
  if (const Status committed = pool_.Commit(); !committed) return committed;
  archive = pool_.ForWriting(target);
  if (!archive) return Fail(archive.error());
  if (const Status forgotten = (*archive)->Database().ForgetArrivals(process); !forgotten) return forgotten;
  return pool_.Commit();
}

Status EntryStore::TakeFromSource(const MessageDatabase::Arrival& arrival) {
  auto source = pool_.ForReading(arrival.Source);
  if (!source) return Fail(source.error());
  if (*source == nullptr) return {};
  auto& database = (*source)->Database();
  // Another database in its place gives the same keys to other entries.
  const auto identity = database.Identity();
  if (!identity) return Fail(identity.error());
  if (*identity != arrival.Identity) return {};
  const auto stands = database.HasEntry(arrival.SourceKey);
  if (!stands) return Fail(stands.error());
  if (!*stands) return {};
  source = pool_.ForWriting(arrival.Source);
  if (!source) return Fail(source.error());
  return RemoveFrom(**source, arrival.SourceKey);
}

}  // namespace velmora::store::embedded
