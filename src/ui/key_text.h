// A key as the table of keys writes it.
#pragma once

#include <QKeyEvent>
#include <string>

namespace velmora::ui {

// "F5", "Ctrl+R", "Num+*": without the modifiers that a layout needs for a character (Ctrl+/ is Ctrl+Shift+7
// on a German keyboard), and without telling the number block apart but for the keys of the selection.
std::string KeyText(const QKeyEvent& event);

}  // namespace velmora::ui
