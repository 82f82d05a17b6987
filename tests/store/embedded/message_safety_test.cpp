// What may happen to an archive: damage, other processes, crashes, file operations in between.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <set>
#include <thread>

#include "message_fixture.h"
#include "store/embedded/entry_store.h"
#include "store/errors.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view Mail = "Subject: x\n\nText\n";

class MessageSafetyTest : public MessageFixture {
 protected:
  bool Exists(std::string_view path) const { return std::filesystem::exists(directory.HostPath(path)); }
  // What another process sees: only what was committed.
  int CommittedCount(const std::string& archive = In) {
    const auto otherFiles = MakeFileSystem();
    return MessageStore(*otherFiles, clock).Count(archive).value_or(-1);
  }
};

TEST_F(MessageSafetyTest, WritesAreCommittedAfterTwoHundredMilliseconds) {
  Deliver(Mail);
  EXPECT_EQ(CommittedCount(), 0);
  clock.milliseconds += 199;
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(CommittedCount(), 0);
  clock.milliseconds += 1;
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(CommittedCount(), 1);
}

TEST_F(MessageSafetyTest, EndOfTheStoreCommits) {
  Deliver(Mail);
  store.reset();
  EXPECT_EQ(CommittedCount(), 1);
}

TEST_F(MessageSafetyTest, ContentFileStandsBeforeItsEntryAndIsItsOwnersAlone) {
  Deliver(Mail);
  EXPECT_EQ(CommittedCount(), 0);
  ASSERT_TRUE(Exists("archive/in/00000001.001"));
  using std::filesystem::perms;
  for (const auto* file : {"archive/in/00000001.001", "archive/in/archive.dat"}) {
    EXPECT_EQ(std::filesystem::status(directory.HostPath(file)).permissions(),
              perms::owner_read | perms::owner_write);
  }
}

TEST_F(MessageSafetyTest, ContentFileGoesOnlyWithTheCommit) {
  const auto key = Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  ASSERT_TRUE((*store->GetEntry(In, key))->Delete());
  EXPECT_TRUE(Exists("archive/in/00000001.001"));
  EXPECT_EQ(CommittedCount(), 1);
  ASSERT_TRUE(store->Commit());
  EXPECT_FALSE(Exists("archive/in/00000001.001"));
}

TEST_F(MessageSafetyTest, KeysLieAboveEveryFileInTheDirectory) {
  directory.WriteHostFile("archive/in/0000002a.tif", "rest");
  directory.WriteHostFile("archive/in/FFFFFFFF.001", "beyond every key");
  directory.WriteHostFile("archive/in/0000004g.001", "no key");
  EXPECT_EQ(Deliver(Mail), 0x2BU);
}

TEST_F(MessageSafetyTest, KeyStepsOverAFileThatCameLater) {
  EXPECT_EQ(Deliver(Mail), 1U);
  directory.WriteHostFile("archive/in/00000002.001", "somebody else's");
  EXPECT_EQ(Deliver(Mail), 3U);
  EXPECT_EQ(directory.ReadHostFile("archive/in/00000002.001"), "somebody else's");
}

TEST_F(MessageSafetyTest, DamagedDatabaseIsReportedWithItsPathByEveryCall) {
  directory.WriteHostFile("archive/in/archive.dat", std::string(5'000, 'x'));
  const auto isDamaged = [&](const Error& error) {
    EXPECT_EQ(error.Number, store_error::Damaged) << error.Text;
    EXPECT_NE(error.Text.find(In + "\\archive.dat"), std::string::npos) << error.Text;
  };
  isDamaged(store->Count(In).error());
  isDamaged(store->GetEntries(In, filter_preset::None, EntryOrder::Store).error());
  isDamaged(store->GetEntry(In, 1).error());
  isDamaged(store->Deliver(In, Mail, {}).error());
  isDamaged(store->CreateEntry(In, 2).error());
  isDamaged(store->RemoveEmpty(In).error());
  ASSERT_EQ(store->Check(In).size(), 1U);
  EXPECT_FALSE(Exists("archive/in/00000001.001"));
}

TEST_F(MessageSafetyTest, ForeignDatabaseIsNotTouched) {
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(directory.HostPath("archive/in/archive.dat").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "CREATE TABLE entries(key)", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(other);
  EXPECT_EQ(store->Count(In).error().Number, store_error::Damaged);
  EXPECT_EQ(store->Deliver(In, Mail, {}).error().Number, store_error::Damaged);
}

TEST_F(MessageSafetyTest, DamageWithinTheFileIsReported) {
  for (int i = 0; i < 200; ++i) Deliver("Subject: x\n\n" + std::string(3'000, 'y'));
  store.reset();
  {
    std::fstream file(directory.HostPath("archive/in/archive.dat"),
                      std::ios::in | std::ios::out | std::ios::binary);
    for (int page = 1; page < 100; ++page) {
      file.seekp(page * 4'096);
      file << std::string(64, '\xFF');
    }
  }
  Reopen();
  EXPECT_FALSE(store->Check(In).empty());
  int failures = 0;
  for (EntryKey key = 1; key <= 200; ++key) {
    const auto item = store->GetEntry(In, key);
    if (!item || !(*item)->Fields().Get(tag::PlainText)) ++failures;
  }
  EXPECT_GT(failures, 0);
}

TEST_F(MessageSafetyTest, EmptyDatabaseFileIsAnEmptyArchive) {
  directory.WriteHostFile("archive/in/archive.dat", "");
  EXPECT_EQ(Count(), 0);
  EXPECT_EQ(store->GetEntry(In, 1).error().Number, store_error::NotFound);
  EXPECT_EQ(Deliver(Mail), 1U);
  EXPECT_EQ(Count(), 1);
}

TEST_F(MessageSafetyTest, DatabaseIsFoundWithoutRegardToCase) {
  Deliver(Mail);
  store.reset();
  std::filesystem::rename(directory.HostPath("archive/in/archive.dat"),
                          directory.HostPath("archive/in/ARCHIVE.DAT"));
  files = MakeFileSystem();
  Reopen();
  EXPECT_EQ(Count(), 1);
  Deliver(Mail);
  EXPECT_FALSE(Exists("archive/in/archive.dat"));
}

TEST_F(MessageSafetyTest, CopiedDatabaseShowsItsMessagesInItsNewPlace) {
  const auto key = Deliver(Mail);
  ASSERT_TRUE(files->CopyFile(In + "\\archive.dat", Out + "\\archive.dat"));
  EXPECT_EQ(Count(Out), 1) << "what was pending was committed before the copy";
  EXPECT_EQ(FieldText(Field(key, tag::Location, Out)), Out + "\\00000001");
  EXPECT_EQ(FieldText(Field(key, tag::PlainText, Out)), "Text\r\n");
}

TEST_F(MessageSafetyTest, FileOperationsOnTheDatabaseCommitAndCloseIt) {
  Deliver(Mail);
  ASSERT_TRUE(files->MoveFile(In + "\\archive.dat", In + "\\archive.bak"));
  EXPECT_EQ(Count(), 0);
  Deliver(Mail);
  ASSERT_TRUE(files->DeleteFile(In + "\\archive.dat", false));
  ASSERT_TRUE(files->MoveFile(In + "\\archive.bak", In + "\\archive.dat"));
  EXPECT_EQ(Count(), 1);
  EXPECT_EQ(FieldText(Field(1, tag::PlainText)), "Text\r\n");
}

TEST_F(MessageSafetyTest, ReplacedDatabaseIsNoticed) {
  Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  EXPECT_EQ(Count(), 1);
  std::filesystem::remove(directory.HostPath("archive/in/archive.dat"));
  EXPECT_EQ(Count(), 0);
}

TEST_F(MessageSafetyTest, DeletedFolderTakesItsDatabaseAlong) {
  Deliver(Mail);
  ASSERT_TRUE(files->DeleteFolder(In, true));
  EXPECT_FALSE(Exists("archive/in"));
  EXPECT_EQ(store->Commit().has_value(), true);
}

TEST_F(MessageSafetyTest, BusyDatabaseIsWaitedForAndReported) {
  Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(directory.HostPath("archive/in/archive.dat").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(store->Deliver(In, Mail, {}).error().Number, store_error::Busy);
  EXPECT_EQ(Count(), 1);
  ASSERT_EQ(sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(other);
  EXPECT_EQ(Deliver(Mail), 2U);
}

TEST_F(MessageSafetyTest, ReadingWithoutPatienceDoesNotWait) {
  Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(directory.HostPath("archive/in/archive.dat").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  store->SetPatience(Patience::None);
  const auto milliseconds = [&] {
    const auto begun = std::chrono::steady_clock::now();
    const auto entries = store->GetEntries(In, 0, {});
    EXPECT_FALSE(entries);
    if (!entries) {
      EXPECT_EQ(entries.error().Number, store_error::Busy);
    }
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begun)
        .count();
  };
  EXPECT_LT(milliseconds(), 1000) << "a database that is open";
  ASSERT_TRUE(store->CommitAndClose(In));
  EXPECT_LT(milliseconds(), 1000) << "one that is opened";
  store->SetPatience(Patience::Usual);
  EXPECT_GE(milliseconds(), 4000);
  sqlite3_close(other);
  EXPECT_TRUE(store->GetEntries(In, 0, {}));
}

TEST_F(MessageSafetyTest, WhatIsWrittenKeepsItsPatience) {
  Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  Deliver(Mail);
  store->SetPatience(Patience::None);
  clock.milliseconds += 10 * LongestTransaction;
  EXPECT_EQ(Count(), 2);
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(directory.HostPath("archive/in/archive.dat").c_str(), &other), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_BUSY)
      << "reading without patience commits nothing";
  ASSERT_EQ(sqlite3_exec(other, "BEGIN", nullptr, nullptr, nullptr), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "SELECT count(*) FROM entries", nullptr, nullptr, nullptr), SQLITE_OK);
  std::thread reader([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
  });
  EXPECT_TRUE(store->Commit());
  reader.join();
  sqlite3_close(other);
}

TEST_F(MessageSafetyTest, ReadingLeavesNoLockBehind) {
  const auto key = Deliver("Subject: x\nTo: a@example.org\n\nText\n");
  ASSERT_TRUE(store->Commit());
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(directory.HostPath("archive/in/archive.dat").c_str(), &other), SQLITE_OK);
  const auto isFree = [&] {
    const bool begun = sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) == SQLITE_OK;
    return begun && sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK;
  };
  const auto view = store->ItemView(In, key);
  ASSERT_TRUE(view);
  EXPECT_TRUE(isFree());
  EXPECT_EQ((*view)->AsMail()->Text().value_or(""), "Text\r\n");
  EXPECT_TRUE(isFree());
  EXPECT_EQ((*view)->AsMail()->To()->size(), 1U);
  EXPECT_FALSE(store->ItemView(In, key + 1));
  EXPECT_TRUE(isFree());
  sqlite3_close(other);
}

TEST_F(MessageSafetyTest, MoveBackAndForthLosesNothing) {
  EntryStore entries(*files, clock);
  const auto key = Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  const auto there = entries.Move(In, key, Out);
  ASSERT_TRUE(there);
  const auto back = entries.Move(Out, *there, In);
  ASSERT_TRUE(back);
  ASSERT_TRUE(entries.Move(In, *back, In)) << "onto its own archive";
  ASSERT_TRUE(entries.Pool().Commit());
  EXPECT_EQ(Count(In), 1);
  EXPECT_EQ(Count(Out), 0);
  EXPECT_TRUE(store->Check(In).empty());
  EXPECT_TRUE(store->Check(Out).empty());
}

TEST_F(MessageSafetyTest, MoreArchivesThanOpenDatabases) {
  for (int i = 0; i < 150; ++i) {
    std::filesystem::create_directory(directory.HostPath("archive/" + std::to_string(i)));
    Deliver(Mail, "\\\\ZEB\\DAVID\\archive\\" + std::to_string(i));
  }
  for (int i = 0; i < 150; ++i) EXPECT_EQ(Count("\\\\ZEB\\DAVID\\archive\\" + std::to_string(i)), 1);
}

TEST_F(MessageSafetyTest, RemoveEmptyTakesOnlyWhatIsTheStores) {
  const auto key = Deliver(Mail);
  directory.WriteHostFile("archive/in/archive.ini", "x");
  EXPECT_EQ(store->RemoveEmpty(In).error().Number, store_error::NotEmpty);
  ASSERT_TRUE((*store->GetEntry(In, key))->Delete());
  ASSERT_TRUE(store->RemoveEmpty(In));
  EXPECT_FALSE(Exists("archive/in/archive.dat"));
  EXPECT_TRUE(Exists("archive/in/archive.ini"));
}

TEST_F(MessageSafetyTest, CheckNamesWhatDoesNotFit) {
  Deliver(Mail);
  const auto deleted = Deliver(Mail);
  Deliver(Mail);
  ASSERT_TRUE((*store->GetEntry(In, deleted))->Delete());
  ASSERT_TRUE(store->Commit());
  EXPECT_TRUE(store->Check(In).empty());
  std::filesystem::rename(directory.HostPath("archive/in/00000001.001"),
                          directory.HostPath("archive/in/00000002.001"));
  const auto findings = store->Check(In);
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[0].Key, 2U);
  EXPECT_EQ(findings[0].Text, "Inhaltsdatei ohne Eintrag: 00000002.001");
  EXPECT_FALSE(findings[0].IsNote);
  EXPECT_EQ(findings[1].Key, 1U);
}

TEST_F(MessageSafetyTest, FilesOfADeletionThatWasKilledAfterItsCommitGoWithTheNextTransaction) {
  const auto key = Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  const auto file = directory.HostPath("archive/in/00000001.001");
  const auto kept = directory.HostPath("archive/kept");
  std::filesystem::create_hard_link(file, kept);
  ASSERT_TRUE((*store->GetEntry(In, key))->Delete());
  ASSERT_TRUE(store->Commit());
  std::filesystem::rename(kept, file);  // as if the process had died before it removed the file
  EXPECT_TRUE(store->Check(In).empty());
  Reopen();
  Deliver(Mail);
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(MessageSafetyTest, AnotherFileUnderTheNameOfADeletedEntryStays) {
  const auto key = Deliver(Mail);
  ASSERT_TRUE((*store->GetEntry(In, key))->Delete());
  ASSERT_TRUE(store->Commit());
  directory.WriteHostFile("archive/in/00000001.001", "put back from a backup");
  Reopen();
  Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  EXPECT_EQ(directory.ReadHostFile("archive/in/00000001.001"), "put back from a backup");
  EXPECT_EQ(store->Check(In).size(), 1U);
}

TEST_F(MessageSafetyTest, FilesOfADeliveryThatWasKilledStayAndAreNoDamage) {
  Deliver(Mail);
  ASSERT_TRUE(store->Commit());
  directory.WriteHostFile("archive/in/00000005.001", "not committed");
  // Before and after the next delivery has taken a number above it.
  for (int round = 0; round < 2; ++round) {
    const auto findings = store->Check(In);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_TRUE(findings[0].IsNote);
    EXPECT_EQ(findings[0].Text, "Rest einer abgebrochenen Zustellung: 00000005.001");
    Reopen();
    Deliver(Mail);
    ASSERT_TRUE(store->Commit());
  }
  EXPECT_EQ(directory.ReadHostFile("archive/in/00000005.001"), "not committed");
}

TEST_F(MessageSafetyTest, ContentFilesOfALostDatabaseAreDamage) {
  Deliver(Mail);
  store.reset();
  std::filesystem::resize_file(directory.HostPath("archive/in/archive.dat"), 0);
  Reopen();
  const auto findings = store->Check(In);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_FALSE(findings[0].IsNote);
}

TEST_F(MessageSafetyTest, FileOfAFewBytesIsNoEmptyArchive) {
  directory.WriteHostFile("archive/in/archive.dat", "x");
  EXPECT_EQ(store->Count(In).error().Number, store_error::Damaged);
  EXPECT_FALSE(store->Deliver(In, Mail, {}));
  EXPECT_EQ(directory.ReadHostFile("archive/in/archive.dat"), "x");
}

// A process that is killed in the midst of moving entries: each stands at least once, whole.
TEST_F(MessageSafetyTest, KilledProcessLosesNoEntry) {
  constexpr int Mails = 300;
  for (int i = 0; i < Mails; ++i) Deliver("Subject: " + std::to_string(i) + "\n\nText\n");
  store.reset();
  for (int round = 0; round < 6; ++round) {
    const auto child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const auto childFiles = MakeFileSystem();
      EntryStore entries(*childFiles, platform::SystemClock());
      while (true) {
        for (const auto& [from, to] : {std::pair(In, Out), std::pair(Out, In)}) {
          for (const auto key :
               entries.Keys(from, filter_preset::None, EntryOrder::Store).value_or(std::vector<EntryKey>{})) {
            (void)entries.Move(from, key, to);
          }
        }
      }
    }
    usleep(150'000 + 70'000 * static_cast<unsigned>(round));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    Reopen();
    std::set<std::string> subjects;
    for (const auto& archive : {In, Out}) {
      const auto listed = store->GetEntries(archive, filter_preset::None, EntryOrder::Store);
      ASSERT_TRUE(listed) << listed.error().Text;
      for (int i = 0; i < (*listed)->Count(); ++i) {
        const auto item = (*listed)->Item(i);
        ASSERT_TRUE(item);
        subjects.insert(FieldText(*(*item)->Fields().Get(tag::Subject)));
        EXPECT_NE(store->SourcePath(archive, (*item)->Key()), "") << "entry without its content";
      }
    }
    EXPECT_EQ(subjects.size(), std::size_t{Mails});
    store.reset();
  }
}

TEST_F(MessageSafetyTest, KilledProcessLeavesNoFaxWithoutItsImage) {
  const std::string image(20'000, 'x');
  directory.WriteHostFile("bild.tif", image);
  for (int round = 0; round < 3; ++round) {
    store.reset();
    const auto child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const auto childFiles = MakeFileSystem();
      MessageStore faxes(*childFiles, platform::SystemClock());
      while (true) {
        const auto view = faxes.CreateItem(In, item_type::Fax);
        (void)(*view)->AsFax()->SetImage(directory.Path("bild.tif"));
        (void)(*view)->Item().Update();
      }
    }
    usleep(500'000 + 70'000 * static_cast<unsigned>(round));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    Reopen();
    const auto listed = store->GetEntries(In, filter_preset::None, EntryOrder::Store);
    ASSERT_TRUE(listed) << listed.error().Text;
    EXPECT_GT((*listed)->Count(), 0);
    for (int i = 0; i < (*listed)->Count(); ++i) {
      const auto view = store->ItemView(In, (*listed)->Key(i));
      ASSERT_TRUE(view);
      EXPECT_EQ(files->ReadFile((*view)->AsFax()->ImagePath()).value_or(""), image);
    }
    for (const auto& finding : store->Check(In)) EXPECT_TRUE(finding.IsNote) << finding.Text;
  }
}

// No file may grow any more, as on a full disk: what a commit has reported as done stands, what it could not
// keep has been reported.
TEST_F(MessageSafetyTest, FullDiskLosesNothingThatWasReportedAsDone) {
  int channel[2];
  ASSERT_EQ(pipe(channel), 0);
  const auto child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{400'000, 400'000};
    setrlimit(RLIMIT_FSIZE, &limit);
    const auto childFiles = MakeFileSystem();
    MessageStore childStore(*childFiles, clock);
    int pending = 0, done = 0, failures = 0;
    for (int i = 0; i < 1'000; ++i) {
      if (childStore.Deliver(In, "Subject: x\n\n" + std::string(1'500, 'y'), {})) {
        ++pending;
      } else {
        ++failures;
      }
      if (i % 7 != 6) continue;
      if (childStore.Commit()) {
        done += pending;
      } else {
        ++failures;
      }
      pending = 0;
    }
    const int report[2] = {done, failures};
    _exit(write(channel[1], report, sizeof report) == sizeof report ? 0 : 1);
  }
  int report[2] = {};
  ASSERT_EQ(read(channel[0], report, sizeof report), static_cast<ssize_t>(sizeof report));
  waitpid(child, nullptr, 0);
  close(channel[0]);
  close(channel[1]);
  EXPECT_GT(report[0], 0);
  EXPECT_GT(report[1], 0) << "the disk was never full";
  Reopen();
  EXPECT_GE(Count(), report[0]);
  const auto listed = store->GetEntries(In, filter_preset::None, EntryOrder::Store);
  for (int i = 0; i < (*listed)->Count(); ++i) {
    EXPECT_NE(store->SourcePath(In, (*listed)->Key(i)), "");
    EXPECT_EQ(FieldText(Field((*listed)->Key(i), tag::PlainText)).size(), 1'500U);
  }
}

// Two processes that deliver into one archive: every key once, every message there.
TEST_F(MessageSafetyTest, TwoProcessesDeliverIntoOneArchive) {
  constexpr int Mails = 150;
  std::vector<pid_t> children;
  for (int process = 0; process < 2; ++process) {
    const auto child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const auto childFiles = MakeFileSystem();
      MessageStore childStore(*childFiles, platform::SystemClock());
      int failures = 0;
      for (int i = 0; i < Mails; ++i) {
        if (!childStore.Deliver(In, "Subject: " + std::to_string(process * 1'000 + i) + "\n\n", {}))
          ++failures;
        if (i % 10 == 9 && !childStore.Commit()) ++failures;
      }
      if (!childStore.Commit()) ++failures;
      _exit(failures == 0 ? 0 : 1);
    }
    children.push_back(child);
  }
  for (const auto child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  Reopen();
  EXPECT_EQ(Count(), 2 * Mails);
  EXPECT_TRUE(store->Check(In).empty());
}

}  // namespace
}  // namespace velmora::store::embedded
