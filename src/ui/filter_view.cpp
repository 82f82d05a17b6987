// The dialog "Filter".

#include <QGridLayout>
#include <utility>
#include <vector>

#include "ui/dialog_parts.h"
#include "ui/dialogs.h"

namespace velmora::ui {
namespace {

namespace filter_text = panes::filter_text;

class FilterView final : public QDialog {
 public:
  FilterView(panes::FilterDialog& model, run::Prompts& prompts, QWidget* parent)
      : QDialog(parent), model_(model) {
    SetTitle(*this, "FilterForm", filter_text::Title);
    auto* const standard = MakeFrame("F_Standard", filter_text::F_Standard);
    auto* const standardLayout = new QVBoxLayout(standard);
    for (const store::FilterPreset& preset : store::FilterPresets) {
      QRadioButton* const button = MakeRadioButton(preset.Control, preset.Caption);
      button->setAutoExclusive(false);  // a mask may be none of them
      connect(button, &QRadioButton::clicked, this, [this, &preset] {
        model_.StdFltChange(preset.Mask);
        Fill();
      });
      standardLayout->addWidget(button);
      presets_.emplace_back(&preset, button);
    }
    standardLayout->addStretch(1);
    auto* const status = MakeFrame("F_Status", filter_text::F_Status, filter_text::F_StatusTip);
    auto* const type = MakeFrame("F_Type", filter_text::F_Type, filter_text::F_TypeTip);
    auto* const statusLayout = new QVBoxLayout(status);
    auto* const typeLayout = new QVBoxLayout(type);
    for (const store::FilterBox& box : store::FilterBoxes) {
      QCheckBox* const check = MakeCheckBox(box.Control, box.Caption);
      connect(check, &QCheckBox::clicked, this, [this, &box](bool checked) {
        model_.SetBox(box, checked);
        Fill();
      });
      (box.Excludes ? typeLayout : statusLayout)->addWidget(check);
      boxes_.emplace_back(&box, check);
    }
    hidden_ = MakeCheckBox("FltHidden", filter_text::FltHidden, filter_text::FltHiddenTip);
    connect(hidden_, &QCheckBox::clicked, this, [this](bool checked) {
      model_.SetFltHidden(checked);
      Fill();
    });
    statusLayout->addWidget(hidden_);
    statusLayout->addStretch(1);
    typeLayout->addStretch(1);

    auto* const caption =
        Named(new QLabel(PlainCaption(filter_text::L_FltValue)), "L_FltValue", filter_text::L_FltValue);
    value_ = Named(new QLineEdit, "FltValue", filter_text::L_FltValue, filter_text::FltValueTip);
    value_->setReadOnly(true);
    for (QWidget* const widget : {static_cast<QWidget*>(caption), static_cast<QWidget*>(value_)}) {
      widget->setVisible(model_.FltValueVisible());
    }
    auto* const buttons = MakeOkCancel(*this);
    QPushButton* const reset =
        buttons->addButton(PlainCaption(filter_text::FltReset), QDialogButtonBox::ResetRole);
    reset->setObjectName("FltReset");
    reset->setAutoDefault(false);
    connect(reset, &QPushButton::clicked, this, [this, &prompts] {
      model_.FltReset(prompts);
      Fill();
    });

    auto* const grid = new QGridLayout(this);
    grid->addWidget(standard, 0, 0);
    grid->addWidget(status, 0, 1);
    grid->addWidget(type, 0, 2);
    auto* const mask = new QHBoxLayout;
    mask->addWidget(caption);
    mask->addWidget(value_);
    mask->addStretch(1);
    grid->addLayout(mask, 1, 0, 1, 3);
    grid->addWidget(buttons, 2, 0, 1, 3);
    Fill();
  }

 private:
  void Fill() {
    for (const auto& [box, check] : boxes_) check->setChecked(model_.IsChecked(*box));
    for (const auto& [preset, button] : presets_) button->setChecked(model_.IsOn(*preset));
    hidden_->setChecked(model_.FltHidden());
    value_->setText(ToQt(model_.FltValue()));
  }

  panes::FilterDialog& model_;
  std::vector<std::pair<const store::FilterBox*, QCheckBox*>> boxes_;
  std::vector<std::pair<const store::FilterPreset*, QRadioButton*>> presets_;
  QCheckBox* hidden_ = nullptr;
  QLineEdit* value_ = nullptr;
};

}  // namespace

FilterAnswer ShowFilterDialog(panes::FilterDialog& model, run::Prompts& prompts, QWidget* parent) {
  FilterView view(model, prompts, parent);
  if (view.exec() != QDialog::Accepted) return {};
  return {true, model.Ok()};
}

}  // namespace velmora::ui
