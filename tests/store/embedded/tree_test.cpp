// Making, finding, renaming, moving and removing archives.
#include <filesystem>

#include "base/paths.h"
#include "base/text.h"
#include "store/archive_record.h"
#include "store/embedded/directory_names.h"
#include "store/embedded/list_cache.h"
#include "store/errors.h"
#include "tree_fixture.h"

namespace velmora::store::embedded {
namespace {

TEST_F(TreeTest, EmptyTreeHasItsRootOnly) {
  EXPECT_EQ(Tree->Root().Directory, Root);
  EXPECT_EQ(Tree->Root().Name, "Archive");
  EXPECT_EQ(Tree->Root().ParentDirectory, "");
  EXPECT_TRUE(Children(Root).empty());
  EXPECT_EQ(Tree->NamesDownTo(Root), Names{"Archive"});
  EXPECT_EQ(Tree->FindByNames(Root, {})->Directory, Root);
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeTest, CreateMakesDirectoryRecordAndCopy) {
  const ArchiveRecord made = Make(Root, "Vertrieb Nord");
  EXPECT_EQ(made.Directory, R"(\\SERVER\DAVID\ARCHIVE\VERTRIEB)");
  EXPECT_EQ(made.RecordNumber, 1);
  EXPECT_FALSE(made.IsLink);
  const std::string list = Temp.ReadHostFile("ARCHIVE/archive.dir");
  ASSERT_EQ(list.size(), DirRecord::Size);
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/VERTRIEB/archive.add"), list);
  const auto record = DirRecord::FromBytes(list);
  EXPECT_EQ(record->Path(), made.Directory);
  EXPECT_EQ(record->Name(), "Vertrieb Nord");
  EXPECT_FALSE(HostExists("ARCHIVE/archive.vlw"));
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeTest, ChildrenComeInRecordOrder) {
  for (const auto* name : {"Zebra", "Anton", "Mitte"}) Make(Root, name);
  EXPECT_EQ(ChildNames(Root), (Names{"Zebra", "Anton", "Mitte"}));
  EXPECT_EQ(Children(Root)[2].RecordNumber, 3);
}

TEST_F(TreeTest, NestsInDirectories) {
  const ArchiveRecord inner = Make(Make(Make(Root, "Eins").Directory, "Zwei").Directory, "Drei");
  EXPECT_EQ(inner.Directory, R"(\\SERVER\DAVID\ARCHIVE\EINS\ZWEI\DREI)");
  EXPECT_EQ(Tree->NamesDownTo(inner.Directory), (Names{"Archive", "Eins", "Zwei", "Drei"}));
  EXPECT_EQ(Tree->FindByNames(Root, {"Eins", "Zwei", "Drei"})->Directory, inner.Directory);
  EXPECT_EQ(Tree->FindByNames(R"(\\SERVER\DAVID\ARCHIVE\EINS)", {"Zwei", "Drei"})->Directory,
            inner.Directory);
}

TEST_F(TreeTest, EqualNamesAreAllowedAndAPathFindsTheFirst) {
  const ArchiveRecord first = Make(Root, "Post"), second = Make(Root, "Post");
  EXPECT_EQ(first.Directory, R"(\\SERVER\DAVID\ARCHIVE\POST)");
  EXPECT_EQ(second.Directory, R"(\\SERVER\DAVID\ARCHIVE\POST1)");
  EXPECT_EQ(Tree->FindByNames(Root, {"Post"})->Directory, first.Directory);
  EXPECT_EQ(Tree->FindByDirectory(second.Directory)->RecordNumber, 2);
}

TEST_F(TreeTest, FindsWithoutRegardToCaseAndTheExactNameFirst) {
  const ArchiveRecord small = Make(Root, "übersicht"), capital = Make(Root, "ÜBERSICHT");
  EXPECT_EQ(Tree->FindByNames(Root, {"Übersicht"})->Directory, small.Directory);
  EXPECT_EQ(Tree->FindByNames(Root, {"ÜBERSICHT"})->Directory, capital.Directory);
  EXPECT_EQ(Tree->FindByDirectory(ToLower(capital.Directory))->Name, "ÜBERSICHT");
  EXPECT_EQ(Children(ToLower(Root)).size(), 2u);
  EXPECT_EQ(Children(AddBackslash(Root)).size(), 2u);
}

TEST_F(TreeTest, TellsWhatIsNotThere) {
  Make(Root, "Post");
  EXPECT_EQ(Tree->FindByNames(Root, {"Brief"}).error().Number, store_error::NotFound);
  EXPECT_EQ(Tree->FindByNames(Root, {"Post", "Brief"}).error().Number, store_error::NotFound);
  EXPECT_EQ(Tree->FindByDirectory(R"(\\SERVER\DAVID\ARCHIVE\BRIEF)").error().Number, store_error::NotFound);
  EXPECT_EQ(Tree->FindByDirectory(R"(\\OTHER\X\Y)").error().Number, store_error::NotFound);
  EXPECT_EQ(Tree->NamesDownTo(R"(\\SERVER\DAVID)").error().Number, store_error::NotFound);
  EXPECT_EQ(Tree->Create(R"(\\SERVER\DAVID\ARCHIVE\BRIEF)", "x", {}).error().Number, store_error::NotFound);
}

TEST_F(TreeTest, BracesNameTheDirectory) {
  EXPECT_EQ(Make(Root, "Rechnungen{RE2026}").Directory, R"(\\SERVER\DAVID\ARCHIVE\RE2026)");
  EXPECT_EQ(Make(Root, "{vorn}Angebote").Directory, R"(\\SERVER\DAVID\ARCHIVE\vorn)");
  EXPECT_EQ(Make(Root, "Mit{MITTE}te").Name, "Mitte");
  EXPECT_EQ(ChildNames(Root), (Names{"Rechnungen", "Angebote", "Mitte"}));
}

TEST_F(TreeTest, NameOfBracesOnlyShowsTheDirectory) {
  const ArchiveRecord made = Make(Root, "{SERVICE}");
  EXPECT_EQ(made.Name, "SERVICE");
  EXPECT_EQ(Tree->FindByNames(Root, {"service"})->Directory, made.Directory);
}

TEST_F(TreeTest, TakenDirectoryGetsAFreshName) {
  const ArchiveRecord first = Make(Root, "Eins{DIR}"), second = Make(Root, "Zwei{dir}"),
                      third = Make(Root, "Drei{DIR}");
  EXPECT_EQ(second.Directory, R"(\\SERVER\DAVID\ARCHIVE\dir1)");
  EXPECT_EQ(third.Directory, R"(\\SERVER\DAVID\ARCHIVE\DIR2)");
  EXPECT_EQ(ChildNames(Root), (Names{"Eins", "Zwei", "Drei"}));
}

TEST_F(TreeTest, DirectoryOnTheDiskIsTakenToo) {
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/post"));
  Temp.WriteHostFile("ARCHIVE/Post1", "a file");
  EXPECT_EQ(Make(Root, "Post").Directory, R"(\\SERVER\DAVID\ARCHIVE\POST2)");
}

TEST_F(TreeTest, DirectoryOfADanglingRecordIsTakenToo) {
  std::filesystem::remove_all(
      Temp.HostPath("ARCHIVE/" + std::string(FileNameOf(Make(Root, "Post").Directory))));
  EXPECT_EQ(Make(Root, "Post").Directory, R"(\\SERVER\DAVID\ARCHIVE\POST1)");
}

TEST_F(TreeTest, BracesCannotLeaveTheParent) {
  for (const auto* name : {R"(x{..})", R"(x{..\..\tmp})", "x{/etc}", "x{Z:}", "x{archive.dir}", "x{a\tb}"}) {
    const ArchiveRecord made = Make(Root, name);
    EXPECT_EQ(DirectoryOf(made.Directory), AddBackslash(Root)) << made.Directory;
    EXPECT_LE(CountCharacters(FileNameOf(made.Directory)), DirectoryNameLength) << made.Directory;
    EXPECT_EQ(made.Directory.find_first_of(".:", Root.size()), std::string::npos) << made.Directory;
    EXPECT_TRUE(Files->FolderExists(made.Directory));
  }
}

TEST(DirectoryNames, AreDerivedFromTheName) {
  EXPECT_EQ(DirectoryNameFor("Größe & Maß 2"), "GROESSEM");
  EXPECT_EQ(DirectoryNameFor("a-b_c.d"), "ABCD");
  EXPECT_EQ(DirectoryNameFor("Привет"), "ARCHIV");
  EXPECT_EQ(DirectoryNameFor(""), "ARCHIV");
  EXPECT_EQ(DirectoryNameFor("1234567890"), "12345678");
}

TEST(DirectoryNames, BracesThatDoNotCloseBelongToTheName) {
  EXPECT_EQ(SplitGivenName("a{b").DisplayName, "a{b");
  EXPECT_EQ(SplitGivenName("a}b{c").DisplayName, "a}b{c");
  EXPECT_EQ(SplitGivenName("a{}b").DisplayName, "ab");
  EXPECT_EQ(SplitGivenName("a{}b").Directory, "");
  EXPECT_EQ(SplitGivenName("a{B}{C}").DisplayName, "a{C}") << "the first pair is the directory";
}

TEST_F(TreeTest, WindowsDeviceNamesAreNoDirectories) {
  EXPECT_EQ(Make(Root, "Aux").Directory, R"(\\SERVER\DAVID\ARCHIVE\AUX1)");
  EXPECT_EQ(Make(Root, "x{com1}").Directory, R"(\\SERVER\DAVID\ARCHIVE\com11)");
}

TEST_F(TreeTest, NumberedNamesKeepToEightCharacters) {
  for (int i = 0; i < 12; ++i) Make(Root, "Protokolle");
  EXPECT_TRUE(Files->FolderExists(R"(\\SERVER\DAVID\ARCHIVE\PROTOKOL)"));
  EXPECT_TRUE(Files->FolderExists(R"(\\SERVER\DAVID\ARCHIVE\PROTOKO9)"));
  EXPECT_TRUE(Files->FolderExists(R"(\\SERVER\DAVID\ARCHIVE\PROTOK11)"));
}

TEST_F(TreeTest, NamesAreCleanedAndCut) {
  EXPECT_EQ(Make(Root, "Ein/Aus\\gang\x01").Name, "Ein-Aus-gang-");
  EXPECT_EQ(Make(Root, "Ж").Name, "_");
  EXPECT_EQ(Tree->FindByNames(Root, {"Ж"})->Name, "_") << "found by the name that was given";
  EXPECT_LT(Make(Root, std::string(500, 'x')).Name.size(), 273u);
  EXPECT_EQ(Children(Root).size(), 3u);
}

TEST_F(TreeTest, PathsThatDoNotFitARecordAreRefused) {
  std::string parent(Root);
  Result<ArchiveRecord> made = ArchiveRecord{};
  for (int depth = 0; depth < 40 && made; ++depth) {
    made = Tree->Create(parent, "Abteilung", {});
    if (made) parent = made->Directory;
  }
  ASSERT_FALSE(made);
  EXPECT_EQ(made.error().Number, store_error::BadName);
  EXPECT_TRUE(Children(parent).empty());
  EXPECT_EQ(CheckTexts(), "") << "nothing of the refused archive is left";
}

TEST_F(TreeTest, PropertiesComeBack) {
  ArchiveProperties properties;
  properties.Kind = 102;
  properties.Hidden = true;
  properties.DisplayType = 3;
  properties.Owner = 17;
  properties.OptionFlags = 0x80000001u;
  const ArchiveRecord made = Make(Root, "Ausgang", properties);
  EXPECT_EQ(Children(Root)[0].Properties, properties);
  properties.Hidden = false;
  properties.AdminOnly = properties.Packed = true;
  ASSERT_TRUE(Tree->SetProperties(made, properties));
  EXPECT_EQ(Tree->FindByDirectory(made.Directory)->Properties, properties);
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/AUSGANG/archive.add"), Temp.ReadHostFile("ARCHIVE/archive.dir"));
  ArchiveTree another(*Files, std::string(Root));
  EXPECT_EQ(another.Children(Root)->at(0).Properties, properties);
}

TEST_F(TreeTest, RootKeepsItsPropertiesInItsOwnRecord) {
  ArchiveProperties properties;
  properties.AdminOnly = true;
  properties.DisplayType = 5;
  ASSERT_TRUE(Tree->SetProperties(Tree->Root(), properties));
  EXPECT_EQ(Tree->Root().Properties, properties);
  EXPECT_EQ(Tree->FindByDirectory(Root)->Properties, properties);
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/archive.add").size(), DirRecord::Size);
}

TEST_F(TreeTest, MissingOwnRecordIsNoLoss) {
  const ArchiveRecord made = Make(Root, "Post", {.Hidden = true});
  std::filesystem::remove(Temp.HostPath("ARCHIVE/POST/archive.add"));
  EXPECT_TRUE(Tree->FindByDirectory(made.Directory)->Properties.Hidden);
  ASSERT_TRUE(Tree->Rename(made, "Brief"));
  EXPECT_TRUE(HostExists("ARCHIVE/POST/archive.add"));
}

TEST_F(TreeTest, RenameChangesTheNameAndNothingElse) {
  Make(Root, "Erstes");
  const ArchiveRecord made = Make(Root, "Zweites", {.Owner = 9});
  ASSERT_TRUE(Tree->Rename(made, "Post/Ein"));
  const ArchiveRecord renamed = *Tree->FindByDirectory(made.Directory);
  EXPECT_EQ(renamed.Name, "Post-Ein");
  EXPECT_EQ(renamed.RecordNumber, 2);
  EXPECT_EQ(renamed.Properties.Owner, 9);
  EXPECT_EQ(DirRecord::FromBytes(Temp.ReadHostFile("ARCHIVE/ZWEITES/archive.add"))->Name(), "Post-Ein");
  ASSERT_TRUE(Tree->Rename(renamed, ""));
  EXPECT_EQ(Tree->FindByDirectory(made.Directory)->Name, "ZWEITES");
}

TEST_F(TreeTest, RenameFindsARecordThatHasMoved) {
  const ArchiveRecord first = Make(Root, "Eins"), second = Make(Root, "Zwei");
  ASSERT_TRUE(Tree->RemoveRecord(first));
  ASSERT_TRUE(Tree->Rename(second, "Drei"));
  EXPECT_EQ(ChildNames(Root), Names{"Drei"});
  EXPECT_EQ(Tree->Rename(first, "x").error().Number, store_error::NotFound);
}

TEST_F(TreeTest, RootIsProtected) {
  EXPECT_EQ(Tree->Rename(Tree->Root(), "x").error().Number, store_error::Protected);
  EXPECT_EQ(Tree->RemoveRecord(Tree->Root()).error().Number, store_error::Protected);
  const ArchiveRecord other = Make(Root, "Post");
  EXPECT_EQ(Tree->MoveRecord(Tree->Root(), other.Directory).error().Number, store_error::Protected);
}

TEST_F(TreeTest, RemoveTakesTheRecordAndLeavesTheFiles) {
  for (const auto* name : {"Eins", "Zwei", "Drei"}) Make(Root, name);
  ASSERT_TRUE(Tree->RemoveRecord(Children(Root)[1]));
  EXPECT_EQ(ChildNames(Root), (Names{"Eins", "Drei"}));
  EXPECT_EQ(Children(Root)[1].RecordNumber, 2);
  EXPECT_TRUE(HostExists("ARCHIVE/ZWEI/archive.add"));
  EXPECT_FALSE(Tree->FindByDirectory(R"(\\SERVER\DAVID\ARCHIVE\ZWEI)"));
  EXPECT_EQ(Temp.ReadHostFile("ARCHIVE/archivedir.bak").size(), 3 * DirRecord::Size);
}

TEST_F(TreeTest, MoveLeavesTheDirectoryWhereItIs) {
  const ArchiveRecord from = Make(Root, "Von"), to = Make(Root, "Nach");
  const ArchiveRecord inner = Make(from.Directory, "Akte", {.Owner = 5});
  const ArchiveRecord deep = Make(inner.Directory, "Blatt");
  const auto moved = Tree->MoveRecord(inner, to.Directory);
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved->Directory, inner.Directory);
  EXPECT_EQ(moved->ParentDirectory, to.Directory);
  EXPECT_FALSE(moved->IsLink);
  EXPECT_TRUE(Children(from.Directory).empty());
  EXPECT_FALSE(Children(to.Directory)[0].IsLink);
  EXPECT_EQ(Tree->NamesDownTo(deep.Directory), (Names{"Archive", "Nach", "Akte", "Blatt"}));
  ArchiveTree another(*Files, std::string(Root));
  EXPECT_EQ(another.NamesDownTo(deep.Directory), (Names{"Archive", "Nach", "Akte", "Blatt"}))
      << "found by a tree that has read no list yet";
  EXPECT_EQ(another.FindByDirectory(inner.Directory)->Properties.Owner, 5);
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeTest, MoveIntoItselfIsRefused) {
  const ArchiveRecord outer = Make(Root, "Außen"), inner = Make(outer.Directory, "Innen"),
                      other = Make(Root, "Neben");
  ASSERT_TRUE(Tree->MoveRecord(other, inner.Directory));
  EXPECT_FALSE(Tree->MoveRecord(outer, outer.Directory));
  EXPECT_FALSE(Tree->MoveRecord(outer, inner.Directory));
  EXPECT_FALSE(Tree->MoveRecord(outer, other.Directory)) << "below it in the tree, beside it on the disk";
  EXPECT_EQ(ChildNames(Root), Names{"Außen"});
}

TEST_F(TreeTest, MoveToTheSameParentChangesNothing) {
  const ArchiveRecord made = Make(Root, "Post");
  EXPECT_EQ(Tree->MoveRecord(made, ToLower(Root))->RecordNumber, 1);
  EXPECT_EQ(Children(Root).size(), 1u);
}

TEST_F(TreeTest, MoveToNowhereLosesNothing) {
  const ArchiveRecord made = Make(Root, "Post");
  EXPECT_EQ(Tree->MoveRecord(made, R"(\\SERVER\DAVID\ARCHIVE\FEHLT)").error().Number, store_error::NotFound);
  EXPECT_EQ(Children(Root).size(), 1u);
}

TEST_F(TreeTest, ArchiveMayLieAnywhere) {
  const ArchiveRecord users = Make(Root, "Benutzer{user}");
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/extra"));
  const auto made =
      Tree->CreateAt(users.Directory, "Meier", R"(\\SERVER\DAVID\ARCHIVE\extra\0000000A)", {.Owner = 10});
  ASSERT_TRUE(made) << made.error().Text;
  EXPECT_EQ(Tree->NamesDownTo(made->Directory), (Names{"Archive", "Benutzer", "Meier"}));
  EXPECT_FALSE(Children(users.Directory)[0].IsLink);
  EXPECT_TRUE(HostExists("ARCHIVE/extra/0000000A/archive.add"));
  EXPECT_EQ(CheckTexts(), "");
}

TEST_F(TreeTest, DirectoryOfAnArchiveIsNeverSharedByAnother) {
  const ArchiveRecord post = Make(Root, "Post"), users = Make(Root, "Benutzer");
  EXPECT_FALSE(Tree->CreateAt(users.Directory, "Zweitbesitz", ToLower(post.Directory), {}));
  const auto moved = Tree->MoveRecord(post, users.Directory);
  ASSERT_TRUE(moved);
  ArchiveTree another(*Files, std::string(Root));
  EXPECT_FALSE(another.CreateAt(Root, "Zweitbesitz", post.Directory, {}));
}

TEST_F(TreeTest, OrphanedDirectoryIsTakenIn) {
  std::filesystem::create_directory(Temp.HostPath("ARCHIVE/WAISE"));
  const auto made = Tree->CreateAt(Root, "Waise", R"(\\SERVER\DAVID\ARCHIVE\WAISE)", {});
  ASSERT_TRUE(made) << made.error().Text;
  EXPECT_EQ(Tree->FindByDirectory(made->Directory)->Name, "Waise");
}

TEST_F(TreeTest, NewDirectoriesAreOpenToWhomTheParentIsOpen) {
  const auto modeOf = [&](const char* relative) {
    return std::filesystem::status(Temp.HostPath(relative)).permissions() &
           (std::filesystem::perms::group_all | std::filesystem::perms::others_all);
  };
  std::filesystem::permissions(Temp.HostPath("ARCHIVE"), std::filesystem::perms::owner_all);
  Make(Root, "Geheim");
  EXPECT_EQ(modeOf("ARCHIVE/GEHEIM"), std::filesystem::perms::none);
}

// A session that has walked a tree of 100,000 archives keeps as many lists.
TEST_F(TreeTest, ListInMemoryTakesNoMoreRoomThanItsBytes) {
  Make(Root, "Post");
  ListCache lists(*Files);
  const auto read = lists.Get(Root);
  ASSERT_TRUE(read);
  EXPECT_EQ((*read)->Content().size(), DirRecord::Size);
  EXPECT_LE((*read)->Content().capacity(), 2 * DirRecord::Size);
  std::string composed = (*read)->Content() + (*read)->Content();
  composed.reserve(100 * DirRecord::Size);
  ASSERT_TRUE(lists.Put(Root, std::move(composed)));
  EXPECT_LE((*lists.Get(Root))->Content().capacity(), 3 * DirRecord::Size);
}

}  // namespace
}  // namespace velmora::store::embedded
