// The drives as buttons and as a list box.
#pragma once

#include <QComboBox>
#include <QToolBar>
#include <functional>
#include <string>
#include <vector>

#include "panes/commands/drive_bar.h"

namespace velmora::ui {

class DriveBar final : public QToolBar {
 public:
  explicit DriveBar(QWidget* parent = nullptr);

  std::function<void(const std::string& drive)> Chosen;

  void ShowDrives(const std::vector<panes::DriveButton>& drives);
  void SetCurrent(const std::string& drive);  // "" for none
};

// Up, Down, PageUp and PageDown move without changing the drive; Enter, or a choice from the open list, does.
class DriveBox final : public QComboBox {
 public:
  explicit DriveBox(QWidget* parent = nullptr);

  std::function<void(const std::string& drive)> Chosen;

  void ShowDrives(const std::vector<panes::DriveButton>& drives);
  void SetCurrent(const std::string& drive);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Choose();
};

}  // namespace velmora::ui
