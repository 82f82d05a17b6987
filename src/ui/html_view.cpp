#include "ui/html_view.h"

#include <QBuffer>
#include <QDesktopServices>
#include <QImageReader>
#include <algorithm>
#include <array>

#include "ui/prompts.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr qint64 MaxImagePixels = qint64{40} * 1000 * 1000;
constexpr auto LinkSchemes = std::to_array<const char*>({"http", "https", "mailto"});

// Null for what is no picture, or one that would not fit into a sensible amount of memory.
QImage DecodePicture(const QByteArray& bytes) {
  QBuffer buffer;
  buffer.setData(bytes);
  QImageReader reader(&buffer);
  const QSize size = reader.size();
  if (!size.isValid() || qint64{size.width()} * size.height() > MaxImagePixels) return {};
  return reader.read();
}

}  // namespace

bool MayOpenLink(const QUrl& link) {
  return link.isValid() && std::any_of(LinkSchemes.begin(), LinkSchemes.end(),
                                       [&](const char* scheme) { return link.scheme() == scheme; });
}

HtmlView::HtmlView(QWidget* parent) : QTextBrowser(parent) {
  setObjectName("HtmlBody");
  setAccessibleName("Nachrichtentext");
  setOpenLinks(false);
  // Mails are written for white paper: on the dark one of the desktop their dark letters would be lost.
  QPalette paper = palette();
  paper.setColor(QPalette::Base, Qt::white);
  paper.setColor(QPalette::Text, Qt::black);
  paper.setColor(QPalette::Link, QColor(0, 87, 174));
  setPalette(paper);
  connect(this, &QTextBrowser::anchorClicked, this, &HtmlView::FollowLink);
}

void HtmlView::ShowHtml(const QString& html, InlineParts parts) {
  parts_ = std::move(parts);
  refused_ = 0;
  setHtml(html);
}

QVariant HtmlView::loadResource(int type, const QUrl& name) {
  if (type == QTextDocument::ImageResource && parts_) {
    const QByteArray bytes = parts_(name.toString(QUrl::PrettyDecoded));
    if (!bytes.isEmpty()) {
      const QImage picture = DecodePicture(bytes);
      if (!picture.isNull()) return picture;
    }
  }
  ++refused_;
  // Something must be answered, or the toolkit would look for a file of that name.
  if (type == QTextDocument::ImageResource) {
    QImage none(1, 1, QImage::Format_ARGB32);
    none.fill(Qt::transparent);
    return none;
  }
  return QByteArray();
}

void HtmlView::doSetSource(const QUrl&, QTextDocument::ResourceType) {}

void HtmlView::FollowLink(const QUrl& link) {
  const std::string target = FromQt(link.toDisplayString());
  QtPrompts prompts;
  if (!MayOpenLink(link)) {
    prompts.Message("Verweis", "Dieser Verweis wird nicht geöffnet:\r\n" + target, run::Icon::Exclamation);
    return;
  }
  if (prompts.Question("Verweis", "Diesen Verweis außerhalb von Velmora öffnen?\r\n" + target,
                       run::Buttons::YesNo, run::Answer::No) == run::Answer::Yes) {
    QDesktopServices::openUrl(link);
  }
}

}  // namespace velmora::ui
