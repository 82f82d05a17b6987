// The dialogs that repair the tree of archives.

#include "ui/dialog_parts.h"
#include "ui/dialogs.h"

namespace velmora::ui {
namespace {

constexpr QSize ReportSize(560, 220);

// A dialog that OK closes only where `Ok` says so.
class RepairDialog final : public QDialog {
 public:
  using QDialog::QDialog;

  std::function<bool()> Ok;

  void accept() override {
    if (Ok()) QDialog::accept();
  }
};

void AddCaption(QVBoxLayout& layout, std::string_view caption) {
  auto* const label = new QLabel(PlainCaption(caption));
  label->setMargin(TextMargin);
  layout.addWidget(label);
}

void AddButtons(QDialog& dialog, QVBoxLayout& layout) {
  layout.addSpacing(GroupSpacing);
  layout.addWidget(MakeOkCancel(dialog));
  dialog.findChild<QPushButton*>("OkButton")->setFocus();
}

void AddValue(QVBoxLayout& layout, std::string_view name, std::string_view caption,
              const std::string& value) {
  auto* const shown = Named(new QLabel(ToQt(value)), name, caption);
  shown->setTextFormat(Qt::PlainText);
  shown->setWordWrap(true);
  shown->setMargin(TextMargin);
  shown->setMinimumWidth(FieldWidth);
  shown->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QFont bold = shown->font();
  bold.setBold(true);
  shown->setFont(bold);
  AddCaption(layout, caption);
  layout.addWidget(shown);
}

}  // namespace

bool ShowDoubleEntriesDialog(const panes::DelDblArcEntriesDialog& model, QWidget* parent) {
  namespace text = panes::del_dbl_arc_entries_text;
  QDialog dialog(parent);
  SetTitle(dialog, "DelDblArcEntries", text::Title);
  auto* const layout = new QVBoxLayout(&dialog);
  AddValue(*layout, "SrcArc", text::SrcArc, model.SrcArc());
  AddValue(*layout, "DblCnt", text::DblCnt, model.DblCnt());
  AddButtons(dialog, *layout);
  return dialog.exec() == QDialog::Accepted;
}

void ShowCircularEntriesDialog(const panes::DelCircArcEntriesDialog& model, const std::function<bool()>& ok,
                               QWidget* parent) {
  namespace text = panes::del_circ_arc_entries_text;
  RepairDialog dialog(parent);
  SetTitle(dialog, "DelCircArcEntries", text::Title);
  auto* const layout = new QVBoxLayout(&dialog);
  AddValue(*layout, "SrcArc", text::SrcArc, model.SrcArc());
  auto* const report = Named(new QPlainTextEdit(ToQt(model.ListCircRef()).replace("\r\n", "\n").trimmed()),
                             "ListCircRef", text::ListCircRef);
  report->setReadOnly(true);
  report->setTabChangesFocus(true);
  report->setLineWrapMode(QPlainTextEdit::NoWrap);
  report->setMinimumSize(ReportSize);
  AddCaption(*layout, text::ListCircRef);
  layout->addWidget(report, 1);
  AddValue(*layout, "DblCnt", text::DblCnt, model.DblCnt());
  AddButtons(dialog, *layout);
  dialog.Ok = ok;
  dialog.exec();
}

}  // namespace velmora::ui
