// The dialog "Adressen exportieren" (AddrBookExp).

#include <QEvent>
#include <QGridLayout>

#include "ui/dialog_parts.h"
#include "ui/dialogs.h"

namespace velmora::ui {
namespace {

namespace export_text = addresses::export_text;
using addresses::AddressFormat;
using addresses::AddressSource;

class AddressExportView final : public QDialog {
 public:
  AddressExportView(addresses::AddressExportDialog& model, const AddressDialogPlace& place,
                    run::FrontEnd frontEnd, QWidget* parent)
      : QDialog(parent), model_(model), place_(place), frontEnd_(frontEnd) {
    SetTitle(*this, "AddrBookExp", export_text::Title);
    file_ = Named(new QLineEdit, "AddrFileName", export_text::AddrFileName, export_text::AddrFileNameTip);
    file_->setMinimumWidth(FieldWidth);
    file_->installEventFilter(this);
    auto* const browse = MakeButton("SrcAddrFile", "&Suchen ...");
    auto* const take = MakeButton("GetButton", PlainCaption(export_text::GetButton),
                                  "Datei und Verzeichnis in die Einstellungen übernehmen");
    auto* const fileFrame = MakeFrame("F_File", export_text::AddrFileName);
    auto* const fileRow = new QHBoxLayout(fileFrame);
    fileRow->addWidget(file_, 1);
    fileRow->addWidget(browse);
    fileRow->addWidget(take);

    auto* const grid = new QGridLayout;
    grid->addWidget(MakeFormats(), 0, 0);
    grid->addWidget(MakeSeparators(), 0, 1);
    grid->addWidget(MakeSources(), 1, 0);
    grid->addWidget(MakeOptions(), 1, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(fileFrame);
    layout->addLayout(grid);
    layout->addWidget(MakeOkCancel(*this));
    connect(file_, &QLineEdit::textEdited, this,
            [this](const QString& typed) { model_.SetAddrFileName(FromQt(typed)); });
    connect(browse, &QPushButton::clicked, this, &AddressExportView::Browse);
    connect(take, &QPushButton::clicked, this, [this] { model_.StoreTarget(); });
    Fill();
  }

  std::optional<addresses::AddressExportRequest> Request;

  void accept() override {
    addresses::AddressExportAnswer answer = model_.Ok(place_.CurrentArchive, place_.WorkbookTemplate);
    if (!answer.Message.empty()) {
      frontEnd_.prompts.Message("Hinweis", answer.Message, run::Icon::Information);
    }
    Request = std::move(answer.Request);
    if (Request) QDialog::accept();
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == file_ && event->type() == QEvent::MouseButtonDblClick) {
      model_.TakeDirectory(place_.CurrentDirectory);
      Fill();
      return true;
    }
    return QDialog::eventFilter(watched, event);
  }

 private:
  template <typename Value>
  struct Choice {
    const char* Control;
    std::string_view Caption;
    Value Which;
    std::string_view Tip = {};
  };

  QWidget* MakeFormats() {
    constexpr Choice<AddressFormat> formats[] = {{"FrmtCSV", export_text::FrmtCSV, AddressFormat::Delimited},
                                                 {"FrmtXL", export_text::FrmtXL, AddressFormat::Excel},
                                                 {"FrmtGW", export_text::FrmtGW, AddressFormat::GroupWise},
                                                 {"FrmtVCF", export_text::FrmtVCF, AddressFormat::VCard}};
    auto* const frame = MakeFrame("F_Format", "Format");
    auto* const layout = new QVBoxLayout(frame);
    for (const auto& format : formats) {
      QRadioButton* const button = MakeRadioButton(format.Control, format.Caption);
      button->setChecked(model_.Format() == format.Which);
      connect(button, &QRadioButton::clicked, this, [this, which = format.Which] {
        model_.SetFormat(which);
        Fill();
      });
      layout->addWidget(button);
    }
    return frame;
  }

  QWidget* MakeSeparators() {
    constexpr Choice<std::string_view> separators[] = {
        {"CSVSemiColon", "Semikolon ( ; )", addresses::CSVSemiColon},
        {"CSVComma", "Komma ( , )", addresses::CSVComma},
        {"CSVTab", "Tabulator", addresses::CSVTab}};
    separators_ = MakeFrame("F_Separator", "Trennzeichen");
    auto* const layout = new QVBoxLayout(separators_);
    for (const auto& separator : separators) {
      QRadioButton* const button = MakeRadioButton(separator.Control, separator.Caption);
      button->setChecked(model_.Separator() == separator.Which);
      connect(button, &QRadioButton::clicked, this,
              [this, which = separator.Which] { model_.SetSeparator(which); });
      layout->addWidget(button);
    }
    layout->addStretch(1);
    return separators_;
  }

  QWidget* MakeSources() {
    constexpr Choice<AddressSource> sources[] = {
        {"ExpCurArc", export_text::ExpCurArc, AddressSource::CurrentArchive, export_text::ExpCurArcTip},
        {"ExpGlobalAddr", export_text::ExpGlobalAddr, AddressSource::PublicAddresses,
         export_text::ExpGlobalAddrTip},
        {"ExpPersAddr", export_text::ExpPersAddr, AddressSource::PersonalAddresses,
         export_text::ExpPersAddrTip}};
    auto* const frame = MakeFrame("F_Source", "Quelle");
    auto* const layout = new QVBoxLayout(frame);
    for (const auto& source : sources) {
      QRadioButton* const button = MakeRadioButton(source.Control, source.Caption, source.Tip);
      button->setChecked(model_.Source() == source.Which);
      connect(button, &QRadioButton::clicked, this,
              [this, which = source.Which] { model_.SetSource(which); });
      layout->addWidget(button);
    }
    return frame;
  }

  QWidget* MakeOptions() {
    auto* const frame = MakeFrame("F_Options", "Optionen");
    auto* const layout = new QVBoxLayout(frame);
    QCheckBox* const subArchives =
        MakeCheckBox("ExpSubArcs", export_text::ExpSubArcs, export_text::ExpSubArcsTip);
    QCheckBox* const overwrite =
        MakeCheckBox("AddrBooksOvw", export_text::AddrBooksOvw, export_text::AddrBooksOvwTip);
    subArchives->setChecked(model_.ExpSubArcs());
    overwrite->setChecked(model_.AddrBooksOvw());
    connect(subArchives, &QCheckBox::clicked, this, [this](bool on) {
      model_.SetExpSubArcs(on);
      Fill();
    });
    connect(overwrite, &QCheckBox::clicked, this, [this](bool on) { model_.SetAddrBooksOvw(on); });
    layout->addWidget(subArchives);
    layout->addWidget(overwrite);
    layout->addStretch(1);
    return frame;
  }

  void Fill() {
    separators_->setEnabled(model_.SeparatorsEnabled());
    file_->setText(ToQt(model_.AddrFileName()));
  }

  void Browse() {
    const addresses::AddressFileChooser chooser = model_.SrcAddrFile();
    const auto chosen = chooser.ForFolder
                            ? frontEnd_.choosers.ChooseFolder(chooser.Heading, chooser.Start)
                            : frontEnd_.choosers.ChooseFile(chooser.Heading, chooser.Start, {chooser.Filter},
                                                            run::FileUse::GoOn);
    if (chosen) model_.SetAddrFileName(*chosen);
    Fill();
  }

  addresses::AddressExportDialog& model_;
  AddressDialogPlace place_;
  run::FrontEnd frontEnd_;
  QLineEdit* file_ = nullptr;
  QGroupBox* separators_ = nullptr;
};

}  // namespace

std::optional<addresses::AddressExportRequest> ShowAddressExportDialog(addresses::AddressExportDialog& model,
                                                                       const AddressDialogPlace& place,
                                                                       run::FrontEnd frontEnd,
                                                                       QWidget* parent) {
  AddressExportView view(model, place, frontEnd, parent);
  view.exec();
  return view.Request;
}

}  // namespace velmora::ui
