// What the dialogs are put together from: controls that bear their given names.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <string_view>

#include "ui/prompts.h"
#include "ui/text.h"

namespace velmora::ui {

inline constexpr int FieldWidth = 360;
inline constexpr int GroupSpacing = 8;
inline constexpr int TextMargin = 2;  // of a label: the dots of capital letters are cut off without

template <typename Control>
Control* Named(Control* control, std::string_view name, std::string_view accessibleName,
               std::string_view tip = {}) {
  control->setObjectName(ToQt(name));
  control->setAccessibleName(ToQt(accessibleName).remove('&'));
  control->setToolTip(PlainTip(ToQt(tip).replace("\r\n", "\n")));
  return control;
}

inline QCheckBox* MakeCheckBox(std::string_view name, std::string_view caption, std::string_view tip = {}) {
  return Named(new QCheckBox(PlainCaption(caption)), name, caption, tip);
}
inline QRadioButton* MakeRadioButton(std::string_view name, std::string_view caption,
                                     std::string_view tip = {}) {
  return Named(new QRadioButton(PlainCaption(caption)), name, caption, tip);
}
// A button that Enter in a field does not press.
inline QPushButton* MakeButton(std::string_view name, const QString& caption, std::string_view tip = {}) {
  auto* const button = new QPushButton(caption);
  button->setAutoDefault(false);
  return Named(button, name, FromQt(caption), tip);
}
// A field with its label in front.
inline QLineEdit* AddField(QFormLayout& form, std::string_view name, std::string_view caption,
                           std::string_view text, std::string_view tip = {}) {
  auto* const field = Named(new QLineEdit(ToQt(text)), name, caption, tip);
  field->setMinimumWidth(FieldWidth);
  form.addRow(PlainCaption(caption), field);
  return field;
}

// The texts of the program's frames have blanks around them, which the toolkit has already.
inline QGroupBox* MakeFrame(std::string_view name, std::string_view caption, std::string_view tip = {}) {
  return Named(new QGroupBox(PlainCaption(caption).trimmed()), name, caption, tip);
}

// The sentence on top of a dialog that says what it is about.
inline QLabel* MakeSourceText(std::string_view text) {
  auto* const source = Named(new QLabel(ToQt(text).replace("\r\n", "\n")), "CMSrc", "Quelle");
  source->setTextFormat(Qt::PlainText);
  source->setWordWrap(true);
  source->setMargin(TextMargin);
  source->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return source;
}

inline void SetTitle(QDialog& dialog, const char* name, std::string_view title) {
  dialog.setObjectName(name);
  dialog.setWindowTitle(ToQt(title));
}

}  // namespace velmora::ui
