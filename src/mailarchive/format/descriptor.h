// Entry descriptors (.add): one per exported message, the key to all files of the entry. `Key=Value` lines,
// Windows-1252 with CR LF; characters beyond the code page stand as decimal references.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "base/result.h"
#include "platform/file_system.h"

namespace velmora::mailarchive {

// Bits of the descriptor's Flags.
namespace entry_flag {
inline constexpr int Outgoing = 1;
inline constexpr int Internal = 2;
inline constexpr int Fax = 4;
inline constexpr int Voice = 8;
inline constexpr int Status72 = 16;  // send status 72, a document
inline constexpr int Note = 32;
inline constexpr int Dfml = 64;
}  // namespace entry_flag

enum class EntryKind { Mail, Fax, Voice };

// What a descriptor holds. All paths are relative to its directory and use "\".
struct EntryDescriptor {
  EntryKind Kind = EntryKind::Mail;
  std::string Sortaddr{}, Subject{};
  DateTime Date{};
  std::string From{}, To{};
  int Flags = 0;
  std::string MailArcEntry{};  // file name of the page
  std::string MailArcAdd{};    // file name of the descriptor
  std::string Body{};          // HTML, FAX or VOICE by kind
  std::string Eml{}, Smtp{}, Comment{};
  std::vector<std::string> Attachments{};
  bool HasAttachments = false;  // whether the key is written at all
};

// The bytes of a descriptor file.
std::string FormatDescriptor(const EntryDescriptor& descriptor);

struct IndexFields {
  std::string Subject, Sortaddr;
  DateTime Date;  // null when unreadable
  std::string From, To;
  int Flags = 0;
  std::string Comment;
};
struct EntryFields {
  std::string Body;  // HTML, FAX or VOICE, whichever stood last
  std::string Eml, Smtp;
  std::string Attachments;  // the value as it stands
  int Flags = 0;
  std::string MailArcEntry, MailArcAdd, Comment;
};

// Name of the descriptor of a page: cut at the first ".htm", plus ".add".
std::string DescriptorName(std::string_view pageFile);
// The parsers: trimmed values split at the first "=", unknown keys skipped, missing keys empty. Paths that
// leave the directory (absolute, "..", drive or stream colon) are treated as empty.
IndexFields ParseIndexFields(std::string_view descriptorBytes);
EntryFields ParseEntryFields(std::string_view descriptorBytes);
// ReadEntryDescriptor in its two modes: nothing when the descriptor of the page cannot be opened.
std::optional<IndexFields> ReadIndexFields(platform::FileSystem& fileSystem, std::string_view directory,
                                           std::string_view pageFile);
std::optional<EntryFields> ReadEntryFields(platform::FileSystem& fileSystem, std::string_view directory,
                                           std::string_view pageFile);
// Whether a path that is told somewhere in a mail archive leads to one file at or below its directory: no way
// out, and no wildcard, which would make one deletion take many files.
bool LeadsToOneFile(std::string_view path);
// The quoted list of an Attachments value as paths, unsafe ones left out.
std::vector<std::string> SplitAttachments(std::string_view value);

}  // namespace velmora::mailarchive
