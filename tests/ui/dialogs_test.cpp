// The dialogs, opened by their commands and driven as a person drives them.

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTreeWidget>

#include "ui/progress_box.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using panes::Action;

TEST_F(WindowTest, PresetsOfTheFilterLightTheBoxesAndTheMask) {
  OpenWindow();
  DialogDriver driver("FilterForm", [this](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Filter");
    EXPECT_TRUE(Find<QRadioButton>(dialog, "FltNone").isChecked());
    Press(dialog, "FltOnlyFax");
    EXPECT_EQ(Find<QLineEdit>(dialog, "FltValue").text(), "37DFF");
    EXPECT_TRUE(Find<QCheckBox>(dialog, "FltFaxItems").isChecked());
    EXPECT_FALSE(Find<QCheckBox>(dialog, "FltEMailItems").isChecked());
    Press(dialog, "FltConclusion");  // no preset has this one too
    for (const store::FilterPreset& preset : store::FilterPresets) {
      EXPECT_FALSE(Find<QRadioButton>(dialog, std::string(preset.Control).c_str()).isChecked())
          << preset.Control;
    }
    Press(dialog, "FltHidden");
    EXPECT_FALSE(context().options.DvInhibitItems);  // at once
    Press(dialog, "CancelButton");
  });
  window->RunAction(Action::Filter);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(context().options.DvItemFilter, settings::NoItemFilter);
  EXPECT_FALSE(context().options.DvInhibitItems);
  EXPECT_TRUE(Find<QWidget>(*window, "FilterWarning").isVisibleTo(window.get()));
}

TEST_F(WindowTest, OkOfTheFilterListsAnew) {
  OnSession = [this] { context().session.LeftArchive = MakeArchiveWithMails("Viele", 2); };
  OpenWindow();
  EXPECT_EQ(Left().model()->rowCount(), 3);
  DialogDriver driver("FilterForm", [](QWidget& dialog) {
    Press(dialog, "FltOnlyFax");
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::Filter);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(context().options.DvItemFilter, 0x37DFF);
  EXPECT_EQ(Left().model()->rowCount(), 1);
}

TEST_F(WindowTest, OnlyAnAdministratorSeesTheMask) {
  login = "otto";
  OpenWindow();
  DialogDriver driver("FilterForm", [](QWidget& dialog) {
    EXPECT_FALSE(Find<QLineEdit>(dialog, "FltValue").isVisible());
    EXPECT_FALSE(Find<QLabel>(dialog, "L_FltValue").isVisible());
    Press(dialog, "CancelButton");
  });
  window->RunAction(Action::Filter);
  EXPECT_TRUE(driver.Done());
}

TEST_F(WindowTest, OptionsAreShownChangedAndTaken) {
  OpenWindow();
  DialogDriver driver("DvVelmoraOptions", [](QWidget& dialog) {
    for (const panes::OptionField& field : panes::OptionFields()) {
      EXPECT_NE(dialog.findChild<QWidget*>(ToQt(field.Control)), nullptr) << field.Control;
    }
    Press(dialog, "EnDisplayFileIcons");
    Find<QLineEdit>(dialog, "InpFaxFolder").clear();
    QTest::keyClicks(&Find<QLineEdit>(dialog, "InpFaxFolder"), "Faxe");
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::Options);
  EXPECT_TRUE(driver.Done());
  EXPECT_FALSE(context().options.DisplayFileIcons);
  EXPECT_EQ(context().options.FaxFolder, "Faxe");
}

TEST_F(WindowTest, CancelOfTheOptionsChangesNothing) {
  OpenWindow();
  const settings::Options before = context().options;
  DialogDriver driver("DvVelmoraOptions", [](QWidget& dialog) {
    Press(dialog, "EnMakeIndex");
    Press(dialog, "CancelButton");
  });
  window->RunAction(Action::Options);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(context().options.MakeIndex, before.MakeIndex);
}

class ExportDialogTest : public WindowTest {
 protected:
  void OpenOn(int mails) {
    OnSession = [this, mails] {
      context().session.LeftArchive = MakeArchiveWithMails("Viele", mails);
      context().process.CurrentPath = directory.Path("target") + "\\";
    };
    OpenWindow();
    window->SetActiveView(panes::PaneView::LZEBView);
    Left().selectAll();
    Settle();
  }
  std::size_t Pages() const {
    std::size_t pages = 0;
    for (const auto& entry : std::filesystem::directory_iterator(directory.HostPath("target"))) {
      if (entry.path().filename().string().starts_with("Betreff") && entry.path().extension() == ".htm") {
        ++pages;
      }
    }
    return pages;
  }
};

TEST_F(ExportDialogTest, ExportsWhatIsMarked) {
  OpenOn(3);
  DialogDriver driver("CopyMoveDialogBox", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Kopieren");
    EXPECT_FALSE(Find<QCheckBox>(dialog, "EnDelArchives").isEnabled());
    Press(dialog, "EnSavAtt");
    EXPECT_FALSE(Find<QCheckBox>(dialog, "EnOnlyAtt").isEnabled());
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::Copy);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Pages(), 3U);
  ASSERT_FALSE(front.Boxes.empty());
  EXPECT_EQ(front.Boxes.back().Title, "Beendet");
}

TEST_F(ExportDialogTest, ATargetThatDoesNotExistKeepsTheDialog) {
  OpenOn(1);
  DialogDriver driver("CopyMoveDialogBox", [this](QWidget& dialog) {
    auto& target = Find<QLineEdit>(dialog, "CMDst");
    target.clear();
    QTest::keyClicks(&target, "Z:\\nirgends");
    Press(dialog, "OkButton");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(front.Boxes.back().Title, "Falsches Zielverzeichnis");
    Press(dialog, "CancelButton");
  });
  window->RunAction(Action::Copy);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Pages(), 0U);
}

TEST_F(ExportDialogTest, ACancelInTheMiddleKeepsWhatIsDone) {
  OpenOn(20);
  front.CancelAtPump = 8;
  DialogDriver driver("CopyMoveDialogBox", [](QWidget& dialog) { Press(dialog, "OkButton"); });
  window->RunAction(Action::Copy);
  EXPECT_TRUE(driver.Done());
  EXPECT_GT(Pages(), 0U);
  EXPECT_LT(Pages(), 20U);
  EXPECT_NE(Log().find("Abbruch durch Benutzer"), std::string::npos);
  EXPECT_FALSE(window->Commands().Busy.IsBusy());
}

TEST_F(ExportDialogTest, TheUserInformationOpensFromTheExport) {
  OpenOn(1);
  DialogDriver outer("CopyMoveDialogBox", [](QWidget& dialog) {
    DialogDriver inner("ArcFormUserInfo", [](QWidget& info) {
      Find<QLineEdit>(info, "ArcFormComment").setText("Bestand 2026");
      Press(info, "OKButton");
    });
    Press(dialog, "ButtonUsrInfo");
    EXPECT_TRUE(inner.Done());
    Press(dialog, "CancelButton");
  });
  window->RunAction(Action::Copy);
  EXPECT_TRUE(outer.Done());
  EXPECT_EQ(context().options.ArchiveFormComment, "Bestand 2026");
}

TEST_F(WindowTest, ANewArchiveIsMadeAndItsRowSelected) {
  OpenWindow();
  window->SetActiveView(panes::PaneView::LZEBView);
  DialogDriver driver("NewArchiveDialog", [](QWidget& dialog) {
    auto& name = Find<QLineEdit>(dialog, "InpArcName");
    name.clear();
    EXPECT_FALSE(Find<QPushButton>(dialog, "OkButton").isEnabled());
    QTest::keyClicks(&name, "Belege");
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::NewArchive);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Left().currentIndex().data().toString(), "Belege");
}

TEST_F(WindowTest, TheTreeLoadsNodesAndGoesThere) {
  MainWindow& main = OpenWindow();
  DialogDriver driver("ArchiveTree", [](QWidget& dialog) {
    auto& tree = Find<QTreeWidget>(dialog, "ArchiveTreeView");
    QTreeWidgetItem* const root = tree.topLevelItem(0);
    ASSERT_GT(root->childCount(), 0);
    for (int i = 0; i < root->childCount(); ++i) {
      if (root->child(i)->text(0) == "System") tree.setCurrentItem(root->child(i));
    }
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::ShowArchiveTree);
  EXPECT_TRUE(driver.Done());
  EXPECT_TRUE(main.Widget(panes::PaneView::LZEBView).Path().text().endsWith("/System"));
}

TEST_F(WindowTest, AnEmptyServerNameChangesNothing) {
  OpenWindow();
  DialogDriver driver("ChDvServer", [](QWidget& dialog) {
    Find<QLineEdit>(dialog, "InpServer").clear();
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::ChangeServer);
  EXPECT_TRUE(driver.Done());
  EXPECT_FALSE(finished.has_value());
  EXPECT_EQ(context().session.ServerName, Server);
}

TEST_F(WindowTest, TheAddressDialogFollowsItsFormat) {
  OpenWindow();
  DialogDriver driver("AddrBookExp", [](QWidget& dialog) {
    EXPECT_FALSE(Find<QWidget>(dialog, "F_Separator").isEnabled());
    Press(dialog, "FrmtCSV");
    EXPECT_TRUE(Find<QWidget>(dialog, "F_Separator").isEnabled());
    EXPECT_TRUE(Find<QLineEdit>(dialog, "AddrFileName").text().endsWith(".csv"));
    Press(dialog, "CancelButton");
  });
  window->RunAction(Action::ExportAddresses);
  EXPECT_TRUE(driver.Done());
}

TEST_F(WindowTest, AboutAndSystemInformationSayWhatRuns) {
  OpenWindow();
  DialogDriver about("AboutBox", [](QWidget& box) { Press(box, "OkButton"); });
  window->RunAction(Action::About);
  EXPECT_TRUE(about.Done());
  DialogDriver system("SysInfo", [](QWidget& dialog) {
    EXPECT_GT(Find<QTreeWidget>(dialog, "SysInfoView").topLevelItemCount(), 5);
    Press(dialog, "CancelButton");
  });
  window->RunAction(Action::SystemInformation);
  EXPECT_TRUE(system.Done());
}

TEST_F(WindowTest, ARenamedArchiveKeepsItsRow) {
  OnSession = [this] { (void)MakeArchive("Alt"); };
  OpenWindow();
  PutCursor(Left(), "Alt");
  PressKey(Left(), Qt::Key_F2);
  auto* const editor = Left().findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  editor->setText("Neu & besser");
  QTest::keyClick(editor, Qt::Key_Return);
  Settle();
  EXPECT_EQ(Left().currentIndex().data().toString(), "Neu & besser");
  EXPECT_LT(RowOf(Left(), "Alt"), 0);
}

}  // namespace
}  // namespace velmora::ui
