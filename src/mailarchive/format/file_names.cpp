#include "mailarchive/format/file_names.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/code_page.h"
#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/format/marker_names.h"

namespace velmora::mailarchive {
namespace {

struct Replacement {
  std::string_view From, To;
};

// No replacement yields a character that another one takes, so the order of the rows does not matter and one
// pass over the text serves.
constexpr Replacement AsciiReplacements[] = {
    {"/", "-"}, {"\\", "-"}, {"\"", "'"}, {"?", " "}, {"*", "+"}, {":", "-"},
    {".", "_"}, {"~", "-"},  {"|", "-"},  {"<", "("}, {">", ")"},
};
constexpr Replacement LetterReplacements[] = {
    {"ä", "ae"}, {"Ä", "AE"}, {"ö", "oe"}, {"Ö", "OE"}, {"ü", "ue"}, {"Ü", "UE"}, {"ß", "ss"},
};

// What each byte below 0x80 becomes.
constexpr auto AsciiMap = [] {
  std::array<char, 128> map{};
  for (std::size_t code = 0; code < map.size(); ++code) map[code] = static_cast<char>(code < 32 ? ' ' : code);
  for (const auto& row : AsciiReplacements) map[static_cast<std::size_t>(row.From[0])] = row.To[0];
  return map;
}();

constexpr bool IsAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

}  // namespace

std::string SanitizeFileName(std::string_view text, bool replaceHash) {
  std::string name;
  name.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    if (IsAscii(text[i])) {
      const char byte = AsciiMap[static_cast<unsigned char>(text[i++])];
      name += byte == '#' && replaceHash ? '_' : byte;
      continue;
    }
    const auto* letter = std::ranges::find_if(
        LetterReplacements, [&](const Replacement& row) { return text.substr(i).starts_with(row.From); });
    if (letter != std::end(LetterReplacements)) {
      name += letter->To;
      i += letter->From.size();
    } else {
      name += text[i++];
    }
  }
  if (std::ranges::all_of(name, IsAscii)) return name;
  return FromCodePage(ToCodePage(name, Unmappable::Underscore));
}

std::string EntryBaseName(std::string_view subject) {
  // Only the beginning can matter, so a subject of megabytes costs no more than a short one.
  const auto beginning = LeftCharacters(subject, BaseNameLength);
  return std::string(LeftCharacters(SanitizeFileName(beginning, true), BaseNameLength));
}

std::string ArchiveDirectoryName(std::string_view displayName, std::string_view archiveId) {
  std::string name = SanitizeFileName(displayName, false);
  if (!Trim(name).empty()) return name;
  return SanitizeFileName(FileNameOf(StripBackslash(NormalizePath(archiveId))), false);
}

bool IsMailArcHelperFile(std::string_view fileName) {
  constexpr std::string_view Names[] = {directory_file::SubjectIndex, directory_file::AddressIndex,
                                        directory_file::Launcher};
  constexpr std::string_view Extensions[] = {DescriptorExtension, ".smtp", ".vla"};

  const auto equalsName = [&](std::string_view name) { return EqualsFold(fileName, name); };
  if (std::ranges::any_of(Names, equalsName) || std::ranges::any_of(LegacyMarkerNames, equalsName))
    return true;
  const auto point = fileName.rfind('.');
  return point != std::string_view::npos && std::ranges::any_of(Extensions, [&](std::string_view extension) {
           return EqualsFold(fileName.substr(point), extension);
         });
}

}  // namespace velmora::mailarchive
