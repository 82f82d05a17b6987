#include "ui/icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <algorithm>
#include <array>

#include "ui/text.h"

namespace velmora::ui {
namespace {

// The colour of the theme's lines, in its files and in our drawings.
constexpr const char* Ink = "#232629";
constexpr double DisabledOpacity = 0.4;
constexpr int DarkBelow = 128;

struct Picture {
  std::string_view Key;
  std::string_view Theme;    // name in the Breeze theme, "" where our own drawing says it better
  std::string_view Drawing;  // own drawing
};

constexpr auto Pictures = std::to_array<Picture>({
    // --- Tool bar. ---
    {"Save", "document-save", "save"},
    {"New", "document-new", "new"},
    {"Back", "go-previous", "back"},
    {"Print", "document-print", "print"},
    {"Copy", "edit-copy", "copy"},
    {"Cut", "edit-cut", "cut"},
    {"Paste", "edit-paste", "paste"},
    {"Hdisk", "drive-harddisk", "disk"},
    {"Fdisk", "media-floppy", "floppy"},
    {"Cdisk", "media-optical", "disc"},
    {"RemDrv", "drive-removable-media", "stick"},
    {"Netwrk", "folder-network", "network"},
    {"NwNBH", "network-workgroup", "network"},
    {"Refresh", "view-refresh", "refresh"},
    {"Options", "configure", "options"},
    {"Properties", "document-properties", "properties"},
    {"Delete", "edit-delete", "delete"},
    {"Index", "", "index"},
    {"DspIndex", "", "index-view"},
    {"NewFolder", "folder-new", "folder-new"},
    {"FolderIndex", "", "index-folder"},
    {"ArchiveTree", "view-list-tree", "tree"},
    {"Filter", "view-filter", "filter"},
    {"Link", "insert-link", "link"},
    {"AddrImp", "", "address-import"},
    {"AddrExp", "", "address-export"},
    {"Warning", "dialog-warning", "warning"},
    {"NotePad", "accessories-text-editor", "notepad"},
    {"UserHome", "user-home", "home"},
    {"ObjStat", "office-chart-bar", "chart"},
    {"ObjDoc", "office-report", "report"},
    // --- Archives and directories. ---
    {"ALink", "", "archive-link"},
    {"FolderClosed", "folder", "folder"},
    {"FolderOpen", "folder-open", "folder-open"},
    {"FolderBack", "go-up", "folder-up"},
    {"File", "text-x-generic", "file"},
    {"AArchive", "folder", "folder"},
    // Also every archive that is no special one; AUserRootRem the same, open to remote access.
    {"AUserRoot", "folder", "folder"},
    {"ACommon", "folder-network", "network"},
    {"AFaxBox", "", "fax"},
    {"AAddress", "x-office-address-book", "addresses"},
    {"ATextModules", "", "text"},
    {"AWeb", "folder-html", "globe"},
    {"AGroups", "", "group"},
    {"AForms", "", "form"},
    {"ANews", "view-pim-news", "news"},
    {"ATemplates", "folder-templates", "template"},
    {"AFormsInclude", "", "form"},
    {"ATVIndex", "", "tv"},
    {"AMyDavid", "user-home", "home"},
    {"AIn", "mail-folder-inbox", "in"},
    {"AOut", "mail-folder-outbox", "out"},
    {"APTextModules", "", "text"},
    {"AContacts", "view-pim-contacts", "users"},
    {"ADrafts", "", "draft"},
    {"APAddress", "x-office-address-book", "addresses"},
    {"ACal", "view-calendar", "calendar"},
    {"ARemind", "", "remind"},
    {"ATasks", "view-task", "task"},
    {"ALinks", "insert-link", "link"},
    {"APTemplates", "folder-templates", "template"},
    {"ATrash", "user-trash", "trash"},
    {"APPortal", "globe", "globe"},
    {"AProject", "", "project"},
    {"APNews", "view-pim-news", "news"},
    {"APSpam", "mail-mark-junk", "spam"},
    {"AUserRootRem", "folder-remote", "remote"},
    // --- Items. ---
    {"IUnknown", "unknown", "unknown"},
    {"IAddress", "view-pim-contacts", "users"},
    {"IMail", "mail-message", "mail"},
    {"IFax", "", "fax"},
    {"ISMS", "", "sms"},
    {"IVoiceMail", "", "voice"},
    {"ITMail", "", "phone-mail"},
    {"ITermin", "", "appointment"},
    {"ILink", "insert-link", "link"},
    {"IVideo", "video-x-generic", "video"},
    {"IAudio", "audio-x-generic", "audio"},
    {"ITvProg", "", "tv"},
    {"ITask", "view-task", "task"},
    {"IMailAtt", "", "mail-attachment"},
    {"IDocument", "x-office-document", "document"},
    {"INote", "", "note"},
    {"ISysMsg", "", "system-message"},
    {"ISysInfo", "", "system-info"},
    {"IModStart", "", "start"},
    {"IModTerm", "", "stop"},
    {"IDFML", "", "dfml"},
    {"IRoutEn", "", "enabled"},
    {"IRoutDi", "", "disabled"},
    {"IForwarding", "mail-forward", "forward"},
    {"IXMedia", "", "media"},
    {"IAutoReply", "mail-reply-sender", "reply"},
    {"INewMessage", "mail-message-new", "mail-new"},
    {"IMisc", "", "misc"},
    {"INewStreamTag", "", "tag"},
    {"IGeneral", "", "general"},
    {"IStdEXE", "", "program"},
});

const Picture* Find(std::string_view key) {
  const auto found = std::find_if(Pictures.begin(), Pictures.end(),
                                  [&](const Picture& picture) { return picture.Key == key; });
  return found == Pictures.end() ? nullptr : &*found;
}

// Draws an SVG with the present ink of the palette, so that it follows a change between light and dark.
class DrawingEngine final : public QIconEngine {
 public:
  explicit DrawingEngine(QByteArray svg) : svg_(std::move(svg)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    if (mode == QIcon::Disabled) {  // as a whole: lines that cross would show
      painter->save();
      painter->setOpacity(DisabledOpacity);
      painter->drawPixmap(rect, pixmap(rect.size(), QIcon::Normal, QIcon::Off));
      painter->restore();
      return;
    }
    const QPalette palette = QApplication::palette();
    const QColor ink =
        palette.color(mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText);
    QSvgRenderer renderer(QByteArray(svg_).replace(Ink, ink.name().toLatin1()));
    painter->save();
    renderer.render(painter, QRectF(rect));
    painter->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }
  QIconEngine* clone() const override { return new DrawingEngine(svg_); }

 private:
  QByteArray svg_;
};

// An icon of the theme. The style's own picture of a disabled one can hardly be told from the enabled one on
// dark ground.
class ThemeEngine final : public QIconEngine {
 public:
  explicit ThemeEngine(QIcon icon) : icon_(std::move(icon)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const bool isDisabled = mode == QIcon::Disabled;
    painter->save();
    if (isDisabled) painter->setOpacity(DisabledOpacity);
    icon_.paint(painter, rect, Qt::AlignCenter, isDisabled ? QIcon::Normal : mode, state);
    painter->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1);
  }
  // `size` in dots: the theme has pictures of its own for each scale.
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
    if (mode != QIcon::Disabled) return icon_.pixmap(size / scale, scale, mode, state);
    const QPixmap whole = icon_.pixmap(size / scale, scale, QIcon::Normal, state);
    QPixmap faint(whole.size());
    faint.fill(Qt::transparent);
    QPainter painter(&faint);
    painter.setOpacity(DisabledOpacity);
    painter.drawPixmap(QRect(QPoint(0, 0), faint.size()), whole);
    return faint;
  }
  QIconEngine* clone() const override { return new ThemeEngine(icon_); }

 private:
  QIcon icon_;
};

}  // namespace

bool HasIcon(std::string_view key) { return Find(key) != nullptr; }

QIcon OwnDrawing(std::string_view name) {
  QFile file(":/icons/" + ToQt(name) + ".svg");
  if (!file.open(QIODevice::ReadOnly)) {
    return {};
  }
  return QIcon(new DrawingEngine(file.readAll()));  // the icon owns its engine
}

QIcon IconOf(std::string_view key) {
  const Picture* picture = Find(key);
  if (picture == nullptr) {
    return IconOf("IUnknown");
  }
  const QString theme = ToQt(picture->Theme);
  if (!theme.isEmpty() && QIcon::hasThemeIcon(theme)) {
    return QIcon(new ThemeEngine(QIcon::fromTheme(theme)));  // the icon owns its engine
  }
  return OwnDrawing(picture->Drawing);
}

void ChooseIconTheme() {
  const QColor window = QApplication::palette().color(QPalette::Window);
  QIcon::setThemeName(window.lightness() < DarkBelow ? "breeze-dark" : "breeze");
}

}  // namespace velmora::ui
