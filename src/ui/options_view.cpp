// The dialog "Einstellungen", made from the table of options.

#include <QComboBox>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabWidget>

#include "ui/dialog_parts.h"
#include "ui/dialogs.h"

namespace velmora::ui {
namespace {

namespace options_text = panes::options_text;
using panes::OptionField;
using panes::OptionKind;

constexpr QSize OptionsSize(700, 600);
constexpr int MultiLineRows = 3;
constexpr int NarrowWidth = 120;

struct SeparatorText {
  std::string_view Value, Caption;
};
constexpr SeparatorText Separators[] = {{";", "Semikolon ( ; )"}, {",", "Komma ( , )"}, {"\t", "Tabulator"}};

class OptionsView final : public QDialog {
 public:
  OptionsView(panes::OptionsDialog& model, run::FrontEnd frontEnd, QWidget* parent)
      : QDialog(parent), model_(model), frontEnd_(frontEnd) {
    SetTitle(*this, "DvVelmoraOptions", options_text::Title);
    resize(OptionsSize);
    auto* const tabs = Named(new QTabWidget, "OptionPages", "Seiten");
    for (const panes::OptionPageText& page : panes::OptionPages()) {
      QWidget* const made = MakePage(page.Page);
      made->setObjectName(ToQt(page.Control));
      made->setAccessibleName(ToQt(page.Caption));
      tabs->addTab(made, PlainCaption(page.Caption));
    }
    auto* const buttons = MakeOkCancel(*this);
    QPushButton* const save =
        buttons->addButton(PlainCaption(options_text::SaveButton), QDialogButtonBox::ApplyRole);
    Named(save, "SaveButton", options_text::SaveButton, options_text::SaveButtonTip)->setAutoDefault(false);
    connect(save, &QPushButton::clicked, this, [this] { Take(true); });
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(tabs, 1);
    layout->addWidget(buttons);
  }

  std::optional<panes::OptionsAnswer> Answer;

  void accept() override { Take(false); }

 private:
  void Take(bool saves) {
    const panes::OptionsAnswer answer = saves ? model_.Save(frontEnd_.prompts) : model_.Ok(frontEnd_.prompts);
    if (!answer.Closes) return;
    Answer = answer;
    QDialog::accept();
  }

  // Fields of one frame stand together, those without one on their own.
  QWidget* MakePage(panes::OptionPage page) {
    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    std::string_view frame;
    QFormLayout* form = nullptr;
    for (const OptionField& field : panes::FieldsOf(page)) {
      if (form == nullptr || field.Frame != frame) {
        frame = field.Frame;
        form = AddForm(*column, frame);
      }
      AddControl(*form, field);
    }
    column->addStretch(1);
    auto* const area = new QScrollArea;
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    return area;
  }

  static QFormLayout* AddForm(QVBoxLayout& column, std::string_view frame) {
    auto* const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    if (frame.empty()) {
      column.addLayout(form);
    } else {
      QGroupBox* const box = MakeFrame("", frame);
      box->setLayout(form);
      column.addWidget(box);
    }
    return form;
  }

  void AddControl(QFormLayout& form, const OptionField& field) {
    QWidget* control = nullptr;
    switch (field.Kind) {
      case OptionKind::Switch:
      case OptionKind::Forced:
        control = MakeSwitch(field);
        break;
      case OptionKind::Number:
        control = MakeNumber(field);
        break;
      case OptionKind::Choice:
        control = MakeChoice(field);
        break;
      case OptionKind::Design:
        control = MakeDesign(field);
        break;
      case OptionKind::Separator:
        control = MakeSeparator(field);
        break;
      case OptionKind::MultiLine:
        control = MakeMultiLine(field);
        break;
      case OptionKind::Text:
      case OptionKind::FolderName:
      case OptionKind::FileName:
      case OptionKind::Folder:
      case OptionKind::Program:
        control = MakeText(field);
        break;
    }
    Named(control, field.Control, field.Caption, field.Tip)->setEnabled(model_.IsEnabled(field));
    const bool isSwitch = field.Kind == OptionKind::Switch || field.Kind == OptionKind::Forced;
    const bool browses = field.Kind == OptionKind::Folder || field.Kind == OptionKind::Program;
    if (isSwitch) {
      form.addRow(control);
    } else if (browses) {
      form.addRow(PlainCaption(field.Caption), WithBrowse(field, *qobject_cast<QLineEdit*>(control)));
    } else {
      form.addRow(PlainCaption(field.Caption), control);
    }
  }

  QWidget* MakeSwitch(const OptionField& field) {
    auto* const box = new QCheckBox(PlainCaption(field.Caption));
    box->setChecked(model_.SwitchOf(field));
    connect(box, &QCheckBox::clicked, this, [this, &field](bool on) { model_.SetSwitch(field, on); });
    return box;
  }

  QWidget* MakeNumber(const OptionField& field) {
    auto* const box = new QSpinBox;
    box->setRange(field.Minimum, field.Maximum);
    box->setGroupSeparatorShown(true);
    box->setMaximumWidth(NarrowWidth);
    box->setValue(model_.NumberOf(field));
    connect(box, &QSpinBox::valueChanged, this,
            [this, &field](int number) { model_.SetNumber(field, number); });
    return box;
  }

  QWidget* MakeChoice(const OptionField& field) {
    auto* const box = new QComboBox;
    for (const panes::OptionChoice& choice : field.Choices) box->addItem(ToQt(choice.Caption), choice.Value);
    box->setCurrentIndex(box->findData(model_.NumberOf(field)));
    connect(box, &QComboBox::activated, this,
            [this, &field, box] { model_.SetNumber(field, box->currentData().toInt()); });
    return box;
  }

  QWidget* MakeDesign(const OptionField& field) {
    auto* const box = new QComboBox;
    const QString chosen = ToQt(model_.TextOf(field));
    for (const std::string& name : model_.DesignNames()) box->addItem(ToQt(name));
    if (box->findText(chosen) < 0) box->addItem(chosen);
    box->setCurrentText(chosen);
    connect(box, &QComboBox::activated, this,
            [this, &field, box] { model_.SetText(field, FromQt(box->currentText())); });
    return box;
  }

  // The usual ones by name; any other character can be typed.
  QWidget* MakeSeparator(const OptionField& field) {
    auto* const box = new QComboBox;
    box->setEditable(true);
    box->setMaximumWidth(NarrowWidth * 2);
    const std::string value = model_.TextOf(field);
    box->setEditText(ToQt(value));
    for (const SeparatorText& separator : Separators) {
      box->addItem(ToQt(separator.Caption), ToQt(separator.Value));
    }
    const int known = box->findData(ToQt(value));
    box->setCurrentIndex(known);
    if (known < 0) box->setEditText(ToQt(value));
    connect(box, &QComboBox::currentTextChanged, this, [this, &field, box](const QString& typed) {
      const int index = box->findText(typed);
      model_.SetText(field, FromQt(index >= 0 ? box->itemData(index).toString() : typed));
    });
    return box;
  }

  QWidget* MakeMultiLine(const OptionField& field) {
    auto* const edit = new QPlainTextEdit(ToQt(model_.TextOf(field)).replace("\r\n", "\n"));
    edit->setFixedHeight(edit->fontMetrics().lineSpacing() * MultiLineRows + 14);
    edit->setTabChangesFocus(true);
    connect(edit, &QPlainTextEdit::textChanged, this, [this, &field, edit] {
      model_.SetText(field, FromQt(edit->toPlainText().replace("\n", "\r\n")));
    });
    return edit;
  }

  QWidget* MakeText(const OptionField& field) {
    auto* const edit = new QLineEdit(ToQt(model_.TextOf(field)));
    connect(edit, &QLineEdit::textEdited, this,
            [this, &field](const QString& typed) { model_.SetText(field, FromQt(typed)); });
    return edit;
  }

  QWidget* WithBrowse(const OptionField& field, QLineEdit& edit) {
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const browse = MakeButton(std::string(field.Control) + "Browse", "...", "Suchen");
    browse->setAccessibleName(ToQt(field.Caption) + " suchen");
    browse->setMaximumWidth(browse->fontMetrics().horizontalAdvance("...") + 24);
    browse->setEnabled(edit.isEnabled());
    layout->addWidget(&edit, 1);
    layout->addWidget(browse);
    connect(browse, &QPushButton::clicked, this, [this, &field, &edit] {
      model_.Browse(field, frontEnd_.choosers);
      edit.setText(ToQt(model_.TextOf(field)));
    });
    return row;
  }

  panes::OptionsDialog& model_;
  run::FrontEnd frontEnd_;
};

}  // namespace

std::optional<panes::OptionsAnswer> ShowOptionsDialog(panes::OptionsDialog& model, run::FrontEnd frontEnd,
                                                      QWidget* parent) {
  OptionsView view(model, frontEnd, parent);
  view.exec();
  return view.Answer;
}

}  // namespace velmora::ui
