// The pictures behind the image keys. Each comes from the Breeze theme where that is installed and has it,
// else from the program's own drawings, which take their ink from the palette and so are readable on dark and
// light.
#pragma once

#include <QIcon>
#include <string_view>

namespace velmora::ui {

// The picture of a key of store/icon_keys.h; the one for unknown items for any other key.
QIcon IconOf(std::string_view key);
// One of the program's own drawings, by the name of its file; null when there is none.
QIcon OwnDrawing(std::string_view name);
// Whether the key has a row of its own in the table of pictures.
bool HasIcon(std::string_view key);
// Chooses the light or the dark Breeze theme by the palette of the application.
void ChooseIconTheme();

}  // namespace velmora::ui
