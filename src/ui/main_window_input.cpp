// What a person does to the main window, and what its timer brings: keys, clicks, typed paths, handed over
// lines.

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>

#include "panes/commands/interchange.h"
#include "panes/commands/key_table.h"
#include "ui/key_text.h"
#include "ui/main_window.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

using panes::Action;
using panes::PaneView;

PaneView ViewOf(panes::Place bar) {
  return bar == panes::Place::LeftBar ? PaneView::LZEBView : PaneView::RZEBView;
}
bool IsPaneBar(panes::Place place) {
  return place == panes::Place::LeftBar || place == panes::Place::RightBar ||
         place == panes::Place::FileBar || place == panes::Place::RightSideBar;
}

// What a person does to a window, which waits for nobody while a command runs.
bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::Drop:
      return true;
    default:
      return false;
  }
}

}  // namespace

void MainWindow::RunCommand(const panes::Command& command) {
  if (IsPaneBar(command.Where)) SetActiveView(ViewOf(command.Where));
  RunAction(command.Runs);
  UpdateCommands();  // a button that can be pressed has changed by itself
}

bool MainWindow::HandleKey(QKeyEvent& event) {
  const Action action = panes::ActionOfKey(KeyText(event), twoPanes_.ActiveView());
  if (action == Action::None) return false;
  if (panes::MayRunFromKey(action, Situation())) RunAction(action);
  return true;
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  if (ActiveWidget().View().IsEditing()) return;
  if (event->key() == Qt::Key_Escape) {
    rowSizes_->Stop();
    ShowDrive();  // a drive that was only looked at
    ActiveWidget().View().setFocus();
    return;
  }
  // A key that no control wanted, such as a function key while a path is typed.
  const std::string key = KeyText(*event);
  for (const panes::KeyBinding& binding : panes::Keys()) {
    if (binding.Key == key && !binding.IsListKey && panes::WorksIn(binding, twoPanes_.ActiveView())) {
      (void)HandleKey(*event);  // the key is known
      return;
    }
  }
  QMainWindow::keyPressEvent(event);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  // While a command runs, what is done to the window is lost; a box on top of it lives.
  if (busy_.IsBusy() && IsInput(event->type()) && QApplication::activeModalWidget() == nullptr &&
      QApplication::activePopupWidget() == nullptr) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
      stopCount_ = true;
    }
    return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

bool MainWindow::event(QEvent* event) {
  // A box of a command that has changed a list stands before the list as it now is.
  if (event->type() == QEvent::WindowBlocked && !isUnloaded_) {
    for (PaneWidget* const widget : widgets_) {
      if (widget != nullptr && widget->IsStale()) widget->Sync();
    }
  }
  return QMainWindow::event(event);
}

bool MainWindow::Breathe() {
  QCoreApplication::processEvents();
  return stopCount_;
}

void MainWindow::ChooseDrive(const std::string& drive) { EnterPath(PaneView::RFSView, ToQt(drive + "\\")); }

void MainWindow::EnterPath(PaneView view, const QString& path) {
  if (busy_.IsBusy() || isUnloaded_) return;
  bool isShown = false;
  {
    const panes::BusyScope busy(busy_, panes::BusyCursor::Wait);
    if (view == PaneView::RFSView) {
      isShown = twoPanes_.Files().ShowDirectory(FromQt(path));
      if (isShown) twoPanes_.SetViewMode(panes::view_mode::FileSystem);
    } else {
      isShown = twoPanes_.Archives(view).ShowArchive(FromQt(path));
    }
  }
  if (isShown) twoPanes_.SetActiveView(view);
  panes::Outcome outcome;
  outcome.LayoutChanged = outcome.ActiveViewChanged = isShown;
  Apply(std::move(outcome));
}

void MainWindow::ShowContextMenu(PaneView view, const QPoint& place) {
  if (busy_.IsBusy()) return;
  SetActiveView(view);
  bars_->Update(Situation());
  bars_->ContextMenu(view == PaneView::RFSView ? panes::Place::FileContext : panes::Place::ItemContext)
      ->popup(place);
}

void MainWindow::RowChanged(PaneView view) {
  Widget(view).NoteCursor();
  if (!isUnloaded_ && view == twoPanes_.ActiveView()) rowSizes_->Follow(Widget(view));
  if (isUpdatePending_ || isUnloaded_) return;
  UpdateCommands();
  QTimer::singleShot(0, this, &MainWindow::ShowStatus);
}

void MainWindow::Tick() {
  if (isUnloaded_ || !busy_.InterchangeTimerRuns() || QApplication::activeModalWidget() != nullptr) return;
  interchangeTimer_.stop();
  panes::Outcome outcome = panes::TickInterchange(commands_);
  const bool handedOver = outcome.LeftChanged || outcome.RightChanged || outcome.FilesChanged;
  Apply(std::move(outcome));
  if (isUnloaded_) return;
  if (handedOver) {
    showNormal();
    raise();
    activateWindow();
  }
  interchangeTimer_.start();
}

}  // namespace velmora::ui
