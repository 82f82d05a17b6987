// The dialogs that copy, move and delete what is marked in a pane.

#include <QHBoxLayout>
#include <utility>
#include <vector>

#include "panes/dialogs/selection_text.h"
#include "ui/dialog_parts.h"
#include "ui/dialogs.h"

namespace velmora::ui {
namespace {

constexpr QSize RuleListSize(420, 160);

// A dialog that OK closes only once its model has a request for the caller.
template <typename Request>
class RequestDialog final : public QDialog {
 public:
  using QDialog::QDialog;

  std::function<std::optional<Request>()> Ok;

  std::optional<Request> Ask() {
    exec();
    return std::move(request_);
  }
  void accept() override {
    request_ = Ok();
    if (request_) QDialog::accept();
  }

 private:
  std::optional<Request> request_;
};

// The check boxes of a model, one below the other; each click shows what it changes in the others.
template <typename Box, typename Model, typename Texts>
void AddBoxes(QVBoxLayout& layout, Model& model, const Texts& texts) {
  std::vector<QCheckBox*> boxes;
  for (const auto& text : texts) {
    boxes.push_back(MakeCheckBox(text.Control, text.Caption, text.Tip));
    layout.addWidget(boxes.back());
  }
  const auto fill = [&model, boxes] {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      boxes[i]->setChecked(model.IsChecked(static_cast<Box>(i)));
      boxes[i]->setEnabled(model.IsEnabled(static_cast<Box>(i)));
    }
  };
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    QObject::connect(boxes[i], &QCheckBox::clicked, boxes[i], [&model, fill, i](bool checked) {
      model.SetBox(static_cast<Box>(i), checked);
      fill();
    });
  }
  fill();
}

void AddButtons(QDialog& dialog, QVBoxLayout& layout, std::string_view okCaption) {
  layout.addSpacing(GroupSpacing);
  layout.addWidget(MakeOkCancel(dialog));
  dialog.findChild<QPushButton*>("OkButton")->setText(ToQt(okCaption));
}

struct TransferTexts {
  const char* Name;
  std::string_view FieldTip, ButtonTip;
};

// Source, target, boxes, buttons.
template <typename Box, typename Request, typename Model, typename BoxTexts>
std::optional<Request> ShowTransfer(Model& model, const TransferTexts& texts, const BoxTexts& boxes,
                                    run::FrontEnd frontEnd, QWidget* parent) {
  RequestDialog<Request> dialog(parent);
  SetTitle(dialog, texts.Name, model.Title());
  auto* const target = Named(new QLineEdit(ToQt(model.CMDst())), "CMDst", "Zielarchiv", texts.FieldTip);
  target->setMinimumWidth(FieldWidth);
  auto* const search = MakeButton("SrcArc", "&Suchen ...", texts.ButtonTip);
  auto* const targetRow = new QHBoxLayout;
  targetRow->addWidget(target, 1);
  targetRow->addWidget(search);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addWidget(MakeSourceText(model.SourceText()));
  layout->addLayout(targetRow);
  layout->addSpacing(GroupSpacing);
  AddBoxes<Box>(*layout, model, boxes);
  layout->addStretch(1);
  AddButtons(dialog, *layout, model.Title());
  QObject::connect(target, &QLineEdit::textEdited, &dialog,
                   [&model](const QString& path) { model.SetCMDst(FromQt(path)); });
  QObject::connect(search, &QPushButton::clicked, &dialog, [&model, frontEnd, target] {
    model.SrcArc(frontEnd.choosers);
    target->setText(ToQt(model.CMDst()));
  });
  dialog.Ok = [&model, frontEnd] { return model.Ok(frontEnd.prompts); };
  target->setFocus();
  return dialog.Ask();
}

// What goes, boxes, buttons.
template <typename Box, typename Request, typename Model, typename BoxTexts>
std::optional<Request> ShowDeletion(Model& model, const char* name, const BoxTexts& boxes,
                                    run::Prompts& prompts, QWidget* parent) {
  RequestDialog<Request> dialog(parent);
  SetTitle(dialog, name, panes::DeletionTitle);
  auto* const layout = new QVBoxLayout(&dialog);
  auto* const source = MakeSourceText(model.SourceText());
  source->setMinimumWidth(FieldWidth);
  layout->addWidget(source);
  layout->addSpacing(GroupSpacing);
  AddBoxes<Box>(*layout, model, boxes);
  layout->addStretch(1);
  AddButtons(dialog, *layout, panes::DeletionTitle);
  dialog.Ok = [&model, &prompts] { return model.Ok(prompts); };
  return dialog.Ask();
}

}  // namespace

std::optional<panes::ZEBCopyMoveRequest> ShowStoreTransferDialog(panes::ZEBCopyMoveDialog& model,
                                                                 run::FrontEnd frontEnd, QWidget* parent) {
  namespace text = panes::zeb_copy_move_text;
  return ShowTransfer<panes::ZEBCopyMoveBox, panes::ZEBCopyMoveRequest>(
      model, {"ZEBCopyMoveDialogBox", text::CMDstTip, text::SrcArcTip}, panes::ZEBCopyMoveBoxes, frontEnd,
      parent);
}

std::optional<panes::RoutCopyMoveRequest> ShowRuleTransferDialog(panes::RoutCopyMoveDialog& model,
                                                                 run::FrontEnd frontEnd, QWidget* parent) {
  namespace text = panes::rout_copy_move_text;
  return ShowTransfer<panes::RoutCopyMoveBox, panes::RoutCopyMoveRequest>(
      model, {"RoutCopyMoveDialogBox", text::CMDstTip, text::SrcArcTip}, panes::RoutCopyMoveBoxes, frontEnd,
      parent);
}

std::optional<panes::DelZEBRequest> ShowStoreDeletionDialog(panes::DelZEBDialog& model, run::Prompts& prompts,
                                                            QWidget* parent) {
  return ShowDeletion<panes::DelZEBBox, panes::DelZEBRequest>(model, "DelZEBDialogBox", panes::DelZEBBoxes,
                                                              prompts, parent);
}

std::optional<panes::DelFSRequest> ShowFileDeletionDialog(panes::DelFSDialog& model, run::Prompts& prompts,
                                                          QWidget* parent) {
  return ShowDeletion<panes::DelFSBox, panes::DelFSRequest>(model, "DelFSDialogBox", panes::DelFSBoxes,
                                                            prompts, parent);
}

std::optional<operations::RuleSelection> ShowRuleDeletionDialog(panes::DelRoutDialog& model,
                                                                run::Prompts& prompts, QWidget* parent) {
  RequestDialog<operations::RuleSelection> dialog(parent);
  SetTitle(dialog, "DelRoutDialogBox", panes::DeletionTitle);
  // The list of the rules may be longer than the screen.
  auto* const source = Named(new QPlainTextEdit(ToQt(model.SourceText()).replace("\r\n", "\n")), "CMSrc",
                             "Regeln, die gelöscht werden");
  source->setReadOnly(true);
  source->setTabChangesFocus(true);
  source->setMinimumSize(RuleListSize);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addWidget(source, 1);
  AddButtons(dialog, *layout, panes::DeletionTitle);
  dialog.findChild<QPushButton*>("OkButton")->setFocus();
  dialog.Ok = [&model, &prompts] { return model.Ok(prompts); };
  return dialog.Ask();
}

}  // namespace velmora::ui
