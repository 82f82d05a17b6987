#include "panes/row_icons.h"

#include <algorithm>

#include "base/text.h"
#include "store/icon_keys.h"
#include "store/vocabulary.h"

namespace velmora::panes {
namespace {

constexpr std::string_view ExecutableExtension = "EXE", IconFileExtension = "ICO";

// The modes count on from the first of their icons.
constexpr std::size_t RoutingIconOffset = static_cast<std::size_t>(
    std::ranges::find(store::ListImageKeys, "IForwarding") - store::ListImageKeys.begin());
constexpr std::size_t RoutingIconCount = 7;
static_assert(store::ListImageKeys[RoutingIconOffset + RoutingIconCount - 1] == "IGeneral");

bool IsExtensionByte(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || value >= 0x80;
  return isLetter || (byte >= '0' && byte <= '9') || byte == '_' || byte == '-' || byte == '+';
}

}  // namespace

std::string IconExtension(std::string_view fileName) {
  constexpr std::size_t longest = 16;
  const auto dot = fileName.rfind('.');
  if (dot == std::string_view::npos) return {};
  const auto extension = fileName.substr(dot + 1);
  if (extension.size() > longest || !std::ranges::all_of(extension, IsExtensionByte)) return {};
  return ToUpper(extension);
}

RowIcon MessageIcon(const MessageRow& row, bool displayFileIcons) {
  const bool hasContent = !row.Attachments.empty();
  const bool isExternal = row.DisplayType == store::display_type::ExternalDocument && hasContent;
  if (displayFileIcons && (isExternal || row.AttachmentCount == 1)) {
    const auto extension = IconExtension(row.Attachments);
    // The image of a program is in the file, which lies in the mail.
    if (extension == ExecutableExtension) return {std::string(StandardExecutableKey)};
    if (!extension.empty() && extension != IconFileExtension) return {"ED" + extension};
  }
  return {std::string(store::ItemIconKey(row.DisplayType, hasContent))};
}

std::string_view RoutingModeIcon(int mode) {
  const bool isKnown = mode >= 0 && static_cast<std::size_t>(mode) < RoutingIconCount;
  return store::ListImageKeys[RoutingIconOffset + (isKnown ? static_cast<std::size_t>(mode) : 0)];
}

RowIcon FileIcon(const FileRow& row, bool displayFileIcons) {
  if (row.EntryType == entry_type::DirBackEntry) return {std::string(FolderBackKey)};
  if (row.EntryType == entry_type::DirEntry) return {std::string(FolderKey)};
  const auto extension = displayFileIcons ? IconExtension(row.Name) : std::string();
  if (extension.empty()) return {std::string(SimpleFileKey)};
  RowIcon icon{"DI" + extension};
  if (extension == ExecutableExtension || extension == IconFileExtension) {
    icon.FilePath = row.FullPath;
    icon.Fallback = extension == ExecutableExtension ? StandardExecutableKey : SimpleFileKey;
  }
  return icon;
}

}  // namespace velmora::panes
