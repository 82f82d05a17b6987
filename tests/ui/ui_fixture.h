// A main window on a store in a temporary directory, and what drives it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "startup/program_fixture.h"
#include "ui/main_window.h"
#include "ui/text.h"

namespace velmora::ui {

// Runs `act` on the modal dialog of that name as soon as it is open. The dialog must close by what is done
// there. Whether that has happened is told by Done.
class DialogDriver {
 public:
  using Act = std::function<void(QWidget& dialog)>;

  DialogDriver(const QString& name, Act act) : name_(name), act_(std::move(act)) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start(5);
  }
  bool Done() const { return done_; }

 private:
  void Look() {
    QWidget* const dialog = QApplication::activeModalWidget();
    if (done_ || dialog == nullptr || dialog->objectName() != name_) return;
    done_ = true;
    timer_.stop();
    act_(*dialog);
  }

  QString name_;
  Act act_;
  QTimer timer_;
  bool done_ = false;
};

template <typename Control>
Control& Find(QWidget& parent, const char* name) {
  auto* const found = parent.findChild<Control*>(name);
  if (found == nullptr) throw std::runtime_error(std::string("no control ") + name);
  return *found;
}
inline void Press(QWidget& dialog, const char* button) { Find<QAbstractButton>(dialog, button).click(); }

class WindowTest : public startup::ProgramTest {
 protected:
  // A window as the program opens it, on a session of "anna" unless `login` says otherwise.
  MainWindow& OpenWindow(const std::string& commandLine = "") {
    StartSession(commandLine);
    if (OnSession) OnSession();
    window = std::make_unique<MainWindow>(context(), frontEnd);
    window->Finished = [this](const panes::Outcome& outcome) { finished = outcome; };
    window->InitMain();
    Settle();
    return *window;
  }
  // Lets everything happen that waits for the message loop.
  static void Settle() {
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
  }
  PaneList& List(panes::PaneView view) { return window->Widget(view).View(); }
  PaneList& Left() { return List(panes::PaneView::LZEBView); }
  PaneList& Files() { return List(panes::PaneView::RFSView); }
  static QString Cell(PaneList& list, int row, int column = 0) {
    return list.model()->index(row, column).data().toString();
  }
  // The row with that text in its first column, -1 for none.
  static int RowOf(PaneList& list, const QString& text) {
    for (int row = 0; row < list.model()->rowCount(); ++row) {
      if (Cell(list, row) == text) return row;
    }
    return -1;
  }
  void PutCursor(PaneList& list, const QString& text) {
    const int row = RowOf(list, text);
    ASSERT_GE(row, 0) << text.toStdString();
    list.setFocus();
    list.Activated();  // a window that the desktop has not activated gets no focus
    list.SetCursor(static_cast<std::size_t>(row));
    Settle();
  }
  void PressKey(PaneList& list, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&list, key, modifiers);
    Settle();
  }
  // An archive below the root with so many mails "Betreff 1", "Betreff 2", ...
  std::shared_ptr<store::DvArchive> MakeArchiveWithMails(const std::string& name, int mails) {
    const auto archive = MakeArchive(name);
    for (int i = 1; i <= mails; ++i) AddMail(*archive, "Betreff " + std::to_string(i));
    return archive;
  }

  QtFrontEnd frontEnd{[] {}};
  std::function<void()> OnSession;  // before the window opens
  std::unique_ptr<MainWindow> window;
  std::optional<panes::Outcome> finished;
};

}  // namespace velmora::ui
