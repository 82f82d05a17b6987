// Message boxes, questions and the input line.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QWidget>

#include "run/front_ends.h"

class QDialogButtonBox;

namespace velmora::ui {

// What a box belongs to: the open dialog, else the main window; null before there is any.
QWidget* BoxParent();
// A box "OK" and "Abbrechen" whose names follow the program's dialogs (OkButton, CancelButton); accepts and
// rejects the dialog.
QDialogButtonBox* MakeOkCancel(QDialog& dialog);

// While a box waits for its answer the pointer does not tell to wait.
class AnswerCursor {
 public:
  AnswerCursor() {
    if (changes_) QApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  AnswerCursor(const AnswerCursor&) = delete;
  AnswerCursor& operator=(const AnswerCursor&) = delete;
  ~AnswerCursor() {
    if (changes_) QApplication::restoreOverrideCursor();
  }

 private:
  bool changes_ = QApplication::overrideCursor() != nullptr;
};

class QtPrompts final : public run::Prompts {
 public:
  void Message(std::string_view title, std::string_view text, run::Icon icon) override;
  run::Answer Question(std::string_view title, std::string_view text, run::Buttons buttons,
                       run::Answer defaultAnswer) override;
  std::optional<std::string> InputLine(std::string_view title, std::string_view label,
                                       std::string_view value) override;
};

}  // namespace velmora::ui
