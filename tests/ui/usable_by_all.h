// Whether everybody can use a window: names for screen readers, no mnemonic twice.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMap>

namespace velmora::ui {

inline QString NameOf(QWidget& widget) {
  QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(&widget);
  return seen == nullptr ? QString() : seen->text(QAccessible::Name);
}

// The text on a control that a mnemonic may stand in.
inline QString CaptionOf(const QWidget& widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
  if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) return group->title();
  const auto* label = qobject_cast<const QLabel*>(&widget);
  return label != nullptr && label->buddy() != nullptr ? label->text() : QString();
}

inline void ExpectUsableByAll(QWidget& window) {
  QMap<QString, QString> taken;
  for (QWidget* const widget : window.findChildren<QWidget*>()) {
    if (!widget->isVisibleTo(&window) || widget->objectName().startsWith("qt_")) continue;
    if (widget->focusPolicy() != Qt::NoFocus) {
      EXPECT_FALSE(NameOf(*widget).isEmpty())
          << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
    const QString key = QKeySequence::mnemonic(CaptionOf(*widget)).toString();
    if (key.isEmpty()) continue;
    EXPECT_FALSE(taken.contains(key)) << key.toStdString() << ": " << CaptionOf(*widget).toStdString()
                                      << " and " << taken.value(key).toStdString();
    taken.insert(key, CaptionOf(*widget));
  }
}

}  // namespace velmora::ui
