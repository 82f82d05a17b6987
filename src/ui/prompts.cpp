#include "ui/prompts.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QVBoxLayout>
#include <array>
#include <span>

#include "ui/text.h"

namespace velmora::ui {
namespace {

using run::Answer;
using run::Buttons;

constexpr int InputWidth = 380;

struct AnswerButton {
  Answer Value;
  const char* Caption;
  const char* Name;
  QMessageBox::ButtonRole Role;
};

constexpr AnswerButton Yes = {Answer::Yes, "&Ja", "YesButton", QMessageBox::YesRole};
constexpr AnswerButton No = {Answer::No, "&Nein", "NoButton", QMessageBox::NoRole};
constexpr AnswerButton Ok = {Answer::Ok, "OK", "OkButton", QMessageBox::AcceptRole};
constexpr AnswerButton Cancel = {Answer::Cancel, "Abbrechen", "CancelButton", QMessageBox::RejectRole};

// The last one is what Esc and the closing of the box mean.
constexpr std::array YesNoButtons = {Yes, No};
constexpr std::array YesNoCancelButtons = {Yes, No, Cancel};
constexpr std::array OkCancelButtons = {Ok, Cancel};

std::span<const AnswerButton> ButtonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::YesNo:
      return YesNoButtons;
    case Buttons::YesNoCancel:
      return YesNoCancelButtons;
    case Buttons::OkCancel:
      break;
  }
  return OkCancelButtons;
}

QMessageBox::Icon IconOfBox(run::Icon icon) {
  switch (icon) {
    case run::Icon::Information:
      return QMessageBox::Information;
    case run::Icon::Question:
      return QMessageBox::Question;
    case run::Icon::Exclamation:
      return QMessageBox::Warning;
    case run::Icon::Stop:
      return QMessageBox::Critical;
    case run::Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// Names of files and subjects stand in the texts: nothing in them is markup.
void Fill(QMessageBox& box, std::string_view title, std::string_view text) {
  box.setWindowTitle(ToQt(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(text).replace("\r\n", "\n"));
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
}

}  // namespace

QWidget* BoxParent() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return QApplication::activeWindow();
}

QDialogButtonBox* MakeOkCancel(QDialog& dialog) {
  auto* const box = new QDialogButtonBox(&dialog);
  QPushButton* const ok = box->addButton("OK", QDialogButtonBox::AcceptRole);
  ok->setObjectName("OkButton");
  ok->setDefault(true);
  box->addButton("Abbrechen", QDialogButtonBox::RejectRole)->setObjectName("CancelButton");
  QObject::connect(box, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(box, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  return box;
}

void QtPrompts::Message(std::string_view title, std::string_view text, run::Icon icon) {
  QMessageBox box(BoxParent());
  Fill(box, title, text);
  box.setIcon(IconOfBox(icon));
  box.addButton("OK", QMessageBox::AcceptRole)->setObjectName("OkButton");
  const AnswerCursor cursor;
  box.exec();
}

Answer QtPrompts::Question(std::string_view title, std::string_view text, Buttons buttons,
                           Answer defaultAnswer) {
  QMessageBox box(BoxParent());
  Fill(box, title, text);
  box.setIcon(QMessageBox::Question);
  const std::span<const AnswerButton> offered = ButtonsOf(buttons);
  std::vector<QAbstractButton*> added;
  for (const AnswerButton& button : offered) {
    QPushButton* const made = box.addButton(button.Caption, button.Role);
    made->setObjectName(button.Name);
    if (button.Value == defaultAnswer) box.setDefaultButton(made);
    added.push_back(made);
  }
  box.setEscapeButton(added.back());
  const AnswerCursor cursor;
  box.exec();
  for (std::size_t i = 0; i < added.size(); ++i) {
    if (box.clickedButton() == added[i]) return offered[i].Value;
  }
  return offered.back().Value;
}

std::optional<std::string> QtPrompts::InputLine(std::string_view title, std::string_view label,
                                                std::string_view value) {
  QDialog dialog(BoxParent());
  dialog.setObjectName("InputBox");
  dialog.setWindowTitle(ToQt(title));
  auto* const layout = new QVBoxLayout(&dialog);
  auto* const caption = new QLabel(PlainCaption(label));
  auto* const input = new QLineEdit(ToQt(value));
  input->setObjectName("InpValue");
  input->setAccessibleName(ToQt(label));
  input->setMinimumWidth(InputWidth);
  input->selectAll();
  caption->setBuddy(input);
  layout->addWidget(caption);
  layout->addWidget(input);
  layout->addWidget(MakeOkCancel(dialog));
  const AnswerCursor cursor;
  if (dialog.exec() != QDialog::Accepted) {
    return std::nullopt;
  }
  return FromQt(input->text());
}

}  // namespace velmora::ui
