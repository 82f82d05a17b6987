// The row of buttons for the function keys F1 to F12.
#pragma once

#include <QPushButton>
#include <QWidget>
#include <array>
#include <functional>

#include "panes/commands/visibility.h"

namespace velmora::ui {

class KeyRow final : public QWidget {
 public:
  static constexpr int KeyCount = 12;

  explicit KeyRow(QWidget* parent = nullptr);

  std::function<void(panes::Action)> Pressed;

  // Captions and what is enabled, for the active view.
  void Update(const panes::Situation& situation);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ShowCaptions();

  std::array<QPushButton*, KeyCount> buttons_{};
  std::array<panes::Action, KeyCount> actions_{};
  std::array<QString, KeyCount> captions_;
};

}  // namespace velmora::ui
