// The main window: two panes, menus, tool bar, drive bar, row of function keys, status bar. It knows no rule:
// what a command does, and who sees it, stands in panes/commands; here the outcome is shown.
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "panes/commands/dispatch.h"
#include "panes/commands/filter_warning.h"
#include "panes/fill_watcher.h"
#include "panes/two_panes.h"
#include "startup/process.h"
#include "ui/command_bars.h"
#include "ui/drive_bar.h"
#include "ui/file_icons.h"
#include "ui/key_row.h"
#include "ui/pane_widget.h"
#include "ui/qt_front_end.h"
#include "ui/row_sizes.h"
#include "ui/status_panels.h"

class QSplitter;
class QStackedWidget;

namespace velmora::ui {

class MainWindow final : public QMainWindow, private panes::FillWatcher {
 public:
  MainWindow(startup::Context& context, QtFrontEnd& frontEnd);
  ~MainWindow() override;

  // InitMain: fills the panes, starts the timers, shows what the command line names.
  void InitMain();
  // Called once, when the process is to end or the session is another one.
  std::function<void(const panes::Outcome&)> Finished;
  // The session is gone: nothing of it is shown any more, no timer runs.
  void Unload();

  // Runs a command on the active view and shows what it leaves.
  void RunAction(panes::Action action);
  void Apply(panes::Outcome outcome);

  panes::CommandContext& Commands() { return commands_; }
  const StatusPanels& Status() const { return *status_; }
  PaneWidget& Widget(panes::PaneView view);
  PaneWidget& ActiveWidget() { return Widget(twoPanes_.ActiveView()); }
  void SetActiveView(panes::PaneView view);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  bool Breathe() override;  // while a list is filled

  // --- Controls. ---
  void MakeBars();
  void MakePanes();
  PaneWidget* MakePane(const PaneWidget::Names& names, panes::PaneView view);
  std::string PlaceOf(panes::PaneView view);
  void EnterDropped(const QString& hostPath);
  void ShowExternalProgram();
  void MakeStatusBar();
  void Connect(PaneWidget& widget, panes::PaneView view);
  // --- Geometry. ---
  void ShowGeometry(const settings::Options& options);
  void StoreGeometry();

  // --- Showing. ---
  void ShowLayout();
  void ShowViews(const panes::Outcome& outcome);
  void ShowStatus();
  void ShowBusy();
  void ShowFilterWarning();
  void ShowDrive();
  void UpdateCommands();
  panes::Situation Situation() const;
  panes::ViewMarks Marks() const;

  // --- Input. ---
  bool HandleKey(QKeyEvent& event);
  void RunCommand(const panes::Command& command);
  void ChooseDrive(const std::string& drive);
  void EnterPath(panes::PaneView view, const QString& path);
  void ShowContextMenu(panes::PaneView view, const QPoint& place);
  void RowChanged(panes::PaneView view);
  void Tick();
  void ShowMessage(const panes::MessageRequest& request);

  // --- Dialogs, each with what follows its OK. ---
  void ShowDialog(const panes::Outcome& outcome);
  void ShowPrepared(const panes::PreparedDialog& prepared);
  void OpenFilter();
  void OpenOptions();
  void OpenChangeServer();
  void OpenUserInfo(QWidget* parent);
  void OpenCopyMove(const panes::CopyMoveDialog::Parts& parts);
  void OpenMarker();
  void OpenNewArchive();
  void OpenPattern(panes::SelectionAction action);
  void OpenAddressExport();
  void OpenArchiveTree();
  void OpenSystemInformation();

  startup::Context& context_;
  QtFrontEnd& frontEnd_;
  panes::BusyState busy_;
  panes::TwoPanes twoPanes_;
  mailarchive::DesignSet designs_;
  panes::FormUserTexts formTexts_;
  panes::LastPatterns patterns_;
  panes::CommandContext commands_;
  panes::FilterWarning filterWarning_;
  RowIcons icons_;

  CommandBars* bars_ = nullptr;
  QToolBar* toolBar_ = nullptr;
  DriveBar* driveBar_ = nullptr;
  DriveBox* driveBox_ = nullptr;
  QSplitter* splitter_ = nullptr;
  QStackedWidget* right_ = nullptr;
  std::array<PaneWidget*, 3> widgets_{};  // by PaneView
  KeyRow* keyRow_ = nullptr;
  StatusPanels* status_ = nullptr;
  RowSizes* rowSizes_ = nullptr;
  QTimer interchangeTimer_, displayTimer_;
  bool isUpdatePending_ = false;
  bool isUnloaded_ = false;
  bool stopCount_ = false;  // Esc while a size is counted
};

}  // namespace velmora::ui
