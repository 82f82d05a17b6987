// Chooses one of the server's users.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "store/account.h"

class QListWidget;

namespace velmora::ui {

class UserChooser final : public QDialog {
 public:
  UserChooser(const QString& title, const std::vector<std::unique_ptr<store::DvUser>>& users,
              QWidget* parent);

  // "" where the filter leaves none.
  std::string SelectedName() const;

 private:
  void Filter(const QString& text);

  QListWidget* list_;
};

}  // namespace velmora::ui
