// The status bar of the main window: what the program does, what each list holds, the rights of the user, and
// the picture that warns of a filter.
#pragma once

#include <QStatusBar>
#include <array>
#include <functional>
#include <string_view>

class QLabel;
class QToolButton;

namespace velmora::ui {

enum class StatusPanel { State, Left, Right, Mode };

class StatusPanels final : public QStatusBar {
 public:
  explicit StatusPanels(QWidget* parent = nullptr);

  // A double click; while nothing stands there it is for nobody.
  std::function<void()> WarningChosen;
  std::function<void(StatusPanel)> CountChosen;  // Left or Right

  QString Text(StatusPanel panel) const;
  void SetText(StatusPanel panel, const QString& text);
  // A picture stands before the count of a list that could hide entries, and the tool tip says whether it
  // does; "" for any other list.
  void ShowHiding(StatusPanel panel, std::string_view tip);
  void ShowWarning(bool isShown);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLabel& At(StatusPanel panel) const { return *panels_[static_cast<std::size_t>(panel)]; }

  std::array<QLabel*, 4> panels_{};
  std::array<QLabel*, 4> pictures_{};  // null for a panel without
  QToolButton* warning_;
};

}  // namespace velmora::ui
