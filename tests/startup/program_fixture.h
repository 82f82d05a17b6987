// A program on a built-in store in a temporary directory, with an administrator "anna" and a user "otto".
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/paths.h"
#include "platform/host_file_system.h"
#include "platform/make_folders.h"
#include "startup/main_sequence.h"
#include "startup/program.h"
#include "startup/settings_session.h"
#include "startup/sign_on.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/site_database.h"
#include "store/embedded/store_setup.h"
#include "support/manual_clock.h"
#include "support/scripted_front_end.h"
#include "support/temp_dir.h"
#include "support/test_store.h"

namespace velmora::startup {

// Windows that only tell what was asked of them.
class FakeWindows final : public WindowFactory {
 public:
  int RunMainWindow(Context& context) override {
    ++MainWindows;
    Caption = BuildMainCaption(context);
    if (OnMainWindow) OnMainWindow(context);
    return exit_status::Done;
  }
  void ShowMigrationDialog(Context&) override { ++MigrationDialogs; }
  void ActivateWindow(std::string_view caption) override { Activated.emplace_back(caption); }
  void UnloadWindows() override { ++Unloads; }

  std::function<void(Context&)> OnMainWindow;
  std::string Caption;
  std::vector<std::string> Activated;
  int MainWindows = 0, MigrationDialogs = 0, Unloads = 0;
};

class ProgramTest : public ::testing::Test {
 protected:
  static constexpr std::string_view Server = test::Zeb1Store.Server;

  ProgramTest() {
    // The desktop's tool that takes the file types syncs a dozen files of its own.
    setenv("PKGSYSTEM_ENABLE_FSYNC", "0", 1);
    test::CopyTestStore(test::Zeb1Store, directory.HostPath("store"));
    files = MakeFiles();
    directories.Config = directory.HostPath("config");
    directories.MachineConfig = directory.HostPath("machine");
    directories.State = directory.HostPath("state");
    directories.Data = directory.HostPath("data");
    directories.UserData = directory.HostPath("userdata");
    directories.Temporary = directory.HostPath("temp");
    directories.Documents = directory.HostPath("docs");
    directories.Program = directory.HostPath("program");
    std::filesystem::create_directories(directory.HostPath("program/Designs"));
    std::filesystem::create_directories(directory.HostPath("target"));
    WriteDesign();
  }

  std::unique_ptr<platform::FileSystem> MakeFiles() {
    return platform::MakeHostFileSystem(
        {MappingOf(store::embedded::StoreLocation{std::string(Server), directory.HostPath("store")})});
  }
  void AddUser(const std::string& name, const std::string& loginName, std::uint32_t rights) {
    using namespace store::embedded;
    const StoreLayout layout(Server);
    ArchiveTree tree(*files, layout.ArchiveRoot());
    Result<SiteDatabase> site = SiteDatabase::Open(SiteDatabasePath(directory.HostPath("store")));
    ASSERT_TRUE(site.has_value()) << site.error().Text;
    const auto added = store::embedded::AddUser(*files, tree, layout, *site,
                                                {0, name, loginName, loginName + "@example.org", rights});
    ASSERT_TRUE(added.has_value()) << added.error().Text;
  }

  // A design set of bare forms.
  void WriteDesign() {
    directory.WriteHostFile("program/Designs/Standard.ini",
                            "[TreeIndex]\r\nform=Tree.htm\r\n[MessageIndexByDate]\r\nform=Index.htm\r\n"
                            "[MessageIndexBySubject]\r\nform=Index.htm\r\n[MessageIndexByAddress]\r\n"
                            "form=Index.htm\r\n[Messages]\r\nform=Mail.htm\r\npictures=\r\n");
    for (const std::string name : {"Tree.htm", "Index.htm"}) {
      directory.WriteHostFile("program/Designs/" + name, "<p>%VELMORA_IDXLINKS%</p>");
    }
    directory.WriteHostFile("program/Designs/Mail.htm", "<p>%VELMORA_SUBJECT%</p>");
  }

  // A new process with this command line; the one before has ended.
  Context& Start(const std::string& commandLine) {
    program.reset();
    program = std::make_unique<Program>(
        ProgramParts{.Directories = directories,
                     .fileSystem = *files,
                     .clock = clock,
                     .frontEnd = front.Set(),
                     .makeApi = [this]() -> Result<std::shared_ptr<store::DvISEAPI>> {
                       return store::embedded::OpenEmbeddedApi(
                           *files, clock, {{std::string(Server), directory.HostPath("store")}}, login);
                     },
                     .CommandLine = commandLine,
                     .NamedServer = "",
                     .windows = hasWindows ? &windows : nullptr});
    context().process.IsOsAdministrator = isOsAdministrator;
    return context();
  }
  Context& context() { return program->GetContext(); }
  // A process that has signed on and loaded its settings.
  Context& StartSession(const std::string& commandLine = "") {
    Start(commandLine);
    EXPECT_TRUE(StartAfterLogin(context()).CanGoOn);
    return context();
  }
  int RunMain(const std::string& commandLine) { return Main(Start(commandLine)); }

  settings::Store Settings() {
    return {*files, files->FromHostPath(directories.Config), files->FromHostPath(directories.MachineConfig)};
  }
  std::string Log() const {
    return std::filesystem::exists(directory.HostPath("state/VelmoraError.log"))
               ? directory.ReadHostFile("state/VelmoraError.log")
               : "";
  }
  std::shared_ptr<store::DvArchive> MakeArchive(const std::string& name) {
    auto made = context().session.DefaultArchive->CreateSubArchive(name);
    EXPECT_TRUE(made.has_value()) << made.error().Text;
    EXPECT_TRUE((*made)->Update().has_value());
    return *made;
  }
  void AddMail(store::DvArchive& archive, const std::string& subject) {
    directory.WriteHostFile("mail.eml",
                            "From: max@example.org\r\nTo: anna@example.org\r\nSubject: " + subject +
                                "\r\nDate: Tue, 3 Mar 2026 10:00:00 +0100\r\n\r\nText\r\n");
    const auto made = context().session.Account->DVMailItemFromEml(directory.Path("mail.eml"), archive);
    ASSERT_TRUE(made.has_value()) << made.error().Text;
  }

  test::TempDir directory;
  test::ManualClock clock;
  test::ScriptedFrontEnd front;
  FakeWindows windows;
  bool hasWindows = true;
  bool isOsAdministrator = false;
  std::string login = "anna";
  platform::HostDirectories directories;
  std::unique_ptr<platform::FileSystem> files;
  std::unique_ptr<Program> program;
};

}  // namespace velmora::startup
