#include "ui/text_viewer.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace velmora::ui {
namespace {

constexpr QSize TextViewerSize(820, 560);

}  // namespace

TextViewer::TextViewer(const QString& title, const QString& text, const Uses& uses, QWidget* parent)
    : QDialog(parent), text_(new QPlainTextEdit), find_(new QLineEdit), notFound_(new QLabel) {
  setObjectName("TextViewer");
  setWindowTitle(title);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  resize(TextViewerSize);

  text_->setObjectName("ViewText");
  text_->setAccessibleName(title);
  text_->setReadOnly(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setPlainText(text);

  auto* const caption = new QLabel("&Suchen:");
  find_->setObjectName("InpFind");
  find_->setAccessibleName("Suchen");
  find_->setClearButtonEnabled(true);
  caption->setBuddy(find_);
  auto* const row = new QHBoxLayout;
  row->addWidget(caption);
  row->addWidget(find_, 1);
  QPushButton* const next = AddButton(*row, "FindButton", "&Weitersuchen");
  next->setToolTip("Nächste Fundstelle [F3], vorherige [Umschalt+F3]");
  notFound_->setObjectName("L_NotFound");
  row->addWidget(notFound_);
  row->addStretch(1);
  if (uses.Delete) {
    connect(AddButton(*row, "DeleteButton", "&Löschen"), &QPushButton::clicked, this,
            [this, remove = uses.Delete] {
              if (remove()) close();
            });
  }
  if (uses.Save) {
    connect(AddButton(*row, "SaveButton", "S&peichern unter ..."), &QPushButton::clicked, this, uses.Save);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this, uses.Save);
  }
  QPushButton* const close = AddButton(*row, "CancelButton", "S&chließen");
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(text_, 1);
  layout->addLayout(row);

  connect(next, &QPushButton::clicked, this, [this] { (void)Find(true); });  // the label tells
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  connect(find_, &QLineEdit::textChanged, notFound_, &QLabel::clear);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
    find_->setFocus();
    find_->selectAll();
  });
  text_->setFocus();
}

QPushButton* TextViewer::AddButton(QHBoxLayout& row, const char* name, const QString& caption) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setAutoDefault(false);  // Enter finds
  row.addWidget(button);
  return button;
}

bool TextViewer::Find(bool forward) {
  const QString wanted = find_->text();
  if (wanted.isEmpty()) {
    find_->setFocus();
    return false;
  }
  const QTextDocument::FindFlags flags = forward ? QTextDocument::FindFlags() : QTextDocument::FindBackward;
  bool found = text_->find(wanted, flags);
  if (!found) {
    const QTextCursor before = text_->textCursor();
    text_->moveCursor(forward ? QTextCursor::Start : QTextCursor::End);
    found = text_->find(wanted, flags);
    if (!found) text_->setTextCursor(before);
  }
  notFound_->setText(found ? QString() : "Nicht gefunden");
  return found;
}

void TextViewer::keyPressEvent(QKeyEvent* event) {
  const bool isFindKey =
      event->key() == Qt::Key_F3 ||
      (find_->hasFocus() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter));
  if (isFindKey) {
    (void)Find(!event->modifiers().testFlag(Qt::ShiftModifier));  // the label tells
    return;
  }
  QDialog::keyPressEvent(event);
}

}  // namespace velmora::ui
