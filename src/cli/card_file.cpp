#include "cli/card_file.h"

#include <cstdint>

#include "addresses/vcard_reader.h"
#include "store/errors.h"

namespace velmora::cli {
namespace {

// It stands in memory as a whole.
constexpr std::int64_t LargestCardFile = std::int64_t{1} << 30;

}  // namespace

Result<std::string> ReadCardFile(platform::FileSystem& fileSystem, std::string_view path) {
  const auto entry = fileSystem.GetEntry(path);
  if (!entry) return Fail(entry.error());
  if (entry->IsFolder) return Fail(store::store_error::WrongKind, "Das ist ein Verzeichnis");
  if (entry->Size > LargestCardFile) return Fail(store::store_error::Failed, "Die Datei ist zu groß");
  return fileSystem.ReadFile(path);
}

Error NoCard() { return {store::store_error::WrongKind, "Die Datei enthält keine vCard"}; }

Result<store::AddressValues> ReadFirstCard(platform::FileSystem& fileSystem, std::string_view path) {
  const auto bytes = ReadCardFile(fileSystem, path);
  if (!bytes) return Fail(bytes.error());
  auto card = addresses::VCardReader(*bytes).Next();
  if (!card || card->Values.empty()) return tl::unexpected(NoCard());
  return std::move(card->Values);
}

}  // namespace velmora::cli
