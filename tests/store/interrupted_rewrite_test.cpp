// A process that dies in the middle of a rewrite: afterwards the old or the new list stands, or the backup
// counts as the list until it stands again.
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "record_files_fixture.h"
#include "store/errors.h"
#include "support/forwarding_file_system.h"

namespace velmora::store {
namespace {

// Ends the process before the nth step of what changes files. Copying and replacing are taken apart into
// their steps, half-written files included.
class DyingFileSystem final : public test::ForwardingFileSystem {
 public:
  DyingFileSystem(platform::FileSystem& inner, int step) : ForwardingFileSystem(inner), left_(step) {}

  static constexpr int Died = 42;

  Status CopyFile(std::string_view source, std::string_view target,
                  const platform::WriteOptions& options) override {
    Step();
    const std::string bytes = Inner.ReadFile(source).value_or("");
    WriteHalf(target, bytes);
    Step();
    return Inner.CopyFile(source, target, options);
  }
  Status ReplaceFile(std::string_view path, std::string_view bytes,
                     const platform::WriteOptions& options) override {
    Step();
    const std::string work = std::string(path.substr(0, path.rfind('\\') + 1)) +
                             (options.WorkName.empty() ? std::string(".velmora-0-0.tmp") : options.WorkName);
    (void)Inner.DeleteFile(work, true);
    Step();
    WriteHalf(work, bytes);
    Step();
    (void)Inner.WriteFile(work, bytes);
    Step();
    (void)Inner.DeleteFile(work, true);
    const Status replaced = Inner.ReplaceFile(path, bytes, options);
    Step();
    return replaced;
  }
  Status DeleteFile(std::string_view path, bool force) override {
    Step();
    return Inner.DeleteFile(path, force);
  }

 private:
  void Step() {
    if (--left_ == 0) _exit(Died);
  }
  void WriteHalf(std::string_view path, std::string_view bytes) {
    (void)Inner.WriteFile(path, bytes.substr(0, bytes.size() / 2));
    Step();
  }

  int left_;
};

class InterruptedRewriteTest : public RecordFilesTest {
 protected:
  // Lets `work` die at its first step, its second, and so on until it lives; looks after each.
  void DieEverywhere(const std::function<void()>& prepare,
                     const std::function<bool(platform::FileSystem&)>& work,
                     const std::function<void(int step)>& look) {
    constexpr int MostSteps = 200;
    for (int step = 1; step < MostSteps; ++step) {
      prepare();
      const pid_t child = fork();
      if (child == 0) {
        const auto files = MakeFiles();
        DyingFileSystem dying(*files, step);
        _exit(work(dying) ? 0 : 1);
      }
      int status = 0;
      waitpid(child, &status, 0);
      ASSERT_TRUE(WIFEXITED(status));
      look(step);
      if (WEXITSTATUS(status) == 0) {
        EXPECT_GT(step, 5) << "nothing was interrupted";
        return;
      }
      ASSERT_EQ(WEXITSTATUS(status), DyingFileSystem::Died);
    }
    FAIL() << "never came to its end";
  }
  void Clean() {
    for (const auto* name : {"archive.dir", "archive.vlw", "archivedir.bak", ".velmora-0-0.tmp"})
      std::filesystem::remove(Temp.HostPath("ARCHIVE/" + std::string(name)));
  }
  // The list as the program sees it.
  std::string SeenList() { return ReadArchiveList(*MakeFiles(), Directory).value_or("not readable"); }

  const DirRecord A = Record(PathOf("A"), "A"), B = Record(PathOf("B"), "B"), C = Record(PathOf("C"), "C");
};

TEST_F(InterruptedRewriteTest, TheOldOrTheNewListStandsWhereverADeletionDies) {
  std::string before;
  DieEverywhere(
      [&] {
        Clean();
        WriteList({A, B, C});
        before = List();
      },
      [&](platform::FileSystem& files) {
        const auto found = FindArchiveRecord(files, Directory, {.Path = PathOf("B")});
        return found && DeleteArchiveRecord(files, Directory, *found);
      },
      [&](int step) {
        const std::string after = std::string(A.Bytes()) + std::string(C.Bytes());
        EXPECT_TRUE(List() == before || List() == after) << step;
        // The next rewrite goes through, over whatever was left.
        EXPECT_TRUE(AppendArchiveRecord(*MakeFiles(), Directory, Record(PathOf("D"), "D"))) << step;
        EXPECT_EQ(NamesIn(List()).back(), "D");
        EXPECT_FALSE(Exists("archive.vlw")) << step;
      });
}

TEST_F(InterruptedRewriteTest, TheFirstListOfADirectoryStandsOrDoesNot) {
  DieEverywhere(
      [&] { Clean(); },
      [&](platform::FileSystem& files) { return AppendArchiveRecord(files, Directory, A).has_value(); },
      [&](int step) {
        const std::string seen = SeenList();
        EXPECT_TRUE(seen.empty() || seen == A.Bytes()) << step;
      });
}

// What another program leaves that deletes the list before it has written the new one.
TEST_F(InterruptedRewriteTest, TheBackupOfAForeignRewriteIsTheListUntilItStandsAgain) {
  std::string before;
  const auto leave = [&] {
    Clean();
    WriteList({A, B, C});
    before = List();
    std::filesystem::rename(Temp.HostPath("ARCHIVE/archive.dir"), Temp.HostPath("ARCHIVE/archivedir.bak"));
    Temp.WriteHostFile("ARCHIVE/archive.vlw", A.Bytes());
  };
  leave();
  EXPECT_TRUE(IsListInterrupted(*Files, Directory));
  EXPECT_EQ(SeenList(), before);
  EXPECT_EQ(Find("B").Number, 2);
  EXPECT_FALSE(Exists("archive.dir")) << "looking changes nothing";

  // Recovering may itself be interrupted anywhere.
  const std::string longer = before + std::string(Record(PathOf("D"), "D").Bytes());
  DieEverywhere(
      leave,
      [&](platform::FileSystem& files) {
        return AppendArchiveRecord(files, Directory, Record(PathOf("D"), "D")).has_value();
      },
      [&](int step) {
        const std::string seen = SeenList();
        EXPECT_TRUE(seen == before || seen == longer) << step << ": " << seen.size();
      });
  EXPECT_EQ(List(), longer);
  EXPECT_FALSE(Exists("archive.vlw"));
}

TEST_F(InterruptedRewriteTest, ABackupOrAWorkFileAloneTellsOfNothing) {
  Temp.WriteHostFile("ARCHIVE/archivedir.bak", A.Bytes());
  EXPECT_FALSE(IsListInterrupted(*Files, Directory));
  EXPECT_EQ(SeenList(), "") << "somebody has taken the list away";
  DieEverywhere(
      [&] {
        Clean();
        Temp.WriteHostFile("ARCHIVE/archivedir.bak", A.Bytes());
      },
      [&](platform::FileSystem& files) { return AppendArchiveRecord(files, Directory, B).has_value(); },
      [&](int step) {
        const std::string seen = SeenList();
        EXPECT_TRUE(seen.empty() || seen == B.Bytes()) << step << ": the old backup is no list";
      });
}

TEST_F(InterruptedRewriteTest, BackingUpAnInterruptedListRecoversItFirst) {
  Temp.WriteHostFile("ARCHIVE/archivedir.bak", A.Bytes());
  Temp.WriteHostFile("ARCHIVE/archive.vlw", "");
  EXPECT_EQ(BackupArchiveFiles(*Files, Directory), Result<int>(1));
  EXPECT_EQ(List(), A.Bytes());
}

TEST_F(InterruptedRewriteTest, ABackupThatCannotBeReadIsAFailureAndNoEmptyList) {
  Temp.WriteHostFile("ARCHIVE/archive.vlw", "");
  std::filesystem::create_symlink("/nowhere/at/all", Temp.HostPath("ARCHIVE/archivedir.bak"));
  EXPECT_FALSE(IsListInterrupted(*Files, Directory));
  std::filesystem::remove(Temp.HostPath("ARCHIVE/archivedir.bak"));
  Temp.WriteHostFile("ARCHIVE/archivedir.bak", "");
  std::filesystem::resize_file(Temp.HostPath("ARCHIVE/archivedir.bak"),
                               static_cast<std::uintmax_t>(LongestRecordFile) + 1);
  EXPECT_EQ(ErrorOf(ReadArchiveList(*Files, Directory)), store_error::Damaged);
  EXPECT_EQ(ErrorOf(AppendArchiveRecord(*Files, Directory, A)), store_error::Damaged);
  EXPECT_FALSE(Exists("archive.dir"));
}

TEST_F(InterruptedRewriteTest, OnlyWhatIsCertainlyNotThereIsGone) {
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/DA"));
  EXPECT_EQ(LookForDirectory(*Files, PathOf("DA")), DirectoryState::There);
  EXPECT_EQ(LookForDirectory(*Files, PathOf("WEG")), DirectoryState::Gone);
  EXPECT_EQ(LookForDirectory(*Files, PathOf(R"(WEG\TIEFER)")), DirectoryState::Gone);
  EXPECT_EQ(LookForDirectory(*Files, R"(\\ANDERER\DAVID\ARCHIVE\A)"), DirectoryState::Unknown);
}

// A directory whose names may be read, but not what they stand for, looks as if it had no list.
TEST_F(InterruptedRewriteTest, AListThatMayNotBeReadIsNoEmptyOne) {
  namespace fs = std::filesystem;
  WriteList({A});
  fs::permissions(Temp.HostPath(), fs::perms(0755));
  fs::permissions(Temp.HostPath("ARCHIVE"), fs::perms(0444));
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t Nobody = 65534;  // the root user may look everywhere
    if (geteuid() == 0 && seteuid(Nobody) != 0) _exit(9);
    const auto files = MakeFiles();
    if (ErrorOf(ReadArchiveList(*files, Directory)) != store_error::NoAccess) _exit(1);
    if (ErrorOf(FindArchiveRecord(*files, Directory, {.Path = PathOf("A")})) != store_error::NoAccess)
      _exit(2);
    if (AppendArchiveRecord(*files, Directory, B)) _exit(3);
    if (LookForDirectory(*files, PathOf("WEG")) != DirectoryState::Unknown) _exit(4);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  fs::permissions(Temp.HostPath("ARCHIVE"), fs::perms(0755));
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(List(), A.Bytes());
}

}  // namespace
}  // namespace velmora::store
