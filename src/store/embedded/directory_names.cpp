#include "store/embedded/directory_names.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "store/archive_record.h"

namespace velmora::store::embedded {
namespace {

constexpr std::array<std::pair<char32_t, std::string_view>, 7> WrittenOut{
    {{U'Ä', "AE"}, {U'Ö', "OE"}, {U'Ü', "UE"}, {U'ä', "AE"}, {U'ö', "OE"}, {U'ü', "UE"}, {U'ß', "SS"}}};
constexpr std::string_view FallbackName = "ARCHIV";
// Beside control characters, which CleanArchiveName replaces: what Windows names cannot hold, and the point,
// so that no directory can be taken for one of the archive's own files.
constexpr std::string_view Forbidden = ".:*?\"<>|{}";

std::string UsableDirectoryName(std::string_view text) {
  std::string name = CleanArchiveName(Trim(text));
  for (char& character : name)
    if (Forbidden.find(character) != std::string_view::npos) character = '_';
  return std::string(Trim(LeftCharacters(name, DirectoryNameLength)));
}

}  // namespace

GivenName SplitGivenName(std::string_view name) {
  const std::size_t open = name.find('{');
  const std::size_t close = open == std::string_view::npos ? open : name.find('}', open);
  if (close == std::string_view::npos) return {std::string(name), ""};
  std::string display(name.substr(0, open));
  display += name.substr(close + 1);
  return {std::move(display), UsableDirectoryName(name.substr(open + 1, close - open - 1))};
}

std::string DirectoryNameFor(std::string_view displayName) {
  std::string name;
  for (std::size_t position = 0; position < displayName.size() && name.size() < DirectoryNameLength;) {
    const char32_t character = NextCharacter(displayName, position);
    if ((character >= U'0' && character <= U'9') || (character >= U'A' && character <= U'Z')) {
      name += static_cast<char>(character);
    } else if (character >= U'a' && character <= U'z') {
      name += static_cast<char>(character - U'a' + U'A');
    } else if (const auto found =
                   std::ranges::find(WrittenOut, character, &std::pair<char32_t, std::string_view>::first);
               found != WrittenOut.end()) {
      name += found->second;
    }
  }
  if (name.empty()) name = FallbackName;
  return name.substr(0, DirectoryNameLength);
}

std::string_view NumberedStem(std::string_view base, std::size_t digits) {
  return LeftCharacters(base, DirectoryNameLength - std::min(digits, DirectoryNameLength));
}

}  // namespace velmora::store::embedded
