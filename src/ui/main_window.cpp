#include "ui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolBar>

#include "panes/commands/drive_bar.h"
#include "panes/commands/interchange.h"
#include "startup/main_sequence.h"
#include "ui/text.h"
#include "ui/window_geometry.h"

namespace velmora::ui {
namespace {

using panes::Action;
using panes::PaneView;

ScreenArea AreaOf(const QRect& rect) { return {rect.left(), rect.top(), rect.width(), rect.height()}; }

}  // namespace

MainWindow::MainWindow(startup::Context& context, QtFrontEnd& frontEnd)
    : context_(context),
      frontEnd_(frontEnd),
      busy_([this] { ShowBusy(); }),
      twoPanes_(panes::PaneContext{context.session, context.options, context.run, context.process.CurrentPath,
                                   *this}),
      designs_(context.fileSystem, context.options.DesignPath, context.options.ArchiveDesign),
      formTexts_(panes::FormUserTexts::Of(context.options)),
      commands_{context, twoPanes_, designs_, busy_, formTexts_, patterns_},
      filterWarning_(context.options),
      icons_(context.fileSystem) {
  setObjectName("FrmMain");
  setWindowTitle(ToQt(startup::BuildMainCaption(context)));
  // A form that cannot be read is reported by the export that needs it.
  (void)designs_.LoadDesignSet();
  bars_ = new CommandBars([this](const panes::Command& command) { RunCommand(command); }, this);
  MakeBars();
  MakePanes();
  MakeStatusBar();
  rowSizes_ = new RowSizes(
      context.options, context.session, context.run.clock(), [this] { return busy_.IsBusy(); }, this);
  ShowGeometry(context.options);
  interchangeTimer_.setInterval(panes::InterchangeInterval);
  displayTimer_.setInterval(panes::DisplayTimerInterval);
  interchangeTimer_.setObjectName("InterchangeTimer");
  displayTimer_.setObjectName("DisplayTimer");
  connect(&interchangeTimer_, &QTimer::timeout, this, &MainWindow::Tick);
  connect(&displayTimer_, &QTimer::timeout, this, [this] {
    filterWarning_.Tick();
    ShowFilterWarning();
  });
  frontEnd_.Status().ShowText = [this](const QString& text) {
    status_->SetText(StatusPanel::State, text.isEmpty() ? ToQt(busy_.PanelText()) : text);
  };
  qApp->installEventFilter(this);
}

MainWindow::~MainWindow() { Unload(); }

// --- Geometry. ---

void MainWindow::ShowGeometry(const settings::Options& options) {
  const WindowFrame frame = FrameFromOptions(options, AreaOf(screen()->availableGeometry()));
  resize(frame.Width, frame.Height);
  move(frame.Left, frame.Top);
  setWindowState(frame.IsMaximized ? Qt::WindowMaximized : Qt::WindowNoState);
  splitter_->setSizes({frame.LeftPane, frame.RightPane});
}

void MainWindow::StoreGeometry() {
  const QRect normal = isMaximized() ? normalGeometry() : geometry();
  const QList<int> panes = splitter_->sizes();
  const WindowFrame frame = {.Left = normal.left(),
                             .Top = normal.top(),
                             .Width = normal.width(),
                             .Height = normal.height(),
                             .IsMaximized = isMaximized(),
                             .LeftPane = panes.value(0),
                             .RightPane = panes.value(1)};
  FrameToOptions(frame, context_.options);
  context_.options.LastActiveView = static_cast<std::int32_t>(twoPanes_.ActiveView());
}

// --- Start and end. ---

void MainWindow::InitMain() {
  context_.process.MainInitDone = true;
  show();
  panes::Outcome outcome;
  {
    const panes::BusyScope busy(busy_, panes::BusyCursor::Wait);
    const std::vector<panes::DriveButton> drives = panes::DriveButtons(context_.fileSystem);
    driveBar_->ShowDrives(drives);
    driveBox_->ShowDrives(drives);
    twoPanes_.SignedOn();
    twoPanes_.SetActiveView(static_cast<PaneView>(context_.options.LastActiveView));
    (void)twoPanes_.RefreshAll();  // a failure has been reported
  }
  outcome.LeftChanged = outcome.RightChanged = outcome.FilesChanged = true;
  outcome.LayoutChanged = outcome.ActiveViewChanged = outcome.FilterChanged = true;
  Apply(std::move(outcome));
  ActiveWidget().View().setFocus();
  Apply(panes::ShowStartMessage(commands_));
  if (!isUnloaded_) interchangeTimer_.start();
}

void MainWindow::Unload() {
  if (isUnloaded_) return;
  isUnloaded_ = true;
  interchangeTimer_.stop();
  displayTimer_.stop();
  rowSizes_->Stop();
  qApp->removeEventFilter(this);
  frontEnd_.Status().ShowText = {};
  hide();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (isUnloaded_) {
    event->accept();
    return;
  }
  event->ignore();  // the command asks, and unloads the window
  RunAction(Action::Exit);
}

// --- Showing. ---

PaneWidget& MainWindow::Widget(PaneView view) { return *widgets_[static_cast<std::size_t>(view)]; }

void MainWindow::SetActiveView(PaneView view) {
  const PaneView before = twoPanes_.ActiveView();
  twoPanes_.SetActiveView(view);
  if (twoPanes_.ActiveView() == before) return;
  for (PaneWidget* const widget : widgets_) widget->SetActive(widget == &ActiveWidget());
  rowSizes_->Follow(ActiveWidget());
  UpdateCommands();
}

void MainWindow::ShowLayout() {
  right_->setCurrentWidget(&Widget(twoPanes_.ShowsFiles() ? PaneView::RFSView : PaneView::RZEBView));
  for (PaneWidget* const widget : widgets_) widget->SetActive(widget == &ActiveWidget());
}

void MainWindow::RunAction(Action action) {
  if (isUnloaded_ || busy_.IsBusy() || action == Action::None) return;
  StoreGeometry();
  stopCount_ = false;
  rowSizes_->Stop();  // the command may change what is counted
  // The selection is the list's own business.
  if (action == Action::FlipSelection) {
    ActiveWidget().View().FlipSelection();
    return;
  }
  Apply(panes::RunAction(commands_, action, Marks()));
}

void MainWindow::Apply(panes::Outcome outcome) {
  if (isUnloaded_ || outcome.ExitStatus || outcome.Session != panes::SessionChange::None) {
    if (Finished) Finished(outcome);
    return;
  }
  if (outcome.OptionsChanged) {
    icons_.Forget();
    ShowExternalProgram();
  }
  if (outcome.ResetFormSize) ShowGeometry(settings::Options());
  if (outcome.RestoreFormSize) ShowGeometry(context_.loadedOptions);
  ShowViews(outcome);
  if (outcome.FilterChanged) {
    filterWarning_.StartStopWarnings();
    ShowFilterWarning();
  }
  ShowStatus();
  UpdateCommands();
  if (outcome.EditLabel) ActiveWidget().View().EditLabel();
  if (outcome.EditPath) ActiveWidget().Path().setFocus(Qt::ShortcutFocusReason);
  if (outcome.ChooseDrive) driveBox_->setFocus(Qt::ShortcutFocusReason);
  if (outcome.Message) ShowMessage(*outcome.Message);
  if (outcome.Dialog != panes::DialogKind::None) ShowDialog(outcome);
}

void MainWindow::ShowViews(const panes::Outcome& outcome) {
  ShowLayout();
  const std::array<bool, 3> changed = {outcome.LeftChanged, outcome.RightChanged, outcome.FilesChanged};
  for (std::size_t i = 0; i < widgets_.size(); ++i) {
    // What a pane shows may have changed by the way; the list says so itself.
    if (changed[i] || outcome.LayoutChanged || outcome.OptionsChanged || widgets_[i]->IsStale()) {
      widgets_[i]->Sync();
    }
  }
  PaneList& active = ActiveWidget().View();
  if (outcome.CurrentRow) active.SetCursor(*outcome.CurrentRow);
  if (outcome.Selection) active.SetSelection(*outcome.Selection);
  if (outcome.ActiveViewChanged || outcome.LayoutChanged) active.setFocus();
  ShowDrive();
}

void MainWindow::ShowStatus() {
  if (isUnloaded_) return;
  const auto textOf = [this](PaneView view) {
    return ToQt(twoPanes_.Of(view).StatusText(Widget(view).View().SelectedRows()));
  };
  status_->SetText(StatusPanel::Left, textOf(PaneView::LZEBView));
  status_->SetText(StatusPanel::Right,
                   textOf(twoPanes_.ShowsFiles() ? PaneView::RFSView : PaneView::RZEBView));
  status_->SetText(StatusPanel::Mode,
                   ToQt(panes::PanelText(panes::UserModeOf(panes::RightsOf(context_.session.Trustees)))));
  status_->ShowHiding(StatusPanel::Left, twoPanes_.Left().HidingToolTip());
  status_->ShowHiding(StatusPanel::Right,
                      twoPanes_.ShowsFiles() ? std::string_view() : twoPanes_.Right().HidingToolTip());
}

void MainWindow::ShowBusy() {
  if (isUnloaded_) return;
  const bool isBusy = busy_.IsBusy();
  status_->SetText(StatusPanel::State, ToQt(busy_.PanelText()));
  for (QWidget* const bar :
       {static_cast<QWidget*>(toolBar_), static_cast<QWidget*>(driveBar_), static_cast<QWidget*>(keyRow_)}) {
    bar->setEnabled(!isBusy);
  }
  setCursor(isBusy && busy_.Cursor() != panes::BusyCursor::Arrow ? Qt::BusyCursor : Qt::ArrowCursor);
  if (!isBusy && busy_.FocusesView() && isVisible()) ActiveWidget().View().setFocus();
  UpdateCommands();
}

void MainWindow::ShowFilterWarning() {
  status_->ShowWarning(filterWarning_.IsVisible());
  if (filterWarning_.DisplayTimerRuns() == displayTimer_.isActive()) return;
  if (filterWarning_.DisplayTimerRuns()) {
    displayTimer_.start();
  } else {
    displayTimer_.stop();
  }
}

void MainWindow::ShowDrive() {
  const std::string drive = panes::DriveOf(context_.fileSystem, context_.process.CurrentPath);
  driveBar_->SetCurrent(drive);
  driveBox_->SetCurrent(drive);
}

panes::ViewMarks MainWindow::Marks() const {
  return widgets_[static_cast<std::size_t>(twoPanes_.ActiveView())]->View().Marks();
}

panes::Situation MainWindow::Situation() const { return panes::SituationOf(commands_, Marks()); }

// Many rows may change at once: the commands follow when the events are done.
void MainWindow::UpdateCommands() {
  if (isUpdatePending_ || isUnloaded_) return;
  isUpdatePending_ = true;
  QTimer::singleShot(0, this, [this] {
    isUpdatePending_ = false;
    if (isUnloaded_) return;
    const panes::Situation situation = Situation();
    bars_->Update(situation);
    keyRow_->Update(situation);
  });
}

}  // namespace velmora::ui
