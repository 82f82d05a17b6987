// Where each setting is stored: the one table from which loading, saving and wiping run, in this order.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "settings/options.h"
#include "settings/values.h"

namespace velmora::settings {

namespace section {
inline constexpr std::string_view Information = "Information";
inline constexpr std::string_view GlobalSettings = "GlobalSettings";
inline constexpr std::string_view Options = "Options";
inline constexpr std::string_view PathMappings = "PathMappings";
}  // namespace section

// Names of values that are written one by one.
namespace name {
inline constexpr std::string_view MajorVersion = "MajorVersion";
inline constexpr std::string_view MinorVersion = "MinorVersion";
inline constexpr std::string_view Revison = "Revison";  // readers expect exactly this name
inline constexpr std::string_view Application = "Application";
inline constexpr std::string_view CopyRight = "CopyRight";
inline constexpr std::string_view SaveCmdLineInFile = "SaveCmdLineInFile";
inline constexpr std::string_view LastUsedServer = "LastUsedServer";
inline constexpr std::string_view AutoSaveSettings = "AutoSaveSettings";
inline constexpr std::string_view TICIntegration = "TICIntegration";
inline constexpr std::string_view ForceStandardRights = "ForceStandardRights";
inline constexpr std::string_view TempDirPath = "TempDirPath";
}  // namespace name

enum class Place { GlobalSettings, Options, Server };
// What a new version of the program does to a value.
enum class NewVersion { Wipes, Keeps };

using SwitchMember = bool Options::*;
using NumberMember = std::int32_t Options::*;
using TextMember = std::string Options::*;

struct Setting {
  Place Where;
  std::string_view Name;
  std::variant<SwitchMember, NumberMember, TextMember> Member;
  NewVersion OnNewVersion = NewVersion::Wipes;
};

// LastUsedServer stands last but for the last files, since it is written last.
std::span<const Setting> SettingsTable();
// The six settings that remember a file of a dialog.
std::span<const Setting> LastFilesTable();

// "ServerSettings_<server>", with the server's name as it stands.
std::string ServerSection(std::string_view server);
std::string SectionName(Place place, std::string_view server);

Value ValueOf(const Options& options, const Setting& setting);
// A stored value into its member; one of another type leaves the member as it is.
void SetValueOf(Options& options, const Setting& setting, const Value& value);

}  // namespace velmora::settings
