// The dialogs of one or two fields, the about box, the system information.

#include <QComboBox>
#include <QCompleter>
#include <QMessageBox>
#include <QTreeWidget>

#include "ui/dialog_parts.h"
#include "ui/dialogs.h"
#include "ui/icons.h"

namespace velmora::ui {
namespace {

constexpr QSize InformationSize(620, 360);
constexpr int AboutIconSize = 64;

}  // namespace

std::optional<std::string> ShowChangeServerDialog(panes::ChangeServerDialog& model, QWidget* parent) {
  QDialog dialog(parent);
  SetTitle(dialog, "ChDvServer", panes::change_server_text::Title);
  auto* const form = new QFormLayout;
  QLineEdit* const server = AddField(*form, "InpServer", panes::change_server_text::InpServer,
                                     model.InpServer(), panes::change_server_text::InpServerTip);
  QStringList used;
  for (const std::string& name : model.Servers()) used << ToQt(name);
  auto* const completer = new QCompleter(used, server);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  server->setCompleter(completer);
  server->selectAll();
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addLayout(form);
  layout->addWidget(MakeOkCancel(dialog));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  model.SetInpServer(FromQt(server->text()));
  return model.Ok();
}

std::optional<std::string> ShowPatternDialog(panes::PatternDialog& model, QWidget* parent) {
  QDialog dialog(parent);
  SetTitle(dialog, "ItemSelection", model.Title());
  auto* const form = new QFormLayout;
  QLineEdit* const pattern =
      AddField(*form, "InpPattern", panes::pattern_text::InpPattern, model.InpPattern());
  pattern->selectAll();
  auto* const note = new QLabel(ToQt(panes::SelectionNote));
  note->setObjectName("L_Note");
  form->addRow(QString(), note);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addLayout(form);
  layout->addWidget(MakeOkCancel(dialog));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  model.SetInpPattern(FromQt(pattern->text()));
  return model.Ok();
}

std::optional<panes::NewArchiveRequest> ShowNewArchiveDialog(panes::NewArchiveDialog& model,
                                                             QWidget* parent) {
  namespace text = panes::new_archive_text;
  QDialog dialog(parent);
  SetTitle(dialog, "NewArchiveDialog", text::Title);
  auto* const form = new QFormLayout;
  QLineEdit* const name =
      AddField(*form, "InpArcName", text::InpArcName, model.InpArcName(), text::InpArcNameTip);
  QLineEdit* const directory =
      AddField(*form, "InpArcDir", text::InpArcDir, model.InpArcDir(), text::InpArcDirTip);
  name->selectAll();
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addLayout(form);
  layout->addWidget(MakeOkCancel(dialog));
  auto* const ok = dialog.findChild<QPushButton*>("OkButton");
  const auto take = [&] {
    model.SetInpArcName(FromQt(name->text()));
    model.SetInpArcDir(FromQt(directory->text()));
    ok->setEnabled(model.OkEnabled());
  };
  for (QLineEdit* const field : {name, directory}) {
    QObject::connect(field, &QLineEdit::textChanged, &dialog, take);
  }
  take();
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return model.Ok();
}

void ShowAboutBox(const settings::ProductVersion& version, QWidget* parent) {
  QMessageBox box(parent);
  box.setObjectName("AboutBox");
  box.setWindowTitle(ToQt(panes::about_text::Title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(panes::AboutText(version)).replace("\r\n", "\n"));
  box.setIconPixmap(OwnDrawing("velmora").pixmap(AboutIconSize));
  box.addButton("OK", QMessageBox::AcceptRole)->setObjectName("OkButton");
  box.exec();
}

void ShowSystemInformation(const std::vector<panes::InformationRow>& rows, QWidget* parent) {
  QDialog dialog(parent);
  SetTitle(dialog, "SysInfo", panes::SystemInformationTitle);
  dialog.resize(InformationSize);
  auto* const list = Named(new QTreeWidget, "SysInfoView", panes::SystemInformationTitle);
  list->setHeaderLabels({"Angabe", "Wert"});
  list->setRootIsDecorated(false);
  list->setAlternatingRowColors(true);
  for (const panes::InformationRow& row : rows) {
    auto* const item = new QTreeWidgetItem(list, {ToQt(row.Label), ToQt(row.Value)});
    item->setToolTip(1, PlainTip(ToQt(row.Value)));
  }
  list->resizeColumnToContents(0);
  auto* const buttons = new QDialogButtonBox;
  buttons->addButton("S&chließen", QDialogButtonBox::RejectRole)->setObjectName("CancelButton");
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addWidget(list, 1);
  layout->addWidget(buttons);
  dialog.exec();
}

}  // namespace velmora::ui
