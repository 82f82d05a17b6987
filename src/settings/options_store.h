// Options from and to the values of the store.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/options.h"
#include "settings/product.h"
#include "settings/toml_text.h"
#include "settings/values.h"

namespace velmora::settings {

// What the defaults depend on.
struct DefaultPlaces {
  std::string PersonalDir;         // with "\" at its end
  std::string DesignPath;          // the directory of the form sets that come with the program
  std::string DefaultArchivePath;  // FullPath of the default archive
};

Options DefaultOptions(const DefaultPlaces& places, const ProductVersion& version);
// What is not stored, or stored in another type, has its default.
Options LoadOptions(const Values& stored, std::string_view server, const Options& defaults);

// What saving has to write: the values that changed since they were loaded as `loaded`, and those that are
// not stored yet. A value that this process did not touch stays as another process wrote it. The switch
// AutoSaveSettings is left out (AutoSaveChange), so is the list of servers (server_list.h).
std::vector<Change> SaveChanges(const Values& stored, std::string_view server, const Options& options,
                                const Options& loaded);
Change AutoSaveChange(const Options& options);
// What a new version wipes: all values of the user but those that it keeps.
std::vector<Change> ClearChanges(std::string_view server);
void ClearLastFiles(Options& options);

// --- The version record. ---
std::vector<Change> VersionChanges(const ProductVersion& version);
// The revision does not count.
bool VersionUnchanged(const Values& stored, const ProductVersion& version);

// --- Tabs: each is stored as its eight fields, each between double quotes, joined by commas. ---
std::string FormatTab(const TabFields& fields, std::size_t tab);
// A comma within a field splits it; a piece too short to have quotes is an empty field.
void ParseTab(std::string_view stored, TabFields& fields, std::size_t tab);

}  // namespace velmora::settings
