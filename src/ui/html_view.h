// Shows an HTML body without any content from outside: no network, no script, no file but the inline parts
// that it was handed.
#pragma once

#include <QTextBrowser>
#include <functional>

namespace velmora::ui {

class HtmlView final : public QTextBrowser {
 public:
  // The bytes of the part that a reference of the HTML names; empty for any other reference.
  using InlineParts = std::function<QByteArray(const QString& reference)>;

  explicit HtmlView(QWidget* parent = nullptr);

  void ShowHtml(const QString& html, InlineParts parts);
  // Each reference that was asked for and not shown counts; the viewer says so.
  int RefusedReferences() const { return refused_; }

  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;

 private:
  void FollowLink(const QUrl& link);

  InlineParts parts_;
  int refused_ = 0;
};

// Whether a link may be handed to the desktop: web pages and mail addresses only.
bool MayOpenLink(const QUrl& link);

}  // namespace velmora::ui
