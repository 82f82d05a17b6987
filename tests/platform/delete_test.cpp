// Deleting files and folders; hidden and read-only; times.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <filesystem>

#include "platform/clock.h"
#include "platform/descriptor.h"
#include "platform/file_system_fixture.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

using DeleteTest = FileSystemFixture;
using AttributeTest = FileSystemFixture;

TEST_F(DeleteTest, FilesAreDeletedInAnyCase) {
  dir_.WriteHostFile("Name.txt", "1");
  ASSERT_EQ(ErrorOf(files_->DeleteFile(P("NAME.TXT"), false)), 0);
  EXPECT_FALSE(fs::exists(H("Name.txt")));
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("NAME.TXT"), false)), 53);
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("missing\\NAME.TXT"), false)), 76);
}

TEST_F(DeleteTest, ReadOnlyFilesNeedForce) {
  dir_.WriteHostFile("a", "1");
  ASSERT_EQ(ErrorOf(files_->SetReadOnly(P("a"), true)), 0);
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("a"), false)), 70);
  EXPECT_TRUE(fs::exists(H("a")));
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("a"), true)), 0);
  EXPECT_FALSE(fs::exists(H("a")));
}

TEST_F(DeleteTest, MasksDeleteMatchingFilesOnly) {
  for (const char* name : {"1.tmp", "2.TMP", "3.txt"}) dir_.WriteHostFile(name, "");
  fs::create_directory(H("folder.tmp"));
  ASSERT_EQ(ErrorOf(files_->DeleteFile(P("*.tmp"), false)), 0);
  EXPECT_EQ(Names("*"), (Strings{"3.txt", "folder.tmp"}));
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("*.tmp"), false)), 53);
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("x*"), false)), 76);
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("*.tmp"), false)), 0);
  EXPECT_EQ(Names("*"), Strings{"3.txt"});
}

TEST_F(DeleteTest, AMaskDeletesWhatItCanAndTellsTheFirstFailure) {
  for (const char* name : {"1.tmp", "2.tmp", "3.tmp"}) dir_.WriteHostFile(name, "");
  ASSERT_EQ(ErrorOf(files_->SetReadOnly(P("2.tmp"), true)), 0);
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("*.tmp"), false)), 70);
  EXPECT_EQ(Names("*"), Strings{"2.tmp"});
}

TEST_F(DeleteTest, LinksAreRemovedNeverFollowed) {
  fs::create_directories(H("outside/kept"));
  dir_.WriteHostFile("outside/kept/file", "precious");
  fs::create_directories(H("tree/sub"));
  fs::create_directory_symlink(H("outside"), H("tree/link"));
  fs::create_directory_symlink(H("outside"), H("tree/sub/link"));
  fs::create_symlink(H("outside/kept/file"), H("tree/filelink"));
  fs::create_directory_symlink("..", H("tree/sub/up"));
  fs::create_symlink("circle", H("tree/circle"));
  ASSERT_EQ(ErrorOf(files_->DeleteFolder(P("tree"), true)), 0);
  EXPECT_FALSE(fs::exists(H("tree")));
  EXPECT_EQ(dir_.ReadHostFile("outside/kept/file"), "precious");
}

TEST_F(DeleteTest, ALinkToAFolderGoesAsAFolderAndLeavesItsTarget) {
  fs::create_directory(H("real"));
  dir_.WriteHostFile("real/file", "1");
  fs::create_directory_symlink("real", H("link"));
  fs::create_symlink("nowhere", H("dangling"));
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("link"), true)), 53);
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("link"), false)), 0);
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("dangling"), false)), 0);
  EXPECT_EQ(Names("*"), Strings{"real"});
  EXPECT_EQ(dir_.ReadHostFile("real/file"), "1");
}

TEST_F(DeleteTest, FilesAreNoFoldersAndFoldersNoFiles) {
  fs::create_directory(H("folder"));
  dir_.WriteHostFile("file", "1");
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("folder"), true)), 53);
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("file"), true)), 76);
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("missing"), true)), 76);
  EXPECT_EQ(Names("*"), (Strings{"file", "folder"}));
}

TEST_F(DeleteTest, ReadOnlyFilesKeepTheirFolders) {
  fs::create_directories(H("tree/a"));
  fs::create_directories(H("tree/b"));
  dir_.WriteHostFile("tree/a/fixed", "1");
  dir_.WriteHostFile("tree/a/loose", "1");
  dir_.WriteHostFile("tree/b/loose", "1");
  ASSERT_EQ(chmod(H("tree/a/fixed").c_str(), 0444), 0);
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("tree"), false)), 70);
  EXPECT_TRUE(fs::exists(H("tree/a/fixed")));
  EXPECT_FALSE(fs::exists(H("tree/b")));
  EXPECT_TRUE(files_->FileExists(P("tree\\a\\fixed")));
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("tree"), true)), 0);
  EXPECT_FALSE(files_->FolderExists(P("tree")));
}

TEST_F(DeleteTest, ForceOpensReadOnlyFolders) {
  fs::create_directories(H("tree/fixed"));
  dir_.WriteHostFile("tree/fixed/file", "1");
  ASSERT_EQ(chmod(H("tree/fixed").c_str(), 0555), 0);
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("tree"), false)), 70);
  EXPECT_TRUE(fs::exists(H("tree/fixed/file")));
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("tree"), true)), 0);
  EXPECT_FALSE(fs::exists(H("tree")));
}

TEST_F(DeleteTest, TreesMayBeDeeperThanPathsMayBeLong) {
  ASSERT_EQ(mkdir(H("deep").c_str(), 0777), 0);
  Descriptor folder(open(H("deep").c_str(), O_RDONLY | O_DIRECTORY));
  constexpr int Levels = 1100;  // more than descriptors and, in bytes, more than a path
  for (int level = 0; level < Levels; ++level) {
    ASSERT_EQ(mkdirat(folder.Get(), "subfolder", 0777), 0);
    folder = Descriptor(openat(folder.Get(), "subfolder", O_RDONLY | O_DIRECTORY));
    ASSERT_TRUE(folder);
  }
  folder = Descriptor();
  EXPECT_EQ(ErrorOf(files_->DeleteFolder(P("deep"), false)), 0);
  EXPECT_FALSE(fs::exists(H("deep")));
}

TEST_F(DeleteTest, ADeletedFolderIsForgotten) {
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("a"))), 0);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a\\x"), "1")), 0);
  ASSERT_EQ(ErrorOf(files_->DeleteFolder(P("A"), false)), 0);
  EXPECT_FALSE(files_->FileExists(P("a\\x")));
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("a\\x"), "1")), 76);
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("a"))), 0);
  EXPECT_FALSE(files_->FileExists(P("a\\x")));
}

TEST_F(DeleteTest, FoldersAreCreatedOnce) {
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("New"))), 0);
  EXPECT_EQ(ErrorOf(files_->CreateFolder(P("new"))), 58);
  dir_.WriteHostFile("file", "");
  EXPECT_EQ(ErrorOf(files_->CreateFolder(P("FILE"))), 58);
  EXPECT_EQ(ErrorOf(files_->CreateFolder("Z:\\")), 58);
}

TEST_F(AttributeTest, HiddenIsKeptBesideOtherAttributes) {
  dir_.WriteHostFile("a", "1");
  const std::string archived = "0x20";
  if (setxattr(H("a").c_str(), "user.DOSATTRIB", archived.data(), archived.size(), 0) != 0) {
    // No extended attributes here: hiding is then accepted and has no effect.
    EXPECT_EQ(ErrorOf(files_->SetHidden(P("a"), true)), 0);
    EXPECT_FALSE(files_->GetEntry(P("a"))->Hidden);
    return;
  }
  EXPECT_FALSE(files_->GetEntry(P("a"))->Hidden);
  ASSERT_EQ(ErrorOf(files_->SetHidden(P("A"), true)), 0);
  EXPECT_TRUE(files_->GetEntry(P("a"))->Hidden);
  EXPECT_TRUE(files_->List(dir_.Path(), "*", ListWhat::Files)->front().Hidden);
  std::string stored(64, '\0');
  const ssize_t size = getxattr(H("a").c_str(), "user.DOSATTRIB", stored.data(), stored.size());
  EXPECT_EQ(stored.substr(0, static_cast<std::size_t>(size)), "0x22");
  ASSERT_EQ(ErrorOf(files_->CopyFile(P("a"), P("b"))), 0);
  EXPECT_TRUE(files_->GetEntry(P("b"))->Hidden);
  ASSERT_EQ(ErrorOf(files_->SetHidden(P("a"), false)), 0);
  EXPECT_FALSE(files_->GetEntry(P("a"))->Hidden);
}

TEST_F(AttributeTest, RecordsOfFileServersAreReadAndKept) {
  dir_.WriteHostFile("a", "1");
  std::string record("\0\0\4\0\4\0\0\0\x51\0\0\0\x22\0\0\0rest of it", 26);
  if (setxattr(H("a").c_str(), "user.DOSATTRIB", record.data(), record.size(), 0) != 0) {
    EXPECT_FALSE(files_->GetEntry(P("a"))->Hidden);  // no extended attributes here
    return;
  }
  EXPECT_TRUE(files_->GetEntry(P("a"))->Hidden);
  ASSERT_EQ(ErrorOf(files_->SetHidden(P("a"), false)), 0);
  EXPECT_FALSE(files_->GetEntry(P("a"))->Hidden);
  record[12] = 0x20;
  std::string stored(64, '\0');
  const ssize_t size = getxattr(H("a").c_str(), "user.DOSATTRIB", stored.data(), stored.size());
  EXPECT_EQ(stored.substr(0, static_cast<std::size_t>(size)), record);
}

TEST_F(AttributeTest, ReadOnlyIsTheOwnersWriteBit) {
  dir_.WriteHostFile("a", "1");
  ASSERT_EQ(chmod(H("a").c_str(), 0664), 0);
  ASSERT_EQ(ErrorOf(files_->SetReadOnly(P("a"), true)), 0);
  EXPECT_EQ(fs::status(H("a")).permissions(), fs::perms{0464});
  EXPECT_TRUE(files_->GetEntry(P("a"))->ReadOnly);
  ASSERT_EQ(ErrorOf(files_->SetReadOnly(P("a"), false)), 0);
  EXPECT_EQ(fs::status(H("a")).permissions(), fs::perms{0664});
  EXPECT_EQ(ErrorOf(files_->SetReadOnly(P("missing"), true)), 53);
  EXPECT_EQ(ErrorOf(files_->SetHidden(P("missing"), true)), 53);
}

TEST_F(AttributeTest, TimesAreSetOnFilesAndFolders) {
  const DateTime time = DateTime::FromCivil({2001, 2, 3, 4, 5, 6}).value();
  dir_.WriteHostFile("a", "1");
  fs::create_directory(H("folder"));
  ASSERT_EQ(ErrorOf(files_->SetTimes(P("A"), time)), 0);
  ASSERT_EQ(ErrorOf(files_->SetTimes(P("folder"), time)), 0);
  EXPECT_EQ(files_->GetEntry(P("a"))->Modified, time);
  EXPECT_EQ(files_->GetEntry(P("folder"))->Modified, time);
  EXPECT_EQ(ErrorOf(files_->SetTimes(P("missing"), time)), 53);
}

}  // namespace
}  // namespace velmora::platform
