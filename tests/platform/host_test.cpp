// Directories, users, processes, the instance lock, file types, opening a document.

#include "platform/host.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "base/text.h"
#include "platform/file_system_fixture.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

class HostTest : public FileSystemFixture {
 protected:
  void SetUp() override {
    for (const char* name : {"VELMORA_CONFIG_DIR", "VELMORA_MACHINE_CONFIG_DIR", "VELMORA_STATE_DIR",
                             "VELMORA_DATA_DIR", "VELMORA_TEMP_DIR", "VELMORA_PROGRAM_DIR", "XDG_CONFIG_HOME",
                             "XDG_STATE_HOME", "XDG_DATA_HOME", "TMPDIR"}) {
      unsetenv(name);
    }
    setenv("HOME", dir_.HostPath().c_str(), 1);
  }
  // A program of the given name that comes before all others of that name.
  void InstallProgram(const std::string& name, const std::string& script) {
    fs::create_directories(H("bin"));
    dir_.WriteHostFile("bin/" + name, "#!/bin/sh\n" + script + "\n");
    ASSERT_EQ(chmod(H("bin/" + name).c_str(), 0755), 0);
    setenv("PATH", (H("bin") + ":/usr/bin:/bin").c_str(), 1);
  }
};

TEST_F(HostTest, DirectoriesFollowTheUsersHome) {
  const HostDirectories directories = FindHostDirectories();
  EXPECT_EQ(directories.Config, H(".config/velmora"));
  EXPECT_EQ(directories.MachineConfig, "/etc/velmora");
  EXPECT_EQ(directories.State, H(".local/state/velmora"));
  EXPECT_EQ(directories.Data, H(".local/share/velmora"));
  EXPECT_EQ(directories.UserData, H(".local/share"));
  EXPECT_EQ(directories.Temporary, "/tmp/velmora-" + std::to_string(geteuid()));
  EXPECT_EQ(directories.Documents, dir_.HostPath());
  EXPECT_FALSE(fs::exists(H(".config")));
}

TEST_F(HostTest, DirectoriesCanBeChosen) {
  setenv("XDG_CONFIG_HOME", "/xdg/config", 1);
  setenv("XDG_STATE_HOME", "relative/counts/as/not/set", 1);
  setenv("XDG_DATA_HOME", "/xdg/data/", 1);
  setenv("VELMORA_STATE_DIR", "/own/state", 1);
  setenv("VELMORA_TEMP_DIR", "/own/temp", 1);
  setenv("VELMORA_PROGRAM_DIR", "/own/program", 1);
  const HostDirectories directories = FindHostDirectories();
  EXPECT_EQ(directories.Config, "/xdg/config/velmora");
  EXPECT_EQ(directories.State, "/own/state");
  EXPECT_EQ(directories.Data, "/xdg/data/velmora");
  EXPECT_EQ(directories.UserData, "/xdg/data");
  EXPECT_EQ(directories.Temporary, "/own/temp");
  EXPECT_EQ(directories.Program, "/own/program");
}

TEST_F(HostTest, DocumentsAreWhereTheDesktopSays) {
  fs::create_directory(H("Documents"));
  EXPECT_EQ(FindHostDirectories().Documents, H("Documents"));
  fs::create_directory(H(".config"));
  dir_.WriteHostFile(".config/user-dirs.dirs", "# a comment\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
  EXPECT_EQ(FindHostDirectories().Documents, H("Dokumente"));
  dir_.WriteHostFile(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/srv/documents/\"\n");
  EXPECT_EQ(FindHostDirectories().Documents, "/srv/documents");
}

TEST_F(HostTest, MachineAndUserHaveNames) {
  EXPECT_FALSE(ComputerName().empty());
  EXPECT_LE(CountCharacters(ComputerName()), 16u);
  EXPECT_FALSE(UserLoginName().empty());
  EXPECT_FALSE(UserFullName().empty());
  EXPECT_EQ(IsOsAdministrator(), geteuid() == 0);
  EXPECT_EQ(EnvironmentVariable("VELMORA_NO_SUCH_VARIABLE"), std::nullopt);
  EXPECT_TRUE(ExecutablePath().ends_with("/test_platform"));
}

TEST_F(HostTest, ProcessesGetTheirArgumentsAndInputUntouched) {
  const auto result =
      RunProcess({"/bin/sh", "-c", "cat; printf %s \"$1\"; echo e >&2; exit 3", "sh", "$HOME; *"}, "input ");
  ASSERT_TRUE(result.has_value());
  EXPECT_EQ(result->Output, "input $HOME; *e\n");
  EXPECT_EQ(result->ExitStatus, 3);
}

TEST_F(HostTest, MuchInputAndMuchOutputDoNotBlockEachOther) {
  const std::string input(5'000'000, 'x');
  const auto result = RunProcess({"cat"}, input);
  ASSERT_TRUE(result.has_value());
  EXPECT_EQ(result->Output, input);
}

TEST_F(HostTest, AProcessMayIgnoreItsInput) {
  const auto result = RunProcess({"true"}, std::string(5'000'000, 'x'));
  ASSERT_TRUE(result.has_value());
  EXPECT_EQ(result->ExitStatus, 0);
}

TEST_F(HostTest, WhatCannotBeStartedIsAnError) {
  EXPECT_EQ(ErrorOf(RunProcess({H("missing")}, "")), 53);
  EXPECT_EQ(ErrorOf(RunProcess({}, "")), 53);
  dir_.WriteHostFile("text", "no program");
  EXPECT_EQ(ErrorOf(RunProcess({H("text")}, "")), 70);
}

TEST_F(HostTest, AProcessKilledByASignalCountsAsTheShellsCountIt) {
  EXPECT_EQ(RunProcess({"/bin/sh", "-c", "kill -9 $$"}, "")->ExitStatus, 128 + 9);
}

TEST_F(HostTest, OnlyOneInstanceHoldsTheLock) {
  auto first = TryInstanceLock(H("lock"));
  ASSERT_TRUE(first.has_value());
  ASSERT_NE(*first, nullptr);
  EXPECT_EQ(TryInstanceLock(H("lock")).value(), nullptr);
  const pid_t child = fork();
  if (child == 0) {
    const auto second = TryInstanceLock(H("lock"));
    _exit(second.has_value() && *second == nullptr ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  first->reset();
  EXPECT_NE(TryInstanceLock(H("lock")).value(), nullptr);
  EXPECT_EQ(ErrorOf(TryInstanceLock(H("missing/lock"))), 76);
}

TEST_F(HostTest, AForkedChildNeitherReleasesNorKeepsTheLock) {
  auto lock = TryInstanceLock(H("lock"));
  ASSERT_TRUE(lock.has_value() && *lock != nullptr);
  std::array<int, 2> ready{};
  std::array<int, 2> finish{};
  ASSERT_EQ(pipe(ready.data()), 0);
  ASSERT_EQ(pipe(finish.data()), 0);
  const pid_t child = fork();
  if (child == 0) {
    close(finish[1]);
    auto copy = TryInstanceLock(H("other"));  // its own lock, and a descriptor of ours that it inherited
    lock->reset();
    char byte = 'x';
    _exit(write(ready[1], &byte, 1) == 1 && read(finish[0], &byte, 1) == 0 ? 0 : 1);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  EXPECT_EQ(TryInstanceLock(H("lock")).value(), nullptr);  // still ours
  lock->reset();
  EXPECT_NE(TryInstanceLock(H("lock")).value(), nullptr);  // though the child lives
  close(finish[1]);
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST_F(HostTest, TheLockDiesWithItsProcess) {
  const pid_t child = fork();
  if (child == 0) {
    const auto lock = TryInstanceLock(H("lock"));
    _exit(lock.has_value() && *lock != nullptr ? 0 : 1);  // without destructors
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  EXPECT_NE(TryInstanceLock(H("lock")).value(), nullptr);
}

TEST_F(HostTest, FileTypesAreRegisteredOnceAndRemoved) {
  InstallProgram("update-mime-database", "echo mime >> " + H("calls"));
  InstallProgram("update-desktop-database", "echo desktop >> " + H("calls"));
  const HostDirectories directories = FindHostDirectories();
  const Strings extensions{".add", ".VLA"};
  ASSERT_EQ(ErrorOf(RegisterFileTypes(directories, extensions, "/opt/a b/velmora%1")), 0);
  const std::string entry = dir_.ReadHostFile(".local/share/applications/velmora-add.desktop");
  EXPECT_NE(entry.find("Exec=\"/opt/a b/velmora%%1\" %f\n"), std::string::npos);
  EXPECT_NE(entry.find("MimeType=application/x-velmora-add;\n"), std::string::npos);
  const std::string package = dir_.ReadHostFile(".local/share/mime/packages/velmora-vla.xml");
  EXPECT_NE(package.find("<glob pattern=\"*.vla\"/>"), std::string::npos);
  EXPECT_EQ(dir_.ReadHostFile("calls"), "mime\ndesktop\n");

  const auto written = fs::last_write_time(H(".local/share/applications/velmora-add.desktop"));
  ASSERT_EQ(ErrorOf(RegisterFileTypes(directories, extensions, "/opt/a b/velmora%1")), 0);
  EXPECT_EQ(fs::last_write_time(H(".local/share/applications/velmora-add.desktop")), written);
  EXPECT_EQ(dir_.ReadHostFile("calls"), "mime\ndesktop\n");

  ASSERT_EQ(ErrorOf(RegisterFileTypes(directories, extensions, "/opt/other")), 0);
  EXPECT_EQ(dir_.ReadHostFile("calls"), "mime\ndesktop\nmime\ndesktop\n");
  ASSERT_EQ(ErrorOf(UnregisterFileTypes(directories, extensions)), 0);
  EXPECT_TRUE(fs::is_empty(H(".local/share/applications")));
  EXPECT_TRUE(fs::is_empty(H(".local/share/mime/packages")));
  EXPECT_EQ(ErrorOf(UnregisterFileTypes(directories, extensions)), 0);
}

TEST_F(HostTest, DocumentsAreOpenedByTheDesktop) {
  InstallProgram("xdg-open", "printf %s \"$1\" > " + H("opened"));
  dir_.WriteHostFile("a b;c.htm", "1");
  ASSERT_EQ(ErrorOf(OpenDocument(*files_, P("A B;C.HTM"))), 0);
  EXPECT_EQ(dir_.ReadHostFile("opened"), H("a b;c.htm"));
  EXPECT_EQ(ErrorOf(OpenDocument(*files_, P("missing"))), 53);
}

TEST_F(HostTest, ADocumentWithoutAProgramIsError31) {
  InstallProgram("xdg-open", "exit 3");
  dir_.WriteHostFile("a", "1");
  EXPECT_EQ(ErrorOf(OpenDocument(*files_, P("a"))), 31);
  setenv("PATH", H("empty").c_str(), 1);
  EXPECT_EQ(ErrorOf(OpenDocument(*files_, P("a"))), 31);
}

TEST_F(HostTest, AViewerThatStaysOpenDoesNotHoldUs) {
  InstallProgram("xdg-open", "exec sleep 20");
  dir_.WriteHostFile("a", "1");
  const auto before = std::chrono::steady_clock::now();
  EXPECT_EQ(ErrorOf(OpenDocument(*files_, P("a"))), 0);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(10));
}

}  // namespace
}  // namespace velmora::platform
