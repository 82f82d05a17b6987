// Sizes on demand.
#include "panes/size_count.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "pane_fixture.h"
#include "panes/selection.h"
#include "panes/size_display.h"
#include "store/filter.h"

namespace velmora::panes {
namespace {

using test::Fault;

class SizeCountTest : public PanesTest {
 protected:
  SizeCountTest() {
    for (auto* archive : {&root, &inbox, &outbox}) {
      archive->ID = dir.Path(archive->DisplayName);
      EXPECT_TRUE(host->CreateFolder(archive->ID));
    }
  }
  SizeCount Count() {
    Breather breather(watcher, clock);
    return CountAll(*CountArchive(fake.Open(root.ID), store::filter_preset::None, files), breather);
  }
  SizeCount CountFiles(std::string_view path) {
    Breather breather(watcher, clock);
    return CountAll(*CountDirectory(path, files), breather);
  }
};

TEST_F(SizeCountTest, AnArchiveCountsWhatIsBelowIt) {
  dir.WriteHostFile("ZEB/archive.dir", std::string(430, 'x'));
  dir.WriteHostFile("Eingang/00000001.001", std::string(1000, 'x'));
  AddMails(inbox, 2);
  AddMails(outbox, 1);
  const auto count = Count();
  EXPECT_EQ(count.Bytes, 1430);
  EXPECT_EQ(count.Archives, 2);
  EXPECT_EQ(count.Messages, 3);
  EXPECT_FALSE(count.FirstError);
}

TEST_F(SizeCountTest, LinksAndCirclesAreNotFollowed) {
  fake.AddLink(inbox, outbox);
  fake.AddLink(inbox, root);
  inbox.SubArchives.push_back(fake.Find("/ZEB"));  // a record that names a directory above it
  AddMails(outbox, 1);
  const auto count = Count();
  EXPECT_EQ(count.Archives, 2);
  EXPECT_EQ(count.Messages, 1);
}

TEST_F(SizeCountTest, WhatCannotBeReadIsLeftOutAndTold) {
  AddMails(inbox, 2);
  AddMails(outbox, 3);
  inbox.EntriesFail = true;
  const auto count = Count();
  EXPECT_EQ(count.Messages, 3);
  ASSERT_TRUE(count.FirstError);
  EXPECT_EQ(count.FirstError->Text, "Archiv beschädigt");
}

TEST_F(SizeCountTest, AnIncompleteSizeIsInTheLog) {
  ASSERT_TRUE(Left().Refresh());
  inbox.EntriesFail = true;
  EXPECT_TRUE(Left().ShowSize(1));
  EXPECT_EQ(run.counters.Errors, 1);
  EXPECT_TRUE(frontEnd.Boxes.empty()) << "a size is shown while the cursor moves";
}

TEST_F(SizeCountTest, TheUserMayStopIt) {
  class Ticking final : public platform::Clock {
   public:
    DateTime Now() override { return {}; }
    std::int64_t SteadyMilliseconds() override { return now_ += 60; }

   private:
    std::int64_t now_ = 0;
  } ticking;
  watcher.StopAt = 1;
  Breather breather(watcher, ticking);
  const auto archive = CountArchive(fake.Open(root.ID), store::filter_preset::None, files);
  EXPECT_TRUE(CountAll(*archive, breather).IsStopped);
  Breather other(watcher, ticking);
  watcher.Breaths = 0;
  EXPECT_TRUE(CountAll(*CountDirectory(dir.Path(), files), other).IsStopped);
}

TEST_F(SizeCountTest, ADirectoryCountsWhatIsBelowIt) {
  ASSERT_TRUE(host->CreateFolder(dir.Path("Eingang\\tief")));
  dir.WriteHostFile("Eingang/a", std::string(10, 'x'));
  dir.WriteHostFile("Eingang/tief/b", std::string(20, 'x'));
  const auto count = CountFiles(inbox.ID);
  EXPECT_EQ(count.Bytes, 30);
  EXPECT_EQ(count.Directories, 1);
  EXPECT_EQ(count.Files, 2);
}

TEST_F(SizeCountTest, SymbolicLinksAreNotFollowed) {
  std::filesystem::create_directory_symlink(dir.HostPath(), dir.HostPath("Eingang/kreis"));
  const auto count = CountFiles(inbox.ID);
  EXPECT_EQ(count.Directories, 0);
  EXPECT_EQ(count.Files, 1);
}

TEST_F(SizeCountTest, ADirectoryThatCannotBeOpenedIsLeftOutAndTold) {
  files.FailOn(Fault::List, 2, platform::file_error::AccessDenied);
  const auto count = CountFiles(dir.Path());
  EXPECT_EQ(count.Directories, 3);
  ASSERT_TRUE(count.FirstError);
  EXPECT_EQ(count.FirstError->Number, platform::file_error::AccessDenied);
}

// --- Sizes that nobody has asked for. ---

// A clock on which every step of a count takes its time.
class StepClock final : public platform::Clock {
 public:
  DateTime Now() override { return {}; }
  std::int64_t SteadyMilliseconds() override { return now_ += 10; }

 private:
  std::int64_t now_ = 0;
};

class SizeDisplayTest : public SizeCountTest {
 protected:
  SizeDisplayTest() {
    AddMails(inbox, 2);
    EXPECT_TRUE(Left().Refresh());
    EXPECT_EQ(Left().Name(1), "Eingang");
  }
  StepClock ticking;
  SizeDisplay display{options, session, ticking};
};

TEST_F(SizeDisplayTest, TheStoreIsReadWithoutWaiting) {
  ASSERT_TRUE(display.Start(Left(), 1));
  EXPECT_EQ(fake.Events, (std::vector<std::string>{"no patience", "patience"}));
  fake.Events.clear();
  EXPECT_TRUE(display.RunSlice());
  EXPECT_EQ(fake.Events, (std::vector<std::string>{"no patience", "patience"}));
  fake.Events.clear();
  EXPECT_TRUE(Left().ShowSize(0));
  EXPECT_TRUE(fake.Events.empty()) << "who asks for a size waits for it";
}

TEST_F(SizeDisplayTest, ARowGetsItsSizeOnce) {
  ASSERT_TRUE(display.Start(Left(), 1));
  EXPECT_TRUE(display.RunSlice());
  EXPECT_FALSE(display.Runs());
  EXPECT_EQ(Left().Text(1, 1), "0 Arc(s)/ 2 Msg(s)");
  EXPECT_FALSE(display.Start(Left(), 1)) << "it stands there";
}

TEST_F(SizeDisplayTest, OnlyWhereTheSettingsWantIt) {
  options.DisplayArcSize = false;
  EXPECT_FALSE(display.Start(Left(), 1));
  EXPECT_FALSE(display.RunSlice());
  EXPECT_EQ(Left().Text(1, 1), "");
}

TEST_F(SizeDisplayTest, OnlyArchivesAndDirectories) {
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_FALSE(display.Start(Left(), 0)) << "the way up";
  EXPECT_FALSE(display.Start(Left(), 1)) << "a message";
  EXPECT_FALSE(display.Start(Left(), 99));
  dir.WriteHostFile("datei", "");
  ASSERT_TRUE(Files().Refresh());
  for (std::size_t row = 0; row < Files().RowCount(); ++row) {
    EXPECT_EQ(display.Start(Files(), row), Files().EntryType(row) == entry_type::DirEntry) << row;
  }
}

TEST_F(SizeDisplayTest, ALargeTreeIsCountedInSlices) {
  for (int i = 0; i < 20; ++i) {
    ASSERT_TRUE(host->CreateFolder(dir.Path("Eingang\\" + std::to_string(i))));
  }
  ASSERT_TRUE(Files().Refresh());
  const int row = FindByDisplayName(Files(), "eingang");
  ASSERT_TRUE(display.Start(Files(), static_cast<std::size_t>(row)));
  int slices = 1;
  while (!display.RunSlice()) ++slices;
  EXPECT_GE(slices, 5) << "no slice is longer than the window may wait";
  EXPECT_EQ(Files().Text(static_cast<std::size_t>(row), 1), "20 Dir(s)/ 0 File(s)");
}

TEST_F(SizeDisplayTest, AnotherRowOrAStopDropsWhatRan) {
  ASSERT_TRUE(display.Start(Left(), 0));
  display.Stop();
  EXPECT_FALSE(display.RunSlice());
  EXPECT_EQ(Left().Text(0, 1), "");
  ASSERT_TRUE(display.Start(Left(), 0));
  ASSERT_TRUE(display.Start(Left(), 1));
  EXPECT_TRUE(display.RunSlice());
  EXPECT_EQ(Left().Text(0, 1), "");
  EXPECT_NE(Left().Text(1, 1), "");
}

TEST_F(SizeDisplayTest, AListMadeAnewMeanwhileGetsNoSizeOfTheOldOne) {
  ASSERT_TRUE(display.Start(Left(), 1));
  ASSERT_TRUE(Left().ShowArchive(inbox.ID));
  EXPECT_FALSE(display.RunSlice());
  EXPECT_FALSE(display.Runs());
  EXPECT_EQ(Left().Text(1, 1), "");
}

TEST_F(SizeDisplayTest, ASizeThatIsNotWholeIsNotShownUnasked) {
  inbox.EntriesFail = true;
  ASSERT_TRUE(display.Start(Left(), 1));
  EXPECT_FALSE(display.RunSlice());
  EXPECT_EQ(Left().Text(1, 1), "");
  EXPECT_EQ(run.counters.Errors, 0) << "the log is for what was asked for";
}

TEST(SizeTexts, InGermanForm) {
  SizeCount count{.Bytes = 1234567, .Archives = 2, .Messages = 17, .Directories = 1, .Files = 3};
  EXPECT_EQ(ArchiveSizeTexts(count).Counts, "2 Arc(s)/ 17 Msg(s)");
  EXPECT_EQ(ArchiveSizeTexts(count).Bytes, "1.234.567  (1 MB)");
  EXPECT_EQ(DirectorySizeTexts(count).Counts, "1 Dir(s)/ 3 File(s)");
}

TEST(SizeTexts, TheUnitChangesAtItsFirstByte) {
  const auto bytes = [](std::int64_t value) {
    SizeCount count;
    count.Bytes = value;
    return ArchiveSizeTexts(count).Bytes;
  };
  EXPECT_EQ(bytes(1023), "1.023  ");
  EXPECT_EQ(bytes(1024), "1.024  (1 KB)");
  EXPECT_EQ(bytes(1048575), "1.048.575  (1.024 KB)");
  EXPECT_EQ(bytes(1048576), "1.048.576  (1 MB)");
  EXPECT_EQ(bytes(5368709120), "5.368.709.120  (5.120 MB)");
  EXPECT_EQ(bytes(0), "  ") << "the format shows no zero";
}

}  // namespace
}  // namespace velmora::panes
