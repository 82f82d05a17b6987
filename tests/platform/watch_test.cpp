// Being told before files are touched, and counting changes.

#include <filesystem>

#include "platform/file_system_fixture.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

class WatchTest : public FileSystemFixture {
 protected:
  void SetUp() override {
    fs::create_directories(H("store/archive"));
    dir_.WriteHostFile("store/archive/archive.dat", "1");
    dir_.WriteHostFile("outside", "1");
  }
  std::shared_ptr<void> Watch(std::string_view folder) {
    return files_->RegisterSubtree(folder, [this](std::string_view path) { told_.emplace_back(path); });
  }
  // What was told since the last call.
  Strings Told() { return std::exchange(told_, {}); }

  Strings told_;
};

TEST_F(WatchTest, EveryTouchOfAFileBelowIsToldWithItsPath) {
  const auto token = Watch(P("store"));
  const std::string file = P("store\\archive\\archive.dat");
  (void)files_->ReadFile(file);
  EXPECT_EQ(Told(), Strings{file});
  (void)files_->OpenReader(file);
  EXPECT_EQ(Told(), Strings{file});
  (void)files_->WriteFile(file, "2");
  EXPECT_EQ(Told(), Strings{file});
  (void)files_->OpenWriter(file);
  EXPECT_EQ(Told(), Strings{file});
  (void)files_->AppendFile(file, "2");
  EXPECT_EQ(Told(), Strings{file});
  (void)files_->ReplaceFile(file, "2");
  EXPECT_EQ(Told(), Strings{file});
  (void)files_->CopyFile(file, P("copy"));
  EXPECT_EQ(Told(), Strings{file});
  (void)files_->CopyFile(P("outside"), file);
  EXPECT_EQ(Told(), Strings{file});
  (void)files_->MoveFile(file, P("store\\archive\\moved"));
  EXPECT_EQ(Told(), (Strings{file, P("store\\archive\\moved")}));
  (void)files_->DeleteFile(P("store\\archive\\moved"), false);
  EXPECT_EQ(Told(), Strings{P("store\\archive\\moved")});
  (void)files_->ReadFile(P("outside"));
  (void)files_->FileExists(file);
  EXPECT_EQ(Told(), Strings{});
}

TEST_F(WatchTest, NobodyIsToldAfterTheTokenIsGone) {
  auto token = Watch(P("store"));
  token.reset();
  (void)files_->ReadFile(P("store\\archive\\archive.dat"));
  EXPECT_EQ(Told(), Strings{});
}

TEST_F(WatchTest, ATokenMayOutliveTheFileSystem) {
  auto token = Watch(P("store"));
  files_.reset();
  token.reset();
}

TEST_F(WatchTest, FoldersThatGoAreToldToWhoWatchesThemOrBelow) {
  const auto above = Watch(dir_.Path());
  const auto below = Watch(P("store\\archive"));
  ASSERT_EQ(ErrorOf(files_->MoveFile(P("store"), P("moved"))), 0);
  EXPECT_EQ(Told(), (Strings{P("store"), P("store\\archive"), P("moved")}));
  ASSERT_EQ(ErrorOf(files_->DeleteFolder(P("moved"), false)), 0);
  EXPECT_EQ(Told(), (Strings{P("moved"), P("moved\\archive\\archive.dat")}));
}

TEST_F(WatchTest, MasksTellEachFile) {
  const auto token = Watch(P("store"));
  dir_.WriteHostFile("store/archive/b.dat", "1");
  ASSERT_EQ(ErrorOf(files_->DeleteFile(P("store\\archive\\*.dat"), false)), 0);
  EXPECT_EQ(Told(), (Strings{P("store\\archive\\archive.dat"), P("store\\archive\\b.dat")}));
}

TEST_F(WatchTest, OneFolderUnderSeveralNamesIsOneFolder) {
  fs::create_directory_symlink("store", H("link"));
  files_ = MakeHostFileSystem({{"\\\\SERVER\\DAVID", H("store")}});
  const auto token = Watch("\\\\SERVER\\DAVID");
  const Strings expected{"\\\\SERVER\\DAVID\\archive\\archive.dat"};
  (void)files_->ReadFile("\\\\server\\david\\ARCHIVE\\archive.dat");
  EXPECT_EQ(Told(), expected);
  (void)files_->ReadFile(P("store\\archive\\archive.dat"));
  EXPECT_EQ(Told(), expected);
  (void)files_->ReadFile(P("link\\archive\\archive.dat"));
  EXPECT_EQ(Told(), expected);
}

TEST_F(WatchTest, AFolderMayBeWatchedBeforeItExists) {
  const auto token = Watch(P("store\\new\\deep"));
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("store\\NEW"))), 0);
  ASSERT_EQ(ErrorOf(files_->CreateFolder(P("store\\new\\Deep"))), 0);
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("store\\new\\deep\\x"), "1")), 0);
  EXPECT_EQ(Told(), Strings{P("store\\new\\deep\\x")});
}

TEST_F(WatchTest, WhoIsToldMayChangeTheFolder) {
  // As a database does that is closed and removes its journal.
  dir_.WriteHostFile("store/archive/journal", "1");
  const auto token = files_->RegisterSubtree(P("store"), [&](std::string_view) {
    fs::remove(H("store/archive/journal"));
    dir_.WriteHostFile("store/archive/Made", "1");
  });
  EXPECT_FALSE(files_->FileExists(P("store\\archive\\MADE")));
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("store\\archive\\new"), "1")), 0);
  EXPECT_TRUE(files_->FileExists(P("store\\archive\\MADE")));
  EXPECT_FALSE(files_->FileExists(P("store\\archive\\JOURNAL")));
}

TEST_F(WatchTest, WhoIsToldMayEndTheRegistration) {
  std::shared_ptr<void> token;
  int calls = 0;
  token = files_->RegisterSubtree(P("store"), [&](std::string_view) {
    ++calls;
    token.reset();
  });
  (void)files_->ReadFile(P("store\\archive\\archive.dat"));
  (void)files_->ReadFile(P("store\\archive\\archive.dat"));
  EXPECT_EQ(calls, 1);
}

TEST_F(WatchTest, GenerationsCountChangesAtOrBelow) {
  const auto changed = [&](const char* folder, const auto& action) {
    const std::uint64_t before = files_->Generation(P(folder));
    action();
    return files_->Generation(P(folder)) != before;
  };
  const std::string file = P("store\\archive\\archive.dat");
  EXPECT_TRUE(changed("store", [&] { (void)files_->WriteFile(file, "2"); }));
  EXPECT_TRUE(changed("STORE\\archive", [&] { (void)files_->AppendFile(file, "2"); }));
  EXPECT_TRUE(changed("store", [&] { (void)files_->ReplaceFile(file, "2"); }));
  EXPECT_TRUE(changed("store", [&] { (void)files_->CopyFile(P("outside"), file); }));
  EXPECT_TRUE(changed("store", [&] { (void)files_->CreateFolder(P("store\\new")); }));
  EXPECT_TRUE(changed("store\\new", [&] { (void)files_->MoveFile(P("store\\new"), P("store\\newer")); }));
  EXPECT_TRUE(changed("store", [&] { (void)files_->DeleteFolder(P("store\\newer"), false); }));
  EXPECT_TRUE(changed("store", [&] { (void)files_->DeleteFile(file, false); }));
  EXPECT_FALSE(changed("store", [&] { (void)files_->WriteFile(P("outside"), "2"); }));
  EXPECT_FALSE(changed("store", [&] { (void)files_->ReadFile(P("outside")); }));
  auto writer = files_->OpenWriter(file);
  ASSERT_TRUE(writer.has_value());
  EXPECT_TRUE(changed("store", [&] { (void)(*writer)->Write("3"); }));
}

}  // namespace
}  // namespace velmora::platform
