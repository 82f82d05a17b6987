// The whole tree of archives. Nodes are read when they are expanded.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <string_view>

#include "panes/archive_nodes.h"

class QCheckBox;
class QTreeWidget;
class QTreeWidgetItem;

namespace velmora::ui {

class ArchiveTreeDialog final : public QDialog {
 public:
  ArchiveTreeDialog(store::Session& session, QWidget* parent);

  // A path in any form that the store takes; one that it does not know selects the root.
  void SelectArchive(std::string_view path);
  // FullPath of the selected archive, "" without one.
  std::string SelectedPath() const;
  // Its physical directory, of a link its target's: several archives may have one path.
  std::string SelectedId() const;

  // Shows the box that keeps a list in step: `follow` runs with each archive selected while it is checked.
  void ShowSync(bool isOn, std::function<void(const std::string& id)> follow);
  bool IsSyncOn() const;

 private:
  void Load(QTreeWidgetItem& item);
  void Decorate(QTreeWidgetItem& item);
  panes::ArchiveNode* NodeOf(const QTreeWidgetItem* item) const;

  store::Session& session_;
  panes::ArchiveNodes nodes_;
  QTreeWidget* tree_;
  QCheckBox* sync_;
  std::function<void(const std::string& id)> follow_;
};

}  // namespace velmora::ui
