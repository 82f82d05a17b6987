// The main window as a person meets it.

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using panes::PaneView;

TEST_F(WindowTest, MenusOpenByTheirMnemonics) {
  OpenWindow();
  Left().setFocus();
  QTest::keyClick(&Left(), Qt::Key_B, Qt::AltModifier);
  Settle();
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(QApplication::activePopupWidget()->objectName(), "MnCommands");
  QApplication::activePopupWidget()->close();
}

}  // namespace
}  // namespace velmora::ui
