// What the message viewer shows of an entry, read from the store: no toolkit in it. Everything here comes
// from whoever sent the message; what is too much to be shown is cut, and said so.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/archive.h"

namespace velmora::ui {

// More of a body than this is not shown. The attachment or the source has it all.
inline constexpr std::size_t ShownHtmlBytes = std::size_t{2} << 20;
inline constexpr std::size_t ShownBodyBytes = std::size_t{8} << 20;
inline constexpr std::size_t ShownRecipients = 100;
inline constexpr std::size_t ShownHeaderCharacters = 10'000;  // of one line of the header
// A line without an end is laid out as a whole, which takes minutes: it is broken after so many bytes.
inline constexpr std::size_t ShownLineBytes = 4000;
// Tables within tables beyond this are laid out by recursion that no stack holds; such a mail is shown as
// text.
inline constexpr int ShownTableDepth = 40;

enum class ContentKind { Text, Html, Fax, Voice, Properties };

struct ContentLine {
  std::string Label, Value;
};

struct ContentAttachment {
  int Index = 0;  // in DvAttachments
  std::string Name;
  std::int64_t Size = 0;
  bool IsInline = false;  // a part of the HTML body
};

struct MessageContent {
  ContentKind Kind = ContentKind::Text;
  std::string Title;
  std::vector<ContentLine> Header;  // "Von", "An", ...; of an address, task and so on all its properties
  std::string Text;                 // also beside an HTML body
  std::string Html;                 // inline parts as `velmora-part:NN`, see InlinePartOf
  std::string FilePath;             // of a fax its TIFF, of a voice mail its wave file
  std::vector<ContentAttachment> Attachments;
  std::string Notice;  // "" when all of it is shown
};

// Fails when the entry has vanished or cannot be read.
Result<MessageContent> ReadMessageContent(store::DvArchive& archive, store::EntryKey key);

// The number of the inline part that a reference of the HTML names, counted from 1; 0 for any other
// reference.
int InlinePartOf(std::string_view reference);
// How deep tables stand within tables.
int TableDepth(std::string_view html);
// Whether the desktop would run a file of that name instead of showing it.
bool IsExecutableName(std::string_view fileName);

}  // namespace velmora::ui
