#include "ui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "panes/commands/drive_bar.h"
#include "panes/commands/interchange.h"
#include "panes/commands/key_table.h"
#include "startup/main_sequence.h"
#include "ui/completion.h"
#include "ui/icons.h"
#include "ui/key_text.h"
#include "ui/text.h"
#include "ui/window_geometry.h"

namespace velmora::ui {
namespace {

using panes::Action;
using panes::PaneView;

constexpr int ToolIconSize = 22, PanelIconSize = 16;
constexpr int CountPanelCharacters = 22, ModePanelCharacters = 8;
constexpr int Margin = 4;
enum Panel { StatePanel, LeftPanel, RightPanel, ModePanel };

ScreenArea AreaOf(const QRect& rect) { return {rect.left(), rect.top(), rect.width(), rect.height()}; }

QStringList ToList(const std::vector<std::string>& texts) {
  QStringList list;
  for (const std::string& text : texts) list << ToQt(text);
  return list;
}

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
    panels_[StatePanel]->setText(text.isEmpty() ? ToQt(busy_.PanelText()) : text);
  };
  qApp->installEventFilter(this);
}

MainWindow::~MainWindow() { Unload(); }

// --- Building. ---

void MainWindow::MakeBars() {
  bars_->FillMenuBar(*menuBar());
  toolBar_ = new QToolBar("Werkzeugleiste", this);
  toolBar_->setObjectName("ToolBar");
  toolBar_->setMovable(false);
  toolBar_->setIconSize(QSize(ToolIconSize, ToolIconSize));
  bars_->FillToolBar(*toolBar_, panes::Place::ToolBar);
  if (const panes::Command* external = panes::FindCommand("ExtAppButton")) {
    bars_->ActionOf(*external)->setIcon(IconOf("IStdEXE"));
  }
  addToolBar(Qt::TopToolBarArea, toolBar_);
  addToolBarBreak(Qt::TopToolBarArea);
  driveBar_ = new DriveBar(this);
  driveBar_->Chosen = [this](const std::string& drive) { ChooseDrive(drive); };
  addToolBar(Qt::TopToolBarArea, driveBar_);
  setContextMenuPolicy(Qt::NoContextMenu);  // the toolkit's own would hide the bars
}

void MainWindow::MakePanes() {
  const auto archivePlace = [this](PaneView view) {
    return [this, view] {
      const auto archive = twoPanes_.Archives(view).CurrentArchive();
      return archive == nullptr ? std::string() : archive->ID();
    };
  };
  const auto make = [this](const PaneWidget::Names& names, PaneView view,
                           std::function<std::string()> place) {
    auto* const widget = new PaneWidget(names, twoPanes_.Of(view), std::move(place), icons_, *bars_);
    widgets_[static_cast<std::size_t>(view)] = widget;
    Connect(*widget, view);
    return widget;
  };
  PaneWidget* const left =
      make({"LZEBView", "FullPathLZEB", "Linkes Archiv", "Pfad des linken Archivs", panes::Place::LeftBar},
           PaneView::LZEBView, archivePlace(PaneView::LZEBView));
  PaneWidget* const archives =
      make({"RZEBView", "FullPathRZEB", "Rechtes Archiv", "Pfad des rechten Archivs", panes::Place::RightBar},
           PaneView::RZEBView, archivePlace(PaneView::RZEBView));
  PaneWidget* const files =
      make({"RFSView", "FullPathFS", "Dateisystem", "Pfad des Verzeichnisses", panes::Place::FileBar},
           PaneView::RFSView, [this] { return twoPanes_.Files().CurrentPath(); });
  for (PaneWidget* const widget : {archives, files}) {
    widget->AddBar(*bars_, panes::Place::RightSideBar);
  }
  driveBox_ = new DriveBox;
  driveBox_->Chosen = [this](const std::string& drive) { ChooseDrive(drive); };
  files->AddBeforePath(driveBox_);
  files->View().Drop = [this](const QStringList& paths) {
    const QFileInfo first(paths.first());
    EnterPath(PaneView::RFSView, first.isDir() ? first.filePath() : first.path());
    return true;
  };

  right_ = new QStackedWidget;
  right_->addWidget(archives);
  right_->addWidget(files);
  splitter_ = new QSplitter(Qt::Horizontal);
  splitter_->setObjectName("Splitter");
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(left);
  splitter_->addWidget(right_);
  keyRow_ = new KeyRow;
  keyRow_->Pressed = [this](Action action) { RunAction(action); };
  auto* const centre = new QWidget;
  auto* const layout = new QVBoxLayout(centre);
  layout->setContentsMargins(Margin, 0, Margin, 0);
  layout->setSpacing(Margin);
  layout->addWidget(splitter_, 1);
  layout->addWidget(keyRow_);
  setCentralWidget(centre);
}

void MainWindow::Connect(PaneWidget& widget, PaneView view) {
  PaneList& list = widget.View();
  list.HandleKey = [this](QKeyEvent& event) { return HandleKey(event); };
  list.ShowMenu = [this, view](const QPoint& place) { ShowContextMenu(view, place); };
  list.Activated = [this, view] { SetActiveView(view); };
  list.Opened = [this] { RunAction(Action::Open); };
  list.RowChanged = [this, view] { RowChanged(view); };
  list.ClickedHeader = [&widget](std::size_t column) {
    widget.Pane().ClickHeader(column);
    widget.Sync();
  };
  widget.Model().Rename = [this](std::size_t row, const std::string& name) {
    // Not within the editor that has just closed.
    QTimer::singleShot(0, this, [this, row, name] { Apply(panes::RunRename(commands_, row, name)); });
  };
  widget.Path().Entered = [this, view](const QString& path) { EnterPath(view, path); };
  widget.Path().Complete = [this, view](const QString& typed) {
    return ToList(view == PaneView::RFSView ? CompleteDirectory(context_.fileSystem, FromQt(typed))
                                            : CompleteArchive(context_.session, FromQt(typed)));
  };
}

void MainWindow::MakeStatusBar() {
  struct PanelNames {
    const char *Name, *AccessibleName;
    int Characters;
  };
  constexpr PanelNames names[] = {{"PanelState", "Status", 0},
                                  {"PanelLeft", "Linke Liste", CountPanelCharacters},
                                  {"PanelRight", "Rechte Liste", CountPanelCharacters},
                                  {"PanelMode", "Rechte des Benutzers", ModePanelCharacters}};
  warning_ = new QToolButton;
  warning_->setObjectName("FilterWarning");
  warning_->setAccessibleName("Filter aktiv");
  warning_->setToolTip(ToQt(panes::FilterWarningTip));
  warning_->setIcon(IconOf("Warning"));
  warning_->setAutoRaise(true);
  warning_->setFocusPolicy(Qt::NoFocus);
  warning_->installEventFilter(this);
  for (std::size_t i = 0; i < panels_.size(); ++i) {
    auto* const panel = new QLabel;
    panel->setObjectName(names[i].Name);
    panel->setAccessibleName(names[i].AccessibleName);
    panel->setTextFormat(Qt::PlainText);
    panel->setMinimumWidth(panel->fontMetrics().averageCharWidth() * names[i].Characters);
    panel->setMargin(2);
    panel->installEventFilter(this);
    panels_[i] = panel;
    statusBar()->addPermanentWidget(panel, names[i].Characters == 0 ? 1 : 0);
    if (i == StatePanel) statusBar()->addPermanentWidget(warning_);
  }
  // The picture keeps its place while it blinks.
  QSizePolicy policy = warning_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  warning_->setSizePolicy(policy);
  warning_->hide();
}

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

QString MainWindow::StatusPanel(int panel) const { return panels_[static_cast<std::size_t>(panel)]->text(); }

void MainWindow::SetActiveView(PaneView view) {
  const PaneView before = twoPanes_.ActiveView();
  twoPanes_.SetActiveView(view);
  if (twoPanes_.ActiveView() == before) return;
  for (PaneWidget* const widget : widgets_) widget->SetActive(widget == &ActiveWidget());
  UpdateCommands();
}

void MainWindow::ShowLayout() {
  right_->setCurrentWidget(&Widget(twoPanes_.ShowsFiles() ? PaneView::RFSView : PaneView::RZEBView));
  for (PaneWidget* const widget : widgets_) widget->SetActive(widget == &ActiveWidget());
}

void MainWindow::Apply(panes::Outcome outcome) {
  if (isUnloaded_ || outcome.ExitStatus || outcome.Session != panes::SessionChange::None) {
    if (Finished) Finished(outcome);
    return;
  }
  if (outcome.OptionsChanged) icons_.Forget();
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
  panels_[LeftPanel]->setText(textOf(PaneView::LZEBView));
  panels_[RightPanel]->setText(textOf(twoPanes_.ShowsFiles() ? PaneView::RFSView : PaneView::RZEBView));
  panels_[ModePanel]->setText(
      ToQt(panes::PanelText(panes::UserModeOf(panes::RightsOf(context_.session.Trustees)))));
  const auto showHiding = [this](Panel panel, std::string_view tip) {
    panels_[panel]->setToolTip(ToQt(tip));
    QPalette palette = QApplication::palette(panels_[panel]);
    if (!tip.empty()) palette.setColor(QPalette::WindowText, palette.color(QPalette::Link));
    panels_[panel]->setPalette(palette);
  };
  showHiding(LeftPanel, twoPanes_.Left().HidingToolTip());
  showHiding(RightPanel, twoPanes_.ShowsFiles() ? std::string_view() : twoPanes_.Right().HidingToolTip());
}

void MainWindow::ShowBusy() {
  if (isUnloaded_) return;
  const bool isBusy = busy_.IsBusy();
  panels_[StatePanel]->setText(ToQt(busy_.PanelText()));
  for (QWidget* const bar :
       {static_cast<QWidget*>(toolBar_), static_cast<QWidget*>(driveBar_), static_cast<QWidget*>(keyRow_)}) {
    bar->setEnabled(!isBusy);
  }
  setCursor(isBusy && busy_.Cursor() != panes::BusyCursor::Arrow ? Qt::BusyCursor : Qt::ArrowCursor);
  if (!isBusy && busy_.FocusesView() && isVisible()) ActiveWidget().View().setFocus();
  UpdateCommands();
}

void MainWindow::ShowFilterWarning() {
  warning_->setVisible(filterWarning_.IsVisible());
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
    if (const panes::Command* external = panes::FindCommand("ExtAppButton")) {
      bars_->ActionOf(*external)->setToolTip(PlainTip(ToQt(context_.options.ExternalApplication)));
    }
  });
}

// --- Events. ---

void MainWindow::RunAction(Action action) {
  if (isUnloaded_ || busy_.IsBusy() || action == Action::None) return;
  StoreGeometry();
  stopCount_ = false;
  // The selection is the list's own business.
  if (action == Action::FlipSelection) {
    ActiveWidget().View().FlipSelection();
    return;
  }
  Apply(panes::RunAction(commands_, action, Marks()));
}

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
  if (event->type() == QEvent::MouseButtonDblClick && !busy_.IsBusy()) {
    if (watched == warning_) {
      RunAction(Action::ResetFilter);
      return true;
    }
    if (watched == panels_[LeftPanel] || watched == panels_[RightPanel]) {
      SetActiveView(watched == panels_[LeftPanel] ? PaneView::LZEBView : PaneView::RZEBView);
      RunAction(Action::ToggleHiding);
      return true;
    }
  }
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
