#include "ui/user_chooser.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

#include "ui/prompts.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr QSize ChooserSize(360, 420);
constexpr int NameRole = Qt::UserRole;

}  // namespace

UserChooser::UserChooser(const QString& title, const std::vector<std::unique_ptr<store::DvUser>>& users,
                         QWidget* parent)
    : QDialog(parent), list_(new QListWidget) {
  setObjectName("UserChooser");
  setWindowTitle(title);
  resize(ChooserSize);
  auto* const filter = new QLineEdit;
  filter->setObjectName("InpFilter");
  filter->setAccessibleName("Benutzer suchen");
  filter->setPlaceholderText("Suchen");
  filter->setClearButtonEnabled(true);
  list_->setObjectName("UserList");
  list_->setAccessibleName("Benutzer");
  list_->setUniformItemSizes(true);
  for (const auto& user : users) {
    const QString name = ToQt(user->Name());
    auto* const item = new QListWidgetItem(name + "  (" + ToQt(user->Mailaddress()) + ")", list_);
    item->setData(NameRole, name);
  }
  list_->sortItems();
  list_->setCurrentRow(0);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(filter);
  layout->addWidget(list_, 1);
  layout->addWidget(MakeOkCancel(*this));
  connect(filter, &QLineEdit::textChanged, this, &UserChooser::Filter);
  connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
}

// What is chosen is always one that is seen.
void UserChooser::Filter(const QString& text) {
  QListWidgetItem* first = nullptr;
  for (int row = 0; row < list_->count(); ++row) {
    QListWidgetItem* const item = list_->item(row);
    item->setHidden(!item->text().contains(text, Qt::CaseInsensitive));
    if (first == nullptr && !item->isHidden()) first = item;
  }
  const QListWidgetItem* const current = list_->currentItem();
  if (current == nullptr || current->isHidden()) list_->setCurrentItem(first);
}

std::string UserChooser::SelectedName() const {
  const QListWidgetItem* item = list_->currentItem();
  return item == nullptr ? std::string() : FromQt(item->data(NameRole).toString());
}

}  // namespace velmora::ui
