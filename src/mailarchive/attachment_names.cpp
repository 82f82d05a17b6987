#include "mailarchive/attachment_names.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/device_names.h"
#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/marker_names.h"

namespace velmora::mailarchive {

namespace {

// What stands in for a name of which nothing is left.
constexpr std::string_view Nameless = "Anhang";

constexpr std::array NamesBesidePages = {directory_file::DateIndex, directory_file::SubjectIndex,
                                         directory_file::AddressIndex, directory_file::Autorun,
                                         directory_file::Launcher};

// Room for the number of a name that is taken, below the 255 bytes that a file name can have.
constexpr std::size_t LongestName = 200;
constexpr std::size_t LongestExtension = 32;

bool CanStandInFileName(std::string_view text) {
  return text.find_first_of(R"(/\:*?"<>|)") == std::string_view::npos &&
         BlankControlCharacters(text) == text && IsValidUtf8(text);
}

// As it stands, as far as a file name can hold it.
std::string SafeCharacters(std::string_view text) {
  if (!CanStandInFileName(text)) return SanitizeFileName(MakeValidUtf8(text), true);
  return FromCodePage(ToCodePage(text, Unmappable::Underscore));
}

// Windows drops blanks and points at the end of a name.
std::string WithLastingEnd(std::string name) {
  for (std::size_t end = name.size(); end > 0 && (name[end - 1] == ' ' || name[end - 1] == '.'); --end) {
    name[end - 1] = '_';
  }
  return name;
}

std::string OrNameless(std::string name) {
  const bool empty = name.find_first_not_of(" .") == std::string::npos;
  return empty ? std::string(Nameless) : name;
}

// A name too long for a file loses characters ahead of its extension.
std::string Shorten(std::string name) {
  if (name.size() <= LongestName) return name;
  const std::size_t point = name.rfind('.');
  const bool keepsExtension = point != std::string::npos && name.size() - point <= LongestExtension;
  const std::string extension = keepsExtension ? name.substr(point) : "";
  std::size_t end = 0;
  for (std::size_t position = 0; position <= LongestName - extension.size();) {
    end = position;
    (void)NextCharacter(name, position);  // only its length counts
  }
  return name.substr(0, end) + extension;
}

std::string Fit(std::string name) { return WithLastingEnd(Shorten(std::move(name))); }

bool IsMarkerName(std::string_view name) {
  return std::ranges::any_of(MarkerNames, [&](const MarkerName& marker) {
    return EqualsFold(name, marker.Name) || (!marker.Legacy.empty() && EqualsFold(name, marker.Legacy));
  });
}

bool IsNameBesidePages(std::string_view name) {
  return std::ranges::any_of(NamesBesidePages,
                             [&](std::string_view reserved) { return EqualsFold(name, reserved); });
}

}  // namespace

std::string AttachmentFileName(std::string_view name, std::string_view previous) {
  const std::size_t point = name.rfind('.');
  if (point == std::string_view::npos) {
    return previous.empty() ? Fit(OrNameless(SanitizeFileName(name, true))) : std::string(previous);
  }
  return Fit(OrNameless(SanitizeFileName(name.substr(0, point), true) + "." +
                        SafeCharacters(name.substr(point + 1))));
}

std::string PlainAttachmentFileName(std::string_view name) {
  const bool usable = CanStandInFileName(name) && name.find_first_not_of(" .") != std::string_view::npos;
  return usable ? Fit(SafeCharacters(name)) : AttachmentFileName(name, "");
}

std::string AvoidReservedName(std::string_view name, bool besidePages) {
  // Descriptors are found by their extension; one that came with a message could name any file of the
  // directory.
  if (besidePages && name.size() >= DescriptorExtension.size() &&
      EqualsFold(name.substr(name.size() - DescriptorExtension.size()), DescriptorExtension)) {
    return std::string(name) + "_";
  }
  const bool isReserved =
      IsMarkerName(name) || IsDeviceName(name) || (besidePages && IsNameBesidePages(name));
  if (!isReserved) return std::string(name);
  const std::size_t point = std::min(name.find('.'), name.size());
  return std::string(name.substr(0, point)) + "1" + std::string(name.substr(point));
}

}  // namespace velmora::mailarchive
