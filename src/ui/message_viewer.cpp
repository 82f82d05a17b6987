#include "ui/message_viewer.h"

#include <fmt/format.h>

#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "base/numbers.h"
#include "base/paths.h"
#include "panes/display_text.h"
#include "platform/make_folders.h"
#include "ui/dialog_parts.h"
#include "ui/fax_view.h"
#include "ui/html_view.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr QSize MessageViewerSize(860, 640);
constexpr std::int64_t MaxInlineBytes = std::int64_t{16} << 20;
constexpr std::string_view OutsideText = "Inhalte aus dem Netz werden nicht geladen.";
constexpr std::string_view OpenFolder = "Anhang";
constexpr int AttachmentRows = 3;
constexpr QSize VoiceSize(560, 260);

std::string SizeText(std::int64_t bytes) {
  return bytes < 1024 ? fmt::format("{} Byte", bytes) : FormatSize(bytes, "#,#0");
}

QLabel* MakeNotice(const std::string& text) {
  auto* const label = new QLabel(ToQt(text));
  label->setObjectName("L_Notice");
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setFrameShape(QFrame::StyledPanel);
  label->setMargin(6);
  return label;
}

}  // namespace

std::unique_ptr<MessageViewer> MessageViewer::Open(const Parts& parts, const panes::MessageRequest& request,
                                                   QWidget* parent) {
  Result<MessageContent> content = ReadMessageContent(*request.Archive, request.Key);
  if (!content) {
    parts.frontEnd.prompts.Message("Fehler",
                                   "Die Nachricht kann nicht gelesen werden.\r\n" + content.error().Text,
                                   run::Icon::Exclamation);
    return nullptr;
  }
  return std::unique_ptr<MessageViewer>(new MessageViewer(parts, request, *std::move(content), parent));
}

MessageViewer::MessageViewer(const Parts& parts, const panes::MessageRequest& request, MessageContent content,
                             QWidget* parent)
    : QDialog(parent), parts_(parts), request_(request), content_(std::move(content)) {
  setObjectName("MessageViewer");
  setWindowTitle(content_.Title.empty() ? QString("Nachricht") : ToQt(content_.Title));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  resize(content_.Kind == ContentKind::Voice ? VoiceSize : MessageViewerSize);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(MakeHeader());
  if (!content_.Notice.empty()) layout->addWidget(MakeNotice(content_.Notice));
  QWidget* const body = MakeBody();
  layout->addWidget(body, 1);
  if (!content_.Attachments.empty()) layout->addWidget(MakeAttachments());
  auto* const close = new QPushButton("S&chließen");
  close->setObjectName("CancelButton");
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  auto* const row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(close);
  layout->addLayout(row);
  body->setFocus();
}

QWidget* MessageViewer::MakeHeader() {
  auto* const header = new QWidget;
  header->setObjectName("F_Header");
  auto* const form = new QFormLayout(header);
  form->setContentsMargins(0, 0, 0, 0);
  form->setVerticalSpacing(0);
  for (const ContentLine& line : content_.Header) {
    auto* const value = new QLabel(ToQt(line.Value));
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setWordWrap(true);
    value->setMargin(TextMargin);
    value->setAccessibleName(ToQt(line.Label));
    auto* const caption = new QLabel(PlainCaption(line.Label));
    caption->setTextFormat(Qt::PlainText);
    caption->setMargin(TextMargin);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    form->addRow(caption, value);
  }
  return header;
}

QWidget* MessageViewer::MakeBody() {
  switch (content_.Kind) {
    case ContentKind::Html:
      return MakeHtml();
    case ContentKind::Fax:
      return MakeFax();
    case ContentKind::Voice:
      return MakeVoice();
    case ContentKind::Text:
    case ContentKind::Properties:
      break;
  }
  return MakeText();
}

QWidget* MessageViewer::MakeText() {
  auto* const text = new QPlainTextEdit;
  text->setObjectName("TextBody");
  text->setAccessibleName("Nachrichtentext");
  text->setReadOnly(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text->setPlainText(ToQt(content_.Text).replace("\r\n", "\n"));
  return text;
}

QWidget* MessageViewer::MakeHtml() {
  auto* const html = new HtmlView;
  html->ShowHtml(ToQt(content_.Html), [this](const QString& reference) { return InlinePart(reference); });
  // Pictures are asked for when the page is laid out.
  QTimer::singleShot(0, html, [this, html] {
    if (html->RefusedReferences() > 0) {
      static_cast<QVBoxLayout*>(layout())->insertWidget(1, MakeNotice(std::string(OutsideText)));
    }
  });
  return html;
}

QWidget* MessageViewer::MakeFax() {
  auto* const fax = new FaxView;
  const Result<std::string> host = parts_.fileSystem.HostPath(content_.FilePath);
  (void)fax->Load(host ? ToQt(*host) : QString());  // a problem is shown in place of the page
  return fax;
}

QWidget* MessageViewer::MakeVoice() {
  auto* const voice = new QWidget;
  voice->setObjectName("VoiceBody");
  voice->setAccessibleName("Sprachnachricht");
  auto* const layout = new QVBoxLayout(voice);
  const bool exists = parts_.fileSystem.FileExists(content_.FilePath);
  auto* const text = new QLabel(exists ? "Die Sprachnachricht wird mit dem Programm des Systems abgespielt."
                                       : "Die Sprachdatei ist nicht mehr vorhanden.");
  text->setObjectName("L_Voice");
  auto* const play = new QPushButton("&Anhören");
  play->setObjectName("PlayButton");
  play->setEnabled(exists);
  play->setAutoDefault(false);
  voice->setFocusProxy(play);
  connect(play, &QPushButton::clicked, this,
          [this] { parts_.frontEnd.viewers.OpenDocument(content_.FilePath); });
  layout->addWidget(text);
  layout->addWidget(play, 0, Qt::AlignLeft);
  layout->addStretch(1);
  return voice;
}

QWidget* MessageViewer::MakeAttachments() {
  auto* const frame = new QWidget;
  auto* const row = new QHBoxLayout(frame);
  row->setContentsMargins(0, 0, 0, 0);
  attachments_ = new QListWidget;
  attachments_->setObjectName("AttachmentList");
  attachments_->setAccessibleName("Anhänge");
  attachments_->setUniformItemSizes(true);
  for (const ContentAttachment& attachment : content_.Attachments) {
    const std::string caption =
        fmt::format("{}  ({}){}", panes::DisplayText(attachment.Name), SizeText(attachment.Size),
                    attachment.IsInline ? "  – Teil des Textes" : "");
    attachments_->addItem(ToQt(caption));
  }
  attachments_->setCurrentRow(0);
  attachments_->setFixedHeight(attachments_->sizeHintForRow(0) * AttachmentRows + 8);
  auto* const open = new QPushButton("Anhang ö&ffnen");
  open->setObjectName("OpenAttachment");
  auto* const save = new QPushButton("Anhang &speichern ...");
  save->setObjectName("SaveAttachment");
  auto* const buttons = new QVBoxLayout;
  auto* const saveAll = new QPushButton("&Alle speichern ...");
  saveAll->setObjectName("SaveAllAttachments");
  for (QPushButton* const button : {open, save, saveAll}) {
    button->setAutoDefault(false);
    buttons->addWidget(button);
  }
  saveAll->setVisible(content_.Attachments.size() > 1);
  buttons->addStretch(1);
  row->addWidget(attachments_, 1);
  row->addLayout(buttons);
  connect(open, &QPushButton::clicked, this, [this] { OpenAttachment(attachments_->currentRow()); });
  connect(save, &QPushButton::clicked, this, [this] { SaveAttachment(attachments_->currentRow()); });
  connect(saveAll, &QPushButton::clicked, this, &MessageViewer::SaveAllAttachments);
  connect(attachments_, &QListWidget::itemActivated, this,
          [this] { OpenAttachment(attachments_->currentRow()); });
  return frame;
}

bool MessageViewer::SaveAs(int row, const std::string& path, bool exclusive) {
  const auto item = request_.Archive->GetEntry(request_.Key);
  Status saved = item ? Status() : Fail(item.error());
  if (saved) {
    const auto attachment =
        (*item)->Attachments().Item(content_.Attachments[static_cast<std::size_t>(row)].Index);
    saved = attachment ? (*attachment)->SaveAs(path, exclusive) : Status(Fail(attachment.error()));
  }
  if (!saved) {
    parts_.frontEnd.prompts.Message(
        "Fehler", "Der Anhang kann nicht gespeichert werden.\r\n" + path + "\r\n" + saved.error().Text,
        run::Icon::Stop);
  }
  return saved.has_value();
}

std::string MessageViewer::PrivateDirectory() {
  // A directory for each attachment: it keeps its own name, and none is ever written over.
  const std::string name = parts_.fileSystem.UniqueFileName(parts_.TempDir, std::string(OpenFolder));
  const std::string path = JoinPath(parts_.TempDir, name);
  if (const Status made = platform::MakeFolders(parts_.fileSystem, path, true); !made) {
    parts_.frontEnd.prompts.Message("Fehler", path + "\r\n" + made.error().Text, run::Icon::Stop);
    return {};
  }
  return path;
}

void MessageViewer::OpenAttachment(int row) {
  if (row < 0 || row >= static_cast<int>(content_.Attachments.size())) return;
  const std::string& name = content_.Attachments[static_cast<std::size_t>(row)].Name;
  if (IsExecutableName(name)) {
    parts_.frontEnd.prompts.Message("Anhang öffnen",
                                    "Programme werden nicht ausgeführt. Der Anhang kann gespeichert werden.",
                                    run::Icon::Exclamation);
    return;
  }
  const std::string directory = PrivateDirectory();
  if (directory.empty()) return;
  const std::string path = JoinPath(directory, name);
  if (!SaveAs(row, path, true)) return;
  // What the other program changes would be lost: so it cannot change anything. Only a courtesy.
  (void)parts_.fileSystem.SetReadOnly(path, true);
  parts_.frontEnd.viewers.OpenDocument(path);
}

void MessageViewer::SaveAttachment(int row) {
  if (row < 0 || row >= static_cast<int>(content_.Attachments.size())) return;
  const auto path = parts_.frontEnd.choosers.ChooseFile(
      "Anhang speichern", content_.Attachments[static_cast<std::size_t>(row)].Name,
      {{"Alle Dateien (*.*)", "*.*"}}, run::FileUse::Replace);
  if (path) (void)SaveAs(row, *path, false);  // a failure has been told
}

void MessageViewer::SaveAllAttachments() {
  const auto folder = parts_.frontEnd.choosers.ChooseFolder("Alle Anhänge speichern", "");
  if (!folder) return;
  for (int row = 0; row < static_cast<int>(content_.Attachments.size()); ++row) {
    const std::string& name = content_.Attachments[static_cast<std::size_t>(row)].Name;
    // What hinders one, such as a full disk, mostly hinders the others, too; it has been told.
    if (!SaveAs(row, JoinPath(*folder, parts_.fileSystem.UniqueFileName(*folder, name)), true)) return;
  }
}

QByteArray MessageViewer::InlinePart(const QString& reference) {
  const int part = InlinePartOf(FromQt(reference));
  if (part == 0 || part > static_cast<int>(content_.Attachments.size())) return {};
  const ContentAttachment& attachment = content_.Attachments[static_cast<std::size_t>(part - 1)];
  if (attachment.Size > MaxInlineBytes) return {};
  const auto item = request_.Archive->GetEntry(request_.Key);
  if (!item) return {};
  const auto stored = (*item)->Attachments().Item(attachment.Index);
  if (!stored) return {};
  const std::string path =
      JoinPath(parts_.TempDir, parts_.fileSystem.UniqueFileName(parts_.TempDir, "Teil.dat"));
  if (!(*stored)->SaveAs(path, true)) return {};
  const Result<std::string> bytes = parts_.fileSystem.ReadFile(path);
  (void)parts_.fileSystem.DeleteFile(path, true);  // the end of the program removes what is left
  return bytes ? QByteArray(bytes->data(), static_cast<qsizetype>(bytes->size())) : QByteArray();
}

}  // namespace velmora::ui
