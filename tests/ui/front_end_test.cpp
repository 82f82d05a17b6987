// Boxes, choosers, progress box and viewers.

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>

#include "base/paths.h"
#include "support/temp_dir.h"
#include "ui/qt_front_end.h"
#include "ui/text_viewer.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

// Message boxes have no name of their own.
class BoxDriver : public DialogDriver {
 public:
  explicit BoxDriver(Act act) : DialogDriver("", std::move(act)) {}
};

class FrontEndTest : public testing::Test {
 protected:
  QtFrontEnd frontEnd{[this] { ++ensured; }};
  int ensured = 0;
};

TEST_F(FrontEndTest, TheApplicationIsAskedForBeforeABox) {
  BoxDriver driver([](QWidget& box) { box.close(); });
  frontEnd.Set().prompts.Message("Titel", "Text", run::Icon::Information);
  EXPECT_EQ(ensured, 1);
  EXPECT_TRUE(driver.Done());
}

TEST_F(FrontEndTest, ANameInABoxIsNoMarkup) {
  BoxDriver driver([](QWidget& widget) {
    auto& box = dynamic_cast<QMessageBox&>(widget);
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.text(), "<b>a</b>\nb");
    EXPECT_EQ(box.windowTitle(), "Fehler");
    box.close();
  });
  frontEnd.Set().prompts.Message("Fehler", "<b>a</b>\r\nb", run::Icon::Stop);
  EXPECT_TRUE(driver.Done());
}

struct QuestionCase {
  run::Buttons Offered;
  run::Answer Default;
  const char* Button;  // pressed; "Return" and "Esc" for the keys
  run::Answer Expected;
};

class QuestionTest : public FrontEndTest, public testing::WithParamInterface<QuestionCase> {};

TEST_P(QuestionTest, AnswersAsThePersonDoes) {
  const QuestionCase& expected = GetParam();
  BoxDriver driver([&](QWidget& box) {
    const QString button = expected.Button;
    if (button == "Return" || button == "Esc") {
      QTest::keyClick(&box, button == "Esc" ? Qt::Key_Escape : Qt::Key_Return);
    } else {
      Press(box, expected.Button);
    }
  });
  const run::Answer answer =
      frontEnd.Set().prompts.Question("Frage", "Wirklich?", expected.Offered, expected.Default);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(answer, expected.Expected);
}

using run::Answer;
using run::Buttons;
INSTANTIATE_TEST_SUITE_P(
    AllButtons, QuestionTest,
    testing::Values(QuestionCase{Buttons::YesNo, Answer::No, "YesButton", Answer::Yes},
                    QuestionCase{Buttons::YesNo, Answer::Yes, "NoButton", Answer::No},
                    QuestionCase{Buttons::YesNo, Answer::No, "Return", Answer::No},
                    QuestionCase{Buttons::YesNo, Answer::Yes, "Return", Answer::Yes},
                    QuestionCase{Buttons::YesNo, Answer::Yes, "Esc", Answer::No},
                    QuestionCase{Buttons::YesNoCancel, Answer::Yes, "Esc", Answer::Cancel},
                    QuestionCase{Buttons::YesNoCancel, Answer::Yes, "NoButton", Answer::No},
                    QuestionCase{Buttons::OkCancel, Answer::Ok, "OkButton", Answer::Ok},
                    QuestionCase{Buttons::OkCancel, Answer::Ok, "Esc", Answer::Cancel}));

TEST_F(FrontEndTest, AnInputLineGivesItsTextOrNothing) {
  DialogDriver first("InputBox", [](QWidget& box) {
    EXPECT_EQ(Find<QLineEdit>(box, "InpValue").text(), "Neues Verzeichnis");
    Find<QLineEdit>(box, "InpValue").setText("Größe");
    Press(box, "OkButton");
  });
  EXPECT_EQ(frontEnd.Set().prompts.InputLine("Titel", "Verzeichnisname :", "Neues Verzeichnis"), "Größe");
  DialogDriver second("InputBox", [](QWidget& box) { Press(box, "CancelButton"); });
  EXPECT_FALSE(frontEnd.Set().prompts.InputLine("Titel", "Name :", "").has_value());
}

// Long enough for the next pump to do something.
void WaitForPump() { QTest::qSleep(60); }

TEST_F(FrontEndTest, TheProgressBoxShowsWhereTheRunIs) {
  run::Progress& progress = frontEnd.Set().progress;
  progress.Show("Archive/Messages kopieren");
  QWidget* const box = QApplication::activeModalWidget();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->windowTitle(), "Archive/Messages kopieren");
  progress.SetArchiveText("/Archive/<b>System</b>");
  progress.SetItemText("Betreff");
  progress.SetBar(25, 100);
  WaitForPump();
  EXPECT_FALSE(progress.Pump());
  EXPECT_EQ(Find<QLabel>(*box, "ArcStr").text(), "/Archive/<b>System</b>");
  EXPECT_EQ(Find<QLabel>(*box, "ProgStr").text(), "Betreff");
  EXPECT_EQ(Find<QProgressBar>(*box, "ProgBar").value(), 250);
  progress.Close();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FrontEndTest, ButtonEscapeAndClosingAskToCancel) {
  run::Progress& progress = frontEnd.Set().progress;
  using Act = std::function<void(QWidget&)>;
  for (const Act& act : {Act([](QWidget& box) { Press(box, "CancelButton"); }),
                         Act([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); }),
                         Act([](QWidget& box) { box.close(); })}) {
    progress.Show("Lauf");
    QWidget* const box = QApplication::activeModalWidget();
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(progress.Pump());
    act(*box);
    EXPECT_TRUE(progress.Pump());
    EXPECT_TRUE(box->isVisible());  // until the run has come to its end
    progress.Close();
  }
}

TEST_F(FrontEndTest, ANewRunBeginsUncancelled) {
  run::Progress& progress = frontEnd.Set().progress;
  progress.Show("Lauf");
  Press(*QApplication::activeModalWidget(), "CancelButton");
  EXPECT_TRUE(progress.Pump());
  progress.Close();
  progress.Show("Lauf");
  EXPECT_FALSE(progress.Pump());
  progress.Close();
}

TEST_F(FrontEndTest, WaitsNestAndEnd) {
  run::StatusDisplay& status = frontEnd.Set().status;
  status.ShowWait("Temporäre Dateien werden gelöscht");
  status.ShowWait("");
  status.EndWait();
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  status.EndWait();
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  status.EndWait();  // one too many is no harm
}

TEST_F(FrontEndTest, ABoxOfWaitingMayGoWithTheWindowBelowIt) {
  run::StatusDisplay& status = frontEnd.Set().status;
  auto window = std::make_unique<QDialog>();
  window->setModal(true);
  window->show();
  status.ShowWait("Zirkulare Referenzen suchen");
  EXPECT_NE(window->findChild<QWidget*>("WaitBox"), nullptr);
  window.reset();
  status.EndWait();
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(FrontEndTest, ThePointerDoesNotTellToWaitOverABox) {
  const run::FrontEnd front = frontEnd.Set();
  front.status.ShowWait("");
  DialogDriver viewer("TextViewer", [](QWidget& box) {
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    box.close();
  });
  front.viewers.ShowText("Fehlerprotokoll", "Text", {});
  EXPECT_TRUE(viewer.Done());
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  front.status.EndWait();
}

class FileChooserTest : public FrontEndTest {
 protected:
  FileChooserTest() { frontEnd.SetSession(files.get(), nullptr); }

  std::optional<std::string> Choose(const std::string& start, const DialogDriver::Act& act,
                                    run::FileUse use = run::FileUse::Replace) {
    DialogDriver driver("QFileDialog", act);
    const auto chosen = frontEnd.Set().choosers.ChooseFile(
        "Speichern unter", start, {{"Textdatei (*.txt)", "*.txt"}, {"Alle Dateien (*.*)", "*.*"}}, use);
    EXPECT_TRUE(driver.Done());
    return chosen;
  }
  static void Take(QWidget& box, const QString& name) {
    auto& input = Find<QLineEdit>(box, "fileNameEdit");
    if (!name.isNull()) input.setText(name);
    QTest::keyClick(&input, Qt::Key_Return);
  }

  test::TempDir directory;
  std::unique_ptr<platform::FileSystem> files = platform::MakeHostFileSystem({});
};

TEST_F(FileChooserTest, ANameWithoutExtensionGetsThatOfItsFilter) {
  const std::string folder = files->FromHostPath(directory.HostPath(""));
  EXPECT_EQ(Choose(JoinPath(folder, "Protokoll"), [](QWidget& box) { Take(box, {}); }),
            JoinPath(folder, "Protokoll.txt"));
  EXPECT_EQ(Choose(JoinPath(folder, "Protokoll"), [](QWidget& box) { Take(box, "a.log"); }),
            JoinPath(folder, "a.log"));
  const auto chosen = Choose(JoinPath(folder, "Protokoll"), [](QWidget& box) {
    auto& dialog = dynamic_cast<QFileDialog&>(box);
    dialog.selectNameFilter("Alle Dateien (*)");
    emit dialog.filterSelected("Alle Dateien (*)");
    Take(box, "LIESMICH");
  });
  EXPECT_EQ(chosen, JoinPath(folder, "LIESMICH"));
}

TEST_F(FileChooserTest, AFileToGoOnWithIsTakenWithoutAQuestion) {
  directory.WriteHostFile("a.txt", "Zeile");
  const std::string path = files->FromHostPath(directory.HostPath("a.txt"));
  const DialogDriver::Act takeIt = [](QWidget& box) { Take(box, {}); };
  EXPECT_EQ(Choose(path, takeIt, run::FileUse::GoOn), path);
  DialogDriver question(
      "", [](QWidget& box) { dynamic_cast<QMessageBox&>(box).button(QMessageBox::No)->click(); });
  const auto refused = Choose(path, [](QWidget& box) {
    Take(box, {});
    box.close();
  });
  EXPECT_TRUE(question.Done());
  EXPECT_EQ(refused, std::nullopt);
}

TEST_F(FileChooserTest, ABareNameStandsWhereTheLastFileWasChosen) {
  const std::string folder = files->FromHostPath(directory.HostPath(""));
  EXPECT_TRUE(Choose(JoinPath(folder, "a.txt"), [](QWidget& box) { Take(box, {}); }).has_value());
  EXPECT_EQ(Choose("Rechnung.pdf", [](QWidget& box) { Take(box, {}); }), JoinPath(folder, "Rechnung.pdf"));
  EXPECT_EQ(Choose("Rechnung.pdf", [](QWidget& box) { box.close(); }), std::nullopt);
}

TEST(FiltersTest, AreWrittenAsTheToolkitReadsThem) {
  EXPECT_EQ(ToQtFilters({{"Textdatei (*.txt)", "*.txt"}, {"Alle Dateien (*.*)", "*.*"}}),
            "Textdatei (*.txt);;Alle Dateien (*)");
  EXPECT_EQ(ToQtFilters({{"Bilder", "*.tif;*.tiff"}}), "Bilder (*.tif *.tiff)");
}

TEST(TextViewerTest, FindsForwardBackwardAndAround) {
  TextViewer viewer("Titel", "eins zwei\nzwei drei", {}, nullptr);
  auto& find = Find<QLineEdit>(viewer, "InpFind");
  auto& text = Find<QPlainTextEdit>(viewer, "ViewText");
  find.setText("zwei");
  EXPECT_TRUE(viewer.Find(true));
  const int first = text.textCursor().position();
  EXPECT_TRUE(viewer.Find(true));
  EXPECT_GT(text.textCursor().position(), first);
  EXPECT_TRUE(viewer.Find(true));
  EXPECT_EQ(text.textCursor().position(), first);
  EXPECT_TRUE(viewer.Find(false));
  EXPECT_GT(text.textCursor().position(), first);
  find.setText("vier");
  EXPECT_FALSE(viewer.Find(true));
  EXPECT_EQ(Find<QLabel>(viewer, "L_NotFound").text(), "Nicht gefunden");
}

TEST(TextViewerTest, OnlyATextThatMayBeSavedOrDeletedHasItsButton) {
  bool saved = false;
  TextViewer with("Titel", "Text", {[&] { saved = true; }, {}}, nullptr);
  Press(with, "SaveButton");
  EXPECT_TRUE(saved);
  TextViewer without("Titel", "Text", {}, nullptr);
  EXPECT_EQ(without.findChild<QPushButton*>("SaveButton"), nullptr);
  EXPECT_EQ(without.findChild<QPushButton*>("DeleteButton"), nullptr);
}

TEST(TextViewerTest, ClosesOnceItsTextIsDeleted) {
  bool agrees = false;
  TextViewer viewer("Titel", "Text", {{}, [&] { return agrees; }}, nullptr);
  viewer.show();
  Press(viewer, "DeleteButton");
  EXPECT_TRUE(viewer.isVisible());
  agrees = true;
  Press(viewer, "DeleteButton");
  EXPECT_FALSE(viewer.isVisible());
}

}  // namespace
}  // namespace velmora::ui
