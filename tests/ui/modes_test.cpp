// What each kind of user sees, and whether everybody can use it: rights modes, names for screen readers,
// mnemonics of the dialogs.

#include <QMenu>
#include <QToolButton>

#include "panes/rows.h"
#include "ui_fixture.h"
#include "usable_by_all.h"

namespace velmora::ui {
namespace {

using panes::Action;
using panes::PaneView;

struct Mode {
  const char *Login, *Panel;
  std::uint32_t Rights;
};
constexpr Mode Modes[] = {{"anna", "Admin", 0x10 | 0x200 | 0x1000 | 0x2000},
                          {"vera", "AdvUsr", 0x200 | 0x2000},
                          {"stan", "StdUsr", 0x1}};

// Who sees an entry while the cursor stands on an archive, in the order of the modes.
struct Entry {
  const char* Id;
  bool Seen[3];
};
constexpr Entry MenusSeen[] = {{"MnFile", {true, true, true}},   {"MnCommands", {true, true, true}},
                               {"MnDoc", {true, true, false}},   {"MnStatistics", {true, true, false}},
                               {"MnExtras", {true, true, true}}, {"MnHelp", {true, true, true}}};
constexpr Entry EntriesSeen[] = {{"MnSiteInformation", {true, false, false}},
                                 {"MnUserList", {true, false, false}},
                                 {"MnBroadcastLists", {true, false, false}},
                                 {"MnChangeServer", {true, false, false}},
                                 {"ArcDirSync", {true, false, false}},
                                 {"DirArcSync", {true, false, false}},
                                 {"MnDocSiteProp", {true, false, false}},
                                 {"MnUserListDoc", {true, false, false}},
                                 {"MnShowLog", {true, false, false}},
                                 {"MnCxChgItemProp", {true, false, false}},
                                 {"MnProperties", {true, true, false}},
                                 {"MnCxProp", {true, true, false}},
                                 {"MnCxStat", {true, true, false}},
                                 {"MnCxMsgStat", {true, true, false}},
                                 {"MnCxDoc", {true, true, false}},
                                 {"MnRename", {true, true, false}},
                                 {"MnMove", {true, false, false}},
                                 {"MnDelete", {true, false, false}},
                                 {"MnCopy", {true, true, true}},
                                 {"MnNewArc", {true, true, true}},
                                 {"MnDvFilter", {true, true, true}},
                                 {"MnOptions", {true, true, true}}};
constexpr Entry ButtonsEnabled[] = {{"LZEBMsgRoutView", {true, true, false}},
                                    {"RZEBMsgRoutView", {true, true, false}},
                                    {"tbrMove", {true, false, false}},
                                    {"tbrUserHome", {true, false, false}},
                                    {"tbrCopy", {true, true, true}}};

class ModeTest : public WindowTest, public testing::WithParamInterface<std::size_t> {};

TEST_P(ModeTest, SeesItsMenusAndNoOthers) {
  const std::size_t mode = GetParam();
  login = Modes[mode].Login;
  if (mode > 0) AddUser(std::string(Modes[mode].Login) + " Muster", login, Modes[mode].Rights);
  OnSession = [this] {
    const auto archive = MakeArchive("Eigenes");
    context().options.LastActiveView = 0;
  };
  MainWindow& main = OpenWindow();
  EXPECT_EQ(main.Status().Text(StatusPanel::Mode), Modes[mode].Panel);
  PutCursor(Left(), "Eigenes");
  for (const Entry& menu : MenusSeen) {
    EXPECT_EQ(main.findChild<QMenu*>(menu.Id)->menuAction()->isVisible(), menu.Seen[mode]) << menu.Id;
  }
  for (const Entry& entry : EntriesSeen) {
    EXPECT_EQ(main.findChild<QAction*>(entry.Id)->isVisible(), entry.Seen[mode]) << entry.Id;
  }
  for (const Entry& button : ButtonsEnabled) {
    EXPECT_EQ(main.findChild<QAction*>(button.Id)->isEnabled(), button.Seen[mode]) << button.Id;
  }
}

INSTANTIATE_TEST_SUITE_P(All, ModeTest, testing::Values(0U, 1U, 2U),
                         [](const auto& mode) { return std::string(Modes[mode.param].Panel); });

// --- Names and mnemonics. ---

TEST_F(WindowTest, EveryControlThatTakesTheFocusHasAName) { ExpectUsableByAll(OpenWindow()); }

struct DialogOf {
  Action Opens;
  const char* Name;
};
constexpr DialogOf Dialogs[] = {{Action::Filter, "FilterForm"},
                                {Action::Options, "DvVelmoraOptions"},
                                {Action::ChangeServer, "ChDvServer"},
                                {Action::Copy, "CopyMoveDialogBox"},
                                {Action::SetMarker, "SetMailArcDialogBox"},
                                {Action::NewArchive, "NewArchiveDialog"},
                                {Action::ExtendSelection, "ItemSelection"},
                                {Action::ExportAddresses, "AddrBookExp"},
                                {Action::ShowArchiveTree, "ArchiveTree"},
                                {Action::SystemInformation, "SysInfo"},
                                {Action::About, "AboutBox"}};

class DialogUseTest : public WindowTest, public testing::WithParamInterface<DialogOf> {};

TEST_P(DialogUseTest, IsForEverybodyAndGoesWithEsc) {
  OnSession = [this] {
    context().session.LeftArchive = MakeArchiveWithMails("Viele", 1);
    context().process.CurrentPath = directory.Path("target") + "\\";
    context().options.LastActiveView = 0;
  };
  OpenWindow();
  PutCursor(Left(), "Betreff 1");
  DialogDriver driver(GetParam().Name, [](QWidget& dialog) {
    EXPECT_FALSE(dialog.windowTitle().isEmpty());
    ExpectUsableByAll(dialog);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    dialog.close();
  });
  window->RunAction(GetParam().Opens);
  EXPECT_TRUE(driver.Done());
}

INSTANTIATE_TEST_SUITE_P(All, DialogUseTest, testing::ValuesIn(Dialogs),
                         [](const auto& dialog) { return std::string(dialog.param.Name); });

}  // namespace
}  // namespace velmora::ui
