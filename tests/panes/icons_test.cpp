// The icons of archives, messages, rules and files.
#include <gtest/gtest.h>

#include "pane_fixture.h"
#include "panes/archive_icons.h"
#include "panes/row_icons.h"
#include "store/icon_keys.h"
#include "store/vocabulary.h"

namespace velmora::panes {
namespace {

namespace display_type = store::display_type;
namespace item_type = store::item_type;

class ArchiveIconsTest : public PanesTest {
 protected:
  std::string_view IconOf(std::string_view id, bool isShortCut = false) {
    return store::ListImageKeys[static_cast<std::size_t>(
        ArchiveIcons(session).IconOf(id, isShortCut, *host))];
  }
};

TEST_F(ArchiveIconsTest, ThirtyPositionsCountTheEmptyOne) {
  EXPECT_EQ(store::SpecialArchives.size(), 29u);
  EXPECT_EQ(store::SpecialArchives[25].Kind, 113);
  EXPECT_EQ(store::SpecialArchives[26].Path, "resource\\project");
}

TEST_F(ArchiveIconsTest, ASpecialArchiveHasTheIconOfItsPlaceInTheTable) {
  fake.SpecialArchives = {{store::special::Inbox, inbox.ID}, {store::special::Outgoing, outbox.ID}};
  EXPECT_EQ(IconOf(inbox.ID), "AIn");
  EXPECT_EQ(IconOf(R"(server\david:archive\out\)"), "AOut") << "whatever the form of its path";
  EXPECT_EQ(IconOf(inbox.ID + "\\SUB"), "AUserRoot") << "only itself";
}

TEST_F(ArchiveIconsTest, BelowProjectNewsAndSpamEverythingShowsTheirIcon) {
  EXPECT_EQ(IconOf(root.ID + R"(\RESOURCE\PROJECT)"), "AProject");
  EXPECT_EQ(IconOf(root.ID + R"(\resource\project\a\b)"), "AProject");
  EXPECT_EQ(IconOf(root.ID + R"(\SYSTEM\NEWS\X)"), "APNews");
  EXPECT_EQ(IconOf(root.ID + R"(\SYSTEM\SPAM)"), "APSpam");
  EXPECT_EQ(IconOf(root.ID + R"(\SYSTEM\SPAMMER)"), "AUserRoot") << "a name, not the beginning of one";
}

TEST_F(ArchiveIconsTest, ThePlaceBelowGoesBeforeTheSpecialArchiveAndTheLastHitWins) {
  auto& inNews = fake.AddArchive(&root, "x", root.ID + R"(\SYSTEM\NEWS\IN)");
  fake.SpecialArchives[store::special::Inbox] = inNews.ID;
  EXPECT_EQ(IconOf(inNews.ID), "APNews");
}

TEST_F(ArchiveIconsTest, AShortCutHasItsOwnIcon) {
  fake.SpecialArchives[store::special::Inbox] = inbox.ID;
  EXPECT_EQ(IconOf(inbox.ID, true), "ALink");
}

TEST_F(ArchiveIconsTest, AnArchiveThatIsOpenToRemoteAccessShowsIt) {
  EXPECT_EQ(IconOf(dir.Path()), "AUserRoot");
  dir.WriteHostFile("Access.INI", "");
  EXPECT_EQ(IconOf(dir.Path()), "AUserRootRem");
}

TEST_F(ArchiveIconsTest, TheTableIsReadOncePerSignOn) {
  fake.SpecialArchives[store::special::Inbox] = inbox.ID;
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().Icon(1).Key, "AUserRoot");
  panes.SignedOn();
  ASSERT_TRUE(Left().Refresh());
  EXPECT_EQ(Left().Icon(1).Key, "AIn");
}

MessageRow Message(int displayType, std::string attachments = "", int count = 0) {
  MessageRow row{.RecNo = 1, .ItemType = 2, .DisplayType = displayType, .AttachmentCount = count};
  row.Attachments = std::move(attachments);
  return row;
}

TEST(MessageIcons, TheDisplayTypePicksTheIcon) {
  const std::pair<int, std::string_view> expected[] = {{item_type::Address, "IAddress"},
                                                       {item_type::EMail, "IMail"},
                                                       {item_type::Fax, "IFax"},
                                                       {item_type::Task, "ITask"},
                                                       {display_type::Document, "IDocument"},
                                                       {display_type::Note, "INote"},
                                                       {display_type::SystemMessage, "ISysMsg"},
                                                       {display_type::SystemInfo, "ISysInfo"},
                                                       {display_type::ModuleStart, "IModStart"},
                                                       {display_type::ModuleEnd, "IModTerm"},
                                                       {display_type::ExternalDocument, "IDocument"},
                                                       {display_type::DFML, "IDFML"},
                                                       {13, "IUnknown"}};
  for (const auto& [type, key] : expected) EXPECT_EQ(MessageIcon(Message(type), true).Key, key) << type;
}

TEST(MessageIcons, AnEmailWithAttachmentsHasItsOwn) {
  EXPECT_EQ(MessageIcon(Message(item_type::EMail, "a.pdf;b.pdf", 2), true).Key, "IMailAtt");
  EXPECT_EQ(MessageIcon(Message(item_type::Fax, "a.pdf;b.pdf", 2), true).Key, "IFax");
}

TEST(MessageIcons, OneFileShowsItsType) {
  EXPECT_EQ(MessageIcon(Message(item_type::EMail, "Bericht.pdf", 1), true).Key, "EDPDF");
  EXPECT_EQ(MessageIcon(Message(item_type::EMail, "Bericht.pdf", 1), false).Key, "IMailAtt");
  EXPECT_EQ(MessageIcon(Message(item_type::EMail, "Bericht", 1), true).Key, "IMailAtt");
}

TEST(MessageIcons, AnExternalDocumentShowsTheTypeOfItsFile) {
  EXPECT_EQ(MessageIcon(Message(display_type::ExternalDocument, "a.doc;b.xls", 2), true).Key, "EDXLS");
  EXPECT_EQ(MessageIcon(Message(display_type::ExternalDocument), true).Key, "IDocument");
}

TEST(MessageIcons, TheDestinationOfALinkIsNoFile) {
  EXPECT_EQ(MessageIcon(Message(item_type::Link, "Z:\\a.pdf", 0), true).Key, "ILink");
}

TEST(MessageIcons, ProgramsNeverUseTheCacheOfTypes) {
  EXPECT_EQ(MessageIcon(Message(item_type::EMail, "setup.exe", 1), true).Key, "IStdEXE");
  EXPECT_EQ(MessageIcon(Message(item_type::EMail, "logo.ico", 1), true).Key, "IMailAtt");
}

TEST(RuleIcons, TheModeCountsFromTheFirst) {
  const std::string_view keys[] = {"IForwarding", "IXMedia", "IAutoReply", "INewMessage", "IMisc"};
  for (int mode = 0; mode < 5; ++mode) EXPECT_EQ(RoutingModeIcon(mode), keys[mode]);
  EXPECT_EQ(RoutingModeIcon(6), "IGeneral");
  EXPECT_EQ(RoutingModeIcon(99), "IForwarding");
  EXPECT_EQ(RoutingModeIcon(-1), "IForwarding");
}

FileRow File(std::string name, int type = entry_type::FileEntry) {
  FileRow row{.EntryType = type, .Name = name, .FullPath = "Z:\\" + name};
  return row;
}

TEST(FileIcons, OfDirectories) {
  EXPECT_EQ(FileIcon(File(" [..]", entry_type::DirBackEntry), true).Key, "FolderBack");
  EXPECT_EQ(FileIcon(File("a.pdf", entry_type::DirEntry), true).Key, "FolderClosed");
}

TEST(FileIcons, OfFilesByTheirExtension) {
  EXPECT_EQ(FileIcon(File("a.b.pdf"), true), (RowIcon{"DIPDF", "", ""}));
  EXPECT_EQ(FileIcon(File("a.Größe"), true).Key, "DIGRÖßE");
  EXPECT_EQ(FileIcon(File("ohne"), true).Key, "SimpleFile");
  EXPECT_EQ(FileIcon(File("punkt."), true).Key, "SimpleFile");
  EXPECT_EQ(FileIcon(File("a.pdf"), false).Key, "SimpleFile");
}

TEST(FileIcons, OfProgramsAndIconsFromTheFileItself) {
  EXPECT_EQ(FileIcon(File("a.exe"), true), (RowIcon{"DIEXE", "Z:\\a.exe", "IStdEXE"}));
  EXPECT_EQ(FileIcon(File("a.ICO"), true), (RowIcon{"DIICO", "Z:\\a.ICO", "SimpleFile"}));
}

TEST(FileIcons, AnExtensionThatNoFileTypeHasNamesNone) {
  // It becomes the name of a file, and a key of which there is one per type.
  EXPECT_EQ(IconExtension("x." + std::string(17, 'a')), "");
  EXPECT_EQ(IconExtension("x.a/b"), "");
  EXPECT_EQ(IconExtension("x.a b"), "");
  EXPECT_EQ(IconExtension("x.c++"), "C++");
}

}  // namespace
}  // namespace velmora::panes
