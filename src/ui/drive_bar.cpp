#include "ui/drive_bar.h"

#include <QAction>
#include <QKeyEvent>
#include <QToolButton>
#include <QWheelEvent>
#include <algorithm>

#include "ui/icons.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr int IconSize = 16;
constexpr int BoxCharacters = 8;
constexpr int PageStep = 5;

}  // namespace

DriveBar::DriveBar(QWidget* parent) : QToolBar("Laufwerke", parent) {
  setObjectName("DriveBar");
  setAccessibleName("Laufwerke");
  setMovable(false);
  setIconSize(QSize(IconSize, IconSize));
  setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

void DriveBar::ShowDrives(const std::vector<panes::DriveButton>& drives) {
  clear();
  for (const panes::DriveButton& drive : drives) {
    QAction* const action = addAction(IconOf(drive.IconKey), PlainCaption(drive.Caption));
    action->setObjectName(ToQt(drive.Key));
    action->setToolTip(PlainTip(ToQt(drive.ToolTip)));
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this, key = drive.Key] { Chosen(key); });
    widgetForAction(action)->setFocusPolicy(Qt::NoFocus);
  }
}

void DriveBar::SetCurrent(const std::string& drive) {
  for (QAction* const action : actions()) action->setChecked(action->objectName() == ToQt(drive));
}

DriveBox::DriveBox(QWidget* parent) : QComboBox(parent) {
  setObjectName("DrvBox");
  setAccessibleName("Laufwerk");
  setMinimumContentsLength(BoxCharacters);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(this, &QComboBox::activated, this, &DriveBox::Choose);  // a choice from the open list
}

void DriveBox::ShowDrives(const std::vector<panes::DriveButton>& drives) {
  clear();
  for (const panes::DriveButton& drive : drives) {
    addItem(IconOf(drive.IconKey), ToQt(drive.Caption), ToQt(drive.Key));
    setItemData(count() - 1, PlainTip(ToQt(drive.ToolTip)), Qt::ToolTipRole);
  }
}

void DriveBox::SetCurrent(const std::string& drive) {
  setCurrentIndex(findData(ToQt(drive)));
  setToolTip(currentData(Qt::ToolTipRole).toString());
}

void DriveBox::Choose() {
  if (currentIndex() >= 0) Chosen(FromQt(currentData().toString()));
}

void DriveBox::keyPressEvent(QKeyEvent* event) {
  const auto moveBy = [this](int step) {
    if (count() > 0) setCurrentIndex(std::clamp(currentIndex() + step, 0, count() - 1));
  };
  switch (event->key()) {
    case Qt::Key_Up:
      moveBy(-1);
      return;
    case Qt::Key_Down:
      if (event->modifiers().testFlag(Qt::AltModifier)) break;  // opens the list
      moveBy(1);
      return;
    case Qt::Key_PageUp:
      moveBy(-PageStep);
      return;
    case Qt::Key_PageDown:
      moveBy(PageStep);
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Choose();
      return;
    default:
      break;
  }
  QComboBox::keyPressEvent(event);
}

// A wheel that scrolls by chance must not change the drive.
void DriveBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace velmora::ui
