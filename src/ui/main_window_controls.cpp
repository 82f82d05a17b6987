// The controls of the main window, and what of the window answers them.

#include <QFileInfo>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

#include "base/text.h"
#include "panes/commands/external_program.h"
#include "ui/completion.h"
#include "ui/icons.h"
#include "ui/main_window.h"
#include "ui/program_icon.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

using panes::Action;
using panes::PaneView;

constexpr int ToolIconSize = 22;
constexpr int Margin = 4;

QStringList ToList(const std::vector<std::string>& texts) {
  QStringList list;
  for (const std::string& text : texts) list << ToQt(text);
  return list;
}

}  // namespace

void MainWindow::MakeBars() {
  bars_->FillMenuBar(*menuBar());
  toolBar_ = new QToolBar("Werkzeugleiste", this);
  toolBar_->setObjectName("ToolBar");
  toolBar_->setMovable(false);
  toolBar_->setIconSize(QSize(ToolIconSize, ToolIconSize));
  bars_->FillToolBar(*toolBar_, panes::Place::ToolBar);
  ShowExternalProgram();
  addToolBar(Qt::TopToolBarArea, toolBar_);
  addToolBarBreak(Qt::TopToolBarArea);
  driveBar_ = new DriveBar(this);
  driveBar_->Chosen = [this](const std::string& drive) { ChooseDrive(drive); };
  addToolBar(Qt::TopToolBarArea, driveBar_);
  setContextMenuPolicy(Qt::NoContextMenu);  // the toolkit's own would hide the bars
}

// The button of the external program bears the program's picture, and its command line as tool tip.
void MainWindow::ShowExternalProgram() {
  const panes::Command* const command = panes::FindCommand("ExtAppButton");
  if (command == nullptr) return;
  const std::string& line = context_.options.ExternalApplication;
  std::string program = panes::ProgramOf(line);
  if (program.find('\\') != std::string::npos) {
    program = context_.fileSystem.HostPath(program).value_or(program);  // named by its Windows path
  }
  const QIcon own = IconOfProgram(ToQt(program));
  QAction& action = *bars_->ActionOf(*command);
  action.setIcon(own.isNull() ? IconOf("IStdEXE") : own);
  action.setToolTip(PlainTip(ToQt(line)));
}

// Where a pane is: the directory of its archive, or the one that it shows.
std::string MainWindow::PlaceOf(PaneView view) {
  if (view == PaneView::RFSView) return twoPanes_.Files().CurrentPath();
  const auto archive = twoPanes_.Archives(view).CurrentArchive();
  return archive == nullptr ? std::string() : archive->ID();
}

PaneWidget* MainWindow::MakePane(const PaneWidget::Names& names, PaneView view) {
  auto* const widget = new PaneWidget(
      names, twoPanes_.Of(view), ColumnWidths(context_.options, view), [this, view] { return PlaceOf(view); },
      icons_, *bars_);
  widgets_[static_cast<std::size_t>(view)] = widget;
  Connect(*widget, view);
  return widget;
}

// A directory is shown, of a file its own one with the cursor on it.
void MainWindow::EnterDropped(const QString& hostPath) {
  const QFileInfo dropped(hostPath);
  if (dropped.isDir()) return EnterPath(PaneView::RFSView, dropped.filePath());
  EnterPath(PaneView::RFSView, dropped.path());
  const int row = panes::FindByDisplayName(twoPanes_.Files(), ToLower(FromQt(dropped.fileName())));
  if (row >= 0) Widget(PaneView::RFSView).View().SetCursor(static_cast<std::size_t>(row));
}

void MainWindow::MakePanes() {
  PaneWidget* const left = MakePane(
      {"LZEBView", "FullPathLZEB", "Linkes Archiv", "Pfad des linken Archivs", panes::Place::LeftBar},
      PaneView::LZEBView);
  PaneWidget* const archives = MakePane(
      {"RZEBView", "FullPathRZEB", "Rechtes Archiv", "Pfad des rechten Archivs", panes::Place::RightBar},
      PaneView::RZEBView);
  PaneWidget* const files =
      MakePane({"RFSView", "FullPathFS", "Dateisystem", "Pfad des Verzeichnisses", panes::Place::FileBar},
               PaneView::RFSView);
  for (PaneWidget* const widget : {archives, files}) {
    widget->AddBar(*bars_, panes::Place::RightSideBar);
  }
  driveBox_ = new DriveBox;
  driveBox_->Chosen = [this](const std::string& drive) { ChooseDrive(drive); };
  files->AddBeforePath(driveBox_);
  files->View().Drop = [this](const QStringList& paths) {
    EnterDropped(paths.first());
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
    // What is selected stays so, wherever the sort takes it.
    const panes::SelectionSet marked = panes::ByUnsortedIndex(widget.Pane(), widget.View().Marks().Selection);
    widget.Pane().ClickHeader(column);
    widget.Sync();
    widget.View().SetSelection(panes::FromUnsortedIndex(widget.Pane(), marked));
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
  status_ = new StatusPanels(this);
  status_->WarningChosen = [this] {
    if (!busy_.IsBusy()) RunAction(Action::ResetFilter);
  };
  status_->CountChosen = [this](StatusPanel panel) {
    if (busy_.IsBusy()) return;
    SetActiveView(panel == StatusPanel::Left ? PaneView::LZEBView : PaneView::RZEBView);
    RunAction(Action::ToggleHiding);
  };
  setStatusBar(status_);
}

}  // namespace velmora::ui
