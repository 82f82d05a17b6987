// The dialog of a new archive: its name and the directory that it takes in the store.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmora::panes {

namespace new_archive_text {
inline constexpr std::string_view Title = "Neues Archiv anlegen";
inline constexpr std::string_view InpArcName = "Archivname :", InpArcDir = "Verzeichnis :";
inline constexpr std::string_view InpArcNameTip = "Anzeigename des neuen Archivs",
                                  InpArcDirTip =
                                      "Verzeichnisname des neuen Archivs. Ohne Angabe wird er vom Server "
                                      "vergeben.";
inline constexpr std::string_view DefaultName = "Neues Archiv", CancelButton = "Abbrechen";
}  // namespace new_archive_text

// What OK asks for.
struct NewArchiveRequest {
  std::string Name;       // may bear the directory in braces: "Name{DIR}"
  std::string Directory;  // "" leaves it to the store, or to the braces in the name

  // The name as the store takes it.
  std::string StoreName() const { return Directory.empty() ? Name : Name + "{" + Directory + "}"; }
};

class NewArchiveDialog {
 public:
  const std::string& InpArcName() const { return request_.Name; }
  const std::string& InpArcDir() const { return request_.Directory; }
  void SetInpArcName(std::string_view text) { request_.Name = text; }
  void SetInpArcDir(std::string_view text) { request_.Directory = text; }

  // OkButton is enabled once there is something to make.
  bool OkEnabled() const;
  // Nothing when there is no name and no directory.
  std::optional<NewArchiveRequest> Ok() const;

 private:
  NewArchiveRequest request_{std::string(new_archive_text::DefaultName), ""};
};

}  // namespace velmora::panes
