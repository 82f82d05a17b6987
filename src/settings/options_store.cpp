#include "settings/options_store.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "settings/options_table.h"

namespace velmora::settings {
namespace {

// The tabs of a pane: their values, and the setting that tells how many are read.
struct TabSetting {
  std::string_view Prefix;
  TabFields Options::*Fields;
  NumberMember Count;
};

constexpr std::array TabSettings = {
    TabSetting{"LZEBTabItem", &Options::LZEBTabItem, &Options::LZEBTabItemCount},
    TabSetting{"RZEBTabItem", &Options::RZEBTabItem, &Options::RZEBTabItemCount},
    TabSetting{"RFSTabItem", &Options::RFSTabItem, &Options::RFSTabItemCount},
};

// Without its first and last character, which are the quotes.
std::string CutEnds(std::string_view piece) {
  const std::size_t count = CountCharacters(piece);
  if (count < 2) {
    return "";
  }
  const std::string_view withoutLast = LeftCharacters(piece, count - 1);
  return std::string(withoutLast.substr(LeftCharacters(withoutLast, 1).size()));
}

std::string TabName(std::string_view prefix, std::size_t tab) { return fmt::format("{}({})", prefix, tab); }

void LoadTabs(const Values& stored, const std::string& section, Options& options) {
  for (const TabSetting& setting : TabSettings) {
    const std::int32_t count = std::clamp<std::int32_t>(options.*setting.Count, 0, TabCount);
    for (std::size_t tab = 0; tab < static_cast<std::size_t>(count); ++tab) {
      if (const Value* value = FindValue(stored, section, TabName(setting.Prefix, tab))) {
        ParseTab(ToText(*value), options.*setting.Fields, tab);
      }
    }
  }
}

// Collects the changes that saving needs, each value compared with what was loaded and what is stored.
class ChangeCollector {
 public:
  explicit ChangeCollector(const Values& stored) : stored_(stored) {}

  void Add(std::string section, std::string name, Value now, const Value& loaded) {
    if (now != loaded || FindValue(stored_, section, name) == nullptr) {
      changes_.push_back({std::move(section), std::move(name), std::move(now)});
    }
  }
  std::vector<Change> Take() { return std::move(changes_); }

 private:
  const Values& stored_;
  std::vector<Change> changes_;
};

}  // namespace

Options DefaultOptions(const DefaultPlaces& places, const ProductVersion& version) {
  Options options;
  options.DesignPath = places.DesignPath;
  options.ArchiveFormCopyRight =
      fmt::format("{} {}.{} © {}", ProductName, version.Major, version.Minor, LegalCopyright);
  for (const TextMember member :
       {&Options::ExcelAddressPath, &Options::CSVAddressPath, &Options::VCFAddressPath,
        &Options::GWAddressPath, &Options::ExcelUserListPath, &Options::CSVUserListPath,
        &Options::LastUsedPath}) {
    options.*member = places.PersonalDir;
  }
  options.LastUsedCArchive = options.LastUsedDArchive = places.DefaultArchivePath;
  return options;
}

Options LoadOptions(const Values& stored, std::string_view server, const Options& defaults) {
  Options options = defaults;
  for (const std::span<const Setting> table : {SettingsTable(), LastFilesTable()}) {
    for (const Setting& setting : table) {
      if (const Value* value = FindValue(stored, SectionName(setting.Where, server), setting.Name)) {
        SetValueOf(options, setting, *value);
      }
    }
  }
  LoadTabs(stored, ServerSection(server), options);
  return options;
}

std::vector<Change> SaveChanges(const Values& stored, std::string_view server, const Options& options,
                                const Options& loaded) {
  ChangeCollector changes(stored);
  for (const Setting& setting : SettingsTable()) {
    if (setting.Name != name::AutoSaveSettings) {
      changes.Add(SectionName(setting.Where, server), std::string(setting.Name), ValueOf(options, setting),
                  ValueOf(loaded, setting));
    }
  }
  for (const TabSetting& setting : TabSettings) {
    for (std::size_t tab = 0; tab < TabCount; ++tab) {
      changes.Add(ServerSection(server), TabName(setting.Prefix, tab),
                  FormatTab(options.*setting.Fields, tab), FormatTab(loaded.*setting.Fields, tab));
    }
  }
  for (const Setting& setting : LastFilesTable()) {
    changes.Add(SectionName(setting.Where, server), std::string(setting.Name), ValueOf(options, setting),
                ValueOf(loaded, setting));
  }
  return changes.Take();
}

Change AutoSaveChange(const Options& options) {
  return {std::string(section::Options), std::string(name::AutoSaveSettings),
          FromSwitch(options.AutoSaveSettings)};
}

std::vector<Change> ClearChanges(std::string_view server) {
  std::vector<Change> changes;
  for (const std::span<const Setting> table : {SettingsTable(), LastFilesTable()}) {
    for (const Setting& setting : table) {
      if (setting.OnNewVersion == NewVersion::Wipes) {
        changes.push_back({SectionName(setting.Where, server), std::string(setting.Name), std::nullopt});
      }
    }
  }
  for (const Change& change : VersionChanges({})) {
    changes.push_back({change.Section, change.Name, std::nullopt});
  }
  return changes;
}

void ClearLastFiles(Options& options) {
  for (const Setting& setting : LastFilesTable()) {
    SetValueOf(options, setting, Value(std::string()));
  }
}

std::vector<Change> VersionChanges(const ProductVersion& version) {
  const std::string information(section::Information);
  return {{information, std::string(name::Application), Value(std::string(ProductName))},
          {information, std::string(name::CopyRight), Value(std::string(LegalCopyright))},
          {information, std::string(name::MajorVersion), Value(version.Major)},
          {information, std::string(name::MinorVersion), Value(version.Minor)},
          {information, std::string(name::Revison), Value(version.Revision)}};
}

bool VersionUnchanged(const Values& stored, const ProductVersion& version) {
  const auto number = [&](std::string_view valueName) {
    const Value* value = FindValue(stored, section::Information, valueName);
    return value != nullptr ? ToNumber(*value).value_or(0) : 0;
  };
  return number(name::MajorVersion) == version.Major && number(name::MinorVersion) == version.Minor;
}

std::string FormatTab(const TabFields& fields, std::size_t tab) {
  std::vector<std::string> pieces;
  for (std::size_t field = 0; field < TabFieldCount; ++field) {
    pieces.push_back(fmt::format("\"{}\"", fields.at(tab * TabFieldCount + field)));
  }
  return Join(pieces, ",");
}

void ParseTab(std::string_view stored, TabFields& fields, std::size_t tab) {
  const std::vector<std::string> pieces = Split(stored, ",");
  for (std::size_t field = 0; field < TabFieldCount; ++field) {
    const std::string_view piece = field < pieces.size() ? std::string_view(pieces[field]) : "";
    fields.at(tab * TabFieldCount + field) = CutEnds(piece);
  }
}

}  // namespace velmora::settings
