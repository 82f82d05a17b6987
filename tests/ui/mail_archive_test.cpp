// Mail archives in the file view: marker, user information, descriptors, indexes.

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

#include "mailarchive/entry_operations.h"
#include "mailarchive/format/marker.h"
#include "ui/text_viewer.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using mailarchive::MailArcKind;
using panes::Action;
using panes::PaneView;

class MailArchiveTest : public WindowTest {
 protected:
  void OpenOnTarget() {
    OnSession = [this] { context().process.CurrentPath = directory.Path("target") + "\\"; };
    OpenWindow();
    window->SetActiveView(PaneView::RFSView);
    Settle();
  }
  void Mark(MailArcKind kind, const std::string& comment = "") {
    ASSERT_TRUE(mailarchive::WriteArchiveMarker(
                    *files, directory.Path("target"), kind,
                    {"Rechnungen", "/Archive/Rechnungen", "rechnung", comment, "© Muster GmbH"}, true)
                    .has_value());
  }
  MailArcKind Kind() { return mailarchive::GetMailArcKind(*files, directory.Path("target")); }
};

TEST_F(MailArchiveTest, AMarkerIsSetByHand) {
  OpenOnTarget();
  DialogDriver driver("SetMailArcDialogBox", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Mailarchiv-Kennung setzen");
    EXPECT_TRUE(Find<QRadioButton>(dialog, "SetMailNo").isChecked());
    for (const char* name : {"ArcFormDispName", "ArcFormFullPath", "ArcFormDirName"}) {
      EXPECT_EQ(Find<QLineEdit>(dialog, name).text(), "target") << name;
    }
    Press(dialog, "SetMailSub");
    auto& name = Find<QLineEdit>(dialog, "ArcFormDispName");
    name.clear();
    QTest::keyClicks(&name, "Belege 2026");
    auto& comment = Find<QLineEdit>(dialog, "ArcFormComment");
    QTest::keyClicks(&comment, "an <alle> & jeden");
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::SetMarker);
  EXPECT_TRUE(driver.Done());
  EXPECT_TRUE(front.Boxes.empty()) << "there was no marker to change";
  EXPECT_EQ(Kind(), MailArcKind::Sub);
  const auto marker = mailarchive::ReadArcDescriptor(*files, directory.Path("target"));
  ASSERT_TRUE(marker.has_value());
  EXPECT_EQ(marker->ArchiveDisplayName, "Belege 2026");
  EXPECT_NE(marker->ArchiveComment.find("&lt;alle&gt;&nbsp;&amp;&nbsp;jeden"), std::string::npos);
  Settle();
  EXPECT_TRUE(window->findChild<QAction*>("ZEBCmdArc")->isVisible()) << "the file view knows of it at once";
}

TEST_F(MailArchiveTest, AnotherKindIsAskedForAndTheDialogStaysUntilAYes) {
  Mark(MailArcKind::Root, "a &amp; b");
  OpenOnTarget();
  front.Answers = {run::Answer::No, run::Answer::Cancel, run::Answer::Yes};
  DialogDriver driver("SetMailArcDialogBox", [this](QWidget& dialog) {
    EXPECT_TRUE(Find<QRadioButton>(dialog, "SetMailRoot").isChecked());
    Press(dialog, "SetMailSub");
    for (int i = 0; i < 2; ++i) {
      Press(dialog, "OkButton");
      EXPECT_TRUE(dialog.isVisible());
      EXPECT_EQ(Kind(), MailArcKind::Root);
    }
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::SetMarker);
  EXPECT_TRUE(driver.Done());
  ASSERT_EQ(front.Boxes.size(), 3U);
  EXPECT_EQ(front.Boxes[0].Title, "Typwechsel");
  EXPECT_EQ(Kind(), MailArcKind::Sub);
}

TEST_F(MailArchiveTest, TheKindIsChosenWithTheKeyboardToo) {
  OpenOnTarget();
  DialogDriver driver("SetMailArcDialogBox", [](QWidget& dialog) {
    auto& none = Find<QRadioButton>(dialog, "SetMailNo");
    none.setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return none.hasFocus(); }));
    QTest::keyClick(&none, Qt::Key_Down);
    EXPECT_TRUE(Find<QRadioButton>(dialog, "SetMailRoot").isChecked());
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  window->RunAction(Action::SetMarker);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Kind(), MailArcKind::Root);
}

TEST_F(MailArchiveTest, QuittingTheMarkerChangesNothing) {
  Mark(MailArcKind::Root);
  OpenOnTarget();
  DialogDriver driver("SetMailArcDialogBox", [](QWidget& dialog) {
    Press(dialog, "SetMailNo");
    auto& quit = Find<QAbstractButton>(dialog, "QuitButton");
    EXPECT_EQ(quit.text(), "&Abbrechen");
    quit.click();
  });
  window->RunAction(Action::SetMarker);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(Kind(), MailArcKind::Root);
}

TEST_F(MailArchiveTest, TheUserInformationIsChangedAndTaken) {
  OpenOnTarget();
  context().options.ArchiveFormComment = "alt";
  DialogDriver outer("SetMailArcDialogBox", [](QWidget& dialog) {
    DialogDriver inner("ArcFormUserInfo", [](QWidget& info) {
      EXPECT_EQ(info.windowTitle(), "Benutzerinformationen");
      auto& comment = Find<QLineEdit>(info, "ArcFormComment");
      EXPECT_EQ(comment.text(), "alt");
      EXPECT_TRUE(comment.toolTip().contains("%VELMORA_COMMENT%"));
      comment.setText("Bestand 2026");
      Find<QLineEdit>(info, "ArcFormCopyRight").setText("© Muster");
      Press(info, "OKButton");
    });
    Press(dialog, "SetUsrInfo");
    EXPECT_TRUE(inner.Done());
    EXPECT_EQ(Find<QLineEdit>(dialog, "ArcFormComment").text(), "") << "not before it is asked for";
    Press(dialog, "CopyUsrInfo");
    EXPECT_EQ(Find<QLineEdit>(dialog, "ArcFormComment").text(), "Bestand 2026");
    EXPECT_EQ(Find<QLineEdit>(dialog, "ArcFormCopyRight").text(), "© Muster");
    Press(dialog, "SetMailRoot");
    Press(dialog, "OkButton");
  });
  window->RunAction(Action::SetMarker);
  EXPECT_TRUE(outer.Done());
  EXPECT_EQ(context().options.ArchiveFormComment, "Bestand 2026");
  EXPECT_EQ(mailarchive::ReadArcDescriptor(*files, directory.Path("target"))->ArchiveComment,
            "Bestand&nbsp;2026");
}

TEST_F(MailArchiveTest, ACancelOfTheUserInformationChangesNothing) {
  OpenOnTarget();
  const std::string before = context().options.ArchiveFormCopyRight;
  DialogDriver outer("SetMailArcDialogBox", [](QWidget& dialog) {
    DialogDriver inner("ArcFormUserInfo", [](QWidget& info) {
      Find<QLineEdit>(info, "ArcFormCopyRight").setText("anders");
      Press(info, "CancelButton");
    });
    Press(dialog, "SetUsrInfo");
    EXPECT_TRUE(inner.Done());
    Press(dialog, "QuitButton");
  });
  window->RunAction(Action::SetMarker);
  EXPECT_TRUE(outer.Done());
  EXPECT_EQ(context().options.ArchiveFormCopyRight, before);
}

// The viewer itself, as the commands open it.
TEST_F(MailArchiveTest, DescriptorsStandInAViewerThatIsReadOnlyAndSaves) {
  Mark(MailArcKind::Sub);
  const std::string ansi = "Sortaddr=max@example.org\r\nSubject=Gr\xFC\xDF";
  directory.WriteHostFile("target/Grüße.add", ansi + "e\r\n");
  OpenOnTarget();
  frontEnd.SetSession(files.get(), &context().session);
  run::FrontEnd set = frontEnd.Set();
  const std::string target = directory.Path("target");
  DialogDriver marker("TextViewer", [&](QWidget& viewer) {
    EXPECT_EQ(viewer.windowTitle(), ToQt("Descriptor Mailarchiv " + target));
    auto& text = Find<QPlainTextEdit>(viewer, "ViewText");
    EXPECT_TRUE(text.isReadOnly());
    EXPECT_TRUE(text.toPlainText().contains("ArchiveFullPath=/Archive/Rechnungen"));
    EXPECT_TRUE(text.toPlainText().contains("© Muster GmbH") || text.toPlainText().contains("&copy;"));
    EXPECT_NE(viewer.findChild<QAbstractButton*>("SaveButton"), nullptr);
    viewer.close();
  });
  mailarchive::ShowArcDescriptor(set, *files, target);
  EXPECT_TRUE(marker.Done());
  DialogDriver entry("TextViewer", [&](QWidget& viewer) {
    EXPECT_EQ(viewer.windowTitle(), "Descriptor Mailarchiv-Eintrag: Grüße.htm");
    EXPECT_TRUE(Find<QPlainTextEdit>(viewer, "ViewText").toPlainText().contains("Subject=Grüße"));
    viewer.close();
  });
  mailarchive::ShowEntryDescriptor(set, *files, target, "Grüße.htm");
  EXPECT_TRUE(entry.Done());
}

TEST_F(MailArchiveTest, ItsHelperFilesComeAndGoWithTheButton) {
  Mark(MailArcKind::Sub);
  for (const char* name : {"target/a.htm", "target/a.add", "target/index2.html", "target/index.html"}) {
    directory.WriteHostFile(name, "x");
  }
  OpenOnTarget();
  QAction* const button = window->findChild<QAction*>("ZEBCmdArc");
  ASSERT_TRUE(button->isVisible());
  EXPECT_LT(RowOf(Files(), "a.add"), 0);
  EXPECT_GE(RowOf(Files(), "index.html"), 0);
  button->trigger();
  Settle();
  EXPECT_TRUE(button->isChecked());
  EXPECT_EQ(button->toolTip(), "Hilfsdateien des Mailarchivs ausblenden");
  for (const char* name : {"a.add", "index2.html", "VelmoraSubArc.vla"})
    EXPECT_GE(RowOf(Files(), name), 0) << name;
  button->trigger();
  Settle();
  EXPECT_LT(RowOf(Files(), "a.add"), 0);
}

TEST_F(MailArchiveTest, TheIndexOfADirectoryIsMadeFromTheMenu) {
  Mark(MailArcKind::Sub);
  directory.WriteHostFile("target/a.htm", "x");
  directory.WriteHostFile("target/a.add", "Sortaddr=max@example.org\r\nSubject=Eins\r\nFlags=2\r\n");
  OpenOnTarget();
  window->findChild<QAction*>("MnIndexTree")->trigger();
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_EQ(front.Boxes[0].Text,
            "Ein Inhaltsverzeichnisbaum kann nur in einem Mail-Rootarchiv angelegt werden");
  front.Answers = {run::Answer::Yes};
  window->findChild<QAction*>("MnIndexCurrent")->trigger();
  Settle();
  EXPECT_GE(RowOf(Files(), "index.html"), 0) << "the file view is listed anew";
  EXPECT_NE(directory.ReadHostFile("target/index.html").find("Eins"), std::string::npos);
}

}  // namespace
}  // namespace velmora::ui
