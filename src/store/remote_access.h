// What access.ini says of the remote access to an archive, for people: every key with its German label and
// its value decoded. Passwords come as they stand; who shows them decides how.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace velmora::store {

// The groups under which the values are shown.
enum class AccessGroup { Access, Parameters, Web, Replication };

// How a value is shown.
enum class AccessDecoder {
  Text,
  Password,   // never shown in clear unless that was asked for
  Speech,     // WAVE, T2S
  OnOff,      // 1 "ein", 0 "aus"
  TrueIsYes,  // "true" is "Ja"
  OneIsYes,   // "1" is "Ja"
  Reminder,   // minutes; "<keine>" when empty
  Calendar,   // 1 to 4; everything else is the day
  Editor,     // "HTML", else "Nur Text"
};

struct RemoteAccessKey {
  std::string_view Key, Label;
  AccessGroup Group;
  AccessDecoder Decoder;
};

// In the order in which they are shown.
inline constexpr auto RemoteAccessKeys = std::to_array<RemoteAccessKey>({
    {"USERNAME", "Benutzername", AccessGroup::Access, AccessDecoder::Text},
    {"PASSWORD", "Passwort", AccessGroup::Access, AccessDecoder::Password},
    {"PASSWORD2", "Passwort VJQ Web", AccessGroup::Access, AccessDecoder::Password},
    {"LANGUAGE", "Sprache", AccessGroup::Parameters, AccessDecoder::Text},
    {"VOICERECOGNITION", "Spracherkennung", AccessGroup::Parameters, AccessDecoder::Text},
    {"SPEECHTYPE", "Sprachausgabe", AccessGroup::Parameters, AccessDecoder::Speech},
    {"LeaveMsg", "Nachrichtenaufnahme", AccessGroup::Parameters, AccessDecoder::OnOff},
    {"ACCEPTCALLTIME", "Anruf annehmen nach (Sek)", AccessGroup::Parameters, AccessDecoder::Text},
    {"CLI1", "1.zugelassene CLI", AccessGroup::Parameters, AccessDecoder::Text},
    {"CLI2", "2.zugelassene CLI", AccessGroup::Parameters, AccessDecoder::Text},
    {"INBOXCONFIGURED", "Inbox konfiguriert", AccessGroup::Parameters, AccessDecoder::TrueIsYes},
    {"MSGTRACKING", "Message Tracking", AccessGroup::Web, AccessDecoder::OneIsYes},
    {"AUTOLOGIN", "Startbildschirm überspringen", AccessGroup::Web, AccessDecoder::OneIsYes},
    {"SPELLCHECKLANG", "Rechtschreibprüfung", AccessGroup::Web, AccessDecoder::Text},
    {"DEFAULTREMINDER", "Standard-Erinnerung", AccessGroup::Web, AccessDecoder::Reminder},
    {"DEFAULTCALTYPE", "Standard-Kalender", AccessGroup::Web, AccessDecoder::Calendar},
    {"DEFAULTEDITOR", "Standard-Editor", AccessGroup::Web, AccessDecoder::Editor},
    {"MARKREAD", "Als gelesen markieren", AccessGroup::Web, AccessDecoder::TrueIsYes},
    {"MAXENTRIES", "Anzahl der Einträge pro Seite", AccessGroup::Web, AccessDecoder::Text},
    {"USERREPLICA", "Benutzername", AccessGroup::Replication, AccessDecoder::Text},
    {"PASSWORDREPLICA", "Passwort", AccessGroup::Replication, AccessDecoder::Password},
});

// Rows that follow from the password alone.
inline constexpr std::string_view RemoteAccessEnabledLabel = "Remote Access aktiviert",
                                  NumericPasswordLabel = "Numerisches Passwort vergeben";

class RemoteAccess {
 public:
  // Nothing set where access.ini is missing or cannot be read. The first line of a key counts.
  static RemoteAccess Read(platform::FileSystem& fileSystem, std::string_view directory);
  static RemoteAccess Parse(std::string_view content);  // bytes in the code page

  // As it stands in the file; "" when it is missing. The key without regard to case.
  std::string Value(std::string_view key) const;
  bool IsEnabled() const { return !Value("PASSWORD").empty(); }
  bool HasNumericPassword() const;  // digits and nothing else

 private:
  std::map<std::string, std::string> values_;  // by folded key
};

// A value as it is shown; values without a text of their own come as they are.
std::string DecodeAccessValue(AccessDecoder decoder, std::string_view value);

// The user's announcement beside access.ini; nothing when it is not there.
namespace archive_file {
inline constexpr std::string_view Announcement = "public.wav";
}
inline constexpr std::string_view AnnouncementLabel = "Benutzerspezifische Voicebox-Ansage (public.wav)",
                                  NoAnnouncement = "nicht vorhanden";
std::optional<platform::FileEntry> FindAnnouncement(platform::FileSystem& fileSystem,
                                                    std::string_view directory);

// The columns that archive.srt can sort a view by, in the order of their numbers.
inline constexpr auto SortColumns = std::to_array<std::string_view>(
    {"Gelesen/Unlesen", "Datum und Zeit", "Betreff", "Von", "An", "Fehlernummer", "Marke (Laufende Nummer)",
     "Dauer", "Port", "Ausblenden", "Priorität", "Beginn", "Stoppzeit"});

}  // namespace velmora::store
