// What the about box and the system information say.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/product.h"
#include "store/session.h"

namespace velmora::panes {

namespace about_text {
inline constexpr std::string_view Title = "Über Velmora";
}  // namespace about_text

// Product, version and copyright, a line each.
std::string AboutText(const settings::ProductVersion& version);

// A row of the system information: a label and its value.
struct InformationRow {
  std::string_view Label;
  std::string Value;
};
inline constexpr std::string_view SystemInformationTitle = "System-Informationen";
struct InformationPlaces {
  std::string_view ErrorLog, TempDir, DesignPath, ConfigDirectory;
};
std::vector<InformationRow> SystemInformation(store::Session& session,
                                              const settings::ProductVersion& version,
                                              const InformationPlaces& places);

}  // namespace velmora::panes
