// What comes from outside while the window stands: the line of a second call, another server.

#include <QLineEdit>

#include "base/paths.h"
#include "store/fields.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using panes::Action;
using panes::PaneView;

class SessionTest : public WindowTest {
 protected:
  // A second call of the program with this line.
  void HandOver(const std::string& line) {
    directory.WriteHostFile("hand.txt", line + "\r\n");
    const std::string target = context().process.TempDir + "VelmoraDisplayParms.zeb";
    ASSERT_TRUE(files->CopyFile(directory.Path("hand.txt"), target).has_value());
  }
  // The file of a message, as a second call names it.
  std::string FileOf(store::DvArchive& archive) {
    const auto entries = archive.GetEntries(static_cast<std::uint32_t>(settings::NoItemFilter));
    EXPECT_EQ((*entries)->Count(), 1);
    std::vector<store::DvEntryRow> rows;
    EXPECT_TRUE((*entries)->ReadRows(0, 1, rows).has_value());
    const auto item = archive.GetEntry(rows.at(0).Key);
    const auto location = (*item)->Fields().Get(store::tag::Location);
    return JoinPath(archive.ID(), FileNameOf(store::FieldText(*location))) + ".001";
  }
  QString PathOf(PaneView view) { return window->Widget(view).Path().text(); }
  void AnswerServer(const QString& name) {
    DialogDriver driver("ChDvServer", [&](QWidget& dialog) {
      Find<QLineEdit>(dialog, "InpServer").setText(name);
      Press(dialog, "OkButton");
    });
    window->RunAction(Action::ChangeServer);
    EXPECT_TRUE(driver.Done());
  }
};

TEST_F(SessionTest, ASecondCallNamesAMessage) {
  OnSession = [this] { context().options.TICDisplayFile = true; };
  OpenWindow();
  const auto archive = MakeArchiveWithMails("Viele", 1);
  bool isShown = false;
  DialogDriver driver("MessageViewer", [&](QWidget& viewer) {
    isShown = viewer.windowTitle() == "Betreff 1";
    viewer.close();
  });
  HandOver("-e " + FileOf(*archive));
  EXPECT_TRUE(QTest::qWaitFor([&] { return driver.Done(); }, 5000));
  EXPECT_TRUE(isShown);
  EXPECT_EQ(PathOf(PaneView::LZEBView), "/Archive/Viele");
  EXPECT_EQ(Left().currentIndex().data().toString(), "Betreff 1");
}

TEST_F(SessionTest, ASecondCallNamesADirectory) {
  std::filesystem::create_directories(directory.HostPath("target/Ordner"));
  MainWindow& main = OpenWindow();
  main.findChild<QAction*>("ZEBFSView")->trigger();
  Settle();
  ASSERT_FALSE(Files().isVisibleTo(&main));
  HandOver(directory.Path("target\\Ordner") + "\\");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Files().isVisibleTo(&main); }, 5000));
  EXPECT_TRUE(PathOf(PaneView::RFSView).endsWith("\\target\\Ordner\\"))
      << PathOf(PaneView::RFSView).toStdString();
}

TEST_F(SessionTest, AServerThatCannotBeReachedLeavesTheOldOne) {
  OpenWindow();
  AnswerServer("FEHLT");
  ASSERT_FALSE(front.Boxes.empty());
  EXPECT_EQ(front.Boxes[0].Text, "Die Anmeldung an FEHLT ist fehlgeschlagen !");
  ASSERT_TRUE(finished.has_value());
  EXPECT_EQ(finished->Session, panes::SessionChange::Reloaded);
  EXPECT_EQ(context().session.ServerName, Server);
}

TEST_F(SessionTest, AnotherServerEndsTheWindowOfTheOldOne) {
  OpenWindow();
  AnswerServer(ToQt(Server));
  EXPECT_TRUE(front.Boxes.empty());
  ASSERT_TRUE(finished.has_value());
  EXPECT_EQ(finished->Session, panes::SessionChange::Reloaded);
  EXPECT_FALSE(finished->ExitStatus.has_value());
}

}  // namespace
}  // namespace velmora::ui
