#include "mailarchive/entry_operations.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/code_page.h"
#include "base/paths.h"
#include "base/text.h"
#include "mailarchive/format/descriptor.h"
#include "mailarchive/format/marker.h"
#include "mailarchive/format/marker_names.h"
#include "mailarchive/format/text_file.h"
#include "mailarchive/links.h"

namespace velmora::mailarchive {
namespace {

using platform::FileSystem;

// --- Deleting. ---

// The folders that a deletion tidies up: always these names, whatever the settings call them now.
constexpr std::string_view ComponentFolders[] = {"Attachments", "HTMLMails",  "FaxImages", "Eml",
                                                 "VCards",      "VoiceMails", "Comments"};

// A component whose folder is gone is as good as deleted: the folder may have been tidied away when an
// earlier deletion of the same entry got stuck at another component.
bool IsMissing(const Error& error) {
  return error.Number == platform::file_error::FileNotFound ||
         error.Number == platform::file_error::PathNotFound;
}

bool IsMarker(const platform::FileEntry& entry) {
  return !entry.IsFolder && std::ranges::any_of(MarkerNames, [&](const MarkerName& marker) {
    return EqualsFold(entry.Name, marker.Name) || EqualsFold(entry.Name, marker.Legacy);
  });
}

bool HoldsMarkerAtMost(FileSystem& fileSystem, std::string_view folder) {
  const auto entries = fileSystem.List(folder, "*", platform::ListWhat::All);
  return entries && entries->size() <= 1 && std::ranges::all_of(*entries, IsMarker);
}

// --- Renaming. ---

// The descriptor's bytes. One that is too long to be read to its end would lose that end when rewritten.
Result<std::string> ReadWholeDescriptor(FileSystem& fileSystem, std::string_view path) {
  const auto entry = fileSystem.GetEntry(path);
  if (!entry) return Fail(entry.error());
  if (entry->Size > static_cast<std::int64_t>(TextFileLimit)) {
    return Fail(platform::file_error::DeviceError,
                platform::FileErrorText(platform::file_error::DeviceError));
  }
  return fileSystem.ReadFile(path);
}

// A file on its way to a new name; both paths relative to the entry's directory.
struct Move {
  std::string From, To;
};

// The keys of a descriptor whose values are paths that a renaming changes.
constexpr std::string_view PathKeys[] = {"MailArcEntry", "MailArcAdd", "HTML", "FAX",
                                         "VOICE",        "EML",        "SMTP", "COMMENT"};

bool IsBaseName(std::string_view base) {
  // A ".htm" inside would make the descriptor unfindable from the page's name.
  return IsSafeRelativePath(base) && base.find_first_of("\\/*?\"<>|") == std::string_view::npos &&
         !ContainsFold(base, ".htm");
}

// The base without the suffix that the page of an HTML mail has and its components have not.
std::string_view ComponentBase(std::string_view pageBase) {
  constexpr std::string_view HtmlMailSuffix = "_inf";
  if (pageBase.ends_with(HtmlMailSuffix)) pageBase.remove_suffix(HtmlMailSuffix.size());
  return pageBase;
}

Move MoveToBase(std::string_view path, std::string_view base) {
  const auto name = FileNameOf(path);
  const auto point = std::min(name.rfind('.'), name.size());
  std::string target(DirectoryOf(path));
  target += base;
  target += name.substr(point);
  return {std::string(path), std::move(target)};
}

// Whether each target is free, or the moved file's own name, and no two moves have the same.
bool TargetsAreFree(FileSystem& fileSystem, std::string_view directory, const std::vector<Move>& moves) {
  for (auto move = moves.begin(); move != moves.end(); ++move) {
    const auto takesTarget = [&](const Move& other) { return EqualsFold(other.To, move->To); };
    if (std::any_of(moves.begin(), move, takesTarget)) return false;
    if (!EqualsFold(move->From, move->To) && fileSystem.FileExists(JoinPath(directory, move->To)))
      return false;
  }
  return true;
}

// All or none.
bool MoveAll(FileSystem& fileSystem, std::string_view directory, const std::vector<Move>& moves) {
  for (auto move = moves.begin(); move != moves.end(); ++move) {
    if (move->From == move->To) continue;
    if (fileSystem.MoveFile(JoinPath(directory, move->From), JoinPath(directory, move->To))) continue;
    while (move != moves.begin()) {
      --move;
      // The way back was the way here a moment ago; there is nothing left to try when it is barred.
      (void)fileSystem.MoveFile(JoinPath(directory, move->To), JoinPath(directory, move->From));
    }
    return false;
  }
  return true;
}

std::vector<Move> Reversed(const std::vector<Move>& moves) {
  std::vector<Move> reversed;
  for (auto move = moves.rbegin(); move != moves.rend(); ++move) reversed.push_back({move->To, move->From});
  return reversed;
}

// The descriptor's bytes with the paths of the moved files exchanged, every other line byte for byte.
std::string RewriteDescriptor(std::string_view bytes, const std::vector<Move>& moves) {
  std::string rewritten;
  while (!bytes.empty()) {
    const auto line = bytes.substr(0, std::min(bytes.find('\n'), bytes.size() - 1) + 1);
    bytes.remove_prefix(line.size());
    const auto pair = SplitKeyValue(line);
    const auto move = std::ranges::find_if(moves, [&](const Move& candidate) {
      return pair && std::ranges::find(PathKeys, pair->Key) != std::end(PathKeys) &&
             EqualsFold(candidate.From, DecodeValue(pair->Value));
    });
    if (move == moves.end()) {
      rewritten += line;
    } else {
      rewritten += line.substr(0, line.find('=') + 1);
      rewritten += EncodeValue(move->To) + "\r\n";
    }
  }
  return rewritten;
}

// The page's bytes with the links to the moved file pointing to its new name. Without component folders the
// link to an HTML body begins with a "/". Pages of older archives have the path without escapes.
std::string RedirectLinks(std::string_view page, const Move& move) {
  std::string redirected(page);
  const auto link = [](std::string_view opening, std::string_view url) {
    return std::string(opening) + ToCodePage(url, Unmappable::Reference) + '"';
  };
  for (const std::string_view opening : {"href=\"", "href=\"/"}) {
    const std::string target = link(opening, HrefPath(move.To));
    redirected = ReplaceAll(redirected, link(opening, HrefPath(move.From)), target);
    const std::string unescaped = link(opening, PathToUrl(move.From));
    if (unescaped != target) redirected = ReplaceAll(redirected, unescaped, target);
  }
  return redirected;
}

std::string RewritePage(std::string_view bytes, const EntryFields& fields, std::string_view componentBase) {
  const bool isMail = (fields.Flags & (entry_flag::Fax | entry_flag::Voice)) == 0;
  std::vector<std::string_view> linked = {fields.Body};
  if (isMail) linked.push_back(fields.Eml);
  // The comment's link takes the component base while its file takes the page's: for an HTML mail the two
  // differ, and readers of older archives rely on both names.
  linked.push_back(fields.Comment);

  std::string page(bytes);
  for (const auto path : linked) {
    if (!path.empty()) page = RedirectLinks(page, MoveToBase(path, componentBase));
  }
  return page;
}

// New content under the file's old time, which is the date of the message.
bool Rewrite(FileSystem& fileSystem, const std::string& path, std::string_view bytes) {
  const auto entry = fileSystem.GetEntry(path);
  return entry && fileSystem.ReplaceFile(path, bytes, {.Time = entry->Modified});
}

// --- Showing. ---

void ShowFile(run::FrontEnd& frontEnd, FileSystem& fileSystem, const std::string& path,
              const std::string& title) {
  const auto bytes = ReadTextFile(fileSystem, path);
  if (!bytes) {
    frontEnd.prompts.Message("Fehler", "Fehler beim Öffnen der Descriptor-Datei " + path, run::Icon::Stop);
    return;
  }
  frontEnd.viewers.ShowText(title, FromCodePage(*bytes),
                            {{{"Textdatei (*.txt)", "*.txt"}, {"Alle Dateien (*.*)", "*.*"}}, {}});
}

}  // namespace

bool DeleteMailArcEntry(FileSystem& fileSystem, std::string_view directory, std::string_view pageFile) {
  const auto fields = ReadEntryFields(fileSystem, directory, pageFile);
  if (!fields) return false;

  auto components = SplitAttachments(fields->Attachments);
  for (const auto* path : {&fields->Body, &fields->Eml, &fields->Smtp, &fields->Comment}) {
    if (!path->empty()) components.push_back(*path);
  }
  bool allDeleted = true;
  for (const auto& path : components) {
    const auto deleted = fileSystem.DeleteFile(JoinPath(directory, path), true);
    if (!deleted && !IsMissing(deleted.error())) allDeleted = false;
  }
  if (allDeleted) {
    // The page first: a descriptor that stays behind alone is in no index.
    // As long as the page stands, the descriptor does, too: the entry can be deleted once more.
    for (const auto& name : {std::string(pageFile), DescriptorName(pageFile)}) {
      const auto deleted = fileSystem.DeleteFile(JoinPath(directory, name), true);
      allDeleted = allDeleted && (deleted || IsMissing(deleted.error()));
      if (!allDeleted) break;
    }
  }
  for (const auto name : ComponentFolders) {
    const auto folder = JoinPath(directory, name);
    // A folder that stays only is not tidy; the entry is gone from it.
    if (HoldsMarkerAtMost(fileSystem, folder)) (void)fileSystem.DeleteFolder(folder, false);
  }
  return allDeleted;
}

bool RenameMailArcEntry(FileSystem& fileSystem, std::string_view directory, std::string_view pageFile,
                        std::string_view newFileName) {
  const auto pageBase = newFileName.substr(0, newFileName.rfind('.'));
  if (!IsBaseName(pageBase)) return false;
  const auto componentBase = ComponentBase(pageBase);
  const auto descriptorFile = DescriptorName(pageFile);

  const auto descriptorBytes = ReadWholeDescriptor(fileSystem, JoinPath(directory, descriptorFile));
  const auto pageBytes = fileSystem.ReadFile(JoinPath(directory, pageFile));
  if (!descriptorBytes || !pageBytes) return false;
  const auto fields = ParseEntryFields(*descriptorBytes);

  std::vector<Move> moves = {MoveToBase(pageFile, pageBase), MoveToBase(descriptorFile, pageBase)};
  const auto addComponent = [&](std::string_view path, std::string_view base) {
    if (!path.empty() && fileSystem.FileExists(JoinPath(directory, path))) {
      moves.push_back(MoveToBase(path, base));
    }
  };
  addComponent(fields.Body, componentBase);
  addComponent(fields.Eml, componentBase);
  addComponent(fields.Smtp, componentBase);
  addComponent(fields.Comment, pageBase);
  if (!TargetsAreFree(fileSystem, directory, moves) || !MoveAll(fileSystem, directory, moves)) return false;

  const auto newPage = JoinPath(directory, moves[0].To), newDescriptor = JoinPath(directory, moves[1].To);
  if (!Rewrite(fileSystem, newPage, RewritePage(*pageBytes, fields, componentBase)) ||
      !Rewrite(fileSystem, newDescriptor, RewriteDescriptor(*descriptorBytes, moves))) {
    // Back to where everything was, as far as the disk still allows.
    (void)Rewrite(fileSystem, newPage, *pageBytes);
    (void)MoveAll(fileSystem, directory, Reversed(moves));
    return false;
  }
  return true;
}

void ShowArcDescriptor(run::FrontEnd& frontEnd, FileSystem& fileSystem, std::string_view directory) {
  const auto marker = ProbeMailArc(fileSystem, directory).MarkerFile;
  if (marker.empty()) {
    frontEnd.prompts.Message("Fehler", "Das Verzeichnis ist kein Mailarchiv oder die Descriptor-Datei fehlt.",
                             run::Icon::Stop);
    return;
  }
  ShowFile(frontEnd, fileSystem, JoinPath(directory, marker),
           "Descriptor Mailarchiv " + std::string(directory));
}

void ShowEntryDescriptor(run::FrontEnd& frontEnd, FileSystem& fileSystem, std::string_view directory,
                         std::string_view pageFile) {
  const auto path = JoinPath(directory, DescriptorName(pageFile));
  if (!fileSystem.FileExists(path)) {
    frontEnd.prompts.Message("Fehler", "Es ist keine Descriptor-Datei vorhanden.", run::Icon::Stop);
    return;
  }
  ShowFile(frontEnd, fileSystem, path, "Descriptor Mailarchiv-Eintrag: " + std::string(pageFile));
}

}  // namespace velmora::mailarchive
