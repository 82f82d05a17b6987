#include "ui/archive_tree_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <vector>

#include "panes/display_text.h"
#include "ui/icons.h"
#include "ui/prompts.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr QSize TreeSize(420, 520);
constexpr int NodeRole = Qt::UserRole;

QTreeWidgetItem* MakeItem(panes::ArchiveNode& node) {
  auto* const item = new QTreeWidgetItem({ToQt(panes::DisplayText(node.DisplayName))});
  item->setData(0, NodeRole, QVariant::fromValue(static_cast<void*>(&node)));
  item->setChildIndicatorPolicy(node.MayHaveChildren ? QTreeWidgetItem::ShowIndicator
                                                     : QTreeWidgetItem::DontShowIndicator);
  return item;
}

}  // namespace

ArchiveTreeDialog::ArchiveTreeDialog(store::Session& session, QWidget* parent)
    : QDialog(parent),
      session_(session),
      nodes_(session),
      tree_(new QTreeWidget),
      sync_(new QCheckBox(ToQt(panes::ArchiveNodes::SyncCaption))) {
  setObjectName("ArchiveTree");
  setWindowTitle(ToQt(panes::ArchiveNodes::Caption));
  resize(TreeSize);
  tree_->setObjectName("ArchiveTreeView");
  tree_->setAccessibleName("Archivstruktur");
  tree_->setHeaderHidden(true);
  tree_->setUniformRowHeights(true);
  sync_->setObjectName("EnRefreshArchive");
  sync_->hide();
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(tree_, 1);
  layout->addWidget(sync_);
  layout->addWidget(MakeOkCancel(*this));

  connect(tree_, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
    Load(*item);
    Decorate(*item);
  });
  connect(tree_, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* item) { Decorate(*item); });
  connect(tree_, &QTreeWidget::currentItemChanged, this, [this] {
    if (follow_ && sync_->isChecked()) follow_(SelectedId());
  });
  QTreeWidgetItem* const root = MakeItem(nodes_.Root());
  tree_->addTopLevelItem(root);
  Decorate(*root);
  root->setExpanded(true);
  tree_->setCurrentItem(root);
}

panes::ArchiveNode* ArchiveTreeDialog::NodeOf(const QTreeWidgetItem* item) const {
  return item == nullptr ? nullptr : static_cast<panes::ArchiveNode*>(item->data(0, NodeRole).value<void*>());
}

void ArchiveTreeDialog::Decorate(QTreeWidgetItem& item) {
  item.setIcon(0, IconOf(NodeOf(&item)->IconKey(item.isExpanded())));
}

void ArchiveTreeDialog::Load(QTreeWidgetItem& item) {
  if (item.childCount() > 0) return;
  panes::ArchiveNode& node = *NodeOf(&item);
  if (const Status expanded = nodes_.Expand(node); !expanded) {
    item.setToolTip(0, PlainTip(ToQt(expanded.error().Text)));
  }
  for (const auto& child : node.Children) {
    QTreeWidgetItem* const made = MakeItem(*child);
    item.addChild(made);
    Decorate(*made);
  }
  if (node.Children.empty()) item.setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicator);
}

void ArchiveTreeDialog::SelectArchive(std::string_view path) {
  const auto archive = session_.Account->GetArchive(path);
  panes::ArchiveNode* node = archive ? nodes_.Find(**archive) : nullptr;
  if (node == nullptr) return;
  std::vector<panes::ArchiveNode*> way;
  for (; node->Parent != nullptr; node = node->Parent) way.push_back(node);
  QTreeWidgetItem* item = tree_->topLevelItem(0);
  for (auto step = way.rbegin(); step != way.rend(); ++step) {
    Load(*item);
    item->setExpanded(true);
    for (int i = 0; i < item->childCount(); ++i) {
      if (NodeOf(item->child(i)) == *step) {
        item = item->child(i);
        break;
      }
    }
  }
  tree_->setCurrentItem(item);
  tree_->scrollToItem(item);
}

std::string ArchiveTreeDialog::SelectedId() const {
  const panes::ArchiveNode* node = NodeOf(tree_->currentItem());
  return node == nullptr ? std::string() : node->ID;
}

std::string ArchiveTreeDialog::SelectedPath() const {
  const panes::ArchiveNode* node = NodeOf(tree_->currentItem());
  return node == nullptr ? std::string() : node->FullPath;
}

void ArchiveTreeDialog::ShowSync(bool isOn, std::function<void(const std::string& id)> follow) {
  sync_->setChecked(isOn);
  sync_->show();
  follow_ = std::move(follow);
}

bool ArchiveTreeDialog::IsSyncOn() const { return sync_->isChecked(); }

}  // namespace velmora::ui
