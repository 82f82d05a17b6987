// What the dialogs that repair the entries of archives say alike.
#pragma once

#include "run/front_ends.h"

namespace velmora::panes {

// "Vernüpfung" is deliberate: users know the text so.
inline void TellShortCutIsLeft(run::Prompts& prompts) {
  prompts.Message("Falsche Auswahl",
                  "Das ausgewählte Archiv ist eine Vernüpfung. Verknüpfungen werden nicht bearbeitet.",
                  run::Icon::Stop);
}

}  // namespace velmora::panes
