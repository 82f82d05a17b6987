#include "settings/options_store.h"

#include <gtest/gtest.h>

#include <set>

#include "settings/options_table.h"

namespace velmora::settings {
namespace {

constexpr std::string_view Server = "ZEB1";
constexpr ProductVersion Version = {3, 4, 5};

Options Defaults() {
  return DefaultOptions({"Z:\\home\\Dokumente\\", "Z:\\prog\\Designs", "/Archive"}, Version);
}

Values Applied(Values values, const std::vector<Change>& changes) {
  for (const Change& change : changes) {
    if (change.NewValue) {
      values[change.Section][change.Name] = *change.NewValue;
    } else {
      values[change.Section].erase(change.Name);
    }
  }
  return values;
}

Values SavedDefaults() {
  Values values = Applied({}, SaveChanges({}, Server, Defaults(), Defaults()));
  values = Applied(std::move(values), {AutoSaveChange(Defaults())});
  return Applied(std::move(values), VersionChanges(Version));
}

TEST(Options, AnEmptyStoreGivesTheDefaults) {
  const Options options = LoadOptions({}, Server, Defaults());
  EXPECT_EQ(options, Defaults());
  EXPECT_EQ(options.DvItemFilter, 0x301FB);
  EXPECT_EQ(options.FrmTop, -195);
  EXPECT_EQ(options.NABSeparator, ",");
  EXPECT_EQ(options.ExcelAddressPath, "Z:\\home\\Dokumente\\");
  EXPECT_EQ(options.LastUsedPath, "Z:\\home\\Dokumente\\");
  EXPECT_EQ(options.LastUsedDArchive, "/Archive");
  EXPECT_EQ(options.DesignPath, "Z:\\prog\\Designs");
  EXPECT_EQ(options.ArchiveFormCopyRight, "Velmora 3.4 © Orvane Works");
}

TEST(Options, EveryNameIsStoredOnce) {
  std::set<std::string> names;
  std::size_t count = 0;
  for (const std::span<const Setting> table : {SettingsTable(), LastFilesTable()}) {
    for (const Setting& setting : table) {
      names.insert(SectionName(setting.Where, Server) + "\\" + std::string(setting.Name));
      ++count;
    }
  }
  EXPECT_EQ(names.size(), count);
}

TEST(Options, SavingAndLoadingGivesEveryValueBack) {
  Options changed = Defaults();
  std::int32_t number = 100;
  for (const std::span<const Setting> table : {SettingsTable(), LastFilesTable()}) {
    for (const Setting& setting : table) {
      const Value before = ValueOf(changed, setting);
      std::visit(
          [&](auto member) {
            if constexpr (std::is_same_v<decltype(member), SwitchMember>) {
              changed.*member = !(changed.*member);
            } else if constexpr (std::is_same_v<decltype(member), NumberMember>) {
              changed.*member = ++number;
            } else {
              changed.*member = "Text " + std::to_string(++number);
            }
          },
          setting.Member);
      EXPECT_NE(ValueOf(changed, setting), before) << setting.Name;
    }
  }
  changed.LZEBTabItemCount = changed.RZEBTabItemCount = changed.RFSTabItemCount = 5;
  for (std::size_t i = 0; i < changed.LZEBTabItem.size(); ++i) {
    changed.LZEBTabItem[i] = "L" + std::to_string(i);
    changed.RZEBTabItem[i] = "R" + std::to_string(i);
    changed.RFSTabItem[i] = "F" + std::to_string(i);
  }
  Values stored = Applied({}, SaveChanges({}, Server, changed, Defaults()));
  stored = Applied(std::move(stored), {AutoSaveChange(changed)});
  EXPECT_EQ(LoadOptions(stored, Server, Defaults()), changed);
}

TEST(Options, NamesAndTypesStandInTheStoreLetterForLetter) {
  const Values stored = SavedDefaults();
  EXPECT_EQ(stored.at("Information").at("Revison"), Value(5));
  EXPECT_EQ(stored.at("Information").at("Application"), Value(std::string("Velmora")));
  EXPECT_EQ(stored.at("GlobalSettings").at("WindowsState"), Value(0));
  EXPECT_EQ(stored.at("GlobalSettings").at("SaveCmdLineInFile"), Value(0));
  EXPECT_EQ(stored.at("Options").at("AutoSaveSettings"), Value(std::string("1")));
  EXPECT_EQ(stored.at("Options").at("MultiPartFiles"), Value(std::string("0")));
  EXPECT_EQ(stored.at("Options").at("MaxItemCount"), Value(std::string("50")));
  EXPECT_EQ(stored.at("ServerSettings_ZEB1").at("LZEBTabItem(4)"),
            Value(std::string(R"("","","","","","","","")")));
}

TEST(Options, TheLastUsedServerIsWrittenLastOfTheTable) {
  EXPECT_EQ(SettingsTable().back().Name, "LastUsedServer");
}

TEST(Options, AStoredIntegerOneIsOn) {
  Values stored;
  stored["Options"]["MultiPartFiles"] = 1;
  stored["Options"]["MakeIndex"] = 0;
  const Options options = LoadOptions(stored, Server, Defaults());
  EXPECT_TRUE(options.MultiPartFiles);
  EXPECT_FALSE(options.MakeIndex);
}

TEST(Options, ATextWhereANumberBelongsIsTheDefault) {
  Values stored;
  stored["Options"]["SizeCheck"] = std::string("viel");
  stored["GlobalSettings"]["FrmWidth"] = std::string("9000");
  const Options options = LoadOptions(stored, Server, Defaults());
  EXPECT_EQ(options.SizeCheck, 0);
  EXPECT_EQ(options.FrmWidth, 9000);
}

TEST(Options, EachServerHasItsOwnSection) {
  Values stored;
  stored["ServerSettings_ZEB2"]["LastUsedPath"] = std::string("Z:\\other\\");
  EXPECT_EQ(LoadOptions(stored, "ZEB2", Defaults()).LastUsedPath, "Z:\\other\\");
  EXPECT_EQ(LoadOptions(stored, Server, Defaults()).LastUsedPath, "Z:\\home\\Dokumente\\");
}

TEST(Options, WhatThisProcessDidNotTouchStaysAsAnotherWroteIt) {
  const Values stored = SavedDefaults();
  const Options loaded = LoadOptions(stored, Server, Defaults());
  Options mine = loaded;
  mine.SizeCheck = 5;
  Values meanwhile = stored;
  meanwhile["Options"]["CSVSeparator"] = std::string("|");
  const Values merged = Applied(meanwhile, SaveChanges(meanwhile, Server, mine, loaded));
  EXPECT_EQ(merged.at("Options").at("CSVSeparator"), Value(std::string("|")));
  EXPECT_EQ(merged.at("Options").at("SizeCheck"), Value(5));
}

TEST(Options, ANewVersionWipesAllButWhatItKeeps) {
  Values stored = SavedDefaults();
  stored["GlobalSettings"]["DvServer0"] = std::string("ZEB1");
  stored["ServerSettings_ZEB1"]["RestoreViewTabsMode"] = 1;
  stored["ServerSettings_ZEB1"]["LZEBTabItemCount"] = 3;
  const Values cleared = Applied(stored, ClearChanges(Server));
  EXPECT_EQ(cleared.at("Options").size(), 1U);
  EXPECT_EQ(cleared.at("Options").count("AutoSaveSettings"), 1U);
  EXPECT_EQ(cleared.at("GlobalSettings").size(), 1U);
  EXPECT_EQ(cleared.at("GlobalSettings").count("DvServer0"), 1U);
  EXPECT_TRUE(cleared.at("Information").empty());
  const SectionValues& server = cleared.at("ServerSettings_ZEB1");
  EXPECT_EQ(server.count("LastUsedPath"), 0U);
  EXPECT_EQ(server.at("RestoreViewTabsMode"), Value(1));
  EXPECT_EQ(server.at("LZEBTabItemCount"), Value(3));
  EXPECT_EQ(server.count("LZEBTabItem(0)"), 1U);
}

TEST(Options, TheVersionIsUnchangedWhateverTheRevision) {
  const Values stored = Applied({}, VersionChanges(Version));
  EXPECT_TRUE(VersionUnchanged(stored, {3, 4, 99}));
  EXPECT_FALSE(VersionUnchanged(stored, {3, 5, 5}));
  EXPECT_FALSE(VersionUnchanged(stored, {4, 4, 5}));
  EXPECT_FALSE(VersionUnchanged({}, Version));
  EXPECT_TRUE(VersionUnchanged({}, {0, 0, 7}));
}

TEST(Options, LastFilesAreCleared) {
  Options options = Defaults();
  options.LastDocFile = "a";
  options.LastMailExportFile = "b";
  ClearLastFiles(options);
  EXPECT_EQ(options, Defaults());
}

TEST(Tabs, AFieldPerPairOfQuotes) {
  TabFields fields;
  ParseTab(R"("Name","/Archive/A","T1","","x","ö","7","8")", fields, 1);
  EXPECT_EQ(fields[8], "Name");
  EXPECT_EQ(fields[9], "/Archive/A");
  EXPECT_EQ(fields[11], "");
  EXPECT_EQ(fields[13], "ö");
  EXPECT_EQ(fields[15], "8");
  EXPECT_EQ(fields[0], "");
}

TEST(Tabs, TheDefaultLiteralGivesEmptyFields) {
  TabFields fields;
  fields.fill("alt");
  ParseTab(R"(",",",",")", fields, 0);
  for (std::size_t i = 0; i < TabFieldCount; ++i) {
    EXPECT_EQ(fields[i], "") << i;
  }
}

TEST(Tabs, ACommaWithinAFieldSplitsIt) {
  TabFields fields;
  ParseTab(R"("a,b","c")", fields, 0);
  EXPECT_EQ(fields[0], "");  // `"a` without its two outer characters
  EXPECT_EQ(fields[1], "");  // `b"`
  EXPECT_EQ(fields[2], "c");
}

TEST(Tabs, MoreThanEightFieldsDoNotReachTheNextTab) {
  TabFields fields;
  ParseTab(R"("1","2","3","4","5","6","7","8","9")", fields, 0);
  EXPECT_EQ(fields[8], "");
}

TEST(Tabs, OnlyAsManyAsCountedAreRead) {
  Values stored;
  stored["ServerSettings_ZEB1"]["LZEBTabItemCount"] = 1;
  stored["ServerSettings_ZEB1"]["RZEBTabItemCount"] = 1000;
  stored["ServerSettings_ZEB1"]["RFSTabItemCount"] = -3;
  for (const std::string prefix : {"LZEBTabItem", "RZEBTabItem", "RFSTabItem"}) {
    for (int tab = 0; tab < 6; ++tab) {
      stored["ServerSettings_ZEB1"][prefix + "(" + std::to_string(tab) + ")"] = std::string("\"T\"");
    }
  }
  const Options options = LoadOptions(stored, Server, Defaults());
  EXPECT_EQ(options.LZEBTabItem[0], "T");
  EXPECT_EQ(options.LZEBTabItem[8], "");
  EXPECT_EQ(options.RZEBTabItem[32], "T");
  EXPECT_EQ(options.RFSTabItem[0], "");
}

}  // namespace
}  // namespace velmora::settings
