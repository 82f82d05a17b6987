// Other processes, killed processes, foreign changes, failing disks, and what a check finds.
#include <fmt/format.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <set>
#include <thread>
#include <utility>

#include "store/archive_files.h"
#include "store/archive_record.h"
#include "store/errors.h"
#include "support/forwarding_file_system.h"
#include "tree_fixture.h"

namespace velmora::store::embedded {
namespace {

namespace fs = std::filesystem;

class TreeSafetyTest : public TreeTest {
 protected:
  // Runs `work` in a process of its own, which ends with 0 when it returns true.
  template <typename Work>
  static pid_t Start(Work work) {
    const pid_t child = fork();
    if (child == 0) _exit(work() ? 0 : 1);
    return child;
  }
  static int ExitStatusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  bool CreateMany(std::string_view prefix, int count) {
    const auto files = MakeFiles();
    ArchiveTree tree(*files, std::string(Root));
    for (int i = 0; i < count; ++i)
      if (!tree.Create(Root, fmt::format("{}{}", prefix, i), {})) return false;
    return true;
  }
  std::string RootList() const { return Temp.ReadHostFile("ARCHIVE/archive.dir"); }
};

TEST_F(TreeSafetyTest, TwoProcessesWriteOneListAtOnce) {
  constexpr int Each = 60;
  const pid_t first = Start([&] { return CreateMany("Gleich", Each); });
  const pid_t second = Start([&] { return CreateMany("Gleich", Each); });
  EXPECT_EQ(ExitStatusOf(first), 0);
  EXPECT_EQ(ExitStatusOf(second), 0);
  std::set<std::string> directories;
  for (const ArchiveRecord& child : Children(Root)) directories.insert(child.Directory);
  EXPECT_EQ(directories.size(), 2u * Each);
  EXPECT_EQ(RootList().size(), 2u * Each * DirRecord::Size);
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeSafetyTest, AnotherProcessesChangeIsSeenAtOnce) {
  Make(Root, "Eins");
  ASSERT_EQ(Children(Root).size(), 1u);
  for (int round = 0; round < 20; ++round) {
    ASSERT_EQ(ExitStatusOf(Start([&] { return CreateMany(fmt::format("R{}N", round), 1); })), 0);
    ASSERT_EQ(Children(Root).size(), static_cast<std::size_t>(round + 2));
  }
}

TEST_F(TreeSafetyTest, ChangeInPlaceOfTheSameLengthIsSeen) {
  Make(Root, "Eins");
  for (const std::string name : {"Zwei", "Drei", "Vier", "Fünf"}) {
    ASSERT_EQ(Children(Root).size(), 1u);
    DirRecord record = *RecordAt(RootList(), 1);
    ASSERT_TRUE(record.SetName(name));
    Temp.WriteHostFile("ARCHIVE/archive.dir", record.Bytes());
    EXPECT_EQ(ChildNames(Root), Names{name});
    EXPECT_TRUE(Tree->FindByNames(Root, {name}));
  }
}

TEST_F(TreeSafetyTest, ARecordChangedInTheMiddleIsFoundByItsNewNameAndPathAlone) {
  const ArchiveRecord first = Make(Root, "Eins"), second = Make(Root, "Zwei"), third = Make(Root, "Drei");
  ASSERT_TRUE(Tree->Rename(second, "Eins"));
  EXPECT_EQ(ChildNames(Root), (Names{"Eins", "Eins", "Drei"}));
  EXPECT_FALSE(Tree->FindByNames(Root, {"Zwei"}));
  EXPECT_EQ(Tree->FindByNames(Root, {"Eins"})->Directory, first.Directory) << "the first of equal names";
  ASSERT_TRUE(Tree->Rename(first, "Vier"));
  EXPECT_EQ(Tree->FindByNames(Root, {"eins"})->Directory, second.Directory);
  EXPECT_EQ(Tree->FindByNames(Root, {"Drei"})->Directory, third.Directory);

  // Another program gives the record another path, and then none.
  std::string list = Temp.ReadHostFile("ARCHIVE/archive.dir");
  const std::string other = std::string(Root) + "\\ANDERS";
  list.replace(DirRecord::Size, DirRecord::Size, DirRecord::Make(other, "Neu")->Bytes());
  Temp.WriteHostFile("ARCHIVE/archive.dir", list);
  EXPECT_EQ(Tree->FindByDirectory(other)->Name, "Neu");
  EXPECT_FALSE(Tree->FindByDirectory(second.Directory));
  list.replace(DirRecord::Size, DirRecord::Size, std::string(DirRecord::Size, '\0'));
  Temp.WriteHostFile("ARCHIVE/archive.dir", list);
  EXPECT_EQ(ChildNames(Root), (Names{"Vier", "Drei"}));
  EXPECT_EQ(Tree->FindByNames(Root, {"Drei"})->RecordNumber, 3);
  EXPECT_FALSE(Tree->FindByDirectory(other));
}

TEST_F(TreeSafetyTest, RecordsBehindARemovedOneAreFoundAtTheirNewNumbers) {
  std::vector<ArchiveRecord> made;
  for (const auto* name : {"Eins", "Zwei", "Drei", "Eins", "Vier"}) made.push_back(Make(Root, name));
  ASSERT_TRUE(Tree->RemoveRecord(made[1]));
  EXPECT_EQ(ChildNames(Root), (Names{"Eins", "Drei", "Eins", "Vier"}));
  EXPECT_EQ(Tree->FindByDirectory(made[3].Directory)->RecordNumber, 3);
  EXPECT_EQ(Tree->FindByNames(Root, {"Vier"})->RecordNumber, 4);
  EXPECT_FALSE(Tree->FindByNames(Root, {"Zwei"}));
  ASSERT_TRUE(Tree->RemoveRecord(made[0]));
  EXPECT_EQ(Tree->FindByNames(Root, {"Eins"})->Directory, made[3].Directory);
  ASSERT_TRUE(Tree->Rename(made[4], "Letzter"));
  EXPECT_EQ(ChildNames(Root), (Names{"Drei", "Eins", "Letzter"}));

  // Another program takes two at once, a record without a path among them.
  const ArchiveRecord last = Make(Root, "Ende");
  std::string list = Temp.ReadHostFile("ARCHIVE/archive.dir");
  list.insert(DirRecord::Size, std::string(DirRecord::Size, '\0'));
  Temp.WriteHostFile("ARCHIVE/archive.dir", list);
  EXPECT_EQ(Tree->FindByDirectory(last.Directory)->RecordNumber, 5);
  list.erase(DirRecord::Size, 2 * DirRecord::Size);
  Temp.WriteHostFile("ARCHIVE/archive.dir", list);
  EXPECT_EQ(ChildNames(Root), (Names{"Drei", "Letzter", "Ende"}));
  EXPECT_EQ(Tree->FindByDirectory(last.Directory)->RecordNumber, 3);
  EXPECT_FALSE(Tree->FindByDirectory(made[3].Directory));
  Temp.WriteHostFile("ARCHIVE/archive.dir", list.substr(0, DirRecord::Size));
  EXPECT_EQ(ChildNames(Root), Names{"Drei"});
}

TEST_F(TreeSafetyTest, OldChangeBehindASetBackTimeIsSeen) {
  Make(Root, "Eins");
  const std::string before = RootList();
  Make(Root, "Zwei");
  std::this_thread::sleep_for(std::chrono::milliseconds(1100));
  ASSERT_EQ(Children(Root).size(), 2u);  // read once more, and now old enough to be believed
  DirRecord record = *RecordAt(RootList(), 1);
  ASSERT_TRUE(record.SetName("Neu"));
  const auto time = fs::last_write_time(Temp.HostPath("ARCHIVE/archive.dir"));
  Temp.WriteHostFile("ARCHIVE/archive.dir", std::string(record.Bytes()) + RootList().substr(DirRecord::Size));
  fs::last_write_time(Temp.HostPath("ARCHIVE/archive.dir"), time);
  EXPECT_EQ(ChildNames(Root), (Names{"Neu", "Zwei"}));
}

TEST_F(TreeSafetyTest, VanishedAndNewListsAreSeen) {
  const ArchiveRecord post = Make(Root, "Post");
  Make(post.Directory, "Innen");
  fs::rename(Temp.HostPath("ARCHIVE/POST/archive.dir"), Temp.HostPath("ARCHIVE/POST/weg"));
  EXPECT_TRUE(Children(post.Directory).empty());
  std::this_thread::sleep_for(std::chrono::milliseconds(1100));
  EXPECT_TRUE(Children(post.Directory).empty());
  fs::rename(Temp.HostPath("ARCHIVE/POST/weg"), Temp.HostPath("ARCHIVE/POST/ARCHIVE.DIR"));
  EXPECT_EQ(Children(post.Directory).size(), 1u) << "in any case";
  fs::remove_all(Temp.HostPath("ARCHIVE/POST"));
  EXPECT_TRUE(Children(post.Directory).empty());
}

TEST_F(TreeSafetyTest, ListsHandedOutStayAsTheyWere) {
  for (const auto* name : {"Eins", "Zwei", "Drei"}) Make(Root, name);
  for (const ArchiveRecord& child : Children(Root)) ASSERT_TRUE(Tree->RemoveRecord(child));
  EXPECT_TRUE(Children(Root).empty());
}

// Whenever a writer dies, the old or the new list stands, and the next writer goes on.
TEST_F(TreeSafetyTest, KilledWriterLeavesTheOldOrTheNewList) {
  Make(Root, "Anfang");
  std::size_t count = 1;
  for (int round = 0; round < 25; ++round) {
    const pid_t child = Start([&] { return CreateMany("Laufend", 100'000); });
    std::this_thread::sleep_for(std::chrono::microseconds(3000 + round * 777));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string list = RootList();
    ASSERT_EQ(list.size() % DirRecord::Size, 0u);
    ASSERT_GE(CountRecords(list), count);
    count = CountRecords(list);
    for (std::size_t number = 1; number <= count; ++number) {
      const auto record = RecordAt(list, number);
      ASSERT_TRUE(record->Path() && record->Name());
      ASSERT_TRUE(Files->FolderExists(*record->Path())) << "the directory stands before its record";
    }
    Make(Root, "Danach");
    ++count;
  }
}

// Ends the process at the n-th step of a write.
class DyingFileSystem : public test::ForwardingFileSystem {
 public:
  DyingFileSystem(platform::FileSystem& inner, int steps) : ForwardingFileSystem(inner), steps_(steps) {}

  Status CreateFolder(std::string_view path, bool ownerOnly) override {
    return Step(), Inner.CreateFolder(path, ownerOnly);
  }
  Status WriteFile(std::string_view path, std::string_view bytes,
                   const platform::WriteOptions& options) override {
    return Step(), Inner.WriteFile(path, bytes, options);
  }
  Status CopyFile(std::string_view from, std::string_view to,
                  const platform::WriteOptions& options) override {
    return Step(), Inner.CopyFile(from, to, options);
  }
  Status ReplaceFile(std::string_view path, std::string_view bytes,
                     const platform::WriteOptions& options) override {
    return Step(), Inner.ReplaceFile(path, bytes, options);
  }

 private:
  void Step() {
    if (steps_-- == 0) _exit(77);
  }
  int steps_;
};

TEST_F(TreeSafetyTest, DeathBetweenTheStepsOfAMoveLosesNothing) {
  const ArchiveRecord to = Make(Root, "Ziel");
  int deaths = 0;
  for (int steps = 0;; ++steps) {
    const ArchiveRecord made = Make(Root, fmt::format("Akte{}", steps));
    const int status = ExitStatusOf(Start([&] {
      DyingFileSystem dying(*Files, steps);
      return ArchiveTree(dying, std::string(Root)).MoveRecord(made, to.Directory).has_value();
    }));
    ASSERT_TRUE(Tree->FindByDirectory(made.Directory)) << "after step " << steps;
    EXPECT_EQ(CheckTexts().find("fehlende"), std::string::npos);
    if (status == 0) break;
    ASSERT_EQ(status, 77);
    ++deaths;
  }
  EXPECT_GE(deaths, 3);
}

TEST_F(TreeSafetyTest, DeathBetweenTheStepsOfACreationLeavesTheTreeSound) {
  Make(Root, "Anfang");
  int deaths = 0;
  for (int steps = 0;; ++steps) {
    const std::string before = RootList();
    const int status = ExitStatusOf(Start([&] {
      DyingFileSystem dying(*Files, steps);
      return ArchiveTree(dying, std::string(Root)).Create(Root, fmt::format("Neu{}", steps), {}).has_value();
    }));
    if (status == 0) break;
    ASSERT_EQ(status, 77);
    EXPECT_EQ(RootList(), before);
    ++deaths;
  }
  EXPECT_EQ(deaths, 4);  // directory, its own record, backup, list
  EXPECT_EQ(Children(Root).size(), 2u);
}

class FullDisk : public test::ForwardingFileSystem {
 public:
  using ForwardingFileSystem::ForwardingFileSystem;
  Status ReplaceFile(std::string_view, std::string_view, const platform::WriteOptions&) override {
    return Fail(platform::file_error::DiskFull, "voll");
  }
};

TEST_F(TreeSafetyTest, FullDiskIsReportedAndLeavesNoTrace) {
  const ArchiveRecord post = Make(Root, "Post");
  const std::string before = RootList();
  FullDisk full(*Files);
  ArchiveTree tree(full, std::string(Root));
  const auto made = tree.Create(Root, "Neu", {});
  ASSERT_FALSE(made);
  EXPECT_EQ(made.error().Number, store_error::Failed);
  EXPECT_NE(made.error().Text.find("voll"), std::string::npos);
  EXPECT_FALSE(tree.Rename(post, "Anders"));
  EXPECT_FALSE(tree.RemoveRecord(post));
  EXPECT_FALSE(tree.AddLink(Root, "Verweis", post.Directory));
  EXPECT_EQ(RootList(), before);
  EXPECT_EQ(tree.Children(Root)->size(), 1u);
  EXPECT_FALSE(HostExists("ARCHIVE/NEU"));
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeSafetyTest, LeftOverWorkFileIsOverwritten) {
  Temp.WriteHostFile("ARCHIVE/archive.vlw", "rest of a killed writer");
  Make(Root, "Post");
  EXPECT_FALSE(HostExists("ARCHIVE/archive.vlw"));
  EXPECT_EQ(RootList().size(), DirRecord::Size);
}

TEST_F(TreeSafetyTest, HeldListIsBusyAfterTheWait) {
  Make(Root, "Post");
  std::this_thread::sleep_for(std::chrono::milliseconds(1100));
  ASSERT_EQ(Children(Root).size(), 1u);
  const auto held = ArchiveLock::Acquire(*Files, Root, ArchiveLock::Mode::Exclusive);
  ASSERT_TRUE(held);
  const auto made = Tree->Create(Root, "Neu", {});
  ASSERT_FALSE(made);
  EXPECT_EQ(made.error().Number, store_error::Busy);
  EXPECT_EQ(Children(Root).size(), 1u) << "a list that is known needs no lock";
}

TEST_F(TreeSafetyTest, ReadingWithoutPatienceDoesNotWaitForAHeldList) {
  Make(Root, "Post");
  ArchiveTree other(*Files, std::string(Root));
  const auto held = ArchiveLock::Acquire(*Files, Root, ArchiveLock::Mode::Exclusive);
  ASSERT_TRUE(held);
  other.SetPatience(Patience::None);
  const auto begun = std::chrono::steady_clock::now();
  const auto children = other.Children(Root);
  EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(1));
  ASSERT_FALSE(children);
  EXPECT_EQ(children.error().Number, store_error::Busy);
}

TEST_F(TreeSafetyTest, ReadersShareTheLock) {
  Make(Root, "Post");
  const auto held = ArchiveLock::Acquire(*Files, Root, ArchiveLock::Mode::Shared);
  ASSERT_TRUE(held);
  EXPECT_EQ(ArchiveTree(*Files, std::string(Root)).Children(Root)->size(), 1u);
}

TEST_F(TreeSafetyTest, LockEndsWithItsHolder) {
  { const auto held = ArchiveLock::Acquire(*Files, Root, ArchiveLock::Mode::Exclusive); }
  EXPECT_TRUE(ArchiveLock::Acquire(*Files, Root, ArchiveLock::Mode::Exclusive));
}

TEST_F(TreeSafetyTest, WhatIsNoListIsDamaged) {
  fs::create_directory(Temp.HostPath("ARCHIVE/archive.dir"));
  EXPECT_EQ(Tree->Children(Root).error().Number, store_error::Damaged);
  EXPECT_FALSE(Tree->Create(Root, "Neu", {}));
  EXPECT_NE(CheckTexts(), "");
  fs::remove(Temp.HostPath("ARCHIVE/archive.dir"));
  Temp.WriteHostFile("ARCHIVE/archive.dir", "");
  fs::resize_file(Temp.HostPath("ARCHIVE/archive.dir"), std::uintmax_t{1} << 40);
  EXPECT_EQ(Tree->Children(Root).error().Number, store_error::Damaged) << "a list of a terabyte is not read";
}

// --- What a check finds. ---

TEST_F(TreeSafetyTest, CheckFindsATornListAndWritersMendIt) {
  Make(Root, "Post");
  Temp.WriteHostFile("ARCHIVE/archive.dir", RootList() + "torn");
  EXPECT_EQ(Children(Root).size(), 1u);
  EXPECT_EQ(CheckTexts(), std::string(Root) + ": archive.dir: die Länge 434 ist kein Vielfaches von 430\n");
  Make(Root, "Neu");
  EXPECT_EQ(Children(Root).size(), 2u);
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeSafetyTest, CheckFindsRecordsWithoutTags) {
  DirRecord nameless;
  nameless.SetTextArea("\x03" + std::string(Root) + "\\A");
  fs::create_directory(Temp.HostPath("ARCHIVE/A"));
  Temp.WriteHostFile("ARCHIVE/archive.dir", std::string(DirRecord().Bytes()) + std::string(nameless.Bytes()));
  EXPECT_EQ(CheckTexts(), fmt::format("{0}: archive.dir: Eintrag 1 hat keinen brauchbaren Pfad\n"
                                      "{0}: archive.dir: Eintrag 1 hat keinen Namen\n"
                                      "{0}: archive.dir: Eintrag 2 hat keinen Namen\n",
                                      Root));
}

TEST_F(TreeSafetyTest, CheckFindsDanglingRecords) {
  Make(Root, "Post");
  fs::remove_all(Temp.HostPath("ARCHIVE/POST"));
  EXPECT_EQ(CheckTexts(),
            fmt::format("{0}: Eintrag 1 \"Post\" nennt das fehlende Verzeichnis {0}\\POST\n", Root));
}

TEST_F(TreeSafetyTest, CheckFindsDoubledRecords) {
  Make(Root, "Post");
  Temp.WriteHostFile("ARCHIVE/archive.dir", RootList() + RootList());
  EXPECT_EQ(
      CheckTexts(),
      fmt::format("{0}: Eintrag 2 \"Post\" ist doppelt: {0}\\POST steht schon in der Liste von {0}\n", Root));
}

TEST_F(TreeSafetyTest, CheckFindsDirectoriesThatNoRecordNames) {
  Make(Root, "Post");
  fs::create_directory(Temp.HostPath("ARCHIVE/POST/LOSE"));
  Temp.WriteHostFile("ARCHIVE/POST/LOSE/archive.dat", "x");
  EXPECT_EQ(CheckTexts(), fmt::format("{}\\POST\\LOSE: Kein Archiveintrag nennt dieses Verzeichnis\n", Root));
}

// Others work in the store while it is checked.
class BusyFileSystem : public test::ForwardingFileSystem {
 public:
  BusyFileSystem(platform::FileSystem& inner, std::function<void()> meanwhile)
      : ForwardingFileSystem(inner), meanwhile_(std::move(meanwhile)) {}

  Result<std::vector<platform::FileEntry>> List(std::string_view folder, std::string_view mask,
                                                platform::ListWhat what) override {
    if (const auto work = std::exchange(meanwhile_, nullptr)) work();
    return Inner.List(folder, mask, what);
  }

 private:
  std::function<void()> meanwhile_;
};

TEST_F(TreeSafetyTest, ArchivesThatComeAndGoDuringACheckAreNoDamage) {
  const ArchiveRecord gone = Make(Root, "Weg");
  Make(gone.Directory, "Darunter");
  BusyFileSystem busy(*Files, [&] {
    ASSERT_TRUE(Tree->RemoveRecord(gone));
    fs::remove_all(Temp.HostPath("ARCHIVE/WEG"));
    Make(Root, "Neu");
    Temp.WriteHostFile("ARCHIVE/NEU/archive.dat", "x");
  });
  ArchiveTree tree(busy, std::string(Root));
  EXPECT_EQ(tree.Check().Findings.size(), 0U);
  EXPECT_TRUE(HostExists("ARCHIVE/NEU"));
}

TEST_F(TreeSafetyTest, DirectoryWithoutContentThatNoRecordNamesIsANote) {
  Make(Root, "Post");
  const auto isNote = [&](const std::string& file, const std::string& content) {
    const std::string directory = Temp.HostPath("ARCHIVE/POST/LOSE");
    fs::create_directories(directory + "/TIEFER");
    Temp.WriteHostFile("ARCHIVE/POST/LOSE/TIEFER/" + file, content);
    const auto findings = Tree->Check().Findings;
    fs::remove_all(directory);
    EXPECT_EQ(findings.size(), 1U);
    return !findings.empty() && findings[0].IsNote;
  };
  for (const auto* rest : {"archive.add", "archive.ini", "database.ini", "archivedir.bak", "archive.dir"})
    EXPECT_TRUE(isNote(rest, "x")) << rest;
  for (const auto* content :
       {"archive.dat", "archive.dat-journal", "archivedat.bak", "00000001.001", "x.txt"})
    EXPECT_FALSE(isNote(content, "x")) << content;
  EXPECT_FALSE(isNote("archive.dir", RootList())) << "it lists an archive";
}

TEST_F(TreeSafetyTest, CheckFindsADamagedOwnRecord) {
  Make(Root, "Post");
  Temp.WriteHostFile("ARCHIVE/POST/archive.add", "x");
  EXPECT_EQ(CheckTexts(), fmt::format("{}\\POST: archive.add: die Länge 1 ist nicht 430\n", Root));
}

TEST_F(TreeSafetyTest, CheckFindsCircularNesting) {
  const ArchiveRecord a = Make(Root, "A"), b = Make(Root, "B");
  Temp.WriteHostFile("ARCHIVE/A/archive.dir", DirRecord::Make(b.Directory, "zu B")->Bytes());
  Temp.WriteHostFile("ARCHIVE/B/archive.dir", DirRecord::Make(a.Directory, "zu A")->Bytes());
  Temp.WriteHostFile("ARCHIVE/archive.dir", DirRecord::Make(a.Directory, "A")->Bytes());
  const std::string texts = CheckTexts();
  EXPECT_EQ(Tree->NamesDownTo(b.Directory), (Names{"Archive", "A", "zu B"}));
  EXPECT_TRUE(Children(b.Directory)[0].IsLink) << "its own record stands in the root";
  EXPECT_EQ(texts, "");
}

}  // namespace
}  // namespace velmora::store::embedded
