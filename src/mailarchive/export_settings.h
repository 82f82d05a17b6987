// What the settings say about an export.
#pragma once

#include "mailarchive/export_options.h"
#include "settings/options.h"

namespace velmora::mailarchive {

// Layout, names and filter by the settings. What is written of a message is off, and the texts of the forms
// are empty: they are for the dialog or the control file to say.
ExportOptions ExportOptionsOf(const settings::Options& options);

}  // namespace velmora::mailarchive
