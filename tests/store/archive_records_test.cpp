#include "store/archive_records.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>

#include "record_files_fixture.h"
#include "store/errors.h"
#include "support/faulty_file_system.h"

namespace velmora::store {
namespace {

using RecordsTest = RecordFilesTest;

TEST_F(RecordsTest, ARecordWithoutAPathDoesNotStopTheSearch) {
  WriteList({WithArea("\4Nur ein Name"), WithArea("\3" + std::string(DirRecord::TextSize - 1, 'x')),
             DirRecord(), Record(PathOf("A"), "A")});
  EXPECT_EQ(Find("A").Number, 4);
}

TEST_F(RecordsTest, ARecordOfAnotherNameIsPassedOver) {
  WriteList({Record(PathOf("A"), "Eins"), Record(PathOf("A"), "eins"), Record(PathOf("A"), "Zwei")});
  const auto find = [&](std::string name) {
    return FindArchiveRecord(*Files, Directory, {.Path = PathOf("A"), .Name = std::move(name)});
  };
  EXPECT_EQ(find("Zwei")->Number, 3);
  EXPECT_EQ(find("eins")->Number, 2) << "names are compared exactly";
  EXPECT_EQ(ErrorOf(find("Drei")), store_error::NotFound);
}

TEST_F(RecordsTest, PathsAreComparedWithoutRegardToCaseFromTheFirstRecordAskedFor) {
  WriteList({Record(PathOf("B"), "B"), Record(PathOf("Ä"), "Eins"), Record(PathOf("ä"), "Zwei")});
  EXPECT_EQ(Find("Ä").Number, 2);
  const auto second = FindArchiveRecord(*Files, Directory, {.Path = PathOf("Ä"), .FirstRecord = 3});
  EXPECT_EQ(second->Number, 3);
  EXPECT_EQ(second->Record.Name(), "Zwei");
  EXPECT_EQ(ErrorOf(FindArchiveRecord(*Files, Directory, {.Path = PathOf("Ä"), .FirstRecord = 4})),
            store_error::NotFound);
  EXPECT_EQ(FindAllRecords(*Files, Directory, {.Path = PathOf("Ä")})->size(), 2u);
}

TEST_F(RecordsTest, TheMatchFlagFindsAnotherSpellingOfTheDirectory) {
  WriteList({Record(R"(SERVER\DAVID:ARCHIVE\A)", "A")});
  RecordSearch search{.Path = PathOf("A")};
  EXPECT_EQ(ErrorOf(FindArchiveRecord(*Files, Directory, search)), store_error::NotFound);
  search.Match = PathMatch::SameArchive;
  EXPECT_EQ(FindArchiveRecord(*Files, Directory, search)->Number, 1);
}

TEST_F(RecordsTest, RecordsBehindADeletedOneStandOneNumberLower) {
  WriteList({Record(PathOf("A"), "A"), Record(PathOf("B"), "B"), Record(PathOf("C"), "C"),
             Record(PathOf("D"), "D")});
  const std::string before = List();
  ASSERT_TRUE(DeleteArchiveRecord(*Files, Directory, Find("B")));
  EXPECT_EQ(Names(), (Texts{"A", "C", "D"}));
  EXPECT_EQ(Find("C").Number, 2);
  EXPECT_EQ(Find("D").Number, 3);
  EXPECT_FALSE(Exists("archive.vlw"));
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/archivedir.bak"), before);
  EXPECT_EQ(Find("C").Record, Record(PathOf("C"), "C")) << "heads and tails are carried unchanged";
}

TEST_F(RecordsTest, SeveralRecordsGoInOneRewrite) {
  WriteList({Record(PathOf("A"), "A"), Record(PathOf("X"), "X"), Record(PathOf("B"), "B"),
             Record(PathOf("X"), "X"), Record(PathOf("X"), "X")});
  const std::string before = List();
  auto doomed = *FindAllRecords(*Files, Directory, {.Path = PathOf("X")});
  doomed.push_back(doomed.front());  // named twice
  EXPECT_EQ(DeleteArchiveRecords(*Files, Directory, doomed), Result<int>(3));
  EXPECT_EQ(Names(), (Texts{"A", "B"}));
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/archivedir.bak"), before) << "the list before all of it";
}

TEST_F(RecordsTest, OnlyWhatStillStandsAtItsNumberIsDeleted) {
  WriteList({Record(PathOf("A"), "A"), Record(PathOf("X"), "X"), Record(PathOf("X"), "X")});
  const auto twice = *FindAllRecords(*Files, Directory, {.Path = PathOf("X")});
  // Another administrator takes the second one out first: the one that is left is the last.
  ASSERT_TRUE(DeleteArchiveRecord(*Files, Directory, twice[1]));
  EXPECT_EQ(ErrorOf(DeleteArchiveRecord(*Files, Directory, twice[1])), store_error::NotFound);
  EXPECT_EQ(Names(), (Texts{"A", "X"}));
  EXPECT_EQ(ErrorOf(DeleteArchiveRecord(*Files, Directory, {0, twice[0].Record})), store_error::NotFound);
  EXPECT_EQ(ErrorOf(DeleteArchiveRecord(*Files, Directory, {-1, twice[0].Record})), store_error::NotFound);
}

TEST_F(RecordsTest, AWrittenRecordIsFoundAgainWhereOthersHaveMovedIt) {
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/C"));
  WriteList({Record(PathOf("A"), "A"), Record(PathOf("B"), "B"), Record(PathOf("C"), "C")});
  const NumberedRecord old = Find("C");
  ASSERT_TRUE(DeleteArchiveRecord(*Files, Directory, Find("A")));
  const DirRecord fresh = Record(PathOf("C"), "Neu", 5);
  ASSERT_TRUE(WriteArchiveRecord(*Files, Directory, old, fresh, RecordKind::Own));
  EXPECT_EQ(Names(), (Texts{"B", "Neu"}));
  EXPECT_EQ(Find("C").Record, fresh);
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/C/archive.add"), fresh.Bytes());
  EXPECT_EQ(ErrorOf(WriteArchiveRecord(*Files, Directory, old, fresh, RecordKind::Own)),
            store_error::NotFound);
}

TEST_F(RecordsTest, TheRecordOfALinkLeavesTheTargetsOwnRecordAlone) {
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/C"));
  Temp.WriteHostFile("ARCHIVE/C/archive.add", Record(PathOf("C"), "Ziel").Bytes());
  WriteList({Record(PathOf("C"), "Link")});
  ASSERT_TRUE(
      WriteArchiveRecord(*Files, Directory, Find("C"), Record(PathOf("C"), "Anders"), RecordKind::Link));
  EXPECT_EQ(RecordAt(Temp.ReadHostFile("ARCHIVE/C/archive.add"), 1)->Name(), "Ziel");
}

TEST_F(RecordsTest, ATornRecordGoesAtTheFirstRewrite) {
  const DirRecord whole = Record(PathOf("A"), "A");
  Temp.WriteHostFile("ARCHIVE/archive.dir", std::string(whole.Bytes()) + std::string(429, 'x'));
  EXPECT_EQ(Find("A").Number, 1);
  EXPECT_EQ(AppendArchiveRecord(*Files, Directory, Record(PathOf("B"), "B")), Result<int>(2));
  EXPECT_EQ(List().size(), 2 * DirRecord::Size);
  EXPECT_EQ(Names(), (Texts{"A", "B"}));
}

TEST_F(RecordsTest, RecordsOfZerosAndOfNoiseAreCarriedAlong) {
  WriteList({DirRecord(), *DirRecord::FromBytes(Opaque(DirRecord::Size, 77)), Record(PathOf("A"), "A")});
  const std::string before = List();
  ASSERT_TRUE(DeleteArchiveRecord(*Files, Directory, Find("A")));
  EXPECT_EQ(List(), before.substr(0, 2 * DirRecord::Size));
}

TEST_F(RecordsTest, MissingListsAndDirectories) {
  EXPECT_EQ(ErrorOf(FindArchiveRecord(*Files, Directory, {.Path = PathOf("A")})), store_error::NotFound);
  EXPECT_EQ(ErrorOf(AppendArchiveRecord(*Files, PathOf("FEHLT"), DirRecord())), store_error::NotFound);
  EXPECT_EQ(ErrorOf(FindArchiveRecord(*Files, R"(\\ANDERER\DAVID\X)", {.Path = "x"})), store_error::NotFound);
  EXPECT_EQ(AppendArchiveRecord(*Files, Directory, Record(PathOf("A"), "A")), Result<int>(1));
  std::filesystem::remove(Temp.HostPath("ARCHIVE/archive.dir"));
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/archive.dir"));
  EXPECT_EQ(ErrorOf(FindArchiveRecord(*Files, Directory, {.Path = PathOf("A")})), store_error::Damaged);
}

TEST_F(RecordsTest, AFullDiskLeavesTheListAsItWas) {
  WriteList({Record(PathOf("A"), "A"), Record(PathOf("B"), "B")});
  const std::string before = List();
  test::FaultyFileSystem faulty(*Files);
  for (int write = 1; write <= 2; ++write) {  // the backup, the list
    for (const test::Fault fault : {test::Fault::Write, test::Fault::ShortWrite}) {
      faulty.FailOn(fault, write, platform::file_error::DiskFull);
      EXPECT_EQ(ErrorOf(AppendArchiveRecord(faulty, Directory, Record(PathOf("C"), "C"))),
                store_error::Failed);
      EXPECT_EQ(List(), before);
      faulty.Heal();
    }
  }
  EXPECT_EQ(faulty.FailuresSoFar(), 4);
  EXPECT_TRUE(AppendArchiveRecord(faulty, Directory, Record(PathOf("C"), "C")));
}

TEST_F(RecordsTest, RewrittenPathsChangeTheListAndTheOwnRecord) {
  Temp.WriteHostFile("ARCHIVE/archive.add", Record(R"(\\ALT\DAVID\ARCHIVE)", "Archive").Bytes());
  WriteList({Record(R"(\\ALT\DAVID\ARCHIVE\A)", "A", 3), DirRecord(), Record(R"(\\FREMD\DAVID\B)", "B")});
  const std::array<PathReplacement, 1> pairs{{{R"(\\ALT\DAVID)", R"(\\SERVER\DAVID)"}}};
  const auto rewritten = RewriteRecordPaths(*Files, Directory, pairs);
  ASSERT_TRUE(rewritten);
  EXPECT_EQ(rewritten->Changed, 1);
  EXPECT_TRUE(rewritten->TooLong.empty());
  EXPECT_EQ(Find("A").Record, Record(PathOf("A"), "A", 3));
  EXPECT_EQ(RecordAt(List(), 2), DirRecord());
  EXPECT_EQ(RecordAt(List(), 3)->Path(), R"(\\FREMD\DAVID\B)");
  EXPECT_EQ(RecordAt(Temp.ReadHostFile("ARCHIVE/archive.add"), 1)->Path(), std::string(Directory));
  EXPECT_FALSE(Exists("archive.vlw"));
}

TEST_F(RecordsTest, APathThatWouldNotFitIsNamedAndStaysWhileTheOthersChange) {
  const std::string deep = R"(\\ALT\)" + std::string(250, 'd');
  WriteList({Record(R"(\\ALT\A)", "A"), Record(deep, "D")});
  const std::array<PathReplacement, 1> pairs{{{R"(\\ALT)", R"(\\EINLANGERSERVERNAME)"}}};
  const auto rewritten = RewriteRecordPaths(*Files, Directory, pairs);
  ASSERT_TRUE(rewritten);
  EXPECT_EQ(rewritten->Changed, 1);
  EXPECT_EQ(rewritten->TooLong, std::vector<int>{2});
  EXPECT_EQ(RecordAt(List(), 2)->Path(), deep);
}

TEST_F(RecordsTest, ARewriteWithoutAListIsASuccess) {
  const std::array<PathReplacement, 1> pairs{{{"a", "b"}}};
  const auto rewritten = RewriteRecordPaths(*Files, Directory, pairs);
  ASSERT_TRUE(rewritten);
  EXPECT_EQ(rewritten->Changed, 0);
  EXPECT_FALSE(Exists("archive.dir"));
}

TEST_F(RecordsTest, EveryFileThatIsThereGetsItsBackup) {
  WriteList({Record(PathOf("A"), "A")});
  Temp.WriteHostFile("ARCHIVE/archive.urt", "rules");
  Temp.WriteHostFile("ARCHIVE/archive.dat", "messages");
  Temp.WriteHostFile("ARCHIVE/archivedat.bak", "an older and longer one");
  EXPECT_EQ(BackupArchiveFiles(*Files, Directory), Result<int>(3));
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/archivedir.bak"), List());
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/archivedat.bak"), "messages");
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/archiveurt.bak"), "rules");
  EXPECT_FALSE(Exists("archiveadd.bak"));
}

TEST_F(RecordsTest, ABackupThatFailsIsToldAndTheOthersAreMade) {
  WriteList({Record(PathOf("A"), "A")});
  Temp.WriteHostFile("ARCHIVE/archive.urt", "rules");
  test::FaultyFileSystem faulty(*Files);
  faulty.FailOn(test::Fault::Write, 1, platform::file_error::DiskFull);
  EXPECT_EQ(ErrorOf(BackupArchiveFiles(faulty, Directory)), store_error::Failed);
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/archiveurt.bak"), "rules");
}

// --- Other processes. ---

TEST_F(RecordsTest, TwoProcessesThatRewriteOneListLoseNoRecord) {
  constexpr int Each = 500;
  WriteList({Record(PathOf("FEST"), "Fest")});
  const auto work = [&](const std::string& head) {
    const auto files = MakeFiles();
    for (int i = 0; i < Each; ++i) {
      const DirRecord record = Record(PathOf(head + std::to_string(i)), head);
      if (!AppendArchiveRecord(*files, Directory, record)) return false;
      // Every second one goes again, from wherever the other process has moved it.
      if (i % 2 != 0) continue;
      while (true) {
        const auto found = FindArchiveRecord(*files, Directory, {.Path = *record.Path()});
        if (!found) return false;
        if (DeleteArchiveRecord(*files, Directory, *found)) break;
      }
    }
    return true;
  };
  std::array<pid_t, 2> children{};
  for (std::size_t i = 0; i < children.size(); ++i) {
    children[i] = fork();
    if (children[i] == 0) _exit(work(i == 0 ? "P" : "Q") ? 0 : 1);
  }
  for (const pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  const std::string list = List();
  EXPECT_EQ(CountRecords(list), 1u + Each);
  for (int i = 1; i < Each; i += 2) {
    EXPECT_TRUE(FindRecordIn(list, {.Path = PathOf("P" + std::to_string(i))}));
    EXPECT_TRUE(FindRecordIn(list, {.Path = PathOf("Q" + std::to_string(i))}));
  }
}

}  // namespace
}  // namespace velmora::store
