#include "ui/key_text.h"

#include <QKeySequence>

namespace velmora::ui {
namespace {

constexpr Qt::KeyboardModifiers Kept = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;

bool IsSelectionKey(int key) {
  return key == Qt::Key_Asterisk || key == Qt::Key_Plus || key == Qt::Key_Minus;
}
// A character that is neither a letter nor a digit: whether it needs Shift is the layout's business.
bool IsSymbol(int key) {
  return key > Qt::Key_Space && key < Qt::Key_nobreakspace && !(key >= Qt::Key_A && key <= Qt::Key_Z) &&
         !(key >= Qt::Key_0 && key <= Qt::Key_9);
}

}  // namespace

std::string KeyText(const QKeyEvent& event) {
  int key = event.key();
  Qt::KeyboardModifiers modifiers = event.modifiers() & Kept;
  if (IsSymbol(key)) modifiers &= ~Qt::KeyboardModifiers(Qt::ShiftModifier);
  if (event.modifiers().testFlag(Qt::KeypadModifier) && IsSelectionKey(key)) modifiers |= Qt::KeypadModifier;
  if (key == Qt::Key_Backtab) {
    key = Qt::Key_Tab;
    modifiers &= ~Qt::KeyboardModifiers(Qt::ShiftModifier);
  }
  return QKeySequence(QKeyCombination(modifiers, Qt::Key(key)))
      .toString(QKeySequence::PortableText)
      .toStdString();
}

}  // namespace velmora::ui
