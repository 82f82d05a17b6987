#include "ui/program_icon.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace velmora::ui {
namespace {

constexpr qint64 MaxEntryBytes = 1 << 20;

// What a desktop entry says of itself (freedesktop.org, desktop entries).
struct DesktopEntry {
  QString Program, Icon;
};

// The first word of a command line, without its quotes.
QString FirstWord(const QString& line) {
  if (line.startsWith('"')) return line.mid(1, line.indexOf('"', 1) - 1);
  return line.section(' ', 0, 0);
}

DesktopEntry ReadEntry(const QString& path) {
  DesktopEntry entry;
  QFile file(path);
  if (file.size() > MaxEntryBytes || !file.open(QIODevice::ReadOnly)) return entry;
  bool isInEntry = false;
  for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
    const QString text = line.trimmed();
    if (text.startsWith('[')) isInEntry = text == "[Desktop Entry]";
    if (!isInEntry) continue;
    if (text.startsWith("Exec=")) entry.Program = FirstWord(text.mid(5).trimmed());
    if (text.startsWith("Icon=")) entry.Icon = text.mid(5).trimmed();
  }
  return entry;
}

bool Starts(const DesktopEntry& entry, const QString& program) {
  if (entry.Program.isEmpty()) return false;
  const bool bothHavePlaces = entry.Program.startsWith('/') && program.startsWith('/');
  return bothHavePlaces ? entry.Program == program
                        : QFileInfo(entry.Program).fileName() == QFileInfo(program).fileName();
}

QIcon Load(const QString& name) {
  if (QDir::isAbsolutePath(name)) return QFileInfo::exists(name) ? QIcon(name) : QIcon();
  return QIcon::hasThemeIcon(name) ? QIcon::fromTheme(name) : QIcon();
}

}  // namespace

QIcon IconOfProgram(const QString& program) {
  if (program.isEmpty()) return {};
  for (const QString& folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
    for (const QFileInfo& file : QDir(folder).entryInfoList({"*.desktop"}, QDir::Files)) {
      const DesktopEntry entry = ReadEntry(file.filePath());
      if (!Starts(entry, program)) continue;
      const QIcon icon = Load(entry.Icon);
      if (!icon.isNull()) return icon;
    }
  }
  return Load(QFileInfo(program).completeBaseName());
}

}  // namespace velmora::ui
