// The structure of a mail message (RFC 5322, RFC 2045, RFC 2046): header fields, and the leaves of its tree
// of parts as byte ranges of the source. Written for hostile input: one pass, no recursion, bounded depth and
// number of parts. What it yields is enough to take a part out of the source again without parsing it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::store::embedded {

// Multiparts nested deeper than this, and leaves beyond that number, are not taken apart: the rest stands as
// one leaf with its raw bytes.
inline constexpr std::size_t MaxPartDepth = 100;
inline constexpr std::size_t MaxParts = 100'000;

struct HeaderField {
  std::string_view Name;
  std::string_view Value;  // raw, still folded, without the line end
};

// The header fields from `begin` on. `bodyBegin` becomes the position behind the empty line, or of the first
// line that is no header line (a message that forgot the empty line).
std::vector<HeaderField> ReadHeaderFields(std::string_view source, std::size_t begin, std::size_t& bodyBegin);
// The raw value of the first field of that name, without regard to case; "" without one.
std::string_view FindHeader(const std::vector<HeaderField>& fields, std::string_view name);
// A raw header value as one line of UTF-8, its encoded words untouched: unfolded, raw 8-bit bytes taken as
// UTF-8 where they are valid, else as Windows-1252.
std::string UnfoldHeader(std::string_view raw);

// The MIME header fields of a part.
struct PartHeader {
  std::string MediaType = "text/plain";  // lower case
  std::string Charset = {};              // as it stands, "" for none
  std::string Boundary = {};
  std::string FileName = {};   // decoded, as the message tells it: anything may stand in it
  std::string Encoding = {};   // Content-Transfer-Encoding, "" for none
  std::string ContentId = {};  // without "<" and ">"
  bool IsAttachment = false;   // Content-Disposition is there and not "inline"
  bool IsInline = false;       // Content-Disposition is "inline"
};

PartHeader ReadPartHeader(const std::vector<HeaderField>& fields, std::string_view defaultType);

struct MimeLeaf {
  PartHeader Header;
  std::size_t Begin = 0, End = 0;  // the encoded content in the source
  bool IsRelated = false;          // a part of a multipart/related
};

struct MimeStructure {
  std::vector<HeaderField> Fields;  // of the message; they point into the source
  std::size_t HeaderEnd = 0;
  std::vector<MimeLeaf> Leaves;  // in the order of the message
};

// Never fails: a text that is no message has one leaf, text/plain.
MimeStructure SplitMessage(std::string_view source);

}  // namespace velmora::store::embedded
