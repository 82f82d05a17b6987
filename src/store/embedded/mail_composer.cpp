#include "store/embedded/mail_composer.h"

#include "platform/clock.h"
#include "platform/host.h"
#include "store/embedded/gmime_handles.h"

namespace velmora::store::embedded {
namespace {

using PartHandle = GObjectHandle<GMimeObject>;

void AddAddress(GMimeMessage* message, GMimeAddressType type, const DvRecipient& recipient) {
  if (recipient.Name.empty() && recipient.Address.empty()) return;
  const char* name = recipient.Name.empty() ? nullptr : recipient.Name.c_str();
  g_mime_message_add_mailbox(message, type, name, recipient.Address.c_str());
}

PartHandle MakeText(const char* subType, const std::string& text) {
  GMimeTextPart* part = g_mime_text_part_new_with_subtype(subType);
  g_mime_text_part_set_charset(part, "utf-8");
  g_mime_text_part_set_text(part, text.c_str());
  g_mime_part_set_content_encoding(GMIME_PART(part), GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
  return PartHandle(GMIME_OBJECT(part));
}

PartHandle MakeAttachment(const ComposedPart& attachment) {
  GMimePart* part = g_mime_part_new_with_type("application", "octet-stream");
  const GObjectHandle<GMimeStream> stream(
      g_mime_stream_mem_new_with_buffer(attachment.Bytes.data(), attachment.Bytes.size()));
  const GObjectHandle<GMimeDataWrapper> content(
      g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
  g_mime_part_set_content(part, content.get());
  g_mime_part_set_content_encoding(part, GMIME_CONTENT_ENCODING_BASE64);
  g_mime_part_set_filename(part, attachment.Name.c_str());
  g_mime_object_set_disposition(GMIME_OBJECT(part), "attachment");
  return PartHandle(GMIME_OBJECT(part));
}

PartHandle MakeMultipart(const char* subType, const std::vector<PartHandle>& parts) {
  GMimeMultipart* multipart = g_mime_multipart_new_with_subtype(subType);
  for (const auto& part : parts) g_mime_multipart_add(multipart, part.get());
  return PartHandle(GMIME_OBJECT(multipart));
}

PartHandle MakeBody(const MailContent& mail) {
  if (mail.HtmlText.empty()) return MakeText("plain", mail.PlainText);
  if (mail.PlainText.empty()) return MakeText("html", mail.HtmlText);
  std::vector<PartHandle> alternatives;
  alternatives.push_back(MakeText("plain", mail.PlainText));
  alternatives.push_back(MakeText("html", mail.HtmlText));
  return MakeMultipart("alternative", alternatives);
}

std::string WriteMessage(GMimeMessage* message) {
  GMimeFormatOptions* options = g_mime_format_options_new();
  g_mime_format_options_set_newline_format(options, GMIME_NEWLINE_FORMAT_DOS);
  const GTextHandle text(g_mime_object_to_string(GMIME_OBJECT(message), options));
  g_mime_format_options_free(options);
  return text.get();
}

}  // namespace

std::string ComposeMail(const MailContent& mail) {
  (void)MailParserOptions();  // GMime is initialised
  const GObjectHandle<GMimeMessage> message(g_mime_message_new(TRUE));
  AddAddress(message.get(), GMIME_ADDRESS_TYPE_FROM, mail.Sender);
  for (const auto& recipient : mail.To) AddAddress(message.get(), GMIME_ADDRESS_TYPE_TO, recipient);
  for (const auto& recipient : mail.Cc) AddAddress(message.get(), GMIME_ADDRESS_TYPE_CC, recipient);
  g_mime_message_set_subject(message.get(), mail.Subject.c_str(), "utf-8");
  GDateTime* date = g_date_time_new_from_unix_local(platform::ToUnixTime(mail.Date));
  if (date != nullptr) {
    g_mime_message_set_date(message.get(), date);
    g_date_time_unref(date);
  }
  const GTextHandle messageId(g_mime_utils_generate_message_id(platform::ComputerName().c_str()));
  g_mime_message_set_message_id(message.get(), messageId.get());

  auto body = MakeBody(mail);
  if (!mail.Attachments.empty()) {
    std::vector<PartHandle> parts;
    parts.push_back(std::move(body));
    for (const auto& attachment : mail.Attachments) parts.push_back(MakeAttachment(attachment));
    body = MakeMultipart("mixed", parts);
  }
  g_mime_message_set_mime_part(message.get(), body.get());
  return WriteMessage(message.get());
}

}  // namespace velmora::store::embedded
