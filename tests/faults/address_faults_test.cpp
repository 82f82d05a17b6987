// The address export in each of its formats, and files that are written as a whole, each with every one of
// their file operations failing.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "addresses/address_export.h"
#include "base/text.h"
#include "mailarchive/content_index.h"
#include "mailarchive/format/forms.h"
#include "mailarchive/format/marker.h"
#include "operations/file_deletion.h"
#include "platform/host_file_system.h"
#include "run/run.h"
#include "settings/store.h"
#include "store/vocabulary.h"
#include "support/fake_store.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"
#include "sweep.h"

namespace velmora::faults {
namespace {

namespace fs = std::filesystem;
using addresses::AddressFormat;
using store::AddressProperty;

// A directory on a file system that fails on demand.
struct FileWorld {
  FileWorld() {
    files.Spare("VelmoraError.log");
    for (const char* folder : {"log", "ziel", "designs"}) fs::create_directory(dir.HostPath(folder));
  }
  std::size_t LogLines() const {
    const auto log = host->ReadFile(dir.Path("log\\VelmoraError.log"));
    return log ? Split(*log, "\r\n").size() - 2 : 0;
  }

  test::TempDir dir;
  std::unique_ptr<platform::FileSystem> host = platform::MakeHostFileSystem({{"Z:", "/"}});
  test::FaultyFileSystem files{*host};
  test::ManualClock clock;
  test::ScriptedFrontEnd frontEnd;
  run::Run run{files, clock, frontEnd.Set(), dir.Path("log")};
};

class AddressFaultsTest : public testing::TestWithParam<AddressFormat> {};

TEST_P(AddressFaultsTest, WhatIsNotToldOfIsWhole) {
  const auto exportAll = [&](FileWorld& world) {
    test::FakeStore store(world.files);
    auto& root = store.AddArchive(nullptr, "Kontakte", R"(\\SERVER\DAVID\ARCHIVE\K)");
    auto& sub = store.AddArchive(&root, "Unter", R"(\\SERVER\DAVID\ARCHIVE\K\U)");
    for (auto* archive : {&root, &sub}) {
      for (const char* name : {"Anton", "Berta", "Cäsar"}) {
        auto& entry = store.AddEntry(*archive, store::item_type::Address, name);
        entry.Address[AddressProperty::DisplayName] = std::string(name);
      }
    }
    store::Session session;
    session.Account = store.MakeAccount();
    session.ServerName = "SERVER";
    addresses::AddressExportOptions options;
    options.Format = GetParam();
    options.WithSubArchives = true;
    options.Overwrite = true;
    options.Target = {world.dir.Path("ziel\\"),
                      GetParam() == AddressFormat::VCard
                          ? ""
                          : "Adressbuch" + std::string(addresses::PlaceOf(GetParam()).Extension)};
    addresses::RunAddressExport(world.run, session,
                                {addresses::AddressSource::CurrentArchive, root.FullPath, options});
  };
  FileWorld sound;
  exportAll(sound);
  ASSERT_EQ(sound.LogLines(), 0u);
  const auto whole = sound.dir.HostTree("ziel");
  const auto isFile = [](const auto& found) { return found.second != "<DIR>"; };
  ASSERT_GE(std::ranges::count_if(whole, isFile), 2);
  const auto withoutMarkers = [](std::map<std::string, std::string> all) {
    std::erase_if(all, [](const auto& file) { return file.first.ends_with(".vla"); });
    return all;
  };
  Sweep([&](const Place& place) {
    FileWorld world;
    place.Plan(world.files);
    exportAll(world);
    const bool isMet = world.files.FailuresSoFar() > 0;
    world.files.Heal();
    EXPECT_EQ(world.LogLines(), static_cast<std::size_t>(world.run.counters.Errors));
    if (world.run.counters.Errors == 0) {
      EXPECT_EQ(withoutMarkers(world.dir.HostTree("ziel")), withoutMarkers(whole))
          << "not one error is told of";
    }
    fs::remove(world.dir.HostPath("log/VelmoraError.log"));
    exportAll(world);
    EXPECT_EQ(world.run.counters.Errors, 0) << "of the second run";
    auto now = world.dir.HostTree("ziel");
    for (const auto& [path, bytes] : withoutMarkers(whole)) {
      if (!path.ends_with(".vcf")) {
        EXPECT_EQ(now[path], bytes) << path;
      }
    }
    return isMet;
  });
}

INSTANTIATE_TEST_SUITE_P(Formats, AddressFaultsTest,
                         testing::Values(AddressFormat::Delimited, AddressFormat::Excel,
                                         AddressFormat::GroupWise, AddressFormat::VCard),
                         [](const auto& format) {
                           return std::string(addresses::PlaceOf(format.param).Extension.substr(1));
                         });

// --- Settings. ---

TEST(SettingsFaultsTest, OldOrNewButNeverHalf) {
  for (const std::string old : {"[General]\nname = \"alt\"\n", "[General\nbroken", ""}) {
    Sweep([&](const Place& place) {
      FileWorld world;
      const std::string path = "ziel/conf/settings.toml";
      if (!old.empty()) {
        fs::create_directory(world.dir.HostPath("ziel/conf"));
        world.dir.WriteHostFile(path, old);
      }
      const auto save = [&] {
        settings::Store store(world.files, world.dir.Path("ziel\\conf"), world.dir.Path("machine"));
        return store.SetUserSetting("General", "name", std::string("neu"));
      };
      place.Plan(world.files);
      const Status saved = save();
      const bool isMet = world.files.FailuresSoFar() > 0;
      world.files.Heal();
      const auto now = [&] {
        return fs::exists(world.dir.HostPath(path)) ? world.dir.ReadHostFile(path) : "";
      };
      settings::Store after(*world.host, world.dir.Path("ziel\\conf"), world.dir.Path("machine"));
      const bool isNew =
          after.GetUserSetting("General", "name", std::string()) == settings::Value(std::string("neu"));
      EXPECT_TRUE(isNew || now() == old) << now();
      if (saved) {
        EXPECT_TRUE(isNew);
      }
      EXPECT_TRUE(save());
      EXPECT_EQ(after.GetUserSetting("General", "name", std::string()), settings::Value(std::string("neu")));
      return isMet;
    });
  }
}

// --- Deletion of files. ---

void PutEntries(FileWorld& world) {
  fs::create_directories(world.dir.HostPath("ziel/Eml"));
  for (const std::string name : {"x", "y"}) {
    world.dir.WriteHostFile("ziel/" + name + ".add", "Subject=" + name + "\r\nEML=Eml\\" + name +
                                                         ".eml\r\nMAILARCENTRY=" + name + ".htm\r\n");
    world.dir.WriteHostFile("ziel/" + name + ".htm", "page");
    world.dir.WriteHostFile("ziel/Eml/" + name + ".eml", "mail");
  }
  fs::create_directories(world.dir.HostPath("ziel/Ordner/innen"));
  world.dir.WriteHostFile("ziel/Ordner/innen/a", "a");
  world.dir.WriteHostFile("ziel/bleibt.htm", "page");
  EXPECT_TRUE(mailarchive::WriteArchiveMarker(*world.host, world.dir.Path("ziel"),
                                              mailarchive::MailArcKind::Root, {"Archiv"}, true));
}

void RemoveEntries(FileWorld& world) {
  mailarchive::DesignSet designs(world.files, world.dir.Path("designs"), "Standard");
  mailarchive::IndexContext context{world.run, designs, false, world.dir.Path()};
  operations::FileDeleteOptions options;
  options.EnDelDirs = true;
  operations::RunDeleteFiles(
      context, options, {world.dir.Path("ziel"), {{"x.htm", false}, {"y.htm", false}, {"Ordner", true}}}, "");
}

const std::set<std::string> WhatStays = {"VelmoraRootArc.vla", "bleibt.htm"};

// A folder that the last component left, but that could not be removed, stays without a word: it holds
// nothing.
std::set<std::string> NamesOf(const std::map<std::string, std::string>& tree) {
  std::set<std::string> names;
  for (const auto& [name, bytes] : tree) names.insert(name);
  names.erase("Eml");
  return names;
}

TEST(FileDeletionFaultsTest, WhatIsLeftIsToldOf) {
  Sweep([&](const Place& place) {
    FileWorld world;
    PutEntries(world);
    place.Plan(world.files);
    RemoveEntries(world);
    const bool isMet = world.files.FailuresSoFar() > 0;
    world.files.Heal();
    EXPECT_EQ(world.LogLines(), static_cast<std::size_t>(world.run.counters.Errors));
    const auto left = world.dir.HostTree("ziel");
    if (world.run.counters.Errors == 0) {
      EXPECT_EQ(NamesOf(left), WhatStays) << "not one error is told of";
    }
    EXPECT_TRUE(left.contains("bleibt.htm"));
    // A component never goes without its page being named as left, and no page without its components.
    for (const std::string name : {"x", "y"}) {
      const bool hasPage = left.contains(name + ".htm");
      if (!hasPage) {
        EXPECT_FALSE(left.contains("Eml/" + name + ".eml")) << "nobody finds it any more";
      }
    }
    RemoveEntries(world);
    EXPECT_EQ(world.run.counters.Errors, 0) << "of the second run";
    EXPECT_EQ(NamesOf(world.dir.HostTree("ziel")), WhatStays);
    return isMet;
  });
}

// The page went, and with it the only way to the components.
TEST(FileDeletionFaultsTest, AnEntryWhoseDescriptorCannotBeReadStays) {
  FileWorld world;
  PutEntries(world);
  const auto before = world.dir.HostTree("ziel");
  world.files.FailOn(Fault::Open, 1, platform::file_error::DeviceError, test::FaultyFileSystem::Always);
  RemoveEntries(world);
  EXPECT_EQ(world.run.counters.Errors, 2);
  auto left = world.dir.HostTree("ziel");
  left.merge(std::map<std::string, std::string>{
      {"Ordner", "<DIR>"}, {"Ordner/innen", "<DIR>"}, {"Ordner/innen/a", "a"}});  // went as it should
  EXPECT_EQ(left, before);
}

}  // namespace
}  // namespace velmora::faults
