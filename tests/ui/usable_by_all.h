// Whether everybody can use a window: names for screen readers, no mnemonic twice, a dialog by keys alone.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QDialog>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMap>
#include <QPushButton>
#include <algorithm>
#include <vector>

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

// The controls of a dialog that Tab goes through, in its order, from the uppermost one on.
inline std::vector<QWidget*> TabOrder(const QWidget& window) {
  std::vector<QWidget*> order;
  for (QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
    const bool takesTab = (next->focusPolicy() & Qt::TabFocus) != 0 && next->focusProxy() == nullptr;
    if (takesTab && next->isEnabled() && next->isVisibleTo(&window)) order.push_back(next);
  }
  const auto height = [&](const QWidget* control) { return control->mapTo(&window, QPoint()).y(); };
  std::ranges::rotate(order, std::ranges::min_element(order, {}, height));
  return order;
}

// Tab goes on to the right or down; where it goes up, a new column begins further to the right.
inline void ExpectTabFollowsTheEye(const QWidget& window) {
  const std::vector<QWidget*> order = TabOrder(window);
  for (std::size_t i = 1; i < order.size(); ++i) {
    const QPoint from = order[i - 1]->mapTo(&window, order[i - 1]->rect().center());
    const QPoint left = order[i - 1]->mapTo(&window, QPoint());
    const QPoint to = order[i]->mapTo(&window, order[i]->rect().center());
    const QPoint next = order[i]->mapTo(&window, QPoint());
    const bool goesUp = to.y() < from.y() - order[i]->height() / 2;
    EXPECT_FALSE(goesUp && next.x() <= left.x())
        << order[i - 1]->objectName().toStdString() << " -> " << order[i]->objectName().toStdString();
  }
}

// Enter presses one button, and that does what the dialog is for.
inline void ExpectOneDefaultButton(const QDialog& dialog) {
  const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
  int defaults = 0;
  for (const QPushButton* const button : buttons) {
    if (!button->isDefault()) continue;
    ++defaults;
    EXPECT_TRUE(button->objectName() != "CancelButton" || buttons.size() == 1);
  }
  EXPECT_EQ(defaults, 1) << dialog.objectName().toStdString();
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
  if (const auto* dialog = qobject_cast<QDialog*>(&window)) {
    ExpectTabFollowsTheEye(*dialog);
    ExpectOneDefaultButton(*dialog);
  }
}

}  // namespace velmora::ui
