// The text viewer: reads, finds and saves a text in a fixed font.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "run/front_ends.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace velmora::ui {

class TextViewer final : public QDialog {
 public:
  // What its buttons do; without a routine there is no such button.
  struct Uses {
    std::function<void()> Save;    // asks where to, and saves
    std::function<bool()> Delete;  // asks, and deletes what the text comes from; true closes the viewer
  };

  TextViewer(const QString& title, const QString& text, const Uses& uses, QWidget* parent);

  // Marks the next or the previous place of what the find field holds, going round at the end. Whether there
  // is any.
  bool Find(bool forward);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPushButton* AddButton(QHBoxLayout& row, const char* name, const QString& caption);

  QPlainTextEdit* text_;
  QLineEdit* find_;
  QLabel* notFound_;
};

}  // namespace velmora::ui
