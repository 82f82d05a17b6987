// The dialog CopyMoveDialogBox.

#include <QGridLayout>
#include <QHBoxLayout>
#include <array>

#include "ui/dialog_parts.h"
#include "ui/dialogs.h"

namespace velmora::ui {
namespace {

namespace copy_move_text = panes::copy_move_text;

class CopyMoveView final : public QDialog {
 public:
  CopyMoveView(panes::CopyMoveDialog& model, run::FrontEnd frontEnd,
               const std::function<void(QWidget*)>& showUserInfo, QWidget* parent)
      : QDialog(parent), model_(model), frontEnd_(frontEnd) {
    SetTitle(*this, "CopyMoveDialogBox", model_.Title());
    target_ =
        Named(new QLineEdit(ToQt(model_.CMDst())), "CMDst", "Zielverzeichnis", copy_move_text::CMDstTip);
    target_->setMinimumWidth(FieldWidth);
    auto* const search = MakeButton("SrcDir", "&Suchen ...", copy_move_text::SrcDirTip);
    auto* const targetRow = new QHBoxLayout;
    targetRow->addWidget(target_, 1);
    targetRow->addWidget(search);

    auto* const boxes = new QGridLayout;
    boxes->setHorizontalSpacing(24);
    constexpr int columns = 2;
    for (std::size_t i = 0; i < panes::CopyMoveBoxes.size(); ++i) {
      const panes::CopyMoveBoxText& box = panes::CopyMoveBoxes[i];
      QCheckBox* const check = MakeCheckBox(box.Control, model_.CaptionOf(box.Box), box.Tip);
      connect(check, &QCheckBox::clicked, this, [this, &box](bool checked) {
        model_.SetBox(box.Box, checked);
        Fill();
      });
      boxes_[i] = check;
      const int rows = static_cast<int>(panes::CopyMoveBoxes.size()) / columns;
      boxes->addWidget(check, static_cast<int>(i) % rows, static_cast<int>(i) / rows);
    }

    auto* const buttons = MakeOkCancel(*this);
    QPushButton* const userInfo =
        buttons->addButton(PlainCaption(copy_move_text::ButtonUsrInfo), QDialogButtonBox::ActionRole);
    userInfo->setObjectName("ButtonUsrInfo");
    userInfo->setAutoDefault(false);
    findChild<QPushButton*>("OkButton")->setText(ToQt(model_.Title()));

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(MakeSourceText(model_.SourceText()));
    layout->addLayout(targetRow);
    layout->addSpacing(GroupSpacing);
    layout->addLayout(boxes);
    layout->addSpacing(GroupSpacing);
    layout->addWidget(buttons);
    connect(target_, &QLineEdit::textEdited, this,
            [this](const QString& directory) { model_.SetCMDst(FromQt(directory)); });
    connect(search, &QPushButton::clicked, this, [this] {
      model_.SrcDir(frontEnd_.choosers);
      target_->setText(ToQt(model_.CMDst()));
    });
    connect(userInfo, &QPushButton::clicked, this, [this, showUserInfo] { showUserInfo(this); });
    Fill();
    target_->setFocus();
  }

  std::optional<panes::CopyMoveRequest> Request;

  void accept() override {
    Request = model_.Ok(frontEnd_.prompts);
    if (Request) QDialog::accept();
  }

 private:
  void Fill() {
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
      const panes::CopyMoveBox box = panes::CopyMoveBoxes[i].Box;
      boxes_[i]->setChecked(model_.IsChecked(box));
      boxes_[i]->setEnabled(model_.IsEnabled(box));
    }
  }

  panes::CopyMoveDialog& model_;
  run::FrontEnd frontEnd_;
  QLineEdit* target_ = nullptr;
  std::array<QCheckBox*, panes::CopyMoveBoxCount> boxes_{};
};

}  // namespace

std::optional<panes::CopyMoveRequest> ShowCopyMoveDialog(panes::CopyMoveDialog& model, run::FrontEnd frontEnd,
                                                         const std::function<void(QWidget*)>& showUserInfo,
                                                         QWidget* parent) {
  CopyMoveView view(model, frontEnd, showUserInfo, parent);
  view.exec();
  return view.Request;
}

}  // namespace velmora::ui
