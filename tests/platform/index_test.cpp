// The index of a directory: changes of other programs, free names, many files in one directory.

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "platform/file_system_fixture.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

using IndexTest = FileSystemFixture;
using UniqueNameTest = FileSystemFixture;

void WaitUntilStampsAreOld() { std::this_thread::sleep_for(std::chrono::milliseconds(1100)); }

TEST_F(IndexTest, NewNamesOfOtherProgramsAreSeenAtOnce) {
  for (int i = 0; i < 50; ++i) {
    const std::string name = std::to_string(i) + ".txt";
    EXPECT_FALSE(files_->FileExists(P("FOREIGN" + name)));
    dir_.WriteHostFile("foreign" + name, "1");
    EXPECT_TRUE(files_->FileExists(P("FOREIGN" + name))) << i;
    ASSERT_EQ(ErrorOf(files_->WriteFile(P("own" + name), "1")), 0);
    EXPECT_TRUE(files_->FileExists(P("OWN" + name))) << i;
  }
  EXPECT_EQ(Names("*").size(), 100u);
}

TEST_F(IndexTest, RemovedNamesOfOtherProgramsAreGoneAtOnce) {
  for (int i = 0; i < 50; ++i) ASSERT_EQ(ErrorOf(files_->WriteFile(P("f" + std::to_string(i)), "1")), 0);
  for (int i = 0; i < 50; ++i) {
    fs::remove(H("f" + std::to_string(i)));
    EXPECT_FALSE(files_->FileExists(P("F" + std::to_string(i)))) << i;
    EXPECT_EQ(ErrorOf(files_->WriteFile(P("F" + std::to_string(i)), "2", {.Mode = Create::Exclusive})), 0);
  }
  EXPECT_EQ(Names("*").size(), 50u);
  EXPECT_EQ(Names("f*").front(), "F0");
}

TEST_F(IndexTest, InAFolderThatWeFillForeignNamesAreSeenWithinASecond) {
  for (int i = 0; i < 500; ++i) ASSERT_EQ(ErrorOf(files_->WriteFile(P(std::to_string(i)), "")), 0);
  dir_.WriteHostFile("Foreign", "1");
  EXPECT_EQ(Names("*").size(), 501u);  // a listing is always right
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("own"), "")), 0);
  dir_.WriteHostFile("Late", "1");
  EXPECT_TRUE(files_->FileExists(P("Late")));  // exact names always
  WaitUntilStampsAreOld();
  EXPECT_TRUE(files_->FileExists(P("LATE")));
  EXPECT_EQ(Names("la*"), Strings{"Late"});
}

TEST_F(IndexTest, AChangeWhoseStampIsPutBackIsSeen) {
  dir_.WriteHostFile("old", "1");
  struct stat before {};
  ASSERT_EQ(stat(dir_.HostPath().c_str(), &before), 0);
  WaitUntilStampsAreOld();
  EXPECT_FALSE(files_->FileExists(P("NEW")));
  dir_.WriteHostFile("new", "1");
  const struct timespec times[2] = {before.st_atim, before.st_mtim};
  ASSERT_EQ(utimensat(AT_FDCWD, dir_.HostPath().c_str(), times, 0), 0);
  EXPECT_TRUE(files_->FileExists(P("NEW")));
}

TEST_F(IndexTest, AReplacedFolderIsANewOne) {
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("a"))), 0);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a\\x"), "1")), 0);
  for (int i = 0; i < 20; ++i) {
    fs::remove_all(H("a"));
    EXPECT_FALSE(files_->FolderExists(P("A")));
    EXPECT_EQ(ErrorOf(files_->WriteFile(P("a\\y"), "1")), 76);
    fs::create_directory(H("a"));
    EXPECT_FALSE(files_->FileExists(P("a\\X")));
    ASSERT_EQ(ErrorOf(files_->WriteFile(P("a\\y"), "1")), 0);
    EXPECT_EQ(NamesIn(P("a"), "*"), Strings{"y"});
  }
}

TEST_F(IndexTest, AFolderRenamedByAnotherProgramIsFound) {
  fs::create_directory(H("Name"));
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("name\\x"), "1")), 0);
  fs::rename(H("Name"), H("NAME"));
  EXPECT_EQ(files_->ReadFile(P("name\\x")).value(), "1");
  fs::rename(H("NAME"), H("other"));
  EXPECT_EQ(ErrorOf(files_->ReadFile(P("name\\x"))), 76);
}

TEST_F(IndexTest, ManyFoldersInTurnStayRight) {
  constexpr int Folders = 150;  // more than are kept open
  for (int i = 0; i < Folders; ++i) ASSERT_EQ(ErrorOf(files_->CreateFolder(P(std::to_string(i)))), 0);
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < Folders; ++i) {
      const std::string path = P(std::to_string(i) + "\\Round" + std::to_string(round));
      ASSERT_EQ(ErrorOf(files_->WriteFile(path, "1", {.Mode = Create::Exclusive})), 0);
    }
  }
  for (int i = 0; i < Folders; ++i) {
    EXPECT_TRUE(files_->FileExists(P(std::to_string(i) + "\\ROUND0")));
    EXPECT_EQ(NamesIn(P(std::to_string(i)), "*").size(), 3u);
  }
}

TEST_F(UniqueNameTest, AFreeNameComesBackAsItIs) {
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "Report.htm"), "Report.htm");
  EXPECT_EQ(files_->UniqueFileName(P("missing"), "Report.htm"), "Report.htm");
}

TEST_F(UniqueNameTest, TheNumberStandsBeforeTheFirstPoint) {
  for (const char* name : {"Report.htm", "a.tar.gz", "plain", ".hidden", "end."})
    dir_.WriteHostFile(name, "");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "REPORT.HTM"), "REPORT1.HTM");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "a.tar.gz"), "a1.tar.gz");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "plain"), "plain1");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), ".hidden"), "1.hidden");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "end."), "end1.");
}

TEST_F(UniqueNameTest, NumbersGoOnWithoutGaps) {
  std::string name = "x.htm";
  for (int i = 0; i < 3000; ++i) {
    name = files_->UniqueFileName(dir_.Path(), i % 2 == 0 ? "x.htm" : "X.HTM");
    ASSERT_EQ(ErrorOf(files_->WriteFile(P(name), "", {.Mode = Create::Exclusive})), 0) << name;
  }
  EXPECT_EQ(name, "X2999.HTM");
}

TEST_F(UniqueNameTest, NamesThatAreNotTakenAreOfferedAgain) {
  dir_.WriteHostFile("x.htm", "");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "x.htm"), "x1.htm");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "x.htm"), "x1.htm");
}

TEST_F(UniqueNameTest, NumbersTakenByOtherHeadsAreSkipped) {
  for (const char* name : {"x.htm", "X1.HTM", "x2.htm", "x11.htm"}) {
    ASSERT_EQ(ErrorOf(files_->WriteFile(P(name), "")), 0);
  }
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "x.htm"), "x3.htm");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "x1.htm"), "x12.htm");
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("x12.htm"), "")), 0);
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "x.htm"), "x3.htm");
}

TEST_F(UniqueNameTest, DeletedAndRenamedNamesAreFreeAgain) {
  const auto unique = [&] { return files_->UniqueFileName(dir_.Path(), "x.htm"); };
  for (int i = 0; i < 40; ++i) ASSERT_EQ(ErrorOf(files_->WriteFile(P(unique()), "")), 0);
  EXPECT_EQ(unique(), "x40.htm");
  ASSERT_EQ(ErrorOf(files_->DeleteFile(P("X12.HTM"), false)), 0);
  EXPECT_EQ(unique(), "x12.htm");
  ASSERT_EQ(ErrorOf(files_->MoveFile(P("x7.htm"), P("elsewhere"))), 0);
  EXPECT_EQ(unique(), "x7.htm");
  ASSERT_EQ(ErrorOf(files_->DeleteFile(P("x.htm"), false)), 0);
  EXPECT_EQ(unique(), "x.htm");
}

TEST_F(UniqueNameTest, NamesOfOtherProgramsCount) {
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("x.htm"), "")), 0);
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "x.htm"), "x1.htm");
  dir_.WriteHostFile("X1.HTM", "");
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "x.htm"), "x2.htm");
  fs::remove(H("X1.HTM"));
  EXPECT_EQ(files_->UniqueFileName(dir_.Path(), "x.htm"), "x1.htm");
}

}  // namespace
}  // namespace velmora::platform
