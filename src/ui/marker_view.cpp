// The dialogs of a mail archive's marker and of the texts that go into its pages.

#include "ui/dialog_parts.h"
#include "ui/dialogs.h"

namespace velmora::ui {
namespace {

namespace info = panes::form_user_info_text;
namespace mail_arc_marker_text = panes::mail_arc_marker_text;
using panes::MailArcMarkerDialog;

class MarkerView final : public QDialog {
 public:
  MarkerView(MailArcMarkerDialog& model, run::Prompts& prompts,
             const std::function<void(QWidget*)>& showUserInfo, QWidget* parent)
      : QDialog(parent), model_(model), prompts_(prompts) {
    SetTitle(*this, "SetMailArcDialogBox", mail_arc_marker_text::Title);
    auto* const kinds = MakeFrame("F_Kind", "Kennung");
    auto* const kindLayout = new QVBoxLayout(kinds);
    for (const panes::MarkerChoice& choice : panes::MarkerChoices) {
      QRadioButton* const button = MakeRadioButton(choice.Control, choice.Caption);
      button->setChecked(model_.Kind() == choice.Kind);
      connect(button, &QRadioButton::clicked, this, [this, kind = choice.Kind] { model_.SetKind(kind); });
      kindLayout->addWidget(button);
    }
    auto* const form = new QFormLayout;
    const mailarchive::MarkerTexts& texts = model_.Texts();
    const auto bind = [&](std::string_view name, std::string_view caption, const std::string& value,
                          void (MailArcMarkerDialog::*set)(std::string_view)) {
      QLineEdit* const field = AddField(*form, name, caption, value);
      connect(field, &QLineEdit::textEdited, this,
              [&model = model_, set](const QString& typed) { (model.*set)(FromQt(typed)); });
      return field;
    };
    bind("ArcFormDispName", mail_arc_marker_text::ArcFormDispName, texts.DisplayName,
         &MailArcMarkerDialog::SetArcFormDispName);
    bind("ArcFormFullPath", mail_arc_marker_text::ArcFormFullPath, texts.FullPath,
         &MailArcMarkerDialog::SetArcFormFullPath);
    bind("ArcFormDirName", mail_arc_marker_text::ArcFormDirName, texts.DirName,
         &MailArcMarkerDialog::SetArcFormDirName);
    comment_ = bind("ArcFormComment", mail_arc_marker_text::ArcFormComment, texts.Comment,
                    &MailArcMarkerDialog::SetArcFormComment);
    copyRight_ = bind("ArcFormCopyRight", mail_arc_marker_text::ArcFormCopyRight, texts.CopyRight,
                      &MailArcMarkerDialog::SetArcFormCopyRight);

    auto* const take = MakeButton("CopyUsrInfo", PlainCaption(mail_arc_marker_text::CopyUsrInfo));
    auto* const change = MakeButton("SetUsrInfo", PlainCaption(mail_arc_marker_text::SetUsrInfo));
    auto* const userRow = new QHBoxLayout;
    userRow->addWidget(take);
    userRow->addWidget(change);
    userRow->addStretch(1);
    connect(take, &QPushButton::clicked, this, [this] {
      model_.CopyUsrInfo();
      comment_->setText(ToQt(model_.Texts().Comment));
      copyRight_->setText(ToQt(model_.Texts().CopyRight));
    });
    connect(change, &QPushButton::clicked, this, [this, showUserInfo] { showUserInfo(this); });

    auto* const buttons = MakeOkCancel(*this);
    QPushButton* const quit = findChild<QPushButton*>("CancelButton");
    quit->setObjectName("QuitButton");
    quit->setText(ToQt(mail_arc_marker_text::QuitButton));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(kinds);
    layout->addLayout(form);
    layout->addLayout(userRow);
    layout->addWidget(buttons);
  }

  void accept() override {
    if (model_.Ok(prompts_)) QDialog::accept();
  }

 private:
  MailArcMarkerDialog& model_;
  run::Prompts& prompts_;
  QLineEdit *comment_ = nullptr, *copyRight_ = nullptr;
};

}  // namespace

bool ShowMarkerDialog(MailArcMarkerDialog& model, run::Prompts& prompts,
                      const std::function<void(QWidget*)>& showUserInfo, QWidget* parent) {
  MarkerView view(model, prompts, showUserInfo, parent);
  return view.exec() == QDialog::Accepted;
}

bool ShowFormUserInfoDialog(panes::FormUserInfoDialog& model, QWidget* parent) {
  QDialog dialog(parent);
  SetTitle(dialog, "ArcFormUserInfo", info::Title);
  auto* const form = new QFormLayout;
  const QLineEdit* const copyRight = AddField(*form, "ArcFormCopyRight", info::ArcFormCopyRight,
                                              model.ArcFormCopyRight(), info::ArcFormCopyRightTip);
  const QLineEdit* const comment = AddField(*form, "ArcFormComment", info::ArcFormComment,
                                            model.ArcFormComment(), info::ArcFormCommentTip);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addLayout(form);
  QDialogButtonBox* const buttons = MakeOkCancel(dialog);
  layout->addWidget(buttons);
  dialog.findChild<QPushButton*>("OkButton")->setObjectName("OKButton");
  if (dialog.exec() != QDialog::Accepted) return false;
  model.SetArcFormCopyRight(FromQt(copyRight->text()));
  model.SetArcFormComment(FromQt(comment->text()));
  model.Ok();
  return true;
}

}  // namespace velmora::ui
