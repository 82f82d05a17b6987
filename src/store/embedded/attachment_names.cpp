#include "store/embedded/attachment_names.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view NameOfNone = "Anhang";
constexpr std::string_view UnknownExtension = ".bin";
constexpr std::string_view ForbiddenCharacters = ":*?\"<>|";
constexpr std::size_t LongestExtension = 32;  // bytes, with the point; longer ones are part of the name

// Media type and extension, in the order of the types (IANA's registry names the types; the extensions are
// the ones in common use).
constexpr std::array<std::pair<std::string_view, std::string_view>, 58> Extensions = {{
    {"application/ecmascript", ".js"},
    {"application/gzip", ".gz"},
    {"application/javascript", ".js"},
    {"application/json", ".json"},
    {"application/ms-tnef", ".dat"},
    {"application/msexcel", ".xls"},
    {"application/mspowerpoint", ".ppt"},
    {"application/msword", ".doc"},
    {"application/pdf", ".pdf"},
    {"application/pgp-encrypted", ".asc"},
    {"application/pgp-keys", ".asc"},
    {"application/pgp-signature", ".asc"},
    {"application/pkcs7-mime", ".p7m"},
    {"application/pkcs7-signature", ".p7s"},
    {"application/postscript", ".ps"},
    {"application/rtf", ".rtf"},
    {"application/vnd.ms-excel", ".xls"},
    {"application/vnd.ms-outlook", ".msg"},
    {"application/vnd.ms-powerpoint", ".ppt"},
    {"application/vnd.oasis.opendocument.presentation", ".odp"},
    {"application/vnd.oasis.opendocument.spreadsheet", ".ods"},
    {"application/vnd.oasis.opendocument.text", ".odt"},
    {"application/vnd.openxmlformats-officedocument.presentationml.presentation", ".pptx"},
    {"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet", ".xlsx"},
    {"application/vnd.openxmlformats-officedocument.wordprocessingml.document", ".docx"},
    {"application/x-gzip", ".gz"},
    {"application/x-pkcs7-mime", ".p7m"},
    {"application/x-pkcs7-signature", ".p7s"},
    {"application/x-tar", ".tar"},
    {"application/x-zip-compressed", ".zip"},
    {"application/xhtml+xml", ".xhtml"},
    {"application/xml", ".xml"},
    {"application/zip", ".zip"},
    {"audio/mpeg", ".mp3"},
    {"audio/ogg", ".ogg"},
    {"audio/wav", ".wav"},
    {"audio/x-wav", ".wav"},
    {"image/bmp", ".bmp"},
    {"image/gif", ".gif"},
    {"image/jpeg", ".jpg"},
    {"image/jpg", ".jpg"},
    {"image/png", ".png"},
    {"image/svg+xml", ".svg"},
    {"image/tiff", ".tif"},
    {"image/webp", ".webp"},
    {"message/delivery-status", ".txt"},
    {"message/disposition-notification", ".txt"},
    {"message/global", ".eml"},
    {"message/rfc822", ".eml"},
    {"text/calendar", ".ics"},
    {"text/css", ".css"},
    {"text/csv", ".csv"},
    {"text/html", ".htm"},
    {"text/plain", ".txt"},
    {"text/vcard", ".vcf"},
    {"text/x-vcard", ".vcf"},
    {"text/xml", ".xml"},
    {"video/mp4", ".mp4"},
}};
static_assert(std::ranges::is_sorted(Extensions, {}, &std::pair<std::string_view, std::string_view>::first));

std::string_view ExtensionOfType(std::string_view mediaType) {
  const auto found = std::ranges::lower_bound(Extensions, mediaType, {},
                                              &std::pair<std::string_view, std::string_view>::first);
  return found != Extensions.end() && found->first == mediaType ? found->second : UnknownExtension;
}

// Characters without a glyph that turn the direction of what follows: they make "exe.txt" of "txt.exe".
bool IsDirectionMark(char32_t character) {
  return character == 0x200E || character == 0x200F || (character >= 0x202A && character <= 0x202E) ||
         (character >= 0x2066 && character <= 0x2069);
}

std::string SafeCharacters(std::string_view name) {
  std::string safe;
  for (std::size_t position = 0; position < name.size();) {
    const auto character = NextCharacter(name, position);
    if (character < 0x20 || (character >= 0x7F && character <= 0x9F) || IsDirectionMark(character)) continue;
    const bool isForbidden =
        character < 0x80 && ForbiddenCharacters.find(static_cast<char>(character)) != std::string_view::npos;
    AppendCharacter(safe, isForbidden ? U'_' : character);
  }
  return safe;
}

// Blanks in front, and the blanks and points at the end that Windows drops from a file name.
std::string_view TrimName(std::string_view name) {
  name = Trim(name);
  while (name.ends_with('.') || name.ends_with(' ')) name.remove_suffix(1);
  return name;
}

std::string_view CutBytes(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0U) == 0x80U) --bytes;
  return text.substr(0, bytes);
}

}  // namespace

std::string MakeAttachmentName(std::string_view name, std::string_view mediaType) {
  const auto separator = name.find_last_of("/\\");
  if (separator != std::string_view::npos) name.remove_prefix(separator + 1);
  const auto safe = SafeCharacters(name);
  auto base = TrimName(safe);
  if (base.empty()) base = NameOfNone;
  auto extension = ExtensionOfType(mediaType);
  if (const auto point = base.rfind('.');
      point != std::string_view::npos && point > 0 && base.size() - point <= LongestExtension) {
    extension = base.substr(point);
    base = base.substr(0, point);
  }
  std::string result(CutBytes(base, LongestAttachmentName - extension.size()));
  result.append(extension);
  return result;
}

}  // namespace velmora::store::embedded
