// What is chosen in a list or tree is what a person sees there.

#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>

#include "ui/user_chooser.h"
#include "ui_fixture.h"

namespace velmora::ui {
namespace {

using panes::Action;

TEST_F(WindowTest, AUserThatTheFilterHidesIsNotChosen) {
  StartSession();
  const auto users = context().session.Account->Users();
  ASSERT_TRUE(users.has_value());
  ASSERT_GE(users->size(), 2u);
  UserChooser chooser("Benutzer", *users, nullptr);
  auto& list = Find<QListWidget>(chooser, "UserList");
  auto& filter = Find<QLineEdit>(chooser, "InpFilter");
  const QListWidgetItem* const last = list.item(list.count() - 1);
  filter.setText(last->text());
  EXPECT_EQ(chooser.SelectedName(), FromQt(last->data(Qt::UserRole).toString()));
  filter.setText("Niemand heißt so");
  EXPECT_EQ(chooser.SelectedName(), "");
  filter.clear();
  EXPECT_EQ(chooser.SelectedName(), FromQt(list.item(0)->data(Qt::UserRole).toString()));
}

TEST_F(WindowTest, OfArchivesWithOneNameTheTreeOpensTheChosenOne) {
  std::shared_ptr<store::DvArchive> second;
  OnSession = [&] {
    MakeArchive("Doppelt");
    second = MakeArchive("Doppelt");
  };
  MainWindow& main = OpenWindow();
  DialogDriver driver("ArchiveTree", [](QWidget& dialog) {
    auto& tree = Find<QTreeWidget>(dialog, "ArchiveTreeView");
    QTreeWidgetItem* const root = tree.topLevelItem(0);
    for (int i = 0; i < root->childCount(); ++i) {
      if (root->child(i)->text(0) == "Doppelt") tree.setCurrentItem(root->child(i));  // the second at last
    }
    Press(dialog, "OkButton");
  });
  main.RunAction(Action::ShowArchiveTree);
  EXPECT_TRUE(driver.Done());
  EXPECT_EQ(main.Commands().Panes.Left().CurrentArchive()->ID(), second->ID());
}

}  // namespace
}  // namespace velmora::ui
