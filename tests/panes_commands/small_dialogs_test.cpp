#include <gtest/gtest.h>

#include "panes/dialogs/change_server_dialog.h"
#include "panes/dialogs/form_user_info_dialog.h"
#include "panes/dialogs/new_archive_dialog.h"
#include "panes/dialogs/pattern_dialog.h"

namespace velmora::panes {
namespace {

TEST(FormUserInfo, OpensWithTheSettingsAndOkStoresThemTwice) {
  settings::Options options;
  options.ArchiveFormCopyRight = "(c)";
  options.ArchiveFormComment = "K";
  FormUserTexts runTexts = {"anders", "auch"};
  FormUserInfoDialog dialog(options, runTexts);
  EXPECT_EQ(dialog.ArcFormCopyRight(), "(c)");
  EXPECT_EQ(dialog.ArcFormComment(), "K");
  dialog.SetArcFormComment("neu\r\nzwei");
  // Nothing is changed before OK.
  EXPECT_EQ(options.ArchiveFormComment, "K");
  EXPECT_EQ(runTexts.CopyRight, "anders");
  dialog.Ok();
  EXPECT_EQ(options.ArchiveFormComment, "neu\r\nzwei");
  EXPECT_EQ(runTexts.Comment, "neu\r\nzwei");
  EXPECT_EQ(runTexts.CopyRight, "(c)");
}

TEST(ChangeServer, OffersTheServersUsedAndNeedsAName) {
  settings::ServerList servers;
  servers[0] = "ZEB2";
  servers[1] = "ZEB1";
  ChangeServerDialog dialog(servers, "ZEB1");
  EXPECT_EQ(dialog.InpServer(), "ZEB1");
  EXPECT_EQ(dialog.Servers(), (std::vector<std::string>{"ZEB2", "ZEB1"}));
  EXPECT_FALSE(dialog.CancelEndsProgram());
  dialog.SetInpServer("  ");
  EXPECT_FALSE(dialog.Ok().has_value());
  dialog.SetInpServer(" ZEB2 ");
  EXPECT_EQ(dialog.Ok(), "ZEB2");
}

TEST(ChangeServer, CancelAtAFirstStartEndsTheProgram) {
  EXPECT_TRUE(ChangeServerDialog({}, "", true).CancelEndsProgram());
}

TEST(Pattern, EachViewKeepsItsLastOne) {
  LastPatterns last;
  PatternDialog messages(SelectionAction::ExtendMessages, last);
  EXPECT_EQ(messages.Title(), "Message Auswahl erweitern");
  EXPECT_TRUE(Extends(SelectionAction::ExtendMessages));
  EXPECT_EQ(messages.InpPattern(), "*");
  messages.SetInpPattern("Re*");
  EXPECT_EQ(last.Messages, "*");
  EXPECT_EQ(messages.Ok(), "Re*");
  EXPECT_EQ(PatternDialog(SelectionAction::ReduceMessages, last).InpPattern(), "Re*");
  PatternDialog files(SelectionAction::ReduceFiles, last);
  EXPECT_EQ(files.Title(), "Dateiauswahl reduzieren");
  EXPECT_FALSE(Extends(SelectionAction::ReduceFiles));
  EXPECT_EQ(files.InpPattern(), "*");
}

TEST(NewArchive, TheDirectoryGoesIntoBraces) {
  NewArchiveDialog dialog;
  EXPECT_TRUE(dialog.OkEnabled());
  EXPECT_EQ(dialog.Ok()->StoreName(), "Neues Archiv");
  dialog.SetInpArcName(" Rechnungen ");
  dialog.SetInpArcDir("RECHN ");
  EXPECT_EQ(dialog.Ok()->StoreName(), "Rechnungen{RECHN}");
  // Who writes the braces himself hands them to the store as they are.
  dialog.SetInpArcName("Rechnungen{R2}");
  dialog.SetInpArcDir("");
  EXPECT_EQ(dialog.Ok()->StoreName(), "Rechnungen{R2}");
}

TEST(NewArchive, NothingMakesNothing) {
  NewArchiveDialog dialog;
  dialog.SetInpArcName(" ");
  EXPECT_FALSE(dialog.OkEnabled());
  EXPECT_FALSE(dialog.Ok().has_value());
}

}  // namespace
}  // namespace velmora::panes
