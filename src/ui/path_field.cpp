#include "ui/path_field.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QPalette>

#include "ui/text.h"

namespace velmora::ui {

PathField::PathField(const QString& name, const QString& accessibleName, QWidget* parent)
    : QLineEdit(parent), candidates_(new QStringListModel(this)) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  auto* const completer = new QCompleter(candidates_, this);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  completer->setCompletionMode(QCompleter::PopupCompletion);
  completer->setModelSorting(QCompleter::UnsortedModel);
  setCompleter(completer);
  connect(this, &QLineEdit::textEdited, this, [this](const QString& typed) {
    if (Complete) candidates_->setStringList(Complete(typed));
  });
  Colour();
}

void PathField::ShowPath(const QString& path) {
  path_ = path;
  setText(path);
  setToolTip(PlainTip(path));
  setCursorPosition(0);
}

void PathField::SetActive(bool active) {
  active_ = active;
  Colour();
}

// The active pane's path stands on the colour of the selection, in bold; while it is typed in, it is an
// ordinary field.
void PathField::Colour() {
  QPalette palette = QApplication::palette(this);
  const bool stands = active_ && !hasFocus();
  if (stands) {
    palette.setColor(QPalette::Base, palette.color(QPalette::Highlight));
    palette.setColor(QPalette::Text, palette.color(QPalette::HighlightedText));
  }
  setPalette(palette);
  QFont bold = QApplication::font(this);
  bold.setBold(active_);
  setFont(bold);
}

void PathField::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    Entered(text());
    return;
  }
  if (event->key() == Qt::Key_Escape) {
    ShowPath(path_);
    Left();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void PathField::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  Colour();
}

void PathField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) ShowPath(path_);
  Colour();
}

void PathField::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::ThemeChange || event->type() == QEvent::ApplicationPaletteChange) Colour();
}

}  // namespace velmora::ui
