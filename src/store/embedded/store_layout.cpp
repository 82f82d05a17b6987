#include "store/embedded/store_layout.h"

#include <algorithm>
#include <array>

#include "base/paths.h"
#include "base/text.h"
#include "store/user_directory.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

constexpr std::string_view UserRootsDirectory = "user";

// Outside the archives that all users share (common, address, resource) stands what is the administrators'.
constexpr std::array<FixedArchive, 25> SystemArchiveTable{{
    {special::UserRoots, UserRootsDirectory, "Benutzer", 0, true},
    {special::Common, "common", "Gemeinsam"},
    {3, "faxbox", "FaxBox", display_as::InBox, true},
    {special::PublicAddresses, "address", "Adressen", display_as::Address},
    {0, "resource", "Ressourcen"},
    {0, "resource\\project", "Projekte"},
    {5, "resource\\text", "Textbausteine"},
    {8, "resource\\forms", "Formulare"},
    {10, "resource\\template", "Vorlagen"},
    {11, "resource\\formsinc", "Formularbausteine"},
    {6, "common\\web", "Web", display_as::HtmlLayout},
    {7, "common\\groups", "Gruppen"},
    {9, "common\\news", "Newsgroups", display_as::News},
    {12, "common\\tvindex", "TV-Index", display_as::Media},
    {0, "system", "System", 0, true},
    {0, "system\\david", "David", 0, true},
    {0, "system\\david\\domains", "Domains", 0, true},
    {0, "system\\david\\domains\\yessend", "Erlaubte Domains", 0, true},
    {0, "system\\david\\domains\\nosend", "Nicht erlaubte Domains", 0, true},
    {0, "system\\david\\domains\\authdoms", "Authentifizierungs-Domains", 0, true},
    {0, "system\\david\\domains\\etrndoms", "ETRN-Domains", 0, true},
    {0, "system\\david\\dvgrab", "Grabbing Server", 0, true},
    {0, "system\\news", "News", display_as::News, true},
    {0, "system\\spam", "Spam", display_as::InBox, true},
    {0, "system\\trash", "Papierkorb", 0, true},
}};

// The user's root itself (kind 100) is no row: its name is the user's.
constexpr std::array<FixedArchive, 14> UserArchiveTable{{
    {special::Inbox, "in", "Eingang", display_as::InBox},
    {special::Outgoing, "out", "Ausgang", display_as::OutBox},
    {103, "text", "Textbausteine"},
    {104, "contacts", "Kontakte", display_as::Address},
    {105, "drafts", "Entwürfe"},
    {special::PersonalAddresses, "address", "Adressen", display_as::Address},
    {107, "calendar", "Kalender", display_as::Calendar},
    {108, "$remind$", "Erinnerungen"},
    {109, "tasks", "Aufgaben", display_as::Task},
    {110, "links", "Verknüpfungen"},
    {111, "template", "Vorlagen"},
    {0, "system", "System"},
    {112, "system\\trash", "Papierkorb"},
    {113, "portal", "Portal", display_as::HtmlLayout},
}};

const FixedArchive* FindKind(std::span<const FixedArchive> table, int kind) {
  const auto row = std::ranges::find(table, kind, &FixedArchive::Kind);
  return row == table.end() ? nullptr : &*row;
}

bool HasDirectory(std::span<const FixedArchive> table, std::string_view relative) {
  return std::ranges::any_of(
      table, [&](const FixedArchive& archive) { return EqualsFold(archive.Directory, relative); });
}

// What follows `directory` + "\" in `path`; nothing when the path does not lie below it.
std::optional<std::string_view> RelativeTo(std::string_view directory, std::string_view path) {
  if (path.size() <= directory.size() || !IsSameOrBelow(path, directory)) return std::nullopt;
  return path.substr(directory.size() + 1);
}

}  // namespace

std::span<const FixedArchive> SystemArchives() { return SystemArchiveTable; }
std::span<const FixedArchive> UserArchives() { return UserArchiveTable; }

StoreLayout::StoreLayout(std::string_view serverName)
    : root_("\\\\" + std::string(serverName) + "\\DAVID"),
      archiveRoot_(root_ + "\\ARCHIVE"),
      code_(root_ + "\\code") {}

std::string StoreLayout::MoveJournals() const { return JoinPath(code_, "moves"); }

std::string StoreLayout::UserRoot(int userId) const {
  return JoinPath(JoinPath(archiveRoot_, UserRootsDirectory), UserDirName(userId));
}

std::optional<std::string> StoreLayout::SpecialDirectory(int kind, int userId) const {
  if (kind == special::ArchiveRoot) return archiveRoot_;
  if (kind == special::OwnRoot) return UserRoot(userId);
  if (const auto* archive = FindKind(SystemArchives(), kind))
    return JoinPath(archiveRoot_, archive->Directory);
  if (const auto* archive = FindKind(UserArchives(), kind))
    return JoinPath(UserRoot(userId), archive->Directory);
  return std::nullopt;
}

bool StoreLayout::IsSpecial(std::string_view directory, std::span<const UserRecord> users) const {
  if (EqualsFold(directory, archiveRoot_)) return true;
  const auto relative = RelativeTo(archiveRoot_, directory);
  if (!relative) return false;
  if (HasDirectory(SystemArchives(), *relative)) return true;
  return std::ranges::any_of(users, [&](const UserRecord& user) {
    const std::string root = UserRoot(user.Id);
    if (EqualsFold(directory, root)) return true;
    const auto own = RelativeTo(root, directory);
    return own && HasDirectory(UserArchives(), *own);
  });
}

ArchiveProperties PropertiesOf(const FixedArchive& archive, int owner) {
  ArchiveProperties properties;
  properties.Kind = archive.Kind;
  properties.DisplayType = archive.DisplayType;
  properties.AdminOnly = archive.AdminOnly;
  properties.Owner = owner;
  return properties;
}

}  // namespace velmora::store::embedded
