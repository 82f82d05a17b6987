// The menus, context menus and tool bars of the window, made from the table of commands.
#pragma once

#include <QAction>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

#include "panes/commands/visibility.h"

class QMenu;
class QMenuBar;
class QToolBar;

namespace velmora::ui {

class CommandBars final : public QObject {
 public:
  using Run = std::function<void(const panes::Command& command)>;

  CommandBars(Run run, QWidget* owner);

  void FillMenuBar(QMenuBar& bar);
  void FillToolBar(QToolBar& bar, panes::Place place);
  // A context menu, which stays the owner's.
  QMenu* ContextMenu(panes::Place place);
  QAction* ActionOf(const panes::Command& command) const;

  // Shows, enables and checks every command as the situation says.
  void Update(const panes::Situation& situation);

 private:
  QMenu* MakeMenu(panes::Place place);
  QAction* MakeAction(const panes::Command& command);

  struct TopMenu {
    const panes::Menu* Which;
    QMenu* Shown;
  };

  Run run_;
  QWidget* owner_;
  std::vector<QAction*> actions_;  // by IndexOf
  std::vector<TopMenu> topMenus_;
  std::map<panes::Place, QMenu*> contextMenus_;
};

}  // namespace velmora::ui
