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
  connect(filter, &QLineEdit::textChanged, this, [this](const QString& text) {
    for (int row = 0; row < list_->count(); ++row) {
      list_->item(row)->setHidden(!list_->item(row)->text().contains(text, Qt::CaseInsensitive));
    }
  });
  connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
}

std::string UserChooser::SelectedName() const {
  const QListWidgetItem* item = list_->currentItem();
  return item == nullptr ? std::string() : FromQt(item->data(NameRole).toString());
}

}  // namespace velmora::ui
