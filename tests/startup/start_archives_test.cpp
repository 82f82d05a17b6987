#include "startup/start_archives.h"

#include "program_fixture.h"

namespace velmora::startup {
namespace {

class StartArchivesTest : public ProgramTest {};

TEST_F(StartArchivesTest, AnArchiveArgumentOpensBothPanes) {
  StartSession();
  MakeArchive("Projekte");
  StartSession("-c \\Archive\\Projekte");
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive/Projekte");
  EXPECT_EQ(context().session.RightArchive->FullPath(), "/Archive/Projekte");
  EXPECT_NE(context().session.LeftArchive, context().session.RightArchive);
}

TEST_F(StartArchivesTest, ABadArgumentLandsOnTheDefaultArchive) {
  StartSession("-c /Nowhere");
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive");
  StartSession("-e \\Nowhere\\1.001");
  EXPECT_EQ(context().session.RightArchive->FullPath(), "/Archive");
}

TEST_F(StartArchivesTest, AMessageArgumentOpensItsArchive) {
  StartSession();
  const std::string id = MakeArchive("Projekte")->ID();
  StartSession("-e " + id + "\\00000001.001");
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive/Projekte");
  EXPECT_NE(context().process.CurrentPath, id + "\\");
}

TEST_F(StartArchivesTest, WithTheDisplayOfFilesTheMessagesFolderIsTheCurrentPath) {
  StartSession();
  const std::string id = MakeArchive("Projekte")->ID();
  context().options.TICDisplayFile = true;
  Shutdown(context());
  StartSession("-e " + id + "\\00000001.001");
  EXPECT_EQ(context().process.CurrentPath, id + "\\");
}

TEST_F(StartArchivesTest, AnOptionWithoutAnArgumentIsNoStartMode) {
  StartSession("-c");
  EXPECT_EQ(context().process.StartMode, start_mode::None);
  EXPECT_EQ(context().session.LeftArchive->FullPath(), "/Archive");
}

TEST_F(StartArchivesTest, WithoutADriveOnTheShareThereIsNone) {
  StartSession();
  EXPECT_EQ(context().session.DavidDrive, "");
  EXPECT_EQ(context().session.DavidShare, "");
}

TEST_F(StartArchivesTest, ADriveOnTheSharesDirectoryIsFound) {
  files = platform::MakeHostFileSystem(
      {{"\\\\ZEB1\\DAVID", directory.HostPath("store")}, {"M:", directory.HostPath("store")}});
  StartSession();
  EXPECT_EQ(context().session.DavidDrive, "M:");
  EXPECT_EQ(context().session.DavidShare, "\\\\ZEB1\\DAVID");
}

}  // namespace
}  // namespace velmora::startup
