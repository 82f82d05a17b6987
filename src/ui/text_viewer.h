// The text viewer: reads, finds and saves a text in a fixed font.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "run/front_ends.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace velmora::ui {

class TextViewer final : public QDialog {
 public:
  using Save = std::function<void()>;

  // `save` asks where to and saves; without it there is no such button.
  TextViewer(const QString& title, const QString& text, Save save, QWidget* parent);

  // Marks the next or the previous place of what the find field holds, going round at the end. Whether there
  // is any.
  bool Find(bool forward);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPlainTextEdit* text_;
  QLineEdit* find_;
  QLabel* notFound_;
};

}  // namespace velmora::ui
