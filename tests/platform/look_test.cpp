// Looking up names: case, listings, masks, folders, links, names that Windows cannot have.

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "platform/clock.h"
#include "platform/file_system_fixture.h"

namespace velmora::platform {
namespace {

namespace fs = std::filesystem;

using LookTest = FileSystemFixture;

TEST_F(LookTest, ExactNameComesBeforeAnotherCase) {
  dir_.WriteHostFile("Name.txt", "upper");
  dir_.WriteHostFile("name.txt", "lower");
  EXPECT_EQ(files_->ReadFile(P("name.txt")).value(), "lower");
  EXPECT_EQ(files_->ReadFile(P("Name.txt")).value(), "upper");
  EXPECT_EQ(files_->ReadFile(P("NAME.TXT")).value(), "upper");  // the first in the order of the bytes
}

TEST_F(LookTest, FoldersAreFoundInAnyCase) {
  fs::create_directories(H("Alpha/BETA"));
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("ALPHA\\beta\\x.txt"), "1")), 0);
  EXPECT_EQ(dir_.ReadHostFile("Alpha/BETA/x.txt"), "1");
  EXPECT_TRUE(files_->FolderExists(P("alpha\\Beta")));
  EXPECT_TRUE(files_->FolderExists(P("alpha\\Beta\\")));
  EXPECT_FALSE(files_->FolderExists(P("alpha\\Gamma")));
}

TEST_F(LookTest, SlashesAreTolerated) {
  fs::create_directories(H("a/b"));
  dir_.WriteHostFile("a/b/x.txt", "1");
  EXPECT_EQ(files_->ReadFile(P("a/b/x.txt")).value(), "1");
  EXPECT_EQ(files_->ReadFile(P("a\\\\b//x.txt")).value(), "1");
}

TEST_F(LookTest, UmlautsAreFolded) {
  dir_.WriteHostFile("Übersicht.txt", "1");
  EXPECT_TRUE(files_->FileExists(P("übersicht.TXT")));
}

TEST_F(LookTest, FilesAndFoldersAreToldApart) {
  fs::create_directory(H("folder"));
  dir_.WriteHostFile("file", "1");
  EXPECT_TRUE(files_->FileExists(P("file")));
  EXPECT_FALSE(files_->FolderExists(P("file")));
  EXPECT_FALSE(files_->FileExists(P("folder")));
  EXPECT_TRUE(files_->FolderExists(P("folder")));
  EXPECT_TRUE(files_->FolderExists("Z:\\"));
  EXPECT_TRUE(files_->FolderExists("z:"));
  EXPECT_FALSE(files_->FileExists("Z:\\"));
}

TEST_F(LookTest, MissingFilesAndMissingFoldersHaveTheirOwnNumbers) {
  EXPECT_EQ(ErrorOf(files_->ReadFile(P("missing"))), 53);
  EXPECT_EQ(ErrorOf(files_->GetEntry(P("missing"))), 53);
  EXPECT_EQ(ErrorOf(files_->ReadFile(P("missing\\x"))), 76);
  EXPECT_EQ(ErrorOf(files_->GetEntry(P("missing\\x"))), 76);
  EXPECT_EQ(ErrorOf(files_->List(P("missing"), "*", ListWhat::All)), 76);
  dir_.WriteHostFile("file", "1");
  EXPECT_EQ(ErrorOf(files_->ReadFile(P("file\\x"))), 76);
  EXPECT_EQ(ErrorOf(files_->List(P("file"), "*", ListWhat::All)), 76);
  EXPECT_EQ(ErrorOf(files_->ReadFile("Q:\\x")), 76);
}

TEST_F(LookTest, EntriesTellSizeTimeAndKind) {
  const DateTime time = DateTime::FromCivil({2021, 3, 4, 5, 6, 7}).value();
  ASSERT_EQ(ErrorOf(files_->WriteFile(P("Datei.txt"), "12345", {.Time = time})), 0);
  const FileEntry entry = files_->GetEntry(P("DATEI.TXT")).value();
  EXPECT_EQ(entry.Name, "Datei.txt");
  EXPECT_EQ(entry.Size, 5);
  EXPECT_EQ(entry.Modified, time);
  EXPECT_FALSE(entry.IsFolder || entry.IsLink || entry.Hidden || entry.ReadOnly);
  EXPECT_TRUE(files_->GetEntry(dir_.Path())->IsFolder);
  EXPECT_TRUE(files_->GetEntry("Z:\\")->IsFolder);
}

TEST_F(LookTest, ListingsComeInFoldedOrder) {
  for (const char* name : {"b.txt", "A.txt", "C.txt", "_.txt", "ä.txt", "a.txt", "Z.txt"}) {
    dir_.WriteHostFile(name, "");
  }
  const Strings names = Names("*.*");
  ASSERT_EQ(names.size(), 7u);
  const auto position = [&](const char* name) { return std::find(names.begin(), names.end(), name); };
  EXPECT_LT(position("A.txt"), position("a.txt"));  // equal when folded: the order of the bytes
  EXPECT_LT(position("a.txt"), position("b.txt"));
  EXPECT_LT(position("b.txt"), position("C.txt"));
  EXPECT_LT(position("C.txt"), position("Z.txt"));
  EXPECT_LT(position("Z.txt"), position("ä.txt"));
}

TEST_F(LookTest, MasksSelectNamesInAnyCase) {
  for (const char* name : {"Report1.htm", "report2.HTM", "report.txt", "other.htm", "noext"}) {
    dir_.WriteHostFile(name, "");
  }
  EXPECT_EQ(Names("*").size(), 5u);
  EXPECT_EQ(Names("*.*").size(), 5u);
  EXPECT_EQ(Names("").size(), 5u);
  EXPECT_EQ(Names("REPORT*.htm"), (Strings{"Report1.htm", "report2.HTM"}));
  EXPECT_EQ(Names("report?.htm"), (Strings{"Report1.htm", "report2.HTM"}));
  EXPECT_EQ(Names("*.htm"), (Strings{"other.htm", "Report1.htm", "report2.HTM"}));
  EXPECT_EQ(Names("OTHER.HTM"), Strings{"other.htm"});
  EXPECT_EQ(Names("x*"), Strings{});
}

TEST_F(LookTest, ListingsSelectFilesOrFolders) {
  fs::create_directory(H("folder"));
  fs::create_directory_symlink("folder", H("linked"));
  dir_.WriteHostFile("file", "");
  EXPECT_EQ(Names("*", ListWhat::Files), Strings{"file"});
  EXPECT_EQ(Names("*", ListWhat::Folders), (Strings{"folder", "linked"}));
  EXPECT_EQ(Names("*", ListWhat::All), (Strings{"file", "folder", "linked"}));
}

TEST_F(LookTest, LinksAreMarkedAndFollowed) {
  dir_.WriteHostFile("file", "123");
  fs::create_symlink("file", H("link"));
  fs::create_symlink("nowhere", H("dangling"));
  fs::create_symlink("circle", H("circle"));
  EXPECT_TRUE(files_->GetEntry(P("link"))->IsLink);
  EXPECT_EQ(files_->GetEntry(P("link"))->Size, 3);
  EXPECT_EQ(files_->ReadFile(P("link")).value(), "123");
  for (const char* name : {"dangling", "circle"}) {
    EXPECT_FALSE(files_->FileExists(P(name)));
    EXPECT_TRUE(files_->GetEntry(P(name))->IsLink);
    EXPECT_EQ(ErrorOf(files_->ReadFile(P(name))), 53);
    EXPECT_EQ(ErrorOf(files_->List(P(name), "*", ListWhat::All)), 76);
    EXPECT_EQ(ErrorOf(files_->WriteFile(P(name), "x")), 53);
  }
}

TEST_F(LookTest, NamesThatWindowsCannotHaveComeBackToTheirFile) {
  const std::string hostName = "a:b\\c\xFF\x01?.txt";
  dir_.WriteHostFile(hostName, "strange");
  const Strings names = Names("*");
  ASSERT_EQ(names.size(), 1u);
  EXPECT_EQ(names[0],
            "a\xEF\x80\xBA"
            "b\xEF\x81\x9C"
            "c\xEF\x83\xBF\xEF\x80\x81\xEF\x80\xBF.txt");
  EXPECT_EQ(files_->ReadFile(P(names[0])).value(), "strange");
  ASSERT_EQ(ErrorOf(files_->DeleteFile(P(names[0]), false)), 0);
  EXPECT_FALSE(fs::exists(H(hostName)));
}

TEST_F(LookTest, BadNamesAreRefused) {
  fs::create_directory(H("sub"));
  dir_.WriteHostFile("secret", "1");
  for (const char* name : {"a:b", "a*b", "a?b", "a\"b", "a<b", "a|b", "a\x01", "\xFF", "..", "."}) {
    EXPECT_EQ(ErrorOf(files_->WriteFile(P(name), "x")), 52) << name;
    EXPECT_FALSE(files_->FileExists(P(name))) << name;
  }
  EXPECT_EQ(ErrorOf(files_->ReadFile(P("sub\\..\\secret"))), 52);
  EXPECT_EQ(ErrorOf(files_->ReadFile(P("sub/../secret"))), 52);
  EXPECT_EQ(ErrorOf(files_->List(P(".."), "*", ListWhat::All)), 52);
  EXPECT_EQ(ErrorOf(files_->ReadFile(P(std::string("secret\0x", 8)))), 52);
  EXPECT_EQ(Names("*"), (Strings{"secret", "sub"}));
}

TEST_F(LookTest, LongNamesEndAt255Bytes) {
  const std::string longest(255, 'x');
  EXPECT_EQ(ErrorOf(files_->WriteFile(P(longest), "1")), 0);
  EXPECT_TRUE(files_->FileExists(P(std::string(255, 'X'))));
  EXPECT_EQ(ErrorOf(files_->WriteFile(P(longest + "x"), "1")), 52);
  EXPECT_EQ(ErrorOf(files_->CreateFolder(P(std::string(128, 'x') + std::string(64, '\xC3') + "x"))), 52);
}

TEST_F(LookTest, NamesThatOnlyWindowsReservesJustWork) {
  for (const char* name : {"CON", "nul.txt", "LPT1", "trailing.", "trailing "}) {
    ASSERT_EQ(ErrorOf(files_->WriteFile(P(name), name)), 0) << name;
    EXPECT_EQ(dir_.ReadHostFile(name), name);
  }
}

TEST_F(LookTest, HostPathsResolveCaseAsFarAsTheNamesExist) {
  fs::create_directory(H("Folder"));
  dir_.WriteHostFile("Folder/File.txt", "");
  EXPECT_EQ(files_->HostPath(P("FOLDER\\file.TXT")).value(), H("Folder/File.txt"));
  EXPECT_EQ(files_->HostPath(P("FOLDER\\New.txt")).value(), H("Folder/New.txt"));
  EXPECT_EQ(ErrorOf(files_->HostPath(P("missing\\New.txt"))), 76);
  EXPECT_EQ(files_->HostPath("Z:\\").value(), "/");
  EXPECT_EQ(files_->FromHostPath(H("Folder/File.txt")), P("Folder\\File.txt"));
}

TEST_F(LookTest, UnreadableFoldersRefuseListingsButOpenExactNames) {
  fs::create_directory(H("locked"));
  dir_.WriteHostFile("locked/file", "1");
  ASSERT_EQ(chmod(H("locked/file").c_str(), 0644), 0);
  ASSERT_EQ(chmod(H("locked").c_str(), 0311), 0);
  ASSERT_EQ(chmod(dir_.HostPath().c_str(), 0711), 0);
  {
    const AsOrdinaryUser user;
    EXPECT_EQ(ErrorOf(files_->List(P("locked"), "*", ListWhat::All)), 70);
    EXPECT_EQ(files_->ReadFile(P("locked\\file")).value(), "1");
    EXPECT_EQ(ErrorOf(files_->ReadFile(P("locked\\FILE"))), 53);
    EXPECT_EQ(files_->UniqueFileName(P("locked"), "file"), "file1");
  }
  ASSERT_EQ(chmod(H("locked").c_str(), 0700), 0);
}

TEST_F(LookTest, FoldersThatMayNotBeEnteredAreDenied) {
  fs::create_directory(H("closed"));
  dir_.WriteHostFile("closed/file", "1");
  ASSERT_EQ(chmod(dir_.HostPath().c_str(), 0711), 0);
  ASSERT_EQ(chmod(H("closed").c_str(), 0), 0);
  {
    const AsOrdinaryUser user;
    EXPECT_EQ(ErrorOf(files_->ReadFile(P("closed\\file"))), 70);
    EXPECT_EQ(ErrorOf(files_->List(P("closed"), "*", ListWhat::All)), 70);
  }
  ASSERT_EQ(chmod(H("closed").c_str(), 0700), 0);
}

}  // namespace
}  // namespace velmora::platform
