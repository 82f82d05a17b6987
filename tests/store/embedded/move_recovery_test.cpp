// Moves between two databases, whose process dies between their commits.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <set>

#include "message_fixture.h"
#include "store/embedded/entry_store.h"
#include "store/embedded/move_journal.h"
#include "support/forwarding_file_system.h"

namespace velmora::store::embedded {
namespace {

const std::string Journals = "\\\\ZEB\\DAVID\\moves";

// The commit of a source asks for this sync once the target's commit stands.
class DiesBetweenTheCommits : public test::ForwardingFileSystem {
 public:
  using ForwardingFileSystem::ForwardingFileSystem;
  Status SyncWritten() override { _exit(1); }
};

class MoveRecoveryTest : public MessageFixture {
 protected:
  void SetUp() override {
    for (int i = 0; i < Mails; ++i) Deliver("Subject: " + std::to_string(i) + "\n\nText\n");
    ASSERT_TRUE(store->Commit());
    store.reset();
  }

  static std::vector<EntryKey> Keys(EntryStore& entries, const std::string& archive) {
    return entries.Keys(archive, filter_preset::None, EntryOrder::Store).value_or(std::vector<EntryKey>{});
  }
  static void InChild(const std::function<void()>& run) {
    const auto child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      run();
      _exit(0);
    }
    waitpid(child, nullptr, 0);
  }
  void MoveAllAndDie() {
    InChild([&] {
      const auto childFiles = MakeFileSystem();
      DiesBetweenTheCommits dying(*childFiles);
      EntryStore entries(dying, clock, Journals);
      for (const auto key : Keys(entries, In)) (void)entries.Move(In, key, Out);
      (void)entries.Pool().Commit();
    });
  }
  void OpenAndSettle() { store = std::make_unique<MessageStore>(*files, clock, Journals); }
  std::ptrdiff_t JournalCount() const {
    namespace fs = std::filesystem;
    const fs::path folder = directory.HostPath("moves");
    return fs::exists(folder) ? std::distance(fs::directory_iterator(folder), fs::directory_iterator()) : 0;
  }

  static constexpr int Mails = 20;
};

TEST_F(MoveRecoveryTest, WhatHasArrivedLeavesItsSource) {
  MoveAllAndDie();
  Reopen();
  EXPECT_EQ(Count(In), Mails) << "the source was not committed";
  EXPECT_EQ(Count(Out), Mails) << "the target was";
  EXPECT_EQ(JournalCount(), 1);
  store.reset();

  OpenAndSettle();
  EXPECT_EQ(Count(In), 0);
  EXPECT_EQ(Count(Out), Mails);
  EXPECT_EQ(JournalCount(), 0);
  for (const auto& archive : {In, Out}) EXPECT_TRUE(store->Check(archive).empty());
}

TEST_F(MoveRecoveryTest, EndedProcessLeavesNoNotes) {
  {
    EntryStore entries(*files, clock, Journals);
    for (const auto key : Keys(entries, In)) ASSERT_TRUE(entries.Move(In, key, Out));
    EXPECT_EQ(JournalCount(), 1);
  }
  EXPECT_EQ(JournalCount(), 0);
  OpenAndSettle();
  EXPECT_EQ(Count(Out), Mails);
}

TEST_F(MoveRecoveryTest, MovesOfALivingProcessAreLeftAlone) {
  EntryStore entries(*files, clock, Journals);
  const auto keys = Keys(entries, In);
  ASSERT_TRUE(entries.Move(In, keys.front(), Out));
  ASSERT_TRUE(entries.Pool().Commit());
  InChild([&] {
    const auto childFiles = MakeFileSystem();
    const MessageStore other(*childFiles, clock, Journals);
  });
  EXPECT_EQ(JournalCount(), 1);
}

TEST_F(MoveRecoveryTest, EntryThatLeftTheTargetStaysInItsSource) {
  MoveAllAndDie();
  Reopen();
  const auto listed = store->GetEntries(Out, filter_preset::None, EntryOrder::Store);
  for (int i = 0; i < (*listed)->Count(); ++i) ASSERT_TRUE((*(*listed)->Item(i))->Delete());
  store.reset();
  OpenAndSettle();
  EXPECT_EQ(Count(Out), 0);
  EXPECT_EQ(Count(In), Mails) << "it is the only one";
}

TEST_F(MoveRecoveryTest, EntriesOfAnotherDatabaseInTheSourcesPlaceStay) {
  MoveAllAndDie();
  for (const auto& file : std::filesystem::directory_iterator(directory.HostPath("archive/in")))
    std::filesystem::remove_all(file);
  Reopen();
  for (int i = 0; i < Mails; ++i) Deliver("Subject: new\n\nText\n");
  ASSERT_TRUE(store->Commit());
  store.reset();
  OpenAndSettle();
  EXPECT_EQ(Count(In), Mails) << "they bear the same keys";
}

TEST_F(MoveRecoveryTest, NotesOfSettledMovesDoNotPileUp) {
  const auto arrivals = [&] {
    const auto database = MessageDatabase::Open(directory.HostPath("archive/out/archive.dat"), "out");
    int count = 0;
    const auto processes = (*database)->ArrivalProcesses();
    for (const auto& process : *processes) count += static_cast<int>((*database)->Arrivals(process)->size());
    return count;
  };
  {
    EntryStore entries(*files, clock, Journals);
    const auto keys = Keys(entries, In);
    for (std::size_t i = 0; i < keys.size(); ++i) {
      ASSERT_TRUE(entries.Move(In, keys[i], Out));
      ASSERT_TRUE(entries.Pool().Commit());
      EXPECT_EQ(arrivals(), 1) << "each transaction forgets what the one before has settled";
    }
  }
  EntryStore entries(*files, clock, Journals);
  ASSERT_TRUE(entries.Remove(Out, Keys(entries, Out).front()));
  ASSERT_TRUE(entries.Pool().Commit());
  EXPECT_EQ(arrivals(), 0) << "nobody settles the notes of a process that ended well";
}

TEST_F(MoveRecoveryTest, RubbishAmongTheNotesHindersNothing) {
  std::filesystem::create_directory(directory.HostPath("moves"));
  using namespace std::string_literals;
  directory.WriteHostFile("moves/aaaa", "\0\n\\\\ZEB\\DAVID\\..\\x\n\n\xff\n"s);
  directory.WriteHostFile("moves/bbbb", "");
  OpenAndSettle();
  EXPECT_EQ(Count(In), Mails);
}

// Killed at any moment, however often: each entry stands exactly once after the next opening.
TEST_F(MoveRecoveryTest, KilledProcessLeavesEachEntryOnce) {
  for (int round = 0; round < 12; ++round) {
    const auto child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const auto childFiles = MakeFileSystem();
      EntryStore entries(*childFiles, platform::SystemClock(), Journals);
      while (true) {
        for (const auto& [from, to] : {std::pair(In, Out), std::pair(Out, In)}) {
          for (const auto key : Keys(entries, from)) (void)entries.Move(from, key, to);
        }
      }
    }
    usleep(60'000 + 37'000 * static_cast<unsigned>(round % 6));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    OpenAndSettle();
    std::multiset<std::string> subjects;
    for (const auto& archive : {In, Out}) {
      const auto listed = store->GetEntries(archive, filter_preset::None, EntryOrder::Store);
      ASSERT_TRUE(listed) << listed.error().Text;
      for (int i = 0; i < (*listed)->Count(); ++i)
        subjects.insert(FieldText(*(*(*listed)->Item(i))->Fields().Get(tag::Subject)));
    }
    EXPECT_EQ(subjects.size(), std::size_t{Mails});
    EXPECT_EQ(std::set(subjects.begin(), subjects.end()).size(), std::size_t{Mails});
    store.reset();
  }
}

// A note that found no room leaves nothing that the next one could become part of.
TEST_F(MoveRecoveryTest, ANoteThatFailedSpoilsNoOther) {
  std::filesystem::create_directories(directory.HostPath("moves"));
  InChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const auto childFiles = MakeFileSystem();
    MoveJournal journal(*childFiles, Journals);
    rlimit large{};
    getrlimit(RLIMIT_FSIZE, &large);
    const rlimit small{In.size() / 2, large.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool isNoted = journal.NoteTarget(In).has_value();
    setrlimit(RLIMIT_FSIZE, &large);
    if (isNoted || !journal.NoteTarget(Out)) _exit(1);
  });
  const auto found = AbandonedMoves::Find(*files, Journals);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found.front().Targets(), std::vector<std::string>{Out});
}

TEST_F(MoveRecoveryTest, AFileThatIsNoNotesStays) {
  std::filesystem::create_directories(directory.HostPath("moves"));
  directory.WriteHostFile("moves/image.iso", "");
  std::filesystem::resize_file(directory.HostPath("moves/image.iso"), std::uintmax_t{1} << 30);
  OpenAndSettle();
  EXPECT_EQ(JournalCount(), 1);
}

}  // namespace
}  // namespace velmora::store::embedded
