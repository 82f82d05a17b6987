// Checking an archive's database and content files against each other.
#include <fmt/core.h>

#include <algorithm>
#include <map>

#include "base/paths.h"
#include "store/embedded/content_files.h"
#include "store/embedded/entry_store.h"

namespace velmora::store::embedded {

std::vector<EntryStore::Finding> EntryStore::Check(std::string_view directory) {
  std::vector<Finding> findings;
  std::vector<EntryKey> keys, withSource;
  std::map<std::string, StrayFile> strays;
  EntryKey highest = 0;
  const auto archive = pool_.ForReading(directory);
  if (!archive) return {{0, archive.error().Text}};
  if (*archive != nullptr) {
    auto& database = (*archive)->Database();
    const auto integrity = database.CheckIntegrity();
    if (!integrity) return {{0, integrity.error().Text}};
    if (!integrity->empty())
      findings.push_back({0, fmt::format("Die Datenbank ist beschädigt: {}", *integrity)});
    auto read = database.AllKeys();
    if (!read) return {{0, read.error().Text}};
    keys = std::move(*read);
    const auto highestEver = database.HighestKeyEver();
    if (!highestEver) return {{0, highestEver.error().Text}};
    highest = *highestEver;
    const auto known = database.StrayFiles();
    if (!known) return {{0, known.error().Text}};
    for (const auto& file : *known) strays.emplace(file.Name, file);
    auto expected = database.KeysWithContent();
    if (!expected) return {{0, expected.error().Text}};
    withSource = std::move(*expected);
  }
  const auto hostDirectory = fileSystem_.HostPath(directory);
  if (!hostDirectory) return {{0, hostDirectory.error().Text}};
  const auto files = ListContentFiles(*hostDirectory);
  if (!files) return {{0, files.error().Text}};
  std::vector<EntryKey> present;
  for (const auto& file : *files) {
    present.push_back(file.Key);
    if (std::ranges::binary_search(keys, file.Key)) continue;
    const auto stray = strays.find(file.Name);
    const bool isKnown = stray != strays.end() && IsStillThere(*hostDirectory, stray->second);
    if (isKnown && stray->second.IsDoomed) continue;
    // No entry has had the number yet: a process was killed while it delivered. Or the database is older
    // than the file, so the file stays.
    const bool isLeftOver = isKnown || (*archive != nullptr && file.Key > highest);
    findings.push_back({file.Key,
                        isLeftOver ? fmt::format("Rest einer abgebrochenen Zustellung: {}", file.Name)
                                   : fmt::format("Inhaltsdatei ohne Eintrag: {}", file.Name),
                        isLeftOver});
  }
  std::ranges::sort(present);
  for (const auto key : withSource) {
    if (!std::ranges::binary_search(present, key)) {
      findings.push_back({key, fmt::format("Eintrag ohne Inhaltsdatei: {}", Location(directory, key))});
    }
  }
  return findings;
}

}  // namespace velmora::store::embedded
