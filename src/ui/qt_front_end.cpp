#include "ui/qt_front_end.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <utility>

#include "base/code_page.h"
#include "base/line_ends.h"
#include "base/text.h"
#include "platform/host.h"
#include "ui/archive_tree_dialog.h"
#include "ui/text.h"
#include "ui/text_viewer.h"
#include "ui/user_chooser.h"

namespace velmora::ui {
namespace {

constexpr std::size_t ShownTextBytes = std::size_t{32} << 20;
constexpr std::string_view CutNotice = "\n\n[Der Text ist länger, als hier angezeigt werden kann.]";

// What a name typed without an extension gets: "txt" of "Textdatei (*.txt)", nothing of "Alle Dateien (*)".
QString SuffixOf(const QString& filter) {
  return filter.section("(*.", 1, 1).section(')', 0, 0).section(' ', 0, 0);
}

}  // namespace

// --- Choosers. ---

QString QtChoosers::HostPathOf(std::string_view path) const {
  if (path.empty()) return {};
  const Result<std::string> host = fileSystem_->HostPath(path);
  return host ? ToQt(*host) : QString();
}

// Where a chooser begins that is given no place of its own: where the last file was chosen.
QString QtChoosers::StartOf(std::string_view start) const {
  const QString folder = lastFolder_.isEmpty()
                             ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                             : lastFolder_;
  if (start.find('\\') != std::string_view::npos) return HostPathOf(start);
  return folder + "/" + ToQt(start);
}

std::optional<std::string> QtChoosers::ChooseFolder(std::string_view title, std::string_view start) {
  if (fileSystem_ == nullptr) return std::nullopt;
  const QString chosen = QFileDialog::getExistingDirectory(BoxParent(), ToQt(title), StartOf(start));
  if (chosen.isEmpty()) return std::nullopt;
  return fileSystem_->FromHostPath(FromQt(chosen));
}

QString ToQtFilters(const std::vector<run::FileFilter>& filters) {
  QStringList made;
  for (const run::FileFilter& filter : filters) {
    QString masks = ToQt(filter.Mask).replace(';', ' ');
    masks.replace("*.*", "*");
    const QString caption = ToQt(filter.Caption).section('(', 0, 0).trimmed();
    made << caption + " (" + masks + ")";
  }
  return made.join(";;");
}

std::optional<std::string> QtChoosers::ChooseFile(std::string_view title, std::string_view start,
                                                  const std::vector<run::FileFilter>& filters,
                                                  run::FileUse use) {
  if (fileSystem_ == nullptr) return std::nullopt;
  const QFileInfo place(StartOf(start));
  QFileDialog dialog(BoxParent(), ToQt(title), place.path(), ToQtFilters(filters));
  const bool mustExist = use == run::FileUse::Read;
  dialog.setAcceptMode(mustExist ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, use == run::FileUse::GoOn);
  if (!place.fileName().isEmpty()) dialog.selectFile(place.fileName());
  const auto setSuffix = [&](const QString& filter) { dialog.setDefaultSuffix(SuffixOf(filter)); };
  setSuffix(dialog.selectedNameFilter());
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, setSuffix);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  lastFolder_ = dialog.directory().absolutePath();
  return fileSystem_->FromHostPath(FromQt(dialog.selectedFiles().first()));
}

std::optional<std::string> QtChoosers::ChooseArchive(std::string_view title, std::string_view startFullPath) {
  if (session_ == nullptr || session_->Account == nullptr) return std::nullopt;
  ArchiveTreeDialog dialog(*session_, BoxParent());
  dialog.setWindowTitle(ToQt(title));
  dialog.SelectArchive(startFullPath);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.SelectedPath();
}

std::optional<std::string> QtChoosers::ChooseUser(std::string_view title) {
  if (session_ == nullptr || session_->Account == nullptr) return std::nullopt;
  const auto users = session_->Account->Users();
  if (!users) return std::nullopt;
  UserChooser dialog(ToQt(title), *users, BoxParent());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.SelectedName();
}

// --- Status. ---

void QtStatusDisplay::SetStatusText(std::string_view text) {
  if (ShowText) ShowText(ToQt(text));
}

void QtStatusDisplay::ShowWait(std::string_view text) {
  if (depth_++ == 0) QApplication::setOverrideCursor(Qt::WaitCursor);
  if (text.empty() || box_ != nullptr) return;
  box_ = new QWidget(BoxParent(), Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  box_->setObjectName("WaitBox");
  box_->setWindowTitle("Bitte warten");
  auto* const label = new QLabel(ToQt(text));
  label->setTextFormat(Qt::PlainText);
  label->setContentsMargins(24, 16, 24, 16);
  auto* const layout = new QVBoxLayout(box_);
  layout->addWidget(label);
  box_->show();
  QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtStatusDisplay::EndWait() {
  if (depth_ == 0 || --depth_ > 0) return;
  delete box_;
  QApplication::restoreOverrideCursor();
}

// --- Viewers. ---

void QtViewers::SaveText(const std::string& name, const std::string& text,
                         const std::vector<run::FileFilter>& saveFilters) {
  const std::optional<std::string> path =
      choosers_.ChooseFile("Speichern unter", name, saveFilters, run::FileUse::Replace);
  if (!path) return;
  const Status saved = fileSystem_->ReplaceFile(*path, ToCodePage(WithCrLf(text)));
  if (!saved) {
    prompts_.Message("Fehler", *path + "\r\n" + saved.error().Text, run::Icon::Stop);
  }
}

void QtViewers::ShowText(std::string_view title, std::string_view text, const run::TextUses& uses) {
  const bool isCut = text.size() > ShownTextBytes;
  QString shown = ToQt(text.substr(0, ShownTextBytes)).replace("\r\n", "\n");
  if (isCut) shown += ToQt(CutNotice);
  TextViewer::Uses buttons;
  buttons.Delete = uses.Delete;
  if (!uses.SaveFilters.empty() && fileSystem_ != nullptr) {
    buttons.Save = [this, name = std::string(title), whole = std::string(text), filters = uses.SaveFilters] {
      SaveText(name, whole, filters);
    };
  }
  TextViewer viewer(ToQt(title), shown, buttons, BoxParent());
  const AnswerCursor cursor;
  viewer.exec();
}

void QtViewers::OpenDocument(std::string_view path) {
  if (fileSystem_ == nullptr) return;
  const Status opened = platform::OpenDocument(*fileSystem_, path);
  if (!opened) {
    prompts_.Message("Fehler", std::string(path) + "\r\n" + opened.error().Text, run::Icon::Exclamation);
  }
}

// --- The set. ---

class QtFrontEnd::Lazy final : run::Prompts, run::Choosers, run::Progress, run::StatusDisplay, run::Viewers {
 public:
  Lazy(QtFrontEnd& front, std::function<void()> ensure) : front_(front), ensure_(std::move(ensure)) {}
  run::FrontEnd Set() { return {*this, *this, *this, *this, *this}; }

 private:
  void Message(std::string_view title, std::string_view text, run::Icon icon) override {
    ensure_();
    front_.prompts_.Message(title, text, icon);
  }
  run::Answer Question(std::string_view title, std::string_view text, run::Buttons buttons,
                       run::Answer defaultAnswer) override {
    ensure_();
    return front_.prompts_.Question(title, text, buttons, defaultAnswer);
  }
  std::optional<std::string> InputLine(std::string_view title, std::string_view label,
                                       std::string_view value) override {
    ensure_();
    return front_.prompts_.InputLine(title, label, value);
  }
  std::optional<std::string> ChooseFolder(std::string_view title, std::string_view start) override {
    ensure_();
    return front_.choosers_.ChooseFolder(title, start);
  }
  std::optional<std::string> ChooseFile(std::string_view title, std::string_view start,
                                        const std::vector<run::FileFilter>& filters,
                                        run::FileUse use) override {
    ensure_();
    return front_.choosers_.ChooseFile(title, start, filters, use);
  }
  std::optional<std::string> ChooseArchive(std::string_view title, std::string_view startFullPath) override {
    ensure_();
    return front_.choosers_.ChooseArchive(title, startFullPath);
  }
  std::optional<std::string> ChooseUser(std::string_view title) override {
    ensure_();
    return front_.choosers_.ChooseUser(title);
  }
  void Show(std::string_view title) override {
    ensure_();
    front_.progress_.Show(title);
  }
  void SetArchiveText(std::string_view text) override { front_.progress_.SetArchiveText(text); }
  void SetItemText(std::string_view text) override { front_.progress_.SetItemText(text); }
  void SetBar(std::int64_t done, std::int64_t total) override { front_.progress_.SetBar(done, total); }
  void Close() override { front_.progress_.Close(); }
  bool Pump() override { return QCoreApplication::instance() != nullptr && front_.progress_.Pump(); }
  void SetStatusText(std::string_view text) override { front_.status_.SetStatusText(text); }
  // At the start and at the end of the process no box is worth a toolkit.
  void ShowWait(std::string_view text) override {
    if (QCoreApplication::instance() != nullptr) front_.status_.ShowWait(text);
  }
  void EndWait() override {
    if (QCoreApplication::instance() != nullptr) front_.status_.EndWait();
  }
  void ShowText(std::string_view title, std::string_view text, const run::TextUses& uses) override {
    ensure_();
    front_.viewers_.ShowText(title, text, uses);
  }
  void OpenDocument(std::string_view path) override {
    ensure_();
    front_.viewers_.OpenDocument(path);
  }

  QtFrontEnd& front_;
  std::function<void()> ensure_;
};

QtFrontEnd::QtFrontEnd(std::function<void()> ensureApplication)
    : viewers_(prompts_, choosers_), lazy_(std::make_unique<Lazy>(*this, std::move(ensureApplication))) {}

QtFrontEnd::~QtFrontEnd() = default;

run::FrontEnd QtFrontEnd::Set() { return lazy_->Set(); }

void QtFrontEnd::SetSession(platform::FileSystem* fileSystem, store::Session* session) {
  choosers_.SetFileSystem(fileSystem);
  choosers_.SetSession(session);
  viewers_.SetFileSystem(fileSystem);
}

}  // namespace velmora::ui
