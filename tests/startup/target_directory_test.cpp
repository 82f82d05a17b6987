#include "startup/target_directory.h"

#include "program_fixture.h"

namespace velmora::startup {
namespace {

class TargetDirectoryTest : public ProgramTest {
 protected:
  std::string Reason(const std::string& path, const std::string& controlFile = "") {
    return ReasonNotToEmpty(context(), path, controlFile);
  }
};

TEST_F(TargetDirectoryTest, AnOrdinaryDirectoryMayBeEmptied) {
  StartSession();
  EXPECT_EQ(Reason(directory.Path("target")), "");
}

TEST_F(TargetDirectoryTest, RootsAreNeverEmptied) {
  StartSession();
  for (const std::string path : {"Z:", "Z:\\", "\\\\ZEB1\\DAVID", "\\\\ZEB1\\DAVID\\"}) {
    EXPECT_NE(Reason(path), "") << path;
  }
}

TEST_F(TargetDirectoryTest, WhatHoldsTheRootOfADriveIsNeverEmptied) {
  std::filesystem::create_directories(directory.HostPath("target/scans/2026"));
  files = platform::MakeHostFileSystem(
      {MappingOf(store::embedded::StoreLocation{std::string(Server), directory.HostPath("store")}),
       {"Q:", directory.HostPath("target/scans")}});
  StartSession();
  EXPECT_NE(Reason(directory.Path("target")), "");
  EXPECT_NE(Reason(directory.Path("target\\scans")), "");
  EXPECT_NE(Reason("Q:"), "");
  EXPECT_EQ(Reason("Q:\\2026"), "");
}

TEST_F(TargetDirectoryTest, TheStoreIsNeverEmptiedByAnyPath) {
  StartSession();
  std::filesystem::create_directory_symlink(directory.HostPath("store"), directory.HostPath("link"));
  std::filesystem::create_directories(directory.HostPath("store/archive/sub"));
  EXPECT_NE(Reason(directory.Path("store")), "");
  EXPECT_NE(Reason(directory.Path()), "");  // holds the store
  EXPECT_NE(Reason(directory.Path("store\\archive\\sub")), "");
  EXPECT_NE(Reason("\\\\ZEB1\\DAVID\\archive"), "");
  EXPECT_NE(Reason(directory.Path("link")), "");
  EXPECT_NE(Reason(directory.Path("link\\archive")), "");
}

TEST_F(TargetDirectoryTest, DirectoriesOfProgramAndUserAreNeverEmptied) {
  StartSession();
  for (const std::string path : {"state", "program", "config", "docs"}) {
    EXPECT_NE(Reason(directory.Path(path)), "") << path;
  }
}

TEST_F(TargetDirectoryTest, TheControlFileOfTheRunIsNotDeleted) {
  StartSession();
  directory.WriteHostFile("target/job.txt", "command=archivecopymove");
  EXPECT_EQ(Reason(directory.Path("target"), directory.Path("target\\JOB.TXT")),
            "Das Zielverzeichnis enthält die Steuerdatei");
  EXPECT_EQ(Reason(directory.Path("target"), directory.Path("job.txt")), "");
}

TEST_F(TargetDirectoryTest, AMissingDirectoryIsNotEmptied) {
  StartSession();
  EXPECT_NE(Reason(directory.Path("nowhere")), "");
}

TEST_F(TargetDirectoryTest, EmptyingRemovesAllChildrenFollowsNoLinkAndKeepsTheDirectory) {
  StartSession();
  std::filesystem::create_directories(directory.HostPath("target/a/b"));
  std::filesystem::create_directories(directory.HostPath("outside"));
  directory.WriteHostFile("target/a/b/file", "x");
  directory.WriteHostFile("target/file", "x");
  directory.WriteHostFile("outside/kept", "x");
  std::filesystem::permissions(directory.HostPath("target/file"), std::filesystem::perms::owner_read);
  std::filesystem::create_directory_symlink(directory.HostPath("outside"), directory.HostPath("target/link"));
  EmptyTarget(context(), directory.Path("target"));
  EXPECT_TRUE(std::filesystem::is_empty(directory.HostPath("target")));
  EXPECT_TRUE(std::filesystem::exists(directory.HostPath("outside/kept")));
  EXPECT_EQ(context().run.counters.Errors, 0);
}

}  // namespace
}  // namespace velmora::startup
