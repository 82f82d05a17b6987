#include "ui/file_icons.h"

#include <QFileInfo>
#include <QImageReader>
#include <QMimeDatabase>
#include <QPainter>

#include "panes/row_icons.h"
#include "ui/icons.h"
#include "ui/text.h"

namespace velmora::ui {
namespace {

constexpr qsizetype TypePrefixLength = 2;  // "ED" and "DI"
constexpr int CachedIcons = 2000;
constexpr qint64 MaxIconFileBytes = 1 << 20;
constexpr QSize IconFileSize(48, 48);
constexpr int WarningSizes[] = {16, 22, 32, 48};

// The picture within an icon file. Null for any other file: what lies in a directory is not to be trusted.
QIcon IconOfFile(const QString& hostPath) {
  if (QFileInfo(hostPath).size() > MaxIconFileBytes) return {};
  QImageReader reader(hostPath, "ico");
  const QSize size = reader.size();
  if (!size.isValid() || size.width() > 1024 || size.height() > 1024) return {};
  const QImage image = reader.read();
  return image.isNull() ? QIcon()
                        : QIcon(QPixmap::fromImage(
                              image.scaled(IconFileSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

}  // namespace

QIcon IconOfExtension(const QString& extension) {
  static const QMimeDatabase types;
  const QMimeType type = types.mimeTypeForFile("x." + extension.toLower(), QMimeDatabase::MatchExtension);
  for (const QString& name : {type.iconName(), type.genericIconName()}) {
    if (QIcon::hasThemeIcon(name)) return QIcon::fromTheme(name);
  }
  return IconOf("File");
}

QIcon RowIcons::OfKey(std::string_view key) { return Of({std::string(key)}); }

QIcon RowIcons::Of(const panes::RowIcon& icon) {
  const QString key = ToQt(icon.Key + icon.FilePath);
  const auto found = cache_.constFind(key);
  if (found != cache_.constEnd()) return *found;
  if (cache_.size() >= CachedIcons) cache_.clear();
  const QIcon made = Make(icon);
  cache_.insert(key, made);
  return made;
}

QIcon RowIcons::Warning(const panes::RowIcon& icon) {
  const QString key = "!" + ToQt(icon.Key + icon.FilePath);
  const auto found = cache_.constFind(key);
  if (found != cache_.constEnd()) return *found;
  const QIcon plain = Of(icon), warning = IconOf("Warning");
  QIcon made;
  for (const int size : WarningSizes) {
    QPixmap pixmap = plain.pixmap(size);
    const int part = size * 2 / 3;
    QPainter painter(&pixmap);
    painter.drawPixmap(size - part, size - part, warning.pixmap(part));
    made.addPixmap(pixmap);
  }
  cache_.insert(key, made);
  return made;
}

QIcon RowIcons::Make(const panes::RowIcon& icon) {
  if (!icon.FilePath.empty()) {
    const Result<std::string> host = fileSystem_.HostPath(icon.FilePath);
    const QIcon own = host ? IconOfFile(ToQt(*host)) : QIcon();
    if (!own.isNull()) return own;
    if (!icon.Fallback.empty()) return IconOf(icon.Fallback);
  }
  if (icon.Key == panes::SimpleFileKey) return IconOf("File");
  if (HasIcon(icon.Key)) return IconOf(icon.Key);
  return IconOfExtension(ToQt(icon.Key).mid(TypePrefixLength));
}

}  // namespace velmora::ui
