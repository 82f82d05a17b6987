// TwoPanes::OpenPathInPane: from a path that another program hands over to an archive and its entry.
#include <fmt/core.h>

#include <charconv>
#include <optional>

#include "base/paths.h"
#include "base/text.h"
#include "panes/two_panes.h"
#include "store/errors.h"

namespace velmora::panes {
namespace {

// The key that the name of an entry's file begins with: "0000001A.001".
std::optional<store::EntryKey> KeyOfFile(std::string_view fileName) {
  constexpr int hexadecimal = 16;
  const auto base = fileName.substr(0, fileName.find('.'));
  store::EntryKey key = 0;
  const auto [end, error] = std::from_chars(base.data(), base.data() + base.size(), key, hexadecimal);
  if (error != std::errc() || end != base.data() + base.size()) return std::nullopt;
  return key;
}

bool LiesIn(store::DvArchive& archive, store::EntryKey key, std::string_view fileName) {
  const auto entry = archive.GetEntry(key);
  const auto location = entry ? (*entry)->Fields().Get(store::tag::Location) : Result<store::FieldValue>{};
  return entry && location &&
         EqualsFold(FileNameOf(store::FieldText(*location)), fileName.substr(0, fileName.find('.')));
}

}  // namespace

bool TwoPanes::OpenDirectory(const std::string& directory) {
  auto& prompts = context_.run.frontEnd().prompts;
  auto archive = context_.session.Account->GetArchive(directory);
  if (archive) return left_.ShowArchive(*std::move(archive));
  if (archive.error().Number == store::store_error::NoAccess) {
    prompts.Message("Keine Zugriffsrechte",
                    fmt::format("Auf das Verzeichnis \n{}\n bestehen keine Zugriffsrechte.", directory),
                    run::Icon::Exclamation);
  } else {
    prompts.Message("Unbekanntes Verzeichnis",
                    fmt::format("Das Verzeichnis \n{}\n ist kein ZEB-Archiv.", directory),
                    run::Icon::Exclamation);
  }
  return false;
}

bool TwoPanes::OpenPathInPane(std::string_view path) {
  if (context_.session.Account == nullptr) return false;
  const auto last = FileNameOf(path);
  const std::string fileName(last.find('.') == std::string_view::npos ? std::string_view() : last);
  const auto given = StripBackslash(fileName.empty() ? path : DirectoryOf(path));
  if (!OpenDirectory(MapToDavidRoot(given, context_.session.Account->DavidRoot()))) return false;
  if (ShowsFiles()) (void)files_.ShowDirectory(left_.CurrentArchive()->ID());  // a failure has been reported
  if (fileName.empty()) return true;
  const auto key = KeyOfFile(fileName);
  if (key && LiesIn(*left_.CurrentArchive(), *key, fileName) && left_.ShowMessage(*key)) return true;
  context_.run.frontEnd().prompts.Message(
      "Unbekannte Datei",
      fmt::format("Die Datei {} hat keinen ZEB-Eintrag oder der ausgewählte ZEB-Eintrag ist ein Eintrag ohne "
                  "zugehörigen Dateiverweis.",
                  fileName),
      run::Icon::Exclamation);
  return false;
}

}  // namespace velmora::panes
