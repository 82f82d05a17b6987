// Reads a mail message as an entry needs it: header fields decoded, bodies as UTF-8, attachments as byte
// ranges of the source. No message is refused.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/item.h"

namespace velmora::store::embedded {

// Where the content of an attachment lies.
struct ContentRange {
  int File = 1;  // number of the content file
  std::int64_t Offset = 0, Length = 0;
  std::string Encoding;  // Content-Transfer-Encoding of the range, "" for plain bytes
};

struct AttachmentRecord {
  std::string Name;
  std::int64_t Size = 0;  // decoded
  DateTime Date;
  std::uint32_t Flags = 0;
  std::string ContentId;
  ContentRange Content;
};

struct ParsedMail {
  std::string Subject;
  DvRecipient Sender;
  std::vector<DvRecipient> To, Cc, Bcc;
  std::string RecipientText;             // addresses of To, names where none is known, else the field's text
  std::optional<std::int64_t> UnixTime;  // of the Date field
  int Priority = 0;                      // 0 normal, 1 low, 2 high
  std::string Header;                    // the raw header block, lines ended by CR LF
  std::string PlainText;                 // lines ended by CR LF
  std::string HtmlText;
  std::vector<AttachmentRecord> Attachments;
};

ParsedMail ParseMail(std::string_view source);

// A header value of raw bytes as one line of text: encoded words decoded, no control characters.
std::string DecodeHeaderText(std::string_view raw);
// The addresses of a raw header value, groups dissolved.
std::vector<DvRecipient> ParseAddresses(std::string_view raw);
// Addresses joined by "; ", a name standing for an address that is not known.
std::string JoinRecipients(const std::vector<DvRecipient>& recipients);

}  // namespace velmora::store::embedded
