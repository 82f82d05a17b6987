// The pictures of rows: those of the image list, and those of file types as the desktop has them. Each is
// looked up once.
#pragma once

#include <QHash>
#include <QIcon>

#include "panes/pane.h"
#include "platform/file_system.h"

namespace velmora::ui {

class RowIcons {
 public:
  explicit RowIcons(platform::FileSystem& fileSystem) : fileSystem_(fileSystem) {}

  QIcon Of(const panes::RowIcon& icon);
  QIcon OfKey(std::string_view key);
  // The same with the warning in its corner.
  QIcon Warning(const panes::RowIcon& icon);
  // The settings of the pictures have changed.
  void Forget() { cache_.clear(); }

 private:
  QIcon Make(const panes::RowIcon& icon);

  platform::FileSystem& fileSystem_;
  QHash<QString, QIcon> cache_;
};

// The picture that the desktop has for files of an extension, given in any case; that of any file otherwise.
QIcon IconOfExtension(const QString& extension);

}  // namespace velmora::ui
