// Checking an archive's database and content files against each other.
#include <fmt/core.h>
#include <unistd.h>

#include <algorithm>
#include <map>

#include "base/paths.h"
#include "store/archive_files.h"
#include "store/embedded/content_files.h"
#include "store/embedded/entry_store.h"
#include "store/errors.h"

namespace velmora::store::embedded {
namespace {

// What the database says of an archive's content files.
struct Expectation {
  bool HasDatabase = false;
  std::vector<EntryKey> Keys;  // rising
  EntryKey Highest = 0;        // that was ever given
  std::map<std::string, StrayFile> Strays;
  std::vector<MessageDatabase::ContentNeed> Needs;
};

// Opened for reading only: whoever looks changes nothing, not even what SQLite would undo after a crash.
Result<Expectation> ReadExpectation(platform::FileSystem& fileSystem, std::string_view directory,
                                    std::vector<EntryStore::Finding>& findings) {
  Expectation expectation;
  const auto path = JoinPath(directory, archive_file::Messages);
  const auto hostPath = fileSystem.HostPath(path);
  if (!hostPath) return Fail(hostPath.error());
  if (!fileSystem.FileExists(path) && !fileSystem.FolderExists(path)) return expectation;
  const auto database = MessageDatabase::Open(*hostPath, path, Sqlite::Mode::ReadOnly);
  if (!database) return Fail(database.error());
  const auto hasTables = (*database)->HasTables();
  if (!hasTables) return Fail(hasTables.error());
  if (!*hasTables) return expectation;
  const auto damage = (*database)->FindDamage();
  if (!damage) return Fail(damage.error());
  if (!damage->empty()) findings.push_back({0, fmt::format("Die Datenbank ist beschädigt: {}", *damage)});

  expectation.HasDatabase = true;
  auto keys = (*database)->AllKeys();
  if (!keys) return Fail(keys.error());
  expectation.Keys = std::move(*keys);
  const auto highest = (*database)->HighestKeyEver();
  if (!highest) return Fail(highest.error());
  expectation.Highest = *highest;
  const auto strays = (*database)->StrayFiles();
  if (!strays) return Fail(strays.error());
  for (const auto& file : *strays) expectation.Strays.emplace(file.Name, file);
  auto needs = (*database)->ContentNeeds();
  if (!needs) return Fail(needs.error());
  expectation.Needs = std::move(*needs);
  return expectation;
}

}  // namespace

std::vector<EntryStore::Finding> EntryStore::Check(std::string_view directory) {
  if (const auto closed = pool_.CommitAndClose(directory); !closed) return {{0, closed.error().Text}};
  std::vector<Finding> findings;
  const auto expected = ReadExpectation(fileSystem_, directory, findings);
  if (!expected) {
    const bool isNote = expected.error().Number == store_error::Unfinished;
    findings.push_back({0, expected.error().Text, isNote});
    return findings;
  }
  const auto hostDirectory = fileSystem_.HostPath(directory);
  const auto files = hostDirectory ? ListContentFiles(*hostDirectory)
                                   : Result<std::vector<FoundContentFile>>(Fail(hostDirectory.error()));
  if (!files) {
    findings.push_back({0, files.error().Text});
    return findings;
  }
  for (const auto& file : *files) {
    if (std::ranges::binary_search(expected->Keys, file.Key)) continue;
    const auto stray = expected->Strays.find(file.Name);
    const bool isKnown = stray != expected->Strays.end() && IsStillThere(*hostDirectory, stray->second);
    if (isKnown && stray->second.IsDoomed) continue;
    // No entry has had the number yet: a process was killed while it delivered. Or the database is older
    // than the file, so the file stays.
    const bool isLeftOver = isKnown || (expected->HasDatabase && file.Key > expected->Highest);
    findings.push_back({file.Key,
                        isLeftOver ? fmt::format("Rest einer abgebrochenen Zustellung: {}", file.Name)
                                   : fmt::format("Inhaltsdatei ohne Eintrag: {}", file.Name),
                        isLeftOver});
  }
  for (const auto& [key, number, size] : expected->Needs) {
    const auto name = ContentFileName(key, number);
    const auto present = SizeOfContentFile(*hostDirectory + "/" + name);
    if (!present) {
      findings.push_back({key, fmt::format("Eintrag ohne Inhaltsdatei: {}", JoinPath(directory, name))});
    } else if (access((*hostDirectory + "/" + name).c_str(), R_OK) != 0) {
      findings.push_back({key, fmt::format("Die Inhaltsdatei ist nicht lesbar: {}", name)});
    } else if (*present < size) {
      findings.push_back({key, fmt::format("Die Inhaltsdatei ist unvollständig: {}", name)});
    }
  }
  return findings;
}

}  // namespace velmora::store::embedded
