// The picture of a program, as the desktop shows it.
#pragma once

#include <QIcon>
#include <QString>

namespace velmora::ui {

// That of the desktop entry which starts the program, else that of the icon theme under the program's name;
// null when there is neither. `program`: a name or host path, with or without an extension.
QIcon IconOfProgram(const QString& program);

}  // namespace velmora::ui
