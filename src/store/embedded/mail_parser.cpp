#include "store/embedded/mail_parser.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/code_page.h"
#include "base/line_ends.h"
#include "base/text.h"
#include "store/embedded/attachment_names.h"
#include "store/embedded/content_decoder.h"
#include "store/embedded/encoded_words.h"
#include "store/embedded/gmime_handles.h"
#include "store/embedded/html_rendition.h"
#include "store/embedded/mime_structure.h"
#include "store/vocabulary.h"

namespace velmora::store::embedded {
namespace {

std::string OneLine(std::string_view text) {
  const auto valid = IsValidUtf8(text) ? std::string(text) : MakeValidUtf8(text);
  return std::string(Trim(BlankControlCharacters(valid)));
}

std::string ToText(const char* text) { return text == nullptr ? std::string{} : OneLine(text); }

void AppendAddresses(InternetAddressList* list, std::vector<DvRecipient>& recipients, int depth) {
  constexpr int DeepestGroup = 8;
  const int count = internet_address_list_length(list);
  for (int i = 0; i < count; ++i) {
    InternetAddress* address = internet_address_list_get_address(list, i);
    if (INTERNET_ADDRESS_IS_MAILBOX(address)) {
      recipients.push_back({ToText(internet_address_get_name(address)),
                            ToText(internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(address)))});
    } else if (INTERNET_ADDRESS_IS_GROUP(address) && depth < DeepestGroup) {
      AppendAddresses(internet_address_group_get_members(INTERNET_ADDRESS_GROUP(address)), recipients,
                      depth + 1);
    }
  }
}

// GMime reads a group within a group by calling itself, so a line of colons would take all of the stack. What
// is a group is for GMime to say: no line needs more colons than these, whatever they stand for.
std::string LimitGroups(std::string line) {
  constexpr int MostColons = 1000;
  int colons = 0;
  for (char& character : line) {
    if (character == ':' && ++colons > MostColons) character = ' ';
  }
  return line;
}

std::optional<std::int64_t> ReadDate(std::string_view raw) {
  const auto text = UnfoldHeader(raw);
  if (text.empty()) return std::nullopt;
  (void)MailParserOptions();  // GMime is initialised
  GDateTime* date = g_mime_utils_header_decode_date(text.c_str());
  if (date == nullptr) return std::nullopt;
  const std::int64_t seconds = g_date_time_to_unix(date);
  g_date_time_unref(date);
  return seconds;
}

// X-Priority counts from 1 (highest) to 5; Importance is RFC 4021's.
int ReadPriority(const std::vector<HeaderField>& fields) {
  const auto number = UnfoldHeader(FindHeader(fields, "X-Priority"));
  const auto word = ToLower(UnfoldHeader(FindHeader(fields, "Importance")));
  if (number.starts_with('1') || number.starts_with('2') || word == "high") return 2;
  if (number.starts_with('4') || number.starts_with('5') || word == "low") return 1;
  return 0;
}

std::string BlockText(std::string_view raw) {
  while (raw.ends_with('\n') || raw.ends_with('\r')) raw.remove_suffix(1);
  if (raw.empty()) return {};
  return WithCrLf(DecodeCharset(raw, "")) + "\r\n";
}

bool IsMessage(std::string_view mediaType) {
  return mediaType == "message/rfc822" || mediaType == "message/global" || mediaType == "message/news";
}

AttachmentRecord MakeAttachment(std::string_view source, const MimeLeaf& leaf) {
  const auto& header = leaf.Header;
  AttachmentRecord attachment;
  attachment.Name = MakeAttachmentName(DecodeHeaderText(header.FileName), header.MediaType);
  attachment.ContentId = header.ContentId;
  attachment.Content = {1, static_cast<std::int64_t>(leaf.Begin),
                        static_cast<std::int64_t>(leaf.End - leaf.Begin), header.Encoding};
  const auto content = source.substr(leaf.Begin, leaf.End - leaf.Begin);
  attachment.Size = static_cast<std::int64_t>(DecodedSize(content, header.Encoding));
  const bool isShownInText = header.IsInline || leaf.IsRelated || !header.ContentId.empty();
  if (header.MediaType.starts_with("image/") && isShownInText && !header.IsAttachment) {
    attachment.Flags |= attachment_flag::InlineImage;
  }
  if (IsMessage(header.MediaType)) attachment.Flags |= attachment_flag::MessageRfc822;
  return attachment;
}

void ReadParts(std::string_view source, const MimeStructure& structure, ParsedMail& mail) {
  const MimeLeaf* plain = nullptr;
  const MimeLeaf* html = nullptr;
  for (const auto& leaf : structure.Leaves) {
    const auto& header = leaf.Header;
    if (!header.IsAttachment && plain == nullptr && header.MediaType == "text/plain") {
      plain = &leaf;
    } else if (!header.IsAttachment && html == nullptr && header.MediaType == "text/html") {
      html = &leaf;
    } else {
      mail.Attachments.push_back(MakeAttachment(source, leaf));
    }
  }
  const auto decode = [&](const MimeLeaf& leaf) {
    return DecodeTransfer(source.substr(leaf.Begin, leaf.End - leaf.Begin), leaf.Header.Encoding);
  };
  if (plain != nullptr) mail.PlainText = WithCrLf(DecodeCharset(decode(*plain), plain->Header.Charset));
  if (html != nullptr) {
    const auto bytes = decode(*html);
    const auto charset = html->Header.Charset.empty() ? FindHtmlCharset(bytes) : html->Header.Charset;
    mail.HtmlText = DecodeCharset(bytes, charset);
  }
}

}  // namespace

std::string DecodeHeaderText(std::string_view raw) { return OneLine(DecodeEncodedWords(UnfoldHeader(raw))); }

std::vector<DvRecipient> ParseAddresses(std::string_view raw) {
  const auto line = LimitGroups(UnifyEncodedWords(UnfoldHeader(raw)));
  std::vector<DvRecipient> recipients;
  if (line.empty()) return recipients;
  const GObjectHandle<InternetAddressList> list(
      internet_address_list_parse(MailParserOptions(), line.c_str()));
  if (list) AppendAddresses(list.get(), recipients, 0);
  return recipients;
}

std::string JoinRecipients(const std::vector<DvRecipient>& recipients) {
  std::string text;
  for (const auto& recipient : recipients) {
    const auto& known = recipient.Address.empty() ? recipient.Name : recipient.Address;
    if (known.empty()) continue;
    if (!text.empty()) text.append("; ");
    text.append(known);
  }
  return text;
}

ParsedMail ParseMail(std::string_view source) {
  const auto structure = SplitMessage(source);
  const auto& fields = structure.Fields;
  ParsedMail mail;
  mail.Subject = DecodeHeaderText(FindHeader(fields, "Subject"));
  const auto from = FindHeader(fields, "From");
  if (const auto senders = ParseAddresses(from); !senders.empty()) {
    mail.Sender = senders.front();
  } else {
    mail.Sender.Name = DecodeHeaderText(from);
  }
  mail.To = ParseAddresses(FindHeader(fields, "To"));
  mail.Cc = ParseAddresses(FindHeader(fields, "Cc"));
  mail.Bcc = ParseAddresses(FindHeader(fields, "Bcc"));
  mail.RecipientText = JoinRecipients(mail.To);
  if (mail.RecipientText.empty()) mail.RecipientText = DecodeHeaderText(FindHeader(fields, "To"));
  mail.UnixTime = ReadDate(FindHeader(fields, "Date"));
  mail.Priority = ReadPriority(fields);
  mail.Header = BlockText(source.substr(0, structure.HeaderEnd));
  ReadParts(source, structure, mail);
  return mail;
}

}  // namespace velmora::store::embedded
