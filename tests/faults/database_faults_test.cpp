// The databases of the store and the content files beside them open their files themselves: here SQLite's own
// way to the disk fails, and files that cannot grow beyond a size stand for a disk that is full.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>

#include "faulty_sqlite.h"
#include "store_jobs.h"
#include "sweep.h"

namespace velmora::faults {
namespace {

using operations::CopyMode;
using operations::StoreCopyOptions;
using operations::StoreDeleteOptions;

StoreCopyOptions Moving() {
  StoreCopyOptions options;
  options.Mode = CopyMode::Move;
  options.EnDelArchives = options.EnDblArcNames = options.EnCpyProp = options.EnRoutings = true;
  return options;
}

// Each message of `all` stands at its source or whole at its target; in both only where an error tells of it.
void ExpectEachMessage(StoreWorld& world, const Messages& all, bool isTold) {
  Messages both = world.MessagesBelow(Source);
  for (const auto& [message, count] : world.MessagesBelow(Target)) both[message] += count;
  for (const auto& [message, count] : all) {
    EXPECT_GE(both[message], 1) << message << " is gone";
    EXPECT_LE(both[message], isTold ? 2 : 1) << message;
  }
  EXPECT_EQ(both.size(), all.size()) << "there is something that nobody sent";
}

// Without the fault the rest is moved.
void ExpectMoveCompletes(StoreWorld& world, const Messages& all) {
  world.SignOn();
  if (world.session.Account->GetArchive(Source)) {
    (void)world.host->DeleteFile(world.run.ErrorLogPath(), true);
    Copying(world, Moving())();
    EXPECT_EQ(world.Log(), Lines{}) << "of the second run";
  }
  world.SignOff();
  EXPECT_EQ(world.Describe(Source), Lines{});
  for (const auto& [message, count] : world.MessagesBelow(Target))
    EXPECT_TRUE(all.contains(message)) << message;
  EXPECT_EQ(world.MessagesBelow(Target).size(), all.size());
  EXPECT_EQ(world.Damage(), Lines{});
}

Messages AllMessages() {
  StoreWorld world;
  world.SignOff();
  return world.MessagesBelow(Source);
}

struct SqliteKind {
  SqliteFault Kind;
  const char* Name;
};
constexpr std::array<SqliteKind, 6> SqliteKinds{{{SqliteFault::Open, "open"},
                                                 {SqliteFault::Read, "read"},
                                                 {SqliteFault::Write, "write"},
                                                 {SqliteFault::Sync, "sync"},
                                                 {SqliteFault::Truncate, "truncate"},
                                                 {SqliteFault::Delete, "delete"}}};

// `run(prepare fault)` for each place; it tells whether the fault was met.
template <typename Run>
void SweepSqlite(FaultySqlite& sqlite, const Run& run) {
  int runs = 0;
  for (const SqliteKind& kind : SqliteKinds) {
    for (const bool lasts : {false, true}) {
      const int step = SweepsAll() ? 1 : lasts ? 7 : 2;
      for (int number = 1;; number += step) {
        ASSERT_LT(number, 5000) << kind.Name << ": the run does not end";
        const testing::ScopedTrace trace(
            __FILE__, __LINE__,
            kind.Name + std::string(" ") + std::to_string(number) + (lasts ? " and on" : ""));
        const Watchdog watchdog;
        const int before = sqlite.FailuresSoFar();
        try {
          run([&] { sqlite.FailOn(kind.Kind, number, lasts); });
        } catch (const std::exception& error) {
          ADD_FAILURE() << error.what();
        }
        sqlite.Heal();
        ++runs;
        if (sqlite.FailuresSoFar() == before) break;
      }
    }
  }
  EXPECT_GT(sqlite.FailuresSoFar(), 0) << "the databases do not go this way";
  testing::Test::RecordProperty("runs", runs);
}

TEST(DatabaseFaultsTest, MoveLosesNoMessage) {
  const Messages all = AllMessages();
  ASSERT_EQ(Total(all), MessageCount);
  FaultySqlite sqlite;
  SweepSqlite(sqlite, [&](const auto& fail) {
    StoreWorld world;
    {
      const Job job = Copying(world, Moving());
      fail();
      job();
    }
    world.SignOff();
    sqlite.Heal();
    EXPECT_EQ(world.Damage(), Lines{});
    EXPECT_EQ(world.Log().size(), static_cast<std::size_t>(world.run.counters.Errors));
    ExpectEachMessage(world, all, world.run.counters.Errors > 0);
    if (world.run.counters.Errors == 0) {
      EXPECT_EQ(world.Describe(Source), Lines{}) << "not one error is told of";
    }
    ExpectMoveCompletes(world, all);
  });
}

TEST(DatabaseFaultsTest, DeletionTellsOfWhatItLeaves) {
  FaultySqlite sqlite;
  SweepSqlite(sqlite, [&](const auto& fail) {
    StoreWorld world;
    {
      const Job job = Deleting(world, {.EnDelArchives = true});
      fail();
      job();
    }
    world.SignOff();
    sqlite.Heal();
    EXPECT_EQ(world.Damage(), Lines{});
    if (world.run.counters.Errors == 0) {
      EXPECT_EQ(world.Describe(Source), Lines{}) << "not one error is told of";
    }
  });
}

// Files of up to a size: content files and databases fail where they would grow beyond it.
TEST(DatabaseFaultsTest, MoveOnAFullDiskLosesNoMessage) {
  const Messages all = AllMessages();
  const int step = SweepsAll() ? 512 : 3000;
  bool hasFailed = false, isDone = false;
  for (int limit = 0; !isDone; limit += step) {
    ASSERT_LT(limit, 1 << 20) << "the run never has enough";
    const testing::ScopedTrace trace(__FILE__, __LINE__, std::to_string(limit) + " bytes");
    StoreWorld world;
    world.SignOff();
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      alarm(30);
      world.SignOn();
      {
        const Job job = Copying(world, Moving());
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit bytes{static_cast<rlim_t>(limit), static_cast<rlim_t>(limit)};
        setrlimit(RLIMIT_FSIZE, &bytes);
        job();
      }
      world.SignOff();
      _exit(world.run.counters.Errors == 0 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status)) << "killed by signal " << WTERMSIG(status);
    const bool isTold = WEXITSTATUS(status) != 0;
    hasFailed = hasFailed || isTold;
    isDone = !isTold;
    EXPECT_EQ(world.Damage(), Lines{});
    ExpectEachMessage(world, all, isTold);
    if (isDone) {
      EXPECT_EQ(world.Describe(Source), Lines{}) << "not one error is told of";
    }
    ExpectMoveCompletes(world, all);
  }
  EXPECT_TRUE(hasFailed);
}

}  // namespace
}  // namespace velmora::faults
