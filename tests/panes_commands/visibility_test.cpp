#include "panes/commands/visibility.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <vector>

#include "panes/rows.h"

namespace velmora::panes {
namespace {

constexpr std::uint32_t AllBits = 0x10 | 0x200 | 0x1000 | 0x2000;

Situation On(RowKind row, std::uint32_t trustees, PaneView view = PaneView::LZEBView) {
  Situation situation;
  situation.UserRights = RightsOf(trustees);
  situation.ActiveView = view;
  situation.Row = row;
  return situation;
}

bool Shows(std::string_view id, const Situation& situation) {
  const Command* const command = FindCommand(id);
  EXPECT_NE(command, nullptr) << id;
  return command != nullptr && StateOf(*command, situation).IsVisible;
}
bool Enabled(std::string_view id, const Situation& situation) {
  return StateOf(*FindCommand(id), situation).IsEnabled;
}
bool ShowsMenu(std::string_view id, const Situation& situation) {
  for (const Menu& menu : MainMenus()) {
    if (menu.Id == id) return IsMenuVisible(menu, situation);
  }
  ADD_FAILURE() << id;
  return false;
}
void ExpectAll(const std::vector<std::string_view>& ids, bool shown, const Situation& situation) {
  for (const std::string_view id : ids) EXPECT_EQ(Shows(id, situation), shown) << id;
}

// --- Modes. ---

TEST(UserModes, AllFourBitsMakeAnAdministrator) {
  EXPECT_EQ(PanelText(UserModeOf(RightsOf(AllBits))), "Admin");
  for (const std::uint32_t missing : {0x10u, 0x200u, 0x1000u}) {
    EXPECT_EQ(PanelText(UserModeOf(RightsOf(AllBits & ~missing))), "AdvUsr") << missing;
  }
  EXPECT_EQ(PanelText(UserModeOf(RightsOf(AllBits & ~0x2000u))), "AdvUsr");
}

TEST(UserModes, PropertiesOrMovingMakeAnAdvancedUser) {
  EXPECT_EQ(UserModeOf(RightsOf(0x200)), UserMode::Advanced);
  EXPECT_EQ(UserModeOf(RightsOf(0x1000)), UserMode::Advanced);
  EXPECT_EQ(UserModeOf(RightsOf(0x200 | 0x2000)), UserMode::Advanced);
}

TEST(UserModes, OthersAreStandardUsers) {
  for (const std::uint32_t trustees : {0x1u, 0x10u, 0x2000u, 0x10u | 0x2000u}) {
    EXPECT_EQ(PanelText(UserModeOf(RightsOf(trustees))), "StdUsr") << trustees;
  }
}

TEST(UserModes, WithPropertiesAndRulesTheDocumentationShowsButNotTheBulkEdit) {
  const Situation situation = On(RowKind::Archive, 0x200 | 0x2000);
  EXPECT_EQ(PanelText(UserModeOf(situation.UserRights)), "AdvUsr");
  EXPECT_TRUE(ShowsMenu("MnDoc", situation));
  EXPECT_FALSE(Shows("MnCxChgItemProp", situation));
}

TEST(UserModes, ReportsNeedAnyOfThreeBits) {
  for (const std::uint32_t trustees : {0x10u, 0x200u, 0x2000u}) {
    EXPECT_TRUE(ShowsMenu("MnDoc", On(RowKind::Archive, trustees))) << trustees;
    EXPECT_TRUE(ShowsMenu("MnStatistics", On(RowKind::Archive, trustees))) << trustees;
    EXPECT_TRUE(Shows("MnCxStat", On(RowKind::Archive, trustees))) << trustees;
    EXPECT_TRUE(Shows("MnCxMsgStat", On(RowKind::Archive, trustees))) << trustees;
    EXPECT_TRUE(Shows("MnCxDoc", On(RowKind::Archive, trustees))) << trustees;
  }
  const Situation standard = On(RowKind::Archive, 0x1000);
  EXPECT_FALSE(ShowsMenu("MnDoc", standard));
  EXPECT_FALSE(ShowsMenu("MnStatistics", standard));
  ExpectAll({"MnCxStat", "MnCxMsgStat", "MnCxDoc", "MnCxArcTree", "MnCxArcCleaning", "MnCxProp"}, false,
            standard);
  EXPECT_TRUE(ShowsMenu("MnFile", standard));
  EXPECT_TRUE(ShowsMenu("MnExtras", standard));
}

TEST(UserModes, SiteCommandsAreTheAdministrators) {
  const std::vector<std::string_view> ids = {"MnSiteInformation", "MnUserList",    "MnBroadcastLists",
                                             "MnChangeServer",    "ArcDirSync",    "DirArcSync",
                                             "MnDocSiteProp",     "MnUserListDoc", "MnShowLog"};
  ExpectAll(ids, true, On(RowKind::Message, 0x10));
  ExpectAll(ids, false, On(RowKind::Message, AllBits & ~0x10u));
}

// --- Rows of an archive view. ---

TEST(Visibility, OnTheWayUpThereIsNothingToHandle) {
  const Situation situation = On(RowKind::Control, AllBits);
  ExpectAll({"MnMove", "MnDelete", "MnCopy", "MnRename", "MnChgItemProp", "MnArcCleaning", "MnCxArcCleaning",
             "MnCleanTrash", "MnProperties", "MnArcTree", "MnReminderCfg", "MnRemAcc", "MnDelDblArcEntries"},
            false, situation);
  ExpectAll({"MnNewArc", "MnAddressBook", "MnMigration", "MnShowLog", "MnRefresh"}, true, situation);
  EXPECT_FALSE(Shows("MnMigration", On(RowKind::Control, AllBits & ~0x10u)));
}

TEST(Visibility, TheContextMenuFollowsTheMenu) {
  ExpectAll({"MnCxCopy", "MnCxMove", "MnCxDel", "MnCxRename", "MnCxProp", "MnCxChgItemProp", "MnCxRemAcc",
             "MnCxReminder"},
            false, On(RowKind::Control, AllBits));
  ExpectAll({"MnCxCopy", "MnCxMove", "MnCxDel", "MnCxRename", "MnCxProp", "MnCxChgItemProp", "MnCxRemAcc",
             "MnCxReminder", "MnCxDelArcEntry", "MnCxArcTree", "MnCxPhysDir"},
            true, On(RowKind::Archive, AllBits));
}

TEST(Visibility, FileCommandsDoNotShowInAnArchiveView) {
  ExpectAll({"MnAddToZEB", "MnMailArcToZeb", "MnCopyTreeToZEB", "MnMakeLinks", "MnNewDir", "MnMailArcOp"},
            false, On(RowKind::Archive, AllBits));
}

TEST(Visibility, AnArchiveOffersTheAdministratorsTools) {
  const std::vector<std::string_view> tools = {
      "MnCopy",    "MnChgItemProp", "MnReminderCfg",      "MnArcCleaning",       "MnMigration",
      "MnArcTree", "MnRemAcc",      "MnDelDblArcEntries", "MnDelCircArcEntries", "MnDelArcEntry"};
  ExpectAll(tools, true, On(RowKind::Archive, AllBits));
  const Situation other = On(RowKind::Archive, AllBits & ~0x10u);
  ExpectAll({"MnChgItemProp", "MnReminderCfg", "MnMigration", "MnArcTree", "MnRemAcc", "MnDelDblArcEntries",
             "MnDelCircArcEntries", "MnDelArcEntry"},
            false, other);
  ExpectAll({"MnCopy", "MnArcCleaning", "MnDocCurObj"}, true, other);
}

TEST(Visibility, AShortCutKeepsItsNameAndItsEntry) {
  Situation situation = On(RowKind::Archive, AllBits);
  situation.IsShortCut = true;
  ExpectAll({"MnRename", "MnDelDblArcEntries", "MnDelCircArcEntries", "MnDelArcEntry"}, false, situation);
  ExpectAll({"MnCopy", "MnRemAcc", "MnMove"}, true, situation);
}

TEST(Visibility, OnlyTheTrashOfAUserIsEmptied) {
  Situation situation = On(RowKind::Archive, AllBits);
  EXPECT_FALSE(Shows("MnCleanTrash", situation));
  situation.IsTrash = true;
  EXPECT_FALSE(Shows("MnCleanTrash", situation));
  situation.IsInUserRoot = true;
  EXPECT_TRUE(Shows("MnCleanTrash", situation));
  EXPECT_TRUE(Shows("MnCxTrashCleaning", situation));
  situation.LeftRuleView = true;
  EXPECT_FALSE(Shows("MnCleanTrash", situation));
}

TEST(Visibility, WithoutThePropertyRightNothingIsRenamedOrCleaned) {
  const std::vector<std::string_view> ids = {"MnRename", "MnArcCleaning", "MnProperties"};
  ExpectAll(ids, true, On(RowKind::Archive, 0x200));
  ExpectAll(ids, false, On(RowKind::Archive, AllBits & ~0x200u));
  EXPECT_TRUE(Shows("MnRename", On(RowKind::Message, 0x200)));
  EXPECT_TRUE(Shows("MnProperties", On(RowKind::Message, 0x200)));
}

TEST(Visibility, ArchiveReportsShowOnArchivesOnly) {
  const std::vector<std::string_view> ids = {"MnDocCurObj", "MnArcCleaning", "MnArcTree"};
  ExpectAll(ids, true, On(RowKind::Archive, AllBits));
  ExpectAll(ids, false, On(RowKind::Message, AllBits));
  ExpectAll(ids, false, On(RowKind::Routing, AllBits));
}

TEST(Visibility, WithoutTheRightOnlyMessagesAreMoved) {
  for (const std::string_view id : {"MnMove", "MnDelete", "MnCxMove", "MnCxDel"}) {
    EXPECT_TRUE(Shows(id, On(RowKind::Message, 0x1))) << id;
    EXPECT_FALSE(Shows(id, On(RowKind::Archive, 0x1))) << id;
    EXPECT_FALSE(Shows(id, On(RowKind::Routing, 0x1))) << id;
    EXPECT_TRUE(Shows(id, On(RowKind::Archive, 0x1000))) << id;
    EXPECT_TRUE(Shows(id, On(RowKind::Routing, 0x1000))) << id;
    EXPECT_FALSE(Shows(id, On(RowKind::Control, 0x1000))) << id;
  }
}

TEST(Visibility, RulesHaveNoToolsOfMessages) {
  Situation situation = On(RowKind::Routing, AllBits);
  ExpectAll({"MnChgItemProp", "MnArcCleaning", "MnCleanTrash", "MnRemAcc"}, false, situation);
  EXPECT_TRUE(Shows("MnRename", situation));
  // An archive in rule view keeps those hidden that work on messages.
  situation = On(RowKind::Archive, AllBits);
  situation.LeftRuleView = true;
  ExpectAll({"MnChgItemProp", "MnArcCleaning", "MnCleanTrash"}, false, situation);
  EXPECT_TRUE(Shows("MnRemAcc", situation));
  // The other pane's rule view is its own.
  situation.ActiveView = PaneView::RZEBView;
  EXPECT_TRUE(Shows("MnChgItemProp", situation));
}

// --- Rows of the file view. ---

TEST(Visibility, TheFileViewHasItsOwnCommands) {
  const Situation directory = On(RowKind::Directory, AllBits, PaneView::RFSView);
  ExpectAll({"MnNewDir", "MnMailArcOp", "MnMailArcToZeb", "MnMakeLinks", "MnAddToZEB", "MnCopyTreeToZEB",
             "MnCopy", "MnRename", "MnDelete", "MnProperties", "MnCxFsShowArc", "MnCxFsRename"},
            true, directory);
  ExpectAll({"MnNewArc", "MnChgItemProp", "MnArcCleaning", "MnRemAcc", "MnReminderCfg", "MnMigration",
             "MnDocCurObj", "MnCxFsDisplayFile"},
            false, directory);
  EXPECT_FALSE(Shows("MnCopyTreeToZEB", On(RowKind::Directory, AllBits & ~0x10u, PaneView::RFSView)));
  const Situation file = On(RowKind::File, AllBits, PaneView::RFSView);
  ExpectAll({"MnCxFsDisplayFile", "MnCxFsShowItem"}, true, file);
  EXPECT_FALSE(Shows("MnCxFsShowArc", file));
  ExpectAll({"MnCopy", "MnRename", "MnDelete", "MnMove", "MnCxFsDel"}, false,
            On(RowKind::DirBack, AllBits, PaneView::RFSView));
}

TEST(Visibility, HelperFilesAreToggledInAMailArchiveOnly) {
  Situation situation = On(RowKind::File, 0x1, PaneView::RFSView);
  EXPECT_FALSE(Shows("ZEBCmdArc", situation));
  situation.MailArc = mailarchive::MailArcKind::Sub;
  EXPECT_TRUE(Shows("ZEBCmdArc", situation));
  EXPECT_FALSE(StateOf(*FindCommand("ZEBCmdArc"), situation).IsChecked);
  situation.HidesHelperFiles = false;
  EXPECT_TRUE(StateOf(*FindCommand("ZEBCmdArc"), situation).IsChecked);
}

TEST(Visibility, TabsAreNotMadeOfPropertyViews) {
  Situation situation = On(RowKind::Archive, AllBits);
  EXPECT_TRUE(Shows("MnCxSaveViewToTab", situation));
  situation.LeftPropertyView = true;
  EXPECT_FALSE(Shows("MnCxSaveViewToTab", situation));
  EXPECT_FALSE(Shows("MnCxSetTabStd", situation));
  EXPECT_TRUE(Shows("MnCxDelTab", situation));
}

// --- What is enabled. ---

TEST(Enabled, ToolBarAndPaneButtonsFollowTheRights) {
  const Situation all = On(RowKind::Archive, AllBits);
  EXPECT_TRUE(Enabled("LZEBMsgRoutView", all));
  EXPECT_TRUE(Enabled("tbrMove", all));
  EXPECT_TRUE(Enabled("tbrUserHome", all));
  EXPECT_FALSE(Enabled("LZEBMsgRoutView", On(RowKind::Archive, AllBits & ~0x2000u)));
  EXPECT_FALSE(Enabled("RZEBMsgRoutView", On(RowKind::Archive, AllBits & ~0x2000u)));
  EXPECT_FALSE(Enabled("tbrMove", On(RowKind::Archive, AllBits & ~0x1000u)));
  EXPECT_FALSE(Enabled("tbrProperties", On(RowKind::Archive, AllBits & ~0x200u)));
  EXPECT_FALSE(Enabled("tbrUserHome", On(RowKind::Archive, AllBits & ~0x10u)));
}

TEST(Enabled, NothingWhileBusy) {
  Situation situation = On(RowKind::Archive, AllBits);
  situation.IsBusy = true;
  situation.ErrorLogExists = true;
  for (const Command& command : Commands()) EXPECT_FALSE(Enabled(command.Id, situation)) << command.Id;
  EXPECT_FALSE(IsMenuEnabled(situation));
}

TEST(Enabled, TheLogButtonWithALogOnly) {
  Situation situation = On(RowKind::Archive, AllBits);
  EXPECT_FALSE(Enabled("tbrErrLog", situation));
  situation.ErrorLogExists = true;
  EXPECT_TRUE(Enabled("tbrErrLog", situation));
}

TEST(Enabled, WhatIsNotBuiltIsNot) {
  const Situation situation = On(RowKind::Archive, AllBits);
  for (const Command& command : Commands()) {
    if (!command.OpensMenu() && !IsBuilt(command.Runs)) {
      EXPECT_FALSE(Enabled(command.Id, situation)) << command.Id;
    }
  }
  EXPECT_TRUE(Enabled("MnMailArcOp", situation));
}

TEST(Enabled, ArchivesAreCopiedWhateverTheOtherSideShowsAndFilesAreNotYet) {
  Situation situation = On(RowKind::Message, AllBits);
  for (const bool showsFiles : {true, false}) {
    situation.ShowsFiles = showsFiles;
    EXPECT_TRUE(Enabled("MnCopy", situation));
    EXPECT_TRUE(Enabled("tbrMove", situation));
    EXPECT_TRUE(Enabled("tbrDelete", situation));
  }
  situation.ActiveView = PaneView::RZEBView;
  EXPECT_TRUE(Enabled("MnCopy", situation));
  situation = On(RowKind::File, AllBits, PaneView::RFSView);
  EXPECT_FALSE(Enabled("MnCopy", situation));
  EXPECT_FALSE(Enabled("tbrMove", situation));
  EXPECT_EQ(ToolTipOf(*FindCommand("MnCopy"), situation), "Noch nicht verfügbar");
  EXPECT_TRUE(Enabled("MnCxFsDel", situation));
  EXPECT_EQ(ToolTipOf(*FindCommand("tbrDelete"), situation), "Löschen [F8]");
}

TEST(Enabled, TogglesTellWhatAClickBrings) {
  Situation situation = On(RowKind::Message, AllBits);
  const Command& rules = *FindCommand("LZEBMsgRoutView");
  EXPECT_EQ(ToolTipOf(rules, situation), "Regelansicht");
  EXPECT_FALSE(StateOf(rules, situation).IsChecked);
  situation.LeftRuleView = true;
  EXPECT_EQ(ToolTipOf(rules, situation), "Nachrichtenansicht");
  EXPECT_TRUE(StateOf(rules, situation).IsChecked);
  EXPECT_FALSE(StateOf(*FindCommand("RZEBMsgRoutView"), situation).IsChecked);
  EXPECT_TRUE(StateOf(*FindCommand("ZEBFSView"), situation).IsChecked);
}

TEST(Enabled, NoMarkStandsBeforeStripsThatAreNotThere) {
  Situation situation = On(RowKind::Message, AllBits);
  situation.ShowsTabs = true;
  EXPECT_EQ(StateOf(*FindCommand("MnEnTabs"), situation).IsChecked, IsBuilt(Action::ToggleTabs));
}

// --- Keys. ---

TEST(Keys, F3ShowsMessagesOnly) {
  EXPECT_TRUE(MayRunFromKey(Action::ShowMessage, On(RowKind::Message, 0x1)));
  for (const RowKind row : {RowKind::Archive, RowKind::Control, RowKind::Routing, RowKind::None}) {
    EXPECT_FALSE(MayRunFromKey(Action::ShowMessage, On(row, AllBits)));
  }
}

TEST(Keys, RightsAreAskedForAgain) {
  EXPECT_FALSE(MayRunFromKey(Action::Move, On(RowKind::Message, AllBits & ~0x1000u)));
  EXPECT_TRUE(MayRunFromKey(Action::Move, On(RowKind::Message, 0x1000)));
  // The menu offers moving a message without that right.
  EXPECT_TRUE(MayRun(Action::Move, On(RowKind::Message, 0x1)));
  EXPECT_FALSE(MayRun(Action::Move, On(RowKind::Archive, 0x1)));
  for (const Action action : {Action::ArcDirSync, Action::UserArchives, Action::ShowPhysical}) {
    EXPECT_TRUE(MayRunFromKey(action, On(RowKind::Archive, 0x10)));
    EXPECT_FALSE(MayRunFromKey(action, On(RowKind::Archive, AllBits & ~0x10u)));
  }
  EXPECT_FALSE(MayRunFromKey(Action::ToggleRuleView, On(RowKind::Archive, AllBits & ~0x2000u)));
  EXPECT_FALSE(MayRunFromKey(Action::Rename, On(RowKind::Message, AllBits & ~0x200u)));
  EXPECT_TRUE(MayRunFromKey(Action::Rename, On(RowKind::File, 0x1, PaneView::RFSView)));
  EXPECT_FALSE(MayRunFromKey(Action::Rename, On(RowKind::Control, AllBits)));
}

TEST(Keys, ALabelOfAShortCutCanBeEdited) {
  Situation situation = On(RowKind::Archive, 0x200);
  situation.IsShortCut = true;
  EXPECT_TRUE(MayRunFromKey(Action::Rename, situation));
}

TEST(Keys, PanesAreNotExchangedWithTheFileSystem) {
  Situation situation = On(RowKind::Archive, AllBits);
  for (const Action action : {Action::SwapPanes, Action::TakeLeftIntoRight, Action::TakeRightIntoLeft}) {
    situation.ShowsFiles = true;
    EXPECT_FALSE(MayRunFromKey(action, situation));
    situation.ShowsFiles = false;
    EXPECT_TRUE(MayRunFromKey(action, situation));
  }
}

TEST(Keys, NoneWorksWhileBusyAndNoneThatIsNotBuilt) {
  Situation situation = On(RowKind::Message, AllBits);
  EXPECT_TRUE(MayRunFromKey(Action::Refresh, situation));
  EXPECT_FALSE(MayRunFromKey(Action::ChangeItemProperties, situation));
  situation.IsBusy = true;
  EXPECT_FALSE(MayRunFromKey(Action::Refresh, situation));
  EXPECT_FALSE(MayRunFromKey(Action::Delete, situation));
}

TEST(Keys, CopyAndMoveAreNoKeysWhereTheyHaveNothingToDo) {
  Situation situation = On(RowKind::Message, AllBits);
  EXPECT_TRUE(MayRunFromKey(Action::Copy, situation));
  EXPECT_TRUE(MayRunFromKey(Action::Move, situation));
  situation.ActiveView = PaneView::RFSView;
  situation.Row = RowKind::File;
  EXPECT_FALSE(MayRunFromKey(Action::Copy, situation));
  EXPECT_FALSE(MayRunFromKey(Action::Move, situation));
}

// Without the right its dialog is not shown either, but the user is told.
TEST(Keys, DeletingAlwaysAnswers) {
  for (const RowKind row : {RowKind::Control, RowKind::Archive, RowKind::Message, RowKind::Routing}) {
    EXPECT_TRUE(MayRunFromKey(Action::Delete, On(row, 0x1)));
  }
  EXPECT_TRUE(MayRunFromKey(Action::Delete, On(RowKind::File, 0x1, PaneView::RFSView)));
}

TEST(Keys, RepairsAreTheAdministratorsAndForArchives) {
  for (const Action action :
       {Action::RemoveDoubleEntries, Action::RemoveCircularEntries, Action::RemoveArchiveEntry}) {
    EXPECT_TRUE(MayRun(action, On(RowKind::Archive, AllBits)));
    EXPECT_FALSE(MayRun(action, On(RowKind::Archive, AllBits & ~0x10u)));
    EXPECT_FALSE(MayRun(action, On(RowKind::Message, AllBits)));
    EXPECT_FALSE(MayRun(action, On(RowKind::Directory, AllBits, PaneView::RFSView)));
  }
}

TEST(RowKinds, CountInEachListOnTheirOwn) {
  EXPECT_EQ(RowKindOf(PaneView::LZEBView, entry_type::ControlEntry), RowKind::Control);
  EXPECT_EQ(RowKindOf(PaneView::RZEBView, entry_type::RoutingEntry), RowKind::Routing);
  EXPECT_EQ(RowKindOf(PaneView::RFSView, entry_type::DirBackEntry), RowKind::DirBack);
  EXPECT_EQ(RowKindOf(PaneView::RFSView, entry_type::FileEntry), RowKind::File);
  EXPECT_EQ(RowKindOf(PaneView::RFSView, 4), RowKind::None);
  EXPECT_EQ(RowKindOf(PaneView::LZEBView, -1), RowKind::None);
}

}  // namespace
}  // namespace velmora::panes
