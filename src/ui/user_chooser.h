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

  std::string SelectedName() const;

 private:
  QListWidget* list_;
};

}  // namespace velmora::ui
