#include "store/embedded/mail_composer.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/text.h"
#include "platform/make_folders.h"
#include "store/embedded/gmime_handles.h"

namespace velmora::store::embedded {
namespace {

constexpr const char* Charset = "utf-8";

struct FreeDateTime {
  void operator()(GDateTime* date) const { g_date_time_unref(date); }
};

std::string HeaderText(std::string_view text) { return BlankControlCharacters(MakeValidUtf8(text)); }

void AddAddresses(GMimeMessage* message, GMimeAddressType kind, const std::vector<DvRecipient>& recipients) {
  for (const auto& recipient : recipients) {
    // What is no plain address cannot stand in a header field without changing its meaning.
    if (!IsPlainAddress(recipient.Address)) continue;
    g_mime_message_add_mailbox(message, kind, HeaderText(recipient.Name).c_str(), recipient.Address.c_str());
  }
}

GObjectHandle<GMimeTextPart> MakeText(const char* subtype, const std::string& text) {
  GObjectHandle<GMimeTextPart> part(g_mime_text_part_new_with_subtype(subtype));
  g_mime_text_part_set_charset(part.get(), Charset);
  g_mime_text_part_set_text(part.get(), MakeValidUtf8(text).c_str());
  g_mime_part_set_content_encoding(GMIME_PART(part.get()), GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
  return part;
}

GObjectHandle<GMimePart> MakeFile(const std::string& name, const std::string& content) {
  GObjectHandle<GMimePart> part(g_mime_part_new_with_type("application", "octet-stream"));
  GObjectHandle<GMimeStream> stream(g_mime_stream_mem_new_with_buffer(content.data(), content.size()));
  GObjectHandle<GMimeDataWrapper> wrapper(
      g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
  g_mime_part_set_content(part.get(), wrapper.get());
  g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);
  g_mime_object_set_disposition(GMIME_OBJECT(part.get()), GMIME_DISPOSITION_ATTACHMENT);
  g_mime_part_set_filename(part.get(), HeaderText(name).c_str());
  return part;
}

Result<std::string> AttachmentContent(DvAttachment& attachment, platform::FileSystem& fileSystem,
                                      const std::string& directory) {
  if (const auto made = platform::MakeFolders(fileSystem, directory, true); !made) return Fail(made.error());
  const std::string path = JoinPath(directory, fileSystem.UniqueFileName(directory, "attachment.tmp"));
  if (const auto saved = attachment.SaveAs(path, true); !saved) return Fail(saved.error());
  auto content = fileSystem.ReadFile(path);
  if (const auto deleted = fileSystem.DeleteFile(path, true); !deleted) return Fail(deleted.error());
  return content;
}

// The text, or a multipart/alternative of text and HTML.
Result<GObjectHandle<GMimeObject>> MakeBody(DvMailItem& mail) {
  const auto text = mail.Text();
  if (!text) return Fail(text.error());
  const auto html = mail.Item().Fields().Get(tag::HtmlText);
  if (!html) return Fail(html.error());
  auto plain = MakeText("plain", *text);
  const std::string htmlText = FieldText(*html);
  if (htmlText.empty()) return GObjectHandle<GMimeObject>(GMIME_OBJECT(plain.release()));
  GObjectHandle<GMimeMultipart> both(g_mime_multipart_new_with_subtype("alternative"));
  g_mime_multipart_add(both.get(), GMIME_OBJECT(plain.get()));
  g_mime_multipart_add(both.get(), GMIME_OBJECT(MakeText("html", htmlText).get()));
  return GObjectHandle<GMimeObject>(GMIME_OBJECT(both.release()));
}

// The body, or a multipart/mixed of it and the attachments.
Result<GObjectHandle<GMimeObject>> MakeContent(DvMailItem& mail, platform::FileSystem& fileSystem,
                                               const std::string& temporaryDirectory) {
  auto body = MakeBody(mail);
  if (!body) return body;
  auto& attachments = mail.Item().Attachments();
  const auto count = attachments.Count();
  if (!count) return Fail(count.error());
  if (*count == 0) return body;
  GObjectHandle<GMimeMultipart> mixed(g_mime_multipart_new_with_subtype("mixed"));
  g_mime_multipart_add(mixed.get(), body->get());
  for (int index = 0; index < *count; ++index) {
    const auto attachment = attachments.Item(index);
    if (!attachment) return Fail(attachment.error());
    const auto content = AttachmentContent(**attachment, fileSystem, temporaryDirectory);
    if (!content) return Fail(content.error());
    g_mime_multipart_add(mixed.get(), GMIME_OBJECT(MakeFile((*attachment)->Name(), *content).get()));
  }
  return GObjectHandle<GMimeObject>(GMIME_OBJECT(mixed.release()));
}

Status AddHeader(GMimeMessage* message, DvMailItem& mail, platform::Clock& clock,
                 const ComposeOptions& options) {
  auto sender = mail.Sender();
  if (!sender) return Fail(sender.error());
  if (sender->Address.empty()) sender->Address = options.DefaultSender;
  AddAddresses(message, GMIME_ADDRESS_TYPE_FROM, {*sender});
  const auto to = mail.To();
  if (!to) return Fail(to.error());
  AddAddresses(message, GMIME_ADDRESS_TYPE_TO, *to);
  const auto cc = mail.Cc();
  if (!cc) return Fail(cc.error());
  AddAddresses(message, GMIME_ADDRESS_TYPE_CC, *cc);
  const auto subject = mail.Subject();
  if (!subject) return Fail(subject.error());
  g_mime_message_set_subject(message, HeaderText(*subject).c_str(), Charset);
  const auto date = mail.Date();
  const DateTime sent = date && !date->IsNull() ? *date : clock.Now();
  const std::unique_ptr<GDateTime, FreeDateTime> time(
      g_date_time_new_from_unix_local(platform::ToUnixTime(sent)));
  if (time) g_mime_message_set_date(message, time.get());
  const GTextHandle id(g_mime_utils_generate_message_id(options.MessageIdDomain.c_str()));
  g_mime_message_set_message_id(message, id.get());
  return {};
}

std::string WriteMessage(GMimeMessage* message) {
  GMimeFormatOptions* format = g_mime_format_options_new();
  g_mime_format_options_set_newline_format(format, GMIME_NEWLINE_FORMAT_DOS);
  const GTextHandle text(g_mime_object_to_string(GMIME_OBJECT(message), format));
  g_mime_format_options_free(format);
  return text.get();
}

}  // namespace

Result<std::string> ComposeMail(DvMailItem& mail, platform::FileSystem& fileSystem, platform::Clock& clock,
                                const ComposeOptions& options) {
  (void)MailParserOptions();  // initialises the library
  GObjectHandle<GMimeMessage> message(g_mime_message_new(TRUE));
  if (const auto added = AddHeader(message.get(), mail, clock, options); !added) return Fail(added.error());
  const auto content = MakeContent(mail, fileSystem, options.TemporaryDirectory);
  if (!content) return Fail(content.error());
  g_mime_message_set_mime_part(message.get(), content->get());
  return WriteMessage(message.get());
}

bool IsPlainAddress(std::string_view address) {
  static constexpr std::string_view Special = "<>()[],;:\\\"";
  return !address.empty() && address.front() != '-' && IsValidUtf8(address) &&
         BlankControlCharacters(address) == address && std::ranges::none_of(address, [](char c) {
           return c == ' ' || Special.find(c) != std::string_view::npos;
         });
}

}  // namespace velmora::store::embedded
