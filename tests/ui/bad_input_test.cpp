// Bad input from outside of the window: it tells, or falls back, and goes on.

#include <sqlite3.h>

#include <array>

#include "panes/commands/interchange.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using panes::PaneView;

class BadInputTest : public WindowTest {
 protected:
  // The window answers to the keyboard: down into an archive and up again.
  void ExpectUsable() {
    PressKey(Left(), Qt::Key_Backslash, Qt::ControlModifier);
    PutCursor(Left(), "System");
    PressKey(Left(), Qt::Key_Return);
    EXPECT_TRUE(window->Widget(PaneView::LZEBView).Path().text().endsWith("/System"));
    PressKey(Left(), Qt::Key_Backspace);
    EXPECT_GE(RowOf(Left(), "System"), 0);
  }
};

TEST_F(BadInputTest, AnArchiveThatVanishesWhileItIsShown) {
  std::string host;
  OnSession = [&] {
    context().session.LeftArchive = MakeArchiveWithMails("Weg", 2);
    host = *files->HostPath(context().session.LeftArchive->ID());
  };
  OpenWindow();
  PutCursor(Left(), "Betreff 1");
  std::filesystem::remove_all(host);
  for (const Qt::Key key : {Qt::Key_F3, Qt::Key_Return}) {
    front.Boxes.clear();
    PressKey(Left(), key);
    ASSERT_EQ(front.Boxes.size(), 1U) << key;
    EXPECT_TRUE(front.Boxes[0].Text.find("kann nicht gelesen werden") != std::string::npos)
        << front.Boxes[0].Text;
  }
  front.Boxes.clear();
  PressKey(Left(), Qt::Key_R, Qt::ControlModifier);
  EXPECT_TRUE(front.Boxes.empty());
  EXPECT_EQ(window->Widget(PaneView::LZEBView).Path().text(), "/Archive") << "the nearest above it";
  EXPECT_GE(RowOf(Left(), "System"), 0);
  EXPECT_TRUE(Left().currentIndex().isValid());
  ExpectUsable();
}

TEST_F(BadInputTest, AnArchiveThatAnotherProgramKeepsToItself) {
  std::string host;
  OnSession = [&] {
    const auto archive = MakeArchiveWithMails("Gesperrt", 2);
    ASSERT_TRUE(context().session.Account->Commit());
    host = *files->HostPath(archive->ID());
  };
  OpenWindow();
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open((host + "/archive.dat").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);

  QElapsedTimer time;
  time.start();
  PutCursor(Left(), "Gesperrt");
  const int rest = 2 * static_cast<int>(panes::SizeDisplay::RestMilliseconds);
  QTest::qWait(rest);
  EXPECT_LT(time.elapsed(), rest + 1000) << "the size under the cursor waits for nobody";
  EXPECT_EQ(Cell(Left(), RowOf(Left(), "Gesperrt"), 1), "");

  time.start();
  PressKey(Left(), Qt::Key_Return);
  EXPECT_LT(time.elapsed(), 8000);
  ASSERT_EQ(front.Boxes.size(), 1U);
  EXPECT_NE(front.Boxes[0].Text.find("in einigen Augenblicken noch einmal"), std::string::npos)
      << front.Boxes[0].Text;
  ExpectUsable();

  sqlite3_close(other);
  PutCursor(Left(), "Gesperrt");
  PressKey(Left(), Qt::Key_Return);
  EXPECT_GE(RowOf(Left(), "Betreff 1"), 0);
}

TEST_F(BadInputTest, AHandOverOfRubbish) {
  OpenWindow();
  std::string everyByte;
  for (int byte = 0; byte < 256; ++byte) everyByte.push_back(static_cast<char>(byte));
  const std::string line = "temp/$$Velmora/VelmoraDisplayParms.zeb";
  const std::array<std::string, 8> rubbish = {everyByte,
                                              "-c " + std::string(10 << 20, 'A'),
                                              "-c Größe 中文",
                                              "-e \\\\ZEB1\\DAV",
                                              "-e ",
                                              "",
                                              std::string(4096, '\0'),
                                              "\\\\?\\..\\..\\"};
  for (const std::string& text : rubbish) {
    directory.WriteHostFile(line, text);
    window->Apply(panes::TickInterchange(window->Commands()));
    Settle();
    EXPECT_FALSE(std::filesystem::exists(directory.HostPath(line)));
    EXPECT_FALSE(finished.has_value());
    EXPECT_TRUE(context().fileSystem.FolderExists(context().process.CurrentPath))
        << context().process.CurrentPath;
  }
  ExpectUsable();
}

TEST_F(BadInputTest, NamesThatBreakLinesAndTurnTheDirection) {
  std::filesystem::create_directories(directory.HostPath("target/a\nb\x01\x1b[31m"));
  directory.WriteHostFile("target/rechnung\xE2\x80\xAEgpj.exe", "x");
  MainWindow& main = OpenWindow();
  PathField& path = main.Widget(PaneView::RFSView).Path();
  path.setText(ToQt(directory.HostPath("target")));
  QTest::keyClick(&path, Qt::Key_Return);
  Settle();
  ASSERT_EQ(Files().model()->rowCount(), 3);
  for (int row = 0; row < 3; ++row) {
    const QString name = Cell(Files(), row);
    EXPECT_FALSE(name.contains('\n') || name.contains(QChar(0x1B)) || name.contains(QChar(0x202E)))
        << name.toStdString();
  }
  Files().setFocus();
  Files().SetCursor(1);
  PressKey(Files(), Qt::Key_Return);
  EXPECT_EQ(Files().model()->rowCount(), 1);
  ExpectUsable();
}

}  // namespace
}  // namespace velmora::ui
