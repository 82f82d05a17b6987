#include "settings/options_table.h"

#include <array>
#include <optional>
#include <type_traits>

namespace velmora::settings {
namespace {

// Some values are kept by a new version, which begins with the defaults for all others.
constexpr std::array Table = {
    Setting{Place::GlobalSettings, "ViewMode", &Options::ViewMode},
    Setting{Place::GlobalSettings, "FrmWidth", &Options::FrmWidth},
    Setting{Place::GlobalSettings, "FrmHeight", &Options::FrmHeight},
    Setting{Place::GlobalSettings, "FrmTop", &Options::FrmTop},
    Setting{Place::GlobalSettings, "WindowsState", &Options::WindowsState},
    Setting{Place::GlobalSettings, "VwWidth", &Options::VwWidth},
    Setting{Place::GlobalSettings, "VwHeight", &Options::VwHeight},
    Setting{Place::GlobalSettings, "VwTop", &Options::VwTop},
    Setting{Place::GlobalSettings, "VwlLeft", &Options::VwlLeft},
    Setting{Place::GlobalSettings, "VwrLeft", &Options::VwrLeft},
    Setting{Place::GlobalSettings, "DnWidth", &Options::DnWidth},
    Setting{Place::GlobalSettings, "DnTop", &Options::DnTop},
    Setting{Place::GlobalSettings, "LastActiveView", &Options::LastActiveView},
    Setting{Place::GlobalSettings, "LZEBColumnWidths", &Options::LZEBColumnWidths},
    Setting{Place::GlobalSettings, "RZEBColumnWidths", &Options::RZEBColumnWidths},
    Setting{Place::GlobalSettings, "FSColumnWidths", &Options::FSColumnWidths},
    Setting{Place::GlobalSettings, "LZEBRoutingColumnWidths", &Options::LZEBRoutingColumnWidths},
    Setting{Place::GlobalSettings, "RZEBRoutingColumnWidths", &Options::RZEBRoutingColumnWidths},
    Setting{Place::GlobalSettings, "EnableBalloonTips", &Options::EnableBalloonTips},
    Setting{Place::GlobalSettings, "DisplayLZEBArchiveFullPath", &Options::DisplayLZEBArchiveFullPath},
    Setting{Place::GlobalSettings, "DisplayRZEBArchiveFullPath", &Options::DisplayRZEBArchiveFullPath},
    Setting{Place::GlobalSettings, "DisplayFolderShareName", &Options::DisplayFolderShareName},
    Setting{Place::GlobalSettings, "SaveCmdLineInFile", &Options::SaveCmdLineMode},
    Setting{Place::Options, "AutoSaveSettings", &Options::AutoSaveSettings, NewVersion::Keeps},
    Setting{Place::Options, "LastUserRights", &Options::LastUserRights},
    Setting{Place::Options, "TICDisplayFile", &Options::TICDisplayFile},
    Setting{Place::Options, "TICIntegration", &Options::TICIntegration},
    Setting{Place::Options, "DisplayFileIcons", &Options::DisplayFileIcons},
    Setting{Place::Options, "DisplayArcSize", &Options::DisplayArcSize},
    Setting{Place::Options, "DisplayCircularReferences", &Options::DisplayCircularReferences},
    Setting{Place::Options, "DisplayHiddenChar", &Options::DisplayHiddenChar},
    Setting{Place::Options, "SeparateAttachmentsFolder", &Options::SeparateAttachmentsFolder},
    Setting{Place::Options, "AttachmentFolder", &Options::AttachmentFolder},
    Setting{Place::Options, "HTMLMailFolder", &Options::HTMLMailFolder},
    Setting{Place::Options, "FaxFolder", &Options::FaxFolder},
    Setting{Place::Options, "EMLFolder", &Options::EMLFolder},
    Setting{Place::Options, "VCFFolder", &Options::VCFFolder},
    Setting{Place::Options, "VoiceMailFolder", &Options::VoiceMailFolder},
    Setting{Place::Options, "CommentFolder", &Options::CommentFolder},
    Setting{Place::Options, "NoDuplicateFiles", &Options::NoDuplicateFiles},
    Setting{Place::Options, "MakeIndex", &Options::MakeIndex},
    Setting{Place::Options, "CreateAutorunInf", &Options::CreateAutorunInf},
    Setting{Place::Options, "DeleteArchive", &Options::DeleteArchive},
    Setting{Place::Options, "DeleteFolder", &Options::DeleteFolder},
    Setting{Place::Options, "ClearErrorLog", &Options::ClearErrorLog},
    Setting{Place::Options, "CopyAsViewed", &Options::CopyAsViewed},
    Setting{Place::Options, "RefreshArchiveSyncToTreeView", &Options::RefreshArchiveSyncToTreeView},
    Setting{Place::Options, "DateIndexSortedUp", &Options::DateIndexSortedUp},
    Setting{Place::Options, "MultiPartFiles", &Options::MultiPartFiles},
    Setting{Place::Options, "HideMailArcHelperFiles", &Options::HideMailArcHelperFiles},
    Setting{Place::Options, "SizeCheck", &Options::SizeCheck},
    Setting{Place::Options, "AddressExportFormat", &Options::AddressExportFormat},
    Setting{Place::Options, "AddressImportFormat", &Options::AddressImportFormat},
    Setting{Place::Options, "CSVSeparator", &Options::CSVSeparator},
    Setting{Place::Options, "NABSeparator", &Options::NABSeparator},
    Setting{Place::Options, "DvItemFilter", &Options::DvItemFilter},
    Setting{Place::Options, "DvInhibitItems", &Options::DvInhibitItems},
    Setting{Place::Options, "MaxItemCount", &Options::MaxItemCount},
    Setting{Place::Options, "LZEBViewModeRouting", &Options::LZEBViewModeRouting},
    Setting{Place::Options, "RZEBViewModeRouting", &Options::RZEBViewModeRouting},
    Setting{Place::Options, "LZEBViewMode", &Options::LZEBViewMode},
    Setting{Place::Options, "RZEBViewMode", &Options::RZEBViewMode},
    Setting{Place::Options, "DesignPath", &Options::DesignPath},
    Setting{Place::Options, "ArchiveDesign", &Options::ArchiveDesign},
    Setting{Place::Options, "ExcelAddressForm", &Options::ExcelAddressForm},
    Setting{Place::Options, "CSVAddressForm", &Options::CSVAddressForm},
    Setting{Place::Options, "GWAddressForm", &Options::GWAddressForm},
    Setting{Place::Options, "ExcelAddressPath", &Options::ExcelAddressPath},
    Setting{Place::Options, "CSVAddressPath", &Options::CSVAddressPath},
    Setting{Place::Options, "VCFAddressPath", &Options::VCFAddressPath},
    Setting{Place::Options, "GWAddressPath", &Options::GWAddressPath},
    Setting{Place::Options, "DefaultAddressbookName", &Options::DefaultAddressbookName},
    Setting{Place::Options, "ExcelUserListPath", &Options::ExcelUserListPath},
    Setting{Place::Options, "CSVUserListPath", &Options::CSVUserListPath},
    Setting{Place::Options, "ExcelUserListForm", &Options::ExcelUserListForm},
    Setting{Place::Options, "CSVUserListForm", &Options::CSVUserListForm},
    Setting{Place::Options, "UserListExportFormat", &Options::UserListExportFormat},
    Setting{Place::Options, "UserListSeparator", &Options::UserListSeparator},
    Setting{Place::Options, "LZEBSortingMode", &Options::LZEBSortingMode},
    Setting{Place::Options, "RZEBSortingMode", &Options::RZEBSortingMode},
    Setting{Place::Options, "FSSortingMode", &Options::FSSortingMode},
    Setting{Place::Options, "LZEBSortingDirection", &Options::LZEBSortingDirection},
    Setting{Place::Options, "RZEBSortingDirection", &Options::RZEBSortingDirection},
    Setting{Place::Options, "FSSortingDirection", &Options::FSSortingDirection},
    Setting{Place::Options, "LZEBRoutingSortingMode", &Options::LZEBRoutingSortingMode},
    Setting{Place::Options, "RZEBRoutingSortingMode", &Options::RZEBRoutingSortingMode},
    Setting{Place::Options, "LZEBRoutingSortingDirection", &Options::LZEBRoutingSortingDirection},
    Setting{Place::Options, "RZEBRoutingSortingDirection", &Options::RZEBRoutingSortingDirection},
    Setting{Place::Options, "AddressOverwrite", &Options::AddressOverwrite},
    Setting{Place::Options, "AddressEnableSubarchive", &Options::AddressEnableSubarchive},
    Setting{Place::Options, "UserListOverwrite", &Options::UserListOverwrite},
    Setting{Place::Options, "ExternalApplication", &Options::ExternalApplication},
    Setting{Place::Options, "ArchiveFormCopyRight", &Options::ArchiveFormCopyRight},
    Setting{Place::Options, "ArchiveFormComment", &Options::ArchiveFormComment},
    Setting{Place::Server, "LastUsedPath", &Options::LastUsedPath},
    Setting{Place::Server, "TempDirPath", &Options::TempDirPath},
    Setting{Place::Server, "LastUsedCArchive", &Options::LastUsedCArchive},
    Setting{Place::Server, "LastUsedDArchive", &Options::LastUsedDArchive},
    Setting{Place::Server, "RestoreViewTabsMode", &Options::RestoreViewTabsMode, NewVersion::Keeps},
    Setting{Place::Server, "LZEBTabItemCount", &Options::LZEBTabItemCount, NewVersion::Keeps},
    Setting{Place::Server, "RZEBTabItemCount", &Options::RZEBTabItemCount, NewVersion::Keeps},
    Setting{Place::Server, "RFSTabItemCount", &Options::RFSTabItemCount, NewVersion::Keeps},
    Setting{Place::Options, "ViewTabs", &Options::ViewTabs},
    Setting{Place::Options, "LastUsedServer", &Options::LastUsedServer},
};

constexpr std::array LastFiles = {
    Setting{Place::Options, "LastDocFile", &Options::LastDocFile},
    Setting{Place::Options, "LastExpFile", &Options::LastExpFile},
    Setting{Place::Options, "LastImpFile", &Options::LastImpFile},
    Setting{Place::Options, "LastArcStatFile", &Options::LastArcStatFile},
    Setting{Place::Options, "LastMsgStatFile", &Options::LastMsgStatFile},
    Setting{Place::Options, "LastMailExportFile", &Options::LastMailExportFile},
};

}  // namespace

std::span<const Setting> SettingsTable() { return Table; }
std::span<const Setting> LastFilesTable() { return LastFiles; }

std::string ServerSection(std::string_view server) { return "ServerSettings_" + std::string(server); }

std::string SectionName(Place place, std::string_view server) {
  switch (place) {
    case Place::GlobalSettings:
      return std::string(section::GlobalSettings);
    case Place::Options:
      return std::string(section::Options);
    case Place::Server:
      break;
  }
  return ServerSection(server);
}

Value ValueOf(const Options& options, const Setting& setting) {
  return std::visit(
      [&](auto member) -> Value {
        if constexpr (std::is_same_v<decltype(member), SwitchMember>) {
          return FromSwitch(options.*member);
        } else {
          return options.*member;
        }
      },
      setting.Member);
}

void SetValueOf(Options& options, const Setting& setting, const Value& value) {
  std::visit(
      [&](auto member) {
        if constexpr (std::is_same_v<decltype(member), SwitchMember>) {
          options.*member = ToSwitch(value);
        } else if constexpr (std::is_same_v<decltype(member), NumberMember>) {
          options.*member = ToNumber(value).value_or(options.*member);
        } else {
          options.*member = ToText(value);
        }
      },
      setting.Member);
}

}  // namespace velmora::settings
