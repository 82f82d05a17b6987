// Checking an archive's database and content files against each other.
#include <fmt/core.h>

#include <algorithm>

#include "base/paths.h"
#include "store/embedded/content_files.h"
#include "store/embedded/entry_store.h"

namespace velmora::store::embedded {

std::vector<EntryStore::Finding> EntryStore::Check(std::string_view directory) {
  std::vector<Finding> findings;
  std::vector<EntryKey> keys, withSource;
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
    if (!std::ranges::binary_search(keys, file.Key)) {
      findings.push_back({file.Key, fmt::format("Inhaltsdatei ohne Eintrag: {}", file.Name)});
    }
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
