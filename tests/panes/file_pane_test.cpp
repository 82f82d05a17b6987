// The pane of the file system, over real directories.
#include "panes/file_pane.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "pane_fixture.h"

namespace velmora::panes {
namespace {

using List = std::vector<std::string>;

class FilePaneTest : public PanesTest {
 protected:
  void AddFile(std::string_view name, std::size_t size, int day = 1) {
    dir.WriteHostFile(name, std::string(size, 'x'));
    ASSERT_TRUE(host->SetTimes(dir.Path(name), *DateTime::FromCivil({2026, 11, day, 9, 5, 7})));
  }
  void AddFolder(std::string_view name) { ASSERT_TRUE(host->CreateFolder(dir.Path(name))); }
  List Show() {
    EXPECT_TRUE(Files().Refresh());
    return Texts(Files());
  }
};

TEST_F(FilePaneTest, DirectoriesAndFilesAreSortedTogetherBehindTheWayUp) {
  AddFile("beta.txt", 1);
  AddFile("Delta.txt", 1);
  AddFolder("Gamma");
  AddFolder("alpha");
  EXPECT_EQ(Show(), (List{" [..]", "alpha", "beta.txt", "Delta.txt", "Gamma"})) << "without regard to case";
  Files().ClickHeader(0);
  EXPECT_EQ(Texts(Files()), (List{" [..]", "Gamma", "Delta.txt", "beta.txt", "alpha"}));
  EXPECT_FALSE(options.FSSortingDirection);
}

TEST_F(FilePaneTest, RowsHoldTypeKeyAndTheIndexOfTheirAppending) {
  AddFile("a.txt", 1);
  AddFolder("b");
  Show();
  EXPECT_EQ(Keys(Files()), (List{"..", "a.txt", dir.Path("b")}));
  EXPECT_EQ(Files().Tag(0), "T1I0");
  EXPECT_EQ(Files().Tag(1), "T3I2") << "files are appended behind the directories";
  EXPECT_EQ(Files().Tag(2), "T2I1");
  EXPECT_EQ(Files().List().Directories, 1);
  EXPECT_EQ(Files().List().Files, 1);
}

TEST_F(FilePaneTest, ColumnsShowDateAndSize) {
  AddFile("a.txt", 12345, 2);
  AddFolder("b");
  Show();
  EXPECT_EQ(Files().Text(1, 1), "02.11.2026 09:05:07");
  EXPECT_EQ(Files().Text(1, 2), "12.345");
  EXPECT_EQ(Files().Text(2, 2), "") << "the path of a directory is no size";
  EXPECT_EQ(Files().Text(0, 1), "");
}

TEST_F(FilePaneTest, SizesAreSortedAsTheTextsThatTheirSlotHolds) {
  // Kept on purpose: the slot holds a formatted text, and by it the column has always been sorted.
  AddFile("neunundneunzig", 99);
  AddFile("tausend", 1000);
  AddFile("fünf", 5);
  options.FSSortingMode = sort_mode::FileSize;
  EXPECT_EQ(Show(), (List{" [..]", "tausend", "fünf", "neunundneunzig"})) << "1.000, 5, 99";
}

TEST_F(FilePaneTest, DatesAreSortedAsDates) {
  AddFile("jung", 1, 10);
  AddFile("alt", 1, 9);
  dir.WriteHostFile("uralt", "x");
  ASSERT_TRUE(host->SetTimes(dir.Path("uralt"), *DateTime::FromCivil({1999, 12, 31, 0, 0, 0})));
  options.FSSortingMode = sort_mode::FileDate;
  EXPECT_EQ(Show(), (List{" [..]", "uralt", "alt", "jung"}));
}

TEST_F(FilePaneTest, TheRootOfADriveHasNoWayUp) {
  ASSERT_TRUE(Files().ShowDirectory("Z:"));
  EXPECT_EQ(currentPath, "Z:\\");
  EXPECT_NE(Files().EntryType(0), entry_type::DirBackEntry);
  EXPECT_FALSE(Files().GoUp());
  EXPECT_FALSE(Files().GoToRoot());
}

TEST(DriveRoots, OfDrivesAndShares) {
  EXPECT_TRUE(IsDriveRoot("Z:\\"));
  EXPECT_TRUE(IsDriveRoot("Z:"));
  EXPECT_FALSE(IsDriveRoot("Z:\\a"));
  EXPECT_TRUE(IsDriveRoot(R"(\\SERVER\DAVID\)"));
  EXPECT_TRUE(IsDriveRoot(R"(\\SERVER\DAVID)"));
  EXPECT_FALSE(IsDriveRoot(R"(\\SERVER\DAVID\archive)"));
  EXPECT_EQ(DriveRootOf(R"(Z:\a\b)"), "Z:\\");
  EXPECT_EQ(DriveRootOf(R"(\\SERVER\DAVID\archive\in\)"), R"(\\SERVER\DAVID\)");
}

TEST_F(FilePaneTest, EnterAndTheWayUp) {
  AddFolder("a");
  AddFolder("b");
  dir.WriteHostFile("b/innen.txt", "x");
  Show();
  EXPECT_EQ(Files().Enter(2), EnterResult::Entered);
  EXPECT_EQ(currentPath, dir.Path("b") + "\\");
  EXPECT_EQ(Texts(Files()), (List{" [..]", "innen.txt"}));
  EXPECT_EQ(Files().Enter(1), EnterResult::File);
  EXPECT_EQ(Files().Enter(0), EnterResult::Entered);
  EXPECT_EQ(currentPath, dir.Path() + "\\");
  EXPECT_EQ(Files().CursorRow(), 2u) << "the cursor stands on the directory that was left";
  EXPECT_TRUE(Files().GoBack());
  EXPECT_EQ(currentPath, dir.Path("b") + "\\");
  EXPECT_TRUE(Files().GoToRoot());
  EXPECT_EQ(currentPath, "Z:\\");
}

TEST_F(FilePaneTest, APathMayBeTypedAsTheHostHasIt) {
  ASSERT_TRUE(Files().ShowDirectory(dir.HostPath()));
  EXPECT_EQ(currentPath, dir.Path() + "\\");
}

TEST_F(FilePaneTest, TheHeadingIsThePathOrItsShare) {
  Show();
  EXPECT_EQ(Files().PathText(), currentPath);
  options.DisplayFolderShareName = true;
  EXPECT_EQ(Files().PathText(), currentPath) << "a drive without a share";

  const auto shared =
      platform::MakeHostFileSystem({{"Y:", dir.HostPath()}, {"\\\\ZEB\\DATEN", dir.HostPath()}});
  run::Run sharedRun(*shared, clock, frontEnd.Set(), dir.Path());
  std::string path = "Y:\\sub\\";
  PaneContext context{session, options, sharedRun, path, watcher};
  const FilePane pane(context);
  EXPECT_EQ(pane.PathText(), R"(\\ZEB\DATEN\sub\)");
  options.DisplayFolderShareName = false;
  EXPECT_EQ(pane.PathText(), "Y:\\sub\\");
}

TEST_F(FilePaneTest, HelperFilesOfAMailArchiveAreLeftOut) {
  for (const auto* name : {"index.html", "index2.html", "mail.htm", "mail.add", "autorun.inf",
                           "VelmoraSubArc.vla", "shellexec.exe"}) {
    AddFile(name, 1);
  }
  EXPECT_EQ(Show(), (List{" [..]", "autorun.inf", "index.html", "mail.htm"}));
  EXPECT_EQ(Files().List().Files, 3);
  EXPECT_TRUE(Files().IsMailArc());
  EXPECT_TRUE(Files().MailArc().CanHoldContent);
  ASSERT_TRUE(Files().ToggleHelperFiles());
  EXPECT_FALSE(options.HideMailArcHelperFiles);
  EXPECT_EQ(Files().List().Files, 7);
}

TEST_F(FilePaneTest, OutsideOfAMailArchiveTheyAreFilesLikeOthers) {
  AddFile("mail.add", 1);
  EXPECT_EQ(Show(), (List{" [..]", "mail.add"}));
  EXPECT_FALSE(Files().IsMailArc());
  EXPECT_FALSE(Files().ToggleHelperFiles());
  EXPECT_TRUE(options.HideMailArcHelperFiles);
}

TEST_F(FilePaneTest, StatusCountsFiles) {
  AddFolder("a");
  Show();
  EXPECT_EQ(Files().StatusText(0), "0 Files");
  AddFile("x", 1);
  Show();
  EXPECT_EQ(Files().StatusText(1), "1 File");
  AddFile("y", 1);
  Show();
  EXPECT_EQ(Files().StatusText(0), "2 Files");
}

TEST_F(FilePaneTest, TheSizeOfADirectoryStandsInItsRow) {
  AddFolder("a");
  AddFolder("a/b");
  AddFile("a/eins", 1000);
  AddFile("a/b/zwei", 500);
  AddFile("datei", 1);
  Show();
  EXPECT_TRUE(Files().ShowSize(1));
  EXPECT_EQ(Files().Text(1, 1), "1 Dir(s)/ 2 File(s)");
  EXPECT_EQ(Files().Text(1, 2), "1.500  (1 KB)");
  EXPECT_FALSE(Files().ShowSize(0));
  EXPECT_FALSE(Files().ShowSize(2)) << "a file shows its size anyhow";
}

TEST_F(FilePaneTest, ADangerousNameIsShownHarmlessAndFoundAsItIs) {
  const std::string name =
      "x\xE2\x80\xAE"
      "fdp.exe";
  AddFile(name, 1);
  Show();
  EXPECT_EQ(Files().Text(1, 0), "x[U+202E]fdp.exe");
  EXPECT_EQ(Files().Name(1), name);
  EXPECT_TRUE(host->FileExists(Files().Row(1).FullPath));
}

TEST_F(FilePaneTest, AnArchiveOfManyFilesKeepsItsOrder) {
  for (int i = 0; i < 300; ++i) dir.WriteHostFile("f" + std::to_string(1000 + i), "");
  const auto texts = Show();
  EXPECT_EQ(texts.size(), 301u);
  EXPECT_TRUE(std::is_sorted(texts.begin() + 1, texts.end()));
}

}  // namespace
}  // namespace velmora::panes
