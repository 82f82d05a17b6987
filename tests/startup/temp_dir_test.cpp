#include "startup/temp_dir.h"

#include <sys/stat.h>

#include "program_fixture.h"

namespace velmora::startup {
namespace {

class TempDirTest : public ProgramTest {};

TEST_F(TempDirTest, TheDefaultOneIsForItsOwnerOnlyAndGoesWhole) {
  MakeTempDir(Start(""), "");
  EXPECT_EQ(context().process.TempDir, directory.Path("temp\\$$Velmora\\"));
  struct stat state = {};
  ASSERT_EQ(stat(directory.HostPath("temp/$$Velmora").c_str(), &state), 0);
  EXPECT_EQ(state.st_mode & 0777, 0700U);
  directory.WriteHostFile("temp/$$Velmora/anything", "x");
  RemoveTempDir(context());
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("temp/$$Velmora")));
  EXPECT_TRUE(std::filesystem::exists(directory.HostPath("temp")));
}

TEST_F(TempDirTest, OfADirectoryThatTheUserNamedOnlyTheProgramsOwnFilesGo) {
  std::filesystem::create_directories(directory.HostPath("mine"));
  directory.WriteHostFile("mine/letter.txt", "x");
  directory.WriteHostFile("mine/VelmoraDisplayParms.zeb", "-r");
  MakeTempDir(Start(""), directory.Path("mine"));
  EXPECT_EQ(context().process.TempDir, directory.Path("mine\\"));
  RemoveTempDir(context());
  EXPECT_TRUE(std::filesystem::exists(directory.HostPath("mine/letter.txt")));
  EXPECT_FALSE(std::filesystem::exists(directory.HostPath("mine/VelmoraDisplayParms.zeb")));
}

TEST_F(TempDirTest, AMissingDirectoryThatTheUserNamedIsMade) {
  MakeTempDir(Start(""), directory.Path("new\\deep"));
  EXPECT_TRUE(std::filesystem::is_directory(directory.HostPath("new/deep")));
}

TEST_F(TempDirTest, AnUnattendedRunHasOneOfItsOwn) {
  Start("");
  context().process.BatchMode = true;
  context().process.ProcessId = 4711;
  MakeTempDir(context(), "");
  EXPECT_EQ(context().process.TempDir, directory.Path("temp\\$$Velmora.4711\\"));
}

TEST_F(TempDirTest, WithoutADirectoryNothingIsRemoved) {
  RemoveTempDir(Start(""));
  EXPECT_TRUE(front.Waits.empty());
}

}  // namespace
}  // namespace velmora::startup
