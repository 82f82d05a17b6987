#include "mailarchive/attachment_names.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/text.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/marker_names.h"

namespace velmora::mailarchive {

namespace {

// What stands in for a name of which nothing is left.
constexpr std::string_view Nameless = "Anhang";

constexpr std::array<std::string_view, 5> NamesBesidePages = {"index.html", "index2.html", "index3.html",
                                                              "autorun.inf", "shellexec.exe"};

bool CanStandInFileName(std::string_view text) {
  return text.find_first_of(R"(/\:*?"<>|)") == std::string_view::npos &&
         BlankControlCharacters(text) == text && IsValidUtf8(text);
}

std::string SafeExtension(std::string_view extension) {
  if (!CanStandInFileName(extension)) return SanitizeFileName(MakeValidUtf8(extension), true);
  return FromCodePage(ToCodePage(extension, Unmappable::Underscore));
}

std::string OrNameless(std::string name) {
  const bool empty = name.find_first_not_of(" .") == std::string::npos;
  return empty ? std::string(Nameless) : name;
}

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
    return previous.empty() ? OrNameless(SanitizeFileName(name, true)) : std::string(previous);
  }
  return OrNameless(SanitizeFileName(name.substr(0, point), true) + "." +
                    SafeExtension(name.substr(point + 1)));
}

std::string PlainAttachmentFileName(std::string_view name) {
  const bool usable = CanStandInFileName(name) && name.find_first_not_of(" .") != std::string_view::npos;
  return usable ? std::string(name) : AttachmentFileName(name, "");
}

std::string AvoidReservedName(std::string_view name, bool besidePages) {
  if (!IsMarkerName(name) && !(besidePages && IsNameBesidePages(name))) return std::string(name);
  const std::size_t point = std::min(name.find('.'), name.size());
  return std::string(name.substr(0, point)) + "1" + std::string(name.substr(point));
}

}  // namespace velmora::mailarchive
