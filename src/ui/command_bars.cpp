#include "ui/command_bars.h"

#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <QWidget>
#include <utility>

#include "panes/commands/key_table.h"
#include "ui/icons.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

// The text of a menu entry shows the key behind a tab. The key itself is no shortcut of the toolkit: what it
// does depends on the view.
QString MenuText(const panes::Command& command) {
  const std::string_view key = panes::ShownKeyOf(command.Runs);
  return key.empty() ? ToQt(command.Caption) : ToQt(command.Caption) + "\t" + ToQt(key);
}

}  // namespace

CommandBars::CommandBars(Run run, QWidget* owner) : QObject(owner), run_(std::move(run)), owner_(owner) {
  for (const panes::Command& command : panes::Commands()) {
    actions_.push_back(MakeAction(command));
  }
}

QAction* CommandBars::MakeAction(const panes::Command& command) {
  auto* const action = new QAction(MenuText(command), this);
  action->setObjectName(ToQt(command.Id));
  action->setIconText(ToQt(panes::PlainCaption(command.Caption)));
  action->setToolTip(ToQt(panes::ToolTipOf(command)));
  action->setCheckable(command.IsCheckable);
  if (!command.IconKey.empty()) action->setIcon(IconOf(command.IconKey));
  connect(action, &QAction::triggered, this, [this, &command] { run_(command); });
  return action;
}

QAction* CommandBars::ActionOf(const panes::Command& command) const {
  return actions_[panes::IndexOf(command)];
}

QMenu* CommandBars::MakeMenu(panes::Place place) {
  auto* const menu = new QMenu(owner_);
  menu->setToolTipsVisible(true);
  for (const panes::Command& command : panes::CommandsOf(place)) {
    if (command.StartsGroup) menu->addSeparator();
    QAction* const action = ActionOf(command);
    if (command.OpensMenu()) action->setMenu(MakeMenu(panes::SubMenuOf(command)));
    menu->addAction(action);
  }
  return menu;
}

void CommandBars::FillMenuBar(QMenuBar& bar) {
  for (const panes::Menu& menu : panes::MainMenus()) {
    QMenu* const made = MakeMenu(menu.Holds);
    made->setTitle(ToQt(menu.Caption));
    made->setObjectName(ToQt(menu.Id));
    bar.addMenu(made);
    topMenus_.push_back({&menu, made});
  }
}

void CommandBars::FillToolBar(QToolBar& bar, panes::Place place) {
  for (const panes::Command& command : panes::CommandsOf(place)) {
    if (command.StartsGroup) bar.addSeparator();
    QAction* const action = ActionOf(command);
    bar.addAction(action);
    if (auto* const button = qobject_cast<QToolButton*>(bar.widgetForAction(action))) {
      button->setObjectName(action->objectName());
      button->setAccessibleName(action->iconText());
      button->setFocusPolicy(Qt::NoFocus);
    }
  }
}

QMenu* CommandBars::ContextMenu(panes::Place place) {
  QMenu*& menu = contextMenus_[place];
  if (menu == nullptr) menu = MakeMenu(place);
  return menu;
}

void CommandBars::Update(const panes::Situation& situation) {
  for (const panes::Command& command : panes::Commands()) {
    const panes::CommandState state = panes::StateOf(command, situation);
    QAction* const action = ActionOf(command);
    action->setVisible(state.IsVisible);
    action->setEnabled(state.IsEnabled);
    if (command.IsCheckable) action->setChecked(state.IsChecked);
    // That of the external program is its command line, which the window knows.
    if (command.Runs == panes::Action::ExternalApplication) continue;
    const QString tip = ToQt(panes::ToolTipOf(command, situation));
    if (action->toolTip() != tip) action->setToolTip(tip);
  }
  for (const TopMenu& menu : topMenus_) {
    menu.Shown->menuAction()->setVisible(panes::IsMenuVisible(*menu.Which, situation));
    menu.Shown->menuAction()->setEnabled(panes::IsMenuEnabled(situation));
  }
}

}  // namespace velmora::ui
