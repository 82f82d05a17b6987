// Copying and moving.

#include <sys/stat.h>

#include <filesystem>

#include "platform/file_system_fixture.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

using TransferTest = FileSystemFixture;

const DateTime OtherTime = DateTime::FromCivil({2018, 1, 2, 3, 4, 5}).value();

TEST_F(TransferTest, ACopyHasContentAndTimeOfItsSource) {
  const std::string big(3'000'000, 'b');
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a"), big, {.Time = SomeTime})), 0);
  ASSERT_EQ(ErrorOf(files_->CopyFile(P("A"), P("b"))), 0);
  EXPECT_EQ(dir_.ReadHostFile("b"), big);
  EXPECT_EQ(files_->GetEntry(P("b"))->Modified, SomeTime);
  ASSERT_EQ(ErrorOf(files_->CopyFile(P("a"), P("c"), {.Time = OtherTime})), 0);
  EXPECT_EQ(files_->GetEntry(P("c"))->Modified, OtherTime);
}

TEST_F(TransferTest, FilesWithoutALengthAreCopiedToTheirEnd) {
  ASSERT_EQ(ErrorOf(files_->CopyFile("Z:\\proc\\self\\status", P("status"))), 0);
  EXPECT_NE(dir_.ReadHostFile("status").find("Pid:"), std::string::npos);
}

TEST_F(TransferTest, TheModeDecidesAboutAnExistingTarget) {
  dir_.WriteHostFile("a", "new");
  dir_.WriteHostFile("b", "old and longer");
  EXPECT_EQ(ErrorOf(files_->CopyFile(P("a"), P("B"), {.Mode = Create::Exclusive})), 58);
  EXPECT_EQ(dir_.ReadHostFile("b"), "old and longer");
  EXPECT_EQ(ErrorOf(files_->CopyFile(P("a"), P("B"))), 0);
  EXPECT_EQ(dir_.ReadHostFile("b"), "new");
}

TEST_F(TransferTest, ACopyInPlaceKeepsNothingOfTheOldContent) {
  const std::string big(3'000'000, 'b');
  dir_.WriteHostFile("a", "new");
  dir_.WriteHostFile("b", big);
  struct stat before {
  }, after{};
  ASSERT_EQ(stat(H("b").c_str(), &before), 0);
  ASSERT_EQ(ErrorOf(files_->CopyFile(P("a"), P("B"), {.InPlace = true})), 0);
  EXPECT_EQ(dir_.ReadHostFile("b"), "new");
  ASSERT_EQ(stat(H("b").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);

  dir_.WriteHostFile("a", big + "c");
  ASSERT_EQ(ErrorOf(files_->CopyFile(P("a"), P("b"), {.InPlace = true})), 0);
  EXPECT_EQ(dir_.ReadHostFile("b"), big + "c");
  ASSERT_EQ(ErrorOf(files_->CopyFile(P("a"), P("fresh"), {.InPlace = true})), 0);
  EXPECT_EQ(dir_.ReadHostFile("fresh"), big + "c");
}

TEST_F(TransferTest, FilesAreReadToTheirEndWhateverLengthTheyTell) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, std::size_t{1} << 20,
                                 (std::size_t{1} << 20) + 1, std::size_t{5'000'000}}) {
    const std::string content(size, 'x');
    dir_.WriteHostFile("a", content);
    EXPECT_EQ(files_->ReadFile(P("a")).value(), content) << size;
  }
  // This one tells the length 0.
  EXPECT_GT(files_->ReadFile("Z:\\proc\\self\\smaps").value().size(), 4096u);
}

TEST_F(TransferTest, AFileIsNeverCopiedOntoItself) {
  dir_.WriteHostFile("a", "content");
  fs::create_symlink("a", H("link"));
  fs::create_hard_link(H("a"), H("twin"));
  for (const char* target : {"a", "A", "link", "twin"}) {
    EXPECT_EQ(ErrorOf(files_->CopyFile(P("a"), P(target))), 70) << target;
    EXPECT_EQ(dir_.ReadHostFile("a"), "content");
  }
}

TEST_F(TransferTest, CopiesAreAsPrivateAsTheirSourceAndCanBeWritten) {
  dir_.WriteHostFile("a", "1");
  ASSERT_EQ(chmod(H("a").c_str(), 0400), 0);
  ASSERT_EQ(ErrorOf(files_->CopyFile(P("a"), P("b"))), 0);
  struct stat status {};
  ASSERT_EQ(stat(H("b").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(TransferTest, CopyingTellsWhatIsMissing) {
  dir_.WriteHostFile("a", "1");
  EXPECT_EQ(ErrorOf(files_->CopyFile(P("missing"), P("b"))), 53);
  EXPECT_EQ(ErrorOf(files_->CopyFile(P("missing\\a"), P("b"))), 76);
  EXPECT_EQ(ErrorOf(files_->CopyFile(P("a"), P("missing\\b"))), 76);
  EXPECT_EQ(Names("*"), Strings{"a"});
}

TEST_F(TransferTest, MovingNeverReplaces) {
  dir_.WriteHostFile("a", "1");
  dir_.WriteHostFile("B", "2");
  EXPECT_EQ(ErrorOf(files_->MoveFile(P("a"), P("b"))), 58);
  EXPECT_EQ(ErrorOf(files_->MoveFile(P("a"), P("B"))), 58);
  EXPECT_EQ(dir_.ReadHostFile("B"), "2");
  EXPECT_EQ(ErrorOf(files_->MoveFile(P("missing"), P("c"))), 53);
  EXPECT_EQ(ErrorOf(files_->MoveFile(P("a"), P("missing\\c"))), 76);
  ASSERT_EQ(ErrorOf(files_->MoveFile(P("A"), P("c"))), 0);
  EXPECT_EQ(Names("*"), (Strings{"B", "c"}));
}

TEST_F(TransferTest, ANameCanChangeItsCase) {
  dir_.WriteHostFile("name.txt", "1");
  ASSERT_EQ(ErrorOf(files_->MoveFile(P("name.txt"), P("Name.TXT"))), 0);
  EXPECT_EQ(Names("*"), Strings{"Name.TXT"});
  EXPECT_EQ(ErrorOf(files_->MoveFile(P("Name.TXT"), P("Name.TXT"))), 0);
  EXPECT_EQ(files_->ReadFile(P("name.txt")).value(), "1");
}

TEST_F(TransferTest, MovedFoldersAreFoundUnderTheirNewNameOnly) {
  fs::create_directories(H("old/sub"));
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("old\\sub\\a"), "1")), 0);
  ASSERT_EQ(ErrorOf(files_->MoveFile(P("old"), P("new"))), 0);
  EXPECT_FALSE(files_->FileExists(P("old\\sub\\a")));
  EXPECT_EQ(files_->ReadFile(P("new\\sub\\a")).value(), "1");
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("old"))), 0);
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("old\\sub"))), 0);
  EXPECT_FALSE(files_->FileExists(P("old\\sub\\a")));
}

TEST_F(TransferTest, MovingToAnotherDiskKeepsContentTimeAndName) {
  // Where the machine has no second disk at hand this is a rename, with the same result.
  const std::string disk = fs::exists("/dev/shm") ? "/dev/shm" : dir_.HostPath();
  const std::string host = disk + "/velmora-move-" + std::to_string(getpid());
  const std::string target = files_->FromHostPath(host);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a"), "content", {.Time = SomeTime})), 0);
  ASSERT_EQ(ErrorOf(files_->MoveFile(P("a"), target)), 0);
  EXPECT_FALSE(fs::exists(H("a")));
  EXPECT_EQ(files_->ReadFile(target).value(), "content");
  EXPECT_EQ(files_->GetEntry(target)->Modified, SomeTime);
  dir_.WriteHostFile("a", "other");
  EXPECT_EQ(ErrorOf(files_->MoveFile(P("a"), target)), 58);
  EXPECT_EQ(dir_.ReadHostFile("a"), "other");
  EXPECT_EQ(ErrorOf(files_->DeleteFile(target, false)), 0);
}

}  // namespace
}  // namespace velmora::platform
