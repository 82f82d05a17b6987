// Writing: content, exclusive creation, read-only targets, times, privacy, full disks.

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <array>
#include <filesystem>
#include <fstream>

#include "platform/clock.h"
#include "platform/descriptor.h"
#include "platform/disk_sync.h"
#include "platform/file_system_fixture.h"
#include "support/small_disk.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

using WriteTest = FileSystemFixture;

mode_t ModeOf(const std::string& hostPath) {
  struct stat status {};
  EXPECT_EQ(stat(hostPath.c_str(), &status), 0);
  return status.st_mode & 0777;
}

TEST_F(WriteTest, WhatIsWrittenIsRead) {
  const std::string bytes("x\0y\r\n", 5);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a.txt"), bytes)), 0);
  EXPECT_EQ(files_->ReadFile(P("a.txt")).value(), bytes);
  EXPECT_EQ(dir_.ReadHostFile("a.txt"), bytes);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("empty"), "")), 0);
  EXPECT_EQ(files_->ReadFile(P("empty")).value(), "");
}

TEST_F(WriteTest, OverwritingKeepsTheNameAndDropsTheOldContent) {
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a.txt"), "long content")), 0);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("A.TXT"), "short")), 0);
  EXPECT_EQ(dir_.ReadHostFile("a.txt"), "short");
  EXPECT_EQ(Names("*"), Strings{"a.txt"});
}

TEST_F(WriteTest, ExclusiveCreationFailsForEveryCaseOfATakenName) {
  const WriteOptions exclusive{.Mode = Create::Exclusive};
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a.txt"), "1", exclusive)), 0);
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("a.txt"), "2", exclusive)), 58);
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("A.TXT"), "2", exclusive)), 58);
  EXPECT_EQ(ErrorOf(files_->OpenWriter(P("A.TXT"), exclusive)), 58);
  EXPECT_EQ(ErrorOf(files_->ReplaceFile(P("A.TXT"), "2", exclusive)), 58);
  EXPECT_EQ(dir_.ReadHostFile("a.txt"), "1");
}

TEST_F(WriteTest, ExclusiveCreationSeesWhatAnotherProgramMadeJustNow) {
  const WriteOptions exclusive{.Mode = Create::Exclusive};
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("first"), "1", exclusive)), 0);
  dir_.WriteHostFile("Second", "foreign");
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("second"), "ours", exclusive)), 58);
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("Second"), "ours", exclusive)), 58);
  EXPECT_EQ(dir_.ReadHostFile("Second"), "foreign");
}

TEST_F(WriteTest, OfTwoProcessesExactlyOneCreatesAName) {
  constexpr int Slots = 300;
  constexpr int Processes = 4;
  std::array<pid_t, Processes> children{};
  for (int i = 0; i < Processes; ++i) {
    children[static_cast<std::size_t>(i)] = fork();
    if (children[static_cast<std::size_t>(i)] != 0) continue;
    const auto files = MakeHostFileSystem({});
    std::string won;
    for (int slot = 0; slot < Slots; ++slot) {
      const std::string name = "slot" + std::to_string(slot);
      const Status written = files->WriteFile(P(name), std::to_string(i), {.Mode = Create::Exclusive});
      if (written) won += name + "\n";
      if (!written && written.error().Number != file_error::AlreadyExists) _exit(1);
    }
    const bool isNoted = files->WriteFile(P("won" + std::to_string(i)), won).has_value();
    _exit(isNoted ? 0 : 1);
  }
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  std::ptrdiff_t wins = 0;
  for (int i = 0; i < Processes; ++i) {
    const std::string won = dir_.ReadHostFile("won" + std::to_string(i));
    wins += std::count(won.begin(), won.end(), '\n');
  }
  EXPECT_EQ(wins, Slots);
}

TEST_F(WriteTest, ReadOnlyFilesResistEveryUser) {
  dir_.WriteHostFile("fixed", "old");
  dir_.WriteHostFile("other", "new");
  ASSERT_EQ(ErrorOf(files_->SetReadOnly(P("fixed"), true)), 0);
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("fixed"), "x")), 70);
  EXPECT_EQ(ErrorOf(files_->AppendFile(P("fixed"), "x")), 70);
  EXPECT_EQ(ErrorOf(files_->ReplaceFile(P("fixed"), "x")), 70);
  EXPECT_EQ(ErrorOf(files_->OpenWriter(P("fixed"))), 70);
  EXPECT_EQ(ErrorOf(files_->CopyFile(P("other"), P("fixed"))), 70);
  EXPECT_EQ(dir_.ReadHostFile("fixed"), "old");
  ASSERT_EQ(ErrorOf(files_->SetReadOnly(P("fixed"), false)), 0);
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("fixed"), "x")), 0);
}

TEST_F(WriteTest, ReadOnlyFoldersTakeNoFilesFromAnyUser) {
  fs::create_directory(H("fixed"));
  dir_.WriteHostFile("fixed/old", "1");
  ASSERT_EQ(ErrorOf(files_->SetReadOnly(P("fixed"), true)), 0);
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("fixed\\new"), "x")), 70);
  EXPECT_EQ(ErrorOf(files_->ReplaceFile(P("fixed\\new"), "x")), 70);
  EXPECT_EQ(ErrorOf(files_->CreateFolder(P("fixed\\new"))), 70);
  EXPECT_EQ(ErrorOf(files_->DeleteFile(P("fixed\\old"), false)), 70);
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("fixed\\old"), "2")), 0);  // the file itself may be written
  EXPECT_EQ(NamesIn(P("fixed"), "*"), Strings{"old"});
  ASSERT_EQ(ErrorOf(files_->SetReadOnly(P("fixed"), false)), 0);
}

TEST_F(WriteTest, FoldersAndPipesAreNoFiles) {
  fs::create_directory(H("folder"));
  ASSERT_EQ(mkfifo(H("pipe").c_str(), 0600), 0);
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("folder"), "x")), 70);
  EXPECT_EQ(ErrorOf(files_->ReadFile(P("folder"))), 53);
  EXPECT_EQ(ErrorOf(files_->ReadFile(P("pipe"))), 70);  // and does not wait for a writer
  EXPECT_EQ(ErrorOf(files_->OpenReader(P("pipe"))), 70);
}

TEST_F(WriteTest, MissingFolderIsTold) {
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("missing\\x"), "1")), 76);
  EXPECT_EQ(ErrorOf(files_->ReplaceFile(P("missing\\x"), "1")), 76);
  EXPECT_EQ(ErrorOf(files_->CreateFolder(P("missing\\x"))), 76);
}

TEST_F(WriteTest, TheTimeIsSetWithTheContent) {
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a"), "1", {.Time = SomeTime})), 0);
  ASSERT_EQ(ErrorOf(files_->ReplaceFile(P("b"), "1", {.Time = SomeTime})), 0);
  auto writer = files_->OpenWriter(P("c"), {.Time = SomeTime});
  ASSERT_TRUE(writer.has_value());
  ASSERT_EQ(ErrorOf((*writer)->Write("1")), 0);
  ASSERT_EQ(ErrorOf((*writer)->Close()), 0);
  for (const char* name : {"a", "b", "c"}) {
    struct stat status {};
    ASSERT_EQ(stat(H(name).c_str(), &status), 0);
    EXPECT_EQ(FromUnixTime(status.st_mtim.tv_sec), SomeTime) << name;
    EXPECT_EQ(status.st_mtim.tv_nsec, 0) << name;
    EXPECT_EQ(FromUnixTime(status.st_atim.tv_sec), SomeTime) << name;
  }
}

TEST_F(WriteTest, PrivateFilesAreTheirOwnersAlone) {
  dir_.WriteHostFile("known", "1");
  ASSERT_EQ(chmod(H("known").c_str(), 0644), 0);
  const WriteOptions ownerOnly{.OwnerOnly = true};
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("a"), "1", ownerOnly)), 0);
  ASSERT_EQ(ErrorOf(files_->ReplaceFile(P("b"), "1", ownerOnly)), 0);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("known"), "2", ownerOnly)), 0);
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("folder"), true)), 0);
  EXPECT_EQ(ModeOf(H("a")), 0600u);
  EXPECT_EQ(ModeOf(H("b")), 0600u);
  EXPECT_EQ(ModeOf(H("known")), 0600u);
  EXPECT_EQ(ModeOf(H("folder")), 0700u);
}

TEST_F(WriteTest, AppendingMakesOrExtendsAFile) {
  ASSERT_EQ(ErrorOf(files_->AppendFile(P("log"), "a")), 0);
  ASSERT_EQ(ErrorOf(files_->AppendFile(P("LOG"), "b")), 0);
  EXPECT_EQ(dir_.ReadHostFile("log"), "ab");
}

TEST_F(WriteTest, ReadersReadInPiecesAndGoBack) {
  dir_.WriteHostFile("a", "0123456789");
  auto reader = files_->OpenReader(P("a"));
  ASSERT_TRUE(reader.has_value());
  EXPECT_EQ((*reader)->Size().value(), 10);
  EXPECT_EQ((*reader)->Read(4).value(), "0123");
  EXPECT_EQ((*reader)->Read(100).value(), "456789");
  EXPECT_EQ((*reader)->Read(100).value(), "");
  ASSERT_EQ(ErrorOf((*reader)->Seek(8)), 0);
  EXPECT_EQ((*reader)->Read(1).value(), "8");
  EXPECT_EQ(ErrorOf((*reader)->Seek(-1)), 52);
}

TEST_F(WriteTest, WritersKeepWhatWasWrittenWithoutClose) {
  {
    auto writer = files_->OpenWriter(P("a"));
    ASSERT_TRUE(writer.has_value());
    ASSERT_EQ(ErrorOf((*writer)->Write("one")), 0);
    ASSERT_EQ(ErrorOf((*writer)->Write("two")), 0);
  }
  EXPECT_EQ(dir_.ReadHostFile("a"), "onetwo");
}

TEST_F(WriteTest, AFullDiskIsAnErrorAndLeavesNoHalfFile) {
  dir_.WriteHostFile("source", std::string(100'000, 's'));
  dir_.WriteHostFile("kept", "old");
  const std::string big(100'000, 'x');
  {
    const test::SmallDisk disk(50'000);
    EXPECT_EQ(ErrorOf(files_->WriteFile(P("new"), big)), 61);
    EXPECT_EQ(ErrorOf(files_->CopyFile(P("source"), P("copy"))), 61);
    EXPECT_EQ(ErrorOf(files_->ReplaceFile(P("kept"), big)), 61);
    EXPECT_EQ(ErrorOf(files_->AppendFile(P("kept"), big)), 61);
    auto writer = files_->OpenWriter(P("written"));
    ASSERT_TRUE(writer.has_value());
    EXPECT_EQ(ErrorOf((*writer)->Write(std::string(40'000, 'x'))), 0);
    EXPECT_EQ(ErrorOf((*writer)->Write(std::string(40'000, 'x'))), 61);
  }
  EXPECT_EQ(Names("*"), (Strings{"kept", "source", "written"}));
  EXPECT_EQ(dir_.ReadHostFile("kept"), "old");
  EXPECT_EQ(ErrorOf(files_->WriteFile(P("new"), big)), 0);  // the name is free again
}

TEST_F(WriteTest, AFullDiskKeepsTheContentThatWasToBeReplaced) {
  dir_.WriteHostFile("kept", "old");
  {
    const test::SmallDisk disk(50'000);
    EXPECT_EQ(ErrorOf(files_->ReplaceFile(P("kept"), std::string(100'000, 'x'))), 61);
  }
  EXPECT_EQ(dir_.ReadHostFile("kept"), "old");
  EXPECT_EQ(Names("*"), Strings{"kept"});
}

TEST_F(WriteTest, ADeviceWithoutRoomIsAFullDisk) {
  EXPECT_EQ(ErrorOf(files_->WriteFile("Z:\\dev\\full", "x")), 61);
  EXPECT_EQ(ErrorOf(files_->AppendFile("Z:\\dev\\full", "x")), 61);
  auto writer = files_->OpenWriter("Z:\\dev\\full");
  ASSERT_TRUE(writer.has_value());
  EXPECT_EQ(ErrorOf((*writer)->Write("x")), 61);
}

TEST_F(WriteTest, ReplacingKeepsRightsAndAttributes) {
  dir_.WriteHostFile("a", "old");
  ASSERT_EQ(chmod(H("a").c_str(), 0640), 0);
  ASSERT_EQ(ErrorOf(files_->SetHidden(P("a"), true)), 0);
  const bool canHide = files_->GetEntry(P("a"))->Hidden;
  ASSERT_EQ(ErrorOf(files_->ReplaceFile(P("A"), "new")), 0);
  EXPECT_EQ(dir_.ReadHostFile("a"), "new");
  EXPECT_EQ(ModeOf(H("a")), 0640u);
  EXPECT_EQ(files_->GetEntry(P("a"))->Hidden, canHide);
  EXPECT_EQ(Names("*"), Strings{"a"});
}

TEST_F(WriteTest, TheWorkFileOfAKilledProcessIsUsedAndGone) {
  dir_.WriteHostFile("list", "old");
  dir_.WriteHostFile("work", "left over");
  fs::create_symlink("list", H("linkedwork"));
  EXPECT_TRUE(files_->FileExists(P("WORK")));
  for (const char* work : {"work", "linkedwork"}) {
    ASSERT_EQ(ErrorOf(files_->ReplaceFile(P("list"), "new", {.WorkName = work})), 0);
    EXPECT_EQ(dir_.ReadHostFile("list"), "new");
    EXPECT_FALSE(files_->FileExists(P(work)));
    EXPECT_EQ(files_->UniqueFileName(dir_.Path(), work), work);
  }
  EXPECT_EQ(Names("*"), Strings{"list"});
}

TEST_F(WriteTest, TemporaryFilesOfKilledProcessesGoWithTheNextReplacement) {
  dir_.WriteHostFile(".velmora-4711-0.tmp", "left by a process that was killed");
  dir_.WriteHostFile(".velmora-4712-0.tmp", "being written");
  dir_.WriteHostFile(".velmora-notes", "a user's");
  fs::create_symlink(".velmora-notes", H(".velmora-4713-0.tmp"));
  const Descriptor writer(open(H(".velmora-4712-0.tmp").c_str(), O_WRONLY));
  ASSERT_EQ(flock(writer.Get(), LOCK_EX | LOCK_NB), 0);
  ASSERT_EQ(ErrorOf(files_->ReplaceFile(P("list"), "new")), 0);
  EXPECT_EQ(Names("*"), (Strings{".velmora-4712-0.tmp", ".velmora-4713-0.tmp", ".velmora-notes", "list"}));
}

// The lock tells that the writer lives: a process that dies in its middle leaves a file without one.
TEST_F(WriteTest, AProcessKilledWhileItReplacesLeavesNothingForLong) {
  const std::string huge(std::size_t{64} << 20, 'x');
  std::size_t left = 0;
  for (int attempt = 0; attempt < 50 && left == 0; ++attempt) {
    const pid_t child = fork();
    if (child == 0) {
      (void)MakeHostFileSystem({})->ReplaceFile(P("list"), huge);
      _exit(0);
    }
    // Killed as soon as its temporary file shows, the time of writing 64 MB before it is renamed.
    const std::string temporary = H(".velmora-" + std::to_string(child) + "-0.tmp");
    while (!fs::exists(temporary) && waitpid(child, nullptr, WNOHANG) == 0) {
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    left = Names(".velmora-*").size();
  }
  ASSERT_EQ(left, 1u);
  ASSERT_EQ(ErrorOf(files_->ReplaceFile(P("list"), "new")), 0);
  EXPECT_EQ(Names("*"), Strings{"list"});
}

TEST_F(WriteTest, ReplacingThroughALinkKeepsTheLink) {
  fs::create_directory(H("real"));
  dir_.WriteHostFile("real/a", "old");
  fs::create_symlink("real/a", H("link"));
  fs::create_symlink("nowhere", H("dangling"));
  ASSERT_EQ(ErrorOf(files_->ReplaceFile(P("link"), "new")), 0);
  EXPECT_TRUE(fs::is_symlink(H("link")));
  EXPECT_EQ(dir_.ReadHostFile("real/a"), "new");
  EXPECT_EQ(NamesIn(P("real"), "*"), Strings{"a"});
  EXPECT_EQ(ErrorOf(files_->ReplaceFile(P("dangling"), "new")), 53);
}

TEST_F(WriteTest, SyncCoversEveryDiskWrittenTo) {
  EXPECT_EQ(ErrorOf(files_->SyncWritten()), 0);
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("sub"))), 0);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("sub\\a"), "1")), 0);
  EXPECT_EQ(ErrorOf(files_->SyncWritten()), 0);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("sub\\b"), "1")), 0);
  ASSERT_EQ(ErrorOf(files_->DeleteFolder(P("sub"), false)), 0);
  EXPECT_EQ(ErrorOf(files_->SyncWritten()), 0);  // though the folder that was written to is gone
}

// Who deletes a tree syncs after each folder; a sync of the whole machine instead waits for all that other
// programs write to other disks.
TEST_F(WriteTest, DiskOfAVanishedFolderIsFoundThroughTheFoldersAroundIt) {
  struct stat here {
  }, found{};
  ASSERT_EQ(stat(H("").c_str(), &here), 0);
  const Descriptor around = OpenOnDisk(H("gone/deeper"), here.st_dev);
  ASSERT_TRUE(around);
  ASSERT_EQ(fstat(around.Get(), &found), 0);
  EXPECT_EQ(found.st_dev, here.st_dev);
  EXPECT_FALSE(OpenOnDisk(H("gone"), here.st_dev + 4096)) << "no folder on the way up lies on that disk";
  EXPECT_FALSE(OpenOnDisk("", here.st_dev));
}

TEST_F(WriteTest, EveryErrorNumberHasOneGermanText) {
  Strings texts;
  for (const int number : {52, 53, 57, 58, 61, 70, 76}) texts.push_back(FileErrorText(number));
  std::sort(texts.begin(), texts.end());
  EXPECT_EQ(std::unique(texts.begin(), texts.end()), texts.end());
  EXPECT_EQ(FileErrorText(53), "Datei nicht gefunden");
  EXPECT_EQ(FileErrorText(57), "Gerätefehler");
  EXPECT_EQ(FileErrorText(4711), "Gerätefehler");
  EXPECT_EQ(files_->ReadFile(P("missing")).error().Text, "Datei nicht gefunden");
}

}  // namespace
}  // namespace velmora::platform
