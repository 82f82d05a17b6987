// Operations within the store, each with every one of its file operations failing.
#include <gtest/gtest.h>

#include <functional>

#include "operations/rule_copy.h"
#include "store/archive_entries.h"
#include "store_jobs.h"
#include "sweep.h"

namespace velmora::faults {
namespace {

using namespace operations;

// All that the runs could touch. Files beside a list come along or do not, without a word about them.
Lines Around(StoreWorld& world) {
  Lines lines;
  for (const std::string_view path : {Source, Target, Shelf}) {
    for (const std::string& line : world.Describe(path)) {
      if (line.find("/ file ") == std::string::npos && line.find("/ rule ") == std::string::npos)
        lines.push_back(std::string(path) + line);
    }
  }
  return lines;
}

// What is true after each run, whatever failed.
void ExpectHonest(StoreWorld& world, const Lines& whole, const Lines& now, std::string_view told) {
  Lines damage = world.Damage();
  if (!told.empty() && world.run.counters.Errors > 0) {
    std::erase_if(damage, [&](const std::string& text) { return text.find(told) != std::string::npos; });
  }
  EXPECT_EQ(damage, Lines{});
  EXPECT_EQ(world.Log().size(), static_cast<std::size_t>(world.run.counters.Errors));
  if (world.run.counters.Errors == 0) {
    EXPECT_EQ(now, whole) << "not one error is told of";
  }
}

class StoreFaultsTest : public testing::Test {
 protected:
  using Work = std::function<Job(StoreWorld&)>;
  using Check = std::function<void(StoreWorld&)>;

  // `work` under each fault; `check` judges what it leaves; then, on a sound file system, `work` again (where
  // there is still something to do) and `finish` judges that it is complete. `told`: what a check may find
  // after a run that has told of an error.
  static void SweepStore(const Work& work, const Check& check, const Check& finish,
                         std::string_view told = {}) {
    StoreWorld sound;
    work(sound)();
    sound.SignOff();
    ASSERT_EQ(sound.Log(), Lines{});
    ASSERT_EQ(sound.run.counters.Errors, 0);
    const Lines whole = Around(sound);
    finish(sound);
    Sweep([&](const Place& place) {
      StoreWorld world;
      {
        const Job job = work(world);
        place.Plan(world.files);
        job();
      }
      world.SignOff();
      const bool isMet = world.files.FailuresSoFar() > 0;
      world.files.Heal();
      const Lines now = Around(world);
      ExpectHonest(world, whole, now, told);
      check(world);
      if (!isMet) return false;
      world.SignOn();
      if (world.session.Account->GetArchive(Source)) {
        (void)world.host->DeleteFile(world.run.ErrorLogPath(), true);
        work(world)();
        EXPECT_EQ(world.Log(), Lines{}) << "of the second run";
      }
      world.SignOff();
      finish(world);
      EXPECT_EQ(world.Damage(), Lines{});
      return true;
    });
  }
};

TEST_F(StoreFaultsTest, Copy) {
  StoreCopyOptions options;
  options.EnCpyProp = options.EnRoutings = true;
  StoreWorld before;
  before.SignOff();
  const Lines source = before.Describe(Source);
  SweepStore([&](StoreWorld& world) { return Copying(world, options); },
             [&](StoreWorld& world) {
               EXPECT_EQ(world.Describe(Source), source);
               const int arrived = Total(world.MessagesBelow(Target));
               EXPECT_LE(arrived, world.run.counters.Messages);
               if (arrived < world.run.counters.Messages) {
                 EXPECT_GT(world.run.counters.Errors, 0);
               }
             },
             [&](StoreWorld& world) {
               EXPECT_EQ(world.Describe(Source), source);
               EXPECT_GE(world.MessagesBelow(Target), world.MessagesBelow(Source));
             });
}

TEST_F(StoreFaultsTest, MoveThatDeletesTheArchives) {
  StoreCopyOptions options;
  options.Mode = CopyMode::Move;
  options.EnDelArchives = options.EnDblArcNames = options.EnCpyProp = options.EnRoutings = true;
  StoreWorld before;
  before.SignOff();
  const Messages all = before.MessagesBelow(Source);
  ASSERT_EQ(Total(all), MessageCount);
  SweepStore([&](StoreWorld& world) { return Copying(world, options); },
             [&](StoreWorld& world) {
               Messages both = world.MessagesBelow(Source);
               for (const auto& [message, count] : world.MessagesBelow(Target)) both[message] += count;
               EXPECT_EQ(both, all) << "each message stands once";
               const int arrived = Total(world.MessagesBelow(Target));
               EXPECT_LE(arrived, world.run.counters.Messages);
               if (arrived < world.run.counters.Messages) {
                 EXPECT_GT(world.run.counters.Errors, 0);
               }
             },
             [&](StoreWorld& world) {
               EXPECT_EQ(world.MessagesBelow(Target), all);
               EXPECT_EQ(world.Describe(Source), Lines{});
             });
}

TEST_F(StoreFaultsTest, DeletionEntryByEntry) {
  const StoreDeleteOptions options{.EnDelArchives = true};
  StoreWorld before;
  before.SignOff();
  const Lines shelf = before.Describe(Shelf);
  SweepStore([&](StoreWorld& world) { return Deleting(world, options); },
             [&](StoreWorld& world) {
               EXPECT_EQ(world.Describe(Shelf), shelf) << "behind the link";
               // A batch of deletions that could not be committed is taken back, and the log names it.
               const int gone = MessageCount - Total(world.MessagesBelow(Source));
               EXPECT_LE(gone, world.run.counters.Messages);
               if (gone < world.run.counters.Messages) {
                 EXPECT_GT(world.run.counters.Errors, 0);
               }
             },
             [&](StoreWorld& world) { EXPECT_EQ(world.Describe(Source), Lines{}); });
}

TEST_F(StoreFaultsTest, DeletionOfTheDirectories) {
  const StoreDeleteOptions options{.EnDelArchives = true, .EnPhysErase = true};
  StoreWorld before;
  before.SignOff();
  const Lines shelf = before.Describe(Shelf);
  SweepStore([&](StoreWorld& world) { return Deleting(world, options); },
             [&](StoreWorld& world) { EXPECT_EQ(world.Describe(Shelf), shelf) << "behind the link"; },
             [&](StoreWorld& world) { EXPECT_EQ(world.Describe(Source), Lines{}); },
             "nennt das fehlende Verzeichnis");
}

Lines RulesOf(StoreWorld& world, std::string_view path) {
  Lines names;
  for (const std::string& line : world.Describe(path)) {
    if (line.starts_with("/ rule ")) names.push_back(line.substr(7));
  }
  return names;
}

Job TransferringRules(StoreWorld& world, CopyMode mode) {
  const auto source = world.Open(Source);
  std::vector<MarkedRule> marked;
  const int count = source->Rules().Count().value_or(0);
  for (int i = 0; i < count; ++i) marked.push_back({i, (*source->Rules().Item(i))->Data().Name});
  RuleCopyOptions options;
  options.Mode = mode;
  return [&world, options, selection = RuleSelection{source, marked}, target = world.Open(Target)] {
    RunRuleCopy(world.Context(), options, selection, target);
  };
}

TEST_F(StoreFaultsTest, RuleCopy) {
  SweepStore([](StoreWorld& world) { return TransferringRules(world, CopyMode::Copy); },
             [](StoreWorld& world) {
               EXPECT_EQ(RulesOf(world, Source), (Lines{"R1", "R2", "R3"}));
               EXPECT_GE(RulesOf(world, Target).size() + static_cast<std::size_t>(world.run.counters.Errors),
                         3u);
             },
             [](StoreWorld& world) { EXPECT_GE(RulesOf(world, Target).size(), 3u); });
}

TEST_F(StoreFaultsTest, RuleMove) {
  SweepStore([](StoreWorld& world) { return TransferringRules(world, CopyMode::Move); },
             [](StoreWorld& world) {
               for (const std::string rule : {"R1", "R2", "R3"}) {
                 const Lines source = RulesOf(world, Source), target = RulesOf(world, Target);
                 EXPECT_GE(std::ranges::count(source, rule) + std::ranges::count(target, rule), 1) << rule;
               }
             },
             [](StoreWorld& world) {
               EXPECT_EQ(RulesOf(world, Source), Lines{});
               EXPECT_GE(RulesOf(world, Target).size(), 3u);
             });
}

// The entry of an archive goes to another parent; its directory stays.
TEST_F(StoreFaultsTest, EntryMovedToAnotherParent) {
  StoreWorld before;
  before.SignOff();
  const Lines tree = before.Describe(Source);
  const auto move = [](StoreWorld& world) -> Job {
    const auto root = world.Open("/Archive");
    const auto source = world.Open(Source);
    store::EntryMove wanted;
    wanted.Entry = {root->ID(), source->ID(), "Quelle"};
    wanted.FullPath = source->FullPath();
    return [&world, wanted, target = world.Open(Target)] {
      (void)store::MoveArchiveEntry(world.run, *target, wanted);  // logged there
    };
  };
  SweepStore(
      move,
      [&](StoreWorld& world) {
        const Lines here = world.Describe(Source), there = world.Describe("/Archive/Ziel/Quelle");
        EXPECT_TRUE(here == tree || there == tree) << "the archive is gone";
      },
      [&](StoreWorld& world) {
        EXPECT_EQ(world.Describe(Source), Lines{});
        EXPECT_EQ(world.Describe("/Archive/Ziel/Quelle"), tree);
      },
      "steht schon in der Liste");
}

// --- What the sweeps have found. ---

// The new list stood already when its disk failed: the archive that it names must keep its directory.
TEST_F(StoreFaultsTest, ANewArchiveWhoseListReachedNoDiskKeepsItsDirectory) {
  StoreWorld world;
  world.files.FailOn(Fault::LateReplace, 1, platform::file_error::DeviceError);
  EXPECT_FALSE(world.Open(Target)->CreateSubArchive("Neu"));
  world.files.Heal();
  world.SignOff();
  EXPECT_EQ(world.Damage(), Lines{});
  EXPECT_EQ(world.Describe("/Archive/Ziel/Neu"), Lines{"/ 0 false"});
}

// One folder that resisted ended the deletion with all others gone and their entry still in the list, and no
// second run could take it out.
TEST_F(StoreFaultsTest, ADeletionOfDirectoriesThatWasBrokenOffCanBeFinished) {
  StoreWorld world;
  const StoreDeleteOptions options{.EnDelArchives = true, .EnPhysErase = true};
  world.files.FailOn(Fault::Delete, 2, platform::file_error::AccessDenied);
  Deleting(world, options)();
  EXPECT_EQ(world.run.counters.Errors, 1);
  world.files.Heal();
  Deleting(world, options)();
  EXPECT_EQ(world.run.counters.Errors, 0);
  world.SignOff();
  EXPECT_EQ(world.Describe(Source), Lines{});
  EXPECT_EQ(world.Damage(), Lines{});
}

// The source stayed without a word about why.
TEST_F(StoreFaultsTest, AMoveSaysWhyItsSourceStays) {
  StoreWorld world;
  StoreCopyOptions options;
  options.Mode = CopyMode::Move;
  options.EnDelArchives = options.EnRoutings = true;
  const auto job = Copying(world, options);
  world.files.FailOn(Fault::Copy, 1, platform::file_error::DiskFull);  // of the rules
  job();
  ASSERT_EQ(world.Log().size(), 1u);
  EXPECT_NE(world.Log().front().find("das Archiv bleibt stehen"), std::string::npos);
  EXPECT_TRUE(world.session.Account->GetArchive(Source));
}

}  // namespace
}  // namespace velmora::faults
