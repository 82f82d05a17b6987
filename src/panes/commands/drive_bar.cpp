#include "panes/commands/drive_bar.h"

#include <fmt/format.h>

#include <array>

#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"

namespace velmora::panes {
namespace {

using platform::Drive;
using platform::DriveInformation;
using platform::DriveType;

struct TypeText {
  DriveType Type;
  std::string_view Text, IconKey;
};
constexpr std::array TypeTexts = {
    TypeText{DriveType::Removeable, "Removeable", "RemDrv"},
    TypeText{DriveType::Harddisk, "Harddisk", "Hdisk"},
    TypeText{DriveType::Network, "Network", "Netwrk"},
    TypeText{DriveType::CdRom, "CD-ROM", "Cdisk"},
};

const TypeText& TextOf(DriveType type) {
  for (const TypeText& text : TypeTexts) {
    if (text.Type == type) return text;
  }
  return TypeTexts[1];
}

DriveButton ButtonOf(platform::FileSystem& fileSystem, const Drive& drive) {
  // A drive that is not ready has its button, and nothing is known of it.
  const DriveInformation information =
      platform::DriveInformationOf(fileSystem, drive.Name).value_or(DriveInformation());
  DriveButton button;
  button.Key = drive.Name;
  button.Caption = drive.ShareName.empty() ? drive.Name : fmt::format("{} {}", drive.Name, drive.ShareName);
  button.IconKey = TextOf(information.Type).IconKey;
  button.ToolTip = DriveInformationText(drive, information);
  return button;
}

}  // namespace

std::vector<DriveButton> DriveButtons(platform::FileSystem& fileSystem) {
  std::vector<DriveButton> buttons;
  for (const Drive& drive : fileSystem.Drives()) buttons.push_back(ButtonOf(fileSystem, drive));
  return buttons;
}

std::string DriveOf(platform::FileSystem& fileSystem, std::string_view directory) {
  std::string found;
  std::size_t longest = 0;
  for (const Drive& drive : fileSystem.Drives()) {
    for (const std::string& root : {drive.Name, drive.ShareName}) {
      if (root.size() > longest && IsSameOrBelow(directory, root)) {
        longest = root.size();
        found = drive.Name;
      }
    }
  }
  return found;
}

std::string DriveInformationText(const Drive& drive, const DriveInformation& information) {
  std::vector<std::string> lines;
  const auto add = [&](std::string_view label, std::string_view value) {
    lines.push_back(std::string(label) + std::string(value));
  };
  add("Volumename: ", information.VolumeName);
  add("Laufwerk: ", drive.Name);
  add("Typ: ", TextOf(information.Type).Text);
  add("Filesystem: ", information.FileSystemName);
  add("Bereit: ", drive.IsReady ? "Ja" : "Nein");
  add("Größe: ", FormatSize(information.Size));
  add("Belegt: ", FormatSize(information.Used));
  add("Frei: ", FormatSize(information.Free));
  add("Verfügbar für Benutzer: ", FormatSize(information.Available));
  add("Freigabename: ", drive.ShareName);
  return Join(lines, "\r\n");
}

}  // namespace velmora::panes
