// Any bytes as a mail: parsing, decoding and the HTML rendition must end, stay inside the source and give
// text that the store can keep.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/text.h"
#include "require.h"
#include "store/embedded/attachment_names.h"
#include "store/embedded/content_decoder.h"
#include "store/embedded/html_rendition.h"
#include "store/embedded/mail_parser.h"

namespace {

using velmora::store::embedded::AttachmentRecord;

using velmora::fuzz::Require;

void RequireOneLine(std::string_view text) {
  Require(velmora::IsValidUtf8(text) && velmora::BlankControlCharacters(text) == text);
}

void RequireSound(const AttachmentRecord& attachment, std::string_view source) {
  RequireOneLine(attachment.Name);
  Require(!attachment.Name.empty() &&
          attachment.Name.size() <= velmora::store::embedded::LongestAttachmentName);
  Require(attachment.Name.find_first_of("/\\:") == std::string::npos);
  const auto& range = attachment.Content;
  Require(range.Offset >= 0 && range.Length >= 0 &&
          range.Offset + range.Length <= static_cast<std::int64_t>(source.size()));
  const auto bytes =
      source.substr(static_cast<std::size_t>(range.Offset), static_cast<std::size_t>(range.Length));
  const auto content = velmora::store::embedded::DecodeTransfer(bytes, range.Encoding);
  Require(static_cast<std::int64_t>(content.size()) == attachment.Size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view source(reinterpret_cast<const char*>(data), size);
  const auto mail = velmora::store::embedded::ParseMail(source);
  RequireOneLine(mail.Subject);
  RequireOneLine(mail.Sender.Name);
  RequireOneLine(mail.Sender.Address);
  RequireOneLine(mail.RecipientText);
  for (const auto* list : {&mail.To, &mail.Cc, &mail.Bcc}) {
    for (const auto& recipient : *list) RequireOneLine(recipient.Name + recipient.Address);
  }
  for (const auto* text : {&mail.Header, &mail.PlainText, &mail.HtmlText}) {
    Require(velmora::IsValidUtf8(*text) && text->find('\0') == std::string::npos);
  }
  for (const auto& attachment : mail.Attachments) RequireSound(attachment, source);
  const auto findPart = [](std::string_view id) -> std::optional<int> { return static_cast<int>(id.size()); };
  for (const auto html : {std::string_view(mail.HtmlText), source}) {
    const auto rendition = velmora::store::embedded::MakeHtmlRendition(html, "L", findPart);
    Require(rendition.starts_with(velmora::store::embedded::RenditionHead));
  }
  return 0;
}
